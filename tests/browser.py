"""A browser without a window, for tests of pages: Chromium, told what to do over two pipes."""
import json, os, select, subprocess, tempfile
from pathlib import Path

OPTIONS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
           "--disable-component-update", "--disable-sync", "--hide-scrollbars", "--remote-debugging-pipe"]


class Browser:
    """One page, which goes from address to address."""

    def __init__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        read, self.commands = os.pipe()
        self.answers, write = os.pipe()
        # The browser reads from descriptor 3 and writes to 4.
        command = ["sh", "-c", f'exec "$@" 3<&{read} 4>&{write}', "sh", "chromium", *OPTIONS, f"--user-data-dir={self.profile.name}", "about:blank"]
        self.process = subprocess.Popen(command, pass_fds=(read, write), stderr=subprocess.DEVNULL)
        os.close(read), os.close(write)
        self.rest, self.number, self.session, self.events = b"", 0, None, []
        page, = [one for one in self.ask("Target.getTargets")["targetInfos"] if one["type"] == "page"]
        self.session = self.ask("Target.attachToTarget", targetId=page["targetId"], flatten=True)["sessionId"]
        self.ask("Page.enable")
        # As if it had a window in front of a user: without it, nothing gets the focus.
        self.ask("Emulation.setFocusEmulationEnabled", enabled=True)

    def close(self):
        self.session = None
        self.ask("Browser.close")
        self.process.wait(60)
        os.close(self.commands), os.close(self.answers)
        self.profile.cleanup()

    def receive(self):
        while b"\0" not in self.rest:
            if not select.select([self.answers], [], [], 60)[0]:
                raise TimeoutError("the browser does not answer")
            more = os.read(self.answers, 1 << 20)
            if not more:
                raise EOFError("the browser has ended")
            self.rest += more
        message, self.rest = self.rest.split(b"\0", 1)
        return json.loads(message)

    def ask(self, method, **parameters):
        self.number += 1
        session = {"sessionId": self.session} if self.session else {}
        os.write(self.commands, json.dumps({"id": self.number, "method": method, "params": parameters, **session}).encode() + b"\0")
        while (message := self.receive()).get("id") != self.number:
            self.events.append(message.get("method"))
        if "error" in message:
            raise RuntimeError(f"{method}: {message['error']['message']}")
        return message["result"]

    def open(self, path):
        self.events.clear()
        self.ask("Page.navigate", url=Path(path).absolute().as_uri())
        while "Page.loadEventFired" not in self.events:
            self.events.append(self.receive().get("method"))

    def run(self, expression):
        """The value of an expression of JavaScript in the page, which may be a promise."""
        answer = self.ask("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"].get("exception", {}).get("description", answer))
        return answer["result"].get("value")

    def show(self, width=1280, dark=False):
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=800, deviceScaleFactor=1, mobile=False)
        scheme = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self.ask("Emulation.setEmulatedMedia", features=[scheme])
