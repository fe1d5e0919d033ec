/**
 * A picture of the server: listeners on the upper edge of a frame, in it what it does, below it its directories as a tree.
 *
 * @typedef {import("./settings.js").Shown} Shown
 * @typedef {{text: string, wrong: boolean, depth?: number}} Row
 * @typedef {{title: string, rows: Row[]}} Box
 */
import { byId, seen } from "./elements.js";
import { shownOf } from "./settings.js";

const letter = 7.9, line = 19, pad = 10, gap = 14, indent = 18;

/**
 * @param {string} name
 * @param {Record<string, string | number>} attributes
 * @param {...(string | Node)} content
 */
function shape(name, attributes, ...content) {
    const made = document.createElementNS("http://www.w3.org/2000/svg", name);
    for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, String(value));
    made.append(...content);
    return made;
}

/**
 * @param {string} text
 * @param {number} width in pixels
 * @returns {string[]} pieces that fit, rather of whole words; letters of East Asia are twice as wide
 */
function fitting(text, width) {
    const pieces = [];
    let piece = "", left = width;
    for (const one of text) {
        const own = /[\u1100-\u115f\u2e80-\uffef\u{1f000}-\u{3ffff}]/u.test(one) ? 2 * letter : letter;
        if (own > left) {
            const whole = /^.*[\s/,_]/s.exec(piece)?.[0] ?? "";
            const kept = whole.length * 2 > piece.length ? whole : piece;
            pieces.push(kept);
            piece = piece.slice(kept.length);
            left = width - piece.length * letter;
        }
        piece += one;
        left -= own;
    }
    return [...pieces, piece];
}

/**
 * @param {Box} box
 * @param {number} x
 * @param {number} y
 * @param {number} width
 * @returns {{node: Element, bottom: number}}
 */
function drawBox({ title, rows }, x, y, width) {
    let bottom = y + pad + 13;
    const texts = [shape("text", { class: "title", x: x + pad, y: bottom }, title)];
    for (const { text, wrong, depth = 0 } of rows) {
        const left = x + pad + depth * indent;
        if (depth) texts.push(shape("path", { class: "edge", d: `M${left - 12} ${bottom + 3}v${line - 7}h8` }));
        for (const piece of fitting(text, x + width - pad - left))
            texts.push(shape("text", { class: wrong ? "wrong" : "", x: left, y: bottom += line }, piece));
    }
    bottom += pad;
    const wrong = rows.some((row) => row.wrong);
    return { node: shape("g", {}, shape("rect", { class: wrong ? "box wrong" : "box", x, y, width, height: bottom - y, rx: 4 }), ...texts), bottom };
}

/** @param {Shown} one */
function rowOf(one) {
    const name = one.name.split(".").slice(-1)[0];
    const text = one.value === "" ? name : `${name} ${one.value}`;
    return { text: seen(one.wrong ? `${text} ✕ refused` : text), wrong: one.wrong };
}

/**
 * A listener has a port, a host perhaps, and what else is set below its name.
 * @param {Shown[]} all
 * @returns {{boxes: Box[], used: Set<Shown>}}
 */
function listenersOf(all) {
    /** @type {Set<Shown>} */
    const used = new Set();
    const boxes = all.filter(({ name, kind }) => kind === "port" || name.endsWith(".port")).map((port) => {
        const name = port.name.split(".")[0];
        const own = all.filter((one) => one.name === port.name || one.name.startsWith(name + "."));
        own.forEach((one) => used.add(one));
        const host = own.find((one) => one.name.endsWith(".host"));
        const address = { ...port, name: "▼", value: host ? `${host.value}:${port.value}` : port.value };
        return { title: name, rows: [address, ...own.filter((one) => one !== port && one !== host)].map(rowOf) };
    });
    return { boxes, used };
}

/**
 * @param {Shown[]} directories
 * @returns {Row[]} each below the one that it lies in
 */
