// Data for the viewer that no page of the examples leads to: faults of every kind, hostile texts, an
// outdated page, thousands of elements. The picture is drawn from the elements.

const colours = ['#16324f', '#1e5aa8', '#102a20', '#5a3a12', '#47224f'];

/** Text as it may stand in XML. */
const escaped = (text) => text.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/"/g, '&quot;');

/** One element with the defaults of all members. */
export function element(id, parent, overrides = {}) {
  return {
    id,
    parent,
    kind: 'element',
    label: `Element ${id}`,
    pointer: `/Page/Contents/${id}`,
    place: `page.json:${id + 1}:5`,
    templatePointer: `/Page/Contents/${id}`,
    isNull: false,
    offScreen: false,
    bounds: null,
    enclosing: null,
    explanation: [],
    members: {},
    ...overrides,
  };
}

/** One diagnostic with the defaults of all members. */
export function diagnostic(overrides = {}) {
  return {
    level: 'warning',
    code: 'unknown-token',
    message: 'no handler answers $(rooom.name)',
    place: 'page.json:5:7',
    pointer: '/Page/Contents/2',
    suggestion: '',
    count: 1,
    element: null,
    includedFrom: [],
    ...overrides,
  };
}

/** A drawing of all elements with bounds, as the tool makes it. */
export function draw(size, elements) {
  const [width, height] = size.split('x');
  const groups = elements
    .filter((entry) => entry.bounds)
    .map((entry) => {
      const [x, y, w, h] = entry.bounds;
      return (
        `<g class="element" data-id="${entry.id}"><rect x="${x}" y="${y}" width="${w}" height="${h}"` +
        ` fill="${colours[entry.id % colours.length]}"/><text x="${x + 8}" y="${y + 24}" fill="#fff"` +
        ` font-family="DejaVu Sans" font-size="16">${escaped(entry.label)}</text></g>`
      );
    });
  return (
    `<svg xmlns="http://www.w3.org/2000/svg" width="${width}" height="${height}"` +
    ` viewBox="0 0 ${width} ${height}">\n${groups.join('\n')}</svg>`
  );
}

export function picture(size, pass, elements, diagnostics = []) {
  return {size, pass, svg: draw(size, elements), elements, diagnostics};
}

/** Entries, each of them once, and lists of them told by runs: a first index and a count, by turns. */
class Pool {
  constructor() {
    this.entries = [];
    this.indices = new Map();
  }

  runs(list) {
    const runs = [];
    for (const entry of list) {
      const key = JSON.stringify(entry);
      if (!this.indices.has(key)) this.indices.set(key, this.entries.push(entry) - 1);
      const index = this.indices.get(key);
      if (runs.length > 0 && runs.at(-2) + runs.at(-1) === index) ++runs[runs.length - 1];
      else runs.push(index, 1);
    }
    return runs;
  }
}

/** A model as the tool writes it: what its pictures have in common is there once. */
export function shared(model) {
  const [lines, elements, diagnostics] = [new Pool(), new Pool(), new Pool()];
  const pictures = model.pictures.map((entry) => ({
    size: entry.size,
    pass: entry.pass,
    lines: lines.runs(entry.svg.split('\n')),
    elements: elements.runs(entry.elements),
    diagnostics: diagnostics.runs(entry.diagnostics),
  }));
  return {
    ...model,
    pictures,
    lines: lines.entries,
    elements: elements.entries,
    diagnostics: diagnostics.entries,
  };
}

/** A model of one picture, unless told otherwise. */
export function model(pictures, overrides = {}) {
  return {
    page: 'page.json',
    sizes: [...new Set(pictures.map((entry) => entry.size))],
    passes: Math.max(0, ...pictures.map((entry) => entry.pass)),
    live: false,
    outdated: '',
    pictures,
    ...overrides,
  };
}

/** A page with something of everything. Its ids: see the labels. */
export function everyKind() {
  return [
    element(0, null, {kind: 'document', label: 'page.json', pointer: '', templatePointer: ''}),
    element(1, 0, {
      label: 'RenderType 1',
      bounds: [0, 0, 1280, 720],
      enclosing: [0, 0, 1280, 720],
      members: {Bounds: [0, 0, 1280, 720], Display: [4278916128], RenderType: 1},
    }),
    element(2, 0, {
      label: 'RenderType 2 "Welcome"',
      bounds: [116, 80, 640, 48],
      enclosing: [100, 60, 1000, 400],
      explanation: [
        {label: 'Bounds', text: '[116,80,640,48], within 100,60 1000x400 of the screen'},
        {label: 'x', text: '116 from 16: 16 + 100 = 116', isDetail: true},
        {label: 'width', text: '640 from "50%": 50% of 1280 = 640', isDetail: true},
        {label: 'token', text: '$(host) in Contents/0: "Ada", by host from values.json'},
      ],
      place: 'header.json:5:7',
      templatePointer: '/Contents/2',
      members: {
        Bounds: [116, 80, 640, 48],
        Play: {rate: 1.5, loop: true, next: null},
        RenderType: 2,
      },
    }),
    element(3, 2, {
      kind: 'text',
      label: 'Welcome',
      pointer: '/Page/Contents/2/Contents/0',
      members: 'Welcome',
    }),
    element(4, 0, {
      kind: 'If',
      label: 'If $(alarm.level) > 0',
      isNull: true,
      place: 'page.json:77:9',
    }),
    element(5, 0, {kind: 'Loop', label: 'Loop over $(rooms)'}),
    element(6, 5, {label: 'copy 0', bounds: [100, 300, 200, 160], enclosing: [100, 300, 200, 160]}),
    element(7, 5, {label: 'copy 1', bounds: [320, 300, 200, 160], enclosing: [320, 300, 200, 160]}),
    element(8, 0, {
      label: 'far away',
      bounds: [1200, 600, 400, 100],
      enclosing: [0, 0, 1280, 720],
      offScreen: true,
    }),
  ];
}

export const someDiagnostics = [
  diagnostic({
    element: 7,
    count: 3,
    suggestion: 'did you mean $(room.name)?',
    includedFrom: ['page.json:3:4'],
  }),
  diagnostic({
    level: 'error',
    code: 'not-a-colour',
    message: 'not a colour: #F0F',
    place: 'page.json:9:11',
  }),
];

/** `count` elements in rows of 60, each with a text inside. */
export function manyElements(count) {
  const elements = [element(0, null, {kind: 'document', label: 'page.json', pointer: ''})];
  for (let id = 1; id < count; id += 2) {
    const cell = (id - 1) / 2;
    const bounds = [(cell % 60) * 21, Math.floor(cell / 60) * 28, 20, 26];
    elements.push(element(id, 0, {label: `${id}`, bounds, enclosing: [0, 0, 1280, 720]}));
    elements.push(element(id + 1, id, {kind: 'text', label: `text ${id}`, members: `text ${id}`}));
  }
  return elements.slice(0, count);
}
