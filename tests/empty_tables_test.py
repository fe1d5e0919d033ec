#!/usr/bin/env python3
"""Empties each table under data/ in turn, and expects every test that names it to notice: empty_tables_test.py BUILD TOOL"""
import os, re, shutil, subprocess, sys, tempfile, unittest
from pathlib import Path

from tables import DATA

BUILD, TOOL = sys.argv[1:]
del sys.argv[1:]
READERS = {path: text for path in Path(__file__).resolve().parent.glob("*_test.*")
           if re.search("from (preflight_)?tables import|support.hpp|tables = ", text := path.read_text(encoding="utf-8"))}
# On this system, no test reads them.
ELSEWHERE = ["platform_order_windows.txt"]


def run(program, folder):
    words = [f"{BUILD}/{program.stem}", "--gtest_fail_fast"] if program.suffix == ".cpp" else [sys.executable, program, folder, TOOL]
    done = subprocess.run(words, env={**os.environ, "ZEP_TEST_DATA": folder}, capture_output=True, text=True, timeout=60, check=False)
    return done.returncode, done.stdout + done.stderr


class EmptyTables(unittest.TestCase):
    def test_every_table_has_readers_and_each_notices_that_it_is_empty(self):
        for table in sorted(path for path in DATA.rglob("*.*") if path.name != "README.md"):
            folder = self.enterContext(tempfile.TemporaryDirectory())
            shutil.copytree(DATA, folder, dirs_exist_ok=True)
            comments = [line for line in table.read_text(encoding="utf-8").splitlines(True) if line.startswith("# ")]
            (Path(folder) / table.relative_to(DATA)).write_text("".join(comments), encoding="utf-8")
            readers = [path for path, text in READERS.items() if f'"{table.name}"' in text]
            self.assertTrue(readers, f"no test names {table.name}")
            for reader in readers if table.name not in ELSEWHERE else []:
                with self.subTest(table=table.name, reader=reader.name):
                    code, said = run(reader, folder)
                    self.assertNotEqual(code, 0)
                    self.assertIn(f"{table.name} has no rows", said)


unittest.main()
