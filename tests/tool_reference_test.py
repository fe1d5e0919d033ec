#!/usr/bin/env python3
"""Compares what orvane-config says about flags with what the library does with them: tool_reference_test.py TOOL..."""
import datetime, json, os, re, shlex, subprocess, sys, tempfile, unittest
from pathlib import Path

import many_lines, tool_schemas
from tables import lines, rows, words_of, words_of_powershell

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
ROOT = Path(__file__).resolve().parents[1]
FLAGS = [line.split("|")[1] for line in lines("flags.txt")]
REQUIRED = ["--auto-deploy-root", "/D" if HERE else "C:\\D"]
words_typed = words_of if HERE else words_of_powershell
# Written when the tool was built.
PAGES = {"tool": "orvane-config.1", "flags": "orvane-flags.7", "files": "orvane-runtime-files.5"}
DOCUMENTS = Path(TOOL[-1]).resolve().parents[2] / "tool_documents"


def run(*words, data=b""):
    done = subprocess.run([*TOOL, *words], input=data, capture_output=True, timeout=300, check=False)
    return done.returncode, *(text.decode().replace("\r\n", "\n") for text in (done.stdout, done.stderr))


def answer(verb, *words):
    return tool_schemas.answer(verb, many_lines.run(TOOL, verb, *words)[1])


def hazards(typed, *states):
    """Those in the line that are in one of the states, and those that are warnings as well."""
    https = "--https 9943 --x509-private-key /k --x509-cert-chain /c"
    line = typed.replace("VERIFIED", "HTTPS --ssl-verify-peer-mode verify-peer-require-peer-cert").replace("HTTPS --", f"{https} --")
    said = answer("check", "--format", "json", "--security", *REQUIRED, *words_of(re.sub("HTTPS$", https, line)))
    found = said["security"]["hazards"]
    return {one["id"] for one in found if one["state"] in states}, {one["id"] for one in found} & {one["id"] for one in said["warnings"]}


def flat(text):
    """On one line, and without quotes: a shell needs not all of them."""
    return " ".join(text.replace("'", "").split())


def formatted(page, width):
    """A manual page as a terminal of that width shows it."""
    done = subprocess.run(["mandoc", "-T", "ascii", "-O", f"width={width}"], input=page, capture_output=True, text=True, check=True)
    return re.sub(".\b", "", done.stdout)


def rendered(page):
    """The sections of a manual page, by their headings, each on one line."""
    lines = formatted(page, 500).rstrip().splitlines()[1:-1]
    headings = [at for at, line in enumerate(lines) if re.match(r"\S", line)] + [len(lines)]
    return {lines[at]: flat("\n".join(lines[at + 1:end])) for at, end in zip(headings, headings[1:])}


def help_of(verb):
    """What the help of a verb says: usage, meaning, where options go, and by their texts options and exit codes; then how it ends."""
    usage, meaning, *where, options, codes = re.sub(r"Groups\n(  .*\n)+\n", "", run("help", verb)[1]).split("\n\n")
    entries = re.findall(r"^  (\S.*?)(?:  +| (?=turn)|\n +)(.*(?:\n   .*)*)", options, re.M)
    ends = re.findall(r"^  (\d)  (.*(?:\n   .*)*)", codes, re.M)
    return {"usage": usage.removeprefix("Usage: "), "meaning": flat(meaning), "where": flat("".join(where)),
            "options": [(name, flat(text)) for name, text in entries], "codes": [(code, flat(text)) for code, text in ends],
            "end": flat("".join(re.findall(r"^\S.*\n", codes, re.M)[1:]))}


def pieces_of(flag, subject):
    """What the reference has about a flag, in the order in which people are told it."""
    yield from [subject, flag["flag"], flag.get("value", ""), flag["meaning"], "Sets: " + ", ".join(flag["settings"]), "Repeated: " + flag["repeated"]]
    yield "Relations: " + flag["relations"] if flag["relations"] else ""
    yield "In other servers: " + ", ".join(one["name"] for one in flag["synonyms"]) if flag["synonyms"] else ""
    yield "Example: " + " ".join(flag["example"])


def members(schema):
    """The names of all members that a schema describes."""
    if not isinstance(schema, dict):
        return set()
    inner = [*schema.values(), *schema.get("properties", {}).values(), *schema.get("$defs", {}).values(), *schema.get("anyOf", [])]
    return {*schema.get("properties", {})}.union(*(members(one) for one in inner if one is not schema.get("properties")))


