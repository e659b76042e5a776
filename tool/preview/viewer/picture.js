// The SVG of a picture, before the stage shows it.

/** The style inside of the picture, which the page's own does not reach. */
function pictureStyle() {
  return make(
    'style',
    '',
    ':host { all: initial; } :host > svg { display: block; width: 100%; height: 100%; }' +
      ' * { pointer-events: none; } .element * { pointer-events: visiblePainted; }' +
      ' .element > rect:first-child { pointer-events: all; }',
  );
}

/** The lists below the drawing tell what the tree does, so the drawing ends where they begin. */
function removeNotes(svg) {
  const notes = svg.querySelector('.notes');
  if (!notes || !notes.firstElementChild) return;
  const {x, y, width} = areaOf(svg, '');
  const height = Number(notes.firstElementChild.getAttribute('y')) - y;
  svg.setAttribute('viewBox', `${x} ${y} ${width} ${height}`);
  notes.remove();
}

/**
 * The part of the plane that a picture shows, in units of the screen.
 * @param {Element} svg @param {string} size of the screen, for want of better
 */
function areaOf(svg, size) {
  const numbers = (text, separator) => text.split(separator).map(Number);
  const [x, y, width, height] = svg.hasAttribute('viewBox')
    ? numbers(svg.getAttribute('viewBox').trim(), /[\s,]+/)
    : [0, 0, ...numbers(size, 'x')];
  return {x: x || 0, y: y || 0, width: width || 1, height: height || 1};
}
