/** The settings of an accepted line with their meanings, and the explanation of a flag. */
import { explain } from "./asking.js";
import { byId, element } from "./elements.js";
import { pointAt } from "./marks.js";

/** @type {Map<string, {flag: string, meaning: string}>} by setting */
const meanings = new Map();

export async function learnMeanings() {
    for (const { flag, meaning, settings } of (await explain("flags")).flags)
        for (const setting of settings) meanings.set(setting, { flag, meaning });
}

/**
 * @param {any} settings
 * @param {string} name with points and [numbers]
 */
function valueOf(settings, name) {
    let value = settings;
    for (const part of name.split(/[.[\]]+/).filter((one) => one)) value = value?.[part];
    if (value === null || value === undefined) return "not set";
    if (typeof value === "string") return value;
    return typeof value.text === "string" ? value.text : JSON.stringify(value);
}

/** @param {any} answer of check --all */
export function showSettings(answer) {
    const rows = Object.entries(answer.origins ?? {}).map(([name, origin]) => {
        const { tokens } = /** @type {{tokens: number[]}} */ (origin);
        const from = answer.line.filter((/** @type {any} */ one) => one.tokens.some((/** @type {number} */ number) => tokens.includes(number)));
        const flags = [...new Set(from.map((/** @type {any} */ one) => one.flag))].join(", ");
        const known = meanings.get(name) ?? meanings.get(name.split(".")[0]);
        const row = element("tr", element("th", name), element("td.value", valueOf(answer.settings, name)),
            element("td", known?.meaning ?? "", " ", element("small", flags ? `from ${flags}` : "default")));
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
    const [known] = flag === undefined ? [] : (await explain(flag)).flags ?? [];
    const place = byId("explanation");
    if (!known) return place.replaceChildren();
    const terms = [["Value", known.value], ["Default", known.default], ["Given again", known.repeated], ["Relations", known.relations],
        ["Settings", known.settings.join(", ")], ["Example", known.example.join(" ")]].filter(([, text]) => text);
    place.replaceChildren(element("h3", known.flag), element("p", known.meaning),
        element("dl", ...terms.flatMap(([term, text]) => [element("dt", term), element("dd", text)])));
}
