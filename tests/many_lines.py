"""Runs the tool for one command line after another, in one process if there is a program for that (many_lines.cpp)."""
import functools, os, subprocess, sys, tempfile, unittest
from pathlib import Path

PROGRAM = os.environ.get("ZEP_MANY_LINES")


@functools.lru_cache
def process(*emulator):
    started = subprocess.Popen([*emulator, PROGRAM], stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def end():
        with started:
            started.stdin.close()
        assert started.returncode == 0, f"{PROGRAM} ended with {started.returncode}"
    unittest.addModuleCleanup(end)
    return started


def run(tool, *words, data=b""):
    """The exit code, standard output and standard error. The one process has no standard input for each line."""
    if not PROGRAM:
        done = subprocess.run([*tool, *words], input=data, capture_output=True, timeout=300, check=False)
        return done.returncode, *(text.replace(b"\r\n", b"\n").decode() for text in (done.stdout, done.stderr))
    one = process(*tool[:-1])
    one.stdin.write(f"{len(words)}\n".encode() + b"".join(word.encode() + b"\0" for word in words))
    one.stdin.flush()
    said = one.stdout.readline()
    if not said:
        sys.exit(f"{PROGRAM} ended with {one.wait(60)} at {words}")
    code, *sizes = map(int, said.split())
    return code, *(one.stdout.read(size).decode() for size in sizes)


@functools.lru_cache
def folder():
    made = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(made.cleanup)
    return Path(made.name)


def run_with(tool, tokens, verb, *options):
    """The same. Tokens of any kind and number come through a file, or standard input."""
    text = "".join(token + "\0" for token in tokens).encode(errors="surrogatepass")
    if not PROGRAM:
        return run(tool, verb, *options, "--from", "-", data=text)
    file = folder() / "flags"
    file.write_bytes(text)
    return run(tool, verb, *options, "--from", str(file))
