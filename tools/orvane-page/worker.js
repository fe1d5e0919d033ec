/**
 * In a worker: answers the page's questions one after the other, so that typing never waits.
 *
 * @typedef {{id: number, words: string[], files: Record<string, string>, read?: string}} Question
 */
import { checkerOf } from "./checker.js";

const texts = new TextDecoder();
/** @type {Promise<any>} */
let module;

onmessage = async ({ data }) => {
    if (data.wasm) {
        // @ts-ignore what emscripten makes stands before this
        module = orvaneModule({ wasmBinary: data.wasm, stdin: () => null });
        return;
    }
    const { id, words, files, read } = /** @type {Question} */ (data);
    const made = await module;
    for (const [name, content] of Object.entries(files)) made.FS.writeFile(name, content);
    const { code, out, err } = checkerOf(made)(words);
    const file = read === undefined ? "" : made.FS.readFile(read, { encoding: "utf8" });
    postMessage({ id, code, out: texts.decode(out), err: texts.decode(err), file });
};
