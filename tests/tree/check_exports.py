#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_exports.py LIBRARY HEADERS...: a library shows what its public headers export, and nothing else.

Each symbol belongs to a class or a function that a header of one of the folders marks with ZV_EXPORT, and each such
function has a symbol. A class of inline members needs none.
"""

import argparse
import sys

import symbols


def complaints(defined, promises):
    """\\a defined is a list of symbols."""
    found = set()
    for symbol in defined:
        name = symbols.qualified_name(symbol.name)
        if promises.covers(name):
            found.add(promises.owner(name))
        else:
            yield f"{symbol.name}: no public header exports {promises.owner(name)}"
    for name in sorted(promises.functions - found):
        yield f"{name}: exported by a header, and the library has nothing of it"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("library")
    parser.add_argument("headers", nargs="+")
    arguments = parser.parse_args()
    defined = symbols.read_symbols(arguments.library, "--defined-only")
    found = list(complaints(defined, symbols.Promises(arguments.headers)))
    for line in found:
        print(line)
    print(f"{len(defined)} symbols, {len(found)} complaints")
    return 1 if found or not defined else 0


if __name__ == "__main__":
    sys.exit(main())
