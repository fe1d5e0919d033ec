#!/usr/bin/env python3
"""Asks `orvane-config preflight` about ports and hosts, and lets the example server take them:
preflight_network_test.py [--server SERVER] TOOL..."""
import contextlib, os, socket, subprocess, sys, tempfile, time, unittest
from pathlib import Path

import tool_schemas

SERVER = sys.argv[2] if sys.argv[1] == "--server" else None
TOOL = sys.argv[3:] if SERVER else sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
REQUIRED = ["--auto-deploy-root", "D", "--extract-root", "E"]
CERTIFICATE = ["--x509-private-key", "k", "--x509-cert-chain", "c"]
# Where root runs the tests, its privileges are taken away.
AS_NOBODY = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups", "--inh-caps=-all"] if HERE and os.geteuid() == 0 else []
# Lets a name server be silent: a machine with only a loopback, and a resolver that asks there.
SILENT_NAMES = r"""
import fcntl, os, socket, struct, subprocess, sys
server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
fcntl.ioctl(server, 0x8914, struct.pack("16sh14x", b"lo", 1))  # switches the loopback on
server.bind(("127.0.0.1", 53))
open("resolv", "w").write("nameserver 127.0.0.1\noptions timeout:30\n")
subprocess.run(["mount", "--bind", "resolv", os.path.realpath("/etc/resolv.conf")], check=True)
sys.exit(subprocess.run(sys.argv[1:]).returncode)
"""


def preflight(*words, prefix=(), groups="listeners,caches"):
    words = [*prefix, *TOOL, "preflight", "--json", "--only", groups, *words]
    done = subprocess.run(words, capture_output=True, timeout=60, check=False)
    assert done.stdout, done
    return tool_schemas.answer("preflight", done.stdout)["findings"]


def found(*words, **more):
    """What was found besides what is fine, as "flag id", and the texts."""
    findings = preflight(*words, **more)
    findings = [one for one in findings if one["severity"] != "fine"]
    return {f"{one.get('flag', '')[2:]} {one['id']}" for one in findings}, " / ".join(one["what"] + " > " + one["advice"] for one in findings)


def starts(*flags, prefix=()):
    """Whether the example server publishes everything that it listens on."""
    with tempfile.TemporaryDirectory() as run:
        os.chmod(run, 0o777)
        names = {name.split("-")[0] for name in ("http", "https", "control-port", "http-linger-threshold") if "--" + name in flags}
        server = subprocess.Popen([*prefix, SERVER, *flags, "--endpoint-root", run], stderr=subprocess.DEVNULL)
        deadline = time.monotonic() + 30
        while server.poll() is None and not names <= set(os.listdir(run)):
            assert time.monotonic() < deadline, flags
            time.sleep(0.01)
        started = server.poll() is None
        server.terminate(), server.wait()
    return started


def listener(address, port=0):
    family = socket.AF_INET6 if ":" in address else socket.AF_INET
    server = socket.socket(family)
    if HERE:
        server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    if family == socket.AF_INET6:
        server.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 1)
    server.bind((address, port))
    server.listen()
    return server


def has_ipv6():
    with contextlib.suppress(OSError):
        listener("::1").close()
        return True
    return False


def available(*words):
    with contextlib.suppress(OSError):
        return subprocess.run(words, capture_output=True, timeout=60, check=False).returncode == 0
    return False


