#!/usr/bin/env python3
"""Lets real shells complete command lines with the scripts that orvane-config prints: tool_completions_test.py TOOL"""
import json, os, re, shlex, shutil, subprocess, sys, tempfile, unittest
from pathlib import Path

from tables import rows

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = Path(__file__).resolve().parent
ROWS = rows("tool_completions.txt", 2)


def lines_for(shell):
    """The words of each line, the last one unfinished, and what the shell has to offer for it."""
    for line, expected in ROWS:
        only, offered = re.match(r"(?:(\w+): )?(.*)", expected).groups()
        if only in (None, shell):
            yield line.split("|"), {*shlex.split(offered.replace("()", ""))}


def run(*words):
    return subprocess.run(words, capture_output=True, text=True, timeout=120, check=True)


class Completions(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
        Path("work").mkdir()
        self.scripts = {}
        for shell in ["bash", "zsh", "fish", "powershell"]:
            for program in ["orvane-config", "orvane-server"]:
                script = Path(f"{program}.{shell}").resolve()
                script.write_text(run(*TOOL, "completions", "--for", program, shell).stdout)
                self.scripts[program, shell] = str(script)
        os.chdir("work")
        Path("dir one").mkdir(), Path("file").touch()

    def expect(self, shell, offers):
        """Compares what a shell offers with what it should; files and directories are spelt in different ways."""
        if not shutil.which(shell):
            self.skipTest(f"there is no {shell}")
        lines = [*lines_for(shell)]
        for program in ["orvane-config", "orvane-server"]:
            ours = [(words, expected) for words, expected in lines if words[0] == program]
            self.assertTrue(ours, f"tool_completions.txt has no rows for {program}")
            offered = offers(self.scripts[program, shell], [words for words, _ in ours])
            self.assertEqual(len(offered), len(ours))
            for (words, expected), found in zip(ours, offered):
                with self.subTest("|".join(words)):
                    self.assertEqual({one.rstrip("/").replace("\\", "") for one in found if one}, expected)

    def test_bash_completes(self):
        def offers(script, lines):
            for words in lines:
                # bash takes words apart at a =.
                words = sum((re.split("(=)", word) for word in words), [])
                # As bash says that it will quote what it inserts: without that, a ; would end the command.
                ask = (f"compopt() {{ quotes=$*; }}; source {script}; COMP_WORDS=({shlex.join(words)}); COMP_CWORD={len(words) - 1}; "
                       f"$(complete -p {words[0]} | sed 's/.*-F //; s/ .*//'); "
                       "[[ $quotes || ${COMPREPLY[*]} != *\\;* ]] || COMPREPLY=(unquoted); printf '%s\\n' \"${COMPREPLY[@]}\"")
                done = run("bash", "-c", ask)
                self.assertEqual(done.stderr, "")
                yield done.stdout.split("\n")
        self.expect("bash", lambda *words: list(offers(*words)))

    def test_fish_completes(self):
        def offers(script, lines):
            asked = "; ".join(f"complete -C {shlex.quote(' '.join(words))}; echo =" for words in lines)
            done = run("fish", "--no-config", "-c", f"source {script}; {asked}")
            self.assertEqual(done.stderr, "")
            # What is offered is explained as in the reference and in the help.
            texts = {one["flag"]: one["meaning"] for one in json.loads(run(*TOOL, "explain", "flags", "--format", "json").stdout)["flags"]}
            texts |= re.findall(r"^  ([\w-]+)  +(.*)$", run(*TOOL, "help").stdout + run(*TOOL, "help", "check").stdout, re.M)
            offered = dict(line.split("\t") for line in done.stdout.split("\n") if "\t" in line)
            self.assertLessEqual({"status", "--ignore", "--log-stdout"} if "orvane-config" in lines[0] else {"--lumo-root"}, {*offered})
            for word, text in offered.items():
                self.assertIn(texts.get(word, ""), text)
            return [[line.split("\t")[0] for line in found.split("\n")] for found in done.stdout.split("=\n")[:-1]]
        self.expect("fish", offers)

    def test_zsh_completes(self):
        # The tool's script is found by its name, as it is when it is installed; the other one is sourced.
        Path("../functions").mkdir()
        shutil.copy(self.scripts["orvane-config", "zsh"], "../functions/_orvane-config")

        def offers(script, lines):
            script = "" if lines[0][0] == "orvane-config" else script
            asked, answers = Path("../lines"), Path("../answers")
            asked.write_text("\n".join(" ".join(words) for words in lines))
            answers.unlink(missing_ok=True), Path("../answers.done").unlink(missing_ok=True)
            if subprocess.run(["zsh", "-f", HERE / "completions/lines.zsh", "../functions", script, asked, answers], check=False, timeout=120).returncode == 77:
                self.skipTest("zsh gets no terminal here")
            return [line.split("\t") for line in answers.read_text().split("\n")[:-1]]
        self.expect("zsh", offers)

    def test_powershell_is_told_what_bash_is(self):
        # Nothing here runs its script.
        for program in ["orvane-config", "orvane-server"]:
            bash, powershell = (Path(self.scripts[program, shell]).read_text() for shell in ["bash", "powershell"])
            self.assertEqual(re.findall(r"'(--\S+)' = '(.*)'$", powershell, re.M), re.findall(r"\[(--\S+)\]='(.*?)'", bash))
            self.assertEqual(re.findall(r"^ {8}'(\w+)' = '(.*)'$", powershell, re.M), re.findall(r"^    (\w+)\)\n.*\n.*others='(.*)' ;;", bash, re.M))


unittest.main()
