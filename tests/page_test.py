#!/usr/bin/env python3
"""Asks the tool, and the tool in WebAssembly, the same questions, and compares exit codes and texts to the byte: page_test.py MANY_LINES MODULE"""
import itertools, os, re, shlex, subprocess, sys, tempfile
from pathlib import Path

from tables import lines, rows, words_of

NODE = ["node", Path(__file__).resolve().with_name("page_lines.mjs"), os.path.abspath(sys.argv[2])]
REQUIRED = ["--auto-deploy-root", "/D"]
VERBS = ["check", "fix", "diff", "convert", "explain"]
FORMATS = ["sh", "systemd", "json", "lines", "docker", "kubernetes", "powershell", "cmd", "nul"]
FILES = rows("tool_formats.txt", 2)
ROWS = [words_of(typed) for name in ["mistakes", "warnings", "hazards", "fixes", "tidy", "redactions"] for typed, _ in rows(f"tool_{name}.txt", 2)]
ROWS += [words_of(twin.split(" ", 1)[1]) for _, twin in rows("tool_hazards.txt", 2)] + [*map(words_of, lines("tool_right_lines.txt"))]
# What the library's own tests read: tokens with | between them and {20} for a letter, and below them what the tests of this system see.
CACHE = ["--attach-cache"]
LIBRARY = [[*start, *re.sub("{([0-9A-F]+)}", lambda unit: chr(int(unit[1], 16)), line).split("|")]
           for name, start in [("flags_accepted.txt", REQUIRED), ("flags_refused.txt", ["--wait"]), ("values_accepted.txt", REQUIRED),
                               ("values_refused.txt", ["--wait"]), ("caches_refused.txt", REQUIRED + CACHE), ("validate.txt", REQUIRED)]
           for line in lines(name) if not line.startswith("  ")] + [lines("full.txt")]
SUBJECTS = [word for line in lines("flags.txt") for word in line.split("|")[:2]] + re.findall(r"[a-z-]+-[a-z]+", " ".join(
    name + " " + text for table in ["mistakes", "warnings", "hazards"] for name, text in rows(f"tool_{table}.txt", 2)))


def questions():
    for number, (words, after) in enumerate(itertools.pairwise(ROWS)):
        words, after = (one if REQUIRED[0] in one else REQUIRED + one for one in (words, after))
        for ask in [["check"], ["check", "--all", "--format", "json"], ["check", "--redact"], ["check", "--format", ["sarif", "gcc", "junit"][number % 3]],
                    ["fix", "--ids"], ["convert", "--to", FORMATS[number % len(FORMATS)]], ["convert", "--tidy"], ["diff", *after]]:
            yield [*ask, "--", *words]
    for words in LIBRARY:
        if not re.search("[\ud800-\udfff]", " ".join(words)):  # no command line can have it
            yield ["check", "--all", "--format", "json", "--", *words]
    for number in range(len(FILES)):
        yield from (["check", f"file{number}"], ["convert", "--to", "json", "--from", f"file{number}"])
    for subject in dict.fromkeys(SUBJECTS):
        yield from (["explain", subject], ["explain", "--format", "json", subject])
    for command, *_ in rows("tool_answers.txt", 4) + rows("tool_verbs.txt", 4):
        words = shlex.split(command)
        if words and words[0] in VERBS and "\\x" not in command:
            yield words


def ask(program, asked):
    data = b"".join(f"{len(words)}\n".encode() + b"".join(word.encode() + b"\0" for word in words) for words in asked)
    output = subprocess.run(program, input=data, stdout=subprocess.PIPE, check=True).stdout
    while output:
        head, output = output.split(b"\n", 1)
        code, out, err = map(int, head.split())
        yield code, output[:out], output[out:out + err]
        output = output[out + err:]


def main():
    tool, asked = os.path.abspath(sys.argv[1]), list(questions())
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        for number, (text, _) in enumerate(FILES):
            Path(f"file{number}").write_bytes(text.encode("latin-1", "backslashreplace").decode("unicode_escape").encode("utf-8", "surrogatepass"))
        wrong, manifests = [], 0
        for words, here, there in zip(asked, ask([tool], asked), ask(NODE, asked), strict=True):
            if words[-1].startswith("file") and b"which this build of orvane-config cannot read" in there[2]:
                manifests += 1  # there is no library for YAML
            elif here != there:
                wrong.append((words, here, there))
        refusals = [*ask(NODE, [[verb, "--wait"] for verb in ["preflight", "status", "publish"]] + [["exec", "--wait", "--", "x"]])]
        os.chdir("/")
    for words, *both in wrong[:8]:
        print(shlex.join(words), *both, sep="\n  ")
    print(f"{len(asked)} answers compared, {len(wrong)} differ; {manifests} are about YAML, which the page does not read")
    return wrong or manifests > len(FILES) / 2 or [(code, b"sees no machine" in said) for code, _, said in refusals] != [(2, True)] * 4


sys.exit(bool(main()))
