// Loads a folder of exported terms with the i18next library, and compares what it says with what is expected.
//
//   node exported_terms_test.mjs NODE_MODULES FOLDER EXPECTED.json
//
// EXPECTED.json has, for each language, rows of key, options and text. Beside these, every text of every file must be
// what the library finds under its path. Exit code: 0, 1 for a difference, 77 where the library is not installed.

import {existsSync, readdirSync, readFileSync} from "node:fs";
import {join} from "node:path";
import {pathToFileURL} from "node:url";

const [modules, folder, expectedFile] = process.argv.slice(2);
const library = join(modules, "i18next/dist/esm/i18next.js");
if (!existsSync(library)) {
  console.log(`skipped: the i18next library is not at ${library}; scripts/setup.sh --tests installs it`);
  process.exit(77);
}
const {default: i18next} = await import(pathToFileURL(library));

const read = file => JSON.parse(readFileSync(file, "utf8"));
const resources = {};
for (const code of readdirSync(folder))
  resources[code] = Object.fromEntries(readdirSync(join(folder, code)).map(
    name => [name.replace(/\.json$/, ""), read(join(folder, code, name))]));
const namespaces = [...new Set(Object.values(resources).flatMap(Object.keys))];

await i18next.init({
  resources, fallbackLng: "en", ns: namespaces, defaultNS: "translation", interpolation: {escapeValue: false},
  showSupportNotice: false
});

let compared = 0;
let failed = 0;
function compare(code, key, options, expected) {
  const text = i18next.getFixedT(code)(key, options);
  ++compared;
  if (JSON.stringify(text) === JSON.stringify(expected)) return;
  ++failed;
  console.log(`${code}: ${key} ${JSON.stringify(options)}: ${JSON.stringify(text)} is not ${JSON.stringify(expected)}`);
}

function compareLeaves(code, namespace, path, value) {
  if (value !== null && typeof value === "object")
    for (const [name, inner] of Object.entries(value)) compareLeaves(code, namespace, [...path, name], inner);
  else compare(code, path.join("."), {ns: namespace, skipInterpolation: true, nest: false}, value);
}

const expected = read(expectedFile);
for (const [code, rows] of Object.entries(expected))
  for (const [key, options, text] of rows) compare(code, key, options, text);
for (const code of Object.keys(resources)) {
  if (!(code in expected)) throw new Error(`nothing is expected of ${code}`);
  for (const [namespace, values] of Object.entries(resources[code])) compareLeaves(code, namespace, [], values);
}
console.log(`${compared} texts compared, ${failed} differ`);
process.exit(failed || !compared ? 1 : 0);
