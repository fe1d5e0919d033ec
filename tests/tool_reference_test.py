#!/usr/bin/env python3
"""Compares what orvane-config says about flags with what the library does with them: tool_reference_test.py TOOL..."""
import json, re, subprocess, sys, unittest
from pathlib import Path

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
DATA = Path(__file__).resolve().parent / "data"
REQUIRED = ["--auto-deploy-root", "/D"]


def run(*words, data=b""):
    done = subprocess.run([*TOOL, *words], input=data, capture_output=True, timeout=300, check=False)
    return done.returncode, *(text.decode().replace("\r\n", "\n") for text in (done.stdout, done.stderr))


def answer(verb, *words):
    return json.loads(run(verb, *words)[1])


class Reference(unittest.TestCase):
    def test_programs_learn_what_each_flag_does(self):
        flags = {one["flag"]: one for one in answer("flags", "--format", "json")["flags"]}
        self.assertEqual(sorted(flags), sorted(re.findall(r"--[\w-]+", (DATA / "flags.txt").read_text())))
        shown = re.findall(r"^([\w.]+).*?# (.*)$", run("show", *REQUIRED, "--https", "1")[1], re.M)
        settings = {name for one in flags.values() for name in one["settings"]}
        # No flag sets these two.
        self.assertEqual({name for name, _ in shown} - settings, {"qel_root", "https.http.linger_threshold"})
        defaults = {name: origin.removeprefix("default of ") for name, origin in shown if "default of" in origin}
        self.assertEqual(defaults, {one["settings"][0]: flag for flag, one in flags.items() if "default" in one and flag != "--extract-root"})
        for one in [*flags.values()][::1 if HERE else 16]:
            with self.subTest(one["flag"]):
                line = one["example"] if one["required"] else REQUIRED + one["example"]
                origins = answer("show", "--json", *line)["origins"]
                at = line.index(one["flag"]) + 1
                self.assertEqual({name for name, origin in origins.items() if at in origin["tokens"]}, {*one["settings"]})
                names = [synonym["name"] for synonym in one["synonyms"]] + [one["flag"]]
                self.assertEqual([found["flag"] for found in answer("flags", "--format", "json", *names)["flags"]], [one["flag"]])


unittest.main()
