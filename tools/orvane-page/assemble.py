#!/usr/bin/env python3
"""Makes the page of its sources and the module: assemble.py MODULE.js PAGE.html"""
import base64, hashlib, re, sys
from pathlib import Path

HERE = Path(__file__).resolve().parent


def as_scope(name):
    """The module as a constant that has what it exports: in one script, each keeps its own names."""
    text = (HERE / f"{name}.js").read_text(encoding="utf-8")
    exported = re.findall(r"(?m)^export (?:async )?\w+ (\w+)", text)
    text = re.sub(r'(?m)^import (\{.*\}) from "\./(\w+)\.js";$', r"const \1 = \2_js;", text)
    return f"const {name}_js = (() => {{\n{re.sub('(?m)^export ', '', text)}\nreturn {{ {', '.join(exported)} }};\n}})();\n"


def joined(*names):
    """Modules as one script: each after those that it imports from."""
    return "".join(map(as_scope, names))


def hash_of(text):
    return f"'sha256-{base64.b64encode(hashlib.sha256(text.encode()).digest()).decode()}'"


def main(module, page):
    parts = {
        "style": (HERE / "page.css").read_text(encoding="utf-8"),
        "script": joined("elements", "asking", "marks", "verdict", "settings", "picture", "exchange", "completing", "page"),
        "worker": module.read_text(encoding="utf-8") + joined("checker", "worker"),
        "wasm": base64.b64encode(module.with_suffix(".wasm").read_bytes()).decode()}
    assert not [name for name in parts if "</script" in parts[name].lower() or "<!--" in parts[name]], "this would end the script"
    # The worker is the page's own text, so its policy is the page's.
    parts["policy"] = "; ".join([
        "default-src 'none'", f"style-src {hash_of(parts['style'])}", f"script-src {hash_of(parts['script'])} 'wasm-unsafe-eval'",
        "worker-src blob:", "base-uri 'none'", "form-action 'none'"])
    text = (HERE / "page.html").read_text(encoding="utf-8")
    page.write_text(re.sub(r"@(\w+)@", lambda found: parts[found[1]], text), encoding="utf-8")


main(*map(Path, sys.argv[1:]))
