/**
 * The settings of a line with their meanings, and the explanation of a flag.
 *
 * @typedef {{name: string, value: string, tokens: number[], from: string, wrong: boolean, subject: string, kind: string, meaning: string}} Shown
 */
import { explain } from "./asking.js";
import { byId, element } from "./elements.js";
import { pointAt } from "./marks.js";

/** @type {any[]} what the tool says of each flag */
let known = [];

export async function learnMeanings() {
    known = (await explain("flags")).flags;
}

/**
 * @param {string} name of a setting, or of one that it is a part of
 * @param {string[]} from the flags that set it
 * @returns {any} the flag that is most about it, and among several one of those
 */
function aboutSetting(name, from) {
    const about = known.filter(({ settings }) => settings.includes(name) || settings.includes(name.split(".")[0]));
    const least = Math.min(...about.map(({ settings }) => settings.length));
    const most = about.filter(({ settings }) => settings.length === least);
    return most.find(({ flag }) => from.includes(flag)) ?? most[0];
}

/**
 * @param {any} settings
 * @param {string} name with points
 * @param {string} typed what stands for it if it has parts
 */
function valueOf(settings, name, typed) {
    let value = settings;
    for (const part of name.split(".")) value = value?.[part];
    if (Array.isArray(value) && value.every((one) => typeof one === "string")) return value.join(", ");
    if (typeof value === "object") return value?.text ?? typed;
    return String(value);
}

/**
 * What the record says; of a refused line, what was typed.
 * @param {any} answer of check --all
 * @returns {Shown[]}
 */
export function shownOf(answer) {
    /** @type {import("./marks.js").Occurrence[]} */
    const line = answer.line ?? [];
    if (answer.accepted)
        return Object.entries(answer.origins).map(([name, { tokens }]) => {
            const all = line.filter((one) => one.tokens.some((number) => tokens.includes(number)));
            const from = [...new Set(all.map((one) => one.flag))];
            const value = valueOf(answer.settings, name, all.map((one) => one.value).join(", "));
            return { ...aboutSetting(name, from), name, value, tokens, from: from.join(", "), wrong: false };
        });
    const wrong = [...answer.involved ?? [], ...(answer.faults ?? []).map((/** @type {any} */ one) => one.flag)];
    return line.flatMap(({ flag, value = "", tokens }, at) => {
        const about = known.find((one) => one.flag === flag);
        const isLast = line.findLastIndex((one) => one.flag === flag) === at;
        if (!about || (!isLast && about.repetition !== "adds")) return [];
        const name = about.settings.find((/** @type {string} */ one) => one.endsWith(".port")) ?? about.settings.at(-1);
        return [{ ...about, name, value, tokens, from: flag, wrong: wrong.includes(flag) }];
    });
}

/** @param {string} name that can go over two lines after each of its parts */
function breakable(name) {
    return name.split(/(?<=[._])/).flatMap((part) => [part, element("wbr")]);
}

/** @param {any} answer of check --all */
export function showSettings(answer) {
    const rows = (answer.accepted ? shownOf(answer) : []).map(({ name, value, meaning, tokens, from }) => {
        const row = element("tr", element("th", ...breakable(name)), element("td.value", value),
            element("td", meaning, " ", element("small", from ? `from ${from}` : "default")));
        row.dataset.tokens = tokens.join(" ");
        row.tabIndex = 0;
        for (const come of ["mouseenter", "focus"]) row.addEventListener(come, () => pointAt(tokens));
        for (const go of ["mouseleave", "blur"]) row.addEventListener(go, () => pointAt([]));
        return row;
    });
    byId("settings").replaceChildren(...rows);
    byId("settings-part").hidden = rows.length === 0;
}

/**
 * Explains the flag, and marks what it sets.
 * @param {string | undefined} flag
 * @param {number[]} tokens
 */
export async function showFlag(flag, tokens) {
    for (const row of byId("settings").querySelectorAll("tr"))
        row.classList.toggle("pointed", (row.dataset.tokens ?? "").split(" ").some((one) => tokens.includes(Number(one))));
    const [about] = flag === undefined ? [] : (await explain(flag)).flags ?? [];
    const place = byId("explanation");
    if (!about) return place.replaceChildren();
    const terms = [["Value", about.value], ["Default", about.default], ["Given again", about.repeated], ["Relations", about.relations],
        ["Settings", about.settings.join(", ")], ["Example", about.example.join(" ")]].filter(([, text]) => text);
    place.replaceChildren(element("h3", about.flag), element("p", about.meaning),
        element("dl", ...terms.flatMap(([term, text]) => [element("dt", term), element("dd", text)])));
}
