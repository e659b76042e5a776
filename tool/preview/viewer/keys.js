/** What the keys do in the page, the picture and the tree. */
class Keys {
  /** @param {Viewer} viewer */
  constructor(viewer) {
    this.viewer = viewer;
  }

  listen() {
    document.addEventListener('keydown', (event) => {
      const target = event.target;
      if (event.ctrlKey || event.altKey || event.metaKey || byId('keys').open) return;
      if (event.key === '?') byId('keys').showModal();
      else if (target === byId('stage') && this.moveKey(event)) event.preventDefault();
      else if (this.takesKeys(target) && this.viewKey(event)) event.preventDefault();
    });
  }

  /** Single letters act in picture and tree, so that they disturb no other control. */
  takesKeys(target) {
    return (
      target === document.body || byId('stage').contains(target) || byId('tree').contains(target)
    );
  }

  /** @returns {boolean} whether the key moves the picture */
  moveKey(event) {
    const step = event.shiftKey ? 200 : 50;
    const page = byId('stage').clientHeight * 0.8;
    const moves = {
      ArrowLeft: [step, 0],
      ArrowRight: [-step, 0],
      ArrowUp: [0, step],
      ArrowDown: [0, -step],
      ' ': [0, event.shiftKey ? page : -page],
    };
    if (!Object.hasOwn(moves, event.key)) return false;
    this.viewer.stage.pan(...moves[event.key]);
    return true;
  }

  /** @returns {boolean} whether the key does something in picture and tree */
  viewKey(event) {
    const hasPasses = !byId('passes').hidden;
    const actions = {
      '+': () => this.viewer.stage.zoomBy(1.25),
      '=': () => this.viewer.stage.zoomBy(1.25),
      '-': () => this.viewer.stage.zoomBy(0.8),
      0: () => this.viewer.stage.fit(),
      1: () => this.viewer.stage.zoomTo(1),
      n: () => this.viewer.selectDrawn(event.shiftKey ? -1 : 1),
      Escape: () => this.viewer.select(null),
      ...(hasPasses
        ? {
            '.': () => this.viewer.step(1),
            ',': () => this.viewer.step(-1),
            p: () => this.viewer.play(this.viewer.timer === 0),
          }
        : {}),
    };
    const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
    if (!Object.hasOwn(actions, key)) return false;
    actions[key]();
    return true;
  }
}
