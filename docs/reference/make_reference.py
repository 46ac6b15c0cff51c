#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""make_reference.py --output FOLDER: makes the API reference from the public headers and the documents.

Fails on any warning of Doxygen and where a widget has no picture in docs/images/controls.
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys

import comment_runs

HEADERS = ["inc/qt", "kernel/inc"]
PICTURES = "docs/images/controls"
PAGES = ["README.md", "CONTRIBUTING.md", "samples/README.md"]
# Base classes from Qt that make a class of ours something to look at.
WIDGETS = re.compile(r"\bclass\s+ZV_EXPORT\s+(\w+)\s*(?:final)?\s*:\s*public\s+(\w+)")
QT_WIDGETS = {"QWidget", "QDialog", "QComboBox", "QPushButton", "QLabel", "QLineEdit", "QTextEdit", "QTableView", "QTabWidget"}
# Parts that are seen in the picture of the whole.
PARTS = {
    "ColorDialog": ["ZvColorDialog", "ZvColorLabel", "ZvColorLightWnd", "ZvColorTabWidget", "ZvHSLPallete", "ZvHSLWnd",
                    "ZvIndexColorWnd", "ZvPaleteWnd", "ZvRGBSlider", "ZvRGBWnd", "ZvTrueColorWnd"],
}


def widgets(texts):
    """The exported classes of widgets, those derived from one another included."""
    bases = dict(pair for text in texts for pair in WIDGETS.findall(text))

    def is_widget(name):
        return name in QT_WIDGETS or (name in bases and is_widget(bases[name]))

    return sorted(name for name in bases if is_widget(bases[name]))


def prepare(root, work):
    """The headers as Doxygen is to read them, and the pictures of their widgets. Gives the widgets without one."""
    paths = sorted(path for folder in HEADERS for path in (root / folder).rglob("*.h"))
    texts = {path: path.read_text(encoding="utf-8") for path in paths}
    virtuals = comment_runs.virtual_names(texts.values())
    for path, text in texts.items():
        target = work / path.relative_to(root)
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(comment_runs.mark(text, virtuals), encoding="utf-8")

    whole = {part: name for name, parts in PARTS.items() for part in parts}
    lines = []
    missing = []
    for name in sorted({*widgets(texts.values()), "ZvQtCanvas"}):
        picture = whole.get(name, name)
        if (root / PICTURES / f"{picture}.png").is_file():
            lines.append(f"/** \\class {name}\n * \\image html controls/{picture}.png\n */\n")
        else:
            missing.append(name)
    (work / "pictures.dox").write_text("".join(lines), encoding="utf-8")
    return missing


def run_doxygen(doxygen, root, work, output):
    """The warnings, with the places in the source tree."""
    documents = [root / page for page in PAGES] + sorted((root / "docs").rglob("*.md"))
    settings = (root / "docs/reference/Doxyfile").read_text(encoding="utf-8") + f"""
INPUT = "{work}" {' '.join(f'"{path}"' for path in documents if path.is_file())}
RECURSIVE = YES
FILE_PATTERNS = *.h *.md *.dox
OUTPUT_DIRECTORY = "{output}"
IMAGE_PATH = "{root}/docs/images" "{root}/docs"
USE_MDFILE_AS_MAINPAGE = "{root}/README.md"
STRIP_FROM_PATH = "{work}" "{root}"
STRIP_FROM_INC_PATH = "{work}/inc/qt" "{work}/kernel/inc"
"""
    run = subprocess.run([doxygen, "-"], input=settings, text=True, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                         check=False)
    warnings = run.stderr.replace(str(work), str(root)).splitlines()
    if run.returncode and not warnings:
        warnings = [f"doxygen ended with {run.returncode}"]
    return [line for line in warnings if "file-level" not in line and line.strip()]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("--doxygen", default="doxygen")
    arguments = parser.parse_args()
    root = pathlib.Path(__file__).resolve().parents[2]
    output = arguments.output.resolve()
    work = output / "input"
    shutil.rmtree(output, ignore_errors=True)
    work.mkdir(parents=True)

    complaints = [f"{name}: no picture in docs/images/controls" for name in prepare(root, work)]
    complaints += run_doxygen(arguments.doxygen, root, work, output)
    for line in complaints:
        print(line)
    if not (output / "html/index.html").is_file():
        complaints.append("no reference was made")
    print(f"{output}/html/index.html: {len(complaints)} complaints")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
