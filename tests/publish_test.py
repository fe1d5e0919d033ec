#!/usr/bin/env python3
"""Runs publishers against each other, their commands and the system: publish_test.py TOOL..."""
import concurrent.futures, ctypes, fcntl, os, random, re, signal, socket, subprocess, sys, time, unittest
from pathlib import Path

import tool_schemas
from tool_runs import AS_NOBODY, FLAGS, HERE, LOCK, PID_FLAGS, TOOL, Tool, main, main_pid, run, state, until

# A command that ends with 0 when it is released, on every system.
HELD = ["--", TOOL[-1], "status", "--timeout", "60", *PID_FLAGS[:2], "--endpoint-root", "gate", "--control-port", "1"]
# Each has its own numbers for processes, from 1.
CONTAINER = ["unshare", "--map-root-user", "--pid", "--fork", "--mount-proc", "--kill-child"]


class Publishers(Tool):
    def test_a_publisher_has_the_files_to_itself_until_its_command_ends(self):
        os.mkdir("gate")
        killed = self.publisher()
        killed.kill()
        until(lambda: state() == "stale 5")
        self.assertEqual(LOCK in os.listdir(), HERE)
        asked = tool_schemas.answer("status", run(*TOOL, "status", "--format", "json", "--connect", *FLAGS)[1])["files"]
        self.assertEqual({file["state"] for file in asked}, {"stale"}, "nobody connects to what a killed server left")
        if HERE:  # paths are written in another way there
            self.assertEqual(run(*TOOL, "status", *FLAGS)[:2], (5, f"main.pid stale         {killed.pid} (no such process)  ./main.pid\n"
                                                                "control  stale         127.0.0.1:9920  ./control\nhttp     stale         h:9910  ./http\n"))
        waiting = self.start(*TOOL, "status", "--timeout", "60", *FLAGS)
        first = self.publisher(*HELD)
        self.assertEqual((waiting.wait(60), run(*TOOL, "publish", *FLAGS)[0]), (0, 1))
        pid = int(main_pid.read_text())
        files = tool_schemas.answer("status", run(*TOOL, "status", "--format", "json", *FLAGS)[1])["files"]
        self.assertEqual([file["text"] for file in files], [str(pid), "127.0.0.1:9920", "h:9910"])
        self.assertEqual([file.get("pid") for file in files], [pid, None, None])
        Path("gate/control").write_text("h:1")
        self.expect_end(first, 0, ["gate"])

    @unittest.skipUnless(HERE, "nothing tells of it there")
    def test_files_are_removed_in_reverse_order_and_stay_with_a_command_whose_publisher_is_killed(self):
        libc, removed = ctypes.CDLL(None), 0x200
        watch = libc.inotify_init()
        self.addCleanup(os.close, watch)
        publisher = self.publisher()
        libc.inotify_add_watch(watch, b".", removed)
        publisher.terminate()
        self.expect_end(publisher, 0)
        self.assertEqual(re.findall(rb"[\w.-]{4,}", os.read(watch, 4096)), [b"http", b"control", b"main.pid", LOCK.encode()])
        killed = self.publisher("--", "sleep", "1000")
        pid = int(main_pid.read_text())
        self.addCleanup(os.kill, pid, signal.SIGKILL)
        killed.kill(), killed.wait()
        self.assertEqual(state(), "running 0")
        self.assertEqual(run(*TOOL, "publish", *FLAGS)[::2], (1, f"orvane-config: process {pid} is running and owns ./main.pid\n"))

    @unittest.skipUnless(HERE, "processes are not stopped and continued there, nor files linked without a privilege")
    def test_files_that_have_become_anothers_stay(self):
        first = self.publisher("--", "sleep", "1000")
        pid = int(main_pid.read_text())
        # Before it can remove the files, a server owns them that takes no lock and writes through a link.
        first.send_signal(signal.SIGSTOP)
        os.kill(pid, signal.SIGKILL)
        until(lambda: "not a process here" in run(*TOOL, "status", *FLAGS)[1])
        main_pid.rename("target")
        main_pid.symlink_to("target")
        main_pid.write_text(str(os.getpid()))
        first.send_signal(signal.SIGCONT)
        self.assertEqual((first.wait(60), state(), Path("target").read_text()), (137, "running 0", str(os.getpid())))

    def test_a_publisher_answers_for_its_process_as_long_as_it_runs(self):
        publisher = self.publisher()
        os.utime(main_pid, (1e9, 1e9))  # so that the process is too young to be the one
        self.assertEqual(state(), "running 0")
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
            until(lambda: state(*PID_FLAGS) == "running 0")
            time.sleep(0.1)  # in which it tries to connect
            self.assertEqual(sorted({*os.listdir()} - {LOCK}), ["gate", "main.pid"])
            listener.listen()
            until(lambda: state() == "running 0")
            Path("gate/control").write_text("h:1")
            self.expect_end(publisher, 0, ["gate"])

    @unittest.skipUnless(HERE and run(*CONTAINER, "true")[0] == 0, "there are no pid namespaces, or they may not be made")
    def test_containers_that_share_a_directory_do_not_overwrite_each_other(self):
        publish = [*CONTAINER, *TOOL, "publish", *FLAGS]
        locate = [*CONTAINER, "sh", "-c", 'mount --bind -o ro . . && cd "$PWD" && ! touch x 2>&- && exec "$@"', "sh", *TOOL, "status", *FLAGS]
        for command, number in [(["--", "sh", "-c", "sleep 1000; exit 1"], "2"), ([], "1")]:
            first = self.start(*publish, *command)
            until(lambda: os.path.exists("http") and run("cat", "http")[1] and run("cat", "main.pid")[1] == number)
            os.utime(main_pid, (1e9, 1e9))  # a young process has the number in each of them
            code, out, _ = run(*locate)
            self.assertRegex(f"{code} {out}", rf"^0 main.pid +running +{number} \(not a process here, .*\ncontrol +running .*\nhttp +running ")
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

    def test_of_publishers_that_share_a_root_one_wins(self):
        groups = []
        for number, roots in enumerate(["aa aa", "ae be", "ab ba", "ae ea", "-e -e", "a- ae"] * (3 if HERE else 1)):
            for root in "abe":
                os.makedirs(f"{number}/{root}")
            groups.append([self.start(*TOOL, "publish", *PID_FLAGS[:4], *(["--pid-root", f"{number}/{pid}"] if pid != "-" else []),
                                      *(["--endpoint-root", f"{number}/{end}", "--http", f"h{which}:1"] if end != "-" else []))
                           for which, (pid, end) in enumerate(roots.split())])
        until(lambda: all(any(one.poll() is not None for one in group) for group in groups))
        for number, group in enumerate(groups):
            loser, winner = sorted(group, key=lambda one: one.poll() is None)
            self.assertEqual((loser.poll(), winner.poll()), (1, None), number)
            which = group.index(winner)
            written = {*Path(str(number)).glob("*/[mh]*")}
            self.assertTrue(all(path.read_text() in (f"h{which}:1", str(winner.pid)) or not HERE for path in written), written)
            winner.kill()

    @unittest.skipUnless(HERE, "there is no sh")
    def test_whoever_publishes_has_its_roots_to_itself(self):
        # The command takes each root once more, in a way that cannot be had twice, and looks for its own files.
        script = 'for root; do mkdir $root/mine || exit 9; done; [ "$(cat $1/main.pid)$(cat $2/http)" = $$h:$PORT ] || exit 8;' \
            'for root; do rmdir $root/mine; done'
        for root in "abc":
            os.mkdir(root)

        def publish(seed):
            roots = random.Random(seed).sample("abc", 2)
            words = ["--pid-root", roots[0], "--endpoint-root", roots[1], "--http", f"h:{seed + 1}"]
            return run("env", f"PORT={seed + 1}", *TOOL, "publish", *PID_FLAGS[:4], *words, "--", "sh", "-c", script, "sh", *roots)[0]

        with concurrent.futures.ThreadPoolExecutor(8) as threads:
            codes = [*threads.map(publish, range(120))]
        self.assertEqual(({*codes} - {1}, os.listdir("a"), os.listdir("b"), os.listdir("c")), ({0}, [], [], []), codes)
        self.assertGreater(codes.count(0), 20)

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
    def test_what_the_terminal_sends_is_not_passed_on_but_that_it_closes(self):
        # The command would get what is typed from the terminal as well. This one has none, so that it gets only what is passed on.
        script = "trap 'rm ready; exit 9' INT; trap 'rm ready; exit 8' TERM; trap 'rm ready; exit 7' HUP; >ready; while :; do sleep 0.1; done"
        for closes, code in [(False, 8), (True, 7)]:
            terminal, end = os.openpty()
            publisher = subprocess.Popen(["setsid", "--ctty", *TOOL, "publish", *FLAGS, "--", "setsid", "sh", "-c", script], stdin=end,
                                         stderr=subprocess.DEVNULL)
            self.addCleanup(lambda process: (process.kill(), process.wait()), publisher)
            os.close(end)
            until(lambda: os.path.exists("ready"))
            os.write(terminal, b"\x03")
            time.sleep(0.2)
            os.close(terminal) if closes else publisher.terminate()
            self.expect_end(publisher, code)
            closes or os.close(terminal)

    @unittest.skipUnless(HERE, "there are no signals")
    def test_a_command_that_cannot_be_published_is_ended_however_it_resists(self):
        for kill_after in ["0.2", "1000"]:
            os.mkdir("e")
            with socket.socket() as listener:
                listener.bind(("127.0.0.1", 0))
                words = ["--ready", f"127.0.0.1:{listener.getsockname()[1]}", "--kill-after", kill_after, *PID_FLAGS,
                         "--endpoint-root", "e", "--control-port", "1"]
                publisher = subprocess.Popen([*TOOL, "publish", *words, "--", "sh", "-c", "trap '>asked' TERM; >ready; while :; do sleep 0.1; done"],
                                             stderr=subprocess.PIPE)
                until(lambda: os.path.exists("ready"))
                os.unlink(f"e/{LOCK}"), os.rmdir("e")
                pid = int(main_pid.read_text())
                self.addCleanup(lambda: run("kill", "-9", str(publisher.pid), str(pid)))
                listener.listen()
                self.assertEqual([publisher.stderr.readline().decode() for _ in range(2)],
                                 ["orvane-config: error opening e/control: No such file or directory\n",
                                  f"orvane-config: ending process {pid}; it is killed after {kill_after} s, or at a signal\n"])
                until(lambda: os.path.exists("asked"))
                if kill_after == "1000":
                    self.assertEqual(main_pid.read_text(), str(pid), "it goes last")
                    publisher.terminate()
                self.assertEqual((publisher.wait(60), publisher.communicate()[1], sorted(os.listdir())), (7, b"", ["asked", "ready"]))
                self.assertRaises(ProcessLookupError, os.kill, pid, 0)
                os.remove("asked"), os.remove("ready")

    @unittest.skipUnless(HERE, "the locks of files are others there")
    def test_a_publisher_that_is_about_to_leave_is_waited_for(self):
        os.mkdir("e")
        lock = os.open(LOCK, os.O_RDWR | os.O_CREAT, 0o600)
        self.addCleanup(os.close, lock)
        fcntl.lockf(lock, fcntl.LOCK_EX)
        # Nobody waits for long. Whichever directory is the first, it is the first for everybody.
        seen = []
        for roots in [".", "e"], ["e", "."]:
            waiting = subprocess.Popen([*TOOL, "publish", *PID_FLAGS[:4], "--pid-root", roots[0], "--endpoint-root", roots[1], *FLAGS[-4:], "--", "true"],
                                       stderr=subprocess.PIPE)
            seen.append(False)
            while waiting.poll() is None:
                seen[-1] = seen[-1] or os.path.exists(f"e/{LOCK}")
            self.assertEqual((waiting.returncode, waiting.communicate()[1].decode()),
                             (1, f"orvane-config: another publisher (process {os.getpid()}) has locked .\n"))
        self.assertEqual(seen[0], seen[1], "publishers wait for each other")
        os.rmdir("e")
        next_one = self.start(*TOOL, "publish", *FLAGS, "--", "true")
        time.sleep(0.2)
        self.assertIsNone(next_one.poll())
        os.unlink(LOCK)  # as one that leaves does
        fcntl.lockf(lock, fcntl.LOCK_UN)
        self.expect_end(next_one, 0)
        os.symlink("x", LOCK)
        self.assertEqual(run(*TOOL, "publish", *FLAGS), (7, "", f"orvane-config: cannot lock ./{LOCK}: it is a symbolic link; remove it\n"))

    @unittest.skipUnless(AS_NOBODY and run(*AS_NOBODY, "true")[0] == 0, "there is no other user")
    def test_another_user_cannot_lock_what_a_publisher_needs(self):
        os.chmod(".", 0o755)
        main_pid.write_text("4294967295")  # left by a publisher that was killed
        locks = ("import fcntl, os\nfor name in '.', 'main.pid', '.orvane-config.lock':\n for take in fcntl.flock, fcntl.lockf:\n"
                 "  try: take(os.open(name, os.O_RDONLY), fcntl.LOCK_SH | fcntl.LOCK_NB), print(name, take.__name__, flush=True)\n"
                 "  except OSError as error: print(name, error.strerror, flush=True)\nopen(0).read()")
        intruder = subprocess.Popen([*AS_NOBODY, sys.executable, "-c", locks], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(lambda: (intruder.communicate(), intruder.wait()))
        said = [intruder.stdout.readline().decode().strip() for _ in range(6)]
        self.assertEqual(said[2:4], ["main.pid flock", "main.pid lockf"])
        self.assertEqual(state(), "stale 5")
        publisher = self.publisher()
        os.utime(main_pid, (1e9, 1e9))
        self.assertEqual(state(), "running 0", "its answer is heard")
        self.assertEqual(run(*AS_NOBODY, "cat", LOCK)[0], 1)
        refused = run(*AS_NOBODY, *TOOL, "publish", *PID_FLAGS[:4], "--endpoint-root", ".", "--control-port", "1")
        self.assertEqual(refused, (7, "", f"orvane-config: cannot lock ./{LOCK}: Permission denied\n"))
        publisher.terminate()
        self.expect_end(publisher, 0)


main(Publishers)
