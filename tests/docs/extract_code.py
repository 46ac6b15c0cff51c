#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""extract_code.py --output FOLDER DOCUMENT...: takes the code out of the documents, so that it is built with the tests.

The line before a fence of C++ or CMake tells what becomes of the code:

    <!-- file: NAME -->     the whole of a file; programs and their CMakeLists.txt
    <!-- in: NAME -->       a piece: it is put into tests/docs/preludes/NAME.cpp, in place of the line "// the code"

A fence without such a line is an error: there is no code that nobody compiles. Prints the files, and writes only those
that have changed.
"""

import argparse
import pathlib
import re
import sys

LANGUAGES = {"cpp", "c++", "cmake"}
FENCE = re.compile(r"^```(\S*)\s*$")
TELLS = re.compile(r"^<!-- (file|in): (\S+) -->$")
PLACE = re.compile(r"^([ \t]*)// the code\n", re.MULTILINE)


class Mistake(Exception):
    pass


def blocks(text, where):
    """(kind, name, code, line) of each fence of C++ or CMake."""
    lines = text.split("\n")
    at = 0
    while at < len(lines):
        fence = FENCE.match(lines[at])
        if not fence:
            at += 1
            continue
        begin = at
        at += 1
        while at < len(lines) and lines[at].rstrip() != "```":
            at += 1
        if at == len(lines):
            raise Mistake(f"{where}:{begin + 1}: the fence has no end")
        at += 1
        if fence[1] not in LANGUAGES:
            continue
        tells = TELLS.match(lines[begin - 1]) if begin else None
        if not tells:
            raise Mistake(f"{where}:{begin + 1}: nothing tells what this code is: a file, or in what")
        yield tells[1], tells[2], "\n".join(lines[begin + 1:at - 1]) + "\n", begin + 1


def piece(prelude, code, document, line, unit):
    """A translation unit around a piece of code; the compiler's complaints tell the document's lines."""
    place = PLACE.search(prelude)
    if not place:
        raise Mistake("the prelude has no line \"// the code\"")
    here = prelude[:place.end()].count("\n") + 1
    text = (prelude[:place.start()] + f'#line {line + 1} "{document}"\n' + code + f'#line {here} "prelude"\n'
            + prelude[place.end():])
    return text + (f'\n#include "{unit}.moc"\n' if "Q_OBJECT" in code else "")


def extract(documents, preludes, root):
    """The files by name. Pieces are numbered by document."""
    files = {}
    for document in documents:
        where = document.relative_to(root)
        number = 0
        for kind, name, code, line in blocks(document.read_text(encoding="utf-8"), where):
            if kind == "file":
                target, text = name, code
            else:
                prelude = preludes / f"{name}.cpp"
                if not prelude.is_file():
                    raise Mistake(f"{where}:{line}: there is no prelude {name}")
                number += 1
                unit = re.sub(r"\W", "_", str(where.with_suffix(""))) + f"_{number}"
                target = f"pieces/{unit}.cpp"
                text = piece(prelude.read_text(encoding="utf-8"), code, document, line, unit)
            if target in files:
                raise Mistake(f"{where}:{line}: {target} was there before")
            files[target] = text
    return files


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("documents", nargs="+", type=pathlib.Path)
    arguments = parser.parse_args()
    here = pathlib.Path(__file__).resolve().parent
    try:
        files = extract([path.resolve() for path in arguments.documents], here / "preludes", here.parents[1])
    except Mistake as mistake:
        print(mistake, file=sys.stderr)
        return 1
    for name, text in sorted(files.items()):
        target = arguments.output / name
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.is_file() or target.read_text(encoding="utf-8") != text:
            target.write_text(text, encoding="utf-8")
        print(target)
    return 0


if __name__ == "__main__":
    sys.exit(main())
