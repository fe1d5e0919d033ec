/** The page: at every keystroke, the tool says what the server would make of the text. */
import { ask, explain } from "./asking.js";
import { connectChoices } from "./completing.js";
import { byId } from "./elements.js";
import { compare, connect, convert, correct, followLink, showCommands } from "./exchange.js";
import { drawMarks, pointAt, rangesOf } from "./marks.js";
import { connectPicture, showPicture } from "./picture.js";
import { learnMeanings, showFlag, showSettings } from "./settings.js";
import { showVerdict } from "./verdict.js";

const field = /** @type {HTMLTextAreaElement} */ (byId("text"));
/** @type {{line: import("./marks.js").Occurrence[], ranges: import("./marks.js").Range[]}} */
let shown = { line: [], ranges: [] };

/** @param {any} answer */
function remarksOf(answer) {
    const remarks = new Map();
    for (const one of answer.warnings) if (one.token) remarks.set(one.token, { kind: "warning", id: one.id, text: one.text });
    for (const hazard of answer.security?.hazards ?? [])
        for (const one of hazard.found) if (one.token) remarks.set(one.token, { kind: hazard.level, id: hazard.id, text: hazard.gain });
    for (const one of answer.line ?? [])
        if (answer.involved.includes(one.flag)) for (const token of one.tokens) remarks.set(token, { kind: "fault", id: answer.problem_ids[0] });
    for (const one of answer.faults) for (const token of one.tokens ?? []) remarks.set(token, { kind: "fault", id: one.id, text: one.text });
    return remarks;
}

function showCaret() {
    const range = shown.ranges.find(({ begin, end }) => begin <= field.selectionStart && field.selectionStart <= end);
    const about = range && shown.line.find(({ tokens }) => tokens.some((one) => range.numbers.includes(one)));
    pointAt(about?.tokens ?? []);
    showFlag(about?.flag, about?.tokens ?? []);
}

async function check() {
    const text = field.value;
    const began = performance.now();
    const asked = ["--all", "--security"].map((what) => ask(["check", what, "--format", "json", "--from", "text"], { text }));
    const [answer, { security }] = (await Promise.all(asked)).map(({ out, err }) => (out ? JSON.parse(out) : { error: err }));
    answer.security = security;
    const line = answer.line ?? [];
    shown = { line, ranges: rangesOf(text, line) };
    drawMarks(text, shown.ranges, answer.error === undefined ? remarksOf(answer) : new Map());
    showVerdict(answer, correct);
    await learnMeanings();
    showSettings(answer);
    showPicture(answer);
    showCaret();
    document.body.dataset.took = String(performance.now() - began);
    document.body.dataset.checked = text;
}

let busy = false;
/** The last text is always checked; those that were typed while another was, need not be. */
async function keepUp() {
    if (busy) return;
    busy = true;
    for (let text = null; text !== field.value;) {
        text = field.value;
        if (text.trim()) await check();
        else clear();
    }
    busy = false;
    if (/** @type {HTMLDetailsElement} */ (byId("exchange")).open) await convert();
    if (/** @type {HTMLTextAreaElement} */ (byId("other")).value) await compare();
    if (/** @type {HTMLDetailsElement} */ (byId("machine")).open) await showCommands();
}

function clear() {
    drawMarks("", [], new Map());
    for (const id of ["remarks", "settings", "explanation"]) byId(id).replaceChildren();
    for (const id of ["settings-part", "picture-part"]) byId(id).hidden = true;
    byId("verdict").className = "";
    byId("verdict").textContent = "Nothing to check yet.";
    document.body.dataset.checked = "";
}

async function showExample() {
    const flags = (await explain("flags")).flags;
    const first = new Map(flags.filter((/** @type {any} */ one) => !one.needs.length).map((/** @type {any} */ one) => [one.subject, one]).reverse());
    const chosen = flags.filter((/** @type {any} */ one) => one.required || first.get(one.subject) === one).slice(0, 6);
    const { out } = await ask(["convert", "--to", "sh", "--", ...chosen.flatMap((/** @type {any} */ one) => one.example)]);
    field.value = out;
    keepUp();
}

field.addEventListener("input", keepUp);
field.addEventListener("scroll", () => byId("marks").scrollTo(field.scrollLeft, field.scrollTop));
for (const moved of ["keyup", "click", "focus"]) field.addEventListener(moved, showCaret);
byId("example").addEventListener("click", showExample);
byId("machine").addEventListener("toggle", showCommands);
connect();
connectChoices();
connectPicture();
followLink();
keepUp();
