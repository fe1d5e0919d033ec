#!/usr/bin/env python3
"""Prints what the tool spends on a flag of a long line, and on those that make the line three times as long, in instructions.

tool_growth.py TOOL    exit status 1 if some kind of flag costs over a fifth more there
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
short, long = 160, 480  # in a line of this length, flags are no longer examined one by one


def cost(verb, flag, count):
    """The instructions of a line with the flag that often."""
    line = required + [token.format(i, i) for i in range(count) for token in flag]
    run = subprocess.run(["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null", sys.argv[1], *verb.split(), *line],
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace")
    return int(re.search(r"I +refs: +([\d,]+)", run.stderr)[1].replace(",", ""))


grown = 0
start = {verb: cost(verb, [], 0) for verb, _ in families}
for verb, flag in families:
    middle, end = cost(verb, flag, short), cost(verb, flag, long)
    first, rest = (middle - start[verb]) / short, (end - middle) / (long - short)
    print(verb, *flag, round(first), round(rest), sep="\t", flush=True)
    if rest > 1.2 * first:
        print("^ costs more per flag in a longer line")
        grown += 1
sys.exit(1 if grown else 0)
