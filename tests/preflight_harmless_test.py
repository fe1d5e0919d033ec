#!/usr/bin/env python3
"""Watches `orvane-config preflight`: it changes nothing, contacts nobody unasked, and no input makes it hang or grow: preflight_harmless_test.py TOOL"""
import json, os, re, shlex, shutil, socket, subprocess, sys, tempfile, unittest
from pathlib import Path

TOOL = sys.argv[1:]
del sys.argv[1:]
# What would change something, start something, or speak. A thread is no process, and the resolver sorts addresses by
# connecting sockets that send nothing.
CHANGING = r"O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND|O_TMPFILE|" \
           r"^\d+ +(mkdir|mknod|unlink|rmdir|rename|link|symlink|truncate|ftruncate|fallocate|chmod|fchmod|chown|fchown|lchown|" \
           r"utime|futimes|setxattr|fsetxattr|removexattr|mount|umount|flock|listen|accept|fork|vfork|creat|pwrite|sendfile|copy_file_range)\w*\(|" \
           r"kill\(-?\d+, SIG"
SPEAKING = r"^\d+ +(connect|sendto|sendmsg|sendmmsg)\((?!\d+<(NETLINK|UDP|UDPv6|UNIX))"
PATIENCE = [shutil.which("timeout") or "timeout", "--signal=KILL", "40"]
LARGEST = 300 * 1024  # KiB: sanitizers need some of it, though they are told not to keep what was freed


def path_flags():
    text = subprocess.run([*TOOL, "explain", "flags", "--format", "markdown"], capture_output=True, text=True, check=True).stdout
    flags = re.findall(r"^### `(--\S+) <(?:file|directory)>`$", text, re.M)
    assert len(flags) > 10, flags
    return flags


def everything_in(folder):
    """What the system knows of each file but the time of the last reading, which is no change."""
    paths = [Path(place, name) for place, names, files in os.walk(folder) for name in [".", *names, *files]]
    return {path: [value for name, value in vars_of(path.lstat()) if "atime" not in name] for path in paths}


def vars_of(status):
    return [(name, getattr(status, name)) for name in dir(status) if name.startswith("st_")]


