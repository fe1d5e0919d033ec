#!/usr/bin/env python3
"""Runs a counting program under callgrind and shows what each of its operations costs.

measure.py PROGRAM [ARGS...]                 prints name, instructions, allocations and look-ups in the file system,
                                             separated by tabs
measure.py --expect FILE PROGRAM [ARGS...]   compares with the table in FILE; exit status 1 if something costs over 5 %
                                             more or fewer instructions, or other allocations or questions
"""
import pathlib
import re
import subprocess
import sys
import tempfile

# Only string functions differ a little between processors (0.4 % at most, measured with all vector extensions
# switched off).
tolerance = 0.05


def measure(command):
    """{name: [instructions, allocations, questions]} in the program's order."""
    with tempfile.TemporaryDirectory() as folder:
        profile = pathlib.Path(folder, "profile")
        run = subprocess.run(
            ["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={profile}", *command],
            stdout=subprocess.PIPE, text=True, check=True)
        instructions = {}
        for dump in pathlib.Path(folder).iterdir():
            text = dump.read_text(errors="replace")
            if name := re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M):
                instructions[name[1]] = int(re.search(r"^(?:totals|summary): (\d+)", text, re.M)[1])
    rows = (line.split("\t") for line in run.stdout.splitlines())
    return {name: [instructions[name], *map(int, exact)] for name, *exact in rows}


def whole_process(command):
    """The instructions of a process from its first to its last."""
    with tempfile.NamedTemporaryFile() as profile:
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={profile.name}", *command],
                       check=True)
        return int(re.search(r"^(?:totals|summary): (\d+)", profile.read().decode(errors="replace"), re.M)[1])


def expected(file):
    rows = (line.split("\t") for line in open(file) if not line.startswith("#"))
    return {name: list(map(int, figures)) for name, *figures in rows}


def compare(found, wanted):
    complaints = [f"{name}: not measured" for name in wanted.keys() - found.keys()]
    complaints += [f"{name}: not in the table" for name in found.keys() - wanted.keys()]
    for name in found.keys() & wanted.keys():
        (now, *exact_now), (then, *exact_then) = found[name], wanted[name]
        if now > then * (1 + tolerance):
            complaints.append(f"{name}: {now} instructions, {then} expected")
        if now < then * (1 - tolerance):
            complaints.append(f"{name}: {now} instructions, {then} expected: enter the better figure")
        for what, is_now, was_then in zip(["allocations", "questions"], exact_now, exact_then, strict=True):
            if is_now != was_then:
                complaints.append(f"{name}: {is_now} {what}, {was_then} expected")
    return complaints


if __name__ == "__main__":
    arguments = sys.argv[1:]
    table = None
    if arguments[:1] == ["--expect"]:
        table_name = arguments[1]
        table = expected(table_name)
        arguments = arguments[2:]
    result = measure(arguments)
    for name, figures in result.items():
        print(name, *figures, sep="\t")
    if table is not None:
        faults = compare(result, table)
        print("\n".join(faults))
        if faults:
            print("If that is intended, as when a flag is added, save the new figures: replace the rows of the table in",
                  table_name, "by those above, and say in the commit why they changed.")
        sys.exit(1 if faults else 0)
