#!/usr/bin/env python3
"""Uses the page as a visitor does, in a browser: page_browser_test.py PAGE [AXE]; with SHOTS=FOLDER it leaves pictures there."""
import base64, json, os, re, shutil, statistics, sys, tempfile, time, unittest, urllib.parse
from pathlib import Path
from xml.etree import ElementTree

from browser import Browser
from tables import lines

PAGE, *AXE = map(Path, sys.argv[1:])
del sys.argv[1:]
SHOTS = os.environ.get("SHOTS")
WRONG = "--auto-deploy-root /srv/deploy --num-worker 4 --http 9910 --no-banner --no-banner"
PLANTED = "<img/src=x/onerror=alert(1)><b>&amp;"
FULL = " ".join("'" + token.replace("'", "'\\''") + "'" for token in lines("full.txt"))
DOCUMENT = Path(__file__).parents[1] / "docs/page.md"
PICTURES = [
    ("--auto-deploy-root /srv/a/b --https h:1 --x509-cert-chain c --x509-private-key k --log-root /srv/a --files-root /srv/ab --start-cache p@9",
     "https: ▼ h:1, private_key_file k, cert_chain_file c, cipher_list ALL, verify_peer_mode no-verify-peer; Caches: list p@9; "
     "Directories: /srv/a  log_root, b  auto_deploy_root, .zep_deployed  extract_root, /srv/ab  files_root"),
    ("--auto-deploy-root /x/.zep_deployed/y --extract-root /x --http 9910",
     "http: ▼ 9910; Directories: /x  extract_root ✕ refused, .zep_deployed/y  auto_deploy_root ✕ refused")]


