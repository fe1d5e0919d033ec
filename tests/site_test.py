#!/usr/bin/env python3
"""Looks at the site in a browser, as a reader with a phone, a dark screen or a screen reader does: site_test.py FOLDER AXE"""
import json, sys, unittest
from pathlib import Path

from browser import Browser

SITE, AXE = Path(sys.argv[1]), Path(sys.argv[2])
del sys.argv[1:]
MEASURE = (Path(__file__).parent / "measure.js").read_text()
PAGES = sorted(SITE.glob("*.html"))
PICTURES = sorted(SITE.glob("*.svg"))
# The texts that go over the edge of the picture, or of the box in which they begin.
OUTSIDE = """[...document.querySelectorAll("text")].filter(text => {
    const of = text.getBBox(), within = (x, y, box) => x >= box.x && x <= box.x + box.width && y >= box.y && y <= box.y + box.height;
    const boxes = [document.documentElement.viewBox.baseVal, ...[...document.querySelectorAll("rect")].map(one => one.getBBox())];
    return boxes.some(box => within(of.x, of.y + of.height / 2, box) && !within(of.x + of.width, of.y + of.height / 2, box));
}).map(text => text.textContent)"""
# How light the letters are, and what is below them.
SHADES = """(() => {
    const shade = color => color.match(/\\d+/g).slice(0, 3).reduce((sum, part) => sum + part / 3, 0);
    const text = getComputedStyle(document.querySelector("text") ?? document.body);
    const sheet = getComputedStyle(document.body ?? document.documentElement);
    return {text: shade(document.querySelector("text") ? text.fill : text.color), sheet: shade(sheet.backgroundColor)};
})()"""
# Every page has the same head: so the next one only takes the place of the content, which costs a third of loading it.
NEXT = """(async text => {
    const page = new DOMParser().parseFromString(text, "text/html");
    document.documentElement.lang = page.documentElement.lang;
    document.body.replaceWith(page.body);
    await Promise.all([...document.images].map(image => image.decode()));
})"""
# One of each kind.
KINDS = ["index", "pages", "files", "md_docs_embedding", "md_docs_runtime_files", "md_docs_flags", "md_docs_performance",
         "classqel_1_1config_1_1HttpSettings", "namespaceqel_1_1config"]
# What a reader types, and the page, or the heading, that must be among the first three.
SEARCHES = [("--http", "--http"), ("umask", "md_docs_runtime_files"), ("exit code", "md_docs_"), ("parse_settings", "parse_settings"),
            ("--Log-Root", "--log-root"), ("reload", "Reload"), ("scoped pid", "scoped_pid_file"), ("xyzzy", None)]


class Site(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def turn_to(self, page):
        self.browser.run(f"{NEXT}({json.dumps(page.read_text())})")

    def test_every_page_can_be_read_on_a_phone_and_on_a_desk(self):
        self.assertGreater(len(PAGES), 80)
        self.browser.open(PAGES[0])
        for page in PAGES:
            self.turn_to(page)
            self.browser.show(1280)
            desk = self.browser.run(MEASURE)
            self.browser.show(390)
            phone = self.browser.run(MEASURE)
            with self.subTest(page.name):
                self.assertLessEqual(phone["height"], 5 * max(desk["height"], 800))
                for at in desk, phone:
                    self.assertEqual((at["broken"], at["sideways"]), ([], 0))
                    self.assertEqual((at["titles"], at["language"]), (1, "en"))
                    self.assertEqual([what for what in ("wrapped", "large", "overlapping", "small", "silent") if at[what]], [])
                self.assertLessEqual(desk["characters"], 85)

    def test_axe_finds_nothing_serious(self):
        self.browser.open(PAGES[0])
        self.browser.run(AXE.read_text() + ";0")
        for name in KINDS:
            self.turn_to(SITE / f"{name}.html")
            for width, dark in [(1280, False), (390, True)]:
                self.browser.show(width, dark)
                found = self.browser.run("""axe.run({resultTypes: ["violations"]}).then(({violations, passes}) => ({
                    found: violations.map(({id, impact, nodes}) => [impact, id, nodes.length, nodes[0].html, nodes[0].failureSummary]),
                    passes: passes.length}))""")
                with self.subTest(name, width=width, dark=dark):
                    self.assertEqual([one for one in found["found"] if one[0] in ("serious", "critical")], [])
                    self.assertGreater(found["passes"], 10)

    def test_the_search_finds_texts_and_flags(self):
        self.browser.show(390)
        self.browser.open(SITE / "index.html")
        self.browser.run("document.querySelector('[type=search]').focus()")
        self.browser.run("new Promise(done => { const wait = () => typeof searchIndex === 'object' ? done(0) : setTimeout(wait, 20); wait(); })")
        for typed, wanted in SEARCHES:
            found = self.browser.run(f"""(() => {{
                const field = document.querySelector("[type=search]");
                field.value = {json.dumps(typed)};
                field.dispatchEvent(new Event("input"));
                return [...document.querySelectorAll(".found a")].map(link => link.getAttribute("href") + " " + link.firstChild.textContent);
            }})()""")
            with self.subTest(typed):
                self.assertEqual(any(wanted in one for one in found[:3]) if wanted else not found, True, found[:3])

    def test_the_texts_of_a_picture_fit_into_it(self):
        self.assertGreater(len(PICTURES), 3)
        for picture in PICTURES:
            self.browser.open(picture)
            outside = self.browser.run(OUTSIDE)
            with self.subTest(picture.name):
                self.assertEqual(outside, [])

    def test_pictures_and_pages_are_dark_together(self):
        for dark in False, True:
            self.browser.show(400, dark)
            shades = []
            for path in [SITE / "index.html", *PICTURES]:
                self.browser.open(path)
                shades.append(self.browser.run(SHADES))
            with self.subTest(dark=dark):
                self.assertEqual([(name, shade) for name, shade in zip(["page", *PICTURES], shades) if (shade["text"] > 128) != dark], [])
                self.assertEqual(shades[0]["sheet"] < 128, dark)


unittest.main()
