#!/usr/bin/env python3
"""Spoils values, and judges by the library's record whether what `fix` prints means what was typed: tool_fixes_test.py TOOL..."""
import itertools, json, os, random, re, shlex, shutil, subprocess, sys, tempfile, unittest
from fractions import Fraction
from pathlib import Path

import many_lines
from tables import words_of_powershell

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
LINES = 4000 if many_lines.PROGRAM else 30
FILES = 400 if HERE or many_lines.PROGRAM else 30
SIZES = {"": 1, "K": 1 << 10, "MB": 1 << 20, "GiB": 1 << 30, " mb": 1 << 20, "k": 1 << 10, " GB": 1 << 30}
TIMES = {"s": 10**6, "m": 60 * 10**6, "h": 3600 * 10**6, "ms": 1000, " seconds": 10**6, "min": 60 * 10**6, "d": 86400 * 10**6}
# Of each: flags, one of them other servers', units, and how the record has it.
AMOUNTS = [(["--log-rotation-size", "--max-log-size"], SIZES, lambda record: record["log_rotation_size"]),
           (["--num-workers", "--workers"], {"": 1}, lambda record: record["num_workers"]),
           (["--request-timeout", "--timeout"], TIMES, lambda record: record["request_timeout"]["microseconds"])]
ADDRESSES = """web:{p} web {p}|web,{p}|{p}:web|http://web:{p}/|web : {p}|web:{p}/|"web:{p}"|web:{p},|web;{p}|[::1] {p}|127.0.0.1,{p}|
    127.0.0.1 {p}|web:{p}/{q}/""".replace("\n    ", "")
NO_ADDRESSES = """8,{p}|{p},{q}|{p}-{q}|0x{p}|{p}O|{p}%|{p} {q}|http|web:http|unix:/run/{p}.sock|http://a:{p};http://b:{q}|web:{p} {q}|web:{p},{q}|
    https://web:{p}|1.2.3:{p}%|{p}..{q}|web:+{p}x|eighty""".replace("\n    ", "")
WAYS = [lambda c, f, v: [f, v], lambda c, f, v: [f + "=" + v], lambda c, f, v: [f + " " + v], lambda c, f, v: [f + " " + v + " \\"],
        lambda c, f, v: [f, *v.split()], lambda c, f, v: [f[:-3] + f[-2:], v], lambda c, f, v: [f + ":", v], lambda c, f, v: [f, '"' + v + '"'],
        lambda c, f, v: [f, v + ","], lambda c, f, v: [f, "=", v], lambda c, f, v: [f, v, "--foo", "81"], lambda c, f, v: [v, f],
        lambda c, f, v: [f, v, "stray82"], lambda c, f, v: (f + "=" + v).split(), lambda c, f, v: [f + " " + v + "\\n--wait"],
        lambda c, f, v: [f, f, v], lambda c, f, v: [f, v, "&&", "x83"]]

# Values of which the server takes nearly any text, and what gets into them on the way; of the second, nobody knows what was meant.
TEXTS = [("--driver", "nice -n 5"), ("--log-root", "/srv/my log"), ("--user-data", "site primary"), ("--http", "web:8080"), ("--profile", "on cpu"),
         ("--attach-cache", "redis@h1:6379"), ("--cors-allowed-origins", "https://a,https://b:81"), ("--ssl-ciphers", "HIGH"), ("--pid-root", "/run/80")]
DIRT = [lambda v, i: f'"{v}"', lambda v, i: f"'{v}'", lambda v, i: f"\u201c{v}\u201d", lambda v, i: v + ",", lambda v, i: v + ";", lambda v, i: v + "\r",
        lambda v, i: v + "\n", lambda v, i: " " + v, lambda v, i: v + "\t", lambda v, i: "=" + v, lambda v, i: v + "\u00a0", lambda v, i: "\ufeff" + v,
        lambda v, i: v[:i] + "\u200b" + v[i:], lambda v, i: v[:i] + "\u00ad" + v[i:], lambda v, i: f"\x1b[1m{v}\x1b[0m"]
UNSURE = [lambda v, i: '"' + v, lambda v, i: v + "'", lambda v, i: v[:i] + "\b" + v[i:], lambda v, i: v + "\r" + v, lambda v, i: f"<{v}>",
          lambda v, i: v + "\u00a0--wait", lambda v, i: f"{v},{v},", lambda v, i: f'"{v}" "{v}"', lambda v, i: "$" + v, lambda v, i: v + "\x1b[1/",
          lambda v, i: v[:i] + "\u2028" + v[i:], lambda v, i: v[:i] + "\u202e" + v[i:], lambda v, i: v + "\u0434\u200c"]