class Visitor(Browser):
    """Keeps what the page logs and asks for."""

    def __init__(self):
        self.logged, self.requested = [], []
        super().__init__()
        for part in ["Runtime", "Log", "Network", "Accessibility"]:
            self.ask(f"{part}.enable")

    def receive(self):
        message = super().receive()
        if message.get("method") in ("Runtime.consoleAPICalled", "Runtime.exceptionThrown", "Log.entryAdded"):
            self.logged.append(message["params"])
        if message.get("method") == "Network.requestWillBeSent":
            self.requested.append(message["params"]["request"]["url"])
        return message

    def until(self, condition):
        deadline = time.monotonic() + 10
        while not (value := self.run(condition)):
            assert time.monotonic() < deadline, condition
            time.sleep(0.01)
        return value

    def type(self, text):
        self.run("document.getElementById('text').focus(); document.getElementById('text').select()")
        self.ask("Input.insertText", text=text)
        self.checked(text)

    def checked(self, text):
        self.until(f"document.body.dataset.checked === {json.dumps(text)}")

    def press(self, key, code=0, text=None):
        for kind in ["keyDown", "keyUp"]:
            self.ask("Input.dispatchKeyEvent", type=kind, key=key, windowsVirtualKeyCode=code, **({"text": text} if text and kind == "keyDown" else {}))

    def text(self, where):
        return self.run(f"[...document.querySelectorAll({json.dumps(where)})].map(one => one.textContent).join('|')")

    def shot(self, name):
        if SHOTS:
            height = self.run("document.documentElement.scrollHeight")
            clip = {"x": 0, "y": 0, "width": self.run("innerWidth"), "height": min(height, 2400), "scale": 1}
            picture = self.ask("Page.captureScreenshot", clip=clip, captureBeyondViewport=True)["data"]
            Path(SHOTS, name + ".png").write_bytes(base64.b64decode(picture))


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = Visitor()
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.browser.ask("Page.navigate", url="about:blank")
        self.browser.logged.clear(), self.browser.requested.clear()
        self.browser.open(PAGE)
        self.browser.show()
        self.browser.until("document.getElementById('verdict').textContent")

    def tearDown(self):
        self.assertEqual(self.browser.logged, [])
        foreign = [url for url in self.browser.requested if not url.startswith(("blob:", "about:", PAGE.absolute().as_uri()))]
        self.assertEqual(foreign, [])

    def test_a_mistake_is_marked_explained_and_corrected_with_one_click(self):
        self.browser.type(WRONG)
        self.assertEqual(self.browser.text("#marks .fault"), "--num-worker")
        self.assertIn("did you mean --num-workers?", self.browser.text("#remarks"))
        self.browser.run("document.querySelector('#remarks details').open = true")
        self.assertTrue(self.browser.until("document.querySelector('#remarks details p')?.textContent"))
        self.browser.run("document.querySelector('#remarks button').click()")
        self.browser.checked(WRONG.replace("worker ", "workers "))
        self.assertRegex(self.browser.text("#verdict"), "^The server accepts this")
        self.assertIn("--no-banner", self.browser.text("#marks .warning"))
        self.assertRegex(self.browser.text("#settings"), r"num_workers4number of worker processes from --num-workers")

    def test_a_flag_and_its_settings_point_at_each_other(self):
        self.browser.type(WRONG.replace("worker ", "workers "))
        self.browser.run("const text = document.getElementById('text'); text.setSelectionRange(40, 40); text.click()")
        self.browser.until("document.querySelector('#explanation h3')?.textContent === '--num-workers'")
        self.assertEqual((self.browser.text("#settings tr.pointed th"), self.browser.text("#marks .pointed")), ("num_workers", "--num-workers|4"))
        self.browser.run("[...document.querySelectorAll('#settings tr')].find(row => row.textContent.startsWith('http.port')).focus()")
        self.assertEqual(self.browser.text("#marks .pointed"), "--http|9910")

    def test_it_converts_redacts_compares_and_links(self):
        line = "--auto-deploy-root /srv/bob --http 9910"
        self.browser.type(line)
        self.browser.run("document.getElementById('exchange').open = true; form = document.getElementById('form');"
                         "form.value = 'json'; form.dispatchEvent(new Event('change'))")
        self.browser.until("document.getElementById('converted').textContent.startsWith('[')")
        self.assertEqual(json.loads(self.browser.text("#converted")), line.split())
        self.browser.run("const other = document.getElementById('other'); other.value = '--auto-deploy-root /srv/bob --http 9911';"
                         "other.dispatchEvent(new Event('input'))")
        self.browser.until("document.querySelector('#differences table') !== null")
        self.assertEqual(self.browser.text("#differences tr + tr"), "http.port99109911")
        self.browser.run("document.getElementById('machine').open = true")
        self.browser.until("document.querySelector('[data-verb]').textContent")
        self.assertEqual(self.browser.text("[data-verb]"), f"orvane-config preflight {line}|orvane-config status {line}")
        self.browser.run("document.getElementById('redact').click()")
        self.browser.until("/^--auto-deploy-root .srv.x. --http 9910\\s*$/.test(document.body.dataset.checked)")
        for fragment, wanted in [(urllib.parse.quote(WRONG), WRONG), ("%ed%a0%80", "")]:
            self.browser.ask("Page.navigate", url="about:blank")
            self.browser.ask("Page.navigate", url=PAGE.absolute().as_uri() + "#" + fragment)
            self.browser.until("document.getElementById('verdict')?.textContent")
            self.browser.checked(wanted)

    def test_flags_and_known_values_are_completed_while_typing(self):
        for typed, keys, wanted in [("--num-w", ["ArrowDown", "Enter"], "--num-workers "), ('["--log-severity", "inf', ["ArrowUp", "Enter"], None),
                                    ("--log-severity pro", ["ArrowDown", "Enter"], "--log-severity profile "), ("--num-w", ["ArrowDown", "Escape"], "--num-w"),
                                    ("-archive-max", ["ArrowDown", "Enter"], "--log-archive-max-size ")]:
            self.browser.type(typed)
            self.browser.until("!document.getElementById('choices').hidden")
            for key in keys:
                self.browser.press(key, {"ArrowDown": 40, "ArrowUp": 38, "Enter": 13, "Escape": 27}[key])
            self.browser.checked(wanted or '["--log-severity", "information ')
            self.assertTrue(self.browser.run("document.getElementById('choices').hidden"))

    def test_the_server_is_drawn_and_saved(self):
        for line, drawn in PICTURES:
            self.browser.type(line)
            self.assertEqual(self.browser.run("document.querySelector('#picture svg').getAttribute('aria-label')"), drawn)
            self.assertEqual(self.browser.run("document.querySelectorAll('#picture text.wrong').length > 0"), "refused" in drawn)
            self.assertEqual(self.browser.text("#marks .fault"), "|".join(line.split()[:4]) if "refused" in drawn else "")
        self.browser.type(re.search("^    (--auto-deploy-root .*)", DOCUMENT.read_text(), re.M)[1])
        with tempfile.TemporaryDirectory() as folder:
            self.browser.ask("Browser.setDownloadBehavior", behavior="allow", downloadPath=folder)
            self.browser.run("document.getElementById('save').click()")
            deadline = time.monotonic() + 10
            while not (saved := list(Path(folder).glob("*.svg"))) and time.monotonic() < deadline:
                time.sleep(0.05)
            if SHOTS:
                shutil.copy(saved[0], Path(SHOTS, "server.svg"))
            self.assertEqual(saved[0].read_text(), DOCUMENT.with_name("pictures").joinpath("server.svg").read_text())
            self.assertIn("▼ web1:8443", [one.text for one in ElementTree.parse(saved[0]).iter("{http://www.w3.org/2000/svg}text")])

    def test_everything_is_done_with_the_keyboard(self):
        self.browser.type(WRONG)
        for _ in range(20):
            self.browser.press("Tab", 9)
            if self.browser.run("document.activeElement.textContent") == "Correct the text":
                break
        self.browser.press("Enter", 13, "\r")
        self.browser.checked(WRONG.replace("worker ", "workers "))
        self.assertEqual(self.browser.run("document.activeElement.id"), "text")

    def test_nothing_typed_becomes_markup(self):
        for line in [f"--user-data 'k {PLANTED}'", f"--log-root '{PLANTED}'", f"'{PLANTED}'", f"'--{PLANTED}'",
                     f"[Service]\nExecStart=/x {PLANTED}", "\u202e\x01 --wait"]:
            self.browser.type(f"--auto-deploy-root '/{PLANTED}' {line}" if "[" not in line else line)
            self.browser.run("for (const one of document.querySelectorAll('details')) one.open = true")
            self.browser.run(f"other.value = {json.dumps(PLANTED)}; other.dispatchEvent(new Event('input'))")
            time.sleep(0.2)
            inserted = self.browser.run("document.querySelectorAll('main img, #remarks b b, #settings b, #picture b, pre b, #differences b').length")
            self.assertEqual(inserted, 0, line)
            shown = self.browser.text("#remarks, #settings, #picture, #explanation, #converted, #differences, [data-verb]")
            self.assertIn(PLANTED if "img" in line else "\\u202e", shown)
            self.assertNotRegex(shown, "[\u202e\x01]")

    def test_a_keystroke_is_answered_at_once_also_after_a_megabyte(self):
        medians = []
        for text in [FULL, "--wait\n" * 1000]:
            took = []
            self.browser.type(text)
            for letter in range(1, 10):
                self.browser.ask("Input.insertText", text=" ")
                self.browser.checked(text + " " * letter)
                took.append(float(self.browser.run("document.body.dataset.took")))
            medians.append(statistics.median(took))
            print(f"{len(text)} characters: median {medians[-1]:.0f} ms, at most {max(took):.0f} ms", file=sys.stderr)
        self.assertLess(medians[1], 25 * medians[0])  # 1000 flags against 68
        frames = self.browser.run(
            "new Promise(done => { let frames = 0; const all = 'x '.repeat(500000); text.value = all;"
            "text.dispatchEvent(new Event('input')); const frame = () => {"
            "document.body.dataset.checked === all ? done(frames) : requestAnimationFrame(frame); ++frames; }; requestAnimationFrame(frame); })")
        print(f"a megabyte: {frames} frames while it is checked", file=sys.stderr)
        self.assertGreater(frames, 1)  # one comes also when the page waits for the answer

    def test_it_asks_nobody_and_links_whatever_is_typed(self):
        self.assertEqual(self.browser.run("fetch('data:,x').then(() => 'open', () => 'closed')"), "closed")
        self.browser.logged.clear()  # that it was
        self.browser.run("text.value = '--wait \\ud800'; text.dispatchEvent(new Event('input')); document.getElementById('link').click()")
        self.assertTrue(self.browser.until("document.getElementById('note').textContent"))

    def test_it_fits_every_screen(self):
        self.assertLess(PAGE.stat().st_size, 2 << 20)
        self.browser.type(WRONG)
        for width, dark in [(1280, False), (390, True), (390, False), (1280, True)]:
            self.browser.show(width, dark)
            self.assertEqual(self.browser.run("document.documentElement.scrollWidth - innerWidth"), 0)
            self.browser.shot(f"refused-{width}-{'dark' if dark else 'light'}")
            for axe in AXE:
                self.browser.run(axe.read_text() + ";0")
                found = self.browser.run("axe.run({resultTypes: ['violations']}).then(({violations}) =>"
                                         "violations.map(one => [one.impact, one.id, one.nodes[0].html]))")
                self.assertEqual([one for one in found if one[0] in ("serious", "critical")], [])
        self.browser.run("document.getElementById('example').click()")
        self.browser.until("document.getElementById('settings').childElementCount > 3 || document.body.dataset.checked.length > 150")
        time.sleep(0.3)
        self.browser.run("for (const one of document.querySelectorAll('section > details')) one.open = true")
        time.sleep(0.3)
        for width, dark in [(1280, False), (390, True)]:
            self.browser.show(width, dark)
            self.browser.shot(f"example-{width}-{'dark' if dark else 'light'}")


unittest.main()
