/** What goes in and out: other forms, placeholders, a second configuration, a link, and commands for the machine. */
import { ask } from "./asking.js";
import { byId, copy, element, seen } from "./elements.js";

const textIn = (/** @type {string} */ id) => /** @type {HTMLTextAreaElement} */ (byId(id)).value;
const typed = () => textIn("text");

/** @param {string} text that takes the place of what was typed */
function put(text) {
    const place = /** @type {HTMLTextAreaElement} */ (byId("text"));
    place.value = text;
    place.dispatchEvent(new Event("input"));
    place.focus();
}

/**
 * Shows a text that is copied as it is.
 * @param {HTMLElement} place
 * @param {string} text
 */
function offer(place, text) {
    place.textContent = text.split("\n").map(seen).join("\n");
    place.dataset.text = text;
}

/** @param {string} said */
function note(said) {
    byId("note").textContent = said;
}

export async function correct() {
    const whole = await ask(["fix", "--in-place", "text"], { text: typed() }, "text");
    if (whole.code === 0) return put(whole.file);
    const line = await ask(["fix", "--from", "text"], { text: typed() });
    if (line.out) put(line.out);
    else note(line.err);
}

export async function redact() {
    const { out, err } = await ask(["convert", "--redact", "--to", "sh", "--from", "text"], { text: typed() });
    if (out) put(out);
    else note(err);
}

export async function convert() {
    const to = /** @type {HTMLSelectElement} */ (byId("form")).value;
    const { out, err } = await ask(["convert", "--to", to, "--from", "text"], { text: typed() });
    offer(byId("converted"), out || err);
}

export async function compare() {
    const other = textIn("other");
    const place = byId("differences");
    if (!other.trim()) return place.replaceChildren();
    const { out, err } = await ask(["diff", "--format", "json", "text", "other"], { text: typed(), other });
    if (!out || JSON.parse(out).error !== undefined) return place.replaceChildren(element("p.fault", out ? JSON.parse(out).error : err));
    const answer = JSON.parse(out);
    const text = (/** @type {any} */ side) => (side.value === null ? "not set" : JSON.stringify(side.value));
    const rows = (answer.differences ?? []).map((/** @type {any} */ one) =>
        element("tr", element("th", one.setting), element("td", text(one.before)), element("td", text(one.after))));
    place.replaceChildren(rows.length
        ? element("table", element("tr", element("th", "Setting"), element("th", "This"), element("th", "Other")), ...rows)
        : element("p", answer.equal === true ? "The settings are equal." : err));
}

export async function showCommands() {
    const { out } = await ask(["convert", "--to", "sh", "--from", "text"], { text: typed() });
    for (const place of /** @type {NodeListOf<HTMLElement>} */ (document.querySelectorAll("[data-verb]")))
        offer(place, `orvane-config ${place.dataset.verb} ${out.trim()}`);
}

export function link() {
    const address = location.href.split("#")[0];
    return `${address}#${encodeURIComponent(typed().replace(/\p{Surrogate}/gu, "\ufffd"))}`;
}

export function followLink() {
    try {
        if (location.hash.length > 1) put(decodeURIComponent(location.hash.slice(1)));
    } catch {
        note("The link is damaged.");
    }
}

export function connect() {
    const acts = { redact, copy: async () => copy(byId("converted").dataset.text ?? ""), link: async () => copy(link()) };
    for (const [id, act] of Object.entries(acts)) byId(id).addEventListener("click", act);
    byId("form").addEventListener("change", convert);
    byId("other").addEventListener("input", compare);
    byId("exchange").addEventListener("toggle", convert);
    for (const one of document.querySelectorAll("[data-copies]"))
        one.addEventListener("click", () => copy(/** @type {HTMLElement} */ (one.previousElementSibling).dataset.text ?? ""));
    addEventListener("hashchange", followLink);
}