class Reference(unittest.TestCase):
    def test_programs_learn_what_each_flag_does(self):
        flags = {one["flag"]: one for one in answer("explain", "flags", "--format", "json")["flags"]}
        self.assertEqual(sorted(flags), sorted(FLAGS))
        shown = re.findall(r"^([\w.]+).*?# (.*)$", run("check", "--all", *REQUIRED, "--https", "1")[1], re.M)
        settings = {name for one in flags.values() for name in one["settings"]}
        # No flag sets these two.
        self.assertEqual({name for name, _ in shown} - settings, {"qel_root", "https.http.linger_threshold"})
        defaults = {name: origin.removeprefix("default of ") for name, origin in shown if "default of" in origin}
        self.assertEqual(defaults, {one["settings"][0]: flag for flag, one in flags.items() if "default" in one and flag != "--extract-root"})
        for one in [*flags.values()]:
            with self.subTest(one["flag"]):
                line = one["example"] if one["required"] else REQUIRED + one["example"]
                origins = answer("check", "--all", "--format", "json", *line)["origins"]
                at = line.index(one["flag"]) + 1
                self.assertEqual({name for name, origin in origins.items() if at in origin["tokens"]}, {*one["settings"]})
                names = [synonym["name"] for synonym in one["synonyms"]] + [one["flag"]]
                self.assertEqual([found["flag"] for found in answer("explain", "flags", "--format", "json", *names)["flags"]], [one["flag"]])
                for name in names[:-1] * HERE:  # typed here, it leads to this flag
                    fault = answer("check", "--format", "json", *REQUIRED, "--" + name, "1")["faults"][0]
                    self.assertIn(one["flag"], " ".join([*fault["advice"], *fault["suggestions"]]), name)

    def test_every_id_has_an_example_that_causes_it_and_a_fix_that_does_not(self):
        kinds = answer("explain", "ids", "--format", "json")["kinds"]
        ids = [kind["id"] for kind in kinds]
        self.assertEqual(len(ids), len({*ids}))
        for kind in [kind for kind in kinds if kind["about"] != "finding"][::1 if HERE else 8]:
            with self.subTest(kind["id"]):
                required = [] if REQUIRED[0] in kind["fix"] else REQUIRED
                said = answer("check", "--format", "json", "--security", *required, *words_typed(kind["example"]))
                found = [said["faults"][0]["id"]] if said["faults"] else said["problem_ids"] or [one["id"] for one in said["warnings"]]
                if "level" in kind:
                    self.assertEqual(kind["id"] in found, kind["level"] == "open")
                    self.assertNotIn("hunter2", json.dumps([said["warnings"], said["security"]]), "a secret is not repeated")
                    found = [one["id"] for one in said["security"]["hazards"] if one["state"] in ("found", "not looked at")]
                self.assertIn(kind["id"], found)
                self.assertEqual(said["accepted"], kind["about"] in ("warning", "hazard"))
                fixed = answer("check", "--format", "json", "--security", *required, *words_typed(kind["fix"]))
                self.assertNotIn(kind["id"], [one["id"] for one in fixed["security"]["hazards"] if one["state"] == "found"])
                left = {one["id"] for one in fixed["warnings"]} - {*([] if kind["id"] == "no-listener" else ["no-listener"])}
                self.assertEqual((fixed["accepted"], left), (True, set()))

    def test_a_hazard_is_named_and_its_harmless_twin_is_not(self):
        table, named = rows("tool_hazards.txt", 2), set()
        levels = {kind["id"]: kind["level"] for kind in answer("explain", "--format", "json", "ids")["kinds"] if "level" in kind}
        for typed, expected in table[::1 if HERE else 8]:
            ids, twin = expected.split(" ", 1)
            ids = {*ids.split(",")}
            with self.subTest(typed):
                (found, warned), (left, still) = hazards(typed, "found"), hazards(twin, "found")
                unknown = hazards(typed, "not looked at")[0]
                self.assertEqual((ids - found <= unknown, left - ids, left & ids), (True, found - ids, set()), "the twin differs in more")
                self.assertEqual(warned - still, {one for one in ids if levels[one] == "open"} - unknown)
            named |= ids
        self.assertTrue(not HERE or named >= {*levels} - {"no-archive-limit"}, {*levels} - named)

    @unittest.skipUnless(HERE, "they are pages for Unix, and the text is the same")
    def test_manual_pages_are_correct_and_their_examples_work(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
        Path("deploy").mkdir(), Path("run").mkdir()
        Path("orvane").write_text("#!/bin/sh\nexec sleep 0\n")
        os.chmod("orvane", 0o755)
        os.environ["PATH"] += f":{os.getcwd()}"
        # The settings differ; no server is running.
        codes = {"diff": 1, "status": 4}
        for page, file in PAGES.items():
            text = (DOCUMENTS / file).read_text()
            self.assertRegex(text, r"\A\.TH ORVANE\S+ [157] \d{4}-\d\d-\d\d ")
            lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning"], input=text, capture_output=True, text=True, check=False)
            self.assertEqual((lint.returncode, lint.stdout), (0, ""))
            read = re.sub(r" \\\n +", " ", formatted(text, 500))
            commands = re.findall(r"^ +orvane-config (.*--.*/.*|\w+ .*flags\.txt.*)$", read, re.M)
            self.assertEqual(len(commands), {"tool": 8, "flags": 0, "files": 3}[page], read)
            for command in commands:
                here = command.replace("/srv/orvane/", "").replace("/run/orvane", "run").replace("9910", "0").replace("sleep 60", "sleep 0")
                with self.subTest(command):
                    done = subprocess.run(["sh", "-c", f"{shlex.join(TOOL)} {here}"], capture_output=True, text=True, check=False)
                    self.assertEqual(done.returncode, codes.get(command.split()[0], 0), done)

    @unittest.skipUnless(HERE, "a screen of 80 columns is the same on both systems")
    def test_no_line_is_wider_than_a_screen(self):
        verbs = re.findall(r"^  (\w+) ", run("help")[1], re.M)
        ids = [kind["id"] for kind in answer("explain", "ids", "--format", "json")["kinds"]]
        calls = [["help"], *(["help", verb] for verb in verbs), *([verb, "--help"] for verb in verbs)]
        calls += [["explain", *words] for words in [[], ["flags"], ["ids"], *([one] for one in [*ids, *FLAGS])]]
        texts = {" ".join(call): many_lines.run(TOOL, *call)[1] for call in calls}
        texts |= {file: formatted((DOCUMENTS / file).read_text(), 80) for file in PAGES.values()}
        self.assertEqual([(name, line) for name, text in texts.items() for line in text.split("\n") if len(line) > 80 and " " in line.strip()], [])

    @unittest.skipUnless(HERE, "they are pages for Unix, and the text is the same")
    def test_manual_pages_say_all_that_the_tool_knows(self):
        sources = {name: (DOCUMENTS / file).read_text() for name, file in PAGES.items()}
        pages = {name: rendered(text) for name, text in sources.items()}
        made = datetime.datetime.strptime(re.search(r"\((.*)\)", run("version")[1])[1], "%b %d %Y").date()
        titles = {name: f"{page['NAME'].split()[0]}({number})" for (name, page), number in zip(pages.items(), [1, 7, 5])}
        for name, page in pages.items():
            head = f".TH {titles[name][:-3].upper()} {titles[name][-2]} {made} ".replace("-", "\\-", 2 if name == "files" else 1)
            self.assertTrue(sources[name].startswith(head))
            self.assertRegex(page["NAME"], r"^\S+ - \S+( \S+){3}")
            self.assertEqual(page["SEE ALSO"], ", ".join(sorted(titles[other] for other in pages if other != name)))
            self.assertNotRegex(" ".join(page.values()), r"(?<!\$)\{\w+\}", "the text of a flag is missing")
        reference = answer("explain", "flags", "--format", "json")["flags"]
        subjects = list(dict.fromkeys(one["subject"] for one in reference))
        self.assertEqual(list(pages["flags"]), ["NAME", "DESCRIPTION", *(one.upper() for one in subjects), "VALUES", "SEE ALSO"])
        said = {subject: flat(" ".join(" ".join(pieces_of(one, "")) for one in reference if one["subject"] == subject)) for subject in subjects}
        self.assertEqual({one: pages["flags"][one.upper()] for one in subjects}, said)
        self.assertIn(" \\\n", run("explain", "flags")[1], "an example that goes on")
        listed, values = run("explain", "flags")[1].replace(" \\\n", "\n").split("\nValues\n")
        self.assertEqual(flat(listed), flat(" ".join(one + " " + said[one] for one in subjects)))
        self.assertEqual(flat(values), pages["flags"]["VALUES"])

        page = pages["tool"]
        kinds = answer("explain", "ids", "--format", "json")["kinds"]
        self.assertEqual(page["DIAGNOSTICS"].split(" ", 6)[6], flat(" ".join(
            f"Ids of {about}s " + " ".join(f"{one['id']} {one['summary']}" for one in kinds if one["about"] == about)
            for about in dict.fromkeys(one["about"] for one in kinds))))
        verbs = {name: help_of(name) for name in re.findall(r"^  (\w+) ", run("help")[1], re.M)}
        self.assertEqual(page["SYNOPSIS"], " ".join(one["usage"] for one in verbs.values()))
        self.assertEqual(page["VERBS"].lower(), flat(" ".join(
            one["usage"].removeprefix("orvane-config").replace(" [OPTIONS]", "") + " " + one["meaning"] for one in verbs.values())).lower())
        self.assertTrue(all(one["meaning"][0].isupper() for one in verbs.values()))
        groups = re.search(r"Groups\n((  .*\n)+)", run("help", "preflight")[1])[1]
        self.assertTrue(page["GROUPS"].endswith(flat(groups)), page["GROUPS"])
        listed = re.findall(r"^  (\w+) +\w", groups, re.M)
        self.assertEqual(", ".join(listed), re.search("the groups are (.*)", run("preflight", "--only", "x", *REQUIRED)[2])[1])
        flagged = [name for name, one in verbs.items() if one["where"]]
        for section, entries, between in [("OPTIONS", "options", " "), ("EXIT STATUS", "codes", " ")]:
            left = page[section]
            for entry in dict.fromkeys(entry for one in verbs.values() for entry in one[entries]):
                those = [name for name, one in verbs.items() if entry in one[entries]]
                every = {len(verbs): "every verb: " if entries == "options" else "", len(flagged): "every verb that takes FLAGS: "}
                part = f"{entry[0]} {every.get(len(those), ' '.join(those) + ': ')}{entry[1]}"
                self.assertIn(part, left)
                left = left.replace(part, "", 1)
            self.assertEqual(flat(left), verbs["check"]["where"] if entries == "options" else f"{verbs['publish']['end']} {verbs['exec']['end']}")
        self.assertEqual(list(page), ["NAME", "SYNOPSIS", "DESCRIPTION", "VERBS", "OPTIONS", "GROUPS", "EXIT STATUS", "FILES", "ENVIRONMENT", "EXAMPLES",
                                      "DIAGNOSTICS", "SEE ALSO"])
        self.assertEqual(page["DESCRIPTION"].split(" FLAGS are")[0], flat(run("help")[1].split("\n\n")[1]))

        page = pages["files"]
        self.assertEqual(list(page), ["NAME", "DESCRIPTION", "FILES", "STATES", "EXAMPLES", "SEE ALSO"])
        states = json.loads((tool_schemas.SCHEMAS / "status.json").read_text())["properties"]["state"]["enum"]
        meanings = ["accepts connections", "process in", "no pid", "accepts no", "no such", "still empty", "started after", "not what", "may not read"]
        described = [
            ("files", "FILES", ["PID_ROOT/main.pid|process ID", "ENDPOINT_ROOT/control|control", "ENDPOINT_ROOT/http|HTTP listener",
                                "ENDPOINT_ROOT/https|HTTPS"]),
            ("files", "STATES", map("|".join, zip(states, meanings, strict=True))),
            ("tool", "FILES", ["/usr/share/orvane-config/schemas/*.json|answers in JSON", "main.pid, control, http, https|runtime files"]),
            ("tool", "ENVIRONMENT", ["PATH|programs", "SSL_CERT_FILE, SSL_CERT_DIR|certificates", "NO_COLOR|not empty", "TERM|dumb"])]
        for name, section, entries in described:
            for entry, word in (one.split("|") for one in entries):
                self.assertRegex(pages[name][section], rf"(^| ){re.escape(entry)} \w[^.]*\b{word}\b")
        self.assertRegex(page["FILES"], r" No file ends with a newline\.( [^ ]+){20}")

    def test_the_schemas_describe_every_member_and_the_page_names_them(self):
        page = (ROOT / "docs/tool-json.md").read_text()
        schemas = {path.stem: json.loads(path.read_text()) for path in tool_schemas.SCHEMAS.iterdir()}
        settings = schemas.pop("settings")
        self.assertEqual({name for name in schemas if f"`{name}.json`" not in page}, set())
        described = {name for schema in schemas.values() for name in members(schema)}
        named = {*re.findall(r"[`.\"](\w+)(?=`)", page)}
        self.assertEqual(described - named, set())
        first_columns = re.findall(r"^\| (`.*?`) \|", page, re.M)
        self.assertEqual({name for cell in first_columns for name in re.findall(r"\.?(\w+)`", cell)} - described, set())
        made = subprocess.run([sys.executable, ROOT / "scripts/settings-schema"], capture_output=True, text=True, check=True).stdout
        self.assertEqual(json.loads(made), settings, "run scripts/settings-schema >tools/orvane-config/schemas/settings.json")


unittest.main()
