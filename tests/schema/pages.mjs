// The pages that the tests read, and the schema.
import { existsSync, readFileSync, readdirSync } from "node:fs";
import { join } from "node:path";
import { fileURLToPath } from "node:url";
import { parse } from "jsonc-parser";

const root = fileURLToPath(new URL("../../", import.meta.url));

const read = (path) => readFileSync(join(root, path), "utf8");
const list = (path) => readdirSync(join(root, path)).sort();

export const schema = JSON.parse(read("schema/render-template.schema.json"));

// What the tool finds: a line for each fault, its JSON pointer before the first colon.
function faultsIn(path) {
  if (!existsSync(join(root, path))) return [];
  return read(path).trimEnd().split("\n");
}

function page(path, faultsPath) {
  return { path, document: parse(read(path)), faults: faultsIn(faultsPath) };
}

export const wrongPages = list("tests/schema/wrong")
  .filter((name) => name.endsWith(".json"))
  .map((name) => join("tests/schema/wrong", name))
  .map((path) => page(path, path.replace(/json$/, "faults")));

// They look odd, but are what the library takes without a message.
export const legalPages = list("tests/schema/legal")
  .map((name) => page(join("tests/schema/legal", name), "none"));

function foldersIn(path) {
  return list(path).filter((name) => existsSync(join(root, path, name, "template.json")));
}

export const templates = ["examples", "tests/golden"].flatMap((path) =>
  foldersIn(path).map((name) =>
    page(join(path, name, "template.json"), `tests/schema/on_purpose/${name}.faults`)));

// Files that the examples include, and the results.
export const otherPages = foldersIn("examples").flatMap((name) =>
  list(join("examples", name))
    .filter((file) => file.endsWith(".json") && !/^(template|values)\.json$/.test(file))
    .map((file) => page(join("examples", name, file), "none")))
  .filter(({ document }) => "Page" in document || "Contents" in document);