# Others: what is typed, and what was meant; None: nobody knows.
OTHERS = [("--http", "http://web:8080", "web:8080"), ("--http", "*:8080", "8080"), ("--http", "https://web:8443", None), ("--http", "http://u:1@web:80", None),
          ("--http", "web:1:2", None), ("--http", "fe80::1:81", None), ("--http", "web:-1", None), ("--request-timeout", "90m", "01:30:00"),
          ("--request-timeout", "1h 30s", "01:00:30"), ("--request-timeout", "30s", "00:00:30"), ("--request-timeout", "90", None),
          ("--request-timeout", "80%", None), ("--num-workers", "-1", None), ("--cors-allowed-origins", "https://a, https://b/", "https://a, https://b"),
          ("--cors-allowed-origins", "https://a/x", None), ("--profile", "ON cpu", "on cpu"), ("--profile", "1", None), ("--user-data", "k a;", None),
          ("--log-root", "/k\u00a0--wait", None)]


def number(chance, unit):
    """A number as it is typed somewhere, and its value; None: it can be read in two ways, or is none."""
    a, b, c = chance.randrange(1, 30), chance.randrange(100, 1000), chance.randrange(100, 1000)
    tenths, groups, thousands = Fraction(c % 10, 10), a * 10**6 + b * 1000 + c, a * 1000 + b
    return chance.choice([
        (f"{a}", a), (f"{a}.{c % 10}", a + tenths), (f"{a},{c % 10}", a + tenths), (f"0,{b}", Fraction(b, 1000)), (f".{c % 10}", tenths),
        (f"{a},{b}", None if unit else thousands), (f"{a}.{b}", a + Fraction(b, 1000) if unit else None),
        (f"{a},{b},{c}", groups), (f"{a}.{b}.{c}", groups), (f"{a}_{b}", thousands), (f"{a}'{b}", thousands), (f"{a} {b}", thousands),
        (f"{a},{b}.{c % 10}", thousands + tenths), (f"{a}.{b},{c % 10}", thousands + tenths),
        *((text, None) for text in (f"{a}%", f"0x{a}", f"{a}-{c}", f"{a}..{c}", f"{a};{c}", f"{a}/{c}", f"~{a}", f"{a}O", f"{a},,{b}", f"{a},{b},{a}",
                                    "half", "four", "auto", "unlimited", f"{a} or {c}", f"{a}.{b}.{a}", f"-{a}", f"{a}b{c}"))])


def spoilt(chance):
    """A flag and a value, what they mean, and how the record has that."""
    if chance.random() < 0.3:
        p, q = chance.randrange(1000, 9000), chance.randrange(1000, 9000)
        known = chance.random() < 0.5
        value = chance.choice((ADDRESSES if known else NO_ADDRESSES).split("|")).format(p=p, q=q)
        host = re.search(r"web|127\.0\.0\.1|\[::1\]", value)
        return chance.choice(["--http", "--listen"]), value, (host[0], p) if known else None, lambda record: (record["http"]["host"], record["http"]["port"])
    flags, units, recorded = chance.choice(AMOUNTS)
    unit, size = chance.choice([*units.items()])
    text, value = number(chance, unit)
    amount = None if value is None or (size == 1 and value % 1) else value * size
    return chance.choice(flags), text + unit, amount, recorded


def laid_out(chance, parts, form, break_):
    """The tokens of each part as somebody has typed them into a file, with comments, and its lines on which nothing is wrong."""
    text, kept, notes = chance.choice(["", "", "\ufeff"]), [], itertools.count()
    for right, tokens in parts:
        for _ in range(chance.choice([0, 0, 1, 2]) if form != "sh" or text in ("", "\ufeff") else 0):
            kept.append(chance.choice(["", f"# note{next(notes)} --wait 'x", f"  # note{next(notes)}"]))
            text += kept[-1] + break_
        line = chance.choice(["", "  "]) if form != "lines" else ""
        for i, token in enumerate(tokens):
            begins = form == "flags" and token.startswith("--") and shlex.quote(token) == token and (i == 0 or chance.random() < 0.8)
            quoted = f'"{token}"' if not begins and re.fullmatch("[-\\w ./:=,]+", token) and chance.random() < 0.5 else shlex.quote(token)
            between = break_ if begins or form == "lines" else chance.choice([" ", " ", "   ", f" \\{break_}    "])
            line += between * (i > 0) + (token if form == "lines" else quoted)
        line += {"sh": " \\" * (tokens is not parts[-1][1]), "flags": chance.choice(["", "", "  ", f" # note{next(notes)} it's"])}.get(form, "")
        text += line + break_
        kept += [line] if right else []
    return text if chance.random() < 0.8 else text.removesuffix(break_), kept


