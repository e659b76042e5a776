// What an editor makes of the schema: the names that it offers at a place in a page, what it tells
// of them, and what it marks. The place is the bar in the text.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";
import languageService from "vscode-json-languageservice";
import { legalPages, schema, wrongPages } from "./pages.mjs";

const { getLanguageService, TextDocument } = languageService;

const service = getLanguageService({});
service.configure({ schemas: [{ uri: schema.$id, fileMatch: ["*.json"], schema }] });

function open(text) {
  const offset = text.indexOf("|");
  const document = TextDocument.create("file:///page.json", "json", 1, text.replace("|", ""));
  return { document, json: service.parseJSONDocument(document), at: document.positionAt(offset) };
}

async function offered(text) {
  const { document, json, at } = open(text);
  const { items } = await service.doComplete(document, at, json);
  return items;
}

const names = async (text) => (await offered(text)).map(({ label }) => label).sort();

async function told(text) {
  const { document, json, at } = open(text);
  return (await service.doHover(document, at, json)).contents.join("\n");
}

const inElement = (text) => `{"Page": {"Contents": [{${text}}]}}`;

test("a document is a page or contents", async () => {
  assert.deepEqual(await names("{|}"), ["$schema", "Contents", "Page"]);
  assert.deepEqual(await names('{"Page": {|}}'), ["Contents", "Context"]);
});

test("an element has its members", async () => {
  assert.deepEqual(await names(inElement("|")), ["Bounds", "Container", "Contents", "Context",
    "Display", "Frame", "If", "Include", "Layout", "Loop", "Play", "Prec", "RenderType"]);
});

test("an element that is replaced has those that count only", async () => {
  for (const member of ["Include", "If", "Loop"]) {
    assert.deepEqual(await names(inElement(`"${member}": {}, |`)), ["Bounds", "Context"]);
  }
});

test("an If has its members", async () => {
  assert.deepEqual(await names(inElement('"If": {|}')),
    ["!=", "<", "==", ">", "Condition", "Contents", "Equals", "NotEquals"]);
});

test("a Loop has those of its kind", async () => {
  const both = ["Contents", "Key", "List", "Offset", "Size", "Start", "Stop", "Value", "Var"];
  assert.deepEqual(await names(inElement('"Loop": {|}')),
    ["Bounds", "CellHeight", "CellWidth", "Count", "Layout", ...both].sort());
  assert.deepEqual(await names(inElement('"Loop": {"Bounds": [], |}')), both);
});

test("an Include has a Filename", async () => {
  assert.deepEqual(await names(inElement('"Include": {|}')), ["Filename"]);
});

test("elements inside an If inside a Loop are elements", async () => {
  const inside = '"Loop": {"Contents": [{"If": {"Contents": [{|}]}}]}';
  assert.deepEqual(await names(inElement(inside)), await names(inElement("|")));
});

test("every name that is offered is told of", async () => {
  const places = ["{|}", '{"Page": {|}}', inElement("|"), inElement('"If": {|}'),
    inElement('"Loop": {|}'), inElement('"Include": {|}')];
  for (const place of places) {
    for (const { label, documentation } of await offered(place)) {
      assert.ok((documentation?.value ?? documentation ?? "").length > 20, `${place}: ${label}`);
    }
  }
});

test("the document shows what is offered", async () => {
  const page = new URL("../../docs/editor-setup.md", import.meta.url);
  const [, block] = readFileSync(page, "utf8").match(/```text completion\n([^]*?)```/);
  const items = await offered('{"Contents": [{"Loop": {"List": "$(trains)", |}}]}');
  const lines = items.map(({ label, documentation }) =>
    `${label.padEnd(11)} ${documentation.replace(/\. [A-Z][^]*/, ".")}\n`);
  assert.equal(block, lines.join(""));
});

test("hovering tells what a member means", async () => {
  const loop = '"Loop": {"List": "a", "Cell|Width": 200, "Layout": [[[0, 0]]]}';
  assert.match(await told(inElement(loop)),
    /^Width of the cells that are given as .*screen units.*Default: 0\\.$/);
  assert.match(await told(inElement('"Bounds": [0, |"5%", 10, 10]')), /^y, the top edge/);
});

test("the Contents of a Loop keep the case of file names, others do not", async () => {
  const loop = '"Loop": {"List": "a", "Cont|ents": ["A.PNG"]}';
  assert.match(await told(inElement(loop)), /is not lowercased/);
  for (const text of ['"Cont|ents": ["A.PNG"]', '"If": {"Cont|ents": ["A.PNG"]}']) {
    assert.match(await told(inElement(text)), /and is lowercased if it then ends in \\?\.png/);
  }
});

test("only a grid loop is said to need a List for Value", async () => {
  const text = await told(inElement('"Loop": {"Bounds": [], "Val|ue": "v"}'));
  assert.match(text, /A grid loop needs "List" for it/);
});

test("legal values are not marked", async () => {
  assert.ok(legalPages.length >= 5);
  for (const { path } of legalPages) {
    const text = readFileSync(new URL(`../../${path}`, import.meta.url), "utf8");
    const document = TextDocument.create("file:///page.json", "json", 1, text);
    const json = service.parseJSONDocument(document);
    assert.deepEqual(await service.doValidation(document, json), [], path);
  }
});

test("wrong values are marked in the words of the schema", async () => {
  // A missing member is marked in the editor's own words.
  let marks = 0;
  for (const { path, faults } of wrongPages) {
    const text = readFileSync(new URL(`../../${path}`, import.meta.url), "utf8");
    const document = TextDocument.create("file:///page.json", "json", 1, text);
    const json = service.parseJSONDocument(document);
    const found = (await service.doValidation(document, json)).map(({ message }) => message);
    assert.ok(found.length > 0, path);
    const messages = faults.map((line) => line.slice(line.indexOf(": ") + 2));
    marks += found.filter((message) => messages.includes(message)).length;
  }
  assert.ok(marks >= 50, `${marks} marks`);
});
