/**
 * The tool in WebAssembly, as one function.
 *
 * @typedef {{code: number, out: Uint8Array, err: Uint8Array}} Answer
 * @typedef {(words: string[], files?: Record<string, string | Uint8Array>) => Answer} Ask
 */

/**
 * Words of a command line in, exit code and the two texts out. Files stay until they are written again.
 * @param {any} module what emscripten makes
 * @returns {Ask}
 */
export function checkerOf(module) {
    const textOf = (/** @type {number} */ stream) => {
        const begin = module._text(stream);
        return module.HEAPU8.slice(begin, begin + module._text_size(stream));
    };
    return (words, files = {}) => {
        for (const [name, content] of Object.entries(files)) module.FS.writeFile(name, content);
        const bytes = new TextEncoder().encode(words.map((word) => word + "\0").join(""));
        const begin = module._malloc(bytes.length);
        module.HEAPU8.set(bytes, begin);
        const code = module._answer(begin, bytes.length);
        module._free(begin);
        return { code, out: textOf(0), err: textOf(1) };
    };
}
