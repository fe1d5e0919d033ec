#!/usr/bin/env python3
"""Runs what the documents show, and compares what it prints: documents_test.py BUILD VERSION SERVER TOOL

In a console block, `$ ` begins a command, and what follows is its output. A line `...` stands for any number of lines. What
differs from run to run is in VARIES. A command that is not run is in NOT_RUN, and a block of another language in CHECKED_BY.
"""
import json, os, re, shlex, shutil, subprocess, sys, tempfile, unittest
from pathlib import Path

import yaml

from markdown_links import dead_links

BUILD, VERSION, SERVER, TOOL = sys.argv[1:]
del sys.argv[1:]
ROOT = Path(__file__).resolve().parents[1]
DOCUMENTS = {str(path.relative_to(ROOT)): path.read_text() for path in [*ROOT.glob("*.md"), *sorted(ROOT.glob("docs/*.md"))]}

# A documented line and a printed one may differ in the groups of one of these. Within a block, equal texts stay equal.
VARIES = [r"process (\d+)", r"main\.pid running +(\d+) \(\w+\)", r" +ok: /var/log: readable and writable, (\S+ .iB) free",
          r" +blocking: this machine has (\S+ .iB) of memory: too little for this to have an effect \[out-of-reach\]", r" +Set it below (\S+ .iB)\."]

PACKAGES = "needs root and the network; used_by_debian builds and unpacks the packages"
INSTALLED = "needs the installed packages; used_by_find_package builds this example"
WINDOWS = "takes minutes; the stage windows configures, builds and packs in the same way"
STAGE = "a stage of the test command, or all of them"
# Document, what a command begins with, and why it is not run here.
NOT_RUN = [
    ("README.md", "scripts/debian-packages", PACKAGES),
    ("README.md", "apt-get install", PACKAGES),
    ("README.md", "scripts/test", STAGE),
    ("CONTRIBUTING.md", "cmake --preset dev", STAGE),
    ("CONTRIBUTING.md", "ninja -C build/dev", STAGE),
    ("CONTRIBUTING.md", "scripts/test rules dev", STAGE),
    ("docs/adding-a-flag.md", "cmake --build --preset dev", "tests/adding_a_flag.sh follows this page in a copy of the tree"),
    ("docs/adding-a-flag.md", "build/dev/tools/orvane-config/orvane-config explain flags", "changes the tree; the test flags_document compares"),
    ("docs/adding-a-flag.md", "scripts/settings-schema >", "changes the tree; the test tool_reference compares"),
    ("docs/adding-a-flag.md", "ctest --preset dev", STAGE),
    ("docs/getting-started.md", "scripts/debian-packages", PACKAGES),
    ("docs/getting-started.md", "sudo apt-get install", PACKAGES),
    ("docs/getting-started.md", "cmake --preset release", "used_by_find_package installs, and uses what is installed"),
    ("docs/getting-started.md", "cmake --build --preset release", "as above"),
    ("docs/getting-started.md", "cmake --install build/release", "test_an_installed_tree_has_the_paths_that_the_page_names does it with this build"),
    ("docs/getting-started.md", "cp -r /usr/share/doc/", INSTALLED),
    ("docs/getting-started.md", "cmake -S server_startup", INSTALLED),
    ("docs/getting-started.md", "cmake --build server_startup", INSTALLED),
    ("docs/getting-started.md", "g++ -std=c++20", "used_by_pkg_config compiles in this way"),
    ("docs/getting-started.md", "cmake --preset windows", WINDOWS),
    ("docs/getting-started.md", "cmake --build --preset windows", WINDOWS),
    ("docs/getting-started.md", "cpack -G ZIP", WINDOWS),
    ("docs/getting-started.md", "cmake -S CLONE", "used_by_zip builds the example in this way"),
    ("docs/getting-started.md", "cmake --build startup", "used_by_zip builds the example in this way"),
    ("docs/getting-started.md", "cmake --preset visual-studio", "needs Windows"),
    ("docs/getting-started.md", "cmake --build --preset visual-studio", "needs Windows"),
    ("docs/reliability.md", "scripts/fuzz", "takes minutes; the stage scripts runs it for seconds"),
    ("docs/reliability.md", "scripts/mutate", "takes an hour; the stage scripts makes one change"),
    ("docs/operations.md", "", "changes the system; operations_test.py runs this page on a machine made for it"),
]
# Document, language, how a block begins, and what checks it.
CHECKED_BY = [
    ("README.md", "cpp", "#include", "snippets_test"),
    ("docs/adding-a-flag.md", "diff", "--- ", "tests/adding_a_flag.sh"),
    ("docs/design.md", "text", "include/qel/config/", "test_the_picture_of_the_tree_names_what_is_there"),
    *(("docs/editors.md", language, "", "test_editors_and_hooks_find_what_is_wrong") for language in ["vim", "json", "yaml"]),
    ("docs/embedding.md", "cpp", "#include", "snippets_test"),
    ("docs/embedding.md", "gdb", "(gdb) print", "gdb_test.py, which used_by_find_package runs, prints the same"),
    ("docs/formats.md", "ini", "ExecStart=", "test_the_line_of_a_unit_starts_the_server"),
    ("docs/getting-started.md", "cmake", "find_package(", "test_the_lines_for_cmake_configure_a_server"),
    ("docs/getting-started.md", "cmake", "add_subdirectory(", "test_the_lines_for_cmake_configure_a_server"),
    ("docs/getting-started.md", "cmake", "include(GNUInstallDirs)", "test_the_lines_for_cmake_configure_a_server"),
    ("docs/runtime-files.md", "cpp", "namespace config", "snippets_test"),
    ("docs/runtime-files.md", "sh", "# server_pid", "used_by_find_package runs it against a server's files"),
    ("docs/runtime-files.md", "powershell", "# The number of", "nothing: needs PowerShell"),
    ("docs/operations.md", "sh", "cp libzep", "the test operations runs what the image starts"),
    ("docs/operations.md", "sh", "kubectl apply", "the test operations runs what the manifest starts; these lines need a cluster"),
    ("docs/operations.md", "conf", "[program:orvane]", "the test operations runs the command"),
    ("docs/operations.md", "powershell", "icacls", "the test operations runs what the tasks run; these lines need Windows"),
    ("docs/operations.md", "powershell", "shawl add", "nothing: needs Windows, and a program of others"),
]


