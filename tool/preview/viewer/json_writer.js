/** Writes a JSON value into a <pre>, coloured, up to a limit. */
class JsonWriter {
  constructor() {
    this.output = make('pre', '');
    this.left = 20000;
  }

  add(className, text) {
    if (this.left <= 0) return;
    const shown = text.slice(0, this.left);
    this.left -= text.length;
    this.output.append(className ? make('span', className, shown) : shown);
    if (this.left <= 0) this.output.append(' … (the rest is not shown)');
  }

  /** @param {boolean} isColour whether numbers are colour words */
  value(value, indent, isColour) {
    if (this.left <= 0) return;
    if (Array.isArray(value))
      this.list(
        '[]',
        value.map((entry) => [null, entry]),
        indent,
        isColour,
      );
    else if (value && typeof value === 'object')
      this.list('{}', Object.entries(value), indent, false);
    else this.scalar(value, isColour);
  }

  scalar(value, isColour) {
    const kinds = {string: 'json-text', number: 'json-number'};
    this.add(kinds[typeof value] || 'json-word', JSON.stringify(value));
    if (!isColour || !Number.isInteger(value) || value < 0 || value > 0xffffffff) return;
    const hex = value.toString(16).padStart(8, '0').toUpperCase();
    const colour = `#${hex.slice(2)}${hex.slice(0, 2)}`;
    const swatch = make('span', 'swatch');
    swatch.style.backgroundColor = colour;
    this.output.append(swatch);
    this.add('json-word', colour);
  }

  /** Arrays of scalars stand on one line, all others on a line for each entry. */
  list(brackets, entries, indent, isColour) {
    const isFlat = brackets === '[]' && entries.every(([, entry]) => !(entry instanceof Object));
    const next = isFlat ? indent : indent + '  ';
    this.add('', brackets[0]);
    entries.forEach(([name, entry], index) => {
      const gap = index > 0 ? ', ' : '';
      this.add('', isFlat ? gap : gap.trim() + '\n' + next);
      if (name !== null) {
        this.add('json-name', JSON.stringify(name));
        this.add('', ': ');
      }
      this.value(entry, next, isColour || name === 'Display');
    });
    this.add('', (isFlat || entries.length === 0 ? '' : '\n' + indent) + brackets[1]);
  }
}
