#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_layers.py [--root FOLDER]: every include points down the storeys, never up.

The storeys and what each may see stand in docs/architecture.md; the table below says the same to the machine.
"""

import argparse
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')
SOURCE_ENDINGS = {".h", ".hpp", ".cpp", ".cc", ".inl"}

# Libraries of the kernel, bottom to top: each may include the public headers of itself and of those before it.
KERNEL = ["base", "db", "core", "utils"]

# How a header of Qt shows: by its module's folder, or by the class name alone.
QT = re.compile(r"^(Qt[A-Z]\w*/|Q[A-Z]\w*$|q[a-z]\w*\.h$)")


class Tree:
    """Resolves an include the way the compiler would: beside the file, then in the folders the target offers."""

    def __init__(self, root):
        self.root = root

    def resolve(self, file, name):
        # A kernel library sees kernel/inc and its own folder; the library above sees inc/qt, its own folder, kernel/inc.
        candidates = [file.parent / name, self.root / "kernel/inc" / name, self.root / "inc/qt" / name,
                      self.root / "src/qtutils" / name, self.root / "kernel" / name]
        candidates += [self.root / "kernel" / lib / name for lib in KERNEL]
        candidates.append(self.root / "kernel/db/dxf" / name)
        candidates += [self.root / "kernel/inc" / lib / name for lib in KERNEL]
        for candidate in candidates:
            if candidate.is_file():
                return candidate.resolve().relative_to(self.root)
        return None

    def sources(self, folder):
        for path in sorted((self.root / folder).rglob("*")):
            if path.suffix in SOURCE_ENDINGS and path.is_file():
                yield path


def storey(path):
    """The storey a file of the tree belongs to: ("kernel", lib, is_public), ("qtutils",), ("applications",) or None."""
    parts = path.parts
    if parts[:2] == ("kernel", "inc"):
        return ("kernel", parts[2] if len(parts) > 3 else None, True)
    if parts[0] == "kernel":
        return ("kernel", parts[1], False)
    if parts[:2] in (("src", "qtutils"), ("inc", "qt")):
        return ("qtutils",)
    if parts[0] in ("apps", "designer"):
        return ("applications",)
    return None


def is_tag_store(path):
    return path.parts[:3] == ("kernel", "db", "dxf")


def complaint(source, name, target):
    """What is wrong with the file at source including name, which is the file target of this tree or None."""
    here = storey(source)
    there = storey(target) if target else None
    if here[0] == "kernel":
        _, lib, public = here
        if lib != "utils" and QT.match(name):
            return "only kernel/utils knows Qt"
        if there and there[0] in ("qtutils", "applications"):
            return "the kernel rests on nothing above it"
        if there and there[0] == "kernel":
            _, other, other_public = there
            if public and not other_public:
                return "a header of the interface includes one that is not"
            if other in KERNEL and lib in KERNEL and KERNEL.index(other) > KERNEL.index(lib):
                return f"kernel/{lib} lies below kernel/{other}"
            if is_tag_store(source) and other == "db" and not is_tag_store(target):
                return "the tag store knows nothing of the database above it"
            if not other_public and other != lib:
                return f"kernel/{lib} looks behind the interface of kernel/{other}"
    if here[0] == "qtutils":
        if there and there[0] == "applications":
            return "the library rests on nothing above it"
        if there and there[0] == "kernel" and not there[2]:
            return "the library sees nothing behind kernel/inc"
        if source.parts[0] == "inc" and target and target.parts[0] == "src":
            return "a public header includes a private one"
    if here[0] == "applications" and there and there[0] == "kernel" and not there[2]:
        return "an application sees nothing behind kernel/inc"
    return None


def check(root):
    tree = Tree(root)
    complaints = []
    seen = 0
    for folder in ("kernel", "src/qtutils", "inc/qt", "apps", "designer"):
        for path in tree.sources(folder):
            seen += 1
            source = path.relative_to(root)
            for number, line in enumerate(path.read_text(encoding="utf-8", errors="replace").splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                wrong = complaint(source, match[1], tree.resolve(path, match[1]))
                if wrong:
                    complaints.append(f"{source}:{number}: {match[1]}: {wrong}")
    return seen, complaints


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    seen, complaints = check(parser.parse_args().root.resolve())
    for line in complaints:
        print(line)
    if seen == 0:
        print("no source file found")
    print(f"{seen} files read, {len(complaints)} includes point the wrong way")
    return 1 if complaints or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
