/** What the server would say: faults, problems, warnings and hazards. */
import { explain } from "./asking.js";
import { button, byId, element } from "./elements.js";
import { pointAt, quoted } from "./marks.js";

/**
 * A remark with its reason, and more about its kind on demand.
 * @param {string} kind
 * @param {string} label
 * @param {string[]} texts
 * @param {{id?: string, about?: import("./marks.js").Occurrence, tokens?: number[]}} more
 */
function remark(kind, label, texts, { id, about, tokens = about?.tokens ?? [] }) {
    const made = element(`li.${kind}`, element("b", label), " ", quoted(about), ...texts.map((text) => element("p", text.trim())));
    made.addEventListener("mouseenter", () => pointAt(tokens));
    made.addEventListener("mouseleave", () => pointAt([]));
    if (id) {
        const why = element("details", element("summary", `Why? (${id})`));
        why.addEventListener("toggle", async () => {
            const [known] = (await explain(id)).kinds ?? [];
            if (known && why.childElementCount === 1) why.append(element("p", known.cause));
        });
        made.append(why);
    }
    return made;
}

const most = 50; // of each kind: more would hide the first, and slow down typing

/** @param {any} answer of check */
function faultsOf(answer) {
    return [
        ...answer.faults.slice(0, most).map((/** @type {any} */ fault) => remark("fault", "Refused", [fault.text || fault.code.message, ...fault.advice],
            { id: fault.id, about: fault.flag === undefined ? undefined : fault })),
        ...answer.problems.map((/** @type {string} */ text, /** @type {number} */ at) =>
            remark("fault", "Refused", [text], { id: answer.problem_ids[at] })),
    ];
}

/**
 * @param {any} answer
 * @param {number | undefined} token
 * @returns {import("./marks.js").Occurrence | undefined} what the token belongs to
 */
function around(answer, token) {
    return token ? (answer.line ?? []).find((/** @type {any} */ one) => one.tokens.includes(token)) : undefined;
}

/** @param {any} answer */
function hazardsOf(answer) {
    return (answer.security?.hazards ?? []).filter((/** @type {any} */ one) => one.state === "found").map((/** @type {any} */ one) =>
        remark(one.level, one.level === "open" ? "Open" : "Weak", [one.gain, one.instead],
            { id: one.id, about: around(answer, one.found[0]?.token), tokens: one.found.map((/** @type {any} */ found) => found.token) }));
}

/**
 * @param {any} answer of check, or what went wrong
 * @param {() => void} correct
 */
export function showVerdict(answer, correct) {
    const verdict = byId("verdict"), remarks = byId("remarks");
    if (answer.error !== undefined) {
        verdict.className = "fault";
        verdict.textContent = "This cannot be read.";
        remarks.replaceChildren(element("li.fault", answer.error.trim()));
        return;
    }
    const faults = faultsOf(answer), hazards = hazardsOf(answer);
    const known = new Set(hazards.length ? answer.security.hazards.map((/** @type {any} */ one) => one.id) : []);
    const others = answer.warnings.filter((/** @type {any} */ one) => !known.has(one.id));
    const warnings = others.slice(0, most).map((/** @type {any} */ one) =>
        remark("warning", "Warning", [one.text], { id: one.id, about: around(answer, one.token), tokens: one.token ? [one.token] : [] }));
    const count = (/** @type {number} */ number, /** @type {string} */ what) => `${number} ${what}${number === 1 ? "" : "s"}`;
    verdict.className = answer.accepted ? "accepted" : "fault";
    verdict.textContent = answer.accepted
        ? `The server accepts this: ${count(others.length, "warning")}, ${count(hazards.length, "hazard")}.`
        : `The server refuses this: ${count(answer.faults.length + answer.problems.length, "fault")}.`;
    const correction = faults.length ? [element("li", button("Correct the text", correct))] : [];
    const more = answer.faults.length > most || others.length > most;
    remarks.replaceChildren(...correction, ...faults, ...hazards, ...warnings, ...(more ? [element("li", "The others are marked in the text.")] : []));
}
