#!/usr/bin/env python3
"""Stops the example server with signals, as a terminal and a service manager do: example_test.py SERVER"""
import os, re, signal, subprocess, sys, tempfile, time, unittest
from pathlib import Path

SERVER, = sys.argv[1:]
del sys.argv[1:]
FLAGS = ["--auto-deploy-root", "D", "--pid-root", ".", "--endpoint-root", ".", "--control-port", "0"]


class Example(unittest.TestCase):
    def setUp(self):
        os.chdir(self.enterContext(tempfile.TemporaryDirectory()))

    def start(self, *more, ignoring=()):
        before = {number: signal.signal(number, signal.SIG_IGN) for number in ignoring}
        server = subprocess.Popen([SERVER, *FLAGS, *more], stderr=subprocess.PIPE, text=True)
        for number, handler in before.items():
            signal.signal(number, handler)
        self.addCleanup(lambda: (server.kill(), server.wait(), server.stderr.close()))
        # The control file is the last that is written.
        self.assertIn("controlled on", [server.stderr.readline() for _ in range(2)][-1])
        return server

    def test_each_signal_that_ends_it_leaves_no_files(self):
        for number in [signal.SIGINT, signal.SIGTERM, signal.SIGHUP]:
            with self.subTest(number):
                server = self.start()
                self.assertEqual(sorted(os.listdir()), ["control", "main.pid"])
                server.send_signal(number)
                self.assertEqual((server.wait(60), server.stderr.read(), os.listdir()), (0, "stopped\n", []))

    def test_what_is_to_be_ignored_does_not_end_it(self):
        for number, more, ignoring in [(signal.SIGINT, ["--disable-control-c"], []), (signal.SIGHUP, [], [signal.SIGHUP])]:
            with self.subTest(number):
                server = self.start(*more, ignoring=ignoring)
                ignored = re.search(r"^SigIgn:\s(.*)$", Path(f"/proc/{server.pid}/status").read_text(), re.M)[1]
                self.assertTrue(int(ignored, 16) >> (number - 1) & 1, ignored)
                server.send_signal(number)
                time.sleep(0.2)
                self.assertIsNone(server.poll())
                server.terminate()
                self.assertEqual((server.wait(60), os.listdir()), (0, []))


unittest.main()
