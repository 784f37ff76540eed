#!/usr/bin/env python3
"""The objects of loops for newer processors offer the linker nothing but their table of loops.

usage: vector_loops_test.py NM OBJECT...

A function that is inline elsewhere would be compiled for the newer processor here as a weak symbol, and the linker, which
keeps one of all weak ones, might keep this one: a program would then end on an older processor, in code that has no part
in loops.
"""

import re
import subprocess
import sys

TABLE = re.compile(r"lorv::k\w+Loops$")


def offered(nm, name):
    """The symbols that other objects may take from this one: kind and name."""
    said = subprocess.run([nm, "-C", name], capture_output=True, text=True, check=True).stdout
    symbols = (re.match(r"(?:[0-9a-fA-F]+)? +(\S) (.*)", line) for line in said.splitlines())
    return [s.groups() for s in symbols if s and (s.group(1).isupper() or s.group(1) in "uvw") and s.group(1) != "U"]


def main(arguments):
    if len(arguments) < 2:
        print(__doc__)
        return 2
    bad = 0
    for name in arguments[1:]:
        symbols = offered(arguments[0], name)
        tables = [s for s in symbols if TABLE.match(s[1])]
        strays = [s for s in symbols if s not in tables]
        if len(tables) != 1 or strays:
            bad += 1
            print(f"{name}: {len(tables)} tables of loops, beside them {strays}")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
