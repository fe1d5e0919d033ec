#!/usr/bin/env python3
"""Puts marked words wherever text can enter, and looks for them in what --redact lets out: tool_redacts_test.py TOOL..."""
import itertools, json, os, random, re, shlex, subprocess, sys, tempfile, unittest
from pathlib import Path

import many_lines, tool_schemas
from tables import lines, rows, words_of

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
ROOT = Path(__file__).resolve().parents[1]
REQUIRED = ["--auto-deploy-root", "/D"]
# Without many_lines, each line costs two starts of the tool.
EVERY = 1 if many_lines.PROGRAM else 20 if HERE else 160
WORD, NUMBER = "Zqvjx", "739184650273645918273"  # longer than any number that a flag takes
MARKS = [WORD, NUMBER, "\u0436", f"10.73.91.84 {WORD}", "fd73:91e4::84c6", f"/{WORD}/{WORD}.{WORD}", f"https://{WORD}:{WORD}@{WORD}.org:80/{WORD}?q={WORD}"]
LEAK = re.compile("|".join([*(mark[i:i + 4] for mark in (WORD, NUMBER) for i in range(len(mark) - 3)), "\u0436", r"\\u0436", r"\.73\.91", "73:91e4"]), re.I)
LINES = [first + words_of(typed) for first, name in [(REQUIRED, "tool_mistakes.txt"), (REQUIRED, "tool_warnings.txt"), ([], "tool_fixes.txt")]
         for typed, _ in rows(name, 2)[::EVERY]]
LINES += [lines(ROOT / f"bench/corpora/{name}.txt") for name in ["full", "typical"]]
REDACTIONS = rows("tool_redactions.txt", 2)
REFUSED = r"(?m)^orvane-config: cannot redact (--[a-z0-9_-]+.*|tokens? \d.*|the command line): with placeholders, the .+ would be (lost|new); "


def run(verb, *options, words=()):
    """The answer, and everything that was printed."""
    return many_lines.run_with(TOOL, words, verb, *options, "--from-format", "nul")


def found(words, code, out, err):
    """What does not depend on the words: verdict, places, ids and reasons, and the shape of the settings."""
    said = tool_schemas.answer("check", out)
    typed = " ".join(words).lower()

    def reason(sentence):
        return [word for word in re.findall(r"\b[a-z]{3,}\b", sentence.lower()) if word not in typed and not re.fullmatch("[xh][a-j]+|example|org", word)]

    def shape(value):
        if isinstance(value, dict):
            return {name: shape(one) for name, one in value.items()}
        return [shape(one) for one in value] if isinstance(value, list) else type(value)
    faults = [(fault["id"], fault.get("tokens"), *map(reason, fault["advice"])) for fault in said["faults"]]
    return (code, said["accepted"], faults, said["problem_ids"], said["involved"], [(one["id"], one.get("token")) for one in said["warnings"]],
            shape(said.get("settings")), err == "")


