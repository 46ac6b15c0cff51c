#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_kernel_operations.py --document FILE --library FILE --kernel FILE...: the list of operations that an own kernel
has to supply is the list of the kernel's symbols that the library wants.

An operation goes by its name: overloads are one, and a class stands for its making, destroying and descriptions.
"""

import argparse
import pathlib
import re
import sys

import symbols

# A row of a table: what stands in backquotes in its first column.
ROW = re.compile(r"^\| (`.*?) \| ", re.MULTILINE)


def operation(symbol):
    name = symbols.qualified_name(symbol.name)
    parts = name.split("::")
    if len(parts) > 1 and parts[-1].lstrip("~") == parts[-2]:
        return "::".join(parts[:-1])
    # Assigning is part of making.
    return "::".join(parts[:-1]) if parts[-1] == "operator=" else name


def wanted_operations(wanted, offered):
    """\\a wanted and \\a offered are lists of symbols."""
    names = {symbol.mangled for symbol in offered}
    return {operation(symbol) for symbol in wanted if symbol.mangled in names}


def listed_operations(text):
    section = text.split("\n## The operations\n", 1)[-1]
    return [name for cell in ROW.findall(section) for name in re.findall(r"`([^`]+)`", cell)]


def complaints(wanted, listed):
    for name in sorted(wanted - set(listed)):
        yield f"{name}: the library wants it from the kernel, and the list does not tell of it"
    for name in sorted(set(listed) - wanted):
        yield f"{name}: in the list, and the library does not want it from the kernel"
    for name in sorted({name for name in listed if listed.count(name) > 1}):
        yield f"{name}: in the list more than once"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--document", type=pathlib.Path, required=True)
    parser.add_argument("--library", required=True)
    parser.add_argument("--kernel", nargs="+", required=True)
    arguments = parser.parse_args()
    offered = [symbol for library in arguments.kernel for symbol in symbols.read_symbols(library, "--defined-only")]
    wanted = wanted_operations(symbols.read_symbols(arguments.library, "--undefined-only"), offered)
    found = list(complaints(wanted, listed_operations(arguments.document.read_text(encoding="utf-8"))))
    for line in found:
        print(line)
    print(f"{len(wanted)} operations, {len(found)} complaints")
    return 1 if found or not wanted else 0


if __name__ == "__main__":
    sys.exit(main())
