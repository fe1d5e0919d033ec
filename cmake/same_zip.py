#!/usr/bin/env python3
"""same_zip.py ZIP...: writes each archive again, without what depends on who made it, when and where.

Members are in order of their names and have one time, SOURCE_DATE_EPOCH. Their owners are left out, and of their modes
only what matters is kept: whether they can be executed.
"""
import os
import sys
import time
import zipfile

# The format's times begin in 1980.
moment = time.gmtime(max(int(os.environ["SOURCE_DATE_EPOCH"]), 315532800))[:6]
for archive in sys.argv[1:]:
    with zipfile.ZipFile(archive) as before:
        members = sorted((member.filename, member.external_attr, before.read(member)) for member in before.infolist())
    with zipfile.ZipFile(archive, "w") as after:
        for name, attributes, content in members:
            member = zipfile.ZipInfo(name, moment)
            member.compress_type = zipfile.ZIP_DEFLATED
            mode = 0o755 if attributes >> 16 & 0o100 else 0o644
            kind = 0o40000 if member.is_dir() else 0o100000
            member.external_attr = (kind | mode) << 16 | (0x10 if member.is_dir() else 0)
            after.writestr(member, content)
