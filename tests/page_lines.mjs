// The module in the place of many_lines.cpp, with the files of this directory: page_lines.mjs MODULE
import { readFileSync, readdirSync, statSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { pathToFileURL } from "node:url";

const [, script, path] = process.argv;
const { checkerOf } = await import(new URL("../tools/orvane-page/checker.js", pathToFileURL(script)));
const module = await createRequire(path)(path)({ wasmBinary: readFileSync(path.replace(/js$/, "wasm")), stdin: () => null });
const ask = checkerOf(module);

function copy(folder) {
    module.FS.mkdirTree(folder);
    for (const name of readdirSync(folder)) {
        const file = `${folder}/${name}`;
        if (statSync(file).isDirectory()) copy(file);
        else module.FS.writeFile(file, readFileSync(file));
    }
}
copy(process.cwd());
module.FS.chdir(process.cwd());

const input = readFileSync(0);
/** @type {Buffer[]} */
const answers = [];
let at = 0;
/** @param {number} ending */
function next(ending) {
    const end = input.indexOf(ending, at);
    const piece = input.toString("utf8", at, end);
    at = end + 1;
    return piece;
}
while (at < input.length) {
    const words = Array.from({ length: Number(next(10)) }, () => next(0));
    const { code, out, err } = ask(words);
    answers.push(Buffer.from(`${code} ${out.length} ${err.length}\n`), Buffer.from(out), Buffer.from(err));
}
writeFileSync(1, Buffer.concat(answers));