class Network(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))
        os.chmod(".", 0o755)

    def held(self, address, port=0):
        return self.enterContext(listener(address, port)).getsockname()[1]

    def free(self):
        with listener("127.0.0.1") as one:
            return one.getsockname()[1]

    def expect(self, table, **more):
        for line, findings, *texts in table:
            with self.subTest(line):
                words = [*REQUIRED, *line.split()]
                ids, said = found(*words, **more)
                self.assertEqual(ids, {one for one in findings.split(", ") if one}, said)
                for text in texts:
                    self.assertRegex(said, text)
                # The example has no caches, and the files that show its start hold no IPv6 address.
                if SERVER and "cache" not in line and "[" not in line:
                    self.assertEqual(starts(*words, **more), not any(one["severity"] == "blocking" for one in preflight(*words, **more)), said)

    def test_a_port_can_be_had_or_it_is_said_who_has_it(self):
        free, taken = self.free(), self.held("127.0.0.1")
        everywhere = self.held("0.0.0.0")
        me = rf"\(process {os.getpid()}\)" if HERE else "taken"
        self.expect([
            (f"--http {free}", ""), (f"--http 127.0.0.1:{free} --control-port 0 --endpoint-root e", ""), ("--http-linger-threshold 65536", ""),
            (f"--http 127.0.0.1:{taken}", "http port-taken", me),
            (f"--http {taken}", "http port-taken", me),
            (f"--https {taken} {' '.join(CERTIFICATE)}", "https port-taken", me),
            (f"--http 127.0.0.1:{everywhere}", "http port-taken", me, f"which listens on 0.0.0.0:{everywhere}" if HERE else "taken"),
            (f"--control-port {taken} --endpoint-root e", "control-port port-taken"),
            ("--control-port 65536 --endpoint-root e", "control-port no-such-port"),
            ("--http 203.0.113.7:0", "http foreign-address", "127.0.0.1"),
            ("--http no+such+host:1", "http host-not-found"),
        ])

    @unittest.skipUnless(HERE, "there the port is not free at once")
    def test_connections_that_have_ended_do_not_keep_the_port(self):
        with listener("127.0.0.1") as server, socket.create_connection(server.getsockname()):
            server.accept()[0].close()
            port = server.getsockname()[1]
        self.expect([(f"--http 127.0.0.1:{port}", "")])

    @unittest.skipUnless(HERE and has_ipv6(), "there is no IPv6")
    def test_ipv6_counts_where_there_is_any(self):
        taken, both = self.held("::1"), self.held("127.0.0.1")
        self.held("::1", both)
        for address in ["127.0.0.1", "[::1]"]:
            self.assertNotIn("which listens on", found(*REQUIRED, "--http", f"{address}:{both}")[1])
        self.expect([(f"--http [::1]:{taken}", "http port-taken"), (f"--http {taken}", "http other-address", "Clients that use IPv6"),
                     (f"--http [::1]:{self.free()}", ""), ("--http [::1]:0 --endpoint-root e", "http unreadable-endpoint"),
                     ("--http [2001:db8::1]:0", "http foreign-address")])

    def test_addresses_are_compared_not_texts(self):
        port = self.free()
        for http, https, finding in [("", "127.0.0.1:", "address-clash"), ("0.0.0.0:", "localhost:", "address-clash"), ("localhost:", "127.0.0.1:", "clash"),
                                     ("127.0.0.1:", "[::1]:", ""), ("", "[::1]:", "possible-clash")]:
            if "::" in https and not (HERE and has_ipv6()):
                continue
            words = [*REQUIRED, "--http", f"{http}{port}", "--https", f"{https}{port}", *CERTIFICATE]
            ids, said = found(*words)
            self.assertRegex(" ".join(ids), f"^https (address-|possible-)?{finding}$" if finding else "^$", (http, https, said))
            if SERVER and "[" not in https:
                self.assertEqual(starts(*words), "https address-clash" not in ids, (http, https, said))
        endpoint = f"--control-port {port} --endpoint-root e"
        self.expect([(f"--http {port} {endpoint}", "control-port address-clash"), (f"--http localhost:{port} {endpoint}", "control-port address-clash"),
                     (f"--start-cache a@{port} --http {port}", "start-cache address-clash", f"--http {port}"),
                     (f"--start-cache a@{port} --start-cache b@127.0.0.1:{port}", "start-cache address-clash"),
                     (f"--http 0 --https 0 {' '.join(CERTIFICATE)}", "")])

    def test_caches_are_contacted_only_when_asked(self):
        server = self.enterContext(listener("127.0.0.1"))
        taken, free = server.getsockname()[1], self.free()
        server.setblocking(False)
        self.expect([(f"--start-cache a@{free} --attach-cache a@{taken}", ""), (f"--start-cache a@{taken}", "start-cache port-taken"),
                     ("--attach-cache a@0", "attach-cache no-such-port"), ("--attach-cache a@x..y:1", "attach-cache host-not-found")])
        self.assertRaises(BlockingIOError, server.accept)
        self.assertEqual(found("--network", *REQUIRED, "--attach-cache", f"a@127.0.0.1:{taken}"), (set(), ""))
        server.accept()[0].close()
        self.assertEqual(found("--network", *REQUIRED, "--attach-cache", f"a@127.0.0.1:{free}")[0], {"attach-cache cache-silent"})

    @unittest.skipUnless(HERE, "a full queue refuses connections there")
    def test_a_cache_that_does_not_answer_is_given_up(self):
        with socket.socket() as full, contextlib.ExitStack() as clients:
            full.bind(("127.0.0.1", 0))
            full.listen(0)
            for _ in range(4):
                client = clients.enter_context(socket.socket())
                client.setblocking(False)
                client.connect_ex(full.getsockname())
            self.assertEqual(found("--network", *REQUIRED, "--attach-cache", f"a@127.0.0.1:{full.getsockname()[1]}")[0], {"attach-cache cache-silent"})

    @unittest.skipUnless(HERE and available(*AS_NOBODY, *TOOL, "version"), "there is no other user, or not for this program")
    def test_a_user_without_privileges_is_told_what_it_cannot_do(self):
        first = int(Path("/proc/sys/net/ipv4/ip_unprivileged_port_start").read_text())
        if first > 1:
            self.expect([("--http 127.0.0.1:1", "http privileged-port", f"below {first}.*CAP_NET_BIND_SERVICE")], prefix=AS_NOBODY)
        if AS_NOBODY:
            self.expect([(f"--http {self.held('127.0.0.1')}", "http port-taken", "user with ID 0.*To see which program")], prefix=AS_NOBODY)

    @unittest.skipUnless(HERE and available("unshare", "-rmn", "true"), "there are no namespaces for this user")
    def test_a_silent_name_server_is_given_up(self):
        namespace = ["unshare", "-rmn", sys.executable, "-c", SILENT_NAMES]
        _, said = found(*REQUIRED, "--http", "a.example.org:1", "--https", "b.example.org:1", *CERTIFICATE, prefix=namespace, groups="listeners")
        self.assertEqual(said.count("did not answer"), 2, said)


unittest.main()
