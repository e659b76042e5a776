/** The frames around elements in the stage: the one pointed at, the selected and its enclosing one. */
class Frames {
  /** @param {Stage} stage */
  constructor(stage) {
    this.stage = stage;
    this.clear();
  }

  /** Forgets the elements; the frames go when the stage is drawn again. */
  clear() {
    this.nodes = {hovered: null, selected: null};
  }

  /** @param {'hovered'|'selected'} which @param {?TreeNode} node */
  mark(which, node) {
    this.nodes[which] = node;
    this.draw();
  }

  draw() {
    const {hovered, selected} = this.nodes;
    this.drawFrame(byId('hovered-frame'), hovered === selected ? null : hovered);
    this.drawFrame(byId('selected-frame'), selected);
    const box = selected && boxFrom(selected.bounds) ? boxFrom(selected.enclosing) : null;
    this.placeFrame(byId('enclosing-frame'), box);
  }

  drawFrame(frame, node) {
    const box = node ? boxOf(node) : null;
    frame.classList.toggle('borrowed', Boolean(box) && !boxFrom(node.bounds));
    const top = this.placeFrame(frame, box);
    const tag = frame.querySelector('.tag');
    if (!tag || !box) return;
    tag.textContent = `${box[2]} × ${box[3]}`;
    tag.classList.toggle('inside', top < 20);
  }

  /** Lays a frame around a box as far as it is near the stage. @returns {number} its upper edge */
  placeFrame(frame, box) {
    frame.hidden = !box || box[2] < 0 || box[3] < 0;
    if (frame.hidden) return 0;
    const margin = 4;
    const {clientWidth, clientHeight} = this.stage.element;
    const [left, top, right, bottom] = this.stage.edgesOf(box).map((edge, index) =>
      Math.min(Math.max(edge, -margin), (index % 2 === 0 ? clientWidth : clientHeight) + margin),
    );
    frame.style.transform = `translate(${left}px, ${top}px)`;
    frame.style.width = `${right - left}px`;
    frame.style.height = `${bottom - top}px`;
    return top;
  }
}
