#!/usr/bin/env python3
"""markdown_links.py FOLDER...: fails if a link in a Markdown file below the folders leads to no file, or to no heading in it."""
import re
import sys
from pathlib import Path


def text_of(document):
    return re.sub(r"^```.*?^```$", "", document.read_text(encoding="utf-8"), flags=re.M | re.S)


def anchors_of(document):
    """What the pages of code hosts call a heading: its letters and digits in lower case, with hyphens for spaces."""
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in re.findall(r"^#+ (.*)$", text_of(document), re.M)}


def dead_links(documents):
    for document in documents:
        for link in re.findall(r"\]\(([^)\s]+)\)", text_of(document)):
            name, _, anchor = link.partition("#")
            target = document.parent / name if name else document
            if "://" not in link and (not target.exists() or (anchor and anchor not in anchors_of(target))):
                yield f"{document}: {link}"


if __name__ == "__main__":
    found = [document for folder in sys.argv[1:] for document in sorted(Path(folder).rglob("*.md"))]
    dead = list(dead_links(found))
    print("\n".join(dead) if found else "no documents", file=sys.stderr)
    sys.exit(bool(dead) or not found)