class Files(unittest.TestCase):
    def fix(self, *words):
        return many_lines.run(TOOL, "fix", *words)

    def test_only_what_was_wrong_changes_in_a_file(self):
        written = refused = 0
        file = many_lines.folder() / "some flags"
        for seed in range(FILES):
            chance = random.Random(seed)
            parts = [(True, ["--auto-deploy-root", "/srv/d84"]), (True, ["--num-threads", "85"]), (True, ["--extract-root", "/srv/d 86"])]
            for _ in range(chance.choice([1, 1, 2, 3])):
                flag, value, meaning, _ = spoilt(chance)
                dirt = chance.choice(DIRT + UNSURE[:3])
                if meaning is None or chance.random() < 0.3:
                    flag, value = chance.choice(TEXTS)
                elif chance.random() < 0.8:
                    dirt = lambda v, i: v
                parts.insert(chance.randrange(1, 4), (False, chance.choice(WAYS)(chance, flag, dirt(value, 1))))
            form = chance.choice(["flags", "flags", "lines", "sh"])
            break_ = chance.choice(["\n", "\n", "\r\n"]) if form != "sh" else "\n"
            text, kept = laid_out(chance, parts, form, break_)
            file.write_bytes(text.encode())
            os.chmod(file, chance.choice([0o600, 0o640, 0o755]))
            before, mode = file.read_bytes(), os.stat(file).st_mode
            words = [*["--from-format", form] * (form != "flags"), str(file)]
            tokens = many_lines.run(TOOL, "convert", "--to", "json", *words)[1]
            if not tokens or json.loads(tokens) != [token for _, part in parts for token in part]:
                continue  # what a file of this form cannot hold
            line = self.fix("--to", "json", *words)
            code, _, said = self.fix("--in-place", *words)
            after = file.read_bytes()
            with self.subTest(seed, said=said, text=text, after=after.decode()):
                self.assertEqual((os.stat(file).st_mode if HERE else mode, os.listdir(file.parent)), (mode, [file.name]))
                if before == after and code:
                    refused += 1
                    self.assertRegex(said, "flags was not changed, because|flags cannot be changed in place: ")
                    self.assertIn(code, [7, line[0]])
                    continue
                written += before != after
                self.assertEqual((code, many_lines.run(TOOL, "check", "--quiet", *words)[0], self.fix("--to", "json", *words)[1]), (0, 0, line[1]))
                self.assertEqual(*(re.findall("note[0-9]+[^\r\n]*", one) for one in [after.decode(), text]))
                self.assertLessEqual(*(len(re.findall(r"(?m)^[ \t]*\r?\n", one)) for one in [after.decode(), text]))
                at = 0
                for one in kept:
                    found = after.find(one.encode(), at)
                    self.assertGreaterEqual(found, at, one)
                    at = found + len(one.encode())
                self.assertLessEqual(b"\n" in after.replace(break_.encode(), b""), "\n" in text.replace(break_, ""))
                if HERE and shutil.which("patch") and seed % 8 == 0:
                    file.write_bytes(before)
                    patch = subprocess.run([*TOOL, "fix", "--diff", *words[:-1], file.name], cwd=file.parent, capture_output=True, check=False).stdout
                    subprocess.run(["patch", "--silent", "--no-backup-if-mismatch", "-p0"], input=patch, cwd=file.parent, check=True)
                    self.assertEqual(file.read_bytes(), after)
        self.assertGreater(written, FILES / 3)
        self.assertGreater(refused, FILES / 10)

    @unittest.skipUnless(HERE, "links and rights are others there")
    def test_a_file_keeps_its_place_and_its_rights(self):
        with tempfile.TemporaryDirectory() as folder:
            file, link, other = (Path(folder, name) for name in ["flags", "link", "other"])
            file.write_text("--auto-deploy-root /D\n--wait=1\n--http 1\n"), link.symlink_to("flags")
            os.setxattr(file, "user.note", b"x"), os.chmod(file, 0o4751)
            if os.geteuid() == 0:
                os.chown(file, 65534, 65533), os.chmod(file, 0o4751)
            before = os.stat(file)
            other.hardlink_to(file)
            self.assertRegex(str(self.fix("--in-place", str(link))), r"^\(7, .*it has 2 hard links, and the others would keep the old content")
            other.unlink()
            self.assertEqual((self.fix("--in-place", str(link))[0], link.is_symlink()), (0, True))
            self.assertEqual(file.read_text(), "--auto-deploy-root /D\n--wait\n--http 1\n")
            after = os.stat(file)
            self.assertEqual([(one.st_mode, one.st_uid, one.st_gid) for one in [before, after]], [(before.st_mode, before.st_uid, before.st_gid)] * 2)
            self.assertEqual((os.getxattr(file, "user.note"), sorted(os.listdir(folder))), (b"x", ["flags", "link"]))
            self.assertNotEqual(before.st_ino, after.st_ino)
            # What is right is not written.
            self.assertEqual((self.fix("--in-place", str(link))[0], os.stat(file).st_ino), (0, after.st_ino))


