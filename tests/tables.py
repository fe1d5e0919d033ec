"""The tables under data/, and words as they are written there. A table without rows would find nothing, so it ends the program."""
import os, re, shlex
from pathlib import Path

DATA = Path(os.environ.get("ZEP_TEST_DATA") or Path(__file__).resolve().parent / "data")


def lines(name, comment="#"):
    """The lines of a table that are neither empty nor comments."""
    found = [line for line in (DATA / name).read_text(encoding="utf-8").splitlines() if line and not line.startswith(comment)]
    assert found, f"{name} has no rows"
    return found


def rows(name, size, comment="#"):
    """The same, `size` lines at a time, without the blanks that indent them."""
    return [*zip(*[(line.removeprefix("  ") for line in lines(name, comment))] * size, strict=True)]


def words_of(text):
    """Words in a shell's notation, $'...' among them."""
    return shlex.split(re.sub(r"\$'(.*?)'", lambda found: "'" + found[1].encode().decode("unicode_escape") + "'", text))


def unquoted(text):
    """Without what PowerShell and other shells quote differently."""
    return re.sub(r"\$(?=')|['\"]", "", text)


def words_of_powershell(text):
    """Words in PowerShell's notation; a $([char]0x...) is a UTF-16 unit."""
    def read(word):
        parts = re.findall(r"'((?:[^']|'')*)'|\"((?:`.|[^`\"])*)\"|([^\s'\"]+)", word)
        double = (re.sub(r"`(.)|\$\(\[char\](0x\w{4})\)", lambda found: found[1] or chr(int(found[2], 16)), two) for _, two, _ in parts)
        return "".join(one.replace("''", "'") + two + three for (one, _, three), two in zip(parts, double))
    return [*map(read, re.findall(r"(?:'(?:[^']|'')*'|\"(?:`.|[^`\"])*\"|[^\s'\"])+", text))]
