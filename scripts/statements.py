"""Where functions and statements of C++ sources begin and end, as far as clang-format's layout and brackets tell."""
import re


def blank(text):
    return re.sub(r"[^\n]", " ", text)


RAW = r"\bR\"\(.*?\)\""
QUOTED = r"(?<!\w)u?(?:\"(?:\\.|[^\"\\])*\"|'(?:\\.|[^'\\])+')"


def masked(source, whole_directives):
    """The source with blanks instead of comments and directives, and with masked quoted text; positions stay the same."""
    directive = r"(?:[^\n\\]|\\.)*" if whole_directives else r"[^\n]*"
    pieces = rf"//[^\n]*|/\*.*?\*/|{RAW}|{QUOTED}|^#{directive}"
    return re.sub(pieces, lambda found: blank(found[0]) if found[0][0] in "/#" else "_" * len(found[0]), source,
                  flags=re.S | re.M)


def matching(code, opening):
    """The position after the bracket that closes the one at `opening`."""
    depth = 0
    for at in range(opening, len(code)):
        depth += (code[at] in "({[") - (code[at] in ")}]")
        if depth == 0:
            return at + 1
    raise ValueError("a bracket is not closed")


def bodies(code):
    """(start, end, is a function) of the text between the braces of every function and of every table."""
    at = head = 0
    while (found := re.compile(r"[{};(]").search(code, at)) is not None:
        at = found.end()
        if found[0] == "(":
            at = matching(code, found.start())
        elif found[0] != "{":
            head = at
        else:
            text = re.sub(r"template\s*<.*?>\s(?=[\w\[])", "", code[head:found.start()], flags=re.S).strip()
            text = re.sub(r"^(public|private|protected):\s*", "", text)
            if not re.match(r"(inline\s+)?(namespace|struct|class|enum|union|extern)\b", text) or "enum" in text[:6]:
                at = matching(code, found.start())
                is_function = ")" in text and not text.endswith("=")
                if not text.startswith("consteval"):  # only the compiler executes it
                    yield found.end(), at - 1, is_function
                head = at if is_function else head
            else:
                head = at


def statement_end(code, at):
    """The position after the statement that begins at `at`."""
    skip = lambda at: re.compile(r"\s*").match(code, at).end()
    at = skip(at)
    if code[at] == "{":
        return matching(code, at)
    word = re.compile(r"(if constexpr|if|for|while|switch|try|case\b[^:]*(::[^:]*)*:(?!:)|default:)").match(code, at)
    if word is None or re.match(r"\w", code[word.end()]):
        while code[at] != ";":
            at = matching(code, at) if code[at] in "({[" else at + 1
        return at + 1
    if word[0][-1] == ":":
        return word.end()
    at = skip(word.end())
    if word[0] == "try":
        at = matching(code, at)
        while code.startswith("catch", skip(at)):
            at = matching(code, skip(matching(code, code.index("(", at))))
        return at
    at = statement_end(code, matching(code, at))
    if word[0].startswith("if") and re.compile(r"else\b").match(code, skip(at)):
        at = statement_end(code, skip(at) + 4)
    return at


def blocks(code, start, end):
    """The statements, as (start, end), of every block in a body, and of every branch without braces."""
    openings = [start] + [found.end() for found in re.compile(
        r"(?:[;{})\]]|\b(?:else|try|do|const|mutable|noexcept))\s*\{").finditer(code, start, end)]
    for at in openings:
        stop = end if at == start else matching(code, at - 1) - 1
        statements = []
        while code[at:stop].strip():
            begin = re.compile(r"\s*").match(code, at).end()
            at = statement_end(code, begin)
            statements.append((begin, at))
        yield statements
    for found in re.compile(r"\b(?:if(?: constexpr)?|for|while) (?=\()|\belse\b").finditer(code, start, end):
        at = found.end() if found[0] == "else" else matching(code, found.end())
        at = re.compile(r"\s*").match(code, at).end()
        if code[at] != "{" and not code.startswith("if ", at):
            yield [(at, statement_end(code, at))]
