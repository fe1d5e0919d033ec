#!/usr/bin/env python3
"""Holds orvane-config's formats of command lines against the programs whose formats they are: tool_formats_test.py TOOL..."""
import json, os, random, re, shlex, shutil, signal, subprocess, sys, tempfile, unittest
from pathlib import Path

import tool_schemas
from tables import rows

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
ROOT = Path(__file__).resolve().parents[1]
# A file of flags may begin with a # of its own.
READ, TIDY = rows("tool_formats.txt", 2, comment="# "), rows("tool_tidy.txt", 2)
HOSTILE = ["", " ", "'", "''", '"', "\\", "\\\\", "a b", "a\nb", "\n", "\t", "\r", "a\r\n", "#", "# c", ";", "\\;", "=", "=ls", "~", "~/x", "$HOME",
           "${HOME}", "$$", "$(id)", "`id`", "%i", "%%", "100%", "*", "?", "[a]", "{a,b}", "!", "!!", "&", "|", "<", ">", "(", ")", "^", "-", "--", "-n",
           "é", "日本", "😀", "\u00a0", "\u2019", "\u2028", "\ufffe", "\ufdd0", "\U0001ffff", "\x01", "\x1b[2J", "\x7f", "\\n", "\\x41", "'\"'", "a'b\"c",
           "x" * 3000, "if", "a=b", "@x", "+x", ",", "--%", "$'a'", "\\u0041", "@(a)", "a\\", "ü\\ \"'$%\n"]


def run(*words, data=b"", program=None, **more):
    done = subprocess.run([*(program or TOOL), *words], input=data, capture_output=True, timeout=120, check=False, **more)
    done.stderr = done.stderr.replace(b"\r\n", b"\n")
    return done


def ended(words):
    return "".join(word + "\0" for word in words).encode()


def convert(words, *options):
    done = run("convert", *options, "--from-format", "nul", "--from", "-", data=ended(words))
    return done.returncode, done.stdout, done.stderr.decode()


def shell(name):
    def split(text):
        Path("script").write_bytes(b"set -- " + text + b"printf '%s\\0' \"$@\"")
        return run("script", program=[name]).stdout.decode().split("\0")[:-1]
    return split


def cmd(text):
    Path("x.bat").write_bytes(b"@chcp 65001 >nul\r\n@" + subprocess.list2cmdline(TOOL[-1:]).encode() + b" convert --to nul " + text.replace(b"\n", b"\r\n"))
    return run("cmd", "/c", "x.bat", program=TOOL[:-1]).stdout.decode().split("\0")[:-1]


def systemd(text):
    """The command as systemd says that it has understood it, in its own notation."""
    Path("x.service").write_bytes(b"[Service]\n" + text)
    verify = run("verify", "./x.service", program=["systemd-analyze"], env={**os.environ, "SYSTEMD_LOG_LEVEL": "debug"})
    said = b"".join((verify.stdout, verify.stderr))
    assert verify.returncode == 0 and re.search(rb"x.service:\d", said) is None, said
    line = re.search(rb"Command Line: /bin/true ?(.*)\n", said)[1].decode("latin-1")
    words = [word[1:-1] if word[0] == '"' else word for word in re.findall(r'"(?:[^"\\]|\\.)*"|[^ ]+', line)]
    known = {"n": "\n", "t": "\t", "r": "\r", "a": "\a", "b": "\b", "f": "\f", "v": "\v"}
    words = [re.sub(r"\\(x..|\d{3}|.)", lambda found: known.get(found[1]) or (chr(int(found[1][1:], 16)) if found[1][0] == "x" else
             chr(int(found[1], 8)) if len(found[1]) == 3 else found[1]), word) for word in words]
    # Only when the unit starts are its variables replaced: $$ is for $.
    return [re.sub(r"\$(.)", r"\1", word.encode("latin-1").decode()) for word in words]


JUDGES = [("sh", shell("bash")), ("sh", shell("dash")), ("sh", shell("zsh")), ("sh", lambda text: shlex.split(text.decode())),
          ("flags", lambda text: shlex.split(text.decode())), ("json", json.loads), ("nul", lambda text: text.decode().split("\0")[:-1]), ("systemd", systemd)]


