#!/usr/bin/env python3
"""Runs docs/operations.md and its examples on a machine with a real systemd: operations_test.py SERVER TOOL. Needs root.

In the page, blocks of the language "console" are run as printed, in order, in one machine. 4711 stands for any number, a line ... for
any lines. Blocks of other languages are not run here.
"""
import difflib, os, re, shlex, shutil, subprocess, sys, tempfile, threading, time, unittest, xml.etree.ElementTree
from pathlib import Path

import yaml

SERVER, TOOL = sys.argv[1:3]
del sys.argv[1:3]
SOURCE = Path(__file__).resolve().parents[1]
EXAMPLES = SOURCE / "examples/operations"
PAGE = (SOURCE / "docs/operations.md").read_text(encoding="utf-8")
LIMIT = 60  # seconds for one command
# The machine ends with this test, even if the test is killed.
NAMESPACES = ["setpriv", "--pdeathsig", "KILL", "unshare", "--mount", "--pid", "--cgroup", "--net", "--uts", "--ipc", "--fork",
              "--kill-child", "--propagation", "private"]


class Machine:
    """The machine of operations_box.sh, with a shell of root in it."""

    def __init__(self, test):
        folder = test.enterContext(tempfile.TemporaryDirectory())
        # A cgroup for its own, so that the machine's systemd does not rearrange that of this one.
        top = next(path for path in map(Path, ("/sys/fs/cgroup/unified", "/sys/fs/cgroup")) if (path / "cgroup.procs").exists())
        group = top / f"operations-{os.getpid()}"
        group.mkdir(exist_ok=True)
        test.addCleanup(self.remove, group)
        built = re.escape(str(Path(TOOL).parents[2]))
        libraries = re.findall(rf"=> ({built}\S+)", subprocess.check_output(["ldd", TOOL], text=True))
        self.box = subprocess.Popen([*NAMESPACES, SOURCE / "tests/operations_box.sh", folder, EXAMPLES, TOOL, SERVER, *libraries],
                                    preexec_fn=lambda: (group / "cgroup.procs").write_text(str(os.getpid())), stdin=subprocess.DEVNULL)
        test.addCleanup(self.box.wait)
        test.addCleanup(self.box.kill)
        self.enter = self.until(self.booted, "the machine did not start")
        self.shell = subprocess.Popen([*self.enter, "/bin/env", "--chdir=/", "/bin/bash"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, encoding="utf-8", env={"PATH": os.environ["PATH"]})
        test.addCleanup(self.shell.communicate)
        test.addCleanup(self.box.kill)  # what still runs in it would keep the shell's output open

    @staticmethod
    def until(look, failure):
        end = time.monotonic() + LIMIT
        while not (found := look()):
            if time.monotonic() > end:
                raise AssertionError(failure)
            time.sleep(0.05)
        return found

    def booted(self):
        assert self.box.poll() is None, "the machine could not be made"
        children = Path(f"/proc/{self.box.pid}/task/{self.box.pid}/children").read_text().split()
        enter = children and ["nsenter", "--target", children[0], "--all", "--root"]
        asked = enter and subprocess.run([*enter, "/bin/systemctl", "is-system-running"], capture_output=True, check=False)
        return enter if asked and asked.returncode == 0 else None

    def remove(self, group):
        """Once the last process is gone, a moment after the first."""
        self.until(lambda: "populated 0" in (group / "cgroup.events").read_text(), "the machine did not stop")
        for path in sorted(group.glob("**/"), key=lambda path: -len(path.parts)):
            path.rmdir()

    def run(self, command):
        """The output, and the exit code."""
        before = "journalctl --sync\n" if command.startswith("journalctl") else ""
        self.shell.stdin.write(f"{before}{{ {command}\n}} </dev/null\nprintf '\\n=end %d\\n' $?\n")
        self.shell.stdin.flush()
        stop = threading.Timer(LIMIT, self.box.kill)
        stop.start()
        lines = []
        for line in self.shell.stdout:
            if line.startswith("=end "):
                stop.cancel()
                return "".join(lines)[:-1], int(line[5:])
            lines.append(line)
        raise AssertionError(f"{command}: no end within {LIMIT} s; it said:\n{''.join(lines)}")

    def expect(self, code, command):
        said, status = self.run(command)
        assert status == code, f"{command} ended with {status}, not with {code}:\n{said}"
        return said


def commands(page):
    """What is typed, and what the page says that it prints."""
    for block in re.findall(r"^```console\n(.*?)^```$", page, re.M | re.S):
        for typed, printed in re.findall(r"^\$ ((?:.*\\\n)*.*)\n((?:(?!\$ ).*\n)*)", block, re.M):
            yield typed, printed


def pattern(printed):
    return re.sub(r"4711", r"\\d+", re.sub(r"^\\\.\\\.\\\.\n", "(?:.*\n)*?", re.escape(printed).replace("\\\n", "\n"), flags=re.M))


def container_of(name):
    """How its server is started, how it is looked for, and the flags; for the others the sample's."""
    if name == "Dockerfile":
        lines = re.findall(r"^(ENTRYPOINT|HEALTHCHECK.*CMD) (\[.*\])$", (EXAMPLES / "container/Dockerfile").read_text(), re.M)
        start, probe = [yaml.safe_load(words) for _, words in lines]
        return [], start, [probe], (EXAMPLES / "flags").read_text()
    data, deployment = yaml.safe_load_all((EXAMPLES / "container/kubernetes.yaml").read_text())
    pod = deployment["spec"]["template"]["spec"]
    first, server = pod["initContainers"][0], pod["containers"][0]
    volumes = {volume["name"]: volume for volume in pod["volumes"]}
    mounts = {mount["mountPath"]: volumes[mount["name"]] for mount in server["volumeMounts"]}
    assert mounts["/etc/orvane"]["configMap"]["name"] == data["metadata"]["name"] and first["volumeMounts"] == server["volumeMounts"]
    return (first["command"] + first["args"], server["command"] + server["args"],
            [server[probe]["exec"]["command"] for probe in ("startupProbe", "readinessProbe", "livenessProbe")], data["data"]["flags"])


@unittest.skipUnless(os.geteuid() == 0 and subprocess.run([*NAMESPACES, "true"], capture_output=True, check=False).returncode == 0,
                     "only root can make namespaces with a machine in them")
class Machines(unittest.TestCase):
    def setUp(self):
        self.machine = Machine(self)

    def prepare(self):
        self.machine.expect(0, "cd /usr/share/doc/orvane-config/examples; install -D flags /etc/orvane/flags;"
                               "install -d /etc/sysusers.d; install systemd/orvane.sysusers.conf /etc/sysusers.d/orvane.conf; systemd-sysusers orvane.conf;"
                               "systemd-tmpfiles --create $PWD/systemd/orvane.tmpfiles.conf")

    def test_the_page_is_true(self):
        for typed, printed in commands(PAGE):
            said, _ = self.machine.run(typed)
            with self.subTest(typed):
                if not re.fullmatch(pattern(printed), said):
                    self.fail("".join(difflib.unified_diff(printed.splitlines(True), said.splitlines(True), "the page", "the machine")))

    def test_containers(self):
        self.prepare()
        root = "setpriv --reuid orvane --regid orvane --clear-groups "
        for name in ("Dockerfile", "kubernetes.yaml"):
            first, start, probes, flags = container_of(name)
            self.machine.expect(0, f"printf %s {shlex.quote(flags)} >/etc/orvane/flags; cd /")
            if first:
                self.machine.expect(0, root + shlex.join(first))
            for ending, status in (("KILL", "true"), ("TERM", "[ $? = 0 ]")):
                # The second one finds what the first one has left, and has its number.
                self.machine.expect(0, f"unshare --pid --fork --mount-proc {root}{shlex.join(start)} >/tmp/said 2>&1 & container=$!")
                inside = "$(cat /proc/$container/task/$container/children)"
                probe = f"nsenter --target {inside} --pid --mount --root env --chdir=/ {root}"
                self.machine.expect(0, f"(for try in {{1..50}}; do sleep 0.1; {probe}{shlex.join(probes[0])} && exit; done; cat /tmp/said; exit 1)")
                self.assertEqual(self.machine.run("cat /run/orvane/main.pid"), ("1", 0), name)
                for words in probes:
                    self.machine.expect(0, probe + shlex.join(words))
                self.machine.expect(0, f"kill -{ending} {inside}; wait $container; {status}")
            self.machine.expect(0, "[ -z \"$(ls /run/orvane)\" ]")

    def test_managers_of_processes_and_of_configurations(self):
        self.prepare()
        supervised = "runuser -u orvane -- " + re.search(r"^\[program.*\ncommand=(.*)$", PAGE, re.M)[1]
        for command in ("init/run", supervised):
            self.machine.expect(0, f"{command} >/tmp/said & orvane-config status --timeout 20 --from /etc/orvane/flags && "
                                   "pkill -F /run/orvane/main.pid orvane-server && wait $!")
        self.machine.expect(0, "cp flags /tmp/good; { cat flags; echo --htp; } >/tmp/bad")
        for name, where in [("ansible.yml", r"validate: (.*%s.*)"), ("puppet.pp", r"validate_cmd => '(.*%.*)'"), ("salt.sls", r"check_cmd: (.*)")]:
            command = re.search(where, (EXAMPLES / "configuration" / name).read_text())[1]
            for file, code in (("/tmp/good", 0), ("/tmp/bad", 1)):
                self.machine.expect(code, re.sub("%s?", file, command) if "%" in command else f"{command} {file}")


class Files(unittest.TestCase):
    def test_the_page_names_every_example(self):
        names = [str(path.relative_to(EXAMPLES)) for path in EXAMPLES.rglob("*") if path.is_file()]
        self.assertGreater(len(names), 12)
        self.assertEqual([name for name in names if name not in PAGE], [])

    @unittest.skipUnless(shutil.which("systemd-analyze"), "systemd-analyze is missing")
    def test_what_the_server_could_do_to_the_machine(self):
        said = subprocess.check_output(["systemd-analyze", "security", "--offline=true", EXAMPLES / "systemd/orvane.service"], text=True)
        exposure = re.search(r"Overall exposure level for orvane.service: (\S+)", said)[1]
        self.assertIn(f"judges the unit with {exposure};", PAGE, said)
        self.assertLess(float(exposure), 1.5)

    def test_tasks_for_windows(self):
        flags = str(EXAMPLES / "windows/flags")
        for name in ("server", "check"):
            task = xml.etree.ElementTree.parse(EXAMPLES / f"windows/orvane-{name}.xml")
            tag = "{http://schemas.microsoft.com/windows/2004/02/mit/task}"
            self.assertEqual(task.find(f".//{tag}Actions").get("Context"), task.find(f".//{tag}Principal").get("id"))
            # Only how it ends is looked at: nothing is published here, and the server cannot be started.
            text = task.find(f".//{tag}Command").text + " " + task.find(f".//{tag}Arguments").text
            program, words = re.fullmatch(r'(?:C:\\Windows\\System32\\cmd.exe /s /c ")?(".*?") (.*?)(?: >>\S+ 2>&1")?', text).groups()
            self.assertIn("orvane-config.exe", program)
            words = shlex.split(words.replace("\\", "/"))
            words = [flags if word == "C:/ProgramData/Orvane/flags" else word for word in words if word != "--preflight"]
            done = subprocess.run([TOOL, *words], capture_output=True, text=True, timeout=LIMIT, check=False)
            self.assertEqual(done.returncode, {"server": 127, "check": 4}[name], done.stderr)


unittest.main()
