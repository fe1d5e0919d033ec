"""Tables of what preflight finds. A row has no blanks before it. The lines below it, with two spaces before them, say what is found
there: "flag id: what > advice". <words in brackets> stand for any text, $NAME for what the test knows. What is fine is compared only
where it is listed."""
import itertools, json, re, string

from tables import lines


def rows(name):
    """Each row with the lines below it."""
    table = []
    for line in lines(name):
        if line.startswith("  "):
            table[-1][1].append(line.strip())
        else:
            table.append((line, []))
    return table


def name_of(finding, flags):
    """A flag that is given several times is named with its value."""
    flag = (finding.get("flag") or finding["group"]).lstrip("-")
    return f"{flag} {finding['value']}" if flags.count("--" + flag) > 1 and "value" in finding else flag


def compare(test, findings, expected, flags, ids_only=False, fine=False, **known):
    """The same findings with the same texts, in the same order; with `fine`, all that are fine as well."""
    expected = [string.Template(line).safe_substitute(known) for line in expected]
    listed = {line.split(": ")[0] for line in expected}
    said = []
    for one in findings:
        name = f"{name_of(one, flags)} {one['id']}"
        if fine or one["severity"] != "ok" or name in listed:
            said.append(f"{name}: {one['what']}" + (f" > {one['advice']}" if one["advice"] else ""))
    if ids_only:
        said, expected = ([line.split(": ")[0] for line in some] for some in (said, expected))
    wanted = [line if matches(pattern, line) else pattern for pattern, line in itertools.zip_longest(expected, said, fillvalue="")]
    test.assertEqual(said, [line for line in wanted if line])


def check_sound(test, code, answer):
    """What holds whatever the machine: nothing twice, no finding and its opposite, and ready only where all was looked at."""
    counts, severities, said = answer["counts"], {}, []
    for one in answer["findings"]:
        severities.setdefault((one["group"], str(one.get("tokens", one["what"]))), set()).add(one["severity"])
        said.append((one.get("tokens"), one["group"], one["id"], one["what"]))
    test.assertEqual([one for one in said if said.count(one) > 1], [])
    test.assertEqual([subject for subject, those in severities.items() if "ok" in those and those & {"blocking", "unknown"}], [], said)
    severities = [one["severity"] for one in answer["findings"]]
    test.assertEqual(counts, {name: severities.count(name) for name in counts})
    clear = counts["blocking"] + counts["unknown"] == 0
    test.assertEqual((code, answer["ready"]), (0 if clear else 8, clear and all(one["looked_at"] for one in answer["groups"])))


def check_text(test, text, answer):
    """The same answer as text, but for the space that is free, which others change between the two."""
    text, answer = (re.sub(r"[0-9.]+( .iB free)", r"N\1", one) for one in (text, json.dumps(answer)))
    answer = json.loads(answer)
    *_, last = text.splitlines()
    start = ("ready: as user " + answer["user"] if answer["ready"] else "not ready: " if answer["counts"]["blocking"] else
             "not known to be ready: " if answer["counts"]["unknown"] else "nothing found that keeps the server from starting")
    left_out = ", ".join(one["name"] for one in answer["groups"] if not one["looked_at"])
    test.assertEqual((last[:len(start)], last.partition("; not looked at: ")[2], "can start" in text), (start, left_out, answer["ready"]))
    clear = answer["counts"]["blocking"] + answer["counts"]["unknown"] == 0
    test.assertEqual("answer for root" in text, clear and answer["user"] == "root")
    test.assertEqual([one for one in answer["findings"] if one["what"].isprintable() and one["what"] not in text], [])


def matches(pattern, line):
    return re.fullmatch(".+?".join(map(re.escape, re.split("<[a-z ]+>", pattern))), line)