class Formats(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))

    def test_what_is_read_and_what_is_refused(self):
        for text, expected in READ[::1 if HERE else 5]:
            named, text = (["--from-format", "sh"], text[3:]) if text.startswith("sh ") else ([], text)
            named, text = (["--env", "A=b '$c", "--env", "Zed=", "--env", "e"], text[4:]) if text.startswith("env ") else (named, text)
            Path("e").write_text("B=1\nB='2 3'\n")
            content = re.sub(r"\\(x..|u....|.)", lambda found: eval(f"'\\{found[1]}'"), text)
            Path("flags").write_bytes(content.encode(errors="surrogateescape"))
            done = run("convert", "--to", "json", *named, "--from", "flags")
            with self.subTest(text):
                if b"this build of orvane-config cannot read" in done.stderr:
                    continue
                if expected[0] == "[":
                    self.assertEqual((done.stdout and json.loads(done.stdout), done.returncode), (json.loads(expected), 0), done.stderr)
                else:
                    self.assertRegex(done.stderr.decode(), "^orvane-config: flags:" + expected)
                    self.assertEqual((done.returncode, done.stdout), (7, b""))

    def test_files_that_a_file_refers_to(self):
        unit, tool = "[Service]\nExecStart=", "/usr/bin/orvane-config"
        Path("flags").write_text("--http\n8080\n")
        here = Path.cwd().as_posix()
        system = "image/etc/systemd/system/"
        for files, expected in [
            ({"o.service": f"{unit}-{tool} exec --preflight --from {here}/flags --wait -- /usr/bin/env A=b /bin/orvane --no-banner"},
             (["--no-banner", "--http", "8080", "--wait"], "o.service:2:11: followed")),
            ({"o.service": f"{unit}/bin/sh -ec 'exec {tool} publish --from {here}/flags -- x y'"}, (["--http", "8080"], "o.service:2:23: followed")),
            ({"o.service": f"{unit}{tool} check --from flags"}, "o.service:2:34: where the file of its flags is"),
            ({"o.service": f"{unit}{tool} check --pid 1"}, "o.service:2:34: which process"),
            ({"o.service": f"{unit}{tool} explain x"}, "o.service:2:34: orvane-config is not called with flags here"),
            ({"o.service": f"{unit}{tool} check --get"}, "o.service:2:34: orvane-config would refuse this call"),
            ({"o.service": f"{unit}{tool} exec --from {here}/flags -- runit x"}, "o.service:2:\\d+: whether this is the server's"),
            ({"o.service": f"{unit}{tool} exec --from /none/x -- x"}, "cannot open /none/x"),
            ({"o.service": f"{unit}/bin/x --a\n", "o.service.d/b.conf": f"{unit}\nExecStart=/bin/x --b ${{V}} $W\n[Service]\n",
              "o.service.d/c.conf": "[Service]\nEnvironment=V=1 W=2\nEnvironment=\"W=3 '4 5' \"\n", "o.service.d/no": "x"},
             (["--b", "1", "3", "4 5"], "o.service: also read o.service.d/b.conf")),
            ({"o.service.d/b.conf": f"{unit}\nExecStart=/bin/x --a", "o.service": f"{unit}/bin/y"}, "o.service.d/b.conf was read twice: a unit is read with"),
            ({"o.service": f"{unit}/bin/x $V ${{V}} ${{W}}$$\nEnvironment=V=no\nEnvironmentFile=-/none/x\nEnvironmentFile={here}/env",
              "env": "# c\n\nV = 'a b'\nV='--c d'\r\nW=e  f \n"}, (["--c", "d", "--c d", "e  f$"], "also read ")),
            ({"o.service": f"{unit}/bin/x $V\nEnvironmentFile={here}/env", "env": "V=a$b\n"}, "env:1:4: what this character means here"),
            ({"o.service": f"{unit}/bin/x $V\nEnvironmentFile={here}/env", "env": "V='a' b\n"}, "env:1:7: something follows"),
            ({"o.service": f"{unit}/bin/x $V\nEnvironmentFile={here}/env", "env": "\nVa\n"}, "env:2:1: this line is not NAME=value"),
            ({"o.service": f"{unit}/bin/x $V\nEnvironmentFile=env"}, "o.service:3:17: systemd reads only the absolute path"),
            ({"o.service": f"{unit}/bin/x $V\nEnvironment='V=a\\\\b'"}, "o.service:3:16: what systemd makes of a "),
            ({"o.service": f"{unit}/bin/x --a ${{V}}\nEnvironment=V2=a"}, "o.service:2:22: the unit does not set .V; give it with --env V=VALUE"),
            ({"o.service": f"{unit}/bin/x a$V\nEnvironment=V=a"}, "o.service:2:19: systemd would replace this; .*\\$\\$"),
            ({"a-b@c-d.service": f"{unit}/bin/x %n %N %p %i %t/%E %S%% %L", "a-b@.service.d/x.conf": "[Service]\nX=",
              "a-.service.d/x.conf": "[Service]\nExecStart="},
             (["a-b@c-d.service", "a-b@c-d", "a-b", "c-d", "/run//etc", "/var/lib%", "/var/log"], "also read a-b@.service.d/x.conf")),
            ({"a@.service": f"{unit}/bin/x %i"}, "a@.service:2:18: systemd would replace this"),
            ({"a@b-c.service": f"{unit}/bin/x %I"}, "a@b-c.service:2:18: systemd would replace this"),
            ({"a.service": f"{unit}/bin/x %H"}, "a.service:2:18: systemd would replace this"),
            ({"systemd/user/a.service": f"{unit}/bin/x %S"}, "systemd/user/a.service:2:18: systemd would replace this"),
            ({"Dockerfile": f'FROM x\nENTRYPOINT ["{tool}", "exec", "--from", "/etc/f", "--", "x"]'},
             "Dockerfile:2:39: the file of its flags is in the container"),
            ({system + "a.service": f"{unit}{tool} exec --from /etc/f -- x", "image/run/systemd/system/a.service.d/x.conf": f"{unit}",
              "image/etc/f": "--wait\n", "image/etc/systemd/system/a.service.d/x.conf": "[Service]\n"}, (["--wait"], "followed")),
            ({"pod.yaml": "kind: ConfigMap\nmetadata: {name: a}\ndata: {f: --wait}\n---\nkind: ConfigMap\nmetadata: {name: b}\ndata: {f: --no}\n---\n"
              f"kind: Pod\nspec:\n  containers: [{{command: [{tool}, exec, --from, /m/f, --, x], volumeMounts: [{{name: v, mountPath: /m}}]}}]\n"
              "  volumes: [{name: v, configMap: {name: a}}]\n"}, (["--wait"], "followed")),
        ][::1 if HERE else 9]:
            for name, text in files.items():
                Path(name).parent.mkdir(parents=True, exist_ok=True)
                Path(name).write_text(text)
            more = ["--from", "o.service"] * (next(iter(files)) == "o.service.d/b.conf")
            done = run("convert", "--to", "json", "--from", next(iter(files)), *more)
            said = done.stderr.decode().replace(os.getcwd() + "/", "")
            with self.subTest(files):
                if b"this build of orvane-config cannot read" in done.stderr:
                    pass
                elif isinstance(expected, str):
                    self.assertRegex(said, "orvane-config: " + expected)
                    self.assertEqual((done.returncode, done.stdout), (7, b""))
                else:
                    self.assertEqual(done.stdout and json.loads(done.stdout), expected[0], said)
                    self.assertIn(expected[1], said)
            for name in files:
                Path(name).unlink()
        Path("o.service").write_text(f"{unit}{tool} exec --from {here}/flags --waist -- x --wait --no")
        said = run("check", "--redact", "o.service").stderr.decode()
        column = Path("o.service").read_text().splitlines()[1].index("--waist") + 1
        self.assertIn(f"  token 5, xa.service:2:{column}: " if HERE else "", said)

    def test_the_units_of_the_examples_are_accepted_where_they_are_installed(self):
        Path("etc/systemd/system").mkdir(parents=True), Path("etc/orvane").mkdir()
        shutil.copy(ROOT / "examples/operations/flags", "etc/orvane/flags")
        for unit in [*(ROOT / "examples/operations").glob("systemd/*.service"), *(ROOT / "examples/operations").glob("container/*.yaml")]:
            done = run("check", shutil.copy(unit, "etc/systemd/system"))
            if b"this build of orvane-config cannot read" not in done.stderr:
                self.assertIn(b"\nextract_root = /var/lib/orvane/.zep_deployed\n", done.stdout.replace(b"\r\n", b"\n"), done.stderr)

    def test_what_is_written_means_the_same_to_those_whose_format_it_is(self):
        chance = random.Random(1)
        mixed = ["".join(chance.choices([*HOSTILE[:-1], *"ab \\'\"$%\n"], k=6)) for _ in range(80)]
        line = [word for token in HOSTILE + mixed for word in ("--user-data", token)]
        for name, judge in JUDGES if HERE else JUDGES[4:7]:
            options = ["--program", "/bin/true"] if name == "systemd" else []
            code, text, err = convert(line, "--to", name, *options)
            self.assertEqual((code, err), (0, ""))
            self.assertEqual(judge(text), line, name)
            back = ["--from-format", name] if name == "nul" else []  # detected only where no token has a control character
            self.assertEqual(run("convert", "--to", "nul", *back, "--from", "-", data=text).stdout, ended(line), name)

    @unittest.skipIf(HERE, "there is no cmd.exe")
    def test_cmd_reads_what_is_written_for_it(self):
        line = [word for token in HOSTILE if convert([token], "--to", "cmd")[0] == 0 for word in ("--user-data", token)]
        self.assertGreater(len(line), 80)
        self.assertEqual(cmd(convert(line, "--to", "cmd")[1]), line)

    def test_what_is_written_is_read_back_however_it_begins(self):
        for line in [["\n--x\n\n[y", "a"], ["$x"], ["ExecStart=a", "b"], ["ExecStart", "=", "b"], ["\ufeffa", "b"], ["'a'"], ["a"], []]:
            for name in ["flags", "sh", "json", "nul"]:
                self.assertEqual(run("convert", "--to", "nul", "--from", "-", data=convert(line, "--to", name)[1]).stdout, ended(line), (name, line))

    def test_what_is_no_text_is_not_read(self):
        chance, program = random.Random(11), Path(TOOL[-1]).read_bytes()
        for at in range(80 if HERE else 5):
            size, start = chance.randrange(4, 600), chance.randrange(len(program))
            part = program[start:start + size]
            noise = b"\xc0\1" + chance.randbytes(size)
            content = [noise, program[:size], part + noise, bytes(size), b"--http\n80\n" + noise][at % 5]
            done = run("convert", "--to", "json", "--from", "-", data=content)
            self.assertEqual((done.returncode, done.stdout), (7, b""), content)
            self.assertRegex(done.stderr, rb"not a text file|is a program|no UTF-8|nothing in this file begins", content)

    def test_the_document_has_the_formats_in_the_order_of_detection(self):
        rows = re.findall(r"^\| `(\w+)` \|", (ROOT / "docs/formats.md").read_text(), re.M)
        offered = re.search(r"--to (\S+)", run("convert", "--help").stdout.decode())[1].split("|")
        read = re.search(r"--from-format (\S+)", run("convert", "--help").stdout.decode())[1].split("|")
        self.assertEqual(([row for row in rows if row in offered], [row for row in rows if row in read]), (offered, read))
        self.assertEqual(set(rows), {*offered, *read})

    def test_a_format_refuses_what_it_cannot_hold(self):
        self.assertEqual(convert(["--wait", "a", "it's", "--x y", "--log-root", "/a b"])[1], b"--wait a 'it'\\''s' '--x y'\n--log-root '/a b'\n")
        for token in ["a\nb", " \t", " #", "''", "a\r", "a b", "[a", "ExecStart=a", "a\\", "\ufeffa"]:
            self.assertEqual(convert([token], "--to", "lines")[:2], (7, b""), token)
        self.assertEqual(convert(["--wait", ""], "--to", "lines")[:2], (0, b"--wait\n''\n"))
        self.assertEqual(convert(["--wait"], "--to", "systemd", "--program", "-x")[0], 7)
        self.assertEqual(convert(["--wait"], "--to", "sh", "--program", "a b")[1], b"'a b' --wait\n")
        self.assertEqual(convert(["--http", "it\u2019s 'x'"], "--to", "powershell", "--program", "x")[1].decode(),
                         "& x `\n    --http 'it\u2019\u2019s ''x'''\n")
        self.assertEqual(convert(["--log-root", "C:\\a b\\", 'q"\\"', "a,b", "x&y", "", "C:\\z\\"], "--to", "cmd", "--program", "C:\\p q.exe")[1],
                         b'"C:\\p q.exe" --log-root "C:\\a b\\\\" "q\\"\\\\\\"" "a,b" "x&y" "" C:\\z\\\n')
        for token in ["%PATH%", "!x!", "a\nb", "a\r", '"&x', '"(']:
            self.assertEqual(convert([token], "--to", "cmd")[:2], (7, b""), token)
        # A lone -- and a line without a program need care, too.
        self.assertEqual(convert(["--x", "\u2018\u201a\u201b", "@y", "--"], "--to", "powershell")[1].decode(),
                         "--x `\n    '\u2018\u2018\u201a\u201a\u201b\u201b' `\n    '@y' `\n    '--'\n")
        for path in ["/a%b", "/a$b"]:
            self.assertEqual(convert(["--wait"], "--to", "systemd", "--program", path)[:2], (7, b""), path)
        self.assertEqual(convert(["--wait"], "--to", "systemd")[1], b"ExecStart=orvane \\\n    --wait\n")

    def test_a_source_is_named_where_it_cannot_be_used(self):
        Path("x.service").write_text("ExecStart=/bin/x\n")
        Path("bad").write_text("--a b; c\n")
        Path("program").write_bytes(b"\x7fELF" + bytes(5 << 20))
        Path("windows").write_bytes(b"MZ\x90\0" + bytes(5 << 20))
        Path("named").write_text("MZserver --waist\n")
        for words, data, expected in [
            (["--from", "x.service"], b"", "orvane-config: x.service contains no flags\n"),
            (["--from", "-"], b"", "orvane-config: standard input contains no flags\n"),
            (["--from", "-"], b"orvane\n--waist\n", "  token 1, standard input:2:1: --waist\n"),
            (["-", "--wait"], b"--waist\n", "  token 1, standard input:1:1: --waist --wait\n"),
            (["x.service", "--strict"], b"", "orvane-config: x.service contains no flags\n"),
            (["@x.service"], b"", "orvane-config: x.service contains no flags\n"),
            (["none"], b"", "orvane-config: cannot open none: "),
            (["http"], b"", "    a flag begins with two hyphens: --http\n"),
            (["./none", "--waist"], b"", "./none is not a flag: leave the program out"),
            (["windows", "--waist"], b"", "orvane-config: windows: skipped 'windows', the program's name\n"),
            (["named"], b"", "  token 1, named:1:10: --waist\n"),
            (["program", "--waist"], b"", "orvane-config: program: skipped 'program', the program's name\n"),
            (["--from", "bad"], b"", "bad:1:6: a second command; only one is read (format flags; --from-format chooses another)\n"),
            (["--from-format", "sh", "--from", "bad"], b"", "bad:1:6: a second command; only one is read (format sh)\n"),
            (["--from-format", "sh", "--from-format", "lines", "--from", "bad"], b"", "token 1, bad:1:1: "),
        ][::1 if HERE else 4]:
            done = run("check", *words, data=data)
            self.assertIn(expected, done.stderr.decode(), words)
        Path("large").write_text("--user-data\nk v\n" * 200_000)  # not yet 4 MiB
        self.assertEqual(run("convert", "--to", "lines", "--from", "large").stdout.count(b"\n"), 400_000)
        Path("larger").write_text("#" * (5 << 20))
        self.assertEqual(run("convert", "--to", "lines", "--from", "larger").returncode, 7)
        # Without any verb, it is told briefly where the help is.
        done = run()
        self.assertEqual((done.returncode, done.stdout, done.stderr.count(b"\n")), (2, b"", 2))
        self.assertIn(b"orvane-config help", done.stderr)

    def test_a_tidy_line_is_sorted_and_without_what_has_no_effect(self):
        for line, expected in TIDY:
            done = run("convert", "--to", "sh", "--tidy", *shlex.split(line))
            self.assertEqual((done.stdout.decode().strip(), done.returncode), (expected, 0), done.stderr)
        self.assertEqual((done := run("convert", "--to", "sh", "--tidy", "--wait")).returncode, 1)
        self.assertEqual(done.stdout, b"")

    def test_sources_come_in_their_order_and_faults_have_their_places(self):
        Path("a.service").write_text("[Service]\nExecStart=/bin/x --auto-deploy-root /D --log-root\n")
        Path("b").write_text("# the rest\n/l\n--num-worker\n4\n")
        done = run("check", "--format", "json", "--from", "a.service", "--from=b", "--ignore", "no-listener", "--waist")
        faults = tool_schemas.answer("check", done.stdout)["faults"]
        self.assertEqual([fault.get("places") for fault in faults], [[{"token": 5, "file": "b", "line": 3, "column": 1}], None])
        self.assertEqual([fault["tokens"] for fault in faults], [[5], [7]])
        self.assertEqual(re.findall(r"^orvane-config: (.*)$", done.stderr.decode(), re.M), [
            "a.service:2:11: skipped '/bin/x', the program's name"])
        Path("n").write_bytes(ended(["--auto-deploy-root", "/D", "--log-root", "~", "--http", "1"]))
        warnings = tool_schemas.answer("check", run("check", "--format", "json", "--from", "n").stdout)["warnings"]
        self.assertEqual([one.get("places") for one in warnings], [[{"token": 4, "file": "n"}]])
        self.assertIn("warning: token 4, n: ", run("check", "--from", "n").stderr.decode())
        said = run("check", "--from", "a.service", "--from", "b", "--waist").stderr.decode()
        self.assertIn("  token 5, b:3:1: ... --log-root /l --num-worker 4 ...\n", said)
        self.assertIn("  token 7: ", said)
        said = run("check", "--from-format", "sh", "--from", "b", "--auto-deploy-root", "~", "--log-root", "~").stderr.decode()
        self.assertIn("b:3:1: a second command", said)
        Path("b").write_text("--auto-deploy-root \\\n  /é --log-root '~'")
        self.assertIn("warning: token 4, b:2:17: ", run("check", "--from", "b").stderr.decode())

    def test_several_files_are_several_configurations(self):
        Path("good").write_text("--auto-deploy-root /D --http 8080\n")
        Path("bad").write_text("--auto-deploy-root /D --waist --http 8o80\n")
        Path("odd").write_text("--auto-deploy-root '~' --http 8080\n")
        Path("dir/sub").mkdir(parents=True)
        Path("dir/.hidden").write_text("--no")
        for name, text in ("b", "--http 8080"), ("a", "--auto-deploy-root\n/D\n--http\n8080"):
            Path("dir", name).write_text(text)
        for words, code, lines in [(["good", "odd"], 0, "good: ok\nodd: ok, 1 warning\n"), (["--strict", "odd", "good"], 3, "odd: ok, 1 warning\ngood: ok\n"),
                                   (["good", "bad", "--strict"], 1, "good: ok\nbad: 2 faults\n"), (["bad", "none"], 7, "bad: 2 faults\nnone: cannot be read\n"),
                                   (["dir"], 1, "dir/a: ok\ndir/b: 1 fault\n"), (["good", "odd", "--num-workers", "x"], 1, "good: 1 fault\nodd: 1 fault\n"),
                                   (["--from", "dir"], 0, "configuration accepted\n"), (["--get", "http.port", "good", "odd"], 0, "good: 8080\nodd: 8080\n"),
                                   (["--get", "log_root", "good", "odd"], 4, ""), (["good", "--from", "odd"], 2, ""), (["dir/sub"], 7, "")]:
            done = run("check", *words)
            out = done.stdout.decode().replace("\r\n", "\n")
            self.assertEqual((done.returncode, out[:len(lines)]), (code, lines), (words, done.stderr))
        said = run("check", "good", "bad", "none").stdout.decode().replace("\r\n", "\n")
        self.assertRegex(said, "(?s)^good: ok\nbad: 2 faults\nnone: cannot be read\n\nbad:\n.*  token 3, bad:1:23: .*\n\norvane-config: cannot open none: ")
        answer = tool_schemas.answer("checks", run("check", "--format", "json", "good", "bad", "none").stdout)
        self.assertEqual([(one["file"], one["answer"]["accepted"] if "answer" in one else one["error"][:16]) for one in answer["files"]],
                         [("good", True), ("bad", False), ("none", "cannot open none")])
        self.assertEqual((answer["accepted"], run("check", "--quiet", "good", "bad").stdout), (False, b""))
        self.assertEqual(run("check", "--redact", "good", "bad").stdout.decode().splitlines()[:2], ["xa: ok", "xc: 2 faults"])
        said = run("check", "--all", "odd", "good").stdout.decode().replace("\r\n", "\n")
        self.assertRegex(said, r"^odd: ok, 1 warning\ngood: ok\n\nodd:\n(.*\n)*num_threads.*\n(.*\n)*\ngood:\nconf(.*\n)*num_threads ")

    def test_json_hides_no_character(self):
        hidden = "a\u202eb\u200bc\U000e0041"
        right = ["--auto-deploy-root", "D", "--extract-root", "E", "--pid-root", hidden]
        Path("a").write_bytes(ended([*right, "--no-banner"]))
        Path("b").write_bytes(ended(right[:4]))
        Path("bad").write_bytes(ended([*right, "--http", hidden]))
        for words in ["check bad", "check --all a", "check a bad", "fix bad", "preflight a", "status a", "diff a b", "exec --preflight --from a -- none"]:
            verb, *words = words.split()
            out = run(verb, "--format", "json", *words).stdout.decode()
            self.assertRegex(out, "^[ -~]+\r?\n$", verb)
            self.assertIn(hidden, json.dumps(json.loads(out), ensure_ascii=False), verb)

    def test_lines_are_compared_by_what_they_set(self):
        Path("a").write_text("--auto-deploy-root\nD\n--num-workers\n4\n--https\nh:1\n--user-data\nk v")
        line = ["--auto-deploy-root", "D", "--num-workers", "8", "--log-root", "/l", "--user-data", "k v"]
        done = run("diff", "--format", "json", "a", "--", *line)
        answer = tool_schemas.answer("diff", done.stdout)
        found = {one["setting"]: [(side["value"], side["tokens"]) for side in (one["before"], one["after"])] for one in answer["differences"]}
        self.assertEqual({name: found[name] for name in ("num_workers", "log_root", "https.http.host")}, {
            "num_workers": [(4, [3, 4]), (8, [3, 4])], "log_root": [(None, []), ("/l", [5, 6])], "https.http.host": [("h", [5, 6]), (None, [])]})
        shown = [tool_schemas.answer("check", run("check", "--all", "--format", "json", *words).stdout)["settings"] for words in (["--from", "a"], line)]
        self.assertEqual({name.split(".")[0] for name in found}, {name for name in shown[0] if shown[0][name] != shown[1][name]})
        said = run("diff", "a", "--", *line).stdout.decode().replace("\r\n", "\n")
        self.assertIn("- num_workers = 4  # --num-workers (tokens 3 and 4, a:3:1)\n+ num_workers = 8  # --num-workers (tokens 3 and 4)\n", said)
        # However the first line is named, it stays the first.
        for words, data in [(["--from", "a"], b""), (["-", "--"], Path("a").read_bytes())]:
            again = run("diff", *words, *line, data=data).stdout.decode().replace("\r\n", "\n")
            self.assertEqual(again, said.replace(", a:", ", standard input:") if data else said)
        words = "--auto-deploy-root E --num-workers 4 --https h:1".split()
        answer = tool_schemas.answer("diff", run("diff", "--format", "json", "--from", "a", *words).stdout)
        sides = {one["setting"]: (one["before"], one["after"]) for one in answer["differences"]}
        self.assertEqual({name: [side["completed"] for side in both] for name, both in sides.items()}, {
            "auto_deploy_root": [False, False], "extract_root": [True, True], "user_data": [False, False]})
        self.assertEqual([one.get("places") for one in sides["extract_root"]], [
            [{"token": 1, "file": "a", "line": 1, "column": 1}, {"token": 2, "file": "a", "line": 2, "column": 1}], None])
        Path("b").write_text("orvane --num-workers 3 --https h:1 --user-data 'k v' --num-workers 4 --auto-deploy-root D # sorted")
        for words, code, pattern in [(["a", "b"], 0, "the command lines differ, the settings are equal\n"),
                                     (["--from", "a", "--from", "a"], 0, "the command lines are equal\n"),
                                     (["a", "--from"], 2, ""), (["a", "none"], 2, ""), (["a", "--", "--wait"], 2, ""), (["a"], 2, ""),
                                     (["a", "b", "a"], 2, ""), (["--wait", "--", "--wait"], 2, "")]:
            done = run("diff", *words)
            self.assertEqual((done.returncode, done.stdout.decode().replace("\r\n", "\n")), (code, pattern), words)

    def test_a_server_is_started_with_the_flags_that_were_checked(self):
        flags = ["--auto-deploy-root", "/D", "--log-root", "/l '$x\" é%"]
        Path("flags").write_bytes("\n".join(flags).encode())
        echo = [sys.executable, "-c", "import json, sys; print(json.dumps(sys.argv[1:])); sys.exit(3)"] if HERE else [TOOL[-1], "convert", "--to", "json"]
        done = run("exec", "--from", "flags", "--wait", "--", *echo)
        self.assertEqual((json.loads(done.stdout), done.returncode), ([*flags, "--wait"], 3 if HERE else 0), done.stderr)
        for words, code in [(["--from", "flags", "--", "./none"], 127), (["--from", "flags", "--", "."], 126),
                            (["--from", "flags"], 2), (["--waist", "--", *echo], 1),
                            (["--skip", "tls", "--wait", "--", *echo], 2)]:
            done = run("exec", *words)
            self.assertEqual((done.returncode, done.stdout), (code, b""), (words, done.stderr))
        # Where the flags end after a file, after the tool's options, and after a -- that is a value.
        for words, expected in [
            (["--from", "flags"], flags), (["--from", "flags", "--", "--wait"], [*flags, "--wait"]),
            (["--from", "flags", "--lumo-root", "--"], [*flags, "--lumo-root", "--"]),
        ][:None if HERE else 1]:
            done = run("exec", *words, "--", *echo)
            self.assertEqual(done.stdout and json.loads(done.stdout), expected, (words, done.stderr))
        Path("flags").write_text("--auto-deploy-root\n/nowhere/at/all\n--log-root\n/proc/no\n")
        self.assertEqual((done := run("exec", "--preflight", "--from", "flags", "--", *echo)).returncode, 8 if HERE else done.returncode, done.stderr)
        self.assertIn(b"not ready: ", done.stderr if HERE else b"not ready: ")

    @unittest.skipUnless(HERE, "there processes do not become others, and show no command line")
    def test_a_server_is_the_process_that_was_checked(self):
        read, write = os.pipe()
        script = 'trap "exit 5" TERM; echo $$ >&"$0"; while :; do sleep 0.1; done'
        server = subprocess.Popen([*TOOL, "exec", "--auto-deploy-root", "/D", "--", "sh", "-c", script, str(write)], pass_fds=[write])
        self.addCleanup(server.kill)
        os.close(write)
        with os.fdopen(read) as said:
            self.assertEqual(int(said.readline()), server.pid)
        server.send_signal(signal.SIGTERM)
        self.assertEqual(server.wait(60), 5)
        server = subprocess.Popen([*TOOL, "publish", "--auto-deploy-root", "/D", "--pid-root", ".", "--num-workers", "4"])
        self.addCleanup(server.wait), self.addCleanup(server.terminate)
        while not os.path.exists("main.pid"):
            pass
        done = run("check", "--from-format", "json", "--pid", str(server.pid))
        self.assertRegex(done.stderr.decode(), f"skipped '.*orvane-config'.*\nunrecognized option: publish\n.*\n"
                         f"  token 1, /proc/{server.pid}/cmdline: publish")
        # A process calls itself what it likes: nothing of it is taken for another encoding, nor for a line of the answer.
        for name, shown in [(b"a\nb", "a\\\\u000ab"), (b"\xfe\xffab", "\ufffd\ufffdab"), (b"MZ", "MZ")]:
            foreign = subprocess.Popen([name, "1000"], executable="/bin/sleep")
            self.addCleanup(foreign.wait), self.addCleanup(foreign.kill)
            said = run("check", "--pid", str(foreign.pid)).stderr.decode(errors="replace")
            left_out = f"/proc/{foreign.pid}/cmdline: skipped '{shown}', the program's name"
            self.assertRegex(said, rf"^orvane-config: {left_out}\nunrecognized option: 1000\n")
        self.assertEqual([run("check", "--pid", number).returncode for number in ("4194305", "x")], [7, 2])


unittest.main()
