#!/usr/bin/env python3
"""Asks `orvane-config preflight` about machines that lack something, and starts the example server on them:
preflight_test.py [--server SERVER] TOOL..."""
import itertools, json, os, pwd, random, re, shlex, string, subprocess, sys, tempfile, time, unittest
from pathlib import Path

import tool_schemas
from preflight_tables import check_sound, check_text, compare, rows

SERVER = sys.argv[2] if sys.argv[1] == "--server" else None
TOOL = sys.argv[3:] if SERVER else sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
TABLES = {name: rows(name) for name in ["preflight.txt", "preflight_machines.txt", "preflight_network.txt", "preflight_tls.txt"]}
# Where root runs the tests, its privileges are taken away: they would open every door.
AS_NOBODY = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups", "--inh-caps=-all"] if HERE and os.geteuid() == 0 else []
USER = pwd.getpwuid(65534 if AS_NOBODY else os.geteuid()).pw_name
GROUPS = ["directories", "listeners", "tls", "programs", "caches", "resources", "runtime", "security"]
QUIET = ["--ignore", "no-listener,no-certificate,archive,relative-directory"]
# The first is for systems that do not report something, the others are asked for without a table.
UNLISTED = {"look-failed", "not-looked-at", "system-store-missing", "needless-root", "client-view"}
CHANCE = random.Random(1)
REQUIRED = ["--auto-deploy-root", "deploy", "--extract-root", "unpack"]


def run(*words, **more):
    return subprocess.run([*AS_NOBODY, *words], capture_output=True, timeout=60, check=False, **more)


def preflight(*words, variables=()):
    done = run(*(["env", *variables] if variables else []), *TOOL, "preflight", "--format", "json", *QUIET, *words)
    assert done.stdout, done
    return done.returncode, tool_schemas.answer("preflight", done.stdout)


def ids(findings):
    """Everything that is not fine, as "flag id"; the group's name stands for a missing flag."""
    return {f"{one.get('flag', one['group']).lstrip('-')} {one['id']}" for one in findings if one["severity"] != "ok"}


def runs_as_nobody():
    return not AS_NOBODY or run(*TOOL, "version").returncode == 0


