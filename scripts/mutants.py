"""The changes that `mutate` makes to C++ sources, and sources that hold all of them at once.

Each change is made in a copy of its function's body. All copies go into one function, which chooses one by the number in
the environment variable ZEP_MUTANT; without a number it does what the source says. So one build serves for all changes.
"""
import dataclasses
import re

from statements import QUOTED, blocks, bodies, masked, matching

# The code that chooses; included before every source. In the file ZEP_MUTANT_LOG, the byte at the number of a body's first change
# is set when the body is executed. It is mapped, so what a process has executed is known however it ends. Nothing is allocated,
# because tests count allocations.
BODIES = 1 << 16
SWITCH = """#pragma once
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <type_traits>
#include <unistd.h>
namespace zep_mutant {
constexpr int bodies = %d;
inline bool not_logged[bodies] = {};
inline bool* open_log() {
    const char* const name = std::getenv("ZEP_MUTANT_LOG");
    const int file = name ? open(name, O_RDWR | O_CLOEXEC) : -1;
    if (file < 0) return not_logged;
    void* const bytes = mmap(nullptr, bodies, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    return bytes == MAP_FAILED ? not_logged : static_cast<bool*>(bytes);
}
inline bool* const executed = open_log();
inline const int number = std::getenv("ZEP_MUTANT") ? std::atoi(std::getenv("ZEP_MUTANT")) : 0;
inline int chosen(int body) {
    executed[body] = true;
    return number;
}
constexpr int active(int body) { return std::is_constant_evaluated() ? 0 : chosen(body); }
struct Never : std::runtime_error { using std::runtime_error::runtime_error; };
}
""" % BODIES


@dataclasses.dataclass
class Change:
    file: str
    kind: str
    start: int
    end: int
    text: str
    in_table: bool = False
    number: int = 0

    def show(self, source):
        """Position, kind, and the first line that differs, before and after."""
        line = source.count("\n", 0, self.start) + 1
        first = source.rfind("\n", 0, self.start) + 1
        shown = lambda text: " ".join(text.split())
        before = source[first:source.find("\n", max(self.end, self.start))]
        after = source[first:self.start] + self.text + source[self.end:source.find("\n", max(self.end, self.start))]
        return f"{self.file}:{line}: {self.kind}\n  {shown(before)}\n  {shown(after) or '(dropped)'}"


LEAVES = re.compile(r"(return|throw|break|continue|case|default|using|static_assert|BOOST_THROW_EXCEPTION)\b")
DECLARES = re.compile(r"(const|constexpr|static|auto|using) |[\w:]+(<.*?>)?[&*]* +[&*]?\w+ *[=({;\[]", re.S)
SWAPS = {" == ": " != ", " != ": " == ", " <= ": " < ", " >= ": " > ", " < ": " <= ", " > ": " >= ", " && ": " || ",
         " || ": " && ", "true": "false", "false": "true", "++": "--", "--": "++", " + ": " - ", " - ": " + ",
         " * ": " / ", " / ": " * ", " % ": " / ", " += ": " -= ", "all_of": "any_of", "std::endl": "'\\n'"}
TOKEN = re.compile("|".join(rf"\b{re.escape(one)}\b" if one[0].isalpha() else re.escape(one) for one in SWAPS)
                   + r"|(?<![\w'.])(?:0x[0-9A-Fa-f]+|\d[\d']*)(?=[uU]?\b)|!(?=[\w(])")
TEXT = re.compile(rf"{QUOTED}(\s*{QUOTED})*")


def text_changes(source, code, start, end):
    for found in TOKEN.finditer(code, start, end):
        text = found[0]
        number = text.replace("'", "")
        kind = "flush dropped" if "endl" in text else "number changed" if text[0].isdigit() else "operator changed"
        more = str(int(number, 0) + 1) if text[0].isdigit() else ""
        yield kind, found.start(), found.end(), SWAPS.get(text, more)
    for found in TEXT.finditer(source, start, end):
        inner = found[0][:-1]
        if code[found.start()] != "_" or inner.endswith(('"', "u'")):
            continue  # in a comment, or empty
        last = re.search(r"\\u[0-9A-F]{4}$|\\.$|[^\\]$", inner).start()
        yield "text changed", found.start(), found.end(), inner[:last] + ("x" if inner[last:] != "x" else "y") + found[0][-1]


