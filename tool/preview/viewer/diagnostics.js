// The list of diagnostics.

/** @param {Diagnostic[]} diagnostics @param {function(number)} select */
function showDiagnostics(diagnostics, select) {
  const count = (level) => diagnostics.filter((entry) => entry.level === level).length;
  const counts = ['error', 'warning'].filter(count).map((level) => plural(count(level), level));
  byId('diagnostic-count').textContent = counts.join(', ');
  byId('no-diagnostics').hidden = diagnostics.length > 0;
  byId('diagnostics-pane').classList.toggle('none', diagnostics.length === 0);
  byId('diagnostics').hidden = diagnostics.length === 0;
  byId('diagnostics').replaceChildren(
    ...diagnostics.map((entry) => make('li', '', finding(entry, select))),
  );
}

/** One diagnostic; a button when it belongs to an element. */
function finding(entry, select) {
  const isButton = entry.element !== null && entry.element !== undefined;
  const item = make(isButton ? 'button' : 'div', 'finding');
  const head = make(
    'span',
    'head',
    make('span', `chip ${entry.level}`, entry.level),
    make('span', 'code', entry.code),
  );
  if (entry.count > 1) head.append(make('span', 'chip', `× ${entry.count}`));
  item.append(head, make('span', '', entry.message));
  if (entry.suggestion) item.append(make('span', 'suggestion', entry.suggestion));
  item.append(make('span', 'from', entry.place));
  for (const from of entry.includedFrom || []) {
    item.append(make('span', 'from', `included from ${from}`));
  }
  if (isButton) {
    item.type = 'button';
    item.dataset.element = String(entry.element);
    item.addEventListener('click', () => select(entry.element));
  }
  return item;
}
