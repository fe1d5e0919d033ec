#!/usr/bin/env python3
"""Prints what the tool spends on each flag by which a long line grows, and by which a line grows that is longer still, in instructions.

tool_growth.py TOOL    exit status 1 if some kind of flag costs over a fifth more in the longer line
"""
import re
import subprocess
import sys

required = ["--auto-deploy-root", "/srv/d", "--https", "1", "--x509-private-key", "/k", "--x509-cert-chain", "/c"]
required += ["--ssl-verify-peer-mode", "verify-peer-require-peer-cert", "--x509-ca-file-store", "/a"]
# A verb, and tokens that are given again and again, with other numbers.
families = [
    ("check --all", ["--user-data", "k{} {}"]),  # accepted, each adding something
    ("check --all", ["--attach-cache", "p@h:{}"]),
    ("check", ["--lumo-root", "/opt/{}"]),
    ("check", ["--cors-allowed-origins", "http://h{}"]),
    ("check", ["--log-handler", "text/plain c{}"]),
    ("check", ["--ssl-allowed-client", "c{}:a{}"]),
    ("check", ["--http", "h:{}"]),  # accepted, and warned of
    ("check", ["--x509-use-crl"]),
    ("check", ["--log-root", "relative{}/"]),
    ("check", ["--user-data", "k {}"]),
    ("check", ["--zzqx{}", "value{}"]),  # unknown
    ("check", ["--log-rot{}"]),  # misspelt
    ("fix", ["--log_root", "/x{}"]),
    ("check", ["--log-root=/x{}"]),
    ("check", ["--num-workers", "x{}"]),  # refused values
    ("check", ["--worker-memory-trigger", "{} flops"]),
    ("check", ["--queue-time-trigger", "{}quux"]),
    ("fix", ["--attach-cache", "p@a_b:{}"]),
    ("check", ["--log-severity", "warnink{}"]),
    ("check", ["--log-root", "/a", "b{}"]),  # out of place
    ("check", ["--request-timeout", "1", "--log-root", "/x{}"]),
    ("publish", ["--log-root", "--"]),
    ("check --redact", ["--attach-cache", "p@h{}:80"]),
    ("check --redact", ["--user-data", "k{} --x{}"]),
]
lengths = 160, 240, 480  # in lines of these lengths, flags are no longer examined one by one


def cost(verb, flag, count):
    """The instructions of a line with the flag that often."""
    line = required + [token.format(i, i) for i in range(count) for token in flag]
    run = subprocess.run(["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null", sys.argv[1], *verb.split(), *line],
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace")
    return int(re.search(r"I +refs: +([\d,]+)", run.stderr)[1].replace(",", ""))


grown = 0
for verb, flag in families:
    # The cost of no flag is left out: an accepted line is looked at for warnings, too.
    short, middle, long = (cost(verb, flag, count) for count in lengths)
    first, rest = (middle - short) / (lengths[1] - lengths[0]), (long - middle) / (lengths[2] - lengths[1])
    print(verb, *flag, round(first), round(rest), sep="\t", flush=True)
    if rest > 1.2 * first:
        print("^ costs more per flag in a longer line")
        grown += 1
sys.exit(1 if grown else 0)
