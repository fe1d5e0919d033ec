/**
 * Questions to the worker.
 *
 * @typedef {{code: number, out: string, err: string, file: string}} Said
 */

/** @param {string} id */
function contentOf(id) {
    return document.getElementById(id)?.textContent ?? "";
}

function startWorker() {
    const worker = new Worker(URL.createObjectURL(new Blob([contentOf("worker")], { type: "text/javascript" })));
    const wasm = Uint8Array.from(atob(contentOf("wasm").trim()), (letter) => letter.charCodeAt(0));
    worker.postMessage({ wasm }, [wasm.buffer]);
    return worker;
}

/** @type {Worker} */
let worker;
let last = 0;
/** @type {Map<number, (said: Said) => void>} */
const waiting = new Map();

/**
 * Runs the tool.
 * @param {string[]} words
 * @param {Record<string, string>} files that it finds, by name
 * @param {string} [read] a file to read afterwards
 * @returns {Promise<Said>}
 */
export function ask(words, files = {}, read) {
    if (!worker) {
        worker = startWorker();
        worker.onmessage = ({ data }) => {
            waiting.get(data.id)?.(data);
            waiting.delete(data.id);
        };
    }
    const id = ++last;
    worker.postMessage({ id, words, files, read });
    return new Promise((done) => waiting.set(id, done));
}

/** @type {Map<string, Promise<any>>} */
const explained = new Map();

/**
 * What the tool knows about a word: `flags`, `kinds` and more.
 * @param {string} word
 * @returns {Promise<any>}
 */
export function explain(word) {
    let answer = explained.get(word);
    if (!answer) {
        answer = ask(["explain", "--format", "json", word]).then(({ out }) => (out ? JSON.parse(out) : {}));
        explained.set(word, answer);
    }
    return answer;
}