class Harmless(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))

    def a_full_line(self):
        """A line with every flag that names something, and these things."""
        line = shlex.split("""--http 127.0.0.1:0 --https localhost:0 --control-port 0 --start-cache a@0 --driver 'sh -c true'
            --log-handler 'text/plain cat' --num-workers 2 --worker-memory-trigger 1M --server-memory-threshold 1G
            --server-memory-threshold-overflow-action archive_responses --ssl-verify-peer-mode verify-peer-require-peer-cert
            --x509-use-crl""")
        for flag in path_flags():
            name = flag.strip("-")
            line += [flag, name]
            if "root" in flag:
                Path(name).mkdir()
        if shutil.which("openssl"):
            subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-keyout", "x509-private-key", "-out", "x509-cert-chain", "-days", "9",
                            "-subj", "/CN=localhost", "-passout", "pass:secret"], capture_output=True, check=True)
            shutil.copy("x509-cert-chain", "x509-ca-file-store")
        Path("x509-passphrase").write_text("secret\n")
        Path("pid-root/main.pid").write_text("999999")
        Path("endpoint-root/http").write_text("localhost:1")
        Path("log-root/link").symlink_to("nowhere")
        return line

    def traced(self, *words):
        trace = tempfile.NamedTemporaryFile("r")
        tracer = ["strace", "-f", "-yy", "-s", "200", "-o", trace.name, "-e", "trace=!futex,read,mmap,mprotect,munmap"]
        done = subprocess.run([*tracer, *TOOL, "preflight", "--security", "--format", "json", *words], capture_output=True, timeout=60, check=False,
                              env={**os.environ, "ASAN_OPTIONS": "detect_leaks=0"})
        calls = trace.read()
        self.assertIn("exited with", calls, done)
        answer = json.loads(done.stdout)
        self.assertTrue(answer["accepted"], answer)
        return answer, calls

    def test_it_changes_nothing_and_contacts_nobody(self):
        line = self.a_full_line()
        with socket.create_server(("127.0.0.1", 0)) as cache:
            port = cache.getsockname()[1]
            line += ["--attach-cache", f"a@127.0.0.1:{port}"]
            before = everything_in(".")
            for allowed, connections in [([], 0), (["--network"], 1)]:
                answer, calls = self.traced(*allowed, *line)
                self.assertTrue(all(group["looked_at"] for group in answer["groups"]))
                self.assertEqual([one for one in calls.splitlines() if re.search(CHANGING, one)], [])
                spoken = [one for one in calls.splitlines() if re.search(SPEAKING, one)]
                self.assertEqual([f"htons({port})" in one for one in spoken], [True] * connections, spoken)
                self.assertRegex(calls, r"bind\(\d+<TCP", "it looks by binding")
            self.assertEqual(everything_in("."), before)
            # What is said of a key file is not what is in it.
            for form in [["--format", "json"], []]:
                said = subprocess.run([*TOOL, "preflight", *form, *line], capture_output=True, check=False)
                for secret in ["secret", *(Path("x509-private-key").read_text().splitlines() if shutil.which("openssl") else [])]:
                    self.assertNotIn(secret.encode(), said.stdout + said.stderr)

    def outcome(self, *words, environment={}):
        """The exit code; or too much memory; or what took too long."""
        with tempfile.TemporaryFile() as output:
            process = subprocess.Popen([*PATIENCE, *TOOL, "preflight", "--format", "json", *words], stdout=output,
                                       stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL,
                                       env={**os.environ, "ASAN_OPTIONS": "quarantine_size_mb=16", **environment})
            _, status, used = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            output.seek(0)
            answer = json.load(output)
        if used.ru_maxrss > LARGEST:
            return f"{used.ru_maxrss} KiB"
        # A group that was given up as a whole would not have come back.
        given_up = [one for one in answer.get("findings", []) if one["id"] == "time-limit" and "flag" not in one]
        return given_up or process.returncode

    def test_no_file_makes_it_hang_or_grow(self):
        os.mkfifo("fifo"), os.symlink("loop", "loop"), os.symlink("/dev/zero", "zero"), os.mkdir("many"), os.mkdir("deep")
        os.symlink("/proc/kmsg" if os.geteuid() == 0 else "/dev/tty", "waits"), os.symlink("..", "deep/up")
        with open("huge", "wb") as huge:
            huge.truncate(1 << 30)
        for number in range(20000):
            os.close(os.open(f"many/{number}", os.O_CREAT))
        with socket.socket(socket.AF_UNIX) as local:
            local.bind("socket")
        flags = path_flags()
        for name in ["fifo", "loop", "loop/x", "zero", "waits", "many", "huge", "socket", "deep" + "/up/deep" * 200, "x" * 300, "/x" * 5000, "many/7/x"]:
            line = [word for flag in flags if flag not in ("--auto-deploy-root", "--extract-root") for word in (flag, name)]
            line += ["--auto-deploy-root", "./" + name, "--extract-root", "E", "--https", "0", "--driver", name, "--log-handler", "text/plain " + name]
            with self.subTest(name[:40]):
                self.assertEqual(self.outcome(*line, environment={"PATH": f"{name[:200]}:{os.getcwd()}/many"}), 8)

    def test_no_line_makes_it_hang_or_grow(self):
        for words in [["--attach-cache", "a@127.0.0.1:1"], ["--start-cache", "a@127.0.0.1:1"], ["--lumo-root", "nowhere"],
                      ["--log-handler", "text/plain no-such-program x"]]:
            with self.subTest(words):
                self.assertIn(self.outcome("--auto-deploy-root", "D", "--extract-root", "E", *words * 300), (0, 8, 3, 1))


unittest.main()
