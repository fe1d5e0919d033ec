"""The schemas of the tool's JSON answers: answer(NAME, TEXT) reads an answer and checks it with NAME.json."""
import functools, json, warnings
from pathlib import Path

import jsonschema

SCHEMAS = Path(__file__).resolve().parents[1] / "tools/orvane-config/schemas"

SARIF = Path(__file__).resolve().parent / "sarif.json"  # the official schema is in no package

AT = "http://localhost/"  # only so that one can refer to another; all are in the store


def closed(schema):
    """The schema without room for members that it does not name: programs have to expect new ones, tests do not."""
    if isinstance(schema, list):
        return [closed(one) for one in schema]
    if not isinstance(schema, dict):
        return schema
    more = {"additionalProperties": False} if schema.get("type") == "object" else {}
    return {**more, **{key: closed(value) for key, value in schema.items()}}


@functools.lru_cache
def validator(name):
    read = {path.name: json.loads(path.read_text()) for path in [*SCHEMAS.iterdir(), SARIF]}
    jsonschema.Draft202012Validator.check_schema(read[name + ".json"])
    with warnings.catch_warnings():  # newer versions have another way, Debian's has only this one
        warnings.simplefilter("ignore", DeprecationWarning)
        store = {AT + one: closed(schema) for one, schema in read.items()}
        resolver = jsonschema.RefResolver(AT + name + ".json", store[AT + name + ".json"], store)
    return jsonschema.Draft202012Validator(closed(read[name + ".json"]), resolver=resolver)


def answer(name, text):
    value = json.loads(text)
    validator(name).validate(value)
    return value
