/** Keeps picture, tree, details and diagnostics in step. */
class Viewer {
  constructor(model) {
    this.model = model;
    this.size = '';
    this.pass = 1;
    /** @type {Map<number, TreeNode>} */
    this.nodes = new Map();
    /** @type {Map<number, Diagnostic[]>} */
    this.findings = new Map();
    this.selected = null;
    this.hovered = null;
    this.timer = 0;
    const on = {
      hover: (number) => this.hover(this.nodes.get(number) || null),
      select: (number) => this.select(this.nodes.get(number) || null),
      zoomed: (zoom) => {
        byId('zoom-level').textContent = `${Math.round(zoom * 100)}%`;
      },
    };
    this.stage = new Stage(on);
    this.tree = new Tree(on);
  }

  start() {
    const model = this.model;
    document.title = `${model.page} - preview`;
    byId('title').replaceChildren(model.page, make('span', '', ' preview'));
    byId('outdated').hidden = !model.outdated;
    byId('outdated').replaceChildren(make('strong', '', 'OUTDATED:'), ` ${model.outdated || ''}`);
    byId('size').replaceChildren(
      ...model.sizes.map((size) => new Option(size.replace('x', ' × '), size)),
    );
    byId('sizes').hidden = model.sizes.length < 2;
    this.listen();
    new Keys(this).listen();
    if (model.pictures.length === 0) {
      this.stage.showNothing('There is no picture.');
      showDetails(null, []);
      showDiagnostics([], () => {});
      return;
    }
    this.restore(memory.recall());
    window.addEventListener('pagehide', () => memory.keep(this.state()));
  }

  /** Everything that a reload keeps. */
  state() {
    const focused = document.activeElement;
    return {
      size: this.size,
      pass: this.pass,
      selected: this.selected ? keyOf(this.selected) : null,
      view: this.stage.view,
      toggled: [...this.tree.toggled],
      playing: this.timer !== 0,
      scrolled: this.tree.element.scrollTop,
      focus: this.tree.element.contains(focused) ? 'tree' : (focused && focused.id) || '',
    };
  }

  restore(state) {
    const isKnown = this.model.sizes.includes(state.size);
    this.tree.toggled = new Set(state.toggled || []);
    if (state.view) Object.assign(this.stage.view, state.view);
    this.show(isKnown ? state.size : this.model.pictures[0].size, state.pass || 1);
    this.mark(this.withKey(state.selected) || null);
    this.tree.element.scrollTop = state.scrolled || 0;
    if (state.playing) this.play(true);
    if (state.focus && byId(state.focus)) byId(state.focus).focus();
  }

  withKey(key) {
    return [...this.nodes.values()].find((node) => keyOf(node) === key);
  }

  /** Shows a picture; what was selected stays selected when it is in this one too. */
  show(size, pass) {
    const passes = this.model.pictures.filter((picture) => picture.size === size);
    const kept = passes.find((entry) => entry.pass === pass) || passes[0];
    const picture = wholePicture(this.model, kept);
    const key = this.selected ? keyOf(this.selected) : null;
    this.size = picture.size;
    this.pass = picture.pass;
    this.showControls(passes);
    const ordered = linkElements(picture.elements);
    this.nodes = new Map(ordered.map((node) => [node.id, node]));
    this.findings = groupByElement(picture.diagnostics);
    byId('element-count').textContent = String(ordered.length);
    byId('stage').setAttribute(
      'aria-label',
      `Picture of ${this.model.page}, ${this.size.replace('x', ' by ')}`,
    );
    this.hovered = null;
    this.selected = null;
    this.stage.frames.clear();
    this.stage.show(picture);
    this.tree.show(ordered, this.findings);
    showDiagnostics(picture.diagnostics, (number) => this.select(this.nodes.get(number) || null));
    this.mark(this.withKey(key) || null);
  }

  /** @param {{pass: number}[]} passes of the size that is shown */
  showControls(passes) {
    const [first, last] = [passes[0].pass, passes[passes.length - 1].pass];
    const range = first === 1 ? `of ${last}` : `(${first} to ${last})`;
    byId('size').value = this.size;
    byId('passes').hidden = passes.length < 2;
    byId('pass').min = String(first);
    byId('pass').max = String(last);
    byId('pass').value = String(this.pass);
    byId('pass').setAttribute('aria-valuetext', `${this.pass} ${range}`);
    byId('pass-text').textContent = `Pass ${this.pass} ${range}`;
    if (passes.length < 2) this.play(false);
  }

  /** Shows the pass that is so many further on; after the last comes the first. */
  step(count) {
    const [first, last] = [Number(byId('pass').min), Number(byId('pass').max)];
    const passes = last - first + 1;
    this.show(this.size, ((this.pass - first + count + passes) % passes) + first);
  }

  play(isPlaying) {
    clearInterval(this.timer);
    this.timer = isPlaying ? setInterval(() => this.step(1), 1500) : 0;
    byId('play').setAttribute('aria-label', isPlaying ? 'Pause the passes' : 'Play the passes');
    byId('play').title = isPlaying ? 'Pause (P)' : 'Play (P)';
    byId('play').replaceChildren(drawing(isPlaying ? drawings.pause : drawings.play));
    byId('pass-text').setAttribute('aria-live', isPlaying ? 'off' : 'polite');
  }

  /** @param {?TreeNode} node */
  hover(node) {
    if (node === this.hovered) return;
    this.hovered = node;
    this.stage.frames.mark('hovered', node);
    this.tree.hover(node);
    this.showDetails();
  }

  /** Selects an element and brings it into sight. @param {?TreeNode} node */
  select(node) {
    this.mark(node);
    if (!node) return;
    node.row.scrollIntoView({block: 'nearest'});
    this.stage.reveal(boxOf(node));
  }

  /** @param {?TreeNode} node */
  mark(node) {
    this.selected = node;
    this.stage.frames.mark('selected', node);
    this.tree.select(node);
    for (const button of document.querySelectorAll('#diagnostics button')) {
      button.setAttribute(
        'aria-current',
        String(Boolean(node) && button.dataset.element === String(node.id)),
      );
    }
    this.showDetails();
  }

  showDetails() {
    const node = this.hovered || this.selected;
    showDetails(node, node ? this.findings.get(node.id) || [] : []);
  }

  /** Selects the next element that is drawn, or the one before. */
  selectDrawn(step) {
    const drawn = [...this.nodes.values()].filter((node) => boxFrom(node.bounds));
    if (drawn.length === 0) return;
    const index = drawn.indexOf(this.selected);
    const next = index < 0 ? (step > 0 ? 0 : drawn.length - 1) : index + step;
    this.select(drawn[(next + drawn.length) % drawn.length]);
  }

  listen() {
    const on = (id, type, action) => byId(id).addEventListener(type, action);
    on('zoom-in', 'click', () => this.stage.zoomBy(1.25));
    on('zoom-out', 'click', () => this.stage.zoomBy(0.8));
    on('zoom-fit', 'click', () => this.stage.fit());
    on('zoom-one', 'click', () => this.stage.zoomTo(1));
    on('size', 'change', () => {
      this.stage.view.fit = true;
      this.show(byId('size').value, this.pass);
    });
    on('pass', 'input', () => {
      this.play(false);
      this.show(this.size, Number(byId('pass').value));
    });
    on('play', 'click', () => this.play(this.timer === 0));
    on('help', 'click', () => byId('keys').showModal());
    this.play(false);
  }
}
