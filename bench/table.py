#!/usr/bin/env python3
"""Prints what parsing costs with this library and with other parsers, and what each stage of a start-up costs.

table.py FOLDER    takes the programs from the build's folder bench/; the plots in docs/plots/ are drawn again
"""
import collections
import json
import pathlib
import subprocess
import sys

from measure import measure, whole_process
import plots

folder = pathlib.Path(sys.argv[1])
folder_of_plots = pathlib.Path(__file__).parent.parent / "docs/plots"


def nanoseconds(program):
    """{name: the shortest of five times}: other work on the machine can only add to a time."""
    run = subprocess.run(
        [folder / program, "--benchmark_format=json", "--benchmark_min_time=0.1", "--benchmark_repetitions=5",
         "--benchmark_enable_random_interleaving=true"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    times = collections.defaultdict(list)
    for one in json.loads(run.stdout)["benchmarks"]:
        if one["run_type"] == "iteration":
            times[one["run_name"]].append(one["cpu_time"])
    return {name: min(all) for name, all in times.items()}


def table(head, rows):
    rows = [head, *rows]
    widths = [max(len(row[column]) for row in rows) for column in range(len(head))]
    rows.insert(1, ["-" * (widths[0])] + ["-" * (width - 1) + ":" for width in widths[1:]])
    for row in rows:
        cells = [row[0].ljust(widths[0])] + [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
        print("|", " | ".join(cells), "|")


def draw(counts):
    by_line, by_flags = collections.defaultdict(dict), collections.defaultdict(dict)
    for name, (instructions, *_) in counts.items():
        line, parser, flags = name.split("/")
        if line == "repeated":
            by_flags[parser][int(flags)] = instructions / int(flags)
        elif flags == "1":
            by_line[parser][line] = instructions
    plots.bars(folder_of_plots / "lines.svg", "Instructions of one parse (logarithmic)", by_line)
    plots.curves(folder_of_plots / "repeated.svg", "Instructions per flag, by number of repeated flags (logarithmic)", by_flags)


def contest():
    # A row per parser: instructions, times, allocations of each line. For repeated flags, the largest number of them counts.
    figures = collections.defaultdict(lambda: ([], [], []))
    time = nanoseconds("contest_times")
    ours = {}
    counts = measure([folder / "contest_instructions"])
    draw(counts)
    largest = {(line, parser): name for name in counts for line, parser, _ in [name.split("/")]}
    for (line, parser), name in largest.items():
        instructions, allocations, _ = counts[name]
        flags = name.split("/")[2]
        each = time[name] / int(flags)
        in_ours = each / ours.setdefault(line, each)
        row = figures[parser]
        row[0].append(f"{instructions / int(flags):,.0f}")
        row[1].append(f"{in_ours:.2f}" if in_ours < 10 else f"{in_ours:,.0f}")
        row[2].append(f"{allocations / int(flags):,.0f}" if flags == "1" else f"{allocations / int(flags):.1f}")
    lines = ["typical", "full", "per flag", "all kinds"]
    head = [column for what in ("instructions", "time", "allocations") for column in (f"{what}: minimal", *lines)]
    table(["", *head],
          [[parser, *sum(row, [])] for parser, row in figures.items()])


def stages():
    counts = measure([folder / "instructions"])
    time = nanoseconds("stages")
    for line in ["minimal", "typical", "full"]:
        # Only for exact figures: the difference of two times would be noise.
        both = [counts[f"{stage} {line}"] for stage in ("parse", "walk")]
        counts[f"complete {line}"] = [whole - walk for whole, walk in zip(*both)]
    names = [f"{stage} {line}" for stage in ("walk", "complete", "validate", "compare")
             for line in ("minimal", "typical", "full")]
    rows = []
    for name in [*names, "report", "usage"]:
        instructions, *others = counts[name]
        rows.append([name, f"{instructions:,}", f"{time[name]:,.0f}" if name in time else "", *map(str, others)])
    table(["stage", "instructions", "ns", "allocations", "questions"], rows)


def processes():
    line = pathlib.Path(__file__).with_name("corpora").joinpath("full.txt").read_text().splitlines()
    empty, *others = (whole_process([folder / f"start_{step}", *line]) for step in range(4))
    names = ["has a stream", "and makes the tokens", "and loads the libraries and parses"]
    table(["process, above an empty one", "instructions"],
          [[name, f"{instructions - empty:,}"] for name, instructions in zip(names, others, strict=True)])


contest()
print()
stages()
print()
processes()
