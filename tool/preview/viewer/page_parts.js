// What the parts of the page are made of.

const svgNamespace = 'http://www.w3.org/2000/svg';

/** @param {string} id @returns {HTMLElement} */
const byId = (id) => document.getElementById(id);

/**
 * A new element with a class and a content: text, or further nodes.
 * @param {string} tag
 * @param {string} className
 * @param {...(string|Node)} content
 */
function make(tag, className, ...content) {
  const element = document.createElement(tag);
  if (className) element.className = className;
  element.append(...content);
  return element;
}

/** A drawing of 16 by 16 made of one path. */
function drawing(path, className) {
  const svg = document.createElementNS(svgNamespace, 'svg');
  svg.setAttribute('viewBox', '0 0 16 16');
  svg.setAttribute('aria-hidden', 'true');
  if (className) svg.setAttribute('class', className);
  const shape = document.createElementNS(svgNamespace, 'path');
  shape.setAttribute('d', path);
  svg.append(shape);
  return svg;
}

const drawings = {
  play: 'M4 2.5v11l9-5.5z',
  pause: 'M4 3h3v10H4zM9 3h3v10H9z',
  twisty: 'M5.5 3.5v9l6-4.5z',
  element: 'M2.5 3.5h11v9h-11z',
  text: 'M3 4.5v-1h10v1M8 3.5v9M6.2 12.5h3.6',
  Include: 'M4 2.5h5l3 3v8H4zM9 2.5v3h3M6 10.5h4M8.3 8.8l1.7 1.7-1.7 1.7',
  document: 'M4 2.5h5l3 3v8H4zM9 2.5v3h3',
  If: 'M8 2.5l5.5 5.5L8 13.5 2.5 8z',
  Loop: 'M12.8 6.2A5.2 5.2 0 1 0 13.2 9M13.2 3v3.4H9.8',
  other: 'M5 8h.1M8 8h.1M11 8h.1',
};

/** "1 warning", "2 warnings". */
const plural = (count, word) => `${count} ${word}${count === 1 ? '' : 's'}`;
