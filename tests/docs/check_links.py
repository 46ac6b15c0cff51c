#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_links.py [--root FOLDER]: what the tracked Markdown files point at is there: files, pictures, headings.

Links to other machines are not followed.
"""

import argparse
import pathlib
import re
import subprocess
import sys

LINK = re.compile(r"(?<!\\)!?\[(?:[^\[\]]|\[[^\]]*\])*\]\(([^()\s]+)(?:\s+\"[^\"]*\")?\)")
REFERENCE = re.compile(r"^\[[^\]]+\]:\s+(\S+)", re.MULTILINE)
HTML = re.compile(r"<(?:img|a)\b[^>]*\b(?:src|href)=\"([^\"]+)\"")
HEADING = re.compile(r"^#{1,6}\s+(.*?)\s*#*$", re.MULTILINE)
FENCE = re.compile(r"^(```|~~~).*?^\1\s*$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"(`+)(?!`).*?(?<!`)\1(?!`)", re.DOTALL)
ELSEWHERE = re.compile(r"^[a-z][a-z0-9+.-]*:", re.IGNORECASE)


def anchors(text):
    """The names by which the headings of a file can be reached."""
    seen = {}
    result = set()
    for heading in HEADING.findall(FENCE.sub("", text)):
        plain = re.sub(r"!?\[([^\]]*)\]\([^)]*\)", r"\1", heading).replace("`", "").lower()
        name = re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")
        count = seen.get(name, 0)
        seen[name] = count + 1
        result.add(f"{name}-{count}" if count else name)
    return result


def links(text):
    """(line, target) of each link outside of code."""
    def blank(match):
        return re.sub(r"[^\n]", " ", match[0])

    plain = CODE.sub(blank, FENCE.sub(blank, text))
    # A link's text may be code: only its target must not be.
    for pattern in (LINK, REFERENCE, HTML):
        for match in pattern.finditer(plain):
            yield plain.count("\n", 0, match.start()) + 1, match[1]


def complaints(path, root):
    for line, target in links(path.read_text(encoding="utf-8")):
        if ELSEWHERE.match(target):
            continue
        name, _, anchor = target.partition("#")
        there = (path.parent / name).resolve() if name else path.resolve()
        where = f"{path.relative_to(root)}:{line}"
        if not there.is_relative_to(root) or not there.exists():
            yield f"{where}: {target}: there is no such file"
        elif anchor and there.suffix == ".md" and anchor not in anchors(there.read_text(encoding="utf-8")):
            yield f"{where}: {target}: there is no such heading"


def documents(root):
    listing = subprocess.run(["git", "-c", f"safe.directory={root}", "-C", str(root), "ls-files", "-z", "--cached",
                              "--others", "--exclude-standard", "*.md"],
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    if listing.returncode == 0:
        return [root / name for name in listing.stdout.decode().split("\0") if name and (root / name).is_file()]
    return [path for path in root.rglob("*.md") if not path.relative_to(root).parts[0].startswith("build")]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    root = parser.parse_args().root.resolve()
    read = documents(root)
    found = [line for path in read for line in complaints(path, root)]
    for line in found:
        print(line)
    print(f"{len(read)} documents read, {len(found)} links that lead nowhere")
    return 1 if found or not read else 0


if __name__ == "__main__":
    sys.exit(main())
