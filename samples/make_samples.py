#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Writes the sample drawings, plan.dxf and part.dxf; running it again gives the same files byte for byte.

Usage: make_samples.py [FOLDER]    FOLDER is where the files go; without it, beside this script.
Needs ezdxf 0.18 (Debian 12: python3-ezdxf).
"""

import pathlib
import sys

sys.dont_write_bytecode = True  # the folder may be read-only

from drafting import save
from part import make_part
from plan import make_plan


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    for name, make in (("plan.dxf", make_plan), ("part.dxf", make_part)):
        save(make(), folder / name)


if __name__ == "__main__":
    main()