def blocks(language=None):
    """Document, line number, language and text of every fenced block."""
    for document, text in DOCUMENTS.items():
        for found in re.finditer(r"^```(\w+)\n(.*?)^```$", text, re.M | re.S):
            if language in (None, found[1]):
                yield document, text.count("\n", 0, found.start()) + 2, found[1], found[2]


def steps(text):
    """The commands of a console block, each with the lines that it prints."""
    found = []
    for line in text.splitlines():
        if found and found[-1][0].endswith("\\"):
            found[-1][0] += "\n" + line
        elif line.startswith(("$ ", "> ")):
            found.append([line[2:], []])
        else:
            found[-1][1].append(line)
    return found


def row(table, *key):
    """The number of the first row that begins as the key does, the last part of which may be longer."""
    fitting = (number for number, entry in enumerate(table) if key[:-1] == entry[:len(key) - 1] and key[-1].startswith(entry[len(key) - 1]))
    return next(fitting, None)


def differences(expected, printed, known):
    """Lines of which one is not what the other says. `known` has the texts that vary, and what they are in this run."""
    if "..." in expected:
        at = expected.index("...")
        rest = len(expected) - at - 1
        if len(printed) < at + rest:
            return [(expected, printed)]
        printed = printed[:at] + ["..."] + printed[len(printed) - rest:]
    if len(expected) != len(printed):
        return [(expected, printed)]
    return [pair for pair in zip(expected, printed) if not same(*pair, known)]


def same(expected, printed, known):
    for pattern in VARIES:
        ours, theirs = re.fullmatch(pattern, expected), re.fullmatch(pattern, printed)
        if ours and theirs:
            pairs = [*zip(ours.groups(), theirs.groups())]
            return all((known.setdefault(("shown", a), b), known.setdefault(("printed", b), a)) == (b, a) for a, b in pairs)
    return expected == printed


