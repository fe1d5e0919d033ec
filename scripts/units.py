"""units.py TEST.py ARGUMENTS...: prints the names of the units of a Python test, Class.method.
units.py --only UNIT TEST.py ARGUMENTS...: runs one of them, up to its first failure.

The tests take their arguments from the command line, so unittest's own selection cannot be reached there.
"""
import os, runpy, sys, unittest

only = sys.argv[2] if sys.argv[1] == "--only" else None
sys.argv = sys.argv[3 if only else 1:]
sys.path[0] = os.path.dirname(os.path.abspath(sys.argv[0]))


def names(tests):
    for test in tests:
        if isinstance(test, unittest.TestSuite):
            yield from names(test)
        else:
            yield test.id().split(".", 1)[1]


class Program(unittest.TestProgram):
    def __init__(self):
        if only:
            return super().__init__(defaultTest=only, failfast=True)
        print(*names(unittest.defaultTestLoader.loadTestsFromModule(sys.modules["__main__"])), sep="\n")


unittest.main = Program
runpy.run_path(sys.argv[0], run_name="__main__")