def marked(words, mark, chance):
    """One token with the mark, or a token more. A letter more makes a misspelt flag or keyword, which stays."""
    at = chance.randrange(len(words))
    where = chance.choice([0, len(words[at]), len(words[at]) // 2 if words[at][:1] != "-" else 0])
    glue = chance.choice(["", " ", "=", ":", "/"]) if len(mark) > 1 else " "
    if chance.random() < 0.2 or (len(mark) == 1 and words[at][:1] in "-/[\"\u2013\u2014"):
        return words[:at] + [mark] + words[at:]
    return words[:at] + [words[at][:where] + glue * (where != 0) + mark + words[at][where:]] + words[at + 1:]


class Redacts(unittest.TestCase):
    def answers(self, verb, *options, words):
        """With --redact: nothing leaks, and the exit code is that of the words themselves, or it is said what would change."""
        code, out, err = run(verb, *options, "--redact", words=words)
        self.assertNotRegex(out + err, LEAK)
        refused = code == 7 and "cannot redact" in out + err
        if refused:
            self.assertRegex(json.loads(out)["error"] + "\n" if out else err, REFUSED)
        elif verb != "convert":
            self.assertEqual(code, run(verb, *options, words=words)[0])
        return code, out, err, refused

    def test_what_is_found_stays(self):
        refusals = 0
        for words in LINES:
            with self.subTest(shlex.join(words)):
                *answer, refused = self.answers("check", "--format", "json", words=words)
                refusals += refused
                if not refused:
                    self.assertEqual(found(words, *answer), found(words, *run("check", "--format", "json", words=words)))
        self.assertLessEqual(refusals, len(LINES) / 100)

    def test_no_mark_comes_out_wherever_it_is(self):
        chance, refusals = random.Random(5), 0
        ways = [["check"], ["check", "--all"], ["check", "--all", "--format", "json"], ["fix", "--ids"],
                *(["check", "--format", to] for to in ["json", "gcc", "sarif", "junit"]),
                *(["convert", "--to", to] for to in ["sh", "systemd", "json", "lines"])]
        for at, (mark, line) in enumerate(itertools.product(MARKS, LINES)):
            if at % 5:
                continue
            words = marked(line, mark, chance)
            with self.subTest(shlex.join(words)):
                refusals += self.answers(*chance.choice(ways), words=words)[-1]
        self.assertLessEqual(refusals, 3 + len(LINES) * len(MARKS) / 100)  # few lines are a small sample

    def test_each_part_of_a_value_is_replaced_as_it_should_be(self):
        for row, expected in REDACTIONS[::1 if HERE else 6]:
            with self.subTest(row):
                code, out, err = many_lines.run(TOOL, "convert", "--redact", "--to", "sh", "--", *words_of(row))
                self.assertEqual((code, out + err), (7 if ": cannot redact" in expected else 0, expected + "\n"))

    def test_no_placeholder_stands_for_two(self):
        kinds = [[f"k{i}" for i in range(17576)], [f"10.7.{i // 256}.{i % 256}" for i in range(2000)], [f"fd73::{i:x}" for i in range(2000)],
                 ["".join(cased) for cased in itertools.product(*[(c, c.upper()) for c in "hostname"])], [str(i) for i in range(2000, 4000)]]
        for words in kinds[::1 if HERE else 4]:
            line = [*REQUIRED, "--user-data", "key \"" + " ".join(words) + "\"", "--attach-cache", f"redis@{words[0]}:1"]
            code, out, err = run("convert", "--redact", "--to", "json", words=line)
            self.assertEqual((code, err), (0, ""))
            made = json.loads(out)[3].split('"')[1].split()
            self.assertEqual((len(made), len(set(made))), (len(words), len(words)))

    def test_long_values_are_answered(self):
        flags = itertools.cycle([["--user-data"], ["--log-root"], ["--http"], [], ["--user-data"]])
        for value in [" --log-root" * 10000, ".zep_deployed" * 19000, "--log-root=" * 7000, "a:" * 50000, "a-" * 50000, "1." * 50000, "-" * 100000,
                      "k " + " ".join(map("".join, itertools.product("x", *["abcdefghijklmnopqrstuvwxyz"] * 3)))][::1 if HERE else 4]:
            flag = next(flags)
            with self.subTest(value[:20], flag=flag):
                self.assertNotEqual(run("check", "--redact", "--format", "json", words=[*REQUIRED, *flag, value])[1:], ("", ""))

    def test_two_lines_get_the_same_words_and_their_files_too(self):
        one, two = self.files({f"{WORD}.txt": f"--auto-deploy-root\n/srv/{WORD}\n--log-root\n/srv/{WORD}/l\n", f"q/{WORD}.conf": ""})
        done = self.start("diff", "--redact", one, "--", "--auto-deploy-root", f"/srv/{WORD}", "--log-root", f"/srv/{WORD}/m/{WORD}ann")
        self.assertEqual(done[0], 1, done)
        self.assertRegex(done[1], r"^- log_root = (/srv/x\w+/)x\w  #.*x\w\.txt:3:1\)\n\+ log_root = \1x\w/x\w  # [^\n]*\n$")
        self.assertRegex(self.start("diff", "--redact", one, two)[2], r"^orvane-config: x\w/x\w\.conf contains no flags\n")

    def files(self, contents):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
        for name, content in contents.items():
            Path(name).parent.mkdir(exist_ok=True)
            Path(name).write_bytes(content.encode())
        return list(contents)

    def start(self, *words):
        """Of this process's directory, whatever the verb says."""
        done = subprocess.run([*TOOL, *words], capture_output=True, check=False, timeout=60)
        said = [text.decode().replace("\r", "") for text in (done.stdout, done.stderr)]
        self.assertNotRegex("".join(said), LEAK)
        return done.returncode, *said

    def test_no_file_and_no_option_is_repeated(self):
        env = json.dumps([{"Env": [f"PASSWORD={WORD}" + "x" * 5000]}])
        contents = [env, "{}" + env, f'["{WORD}", {NUMBER}]', f'["{WORD}', f"--http ${WORD}", f"--http '{WORD}",
                    f"[Service]\nExecStart=/{WORD} %{WORD}\n", f"[Service]\nExecStart=/{WORD} --log-root \\q{WORD}\n",
                    f"{WORD}\n--{WORD}\n{WORD}\n", f"--http\n{WORD}:80\n", f"--http\n{WORD}\0{WORD}", ""]
        names = self.files({f"{WORD}-{i}.json": content for i, content in enumerate(contents)})
        for verb, name in itertools.product(["check", "diff"], [*names, f"{WORD}/missing", "."]):
            with self.subTest(verb, name=name):
                self.assertIn(self.start(verb, "--redact", "--from", name, *["--", "--no-banner"][:2 * (verb == "diff")])[0], [0, 1, 2, 7])
        for options in [["--get", WORD], ["--ignore", WORD], ["--from-format", WORD], ["--pid", WORD],
                        ["--jsom" + WORD], ["--to=" + WORD], ["--redact=" + WORD]]:
            self.assertEqual(self.start("check", "--redact", *options, *REQUIRED)[0], 2 if options[0][2] != "j" else 1)
        # Also without --redact, a file is not echoed.
        done = subprocess.run([*TOOL, "check", "--from", names[0]], capture_output=True, text=True, check=False)
        self.assertRegex(done.stderr, r"1:1: element 1 of the array is not a string, but an object \(format json; ")


unittest.main()