def condition_changes(code, start, end):
    for found in re.compile(r"\b(if|while|for) \(").finditer(code, start, end):
        inner = code[found.end():matching(code, found.end() - 1) - 1]
        parts = inner.split(";")
        if found[1] == "for" and len(parts) != 3 or found[1] != "for" and re.search(r"[^=!<>]=[^=]", parts[-1]):
            continue
        which = 1 if found[1] == "for" else len(parts) - 1
        begin = found.end() + sum(len(part) + 1 for part in parts[:which])
        if parts[which].strip():
            yield "condition turned round", begin, begin + len(parts[which]), " !({})"


def statement_changes(source, code, start, end):
    for statements in blocks(code, start, end):
        for at, (begin, stop) in enumerate(statements):
            text, plain = source[begin:stop], code[begin:stop]
            if LEAVES.match(plain):
                continue
            if re.match(r"(\w+)\b.*;$", plain, re.S) and not re.match(r"(if|for|while|switch|try)\b", plain):
                yield "statement dropped", begin, stop, ";"
                if not DECLARES.match(plain):
                    if re.search(r"\(|<<|\+\+", plain):
                        yield "call doubled", begin, stop, "{ " + text + " " + text + " }"
                    if stream := re.match(r"([\w.]+)\s*<<", plain):
                        yield "flush added", begin, stop, "{ " + text + f" {stream[1]}.flush(); }}"
            if at + 1 < len(statements):
                after, stop_after = statements[at + 1]
                following = code[after:stop_after]
                if not (LEAVES.match(following) or DECLARES.match(plain) or DECLARES.match(following)):
                    yield "statement moved", begin, stop_after, source[after:stop_after] + " " + text


def catch_changes(source, code, start, end):
    for found in re.compile(r"\bcatch \(").finditer(code, start, end):
        close = matching(code, found.end() - 1)
        what = source[found.end():close - 1]
        if what == "...":
            continue
        name = re.search(r"& ?(\w*)$", what)[1]
        yield "catch narrowed", found.end(), close - 1, "const zep_mutant::Never& " + name
        body = matching(code, code.index("{", close))
        last = body
        while code[last:].lstrip().startswith("catch"):
            last = matching(code, code.index("{", last))
        handler = source[code.index("{", close) + 1:body]
        stand_in = f'const std::runtime_error {name}("not standard");' if name else ""
        yield "catch widened", last, last, " catch (...) { " + stand_in + handler


def changes(file, source):
    """Every change in the functions of one file, by body: ((start, end), [Change...])."""
    # The lists of a record's fields are written line by line.
    by_lines = file.endswith(".inl")
    code = masked(source, not by_lines)
    for start, end, is_function in bodies(code):
        if not is_function:
            # A table is made at run time then; the texts in it choose.
            texts = [one for one in text_changes(source, code, start, end) if one[0] == "text changed"]
            yield (start, end), [Change(file, *one, in_table=True) for one in texts]
            continue
        found = list(text_changes(source, code, start, end)) + list(catch_changes(source, code, start, end))
        found += [(kind, begin, stop, text.format(source[begin:stop].strip()))
                  for kind, begin, stop, text in condition_changes(code, start, end)]
        if not by_lines:
            found += statement_changes(source, code, start, end)
        unique = {source[start:one[1]] + one[3] + source[one[2]:end]: one for one in reversed(found)}
        yield (start, end), [Change(file, *one) for one in reversed(unique.values())]


def name_of_table(source, start):
    """The name of the table whose first brace is before `start`."""
    head = re.split(r"[;}]|\n\n", source[:start - 1])[-1]
    return (re.findall(r"(\w+)\s*(?:\[[^\]]*\]\s*)*=?\s*$", head) or ["no_name"])[0]


def with_all(source, by_body):
    """The source with every change in it, and the lines, as (first, last, number), of each."""
    result, at, lines = "", 0, []
    for (start, end), found in by_body:
        result += source[at:start]
        at = start
        if not found:
            continue
        if found[0].in_table:
            result = re.sub(r"constexpr(?=[^;{}]*\{$)", "const", result)
            for change in found:
                original = source[change.start:change.end]
                result += source[at:change.start] + "\n"
                lines.append((result.count("\n") + 1, result.count("\n") + 1, change.number))
                result += f"(zep_mutant::chosen({found[0].number}) == {change.number} ? {change.text} : {original})\n"
                at = change.end
            continue
        result += f"\nswitch (zep_mutant::active({found[0].number})) {{\n"
        for change in found:
            first = result.count("\n") + 1
            result += f"case {change.number}: {{\n{source[start:change.start]}{change.text}{source[change.end:end]}\n}} break;\n"
            lines.append((first, result.count("\n"), change.number))
        result += f"default: {{\n{source[start:end]}\n}} }}\n"
        at = end
    return result + source[at:], lines
