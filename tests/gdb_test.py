#!/usr/bin/env python3
"""gdb_test.py PROGRAM FOLDER: compares what gdb prints with data/gdb.txt. gdb may load scripts from the folder."""
import os
import re
import subprocess
import sys

from tables import lines

rows = lines("gdb.txt")
asked = [line for line in rows if line[0] != " "]
expected = [line[2:] for line in rows if line[0] == " "]
commands = ["break stop_here", "run", "up", "set print pretty off", *[f"print {expression}" for expression in asked]]
said = subprocess.run(["gdb", "-nx", "-batch", "-iex", "set debuginfod enabled off", "-iex", f"add-auto-load-safe-path {sys.argv[2]}",
                       *[word for command in commands for word in ("-ex", command)], sys.argv[1]],
                      env={**os.environ, "LC_ALL": "C.UTF-8"}, capture_output=True, text=True, check=False)
got = re.findall(r"^\$\d+ = (.*)$", said.stdout, re.M)
for expression, answer, wanted in zip(asked, got, expected):
    if answer != wanted:
        print(f"print {expression}\n  {answer}\n  is not\n  {wanted}")
if got != expected or not got:
    sys.exit(said.stdout + said.stderr)
