#!/usr/bin/env python3
"""Runs orvane-config against itself and against the tools that find servers by their files: tool_test.py TOOL..."""
import concurrent.futures, itertools, json, os, random, re, shlex, socket, subprocess, sys, tempfile, time, unittest, urllib.parse
from pathlib import Path
from xml.etree import ElementTree

import tool_schemas
from tables import lines, rows, words_of
from tool_runs import AS_NOBODY, FLAGS, HERE, LOCK, PID_FLAGS, TOOL, Tool, main, main_pid, run, state, until

CERTIFICATE = ["--x509-private-key", "k", "--x509-cert-chain", "c"]
# An emulated start takes long.
ANSWERS = rows("tool_answers.txt", 4) + rows("tool_verbs.txt", 4)[::1 if HERE else 20]
STATES = rows("tool_states.txt", 2)
FILES = {"expected": "# as check prints it\nconfiguration accepted\n\nhttp.port = 9910  # --http (tokens 3 and 4)\nnum_workers  # not set\n",
         "gcc": "--auto-deploy-root /D\n--http 9910\n--num-worker 4\n--log-severity loud\n", "empty": "# nothing\n", "lacking": "--auto-deploy-root none\n",
         "list": '["--auto-deploy-root", "/D", "--wait=1"]', "wrapped": 'sh -c "x --auto-deploy-root /D --wait=1"',
         "quoted": "--auto-deploy-root\n'/D'\n--wait stray\n", "script": "exec x --auto-deploy-root /D --wait=1 # why\n",
         "unit": "[Service]\nExecStart=-/opt/x --auto-deploy-root /D --wait=1\n", "unset": "--http $PORT\n"}


def cases_in(text):
    """The names of the cases of a JUnit report, each with its outcome. The counts have to be right."""
    report = ElementTree.fromstring(text)
    cases = [[one.get("name"), *(inside.tag for inside in one)] for one in report.iter("testcase")]
    for suite in [report, *report.iter("testsuite")]:
        counts = [sum(kind in one[1:] for one in cases) for kind in ("failure", "error", "skipped")]
        assert [int(suite.get(name)) for name in ("tests", "failures", "errors", "skipped")] == [len(cases), *counts], text
    return cases


