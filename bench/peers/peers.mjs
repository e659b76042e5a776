// Prints how long each engine takes for the grid page, beside the resolver:
//
//     node peers.mjs FOLDER
//
// FOLDER holds what time_cells printed, cells.txt, and what the resolver made of the page,
// grid/100/resolved.json and grid/1000/resolved.json. An engine that makes another document is an
// error.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import Handlebars from 'handlebars';
import jsone from 'json-e';

const folder = process.argv[2];
const sizes = [100, 1000];
const title = 'Dish';

// The functions that json-e and handlebars are given.
const percent = (text, whole) => parseFloat(text) * whole / 100;
const colour = (text) => parseInt(text.slice(7) + text.slice(1, 7), 16);

Handlebars.registerHelper({
  percent,
  colour,
  add: (a, b) => a + b,
  lowercase(block) { return block.fn(this).toLowerCase(); },
  grid(count, { fn, hash: { columns, width, height } }) {
    const cell = (_, i) => fn({ i, x: i % columns * width, y: Math.floor(i / columns) * height });
    return Array.from({ length: count }, cell).join(',');
  },
});

const peerFile = (name) => fileURLToPath(new URL(name, import.meta.url));
const peerText = (name) => readFileSync(peerFile(name), 'utf8');

const jsonnet = (...words) => execFileSync('jsonnet', words);
const jsonnetFile = peerFile('grid.jsonnet');
const jsoneText = peerText('grid.json-e.json');
const handlebarsText = peerText('grid.hbs');
const compiled = (text) => Handlebars.compile(text, { noEscape: true });
const handlebarsPage = compiled(handlebarsText);

const versions = JSON.parse(peerText('package.json')).dependencies;
const jsonnetVersion = jsonnet('--version').toString().match(/[\d.]+/)[0];

// `page` makes the text of the page with `count` cells; the time of `startUp` is taken off.
const engines = [
  {
    name: `jsonnet ${jsonnetVersion}`,
    measured: 'process, less the process for {}',
    startUp: () => jsonnet('--exec', '{}'),
    page: (count) =>
      jsonnet('--tla-str', `title=${title}`, '--tla-code', `count=${count}`, jsonnetFile),
  },
  {
    name: `json-e ${versions['json-e']}`,
    measured: 'parse + render + write',
    page: (count) =>
      JSON.stringify(jsone(JSON.parse(jsoneText), { title, count, percent, colour })),
  },
  {
    name: `handlebars ${versions.handlebars}`,
    measured: 'parse + render',
    page: (count) => compiled(handlebarsText)({ title, count }),
  },
  {
    name: `handlebars ${versions.handlebars}`,
    measured: 'render',
    page: (count) => handlebarsPage({ title, count }),
  },
];

function checkPage(name, count, text) {
  const resolved = JSON.parse(readFileSync(`${folder}/grid/${count}/resolved.json`, 'utf8'));
  assert.deepEqual(JSON.parse(text), resolved, `${name} makes another page of ${count} cells`);
}

// Microseconds: the median of 15 rounds of about 0.1 s, after a warm-up of 1 s.
function timeOf(step) {
  const now = () => performance.now();
  let warmUps = 0;
  for (const end = now() + 1000; now() < end; ++warmUps) step();
  const steps = Math.ceil(warmUps / 10);
  const rounds = Array.from({ length: 15 }, () => {
    const start = now();
    for (let i = 0; i < steps; ++i) step();
    return (now() - start) * 1000 / steps;
  });
  return rounds.sort((a, b) => a - b)[7];
}

function timesPerCell({ name, startUp, page }) {
  const startUpTime = startUp ? timeOf(startUp) : 0;
  return sizes.map((count) => {
    checkPage(name, count, page(count));
    return (timeOf(() => page(count)) - startUpTime) / count;
  });
}

// The lines "ENGINE|MEASURED|CELLS|MICROSECONDS" of time_cells, as [[engine, measured], times].
function nativeTimes() {
  const lines = readFileSync(`${folder}/cells.txt`, 'utf8').trim().split('\n');
  const times = new Map();
  for (const line of lines) {
    const [name, measured, cells, time] = line.split('|');
    const key = JSON.stringify([name, measured]);
    times.set(key, [...times.get(key) ?? [], { cells: Number(cells), time: Number(time) }]);
  }
  return [...times].map(([key, found]) =>
    [JSON.parse(key), sizes.map((size) => found.find(({ cells }) => cells === size).time)]);
}

const native = nativeTimes();
const resolverTimes = native[0][1];

function printLine(name, measured, figures) {
  const columns = figures.map((figure) => figure.padStart(11)).join('');
  console.log(name.padEnd(19) + measured.padEnd(33) + columns);
}

function printTimes(name, measured, times) {
  const ratios = times.map((time, i) => time / resolverTimes[i]);
  printLine(name, measured, [...times, ...ratios].map((figure) => figure.toFixed(2)));
}

printLine('engine', 'measured, µs per cell',
  [...sizes.map((count) => `${count} cells`), ...sizes.map((count) => `ratio ${count}`)]);
for (const [[name, measured], times] of native) printTimes(name, measured, times);
for (const engine of engines) printTimes(engine.name, engine.measured, timesPerCell(engine));
