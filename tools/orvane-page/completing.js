/** Flags and known values while typing: a list below the field, for the arrow keys, Enter and the mouse. */
import { explain } from "./asking.js";
import { byId, element } from "./elements.js";

const most = 8; // rows of the list

const field = () => /** @type {HTMLTextAreaElement} */ (byId("text"));
let active = -1;
let typed = "";

/**
 * @param {string} before the text before the cursor
 * @returns {Promise<{typed: string, choices: [string, string][]}>} what can complete its end, with its meaning
 */
async function choicesFor(before) {
    const { flags } = await explain("flags");
    const value = /(?:^|[\s"'[(])(--[\w-]+)["']?(?:,\s*["']|[\s=]+["']?)([\w-]*)$/.exec(before);
    const chosen = value && flags.find((/** @type {any} */ one) => one.flag === value[1] && one.kind === "choice");
    if (chosen) {
        const choices = chosen.value.split("|").filter((/** @type {string} */ one) => one.startsWith(value[2]) && one !== value[2]);
        return { typed: value[2], choices: choices.map((/** @type {string} */ one) => [one, ""]) };
    }
    const start = /(?:^|[\s"'[(])(-[\w-]*)$/.exec(before)?.[1] ?? "";
    const word = start.replace(/^-+/, "");
    const fit = flags.filter((/** @type {any} */ one) => start !== "" && one.flag !== start && one.flag.includes("-" + word));
    fit.sort((/** @type {any} */ a, /** @type {any} */ b) => Number(b.flag.startsWith("--" + word)) - Number(a.flag.startsWith("--" + word)));
    return { typed: start, choices: fit.map((/** @type {any} */ one) => [one.flag, one.meaning]) };
}

function close() {
    active = -1;
    byId("choices").hidden = true;
    field().removeAttribute("aria-activedescendant");
}

/** @param {string} choice that takes the place of what was typed of it */
function accept(choice) {
    const { selectionStart: end } = field();
    field().setRangeText(choice + " ", end - typed.length, end, "end");
    close();
    field().dispatchEvent(new Event("input"));
    field().focus();
}

async function offer() {
    const { selectionStart, selectionEnd, value } = field();
    const { typed: word, choices } = await choicesFor(value.slice(Math.max(0, selectionStart - 200), selectionStart));
    if (selectionStart !== field().selectionStart) return;
    close();
    typed = word;
    if (choices.length === 0 || selectionStart !== selectionEnd) return;
    byId("choices").replaceChildren(...choices.slice(0, most).map(([choice, meaning], number) => {
        const row = element("li", element("code", choice), " ", element("small", meaning));
        row.setAttribute("role", "option");
        row.setAttribute("aria-selected", "false");
        row.id = `choice-${number}`;
        row.addEventListener("mousedown", (event) => event.preventDefault());
        row.addEventListener("click", () => accept(choice));
        return row;
    }));
    byId("choices").hidden = false;
}

/** @param {KeyboardEvent} event */
function choose(event) {
    const rows = /** @type {HTMLElement[]} */ ([...byId("choices").children]);
    if (byId("choices").hidden || rows.length === 0) return;
    if (event.key === "Escape") return close();
    if (event.key === "Enter" && active >= 0) accept(rows[active].querySelector("code")?.textContent ?? "");
    else if (event.key === "ArrowDown" || event.key === "ArrowUp") {
        if (event.key === "ArrowDown") active = (active + 1) % rows.length;
        else active = (active > 0 ? active : rows.length) - 1;
        for (const [at, row] of rows.entries()) row.setAttribute("aria-selected", String(at === active));
        field().setAttribute("aria-activedescendant", rows[active].id);
    } else return;
    event.preventDefault();
}

export function connectChoices() {
    field().addEventListener("input", (event) => (/** @type {InputEvent} */ (event).inputType?.startsWith("insertText") ? offer() : close()));
    field().addEventListener("keydown", choose);
    for (const left of ["blur", "click"]) field().addEventListener(left, close);
}