function treeOf(directories) {
    const parts = (/** @type {string} */ path) => path.split("/").filter((part, at) => at === 0 || (part !== "" && part !== "."));
    const paths = directories.map((one) => ({ one, own: parts(one.value) }));
    paths.sort((a, b) => (a.own.join("\0") < b.own.join("\0") ? -1 : 1));
    /** @type {string[][]} */
    let around = [];
    return paths.map(({ one, own }) => {
        around = around.filter((outer) => outer.length <= own.length && outer.every((part, at) => part === own[at]));
        const depth = around.length;
        const shown = depth ? own.slice(around[depth - 1].length).join("/") || "(the same)" : one.value;
        around.push(own);
        return { text: seen(`${shown}  ${one.name}${one.wrong ? " ✕ refused" : ""}`), wrong: one.wrong, depth };
    });
}

/**
 * @param {Shown[]} all
 * @param {number} width
 * @returns {SVGSVGElement}
 */
function pictureOf(all, width) {
    const { boxes: listeners, used } = listenersOf(all);
    const rest = all.filter((one) => !used.has(one) && one.kind !== "directory");
    const groups = [...new Set(rest.map(({ subject }) => subject))].map((title) =>
        ({ title, rows: rest.filter(({ subject }) => subject === title).map(rowOf) }));
    /** @type {Element[]} */
    const nodes = [];
    const columns = width < 520 ? 1 : 2;
    const bottoms = Array(columns).fill(1);
    const each = (width - (columns + 1) * gap) / columns;
    for (const box of [...listeners, ...groups]) {
        const column = bottoms.indexOf(Math.min(...bottoms));
        const { node, bottom } = drawBox(box, gap + column * (each + gap), bottoms[column], each);
        nodes.push(node);
        bottoms[column] = bottom + gap;
    }
    let bottom = Math.max(...bottoms);
    if (nodes.length) {
        nodes.unshift(shape("rect", { class: "frame", x: 1, y: pad * 2, width: width - 2, height: bottom - pad * 2 }));
        bottom += gap;
    }
    const tree = treeOf(all.filter((one) => one.kind === "directory"));
    if (tree.length) {
        const drawn = drawBox({ title: "Directories", rows: tree }, 1, bottom, width - 2);
        nodes.push(drawn.node);
        bottom = drawn.bottom + 1;
    }
    const told = [...listeners, ...groups, { title: "Directories", rows: tree }].filter(({ rows }) => rows.length)
        .map(({ title, rows }) => `${title}: ${rows.map(({ text }) => text).join(", ")}`);
    const attributes = { viewBox: `0 0 ${width} ${bottom}`, width, height: bottom, role: "img", "aria-label": told.join("; ") };
    return /** @type {SVGSVGElement} */ (shape("svg", attributes, ...nodes));
}

/** @type {Shown[]} */
let drawn = [];

function draw() {
    byId("picture").replaceChildren(...drawn.length ? [pictureOf(drawn, Math.max(280, Math.min(640, byId("picture").clientWidth)))] : []);
}

/** @param {any} answer of check --all */
export function showPicture(answer) {
    drawn = shownOf(answer);
    byId("picture-part").hidden = drawn.length === 0;
    draw();
}

/** With the page's colours, light and dark; many viewers know no variables. */
function stylesOfPicture() {
    const [light, dark, ...rules] = /** @type {any[]} */ ([...document.styleSheets[0].cssRules]);
    const texts = rules.map(({ cssText }) => cssText).filter((text) => text.startsWith("svg")).join("\n");
    const filled = (/** @type {any} */ { style }) => texts.replace(/var\((--\w+)\)/g, (_, name) => style.getPropertyValue(name));
    return `${filled(light)}\n@media (prefers-color-scheme: dark) {\n${filled(dark.cssRules[0])}\n}`;
}

function savePicture() {
    const saved = /** @type {SVGElement} */ (byId("picture").firstElementChild?.cloneNode(true));
    saved.prepend(shape("desc", {}, saved.getAttribute("aria-label") ?? ""), shape("style", {}, stylesOfPicture()));
    const link = document.createElement("a");
    link.download = "orvane-server.svg";
    link.href = URL.createObjectURL(new Blob([new XMLSerializer().serializeToString(saved)], { type: "image/svg+xml" }));
    link.click();
    URL.revokeObjectURL(link.href);
}

export function connectPicture() {
    byId("save").addEventListener("click", savePicture);
    addEventListener("resize", draw);
}
