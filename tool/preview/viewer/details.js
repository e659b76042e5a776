// What the inspector tells about an element.

/**
 * What is to be noticed about an element.
 * @param {TreeNode} node @param {Diagnostic[]} findings
 */
function chipsOf(node, findings) {
  const chips = [];
  if (node.isNull) chips.push(make('span', 'chip', 'null'));
  if (node.offScreen) chips.push(make('span', 'chip', 'off screen'));
  for (const level of ['error', 'warning']) {
    const count = findings.filter((finding) => finding.level === level).length;
    if (count > 0) chips.push(make('span', `chip ${level}`, plural(count, level)));
  }
  return chips;
}

/** Everything about one element. @param {?TreeNode} node @param {Diagnostic[]} findings */
function showDetails(node, findings) {
  const details = byId('details');
  const heading = make('h2', '', node ? node.kind : 'Details');
  if (!node) {
    const hint =
      'Point at an element of the picture or of the tree, or select one, to see what it' +
      ' became and where in the template it comes from.';
    details.replaceChildren(heading, make('p', 'hint', hint));
    return;
  }
  const list = make('dl', '');
  const chips = make('div', 'chips', ...chipsOf(node, findings));
  details.replaceChildren(
    heading,
    make('h3', '', node.label),
    ...(chips.hasChildNodes() ? [chips] : []),
    list,
  );
  addPlaces(list, node);
  addBounds(list, node);
  if (node.explanation.length > 0) {
    details.append(make('h4', '', 'Explanation'), explanationList(node.explanation));
  }
  if (node.isNull || node.members === undefined) return;
  const writer = new JsonWriter();
  writer.value(node.members, '', false);
  details.append(make('h4', '', 'Resolved'), writer.output);
}

/** Adds a row to a list of descriptions, unless it is empty. */
function describe(list, term, content) {
  if (!content) return;
  list.append(make('dt', '', term), make('dd', '', content));
}

/** @param {HTMLElement} list @param {TreeNode} node */
function addPlaces(list, node) {
  if (node.isNull) {
    list.append(make('dt', '', 'Value'), make('dd', 'prose', 'null: nothing is shown for it'));
  }
  describe(list, 'Template', node.place);
  describe(list, 'Pointer', node.templatePointer || '(whole file)');
  describe(list, 'Result', node.pointer || '(whole page)');
}

/** @param {HTMLElement} list @param {TreeNode} node */
function addBounds(list, node) {
  const sides = (bounds) => {
    const names = ['x', 'y', 'w', 'h'];
    return make(
      'span',
      'sides',
      ...bounds.map((side, index) =>
        make('span', '', make('i', '', `${names[index] || ''} `), JSON.stringify(side)),
      ),
    );
  };
  if (Array.isArray(node.bounds)) describe(list, 'Bounds', sides(node.bounds));
  if (Array.isArray(node.enclosing)) describe(list, 'Within', sides(node.enclosing));
}

/** Why the element is what it is; details stand below the line that they belong to. */
function explanationList(lines) {
  const list = make('dl', 'explanation');
  for (const {label, text, isDetail} of lines) {
    if (!isDetail) {
      list.append(make('dt', '', label), make('dd', '', text));
      continue;
    }
    const line = list.lastElementChild;
    if (!line.querySelector('ul')) line.append(make('ul', ''));
    line.querySelector('ul').append(make('li', '', `${label}: ${text}`));
  }
  return list;
}
