#!/usr/bin/env python3
"""finish.py FOLDER: makes doxygen's pages in the folder readable on every screen and by screen readers, removes the files that no
page refers to, and writes the index for the search.

A page gets one h1, its title. What doxygen lays out with tables becomes text that wraps: signatures and lists of members. What
needs doxygen's scripts goes.
"""
import html
import json
import pathlib
import re
import sys

from check_links import Page

titles = {"Related Pages": "Documents", "Class List": "Classes", "Namespace List": "Functions, by namespace", "File List": "Headers"}
# What takes the place of what, in this order.
replacements = [
    (r"</div><!-- top -->|&#9670;&nbsp;|<span class=\"icona?\">(<span class=\"icon\">\w</span></span>)?", ""),
    (r'<div class="levels">.*?</div>|<span id="arr_[^>]*>[^<]*</span>|<span class="permalink">.*?</span>|<img src="closed.png"[^>]*>', ""),
    (r' (onclick|align|valign|target)="[^"]*"', ""),
    (r' (Class|Struct|Namespace|File) Reference(<span class="mlabels">.*?</span></span>)?(?=<)', ""),
    (r"<h([1-5])>(.*?)</h\1>", lambda found: f"<h{int(found[1]) + 1}>{found[2]}</h{int(found[1]) + 1}>"),
    (r'<h2 class="memtitle">(.*?)</h2>', r'<h3 class="memtitle">\1</h3>'),
    (r'<div class="title">(.*?)</div>', lambda found: f"<h1>{titles.get(found[1], found[1])}</h1>"),
    (r'<div class="memproto">(.*?)</div><div class="memdoc">', lambda found: signature(found[1]) + '<div class="memdoc">'),
    (r'<div class="groupHeader"></div>|(&#124;\s*)?<a href="[^"]*-members.html">List of all members</a>', ""),
    (r'<table class="(?:markdownTable|doxtable|params|directory)">.*?</table>', lambda found: wide(found[0], "Table")),
    (r'<(div|pre) class="fragment">', r'<\1 class="fragment" tabindex="0" role="group" aria-label="Code">'),
]


def breakable(text):
    """Where a long name or list may go over two lines: not inside a word."""
    return re.sub(r"[^\s<>]{16,}", lambda name: re.sub(r"(::|[_|,=/])(?=.)", r"\1<wbr>", name[0]), text)


def signature(table):
    """Each parameter after the first has its own line."""
    labels = re.findall(r'<span class="mlabel">(.*?)</span>', table)
    table = re.sub(r'<td class="mlabels-right">.*', "", table, flags=re.S)
    rows = [re.sub(r"(&#160;|\s)+", " ", re.sub(r"</?(table|tr|td)[^>]*>", "", row)).strip() for row in table.split("</tr>")]
    first, *parameters = [re.sub(r" ?\(( |$)", "(<wbr>", re.sub(r" \)", ")", row)) for row in rows if row]
    if parameters and parameters[-1].startswith(")"):
        parameters[-2:] = ["".join(parameters[-2:])]
    text = first + "".join(f'<span class="parameter">{parameter}</span>' for parameter in parameters)
    return f'<div class="memproto"><code>{" ".join([text, *labels])}</code></div>'


def picture(folder, found):
    """A picture with the text that it has in itself. A wide one scrolls: smaller, nobody could read it on a phone."""
    drawing = (folder / found[1]).read_text(encoding="utf-8")
    text = re.search(r"<desc[^>]*>(.*?)</desc>", drawing, re.S) or re.search(r"<title[^>]*>(.*?)</title>", drawing, re.S)
    width, height = re.search(r'viewBox="0 0 (\d+) (\d+)"', drawing).groups()
    image = f'<img src="{found[1]}" width="{width}" height="{height}" alt="{html.escape(" ".join(html.unescape(text[1]).split()))}">'
    return wide(image, "Picture") if int(width) > 420 else image


def wide(content, what):
    """What is wider than a phone scrolls alone, also by keys."""
    return f'<div class="wide" tabindex="0" role="group" aria-label="{what}">{content}</div>'


def finish(folder, page):
    for pattern, new in replacements:
        page = re.sub(pattern, new, page, flags=re.S)
    page = re.sub(r"(?<=>)[^<>]+(?=<)", lambda text: breakable(text[0]), page)
    return re.sub(r'<object [^>]*data="([^"]*)"[^>]*></object>', lambda found: picture(folder, found), page)


def reachable(folder):
    """What the first page leads to, and what that leads to, and so on."""
    found, new = set(), {"index.html"}
    while new:
        found |= new
        pages = [Page(folder / name) for name in new if name.endswith(".html")]
        links = {link.split("#")[0] for page in pages for link in page.links}
        new = {name for name in links - found if (folder / name).is_file()}
    return found


def sections(page):
    """Place, heading and text of each part of a page; the first has the page's title."""
    content = re.search(r'<div class="contents">(.*)</main>', page, re.S)[1]
    parts = re.split(r"(?=(?:<a id=\"[^\"]*\" name=\"[^\"]*\"></a>\s*)?<h[2-4])", content)
    for number, part in enumerate(parts):
        heading = re.search(r"<h[2-4][^>]*>(.*?)</h[2-4]>", part, re.S)
        place = re.search(r'id="([^"]*)"', part)
        text = part.replace(heading[0], "") if heading else part
        if number == 0 or (heading and place):
            yield "#" + place[1] if number else "", plain(heading[1]) if number else "", plain(text)


def plain(text):
    text = re.sub(r"<(td|th|li|p|tr|div|br|pre)\b", r" <\1", text)
    return " ".join(html.unescape(re.sub(r"<[^>]*>", "", text)).split())


def main():
    folder = pathlib.Path(sys.argv[1])
    for path in folder.glob("*.html"):
        path.write_text(finish(folder, path.read_text(encoding="utf-8")), encoding="utf-8")
    kept = reachable(folder)
    index = []
    for path in sorted(folder.rglob("*")):
        if path.is_file() and str(path.relative_to(folder)) not in kept:
            path.unlink()
        elif path.suffix == ".html":
            page = path.read_text(encoding="utf-8")
            title = plain(re.search(r"<h1>(.*?)</h1>", page, re.S)[1])
            index += [[path.name + place, title, heading, text] for place, heading, text in sections(page)]
    (folder / "search_index.js").write_text("searchIndex = " + json.dumps(index, ensure_ascii=False, separators=(",", ":")) + ";\n", encoding="utf-8")


main()