class Documents(unittest.TestCase):
    def setUp(self):
        self.go_to_a_new_place()

    def go_to_a_new_place(self):
        scratch = Path(self.enterContext(tempfile.TemporaryDirectory()))
        for name, target in [("scripts/orvane-config", TOOL), ("bin/orvane-config", TOOL), ("server_startup/build/server_startup", SERVER)]:
            (scratch / name).parent.mkdir(parents=True)
            (scratch / name).symlink_to(target)
        os.chdir(scratch)

    def printed_by(self, commands):
        """What a shell prints for each of the commands, with the number of lines to wait for if it goes on in the background."""
        script = ["set -m", f"PATH={os.getcwd()}/bin:$PATH", "exec >out 2>&1 </dev/null"]
        for number, (command, lines) in enumerate(commands):
            script += [command.replace("/tmp", os.getcwd()), "status=$?"]
            if command.endswith("&"):
                script.append(f'for _ in {{1..200}}; do [ "$(sed "1,/^end {number - 1}$/d" out | wc -l)" -lt {lines} ] || break; sleep 0.1; done')
            script += [f"echo end {number}", "(exit $status)"]
        Path("out").write_text("end -1\n")
        Path("script").write_text("\n".join(script).replace("exec >out", "exec >>out") + "\n")
        subprocess.run([*ALONE, "bash", "script"], timeout=120, check=False)
        printed = Path("out").read_text().replace(os.getcwd(), "/tmp")
        found = re.split(r"^end \d+\n", printed.removeprefix("end -1\n"), flags=re.M)
        self.assertEqual(len(found), len(commands) + 1, found)
        return [text.splitlines() for text in found[:-1]]

    def test_commands_print_what_the_documents_show(self):
        used, last = set(), ""
        for document, line, _, text in blocks("console"):
            if document != last:
                self.go_to_a_new_place()
                last = document
            run = []
            for command, expected in steps(text):
                listed = row(NOT_RUN, document, command)
                if listed is None:
                    run.append((command, expected))
                else:
                    used.add(listed)
                    self.look_at(command, expected)
            with self.subTest(document, line=line):
                if "preflight" in text and "/var/log" in text and not os.access("/var/log", os.W_OK):
                    self.skipTest("the page shows what root sees in /var/log")
                known = {}
                printed = self.printed_by([(command, len(expected)) for command, expected in run])
                for (command, expected), lines in zip(run, printed):
                    self.assertEqual(differences(expected, lines, known), [], command)
        self.assertEqual([NOT_RUN[i] for i in range(len(NOT_RUN)) if i not in used], [], "no document shows this")

    def look_at(self, command, expected):
        """What can be said of a command that is not run: that there is such a script, preset and package."""
        for script in re.findall(r"^scripts/\S+", command):
            self.assertTrue(os.access(ROOT / script, os.X_OK), command)
        for preset in re.findall(r"--preset (\S+)", command):
            self.assertIn(preset, {one["name"] for one in PRESETS}, command)
        for package, version in re.findall(r"^build/debian/(.*)_(.*)_amd64.deb$", "\n".join(expected), re.M):
            self.assertRegex((ROOT / "debian/control").read_text(), rf"(?m)^Package: {package.removesuffix('-dbgsym')}$")
            self.assertEqual(version, VERSION)

    def test_every_other_block_is_checked_somewhere(self):
        listed = [row(CHECKED_BY, *block[:1], block[2], block[3]) for block in blocks() if block[2] != "console"]
        self.assertNotIn(None, listed, "a block that nothing checks")
        self.assertEqual([CHECKED_BY[i] for i in range(len(CHECKED_BY)) if i not in listed], [], "there is no such block")
        for _, _, _, by in CHECKED_BY:
            self.assertTrue(not by.startswith("test_") or hasattr(self, by), by)

    def test_the_line_of_a_unit_starts_the_server(self):
        (_, _, _, text), = blocks("ini")
        Path("flags.txt").write_text("--auto-deploy-root\nD\n")
        for printed, here in [("/usr/bin/orvane-config", TOOL), ("/etc/orvane", "."), ("/usr/bin/orvane", "echo")]:
            text = text.replace(printed, here)
        done = subprocess.run(shlex.split(text.removeprefix("ExecStart=")), capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout), (0, "--auto-deploy-root D\n"), done.stderr)

    def test_editors_and_hooks_find_what_is_wrong(self):
        (*_, settings), (*_, tasks), (*_, hooks) = [block for block in blocks() if block[0] == "docs/editors.md" and block[2] != "console"]
        task, = json.loads(tasks)["tasks"]
        hook, = yaml.safe_load(hooks)["repos"][0]["hooks"]
        for name, mistake in [("a b.flags", "--http x"), ("right.flags", "--http 1")]:
            Path(name).write_text(f"--auto-deploy-root /D\n {mistake}\n")
            ask = lambda words, **more: subprocess.run(words, capture_output=True, text=True, check=False, **more)
            printed = ask([TOOL, *task["args"][:-1], name]).stdout
            pattern = task["problemMatcher"]["pattern"]
            found = [[line[pattern[part]] for part in ("file", "line", "column", "severity", "code")]
                     for line in re.finditer(pattern["regexp"], printed, re.M)]
            self.assertEqual(found, [[name, "2", "2", "error", "bad-address"]] if " " in name else [])
            path = {**os.environ, "PATH": f"{os.getcwd()}/bin:{os.environ['PATH']}"}
            self.assertEqual(ask([*shlex.split(hook["entry"]), name], env=path).returncode, len(found))
            self.assertRegex(name, hook["files"])
            if shutil.which("vim"):
                Path("vimrc").write_text(settings)
                show = "call writefile(map(getqflist(), {_, one -> join([bufname(one.bufnr), one.lnum, one.col, one.type])}), 'found')"
                ask(["vim", "-N", "-u", "vimrc", "-es", "-c", "silent make!", "-c", show, "-c", "quitall!", name],
                    env=path, stdin=subprocess.DEVNULL, timeout=60)
                self.assertEqual(Path("found").read_text(), "".join(f"{name} 2 2 e\n" for _ in found))

    def test_the_lines_for_cmake_configure_a_server(self):
        package, part, installed = [text for *_, text in blocks("cmake")]
        tested = (ROOT / "tests/use/CMakeLists.txt").read_text().replace("consumer", "server").splitlines()
        self.assertEqual([line for line in package.splitlines() if line not in tested], [], "used_by_find_package does not use this")
        self.assertEqual([line for line in part.splitlines() if line not in installed.splitlines()], [], "this is not tried below")
        Path("zep_config").symlink_to(ROOT)
        Path("server.cpp").touch()
        Path("CMakeLists.txt").write_text("cmake_minimum_required(VERSION 3.25)\nproject(server CXX)\nadd_executable(server server.cpp)\n" + installed)
        done = subprocess.run(["cmake", "-S", ".", "-B", "build"], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_an_installed_tree_has_the_paths_that_the_page_names(self):
        subprocess.run(["cmake", "--install", BUILD, "--prefix", "PLACE"], stdout=subprocess.DEVNULL, check=True)
        named = re.findall(r"\bPLACE/[^`\s]+", DOCUMENTS["docs/getting-started.md"])
        self.assertGreater(len(named), 3)
        self.assertEqual([path for path in named if not Path(path).exists()], [])
        self.assertEqual(list(dead_links(Path("PLACE").rglob("*.md"))), [])

    def test_links_lead_somewhere(self):
        self.assertEqual(list(dead_links(ROOT / name for name in [*DOCUMENTS, "tests/data/README.md"])), [])

    def test_the_picture_of_an_answer_is_what_a_terminal_shows(self):
        drawn = subprocess.run([ROOT / "scripts/picture", TOOL], capture_output=True, text=True, check=True).stdout
        self.assertEqual(drawn, (ROOT / "docs/pictures/check.svg").read_text(), "run scripts/picture TOOL >docs/pictures/check.svg")

    def test_the_page_on_security_has_every_hazard(self):
        kinds = json.loads(subprocess.run([TOOL, "explain", "--format", "json", "ids"], capture_output=True, check=True).stdout)["kinds"]
        rows = [f"| `{one['id']}` | {one['level']} | {one['gain']} | {one['instead']} |\n" for one in kinds if "level" in one]
        self.assertIn("|---|---|---|---|\n" + "".join(rows) + "\n", DOCUMENTS["docs/security.md"])
        said = subprocess.run([TOOL, "explain", "ids"], capture_output=True, check=True, text=True).stdout
        self.assertEqual([one["id"] for one in kinds if "level" in one and f"{one['id']} (hazard, {one['level']}): " not in said], [])

    def test_the_picture_of_the_tree_names_what_is_there(self):
        (_, _, _, text), = blocks("text")
        above = ROOT
        for line in text.splitlines():
            names = re.findall(r"\S+/(?=[ ,]|$)", line)
            self.assertTrue(names, line)
            above = above if line[0] == " " else ROOT / names[0]
            self.assertEqual([name for name in names if not (ROOT / name).is_dir() and not (above / name).is_dir()], [], line)


PRESETS = json.loads((ROOT / "CMakePresets.json").read_text())["configurePresets"]
# The documents name ports. In a network without other programs they are free.
ALONE = ["unshare", "--net", "sh", "-c", 'ip link set lo up && exec "$@"', "sh"]
if subprocess.run([*ALONE, "true"], capture_output=True, check=False).returncode:
    ALONE = []

unittest.main()
