/**
 * The tool in WebAssembly, as one function.
 *
 * @typedef {{code: number, out: Uint8Array, err: Uint8Array}} Answer
 */

/**
 * Words of a command line in, exit code and the two texts out.
 * @param {any} module what emscripten makes; files are in its FS
 * @returns {(words: string[]) => Answer}
 */
export function checkerOf(module) {
    const textOf = (/** @type {number} */ stream) => {
        const begin = module._text(stream);
        return module.HEAPU8.slice(begin, begin + module._text_size(stream));
    };
    return (words) => {
        const bytes = new TextEncoder().encode(words.map((word) => word + "\0").join(""));
        const begin = module._malloc(bytes.length);
        module.HEAPU8.set(bytes, begin);
        const code = module._answer(begin, bytes.length);
        module._free(begin);
        return { code, out: textOf(0), err: textOf(1) };
    };
}
