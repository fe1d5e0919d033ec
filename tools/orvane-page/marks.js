/**
 * The tokens in the text: where they are, and how they are marked.
 *
 * @typedef {{tokens: number[], places?: {token: number, line?: number, column?: number}[], flag: string, value?: string}} Occurrence
 * @typedef {{begin: number, end: number, numbers: number[]}} Range
 */
import { byId, element } from "./elements.js";

const longestMarked = 50000; // characters; beyond that, drawing the marks would slow down typing

/**
 * Where each token is in the text. A token ends where blanks before the next begin, or its line.
 * @param {string} text
 * @param {Occurrence[]} line
 * @returns {Range[]}
 */
export function rangesOf(text, line) {
    if (text.length > longestMarked) return [];
    const rows = text.split("\n");
    const starts = [0];
    for (const row of rows) starts.push(starts[starts.length - 1] + row.length + 1);
    /** @type {Range[]} */
    const ranges = [];
    for (const { token, line: row = 0, column = 1 } of line.flatMap(({ places = [] }) => places)) {
        if (row === 0 || row > rows.length) continue;
        const begin = starts[row - 1] + [...rows[row - 1]].slice(0, column - 1).join("").length;
        const before = ranges[ranges.length - 1];
        if (before && before.begin === begin) before.numbers.push(token);
        else ranges.push({ begin, end: starts[row] - 1, numbers: [token] });
    }
    for (const [at, range] of ranges.entries()) {
        const end = Math.min(range.end, ranges[at + 1]?.begin ?? text.length);
        range.end = range.begin + text.slice(range.begin, end).trimEnd().length;
    }
    return ranges;
}

/**
 * Draws the text with its marks below the field.
 * @param {string} text
 * @param {Range[]} ranges
 * @param {Map<number, {kind: string, id: string, text: string}>} remarks by token
 */
export function drawMarks(text, ranges, remarks) {
    const parts = [];
    let at = 0;
    for (const { begin, end, numbers } of ranges) {
        const remark = numbers.map((number) => remarks.get(number)).find((one) => one !== undefined);
        const part = document.createElement("span");
        part.textContent = text.slice(begin, end);
        part.dataset.tokens = numbers.join(" ");
        if (remark) {
            part.className = remark.kind;
            part.dataset.id = remark.id;
        }
        parts.push(text.slice(at, begin), part);
        at = end;
    }
    byId("marks").replaceChildren(...parts, text.slice(at) + "\n");
}

/** @param {number[]} numbers of the tokens to point at; none: no more */
export function pointAt(numbers) {
    for (const part of byId("marks").querySelectorAll("span")) {
        const own = (part.dataset.tokens ?? "").split(" ").map(Number);
        part.classList.toggle("pointed", own.some((one) => numbers.includes(one)));
    }
}

/**
 * A piece of the text as it is shown beside a remark.
 * @param {Occurrence | undefined} occurrence
 */
export function quoted(occurrence) {
    if (!occurrence) return element("span");
    return element("code", occurrence.value === undefined ? occurrence.flag : `${occurrence.flag} ${occurrence.value}`);
}
