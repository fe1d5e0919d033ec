#!/usr/bin/env python3
"""Runs orvane-config against itself and against the tools that find servers by their files: tool_test.py TOOL..."""
import fcntl, os, re, shlex, signal, socket, subprocess, sys, tempfile, time, unittest
from pathlib import Path

import tool_schemas
from tables import rows

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
PID_FLAGS = ["--auto-deploy-root", "D", "--extract-root", "E", "--pid-root", "."]
CERTIFICATE = ["--x509-private-key", "k", "--x509-cert-chain", "c"]
FLAGS = [*PID_FLAGS, "--endpoint-root", ".", "--control-port", "9920", "--http", "h:9910"]
# A command that ends with 0 when it is released, on every system.
HELD = ["--", TOOL[-1], "locate", "--wait", "60", *PID_FLAGS[:2], "--endpoint-root", "gate", "--control-port", "1"]
# Each has its own numbers for processes, from 1.
CONTAINER = ["unshare", "--map-root-user", "--pid", "--fork", "--mount-proc", "--kill-child"]
# An emulated start takes long.
ANSWERS = rows("tool_answers.txt", 4) + rows("tool_verbs.txt", 4)[::1 if HERE else 20]
STATES = rows("tool_states.txt", 2)
# Where root runs the tests, its privileges are taken away.
AS_NOBODY = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups", "--inh-caps=-all"] if HERE and os.geteuid() == 0 else []
main_pid = Path("main.pid")


def run(*words, stdout=subprocess.PIPE):
    done = subprocess.run(words, stdout=stdout, stderr=subprocess.PIPE, timeout=60, check=False)
    return done.returncode, *((text or b"").decode().replace("\r\n", "\n") for text in (done.stdout, done.stderr))


def state(*flags):
    code, out, _ = run(*TOOL, "locate", "--json", *(flags or FLAGS))
    return f"{tool_schemas.answer('locate', out)['state']} {code}"


def until(condition):
    deadline = time.monotonic() + 60
    while not condition():
        assert time.monotonic() < deadline, "timed out waiting for this"
        time.sleep(0.01)


