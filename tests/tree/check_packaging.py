#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_packaging.py CHECK: what a distribution takes is in order. CHECK is one of:

desktop   the menu entry, by desktop-file-validate
metainfo  the description for software centres, by appstreamcli
manual    the manual page, by man; and its options are those of the program's help (--program PROGRAM)
depends   the packages that debian/control builds with are those of packaging/debian-packages.txt
"""

import argparse
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"


def run(*command):
    """What the tool says, and whether it is content."""
    # The page itself goes to standard output, the complaints to the other.
    done = subprocess.run(command, capture_output=True, check=False)
    return (done.stderr or (done.stdout if done.returncode else b"")).decode(errors="replace"), done.returncode == 0


def check_desktop(_):
    said, is_content = run("desktop-file-validate", PACKAGING / "zvworkbench.desktop")
    return [] if is_content and not said else [said]


def check_metainfo(_):
    said, is_content = run("appstreamcli", "validate", "--no-net", PACKAGING / "org.zeva.zvworkbench.metainfo.xml")
    return [] if is_content else [said]


def check_manual(program):
    page = PACKAGING / "zvworkbench.1"
    said, is_content = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page)
    complaints = [] if is_content and not said.strip() else [said]
    if program:
        help_text = subprocess.run([program, "--help"], capture_output=True, check=True, text=True).stdout
        known = set(re.findall(r"--[a-z]+(?:-[a-z]+)*", help_text))
        described = set(re.findall(r"--[a-z]+(?:-[a-z]+)*", page.read_text(encoding="utf-8").replace("\\-", "-")))
        complaints += [f"{option}: not in the manual page" for option in sorted(known - described)]
        complaints += [f"{option}: not an option" for option in sorted(described - known)]
        if not known:
            complaints.append("the program's help names no option")
    return complaints


def check_depends(_):
    listed = set()
    for line in (PACKAGING / "debian-packages.txt").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            listed.add(line.split()[0])
    control = (ROOT / "debian/control").read_text(encoding="utf-8")
    needed = set()
    for field in re.findall(r"^Build-Depends[\w-]*:((?:\n? .*)+)", control, re.MULTILINE):
        needed |= {re.match(r"[\w.+-]+", entry.strip())[0] for entry in field.split(",") if entry.strip()}
    needed.discard("debhelper-compat")
    if not needed:
        return ["debian/control builds with nothing"]
    return [f"{package}: not in packaging/debian-packages.txt" for package in sorted(needed - listed)]


def main():
    checks = {"desktop": check_desktop, "metainfo": check_metainfo, "manual": check_manual, "depends": check_depends}
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("check", choices=checks)
    parser.add_argument("--program", help="the workbench")
    arguments = parser.parse_args()
    complaints = checks[arguments.check](arguments.program)
    for line in complaints:
        print(line)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
