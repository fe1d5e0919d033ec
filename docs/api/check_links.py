#!/usr/bin/env python3
"""check_links.py FOLDER: fails if a page in the folder refers to a file, or to a place in a page, that is not there."""
import html.parser
import pathlib
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.links = {""}, set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name"):
                self.anchors.add(value)
            elif name in ("href", "src", "data"):
                self.links.add(value)


def main():
    folder = pathlib.Path(sys.argv[1])
    pages = {path.name: Page(path) for path in folder.glob("*.html")}
    broken, outside = [], 0
    for name, page in pages.items():
        for link in page.links:
            place = urllib.parse.urlsplit(link)
            target, anchor = urllib.parse.unquote(place.path) or name, urllib.parse.unquote(place.fragment)
            if place.scheme in ("http", "https", "javascript", "mailto"):
                outside += 1
            elif not (folder / target).is_file() or (target in pages and anchor not in pages[target].anchors):
                broken.append(f"{name}: {link}")
    for line in sorted(broken):
        print(line, file=sys.stderr)
    print(f"{len(pages)} pages, {sum(len(page.links) for page in pages.values()) - outside} links")
    sys.exit(bool(broken) or len(pages) < 50)


if __name__ == "__main__":
    main()
