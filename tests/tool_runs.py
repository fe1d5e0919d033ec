"""What the tests of orvane-config share: they run it in a directory of their own."""
import os, subprocess, sys, tempfile, time, unittest
from pathlib import Path

import tool_schemas

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
PID_FLAGS = ["--auto-deploy-root", "D", "--extract-root", "E", "--pid-root", "."]
FLAGS = [*PID_FLAGS, "--endpoint-root", ".", "--control-port", "9920", "--http", "h:9910"]
# Where root runs the tests, its privileges are taken away.
AS_NOBODY = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups", "--inh-caps=-all"] if HERE and os.geteuid() == 0 else []
main_pid = Path("main.pid")
LOCK = ".orvane-config.lock"


def run(*words, stdout=subprocess.PIPE):
    done = subprocess.run(words, stdout=stdout, stderr=subprocess.PIPE, timeout=60, check=False)
    return done.returncode, *((text or b"").decode().replace("\r\n", "\n") for text in (done.stdout, done.stderr))


def state(*flags):
    code, out, _ = run(*TOOL, "status", "--format", "json", *(flags or FLAGS))
    return f"{tool_schemas.answer('status', out)['state']} {code}"


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
        until(lambda: state(*flags) == "running 0")
        return process

    def expect_end(self, publisher, code, left=()):
        self.assertEqual((publisher.wait(60), os.listdir()), (code, list(left)), publisher.args)


def main(case):
    """Most of the time goes by in waiting, so several processes share the tests. An emulated start takes both processors."""
    names = unittest.defaultTestLoader.getTestCaseNames(case)
    workers = 4 if HERE else 1
    children = []
    for first in range(workers):
        children.append(os.fork())
        if children[-1] == 0:
            unittest.main(argv=[sys.argv[0], *(f"{case.__name__}.{name}" for name in names[first::workers])])
    sys.exit(any([os.waitpid(child, 0)[1] for child in children]))