class Answers(Tool):
    def test_answers_and_complaints_have_their_streams_and_codes(self):
        for name, text in FILES.items():
            Path(name).write_text(text, newline="\n")
        for command, *patterns in ANSWERS:
            if not HERE and "\\x" in command:
                continue  # words are UTF-16 there, not bytes
            words = shlex.split(command.replace("$FLAGS", shlex.join(FLAGS)).replace("$TOOL", shlex.quote(TOOL[-1])))
            words = [word.encode().decode("unicode_escape").encode("latin-1") for word in words]
            with self.subTest(command), open("/dev/full", "wb") as full:
                code, out, err = run(*TOOL, *words)
                self.assertTrue(re.fullmatch("\0".join(patterns), f"{code}\0{out}\0{err}", re.S), (code, out, err))
                if '"error":' in out:
                    tool_schemas.answer("error", out)
                self.assertEqual(run(*TOOL, *words, stdout=full)[0], 7 if out else code)

    def test_all_settings_are_as_expected_of_themselves_and_editors_get_each_finding_once(self):
        right, wrong = (random.sample(table, 12 if HERE else 2) for table in [lines("tool_right_lines.txt"), lines("tool_mistakes.txt")[::2]])
        for line in right:
            words = ["--auto-deploy-root", "/D", "--http", "1", *words_of(line)]
            everything = run(*TOOL, "check", "--all", *words)[1]
            Path("all").write_text(everything, encoding="utf-8")
            self.assertEqual(run(*TOOL, "check", "--expect", "all", *words)[:2], (0, ""), words)
            Path("other").write_text(everything.replace("\nauto_deploy_root = ", "\nauto_deploy_root = other"), encoding="utf-8")
            self.assertEqual(run(*TOOL, "check", "--expect", "other", *words)[0], 1, words)
        for line in wrong:
            words = ["--auto-deploy-root", "D", *words_of(line)]
            found = json.loads(run(*TOOL, "check", "--format", "json", *words)[1])
            ids = [one["id"] for one in found["faults"]] + found["problem_ids"] + [one["id"] for one in found["warnings"]]
            printed = run(*TOOL, "check", "--format", "gcc", *words)[1]
            ids_at_ends = lambda text: re.findall(r" \[([a-z-]+)\]$", text, re.M)
            self.assertEqual(ids_at_ends(printed), ids, line)
            document = tool_schemas.answer("sarif", run(*TOOL, "check", "--format", "sarif", *words)[1])["runs"][0]
            self.assertEqual([one["ruleId"] for one in document["results"]], ids, line)
            self.assertEqual({one["id"] for one in document["tool"]["driver"]["rules"]}, set(ids), line)
            out = run(*TOOL, "check", "--format", "junit", *words)[1]
            self.assertEqual((cases_in(out), ids_at_ends(ElementTree.fromstring(out).findtext(".//failure"))), ([["command line", "failure"]], ids), line)

    def test_ci_systems_find_what_is_wrong_in_its_place(self):
        name = ("\u0436" if HERE else "z") + " +100%.txt"  # an emulated start may lose other letters
        Path("folder").mkdir()
        Path("folder", name).write_text("--auto-deploy-root \u0436 \u0436 --http x\n", encoding="utf-8")
        done = subprocess.run([*TOOL, "check", "--format", "sarif", "folder" + ("/" if HERE else "\\") + name, "none", os.path.abspath("none")],
                              capture_output=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stdout.count(b"\r"), done.stderr), (7, 0, b""))
        answer = tool_schemas.answer("sarif", done.stdout)["runs"][0]
        places = [one["locations"][0]["physicalLocation"] for one in answer["results"]]
        self.assertEqual([urllib.parse.unquote(one["artifactLocation"]["uri"]) for one in places], [f"folder/{name}"] * 2)
        self.assertEqual([one["region"] for one in places], [{"startLine": 1, "startColumn": column} for column in (22, 24)])
        failed = answer["invocations"][0]
        uris = [one["locations"][0]["physicalLocation"]["artifactLocation"]["uri"] for one in failed["toolExecutionNotifications"]]
        self.assertRegex("|".join([str(failed["executionSuccessful"]), *uris]), r"^False\|none\|" + ("file://" if HERE else "") + "/.*/none$")

    def test_a_report_of_tests_holds_every_character_and_skips_what_was_not_looked_at(self):
        Path("odd").write_text("--auto-deploy-root /D 'a&b<c>\"]]>\x01\ufffe\uffff\u0436'\n--http 1\n", encoding="utf-8")
        Path("right").write_text(f"--auto-deploy-root {'/' if HERE else 'C:/'}D --http 1\n")
        code, out, _ = run(*TOOL, "check", "--format", "junit", "right", "none", "odd")
        self.assertEqual((code, cases_in(out)), (7, [["right"], ["none", "error"], ["odd", "failure"]]))
        failure = ElementTree.fromstring(out).find(".//failure")
        self.assertIn("a&b<c>\"]]>\\u0001\\ufffe\\uffff\u0436", failure.get("message"))
        self.assertEqual(failure.text, run(*TOOL, "check", "--format", "gcc", "odd")[1].replace("\ufffe\uffff", "\\ufffe\\uffff"))
        for options, expected in [([], (0, "system-out")), (["--strict"], (3, "failure"))]:
            code, out, _ = run(*TOOL, "check", "--format", "junit", *options, "--auto-deploy-root", "D", "--http", "1")
            self.assertEqual((code, cases_in(out)), (expected[0], [["command line", expected[1]]]))
        code, out, _ = run(*TOOL, "preflight", "--format", "junit", "--only", "programs,resources", "right", "--driver", "none/none")
        skipped = [[name, "skipped"] for name in ["directories", "listeners", "tls", "caches", "runtime", "security"]]
        wanted = [["right"], *skipped[:3], ["programs", "failure"], skipped[3], ["resources"], *skipped[4:]]
        self.assertEqual((code, cases_in(out)), (8, wanted))
        self.assertEqual(cases_in(run(*TOOL, "preflight", "--format", "junit", "odd")[1])[1:4], skipped[:3])

    def test_ci_systems_learn_what_preflight_did_not_look_at(self):
        Path("lacking").write_text(FILES["lacking"])
        words = ["--only", "programs,directories", "lacking", "--http", "1", "--driver", "none/none"]
        code, out, _ = run(*TOOL, "preflight", "--format", "sarif", *words)
        answer = tool_schemas.answer("sarif", out)["runs"][0]
        known = tool_schemas.answer("preflight", run(*TOOL, "preflight", "--format", "json", *words)[1])
        found = [(one["id"], "error" if one["severity"] == "blocking" else "warning") for one in known["findings"] if one["severity"] != "ok"]
        self.assertEqual((code, [(one["ruleId"], one["level"]) for one in answer["results"]]), (8, found))
        self.assertEqual([one["message"]["text"] for one in answer["invocations"][0]["toolExecutionNotifications"]],
                         ["not looked at: " + one["name"] for one in known["groups"] if not one["looked_at"]])
        self.assertIn({"logicalLocations": [{"fullyQualifiedName": "argument 5"}]}, [one["locations"][0] for one in answer["results"]])

    def test_every_verb_refuses_a_line_in_the_same_words(self):
        for words in ["--num-worker 4", "--http x:y --log-root", "--wait --num-workers 1"]:
            verbs = ["check", "check --all", "check --quiet", "preflight", "status", "publish"]
            said = {run(*TOOL, *verb.split(), *PID_FLAGS, *words.split()) for verb in verbs}
            self.assertEqual([code for code, _, _ in said], [1], said)

    @unittest.skipUnless(HERE, "there is no such shell")
    def test_a_source_of_flags_that_cannot_be_read_says_why(self):
        Path("empty").touch()
        for source, words, expected in [("<&-", "-", "7 standard input: Bad file descriptor"), ("<.", "-", "7 standard input: Is a directory"),
                                        ("", "none", "7 none: No such file or directory")]:
            code, _, err = run("sh", "-c", f'exec "$@" {source}', "sh", *TOOL, "check", "--from", words)
            self.assertRegex(f"{code} {err}", f"^{expected[0]} orvane-config: cannot (open|read) {expected[2:]}\n$")
        for verb in ["check", "preflight", "status", "publish"]:
            said = run(*TOOL, verb, "--from", "empty")[2]
            self.assertRegex(said, r"(?s)^orvane-config: empty contains no flags\n.*(missing|give the flags|--auto-deploy-root)")

    @unittest.skipUnless(HERE and run(*AS_NOBODY, *TOOL, "version")[0] == 0, "there is no other user, or not for this program")
    def test_a_directory_without_access_says_nothing_of_the_server(self):
        os.mkdir("closed")
        Path("closed/main.pid").write_text("1")
        os.chmod("closed", 0), os.chmod(".", 0o755)
        self.addCleanup(os.chmod, "closed", 0o700)
        self.assertEqual(run(*AS_NOBODY, *TOOL, "status", *PID_FLAGS[:-1], "closed"),
                         (7, "main.pid unreadable    Permission denied  closed/main.pid\n", ""))

    @unittest.skipUnless(HERE, "there is no sh; nothing depends on the system")
    def test_what_the_tool_has_to_say_comes_before_the_command(self):
        Path("x.service").write_text("ExecStart=/bin/x " + shlex.join(FLAGS))
        code, _, said = run(*TOOL, "publish", "--from", "x.service", "--", "sh", "-c", "echo ran >&2")
        self.assertEqual(code, 0)
        self.assertRegex(said, r"(?s)^[^\n]*skipped '/bin/x'.*\nran\n$")

    def test_only_what_a_server_writes_is_taken_for_one(self):
        known = {"line_end": "\n", "crlf": "\r\n", "tab": "\t", "blanks": " " * 5000, "longest": "h" * 4094, "longer": "h" * 4095}
        for name in ["own", "ended"]:
            os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
            process = self.publisher()
            known[name] = main_pid.read_text()
        process.kill(), process.wait()
        for case, expected in STATES:
            name, content = case.split("|")
            Path(name).write_text(content.format(**known))
            endpoint = {"main.pid": [], "http": ["--http", "1"], "https": ["--https", "1", *CERTIFICATE], "control": ["--control-port", "1"]}[name]
            flags = [*PID_FLAGS[:4], "--endpoint-root", ".", *endpoint] if endpoint else PID_FLAGS
            self.assertEqual(state(*flags), expected, case)
        main_pid.write_text(known["own"])
        os.utime(main_pid, (1e9, 1e9))
        self.assertEqual(state(*PID_FLAGS), "stale 5", "the process started after the file was written")
        if HERE:
            main_pid.write_text(str(self.start("sleep", "1000").pid))
            for seconds, expected in [(0.5, "running 0"), (2, "stale 5")]:  # clocks and file times are not exact
                os.utime(main_pid, (time.time() - seconds,) * 2)
                self.assertEqual(state(*PID_FLAGS), expected)
        unknown = [("/proc/sys/vm/compact_memory", "Permission denied"), ("/proc/self/mem", "Input/output error")]  # for root, too
        for target, why in unknown if HERE else []:
            os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
            main_pid.symlink_to(target)
            self.assertEqual((state(*PID_FLAGS), run(*TOOL, "status", *PID_FLAGS)[1]), ("unreadable 7", f"main.pid unreadable    {why}  ./main.pid\n"))
            self.assertEqual(run(*TOOL, "publish", *PID_FLAGS)[0::2], (1, f"orvane-config: ./main.pid cannot be read: {why}\n"))
            self.assertRegex(run(*TOOL, "preflight", "--only", "runtime", *PID_FLAGS)[1], rf"cannot be read: {why} \[cannot-tell\]")
            self.assertRegex(run(*TOOL, "preflight", "--format", "gcc", "--only", "runtime", *PID_FLAGS)[1], rf": error: .*{why}.* \[cannot-tell\]\n")
        os.remove("main.pid"), main_pid.symlink_to("main.pid")
        for root, why in [(".", "Too many levels of symbolic links"), ("x" * 300, "File name too long")] if HERE else []:
            self.assertEqual(run(*TOOL, "status", *PID_FLAGS[:-1], root)[:2], (7, f"main.pid unreadable    {why}  {root}/main.pid\n"))
        for make in [os.mkdir, os.mkfifo, lambda name: os.symlink("/dev/zero", name)][:None if HERE else 1]:
            os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
            make("main.pid")
            self.assertEqual(state(*PID_FLAGS), "malformed 5")
            self.assertEqual(run(*TOOL, "publish", *PID_FLAGS, "--", *TOOL, "help")[0], 1)

    @unittest.skipUnless(HERE, "an emulated process has two numbers")
    def test_who_shares_a_directory_with_whom_decides(self):
        """Another server, in all ways of sharing directories with ours: what locate says, and whether publish lets it be."""
        living = self.start("sleep", "1000").pid
        listener, silent = self.enterContext(socket.create_server(("127.0.0.1", 0))), self.enterContext(socket.socket())
        silent.bind(("127.0.0.1", 0))
        listened, free = (one.getsockname()[1] for one in (listener, silent))
        order = ["accepting", "running", "published", "not accepting", "not published", "stale"]
        # Where it has its pid file and its endpoint, and on which port; where and on which port we do, and whether a server was killed there.
        states = [*itertools.product(["publisher", "server", "killed"], ["", "e", "p", "q"], "ef", [listened, free],
                                     ["", "p"], [listened, free], [False, True])]

        def model(other, their_pid, their_end, port, our_pid, our_port, left):
            lives, shared_end = other != "killed", their_end == "e"
            process = "" if not our_pid else "running" if lives and their_pid == "p" else "stale" if left or their_pid == "p" else "not published"
            endpoint = "not published" if not shared_end else process if process in ("running", "stale") else "published"
            asked = endpoint if endpoint in ("not published", "stale") else "accepting" if port == listened else "not accepting"
            said = [max([process or "accepting", one], key=order.index) for one in (endpoint, asked)]
            seen = {their_pid, their_end if other == "publisher" else ""} & {our_pid, "e"} - {""}
            is_ours = process == "stale" and port == our_port
            return said, bool(lives and seen) or shared_end and port == listened and not is_ours

        def answers(number, case):
            other, their_pid, their_end, port, our_pid, our_port, left = case
            at = Path(os.getcwd(), str(number))
            flags = lambda pid, end, port: [*PID_FLAGS[:4], *(["--pid-root", at / pid] if pid else []),
                                            "--endpoint-root", at / end, "--http", f"127.0.0.1:{port}"]
            files = lambda: {f"{path.parent.name}/{path.name}": path.read_text() for path in at.rglob("*") if path.is_file() and path.name != LOCK}
            for root in "efpq":
                (at / root).mkdir(parents=True)
            (at / ("p/main.pid" if left else "x")).write_text("4294967295")
            if other == "publisher":
                self.start(*TOOL, "publish", *flags(their_pid, their_end, port))
                until(lambda: files().get(f"{their_end}/http"))
            else:
                (at / their_end / "http").write_text(f"127.0.0.1:{port}")
                (at / their_pid / ("main.pid" if their_pid else "x")).write_text(str(living if other == "server" else 4294967295))
            said = [tool_schemas.answer("status", run(*TOOL, "status", "--format", "json", *more, *flags(our_pid, "e", our_port))[1])["state"]
                    for more in ([], ["--connect"])]
            before = files()
            code, out, _ = run(*TOOL, "publish", *flags(our_pid, "e", our_port), "--", "cat", at / "e/http")
            left_alone = before if code else {name: text for name, text in before.items() if name not in ("e/http", our_pid + "/main.pid")}
            return case, (said, code == 1), out == ("" if code else f"127.0.0.1:{our_port}"), files() == left_alone

        with concurrent.futures.ThreadPoolExecutor(32) as threads:
            for case, said, *rest in threads.map(answers, itertools.count(), random.Random(1).sample(states, 100)):
                self.assertEqual((said, rest), (model(*case), [True, True]), case)

    def test_an_endpoint_on_another_port_than_the_flags_say_is_named(self):
        Path("http").write_text("h:8081")
        for flag, other in [("8080", 8080), ("x:8080", 8080), ("808", 808), ("81", 81), ("8081", None), ("x:8081", None), ("0", None)]:
            flags = [*PID_FLAGS[:4], "--endpoint-root", ".", "--http", flag]
            answer = tool_schemas.answer("status", run(*TOOL, "status", "--format", "json", *flags)[1])
            self.assertEqual(answer["files"][0].get("expected_port"), other, flag)
            note = f" (the flags say port {other})" if other else ""
            self.assertEqual(run(*TOOL, "status", *flags)[:2], (0, f"http     published     h:8081{note}\n"))
        Path("http").write_text("127.0.0.1:1")
        self.assertRegex(run(*TOOL, "status", "--connect", *flags)[1], r"^http     not accepting 127\.0\.0\.1:1 .*\(.*refused")
        Path("http").write_text("\x1b:1")
        self.assertIn("http announces \\u001b:1, and no pid file", run(*TOOL, "preflight", "--only", "runtime", *flags)[1])

    @unittest.skipUnless(HERE, "there are no such tools")
    def test_other_tools_find_what_is_published(self):
        with socket.create_server(("127.0.0.1", 0)) as free:
            port = str(free.getsockname()[1])
        server = [sys.executable, "-m", "http.server", port, "--bind", "127.0.0.1"]
        publisher = self.publisher("--", *server, flags=[*FLAGS[:-1], "127.0.0.1:" + port], options=["--ready", "127.0.0.1:" + port])
        self.assertEqual(run("sh", "-c", "curl --fail http://$(cat http)/")[0], 0)
        self.assertEqual(run("pgrep", "-F", "main.pid")[:2], (0, main_pid.read_text() + "\n"))
        daemon = ["start-stop-daemon", "--pidfile", main_pid.resolve()]
        self.assertEqual(run(*daemon, "--status")[0], 0)
        self.assertEqual(run(*daemon, "--stop", "--retry", "60")[0], 0)
        self.expect_end(publisher, 143)
        self.assertEqual(run(*daemon, "--status")[0], 3)


main(Answers)
