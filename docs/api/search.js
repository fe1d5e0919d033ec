// The search of the site: finds the parts of the pages that contain all words. The index is loaded when someone comes to search.
"use strict";

const most = 20;
const field = document.querySelector("[type=search]");
const list = document.querySelector(".found");

function load() {
    if (document.getElementById("index")) return;
    const script = document.createElement("script");
    script.id = "index";
    script.src = "search_index.js";
    script.onload = show;
    document.head.append(script);
}

// How well a part fits: 0 if a word is missing. A heading says more than a text, and the words together more than apart.
function score([place, title, heading, text], phrase, words) {
    const name = (heading || title).toLowerCase();
    const all = `${title} ${heading} ${text}`.toLowerCase();
    if (!words.every(word => all.includes(word))) return 0;
    const whole = name.split(/[ (]/)[0] === phrase || name === phrase;
    return 1 + 16 * whole + 8 * name.includes(phrase) + 4 * words.every(word => name.includes(word)) +
        2 * all.includes(phrase) + place.startsWith("md_");
}

// The text around the first place where the words are.
function excerpt(text, phrase, words) {
    const lower = text.toLowerCase();
    const at = [phrase, ...words].map(word => lower.indexOf(word)).find(place => place >= 0) ?? 0;
    const begin = Math.max(0, lower.lastIndexOf(" ", Math.max(0, at - 40)));
    return (begin ? "… " : "") + text.slice(begin, begin + 160).trim() + (text.length > begin + 160 ? " …" : "");
}

function entry([place, title, heading, text], phrase, words) {
    const link = document.createElement("a");
    link.href = place;
    const name = document.createElement("b");
    name.textContent = heading || title;
    link.append(name, heading ? ` ${title}` : "", document.createElement("br"), excerpt(text, phrase, words));
    return link;
}

function show() {
    const phrase = field.value.trim().toLowerCase();
    list.hidden = !phrase;
    if (!phrase || typeof searchIndex === "undefined") return;
    const words = phrase.split(/\s+/);
    const fitting = searchIndex.map(part => [score(part, phrase, words), part]).filter(([points]) => points);
    fitting.sort((a, b) => b[0] - a[0]);
    const count = document.createElement("p");
    count.setAttribute("role", "status");
    count.textContent = fitting.length > most ? `the first ${most} of ${fitting.length} places` :
        fitting.length === 1 ? "1 place" : `${fitting.length} places`;
    list.replaceChildren(count, ...fitting.slice(0, most).map(([, part]) => entry(part, phrase, words)));
}

field.addEventListener("focus", load);
field.addEventListener("input", show);
field.form.addEventListener("submit", event => {
    event.preventDefault();
    list.querySelector("a")?.click();
});
list.addEventListener("click", () => { list.hidden = true; });
document.addEventListener("keydown", event => {
    if (event.key === "Escape") list.hidden = true;
});
