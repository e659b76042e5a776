/** The picture with its zoom and its place. */
class Stage {
  /** @param {{hover: function(?number), select: function(?number), zoomed: function(number)}} on */
  constructor(on) {
    this.on = on;
    this.element = byId('stage');
    this.host = byId('picture');
    this.root = this.host.attachShadow({mode: 'open'});
    /** What the picture shows, in units of the screen: the screen and perhaps a margin. */
    this.area = {x: 0, y: 0, width: 1, height: 1};
    this.view = {fit: true, zoom: 1, x: 0, y: 0};
    this.frames = new Frames(this);
    this.drag = null;
    this.listen();
  }

  listen() {
    const stage = this.element;
    stage.addEventListener('wheel', (event) => this.wheel(event), {passive: false});
    stage.addEventListener('pointerdown', (event) => this.press(event));
    stage.addEventListener('pointermove', (event) => this.move(event));
    stage.addEventListener('pointerup', (event) => this.release(event));
    stage.addEventListener('pointercancel', () => this.endDrag());
    stage.addEventListener('pointerleave', () => this.leave());
    new ResizeObserver(() => this.refresh()).observe(stage);
  }

  /** @param {Picture} picture */
  show(picture) {
    const parsed = new DOMParser().parseFromString(picture.svg, 'image/svg+xml').documentElement;
    const isPicture = parsed.localName === 'svg' && !parsed.querySelector('parsererror');
    byId('empty').hidden = isPicture;
    byId('empty').textContent = isPicture ? '' : 'The picture cannot be read.';
    for (const title of parsed.querySelectorAll('title')) title.remove(); // the details tell more
    removeNotes(parsed);
    this.root.replaceChildren(pictureStyle(), ...(isPicture ? [document.adoptNode(parsed)] : []));
    this.area = areaOf(parsed, picture.size);
    this.host.style.width = `${this.area.width}px`;
    this.host.style.height = `${this.area.height}px`;
    this.refresh();
  }

  /** Shows nothing but a reason. */
  showNothing(reason) {
    this.root.replaceChildren();
    this.host.style.display = 'none';
    byId('empty').hidden = false;
    byId('empty').textContent = reason;
  }

  /** The number of the element that an event happened on. @returns {?number} */
  elementAt(event) {
    const target = event.composedPath()[0];
    const group = target instanceof Element ? target.closest('[data-id]') : null;
    return group ? Number(group.getAttribute('data-id')) : null;
  }

  /** A place of the window in the picture's own units. */
  toPicture(event) {
    const edge = this.element.getBoundingClientRect();
    return {
      left: event.clientX - edge.left,
      top: event.clientY - edge.top,
      x: (event.clientX - edge.left - this.view.x) / this.view.zoom + this.area.x,
      y: (event.clientY - edge.top - this.view.y) / this.view.zoom + this.area.y,
    };
  }

  wheel(event) {
    event.preventDefault();
    const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 16 : 1;
    const at = this.toPicture(event);
    const speed = event.ctrlKey ? 0.01 : 0.0015; // two fingers on a touchpad come as Ctrl+wheel
    this.zoomBy(Math.exp(-event.deltaY * lines * speed), at.left, at.top);
  }

  press(event) {
    if (event.button > 1) return;
    this.drag = {
      x: event.clientX,
      y: event.clientY,
      moved: false,
      element: this.elementAt(event),
      button: event.button,
    };
  }

  move(event) {
    this.showPosition(event);
    if (!this.drag) return this.on.hover(this.elementAt(event));
    const dx = event.clientX - this.drag.x;
    const dy = event.clientY - this.drag.y;
    if (!this.drag.moved && Math.hypot(dx, dy) < 4) return undefined;
    if (!this.drag.moved) this.element.setPointerCapture(event.pointerId);
    this.element.classList.add('panning');
    Object.assign(this.drag, {x: event.clientX, y: event.clientY, moved: true});
    return this.pan(dx, dy);
  }

  release(event) {
    const drag = this.drag;
    this.endDrag();
    if (drag && !drag.moved && event.button === 0) this.on.select(drag.element);
  }

  endDrag() {
    this.drag = null;
    this.element.classList.remove('panning');
  }

  leave() {
    byId('position').hidden = true;
    this.on.hover(null);
  }

  showPosition(event) {
    const at = this.toPicture(event);
    const {x, y, width, height} = this.area;
    byId('position').hidden = at.x < x || at.y < y || at.x >= x + width || at.y >= y + height;
    byId('position').textContent = `${Math.floor(at.x)}, ${Math.floor(at.y)}`;
  }

  /** The zoom at which the whole picture is in sight, never above its actual size times 4. */
  fittingZoom() {
    const room = 48;
    const zoom = Math.min(
      (this.element.clientWidth - room) / this.area.width,
      (this.element.clientHeight - room) / this.area.height,
    );
    return Math.min(Math.max(zoom, 0.02), 4);
  }

  fit() {
    this.view.fit = true;
    this.refresh();
  }

  /** Zooms around a place of the stage; without one around its middle. */
  zoomTo(zoom, left = this.element.clientWidth / 2, top = this.element.clientHeight / 2) {
    const view = this.view;
    const next = Math.min(Math.max(zoom, 0.02), 32);
    view.x = left - ((left - view.x) * next) / view.zoom;
    view.y = top - ((top - view.y) * next) / view.zoom;
    view.zoom = next;
    view.fit = false;
    this.refresh();
  }

  zoomBy(factor, left, top) {
    this.zoomTo(this.view.zoom * factor, left, top);
  }

  pan(dx, dy) {
    this.view.x += dx;
    this.view.y += dy;
    this.view.fit = false;
    this.refresh();
  }

  /** Left, top, right and bottom of a box in the stage. @param {Box} box */
  edgesOf([x, y, width, height]) {
    const {view, area} = this;
    const left = (x - area.x) * view.zoom + view.x;
    const top = (y - area.y) * view.zoom + view.y;
    return [left, top, left + width * view.zoom, top + height * view.zoom];
  }

  /** Brings a box into sight when none of it is. @param {?Box} box */
  reveal(box) {
    if (!box) return;
    const {clientWidth, clientHeight} = this.element;
    const [left, top, right, bottom] = this.edgesOf(box);
    const [width, height] = [right - left, bottom - top];
    const isVisible = (place, length, room) =>
      Math.min(place + length, room) - Math.max(place, 0) >= Math.min(length, 12);
    if (isVisible(left, width, clientWidth) && isVisible(top, height, clientHeight)) return;
    this.pan((clientWidth - width) / 2 - left, (clientHeight - height) / 2 - top);
  }

  refresh() {
    const view = this.view;
    if (view.fit) {
      view.zoom = this.fittingZoom();
      view.x = (this.element.clientWidth - this.area.width * view.zoom) / 2;
      view.y = (this.element.clientHeight - this.area.height * view.zoom) / 2;
    }
    this.keepInReach();
    this.host.style.transform = `translate(${view.x}px, ${view.y}px) scale(${view.zoom})`;
    this.on.zoomed(view.zoom);
    this.frames.draw();
  }

  /** Leaves a strip of the picture in the stage, so that it cannot be lost. */
  keepInReach() {
    const strip = 40;
    const view = this.view;
    const limit = (place, length, room) =>
      Math.min(Math.max(place, Math.min(strip - length, 0)), Math.max(room - strip, 0));
    view.x = limit(view.x, this.area.width * view.zoom, this.element.clientWidth);
    view.y = limit(view.y, this.area.height * view.zoom, this.element.clientHeight);
  }
}
