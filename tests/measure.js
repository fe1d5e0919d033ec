// What a page looks like at the width that it has: used by site_test.py.
(() => {
    const shown = element => element.getClientRects().length > 0;
    const content = document.querySelector("main");
    const texts = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
    const range = document.createRange();
    const broken = [];
    for (let node; (node = texts.nextNode());) {
        if (!node.data.trim() || !shown(node.parentElement)) continue;
        range.selectNodeContents(node);
        if (range.getClientRects().length < 2) continue;
        for (const word of node.data.matchAll(/[a-z0-9]+/gi)) {
            range.setStart(node, word.index);
            range.setEnd(node, word.index + word[0].length);
            const lines = new Set([...range.getClientRects()].filter(part => part.width > 0).map(part => part.top));
            if (lines.size > 1) broken.push(word[0]);
        }
    }
    // How many characters of a paragraph's own letters fit into its width.
    const ruler = document.createElement("canvas").getContext("2d");
    const characters = [...document.querySelectorAll("main p, main li")].filter(shown).map(element => {
        ruler.font = getComputedStyle(element).font;
        const text = element.textContent;
        return text.length < 200 ? 0 : element.clientWidth / (ruler.measureText(text).width / text.length);
    });
    const wrapped = [...document.querySelectorAll(".line")].filter(line => line.clientHeight > 1.9 * parseFloat(getComputedStyle(line).fontSize));
    const size = element => parseFloat(getComputedStyle(element).fontSize);
    const headings = [...document.querySelectorAll("h2, h3, h4")].filter(shown);
    const overlapping = [...document.querySelectorAll("h1, h2, h3, h4")].filter(element =>
        parseFloat(getComputedStyle(element).lineHeight) < size(element));
    const titles = [...document.querySelectorAll("h1")].filter(shown);
    return {
        height: document.documentElement.scrollHeight,
        sideways: document.documentElement.scrollWidth - innerWidth,
        broken,
        wrapped: wrapped.length,
        characters: Math.round(Math.max(0, ...characters)),
        titles: titles.length,
        large: headings.filter(heading => titles.length && size(heading) >= size(titles[0])).length,
        overlapping: overlapping.length,
        language: document.documentElement.lang,
        small: [...document.images].filter(image => image.clientWidth < 0.85 * image.getAttribute("width")).length,
        silent: [...document.images].filter(image => !image.alt.trim()).length,
    };
})()
