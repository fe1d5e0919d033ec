#!/usr/bin/env python3
"""conformance_test.py FOLDER TOOL: reads the installed tables as their README says, and compares them with what the tool answers."""
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

folder, tool = Path(sys.argv[1]).resolve(), str(Path(sys.argv[2]).resolve())
readme = (folder / "README.md").read_text(encoding="utf-8")
enumerators = {field: {name: number for number, name in re.findall(r"(\d+) `([^`]+)`", names)}
               for field, names in re.findall(r"^\| `(\w+)` \| (\d .*) \|$", readme, re.M)}
records, compared, skipped, failures = {}, 0, [], []


def decode(text):
    """None for text that is no UTF-16: a command line cannot carry it."""
    units = re.sub("{([0-9A-F]+)}", lambda unit: chr(int(unit[1], 16)), text).encode("utf-16-le", "surrogatepass")
    try:
        return units.decode("utf-16-le")
    except UnicodeDecodeError:
        return None


def rows(name):
    result = []
    for number, line in enumerate((folder / name).read_text(encoding="utf-8").split("\n"), 1):
        if line.startswith("  "):
            result[-1][2].append(decode(line[2:].replace("{C}", "")))
        elif line and not line.startswith("#"):
            result.append((f"{name}:{number}", [decode(token) for token in line.split("|")], []))
    assert result, f"{name} has no rows"
    return result


def check(tokens):
    words = [word.encode() for word in [tool, "check", "--format", "json", "--", *tokens]]
    return json.loads(subprocess.run(words, capture_output=True, check=False).stdout)


def compare(where, got, expected):
    global compared
    compared += 1
    if got != expected:
        failures.append(f"{where}: {got} is not {expected}")


def as_text(field, value, kind=""):
    """A value of the tool's answer, in the form of the tables. `kind` is the type that fields.txt gives it."""
    if isinstance(value, bool) or value is None:
        return {True: "true", False: "false", None: "none"}[value]
    if isinstance(value, list):
        inner = re.sub(r"^std::\w+<(.*)>$", r"\1", kind)
        return "[" + ", ".join(as_text("", element, inner) for element in value) + "]"
    if isinstance(value, dict):
        if list(value)[-1] == "text":
            return value["text"]
        if list(value) in (["key", "value"], ["name", "archives"]):
            return "(" + " ".join(as_text("", part) for part in value.values()) + ")"
        return "(" + " ".join(members(value, records.get(re.sub(r"^optional<(.*)>$", r"\1", kind), {}))) + ")"
    if field in enumerators:
        return enumerators[field][value]
    return f"'{value}'" if isinstance(value, str) else str(value)


def members(record, kinds):
    for name, value in record.items():
        kind = kinds.get(name, "optional<>")
        text = as_text(name, value, kind)
        unset = ("none",) if kind.startswith("optional") and not isinstance(value, (bool, list)) else ("false", "0", "''", "[]", "none")
        if text not in unset and (name, text) != ("verify_peer_mode", "0"):
            yield f"{name}={text}"


def outcome(answer, base):
    if answer["code"]["value"] not in (0, 1):
        return [f"{answer['code']['message']}: {answer['text']}"]
    said = [f"success: {answer['text']}"] if answer["text"] else []
    if "settings" not in answer:  # the tool also validates
        return None
    return said + [f"{name} = {as_text(name, value, records['ServerSettings'][name])}"
                   for name, value in answer["settings"].items() if value != base.get(name)]


listed = re.findall(r"^\| `(\w+\.txt)` ", readme, re.M)
tables = {name: rows(name) for name in listed}
for _, (record, _), fields in tables["fields.txt"]:
    records[record] = {name: kind for kind, name in (field.rsplit(" ", 1) for field in fields)}

with tempfile.TemporaryDirectory() as place:
    os.chdir(place)
    required = ["--auto-deploy-root", "D"]
    fresh = check(required)["settings"]
    for table in ("flags_accepted.txt", "values_accepted.txt"):
        for where, tokens, expected in tables[table]:
            got = None if None in tokens else outcome(check(required + tokens), fresh)
            if got is None:
                skipped.append(where)
            else:
                compare(where, got, expected)
    for table in ("flags_refused.txt", "values_refused.txt"):
        for where, tokens, expected in tables[table]:
            if None not in tokens:
                compare(where, outcome(check(["--wait", *tokens]), {}), expected[:1])
    for where, tokens, expected in tables["caches_refused.txt"]:
        for flag, said in zip(("--attach-cache", "--start-cache"), expected):
            if None not in tokens:
                compare(where, check([*required, flag, *tokens])["accepted"], said == "accepted")
    for where, tokens, expected in tables["validate.txt"]:
        answer = check([*required, "--extract-root", "E", *tokens])
        compare(where, ["- " + text for text in answer["problems"]] + ([" ".join(answer["involved"])] if answer["involved"] else []), expected)
    # The line with all flags is read, but never valid.
    compare("full.txt", check([token for _, (token,), _ in tables["full.txt"]])["faults"], [])

flags = json.loads(subprocess.run([tool, "explain", "flags", "--format", "json"], capture_output=True, check=True).stdout)["flags"]
compare("flags.txt", sorted((flag["flag"], flag["kind"] == "switch") for flag in flags),
        sorted((flag, kind == "switch") for _, (_, flag, kind), _ in tables["flags.txt"]))
compare("README.md", sorted(listed), sorted(path.name for path in folder.glob("*.txt")))
print(f"{compared} compared; {len(skipped)} lines that the tool cannot be given or that are not valid as a whole")
sys.exit("\n".join(failures) if failures else compared < 280 and "too few rows compared")
