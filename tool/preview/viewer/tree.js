/** The elements as an ARIA tree: one row for each, in one list, with its level. */
class Tree {
  /** @param {{hover: function(?number), select: function(?number)}} on */
  constructor(on) {
    this.on = on;
    this.element = byId('tree');
    /** @type {TreeNode[]} */
    this.nodes = [];
    /** Keys of the elements that were opened or closed, which outlasts a change of the picture. */
    this.toggled = new Set();
    this.current = null;
    this.hoveredRow = null;
    this.listen();
  }

  listen() {
    const tree = this.element;
    tree.addEventListener('click', (event) => this.click(event));
    tree.addEventListener('keydown', (event) => this.key(event));
    tree.addEventListener('pointerover', (event) => this.on.hover(this.numberAt(event.target)));
    tree.addEventListener('pointerleave', () => this.on.hover(null));
    tree.addEventListener('focus', () => this.current && this.current.row.focus());
  }

  /** @returns {?number} */
  numberAt(target) {
    const row = target.closest('.row');
    return row ? Number(row.dataset.element) : null;
  }

  /** @param {TreeNode[]} nodes in the order of the tree @param {Map<number, Diagnostic[]>} findings */
  show(nodes, findings) {
    const hadFocus = this.element.contains(document.activeElement);
    const scrolled = this.element.scrollTop;
    const last = this.current;
    this.nodes = nodes;
    for (const node of nodes) node.row = this.makeRow(node, findings.get(node.id) || []);
    this.numberSiblings(nodes.filter((node) => !node.up));
    this.element.replaceChildren(...nodes.map((node) => node.row));
    this.refresh();
    this.current = null;
    this.hoveredRow = null;
    this.setCurrent(
      nodes.find((node) => last && keyOf(node) === keyOf(last)) || nodes[0] || null,
    );
    this.element.scrollTop = scrolled;
    if (hadFocus && this.current) this.current.row.focus({preventScroll: true});
  }

  numberSiblings(siblings) {
    siblings.forEach((node, index) => {
      node.row.setAttribute('aria-posinset', String(index + 1));
      node.row.setAttribute('aria-setsize', String(siblings.length));
      this.numberSiblings(node.children);
    });
  }

  makeRow(node, findings) {
    const row = make('div', node.isNull ? 'row null' : 'row');
    row.setAttribute('role', 'treeitem');
    row.setAttribute('aria-level', String(node.level));
    row.setAttribute('aria-selected', 'false');
    row.dataset.element = String(node.id);
    row.tabIndex = -1;
    row.style.setProperty('--level', String(Math.min(node.level, 12)));
    const twisty = make('span', 'twisty');
    if (node.children.length > 0) twisty.append(drawing(drawings.twisty));
    row.append(
      twisty,
      drawing(drawings[node.kind] || drawings.other, 'kind'),
      make('span', 'unseen', node.label.startsWith(node.kind) ? '' : `${node.kind} `),
      make('span', 'label', node.label),
    );
    row.title = `${node.label}\n${node.place}`;
    row.append(...chipsOf(node, findings));
    if (node.isNull) row.append(make('span', 'place', node.place));
    return row;
  }

  /** All is open at first, but for what became null. */
  isClosed(node) {
    return node.isNull !== this.toggled.has(keyOf(node));
  }

  /** Hides what is inside of closed elements. */
  refresh() {
    for (const node of this.nodes) {
      const isClosed = this.isClosed(node);
      node.row.hidden =
        Boolean(node.up) && (node.up.row.hidden || this.isClosed(node.up));
      if (node.children.length > 0) node.row.setAttribute('aria-expanded', String(!isClosed));
    }
  }

  /** @param {TreeNode} node @param {boolean} isClosed */
  setClosed(node, isClosed) {
    if (node.children.length === 0) return;
    if (isClosed === this.isClosed(node)) return;
    if (!this.toggled.delete(keyOf(node))) this.toggled.add(keyOf(node));
    this.refresh();
  }

  /** Makes one row the one that the Tab key reaches. */
  setCurrent(node) {
    if (this.current) this.current.row.tabIndex = -1;
    this.current = node;
    if (node) node.row.tabIndex = 0;
  }

  /** Marks a row as selected, inside of open elements only. @param {?TreeNode} node */
  select(node) {
    for (const row of this.element.querySelectorAll('[aria-selected=true]')) {
      row.setAttribute('aria-selected', 'false');
    }
    if (!node) return;
    for (let up = node.up; up; up = up.up) this.setClosed(up, false);
    node.row.setAttribute('aria-selected', 'true');
    this.setCurrent(node);
  }

  /** @param {?TreeNode} node */
  hover(node) {
    if (this.hoveredRow) this.hoveredRow.classList.remove('hovered');
    this.hoveredRow = node && node.row;
    if (node) node.row.classList.add('hovered');
  }

  click(event) {
    const node = this.nodes.find((entry) => entry.row === event.target.closest('.row'));
    if (!node) return;
    if (event.target.closest('.twisty') && node.children.length > 0) {
      this.setClosed(node, !this.isClosed(node));
      if (this.current && this.current.row.hidden) this.go(node);
      return;
    }
    this.go(node);
  }

  /** Moves focus and selection. @param {TreeNode|undefined} node */
  go(node) {
    if (!node) return;
    this.on.select(node.id);
    node.row.focus();
  }

  key(event) {
    const node = this.current;
    if (!node || event.ctrlKey || event.altKey || event.metaKey) return;
    const visible = this.nodes.filter((entry) => !entry.row.hidden);
    const index = visible.indexOf(node);
    const actions = {
      ArrowDown: () => this.go(visible[index + 1]),
      ArrowUp: () => this.go(visible[index - 1]),
      ArrowRight: () => this.openOrEnter(node),
      ArrowLeft: () => this.closeOrLeave(node),
      Home: () => this.go(visible[0]),
      End: () => this.go(visible[visible.length - 1]),
      Enter: () => this.go(node),
      ' ': () => this.go(node),
      '*': () =>
        (node.up ? node.up.children : [node]).forEach((entry) => this.setClosed(entry, false)),
    };
    if (!Object.hasOwn(actions, event.key)) return;
    event.preventDefault();
    event.stopPropagation();
    actions[event.key]();
  }

  openOrEnter(node) {
    if (this.isClosed(node)) this.setClosed(node, false);
    else this.go(node.children[0]);
  }

  closeOrLeave(node) {
    if (node.children.length > 0 && !this.isClosed(node)) this.setClosed(node, true);
    else this.go(node.up || undefined);
  }
}
