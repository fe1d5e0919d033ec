/** Elements with text: nothing is ever read as markup. */

// Control characters, those that change the direction of a text, and others that nobody sees.
const unseen = /[\u0000-\u001f\u007f-\u009f\u00ad\u061c\u115f\u1160\u180e\u200b-\u200f\u2028-\u202e\u2060-\u206f\ufeff\ufff9-\ufffb]/g;

/**
 * The text with what cannot be seen as \uXXXX.
 * @param {string} text
 */
export function seen(text) {
    return text.replace(unseen, (letter) => "\\u" + letter.charCodeAt(0).toString(16).padStart(4, "0"));
}

/**
 * @param {string} tag with its classes, as in "p.fault"
 * @param {...(string | Node)} content
 * @returns {HTMLElement}
 */
export function element(tag, ...content) {
    const [name, ...classes] = tag.split(".");
    const made = document.createElement(name);
    if (classes.length) made.className = classes.join(" ");
    made.append(...content.map((one) => (typeof one === "string" ? seen(one) : one)));
    return made;
}

/**
 * @template {HTMLElement} [Kind=HTMLElement]
 * @param {string} id
 * @returns {Kind}
 */
export function byId(id) {
    return /** @type {Kind} */ (document.getElementById(id));
}

/**
 * @param {string} label
 * @param {() => void} act
 */
export function button(label, act) {
    const made = element("button", label);
    made.setAttribute("type", "button");
    made.addEventListener("click", act);
    return made;
}

/** @param {string} text */
export async function copy(text) {
    await navigator.clipboard.writeText(text).then(
        () => (byId("note").textContent = "Copied."),
        () => (byId("note").textContent = "The browser does not allow copying; select the text and copy it."));
}
