#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_words.py [--root FOLDER]: the tracked files stand on their own.

Papers that only the authors have and paths of one machine belong in nobody's source tree: a reader cannot follow them.
The words are put together from pieces, so that this file does not find itself.
"""

import argparse
import pathlib
import re
import subprocess
import sys

PIECES = [
    (r"\bPa", r"rt [0-9]+\.[0-9]"),
    (r"the sp", r"ec\b"),
    (r"[Ss]peci", r"fication"),
    (r"sp", r"ec\.md"),
    (r"/wo", r"rk/"),
]
PATTERN = re.compile("|".join(first + second for first, second in PIECES))
NOT_PROSE = {".dxf", ".dwg", ".svg", ".png", ".pdf"}


def tracked_files(root):
    """The files of the repository, or every file outside the build folders where there is no repository."""
    listing = subprocess.run(["git", "-c", f"safe.directory={root}", "-C", str(root), "ls-files", "-z"],
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    if listing.returncode == 0:
        return [root / name for name in listing.stdout.decode().split("\0") if name]
    return [path for path in root.rglob("*")
            if not any(part.startswith("build") for part in path.relative_to(root).parts[:1])]


def check(root):
    complaints = []
    seen = 0
    for path in tracked_files(root):
        if path.suffix.lower() in NOT_PROSE or not path.is_file():
            continue
        content = path.read_bytes()
        if b"\0" in content:
            continue
        seen += 1
        for number, line in enumerate(content.decode(errors="replace").splitlines(), 1):
            if PATTERN.search(line):
                complaints.append(f"{path.relative_to(root)}:{number}: {line.strip()}")
    return seen, complaints


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    seen, complaints = check(parser.parse_args().root.resolve())
    for line in complaints:
        print(line)
    print(f"{seen} files read, {len(complaints)} lines to reword")
    return 1 if complaints or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
