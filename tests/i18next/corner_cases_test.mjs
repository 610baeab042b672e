// What the batch tool makes of files that few applications have, and what the i18next library then says.
//
//   node corner_cases_test.mjs NODE_MODULES TOOL CATALOGUE.json
//
// CATALOGUE.json has "files", which an empty project imports and exports again, and "loads": each loads what was exported, or the
// files as they were given, with options of the library, and has rows of language, key, options and text. What was exported must
// be what was given, less the members that are empty or null. Exit code: 0, 1 for a difference, 77 where the library is not
// installed.

import {execFileSync} from "node:child_process";
import {existsSync, mkdirSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync} from "node:fs";
import {tmpdir} from "node:os";
import {dirname, join} from "node:path";
import {pathToFileURL} from "node:url";

const [modules, tool, catalogueFile] = process.argv.slice(2);
const library = join(modules, "i18next/dist/esm/i18next.js");
if (!existsSync(library)) {
  console.log(`skipped: the i18next library is not at ${library}; scripts/setup.sh --tests installs it`);
  process.exit(77);
}
const {default: i18next} = await import(pathToFileURL(library));

let compared = 0;
let failed = 0;
function expect(what, value, expected) {
  ++compared;
  if (JSON.stringify(value) === JSON.stringify(expected)) return;
  ++failed;
  console.log(`${what}: ${JSON.stringify(value)} is not ${JSON.stringify(expected)}`);
}

const read = file => JSON.parse(readFileSync(file, "utf8"));
function write(file, value) {
  mkdirSync(dirname(file), {recursive: true});
  writeFileSync(file, JSON.stringify(value));
}
function readAll(folder) {
  const resources = {};
  for (const code of readdirSync(folder))
    resources[code] = Object.fromEntries(readdirSync(join(folder, code)).map(
      name => [name.replace(/\.json$/, ""), read(join(folder, code, name))]));
  return resources;
}

// Elements of an array keep their places, with null in those without a text.
function lessEmpty(value) {
  if (value === null || typeof value !== "object") return value;
  if (Array.isArray(value)) return value.map(lessEmpty);
  return Object.fromEntries(Object.entries(value).filter(([, inner]) => inner !== "" && inner !== null).map(
    ([name, inner]) => [name, lessEmpty(inner)]));
}

const {files, loads} = read(catalogueFile);
const desk = mkdtempSync(join(tmpdir(), "corner-cases-"));
try {
  const [project, given, exported] = ["project", "given", "exported"].map(name => join(desk, name));
  write(join(project, "project.json"), {});
  for (const [name, value] of Object.entries(files)) write(join(given, name), value);
  execFileSync(tool, ["import", project, "--from", given], {stdio: ["ignore", "ignore", "ignore"]});
  execFileSync(tool, ["export", project, "--to", exported], {stdio: ["ignore", "ignore", "ignore"]});

  const everyFile = Object.keys(readAll(exported)).flatMap(
    code => readdirSync(join(exported, code)).map(name => `${code}/${name}`));
  for (const name of everyFile)
    expect(name, readFileSync(join(exported, name), "utf8"), JSON.stringify(lessEmpty(files[name] ?? {}), null, 2) + "\n");
  expect("files", Object.keys(files).filter(name => !everyFile.includes(name)), []);

  for (const {what, isExported, options, expected} of loads) {
    const one = i18next.createInstance();
    const resources = readAll(isExported ? exported : given);
    await one.init({
      resources, fallbackLng: "en", ns: Object.keys(resources.en), defaultNS: "translation",
      interpolation: {escapeValue: false}, showSupportNotice: false, ...options
    });
    for (const [code, key, ask, text] of expected)
      expect(`${what}: ${code}: ${key} ${JSON.stringify(ask)}`, one.getFixedT(code)(key, ask), text);
  }
} finally {
  rmSync(desk, {recursive: true});
}
console.log(`${compared} compared, ${failed} differ`);
process.exit(failed ? 1 : 0);
