#!/usr/bin/env python3
"""Compares what orvane-config says about flags with what the library does with them: tool_reference_test.py TOOL..."""
import json, os, re, shlex, subprocess, sys, tempfile, unittest
from pathlib import Path

import tool_schemas

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
DATA = Path(__file__).resolve().parent / "data"
REQUIRED = ["--auto-deploy-root", "/D"]


def run(*words, data=b""):
    done = subprocess.run([*TOOL, *words], input=data, capture_output=True, timeout=300, check=False)
    return done.returncode, *(text.decode().replace("\r\n", "\n") for text in (done.stdout, done.stderr))


def words_of(text):
    """Words in bash's notation."""
    text = re.sub(r"\$'(.*?)'", lambda found: "'" + found[1].encode().decode("unicode_escape") + "'", text)
    return shlex.split(text)


def answer(verb, *words):
    return tool_schemas.answer(verb, run(verb, *words)[1])


def members(schema):
    """The names of all members that a schema describes."""
    if not isinstance(schema, dict):
        return set()
    inner = [*schema.values(), *schema.get("properties", {}).values(), *schema.get("$defs", {}).values(), *schema.get("anyOf", [])]
    return {*schema.get("properties", {})}.union(*(members(one) for one in inner if one is not schema.get("properties")))


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

    def test_every_id_has_an_example_that_causes_it_and_a_fix_that_does_not(self):
        kinds = answer("explain", "--format", "json")["kinds"]
        ids = [kind["id"] for kind in kinds]
        self.assertEqual(len(ids), len({*ids}))
        # There, a path without a drive letter causes a warning, and one with it is none of another system.
        usual = [] if HERE else ["foreign-path"]
        for kind in [kind for kind in kinds if kind["about"] != "finding"][::1 if HERE else 8]:
            with self.subTest(kind["id"]):
                required = [] if REQUIRED[0] in kind["fix"] else REQUIRED
                said = answer("check", "--json", *required, *words_of(kind["example"]))
                found = [said["faults"][0]["id"]] if said["faults"] else said["problem_ids"] or [one["id"] for one in said["warnings"]]
                self.assertIn(kind["id"], found)
                self.assertEqual(said["accepted"], kind["about"] == "warning")
                fixed = answer("check", "--json", *required, *words_of(kind["fix"]))
                left = {one["id"] for one in fixed["warnings"]} - {*usual, *([] if kind["id"] == "no-listener" else ["no-listener"])}
                self.assertEqual((fixed["accepted"], left), (True, set()))

    @unittest.skipUnless(HERE, "they are pages for Unix, and the text is the same")
    def test_manual_pages_are_correct_and_their_examples_work(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
        Path("deploy").mkdir(), Path("run").mkdir()
        Path("orvane").write_text("#!/bin/sh\nexec sleep 0\n")
        os.chmod("orvane", 0o755)
        os.environ["PATH"] += f":{os.getcwd()}"
        # The settings differ; no server is running.
        codes = {"diff": 1, "locate": 4}
        for page in ["tool", "flags", "files"]:
            text = run("manual", page)[1]
            self.assertRegex(text, r"\A\.TH ORVANE\S+ [157] \d{4}-\d\d-\d\d ")
            lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning"], input=text, capture_output=True, text=True, check=False)
            self.assertEqual((lint.returncode, lint.stdout), (0, ""))
            read = subprocess.run(["mandoc", "-T", "ascii", "-O", "width=500"], input=text, capture_output=True, text=True, check=True).stdout
            commands = re.findall(r"^ +orvane-config (.*--.*/.*|\w+ .*flags\.txt.*)$", re.sub(".\b", "", read), re.M)
            self.assertEqual(len(commands), {"tool": 8, "flags": 0, "files": 3}[page], read)
            for command in commands:
                here = command.replace("/srv/orvane/", "").replace("/run/orvane", "run").replace("9910", "0").replace("sleep 60", "sleep 0")
                with self.subTest(command):
                    done = subprocess.run(["sh", "-c", f"{shlex.join(TOOL)} {here}"], capture_output=True, text=True, check=False)
                    self.assertEqual(done.returncode, codes.get(command.split()[0], 0), done)

    def test_the_schemas_describe_every_member_and_the_page_names_them(self):
        page = (DATA.parents[1] / "docs/tool-json.md").read_text()
        schemas = {path.stem: json.loads(path.read_text()) for path in tool_schemas.SCHEMAS.iterdir()}
        settings = schemas.pop("settings")
        self.assertEqual({name for name in schemas if f"`{name}.json`" not in page}, set())
        described = {name for schema in schemas.values() for name in members(schema)}
        named = {*re.findall(r"[`.\"](\w+)(?=`)", page)}
        self.assertEqual(described - named, set())
        first_columns = re.findall(r"^\| (`.*?`) \|", page, re.M)
        self.assertEqual({name for cell in first_columns for name in re.findall(r"\.?(\w+)`", cell)} - described, set())
        made = subprocess.run([sys.executable, DATA.parents[1] / "scripts/settings-schema"], capture_output=True, text=True, check=True).stdout
        self.assertEqual(json.loads(made), settings, "run scripts/settings-schema >tools/orvane-config/schemas/settings.json")


unittest.main()
