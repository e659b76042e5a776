// The elements of a picture: what the data says of them, their tree and where they are.

/**
 * @typedef {[number, number, number, number]} Box x, y, width, height
 *
 * @typedef {Object} PreviewElement
 * @property {number} id
 * @property {?number} parent
 * @property {string} kind
 * @property {string} label
 * @property {string} pointer
 * @property {string} place
 * @property {string} templatePointer
 * @property {boolean} isNull
 * @property {boolean} offScreen
 * @property {?Array} bounds
 * @property {?Array} enclosing
 * @property {{label: string, text: string, isDetail: ?boolean}[]} explanation
 * @property {*} members
 *
 * @typedef {PreviewElement & {children: TreeNode[], up: ?TreeNode, level: number, row: ?HTMLElement}} TreeNode
 *
 * @typedef {Object} Diagnostic
 * @property {string} level
 * @property {string} code
 * @property {string} message
 * @property {string} place
 * @property {string} pointer
 * @property {string} suggestion
 * @property {number} count
 * @property {?number} element
 * @property {string[]} includedFrom
 *
 * @typedef {Object} Picture
 * @property {string} size
 * @property {number} pass
 * @property {string} svg
 * @property {PreviewElement[]} elements
 * @property {Diagnostic[]} diagnostics
 */

/**
 * The entries that a picture takes from a list which all pictures share.
 * @param {Array} list
 * @param {number[]} runs the index of a first entry and how many, by turns
 */
function entriesOf(list, runs) {
  const entries = [];
  for (let at = 0; at < runs.length; at += 2) {
    for (let index = runs[at]; index < runs[at] + runs[at + 1]; ++index) entries.push(list[index]);
  }
  return entries;
}

/** A picture of the model with all that it is made of. @returns {Picture} */
function wholePicture(model, {size, pass, lines, elements, diagnostics}) {
  return {
    size,
    pass,
    svg: entriesOf(model.lines, lines).join('\n'),
    elements: entriesOf(model.elements, elements),
    diagnostics: entriesOf(model.diagnostics, diagnostics),
  };
}

/** What an element is known by in other pictures; a document stands where its Include does. */
const keyOf = (node) => `${node.kind} ${node.pointer}`;

/** Bounds as a box to draw; null when they are not four numbers. @returns {?Box} */
function boxFrom(bounds) {
  const isBox =
    Array.isArray(bounds) &&
    bounds.length >= 4 &&
    bounds.slice(0, 4).every((side) => typeof side === 'number');
  return isBox ? /** @type {Box} */ (bounds.slice(0, 4)) : null;
}

/** The smallest box around two, either of which may be missing. @returns {?Box} */
function around(a, b) {
  if (!a || !b) return a || b;
  const x = Math.min(a[0], b[0]);
  const y = Math.min(a[1], b[1]);
  const right = Math.max(a[0] + a[2], b[0] + b[2]);
  const bottom = Math.max(a[1] + a[3], b[1] + b[3]);
  return [x, y, right - x, bottom - y];
}

/**
 * Where an element is in the picture: its own bounds, else those of all inside it, else, for what
 * stands in an element, the bounds of that one.
 * @param {TreeNode} node
 * @returns {?Box}
 */
function boxOf(node) {
  const own = boxFrom(node.bounds);
  if (own) return own;
  const inside = (entry) =>
    boxFrom(entry.bounds) || entry.children.map(inside).reduce(around, null);
  const children = inside(node);
  if (children || node.isNull) return children;
  return node.up ? boxFrom(node.up.bounds) : null;
}

/**
 * The elements of a picture, linked to a tree and in its order.
 * @param {PreviewElement[]} elements
 * @returns {TreeNode[]}
 */
function linkElements(elements) {
  const nodes = elements.map((element) => ({
    ...element,
    children: [],
    up: null,
    level: 1,
    row: null,
  }));
  const byNumber = new Map(nodes.map((node) => [node.id, node]));
  const roots = [];
  for (const node of nodes) {
    node.up = byNumber.get(node.parent) || null;
    (node.up ? node.up.children : roots).push(node);
  }
  const ordered = [];
  const visit = (node, level) => {
    node.level = level;
    ordered.push(node);
    for (const child of node.children) visit(child, level + 1);
  };
  for (const root of roots) visit(root, 1);
  return ordered;
}

/** @param {Diagnostic[]} diagnostics @returns {Map<number, Diagnostic[]>} */
function groupByElement(diagnostics) {
  const groups = new Map();
  for (const diagnostic of diagnostics) {
    groups.set(diagnostic.element, [...(groups.get(diagnostic.element) || []), diagnostic]);
  }
  return groups;
}