class Preflight(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
        self.addCleanup(lambda: run_quietly("chmod", "-R", "u+rwx", "."))
        os.chmod(".", 0o755)
        for name in ["deploy", "unpack"]:
            os.mkdir(name)
        self.own(".")

    def make_program(self):
        Path("orvane-tool.exe").write_text("#!/bin/sh\n" if HERE else "MZ")
        os.chmod("orvane-tool.exe", 0o755)

    def own(self, name):
        if AS_NOBODY:
            run_quietly("chown", "-R", "65534:65534", name)

    def prepare(self, script):
        """As the user who runs the server, in a shell; what must belong to another user comes after `sudo`."""
        for part in script.split(" && "):
            words = ["sh", "-c", part.removeprefix("sudo ")]
            if part.startswith("sudo ") and not AS_NOBODY:
                self.skipTest("needs a second user")
            done = subprocess.run(words if part.startswith("sudo ") else [*AS_NOBODY, *words], capture_output=True, check=False)
            self.assertEqual(done.returncode, 0, done)

    def starts(self, flags):
        """Whether the example server publishes what the flags name."""
        wanted = ("--pid-root" in flags) + ("--endpoint-root" in flags) * (("--http" in flags) + ("--control-port" in flags))
        deadline = time.monotonic() + 20
        with open("said", "w") as said, subprocess.Popen([*AS_NOBODY, SERVER, *flags], stderr=said) as server:
            while server.poll() is None and len(re.findall("^(process|listening|controlled) ", Path("said").read_text(), re.M)) < wanted:
                self.assertLess(time.monotonic(), deadline)
                time.sleep(0.01)
            started = server.poll() is None
            server.terminate()
        return started

    def ask_in_other_ways(self, words, variables):
        """With any groups left out, before a restart or not, and with the flags in a file: as JSON and as text."""
        left_out = CHANCE.sample(GROUPS, CHANCE.randrange(len(GROUPS) + 1))
        Path("../flags").write_text(json.dumps(words, indent=0))
        restart = ["--restart"] * ("--pid-root" in words and CHANCE.randrange(2))
        options = ["--skip", ",".join(left_out)] * bool(left_out) + restart + ["--from", "../flags"]
        done = run("env", *variables, *TOOL, "preflight", *options)
        if len(left_out) == len(GROUPS):
            self.assertEqual((done.returncode, done.stdout), (2, b""), done)
            return
        code, answer = preflight(*options, variables=variables)
        check_sound(self, code, answer)
        check_text(self, done.stdout.decode(), answer)
        self.assertEqual({one["name"] for one in answer["groups"] if not one["looked_at"]}, set(left_out))
        for one in answer["findings"]:
            self.assertEqual([place["token"] for place in one.get("places", [])], one.get("tokens", []), one)
            self.assertEqual([place["line"] for place in one.get("places", [])], [number + 1 for number in one.get("tokens", [])])

    @unittest.skipUnless(HERE and runs_as_nobody(), "rights differ there, or no other user may run this program")
    def test_what_is_missing_is_found_and_the_example_server_starts_exactly_when_preflight_says_ready(self):
        for number, (row, expected) in enumerate(TABLES["preflight.txt"]):
            script, flags, *unused = (part.strip() for part in re.split(r" \|(?= |$)", row))
            with self.subTest(row):
                os.mkdir(str(number))
                os.chdir(str(number))
                for directory in ["deploy", "unpack"]:
                    os.mkdir(directory)
                self.own(".")
                try:
                    self.prepare(script)
                    known = {"PWD": os.getcwd(), "PPID": str(os.getpid()), "USER": USER, "LONG": "x" * 300}
                    words = shlex.split(string.Template(flags).safe_substitute(known))
                    variables = list(itertools.takewhile(lambda word: re.match("[A-Z]+=", word), words))
                    words = words[len(variables):]
                    options = []
                    while words and (length := {"--ignore": 2, "--from": 2, "--restart": 1, "--security": 1}.get(words[0], 0)):
                        options, words = options + words[:length], words[length:]
                    words = [*([] if REQUIRED[0] in words else REQUIRED), *words]
                    code, answer = preflight("--skip", "listeners,tls,caches", *options, *words, variables=variables)
                    compare(self, answer["findings"], expected, words, **known)
                    check_sound(self, code, answer)
                    self.ask_in_other_ways(words, variables)
                    # A star marks what the example does not use: it cannot fail there.
                    if SERVER and not unused:
                        self.assertEqual(self.starts(words), code == 0, answer["findings"])
                finally:
                    os.chdir("..")

    def test_each_system_answers_in_its_way(self):
        Path("file").touch()
        os.makedirs("run/http")
        os.mkdir("old")
        Path("run/main.pid").write_text("text")
        self.make_program()
        self.own(".")
        program = "./orvane-tool.exe" if HERE else ".\\orvane-tool"
        for flags, expected in [
            (["--pid-root", "old"], ""), (["--pid-root", "none"], "pid-root missing-directory"), (["--log-root", "file"], "log-root not-a-directory"),
            (["--log-root", "file/x"], "log-root not-a-directory"), (["--pid-root", "run"], "pid-root not-a-runtime-file"),
            (["--endpoint-root", "run", "--http", "0"], "endpoint-root in-the-way"), (["--driver", program + " -n 5"], "driver relative-program"),
            (["--driver", TOOL[-1] + " help"], "" if HERE else "driver relative-program"), (["--driver", "no-such-program"], "driver missing-program"),
            (["--worker-restart-memory-limit", "4EiB"], "worker-restart-memory-limit out-of-reach"),
            (["--response-archive-root", "old", "--response-archive-limit", "4EiB"], "response-archive-limit little-space"),
        ]:
            with self.subTest(flags):
                code, answer = preflight("--only", "directories,programs,resources,runtime", *REQUIRED, *flags)
                self.assertEqual(ids(answer["findings"]), {expected} - {""}, answer["findings"])
                check_sound(self, code, answer)

    def test_every_flag_that_names_a_directory_is_looked_at(self):
        flags = re.findall(r"^ *(--[a-z-]+) <directory>", run(*TOOL, "explain", "flags").stdout.decode(), re.M)
        self.assertIn("--log-root", flags)
        answer = preflight("--only", "directories", *[word for flag in flags for word in (flag, f"none/{flag}")])[1]
        self.assertEqual(ids(answer["findings"]), {f"{flag[2:]} missing-directory" for flag in flags})

    @unittest.skipUnless(HERE and subprocess.run(["unshare", "-rm", "true"], capture_output=True, check=False).returncode == 0,
                         "no file system can be mounted here")
    def test_a_machine_made_for_the_purpose(self):
        memory = {name: int(kib) for name, kib in re.findall(r"^(MemTotal|SwapTotal): +(\d+) kB$", Path("/proc/meminfo").read_text(), re.M)}
        tenths = memory["MemTotal"] * 10 // 2**20
        known = {"MEMORY": f"{tenths / 10:.1f}".removesuffix(".0") + " GiB", "SWAP": " and <amount> of swap space" if memory["SwapTotal"] else ""}
        for number, (row, expected) in enumerate(TABLES["preflight_machines.txt"]):
            script, flags = row.split(" | ")
            with self.subTest(row):
                os.makedirs(f"{number}/disk"), os.makedirs(f"{number}/mine")
                own = f"cd {number} && mount -t tmpfs tmpfs /sys/fs/cgroup && : >groups && {script} && mount --bind groups /proc/$$/cgroup"
                words = shlex.split(flags)
                words = [*([] if REQUIRED[0] in words else ["--auto-deploy-root", "mine", "--extract-root", "mine"]), *words]
                done = subprocess.run(["unshare", "-rm", "sh", "-c", own + ' && exec "$@"', "sh", *TOOL, "preflight", "--format", "json",
                                       "--only", "directories,programs,resources", *QUIET, *words], capture_output=True, timeout=60, check=False)
                answer = json.loads(done.stdout)
                check_sound(self, done.returncode, answer)
                compare(self, answer["findings"], expected, words, PWD=os.path.join(os.getcwd(), str(number)), **known)
        said = subprocess.run(["unshare", "-r", *TOOL, "preflight", "--only", "programs", *REQUIRED], capture_output=True, check=False).stdout
        self.assertIn(b"\nThis is the answer for root, ", said)
        for option, port, found in [("--security", "1024", True), ("--security", "1023", False), ("--quiet", "1024", False)]:
            said = subprocess.run(["unshare", "-r", *TOOL, "preflight", "--only", "security", option, *REQUIRED, "--http", port],
                                  capture_output=True, check=False).stdout
            self.assertEqual(b"[needless-root]" in said, found, port)

    def test_each_kind_of_finding_is_in_a_table_with_its_texts(self):
        kinds = {one["id"] for one in json.loads(run(*TOOL, "explain", "--format", "json").stdout)["kinds"] if one["about"] == "finding"}
        listed = {line.split(": ")[0].split()[-1] for table in TABLES.values() for _, lines in table for line in lines}
        self.assertEqual(kinds - listed, UNLISTED)

    def test_a_finding_says_where_it_comes_from_and_what_to_do(self):
        code, answer = preflight("--only", "directories", *REQUIRED, "--lumo-root", "deploy", "--lumo-root", "none")
        finding = next(one for one in answer["findings"] if one["id"] == "missing-directory")
        self.assertEqual((code, finding["tokens"], finding["value"], finding["severity"]), (8, [7, 8], "none", "blocking"))
        self.assertRegex(finding["advice"], "^Create it: .*none")
        if AS_NOBODY:
            self.prepare("mkdir theirs && sudo chown 0 theirs")
            _, theirs = preflight("--only", "directories", *REQUIRED, "--log-root", "theirs")
            advice = next(one["advice"] for one in theirs["findings"] if one["id"] == "missing-right")
            self.assertRegex(advice, "^If only the server uses this directory: sudo chown nobody .*theirs. If not, choose another directory.$")
        skipped = [one["name"] for one in answer["groups"] if not one["looked_at"]]
        self.assertEqual(skipped, ["listeners", "tls", "programs", "caches", "resources", "runtime", "security"])
        lines = run(*TOOL, "preflight", *QUIET, "--only", "directories", *REQUIRED, "--log-root", "none\n").stdout.decode().splitlines()
        self.assertRegex(lines[-3], r"^ +blocking: there is no directory .*none(\\u|\$\(\[char\]0x)000a.* \[missing-directory\]$")
        self.assertRegex(lines[-1], "^not ready: 1 blocking finding; not looked at: listeners, ")
        self.assertEqual(run(*TOOL, "preflight", "--only", "directories", "--strict", "--ignore", "no-listener", *REQUIRED).returncode, 3)
        for group, count in [("directories", 0), ("programs", 2)]:  # warned of by this group or by the flags, not by both
            self.assertEqual(run(*TOOL, "preflight", "--only", group, *REQUIRED).stderr.count(b"[relative-directory]"), count, group)
        self.assertEqual(run(*TOOL, "preflight", "--only", "directories", "--strict", *QUIET, *REQUIRED).returncode, 0)

    def test_warnings_fail_only_strict_runs_and_can_be_ignored(self):
        self.make_program()
        self.own(".")
        program = "./orvane-tool.exe" if HERE else ".\\orvane-tool"
        odd, missing = ["--driver", program], ["--driver", "no-such-program"]
        more = ["--log-handler", f"text/json {program}"]
        quiet = ["--ignore", QUIET[1] + ",relative-program"]
        for options, flags, code, found, last in [
            (QUIET, odd, 0, {"relative-program"}, "nothing found .*; 1 warning; not looked at: .*"),
            (["--strict", *QUIET], odd, 3, {"relative-program"}, "nothing found .*; 1 warning; .*"),
            (["--strict", *quiet], odd, 0, set(), "nothing found [^;]*; not looked at: .*"),
            (["--strict", *QUIET], odd + more, 3, {"relative-program"}, "nothing found .*; 2 warnings; .*"),
            (["--strict", *QUIET], missing, 8, {"missing-program"}, "not ready: 1 blocking finding; .*"),
            (["--strict", *QUIET], missing + more, 8, {"missing-program", "relative-program"}, "not ready: 1 blocking finding, 1 warning; .*"),
        ][::1 if HERE else 5]:
            with self.subTest(options=options, flags=flags):
                words = [*TOOL, "preflight", "--only", "programs", *options]
                answer = tool_schemas.answer("preflight", run(*words, "--format", "json", *REQUIRED, *flags).stdout)
                self.assertEqual(answer["warnings"], [])
                wrong = [one for one in answer["findings"] if one["severity"] != "ok"]
                self.assertEqual({one["id"] for one in wrong}, found)
                done = run(*words, *REQUIRED, *flags)
                said = done.stdout.decode().replace("\r\n", "\n")
                self.assertEqual(done.returncode, code, done)
                self.assertRegex(said.splitlines()[-1], f"^{last}$")
                self.assertEqual([one["advice"] for one in wrong if f"]\n      {one['advice']}\n" not in said], [])
        self.assertIn(b"[no-listener]", run(*TOOL, "preflight", "--only", "programs", *REQUIRED).stderr)

    @unittest.skipUnless(HERE, "so many files take long there")
    def test_what_could_not_be_found_out_is_not_taken_for_ready(self):
        os.mkdir("old")
        for number in range(20_001):
            os.mknod(f"old/{number}")
        self.own("old")
        words = ["--only", "directories", *REQUIRED, "--log-archive-root", "old", "--log-archive-max-size", "4EiB"]
        code, answer = preflight(*words)
        self.assertEqual((code, answer["ready"], ids(answer["findings"])), (8, False, {"log-archive-max-size size-limit"}), answer)
        said = run(*TOOL, "preflight", *QUIET, *words).stdout.decode()
        self.assertRegex(said, r"\n +unknown: .*too many files .*\[size-limit\]\n(.*\n)*not known to be ready: 1 unknown; not looked at: ")

    @unittest.skipUnless(HERE and runs_as_nobody(), "there, a path without a drive is another one")
    def test_a_server_is_started_only_on_a_machine_that_is_ready(self):
        self.make_program()
        self.own(".")
        for flags, code, expected in [
            (["--driver", "none"], 8, r"^(?!.*\bok: )(?!(.*relative-dir){3}).*programs\n.*blocking: .*\[missing-program\]\n.*\nnot ready: 1 b"),
            (["--wait=1"], 1, "^unrecognized option: --wait=1\n"), (["--driver", "./orvane-tool.exe"], 0, r"^(orvane-config: warning: [^\n]*\n)*$"),
        ]:
            with self.subTest(flags):
                done = run(*TOOL, "exec", "--preflight", *REQUIRED, *flags, "--", "echo", "started")
                self.assertRegex(done.stderr.decode(), re.compile(expected, re.S))
                words = shlex.join(["started", *REQUIRED, *flags]) + "\n"
                self.assertEqual((done.returncode, done.stdout.decode()), (code, "" if code else words))


def run_quietly(*words):
    subprocess.run(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)


unittest.main()
