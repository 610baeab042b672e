// What the i18next library does with the names that our reader warns of: every object of JavaScript has something under them.
//
//   node reserved_names_test.mjs NODE_MODULES
//
// Exit code: 0, 1 for a difference, 77 where the library is not installed.

import {existsSync} from "node:fs";
import {join} from "node:path";
import {pathToFileURL} from "node:url";

const library = join(process.argv[2], "i18next/dist/esm/i18next.js");
if (!existsSync(library)) {
  console.log(`skipped: the i18next library is not at ${library}; scripts/setup.sh --tests installs it`);
  process.exit(77);
}
const {default: i18next} = await import(pathToFileURL(library));
const options = {lng: "de", fallbackLng: false, showSupportNotice: false};

let failed = 0;
function expect(what, value, expected) {
  if (value === expected) return;
  ++failed;
  console.log(`${what}: ${JSON.stringify(value)} is not ${JSON.stringify(expected)}`);
}

// A parsed file has these names as members of its own; a literal would set the prototype.
const file = name => JSON.parse(`{"${name}": "text", "branch": {"${name}": {"leaf": "text"}}}`);
const keys = name => [name, `branch.${name}.leaf`];

for (const name of ["__proto__", "constructor", "prototype"]) {
  const loaded = i18next.createInstance();
  await loaded.init({...options, resources: {de: {translation: file(name)}}});
  for (const key of keys(name)) expect(`loaded, ${key}`, loaded.t(key), "text");

  const merged = i18next.createInstance();
  await merged.init({...options, resources: {de: {translation: {branch: {other: "text"}}}}});
  merged.addResourceBundle("de", "translation", file(name), true);
  for (const key of keys(name)) expect(`merged, ${key}`, merged.t(key), name === "prototype" ? "text" : key);

  let reads = 0;
  const asked = i18next.createInstance();
  asked.use({type: "backend", init() {}, read(language, namespace, done) { ++reads; done(null, {key: "text"}); }});
  await asked.init({...options, ns: ["translation"]});
  await asked.loadNamespaces(name);
  expect(`namespace ${name}`, asked.t("key", {ns: name}), "text");
  const before = reads;
  await asked.loadNamespaces(name);
  expect(`namespace ${name}, loaded again`, reads > before, name === "__proto__");
}
console.log(failed ? `${failed} differ` : "as our messages say");
process.exit(failed ? 1 : 0);