class Tool(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))

    def start(self, *words):
        process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(lambda: (process.kill(), process.wait()))
        return process

    def publisher(self, *command, flags=FLAGS, options=()):
        process = self.start(*TOOL, "publish", *options, *flags, *command)
        until(lambda: state(*flags) == "alive 0")
        return process

    def expect_end(self, publisher, code, left=()):
        self.assertEqual((publisher.wait(60), os.listdir()), (code, list(left)), publisher.args)

    def test_answers_and_complaints_have_their_streams_and_codes(self):
        for command, *patterns in ANSWERS:
            if not HERE and "\\x" in command:
                continue  # words are UTF-16 there, not bytes
            words = shlex.split(command.replace("$FLAGS", shlex.join(FLAGS)).replace("$TOOL", shlex.quote(TOOL[-1])))
            words = [word.encode().decode("unicode_escape").encode("latin-1") for word in words]
            with self.subTest(command), open("/dev/full", "wb") as full:
                code, out, err = run(*TOOL, *words)
                self.assertTrue(re.fullmatch("\0".join(patterns), f"{code}\0{out}\0{err}", re.S), (code, out, err))
                self.assertEqual(run(*TOOL, *words, stdout=full)[0], 7 if out else code)

    def test_every_verb_refuses_a_line_in_the_same_words(self):
        for words in ["--num-worker 4", "--http x:y --log-root", "--wait --num-workers 1"]:
            said = {run(*TOOL, verb, *PID_FLAGS, *words.split()) for verb in ["check", "show", "preflight", "locate", "publish"]}
            self.assertEqual([code for code, _, _ in said], [1], said)

    @unittest.skipUnless(HERE, "there is no such shell")
    def test_a_source_of_flags_that_cannot_be_read_says_why(self):
        Path("empty").touch()
        for source, words, expected in [("<&-", "-", "7 standard input: Bad file descriptor"), ("<.", "-", "7 standard input: Is a directory"),
                                        ("", ".", "7 .: Is a directory"), ("", "none", "7 none: No such file or directory")]:
            code, _, err = run("sh", "-c", f'exec "$@" {source}', "sh", *TOOL, "check", "--from", words)
            self.assertRegex(f"{code} {err}", f"^{expected[0]} orvane-config: cannot (open|read) {expected[2:]}\n$")
        for verb in ["check", "show", "locate", "publish"]:
            self.assertRegex(run(*TOOL, verb, "--from", "empty")[2], "^orvane-config: empty contains no flags\nmissing|--auto-deploy-root")

    def test_a_publisher_has_the_files_to_itself_until_its_command_ends(self):
        os.mkdir("gate")
        killed = self.publisher()
        killed.kill()
        until(lambda: state() == "stale 5")
        if HERE:  # paths are written in another way there
            self.assertEqual(run(*TOOL, "locate", *FLAGS)[:2], (5, f"main.pid stale         {killed.pid} (no such process)  ./main.pid\n"
                                                                "control  stale         127.0.0.1:9920  ./control\nhttp     stale         h:9910  ./http\n"))
        waiting = self.start(*TOOL, "locate", "--wait", "60", *FLAGS)
        first = self.publisher(*HELD)
        self.assertEqual((waiting.wait(60), run(*TOOL, "publish", *FLAGS)[0]), (0, 1))
        pid = int(main_pid.read_text())
        files = tool_schemas.answer("locate", run(*TOOL, "locate", "--json", *FLAGS)[1])["files"]
        self.assertEqual([file["text"] for file in files], [str(pid), "127.0.0.1:9920", "h:9910"])
        self.assertEqual([file.get("pid") for file in files], [pid, None, None])
        Path("gate/control").write_text("h:1")
        self.expect_end(first, 0, ["gate"])

    @unittest.skipUnless(HERE, "processes are not stopped and continued there, nor files linked without a privilege")
    def test_files_that_have_become_anothers_stay(self):
        first = self.publisher("--", "sleep", "1000")
        pid = int(main_pid.read_text())
        # Before it can remove the files, a server owns them that takes no lock and writes through a link.
        first.send_signal(signal.SIGSTOP)
        os.kill(pid, signal.SIGKILL)
        until(lambda: "not a process here" in run(*TOOL, "locate", *FLAGS)[1])
        main_pid.rename("target")
        main_pid.symlink_to("target")
        main_pid.write_text(str(os.getpid()))
        first.send_signal(signal.SIGCONT)
        self.assertEqual((first.wait(60), state(), Path("target").read_text()), (137, "alive 0", str(os.getpid())))

    def test_a_publisher_answers_for_its_process_as_long_as_it_runs(self):
        publisher = self.publisher()
        os.utime(main_pid, (1e9, 1e9))  # so that the process is too young to be the one
        self.assertEqual(state(), "alive 0")
        main_pid.write_text("4294967295")
        self.assertEqual(state(), "stale 5", "another's number")
        self.assertEqual(run(*TOOL, "publish", *FLAGS)[0], 1)
        publisher.kill()
        self.publisher()

    def test_endpoints_are_published_when_somebody_can_connect(self):
        os.mkdir("gate")
        Path("http").write_text("left:1")
        with socket.socket() as listener:
            listener.bind(("127.0.0.1", 0))  # and does not listen yet
            publisher = self.start(*TOOL, "publish", "--ready", f"127.0.0.1:{listener.getsockname()[1]}", *FLAGS, *HELD)
            until(lambda: state(*PID_FLAGS) == "alive 0")
            time.sleep(0.1)  # in which it tries to connect
            self.assertEqual(sorted(os.listdir()), ["gate", "main.pid"])
            listener.listen()
            until(lambda: state() == "alive 0")
            Path("gate/control").write_text("h:1")
            self.expect_end(publisher, 0, ["gate"])

    @unittest.skipUnless(HERE and run(*CONTAINER, "true")[0] == 0, "there are no pid namespaces, or they may not be made")
    def test_containers_that_share_a_directory_do_not_overwrite_each_other(self):
        publish = [*CONTAINER, *TOOL, "publish", *FLAGS]
        locate = [*CONTAINER, "sh", "-c", 'mount --bind -o ro . . && cd "$PWD" && ! touch x 2>&- && exec "$@"', "sh", *TOOL, "locate", *FLAGS]
        for command, number in [(["--", "sh", "-c", "sleep 1000; exit 1"], "2"), ([], "1")]:
            first = self.start(*publish, *command)
            until(lambda: os.path.exists("http") and main_pid.read_text() == number)
            os.utime(main_pid, (1e9, 1e9))  # a young process has the number in each of them
            code, out, _ = run(*locate)
            self.assertRegex(f"{code} {out}", rf"^0 main.pid +alive +{number} \(not a process here, .*\ncontrol +alive .*\nhttp +alive ")
            self.assertRegex(run(*publish, "--", "true")[2], f"^orvane-config: the publisher of process {number} is running and owns ./main.pid\n$")
            self.assertEqual((first.poll(), main_pid.read_text()), (None, number))
            first.kill()
            until(lambda: run(*locate)[0] == 5)
        # Started again at once, a process has the number of the one that was killed.
        main_pid.write_text("1")
        os.remove("http")
        self.assertEqual(run(*locate[:-len(FLAGS)], *PID_FLAGS)[0], 5)
        again = self.start(*publish)
        until(lambda: os.path.exists("http") or again.poll() is not None)
        self.assertIsNone(again.poll())

    def test_of_two_publishers_that_start_together_one_wins(self):
        for _ in range(20 if HERE else 4):
            two = [self.start(*TOOL, "publish", *FLAGS) for _ in range(2)]
            until(lambda: any(one.poll() is not None for one in two) and state() == "alive 0")
            loser, winner = sorted(two, key=lambda one: one.poll() is None)
            self.assertEqual((loser.poll(), winner.poll()), (1, None))
            if HERE:  # an emulated process has two numbers
                self.assertEqual(main_pid.read_text(), str(winner.pid))
            winner.kill()
            until(lambda: state() == "stale 5")

    @unittest.skipUnless(HERE, "there are no signals")
    def test_no_signal_that_can_be_caught_leaves_files(self):
        stay = {signal.Signals["SIG" + name] for name in "KILL STOP TSTP TTIN TTOU CONT WINCH URG CHLD".split()}
        for number in signal.valid_signals() - stay:
            publisher = self.start(*TOOL, "publish", *FLAGS)
            until(lambda: os.path.exists("http"))
            publisher.send_signal(number)
            self.expect_end(publisher, 0 if number in (signal.SIGINT, signal.SIGTERM) else 128 + number)
        publisher = self.start("env", "--ignore-signal=HUP", *TOOL, "publish", *FLAGS)  # as nohup does
        until(lambda: os.path.exists("http"))
        publisher.send_signal(signal.SIGHUP), publisher.send_signal(signal.SIGTERM)
        self.expect_end(publisher, 0)
        self.publisher().kill()
        until(lambda: state() == "stale 5")

    @unittest.skipUnless(HERE, "there are no signals; codes and publication are in tool_answers.txt")
    def test_a_command_is_published_and_signalled_and_its_code_passed_on(self):
        published = '[ "$(cat main.pid control http)" = "$$127.0.0.1:9920h:9910" ] && exit 3'
        words = [*TOOL, "publish", *FLAGS, "--log-root", "--", "--", "sh", "-c"]
        for code, script in [(0, "sleep 9 &"), (3, published), (3, "rm main.pid; exit 3"), (137, "kill -9 $$")]:
            self.expect_end(self.start("env", "--ignore-signal=CHLD", *words, script), code)
        for number, code in [(signal.SIGTERM, 8), (signal.SIGUSR1, 9)]:
            script = "trap 'rm ready; exit 8' TERM; trap 'rm ready; exit 9' USR1; >ready; while :; do sleep 0.1; done"
            publisher = self.start(*words, script)
            until(lambda: os.path.exists("ready"))
            publisher.send_signal(number)
            self.expect_end(publisher, code)

    @unittest.skipUnless(HERE, "there are no signals; what the console sends is in windows_tool_test.cpp")
    def test_what_the_terminal_sends_is_not_passed_on(self):
        terminal, end = os.openpty()
        self.addCleanup(os.close, terminal), self.addCleanup(os.close, end)
        # The command would get it from the terminal as well. This one has none, so that it gets only what is passed on.
        script = "trap 'rm ready; exit 9' INT; trap 'rm ready; exit 8' TERM; >ready; while :; do sleep 0.1; done"
        publisher = subprocess.Popen(["setsid", "--ctty", *TOOL, "publish", *FLAGS, "--", "setsid", "sh", "-c", script], stdin=end, stderr=subprocess.DEVNULL)
        self.addCleanup(lambda: (publisher.kill(), publisher.wait()))
        until(lambda: os.path.exists("ready"))
        os.write(terminal, b"\x03")
        time.sleep(0.2)
        publisher.send_signal(signal.SIGTERM)
        self.expect_end(publisher, 8)

    @unittest.skipUnless(HERE, "a mutex does it there")
    def test_a_publisher_that_is_about_to_leave_is_waited_for(self):
        lock = os.open(".", os.O_RDONLY)
        self.addCleanup(os.close, lock)
        fcntl.flock(lock, fcntl.LOCK_EX)
        # Nobody waits for long.
        self.assertEqual(run(*TOOL, "publish", *FLAGS, "--", "true"), (1, "", "orvane-config: another publisher is running and owns ./main.pid\n"))
        next_one = self.start(*TOOL, "publish", *FLAGS, "--", "true")
        until(lambda: next_one.poll() is not None or os.getcwd() in run("sh", "-c", f"readlink /proc/{next_one.pid}/fd/*")[1].splitlines())
        time.sleep(0.1)
        fcntl.flock(lock, fcntl.LOCK_UN)
        self.expect_end(next_one, 0)

    @unittest.skipUnless(HERE and run(*AS_NOBODY, *TOOL, "version")[0] == 0, "there is no other user, or not for this program")
    def test_a_directory_without_access_says_nothing_of_the_server(self):
        os.mkdir("closed")
        Path("closed/main.pid").write_text("1")
        os.chmod("closed", 0), os.chmod(".", 0o755)
        self.addCleanup(os.chmod, "closed", 0o700)
        self.assertEqual(run(*AS_NOBODY, *TOOL, "locate", *PID_FLAGS[:-1], "closed"),
                         (7, "main.pid unreadable    Permission denied  closed/main.pid\n", ""))

    @unittest.skipUnless(HERE, "there is no sh; nothing depends on the system")
    def test_what_the_tool_has_to_say_comes_before_the_command(self):
        Path("x.service").write_text("ExecStart=/bin/x " + shlex.join(FLAGS))
        code, _, said = run(*TOOL, "publish", "--from", "x.service", "--", "sh", "-c", "echo ran >&2")
        self.assertEqual(code, 0)
        self.assertRegex(said, r"(?s)^[^\n]*left out '/bin/x'.*\nran\n$")

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
            for seconds, expected in [(0.5, "alive 0"), (2, "stale 5")]:  # clocks and file times are not exact
                os.utime(main_pid, (time.time() - seconds,) * 2)
                self.assertEqual(state(*PID_FLAGS), expected)
        unknown = [("/proc/sys/vm/compact_memory", "Permission denied"), ("/proc/self/mem", "Input/output error")]  # for root, too
        for target, why in unknown if HERE else []:
            os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
            main_pid.symlink_to(target)
            self.assertEqual((state(*PID_FLAGS), run(*TOOL, "locate", *PID_FLAGS)[1]), ("unreadable 7", f"main.pid unreadable    {why}  ./main.pid\n"))
            self.assertEqual(run(*TOOL, "publish", *PID_FLAGS)[0::2], (1, f"orvane-config: ./main.pid cannot be read: {why}\n"))
            self.assertRegex(run(*TOOL, "preflight", "--only", "runtime", *PID_FLAGS)[1], rf"cannot be read: {why} \[cannot-tell\]")
        for make in [os.mkdir, os.mkfifo, lambda name: os.symlink("/dev/zero", name)][:None if HERE else 1]:
            os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
            make("main.pid")
            self.assertEqual(state(*PID_FLAGS), "malformed 5")
            self.assertEqual(run(*TOOL, "publish", *PID_FLAGS, "--", *TOOL, "help")[0], 1)

    def test_an_endpoint_on_another_port_than_the_flags_say_is_named(self):
        Path("http").write_text("h:8081")
        for flag, other in [("8080", 8080), ("x:8080", 8080), ("808", 808), ("81", 81), ("8081", None), ("x:8081", None), ("0", None)]:
            flags = [*PID_FLAGS[:4], "--endpoint-root", ".", "--http", flag]
            answer = tool_schemas.answer("locate", run(*TOOL, "locate", "--json", *flags)[1])
            self.assertEqual(answer["files"][0].get("expected_port"), other, flag)
            note = f" (the flags say port {other})" if other else ""
            self.assertEqual(run(*TOOL, "locate", *flags)[:2], (0, f"http     published     h:8081{note}\n"))

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


unittest.main()