class Fixes(unittest.TestCase):
    def ask(self, words):
        return json.loads(many_lines.run(TOOL, "check", "--format", "json", *words)[1])

    def test_a_fix_means_what_was_typed(self):
        fixed = known = 0
        for seed in range(LINES):
            chance = random.Random(seed)
            flag, value, meaning, recorded = spoilt(chance)
            typed = chance.choice(WAYS)(chance, flag, value)
            words = ["--auto-deploy-root", "/srv/d84", *typed, "--num-threads", "85", "--user-data", "zone86 east"]
            if self.ask(words)["accepted"]:
                continue
            code, line, said = many_lines.run(TOOL, "fix", *words)
            with self.subTest(shlex.join(words), line=line):
                advice = "\n".join(re.findall("^ {4}(.*)", said, re.M))
                final = (shlex.split if HERE else words_of_powershell)(line)
                if (meaning is None or isinstance(meaning, tuple)) and "<value>" not in line:
                    # Every number is there, or is named.
                    for word in re.findall(r"\w*\d\w*", " ".join(typed).replace("\\n", " ")):
                        self.assertIn(word, line + advice)
                self.assertIn("--foo", [*final, *[word for word in ["--foo"] if word not in typed]])
                if code in (0, 3):
                    record = self.ask([word.replace("<value>", "9") for word in final])["settings"]
                    self.assertEqual((record["num_threads"], record["user_data"]), (85, [{"key": "zone86", "value": "east"}]))
                    self.assertEqual("--wait" in " ".join(typed), record["wait_mode"])
                known += meaning is not None
                if code == 0:
                    fixed += 1
                    found = recorded(record)
                    right = found == meaning or meaning is not None and isinstance(found, int) and abs(found - meaning) < 1
                    # Else the server takes the value as it was typed, and there is a warning.
                    self.assertTrue(right or value in final and f"{shlex.quote(value)}: ".replace("'", "") in said.replace("'", ""), (found, meaning))
        self.assertGreater(fixed, known / 2)
        # Nothing that looks like a flag is joined to a value, though the server would take it.
        self.assertEqual(many_lines.run(TOOL, "fix", *"--auto-deploy-root D --user-data k --foo".split())[:2],
                         (1, "--auto-deploy-root D --user-data <value> --foo\n"))

    def test_what_is_taken_with_a_warning_becomes_what_was_meant_or_stays(self):
        spoilt = [(flag, dirt(value, place), None if dirt in UNSURE else value, True)
                  for flag, value in TEXTS for dirt in DIRT + UNSURE for place in [1, len(value) - 1]]
        spoilt += [(flag, dirt(other(value, 2), 1), value, False) for flag, value in TEXTS[1:] for dirt in DIRT for other in DIRT]
        repaired = 0
        for flag, typed, meant, once in [(*other, True) for other in OTHERS] + random.Random(1).sample(spoilt, min(LINES, len(spoilt))):
            words = ["--auto-deploy-root", "/srv/d84", flag, typed, "--user-data", "zone86 east"]
            before, right = self.ask(words), self.ask([*words[:3], meant or typed, *words[4:]])
            warned = any(warning.get("token") == 4 for warning in before["warnings"])
            if not before["accepted"] or not warned or meant and before["settings"] == right["settings"]:
                continue
            code, line, said = many_lines.run(TOOL, "fix", "--to", "json", *words)
            final = json.loads(line)
            with self.subTest(typed, flag=flag, said=said):
                self.assertEqual((code, final[:3], final[4:]), (0, words[:3], words[4:]))
                self.assertEqual(final[3] != typed, "corrected: token 4:" in said)
                if meant and self.ask(final)["settings"] == right["settings"]:
                    repaired += 1
                    continue
                self.assertTrue(final == words or meant, final)
                # A command may need its quotes, and the text of an entry may end with anything.
                self.assertTrue(not meant or not once or flag in ("--driver", "--user-data"), final)
                self.assertIn("warning: token 4:", said)
        self.assertGreater(repaired, 5 if LINES < 100 else 500)


unittest.main()
