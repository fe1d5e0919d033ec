"""gdb's pretty printers for settings: records, paths, and what Boost has in them. gdb loads this file with the library."""
import re

import gdb
import gdb.printing

SPECIAL = {2**63 - 1: "+infinity", -2**63: "-infinity", 2**63 - 2: "not-a-date-time"}


class Path:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return self.value["text_"]


class Duration:
    def __init__(self, value):
        self.microseconds = int(value["ticks_"]["value_"])

    def to_string(self):
        if self.microseconds in SPECIAL:
            return SPECIAL[self.microseconds]
        seconds, fraction = divmod(abs(self.microseconds), 1000000)
        text = f"{seconds // 3600:02}:{seconds // 60 % 60:02}:{seconds % 60:02}"
        return "-" * (self.microseconds < 0) + text + (f".{fraction:06}" if fraction else "")


class Optional:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        if not self.value["m_initialized"]:
            return "not set"
        kind = self.value.type.template_argument(0)
        return self.value["m_storage"].address.reinterpret_cast(kind.pointer()).dereference()


class Record:
    """Optional fields that are not set are left out."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return None if any(self.children()) else "{}"

    def children(self):
        for field in self.value.type.fields():
            value = self.value[field]
            if not is_optional(value.type.strip_typedefs()) or value["m_initialized"]:
                yield field.name.rstrip("_"), value


def is_optional(kind):
    return (kind.tag or "").startswith("boost::optional<")


def zep_config(value):
    kind = value.type.strip_typedefs()
    if kind.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        value = value.referenced_value()
        kind = value.type.strip_typedefs()
    name = kind.tag or ""
    if name == "qel::util::filesystem::Path":
        return Path(value)
    if name == "boost::posix_time::time_duration":
        return Duration(value)
    if is_optional(kind):
        return Optional(value.cast(kind))
    # Whatever has nothing but fields, so no list has to follow the records.
    if re.fullmatch(r"qel::(config|util::ssl)::\w+", name) and all(
            field.name.endswith("_") and not field.is_base_class for field in kind.fields()):
        return Record(value.cast(kind))
    return None


gdb.printing.register_pretty_printer(gdb.current_objfile(), zep_config, replace=True)
