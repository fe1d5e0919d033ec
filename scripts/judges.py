"""The tests that `mutate` asks whether they notice a change, and how it asks one."""
import collections, json, os, pathlib, re, resource, shutil, signal, subprocess, sys, time

import mutants

# Whatever a changed program signals, ends or leaves running is in a namespace of its own, which ends with the test.
APART = ["unshare", *([] if os.geteuid() == 0 else ["--user", "--map-root-user"]), "--pid", "--fork", "--kill-child", "--mount-proc"]
Judge = collections.namedtuple("Judge", "name command")


def listed_tests(build):
    return json.loads(subprocess.run(["ctest", "--test-dir", build, "--show-only=json-v1"], capture_output=True, check=True).stdout)["tests"]


def programs_in(command, build):
    """What of the build a test runs, as targets of ninja."""
    inside = [os.path.relpath(word, build) for word in command if word.startswith(f"{build}/")]
    return [name for name in inside if not name.startswith(".") and pathlib.PurePath(name).suffix not in (".txt", ".md")]


def script_of(command):
    """Where in the command of a test the Python test is, if it is one of units."""
    scripts = (at for at, word in enumerate(command) if word.endswith("_test.py") and "\nunittest.main(" in pathlib.Path(word).read_text())
    return next(scripts, None)


def program_of(test):
    """The test program of the library that has a test, whether or not it is built yet; none for other tests."""
    if test["name"].endswith("_NOT_BUILT"):
        return test["name"].removesuffix("_NOT_BUILT")
    command = test.get("command", [])
    return os.path.basename(command[0]) if any(word.startswith("--gtest_filter") for word in command) else None


def targets_of_judges(build, wanted, files):
    """What has to be built for the judges: test programs for the library, what the Python tests run for the tool."""
    targets = set()
    of_tool = {name.startswith("tools/") for name in files}
    for test in listed_tests(build):
        program = program_of(test)
        if program is not None and False in of_tool and re.search(wanted, program):
            targets.add(program)
        elif program is None and True in of_tool and re.search(wanted, test["name"]) and script_of(test["command"]) is not None:
            targets.update(programs_in(test["command"], build))
    return targets


def judges_of(build, wanted, targets):
    """Each test of the programs that were built, and each unit of the Python tests that run them."""
    for test in listed_tests(build):
        command = test.get("command", [])
        script = script_of(command)
        if script is not None and re.search(wanted, test["name"]) and targets.intersection(programs_in(command, build)):
            units = [sys.executable, str(pathlib.Path(__file__).with_name("units.py"))]
            for name in subprocess.run([*units, *command[script:]], capture_output=True, text=True, check=True).stdout.split():
                yield Judge(test["name"] + ": " + name, (*units, "--only", name, *command[script:]))
        elif program_of(test) in targets and not test["name"].endswith("_NOT_BUILT"):
            yield Judge(test["name"], (*command, "--gtest_fail_fast"))


def start(judge, number, limit, place, logged=""):
    """Exit status and processor time of one test with one change. Its files are in a separate directory."""
    place.mkdir(parents=True, exist_ok=True)

    def restrict():
        for number in (signal.SIGINT, signal.SIGQUIT):  # what runs in the background ignores them
            signal.signal(number, signal.SIG_DFL)
        resource.setrlimit(resource.RLIMIT_CPU, (limit, limit + 1))
        resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
        resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 31, 1 << 31))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    environment = dict(os.environ, ZEP_MUTANT=str(number), TMPDIR=str(place), PYTHONDONTWRITEBYTECODE="1")
    if logged:
        environment["ZEP_MUTANT_LOG"] = str(logged)
    process = subprocess.Popen([*APART, *judge.command], cwd=place, env=environment, preexec_fn=restrict, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    # A test that sleeps for ever takes no processor time.
    until = time.monotonic() + 60 + 20 * limit
    while (ended := os.wait4(process.pid, os.WNOHANG))[0] == 0:
        if time.monotonic() > until:
            process.kill()
        time.sleep(0.01)
    process.returncode = ended[1]
    shutil.rmtree(place, ignore_errors=True)
    return ended[1], ended[2].ru_utime + ended[2].ru_stime


def executed_by(judge, place):
    """What a judge does without any change: exit status, seconds, and the first changes of the bodies that it executes."""
    log = place.with_suffix(".log")
    log.parent.mkdir(parents=True, exist_ok=True)
    log.write_bytes(bytes(mutants.BODIES))
    status, seconds = start(judge, 0, 600, place, log)
    executed = {at for at, byte in enumerate(log.read_bytes()) if byte}
    log.unlink()
    if status != 0:  # some tests object to programs that open a file for writing
        status, seconds = start(judge, 0, 600, place)
    return status, seconds, executed
