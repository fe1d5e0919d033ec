#!/usr/bin/env python3
"""Doxygen's input filter: prints a header with its lists written out.

A list (fields/*.def, flags.def, ...) has rows of a macro, each after a /// comment with its meaning. Where a header defines
that macro and includes the list, this prints one copy of the macro's body per row; the row's meaning is put at the
beginning of a /** comment in the body. A comment on what is noexcept gets "Does not throw." at its end. The comment that opens a header
becomes the file's description.
"""
import pathlib
import re
import sys

roots = [pathlib.Path(root) for root in ("include", "platform/include")]
row_form = re.compile(r"((?:^///.*\n)*)^([A-Z_]+)\((\w+),\s*(.*)\)$", re.M)
macro = r"#define (\w+)\((\w+)[^)]*\)((?:.*\\\n)*.*)\n"
macro_form = re.compile("^" + macro, re.M)
use_form = re.compile(rf'^((?:{macro})+)#include "(.*\.def)"', re.M)
record_form = re.compile(r'#define ZEP_RECORD (\w+)\n#define ZEP_FIELDS "(.*)"\n#include "(.*)"')
# A comment and the declaration below it, which may begin a group.
noexcept_form = re.compile(r"^((?:[ \t]*///(?!@).*\n)*[ \t]*(?:///(?!@).*|/\*\*.*))\n((?:[^/#;{}\n]*\n)?[^/#;{}\n]*\bnoexcept\b)", re.M)


def find(name):
    return next(path for root in roots if (path := root / name).exists()).read_text()


def sentence(text):
    return text[0].upper() + text[1:].rstrip(".") + "."


def fill(body, parameter, value, rest, meaning):
    body = body.replace("\\\n", "\n").replace("__VA_ARGS__", rest)
    body = re.sub(rf"\b{parameter}(##)?", lambda found: value, body)
    return body.replace("/**", "/** " + meaning)


def expand_use(use):
    bodies = {name: (parameter, body) for name, parameter, body in macro_form.findall(use[1])}
    last = next(reversed(bodies))
    result = []
    for comment, name, value, rest in row_form.findall(find(use.groups()[-1])):
        parameter, body = bodies.get(name) or bodies[last]
        meaning = " ".join(line.strip("/ ") for line in comment.splitlines()) or "`" + (rest if "," in rest else rest.strip('u"')) + "`"
        result.append(fill(body, parameter, value, rest, sentence(meaning)))
    return "\n".join(result)


def expand_record(record):
    name, fields, shape = record.groups()
    text = re.sub(r"\A(//.*\n)+(#if (.*\n)*?#endif\n)?", "", find(shape))
    return text.replace("ZEP_RECORD", name).replace("#include ZEP_FIELDS", f'#include "{fields}"')


def expand_own(text):
    """Macros of a header's own that are undefined in it: written out where they are used."""
    for name, parameter, body in macro_form.findall(text):
        if f"#undef {name}\n" not in text:
            continue
        text = re.sub(rf"^#define {name}\((.*\\\n)*.*\n|#undef {name}\n", "", text, flags=re.M)
        text = re.sub(rf"^[ \t]*{name}\((\w+)\)", lambda use: fill(body, parameter, use[1], "", ""), text, flags=re.M)
    return text


def add_guarantee(found):
    """What noexcept says to a compiler, the page says to its reader."""
    comment, declaration = found.groups()
    if not re.search(r"\b(throws?|is thrown)\b", comment, re.I):
        end = comment.rfind("*/") if "/**" in comment else len(comment)
        comment = comment[:end].rstrip() + " Does not throw. " + comment[end:]
    return comment + "\n" + declaration


text = pathlib.Path(sys.argv[1]).read_text()
text = record_form.sub(expand_record, text)
text = use_form.sub(expand_use, text)
text = expand_own(text)
text = re.sub(r"#define ZEP_EACH_RECORD .*\n#include .*\n", "", text)
text = noexcept_form.sub(add_guarantee, text)
print(re.sub(r"\A((?://.*\n)+)", lambda opening: "/// @file\n" + opening[1].replace("//", "///"), text))
