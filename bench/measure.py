#!/usr/bin/env python3
"""Runs a counting program under callgrind and shows what each of its operations costs.

measure.py PROGRAM [ARGS...]                 prints name, instructions and allocations, separated by tabs
measure.py --expect FILE PROGRAM [ARGS...]   compares with the table in FILE; exit status 1 if something costs more
                                             instructions (by over 3 %) or other allocations than stated there
"""
import pathlib
import re
import subprocess
import sys
import tempfile

tolerance = 0.03


def measure(command):
    """{name: (instructions, allocations)} in the program's order."""
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
    return {name: (instructions[name], int(allocations)) for name, allocations in rows}


def expected(file):
    rows = (line.split("\t") for line in open(file) if not line.startswith("#"))
    return {name: (int(instructions), int(allocations)) for name, instructions, allocations in rows}


def compare(found, wanted):
    complaints = [f"{name}: not measured" for name in wanted.keys() - found.keys()]
    complaints += [f"{name}: not in the table" for name in found.keys() - wanted.keys()]
    for name in found.keys() & wanted.keys():
        (now, now_allocated), (then, then_allocated) = found[name], wanted[name]
        if now > then * (1 + tolerance):
            complaints.append(f"{name}: {now} instructions, {then} expected")
        if now < then * (1 - tolerance):
            complaints.append(f"{name}: {now} instructions, {then} expected: enter the better figure")
        if now_allocated != then_allocated:
            complaints.append(f"{name}: {now_allocated} allocations, {then_allocated} expected")
    return complaints


arguments = sys.argv[1:]
table = None
if arguments[:1] == ["--expect"]:
    table = expected(arguments[1])
    arguments = arguments[2:]
result = measure(arguments)
for name, (instructions, allocations) in result.items():
    print(f"{name}\t{instructions}\t{allocations}")
if table is not None:
    faults = compare(result, table)
    print("\n".join(faults))
    sys.exit(1 if faults else 0)
