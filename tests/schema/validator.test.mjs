// A second opinion on the schema: another validator comes to the same verdict on every page, and
// finds the same values wrong.
import assert from "node:assert/strict";
import { test } from "node:test";
import Ajv from "ajv";
import { legalPages, otherPages, schema, templates, wrongPages } from "./pages.mjs";

// Strict but for two rules: "required" asks here whether a member is absent, and "Bounds" may end
// early.
const ajv = new Ajv({
  allErrors: true, strict: true, allowUnionTypes: true, strictRequired: false, strictTuples: false,
});
ajv.addVocabulary(["errorMessage", "doNotSuggest"]);  // for editors

function wrongPointers(document) {
  const validate = ajv.getSchema(schema.$id) ?? ajv.compile(schema);
  if (validate(document)) return [];
  const own = validate.errors.filter(({ keyword }) => keyword !== "if");  // of the parts around
  return [...new Set(own.map(({ instancePath }) => instancePath))].sort();
}

const toldPointers = (faults) => [...new Set(faults.map((line) => line.split(":")[0]))].sort();

test("the schema keeps to the schema of schemas", () => {
  assert.equal(ajv.validateSchema(schema), true, ajv.errorsText());
});

test("strict mode takes the schema", () => {
  assert.equal(typeof ajv.compile(schema), "function");
});

for (const { path, document, faults } of [...wrongPages, ...legalPages, ...templates, ...otherPages]) {
  test(`${path}: the same ${faults.length} faults`, () => {
    assert.deepEqual(wrongPointers(document), toldPointers(faults));
  });
}

test("there are wrong pages and right ones", () => {
  assert.ok(wrongPages.length >= 25 && wrongPages.every(({ faults }) => faults.length > 0));
  assert.ok(templates.filter(({ faults }) => faults.length === 0).length >= 4);
  assert.ok(legalPages.length >= 5 && otherPages.length >= 6);
});
