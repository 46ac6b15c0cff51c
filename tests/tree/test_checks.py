#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The checks of the source tree find each kind of fault, and nothing in a tree that is in order."""

import pathlib
import tempfile
import unittest

import check_layers
import check_words

HEADERS = ["kernel/inc/base/zvstring.h", "kernel/inc/db/zvdb.h", "kernel/inc/core/zvsystem.h",
           "kernel/inc/utils/zvimage.h", "kernel/base/inner.h", "kernel/db/record.h", "kernel/db/dxf/dxf_tag.h",
           "inc/qt/zevaqt.h", "src/qtutils/private/shared.h", "apps/workbench/window.h"]

ALLOWED = [
    ("kernel/base/a.cpp", "base/zvstring.h"),
    ("kernel/base/a.cpp", "inner.h"),
    ("kernel/db/a.cpp", "base/zvstring.h"),
    ("kernel/db/a.cpp", "dxf/dxf_tag.h"),
    ("kernel/db/a.cpp", "dxf_tag.h"),
    ("kernel/db/dxf/a.cpp", "dxf_tag.h"),
    ("kernel/db/dxf/a.cpp", "base/zvstring.h"),
    ("kernel/utils/a.cpp", "QtGui/QImage"),
    ("kernel/utils/a.cpp", "db/zvdb.h"),
    ("kernel/inc/db/a.h", "base/zvstring.h"),
    ("src/qtutils/a.cpp", "db/zvdb.h"),
    ("src/qtutils/a.cpp", "private/shared.h"),
    ("src/qtutils/a.cpp", "QtCore/QString"),
    ("apps/workbench/a.cpp", "zevaqt.h"),
    ("designer/a.cpp", "zevaqt.h"),
]

REFUSED = [
    ("kernel/base/a.cpp", "db/zvdb.h"),
    ("kernel/base/a.cpp", "core/zvsystem.h"),
    ("kernel/base/a.cpp", "QString"),
    ("kernel/db/a.cpp", "QtCore/QString"),
    ("kernel/db/a.cpp", "qstring.h"),
    ("kernel/db/a.cpp", "core/zvsystem.h"),
    ("kernel/db/a.cpp", "../base/inner.h"),
    ("kernel/db/dxf/a.cpp", "db/zvdb.h"),
    ("kernel/db/dxf/a.cpp", "../record.h"),
    ("kernel/utils/a.cpp", "../db/dxf/dxf_tag.h"),
    ("kernel/core/a.cpp", "utils/zvimage.h"),
    ("kernel/core/a.cpp", "../db/record.h"),
    ("kernel/core/a.cpp", "QtCore/QString"),
    ("kernel/utils/a.cpp", "zevaqt.h"),
    ("kernel/utils/a.cpp", "../../apps/workbench/window.h"),
    ("kernel/inc/db/a.h", "../../db/record.h"),
    ("kernel/inc/core/a.h", "utils/zvimage.h"),
    ("kernel/inc/db/a.h", "QtCore/QString"),
    ("src/qtutils/a.cpp", "../../kernel/db/record.h"),
    ("src/qtutils/a.cpp", "../../apps/workbench/window.h"),
    ("inc/qt/a.h", "../../src/qtutils/private/shared.h"),
    ("apps/workbench/a.cpp", "../../kernel/base/inner.h"),
    ("designer/a.cpp", "../kernel/base/inner.h"),
]


class CheckLayers(unittest.TestCase):
    def complaints(self, source, include):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder).resolve()
            for header in HEADERS:
                (root / header).parent.mkdir(parents=True, exist_ok=True)
                (root / header).touch()
            (root / source).parent.mkdir(parents=True, exist_ok=True)
            (root / source).write_text(f"#include <{include}>\n")
            return check_layers.check(root)[1]

    def test_includes_that_point_down_pass(self):
        for source, include in ALLOWED:
            with self.subTest(source=source, include=include):
                self.assertEqual(self.complaints(source, include), [])

    def test_includes_that_point_up_or_behind_an_interface_are_found(self):
        for source, include in REFUSED:
            with self.subTest(source=source, include=include):
                self.assertEqual(len(self.complaints(source, include)), 1)


class CheckWords(unittest.TestCase):
    def found(self, line):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder).resolve()
            (root / "notes.md").write_text(line + "\n")
            return len(check_words.check(root)[1])

    def test_words_that_only_the_authors_can_follow_are_found(self):
        for first, second in [("Pa", "rt 3.2"), ("the sp", "ec says"), ("Speci", "fication"), ("/wo", "rk/here"),
                              ("age", "nt brief"), (".lib", "rary/x")]:
            with self.subTest(second=second):
                self.assertEqual(self.found("as " + first + second), 1)

    def test_ordinary_words_pass(self):
        for line in ["a part of the drawing", "the spectrum", "workbench", "a library of parts", "special"]:
            with self.subTest(line=line):
                self.assertEqual(self.found(line), 0)


if __name__ == "__main__":
    unittest.main()
