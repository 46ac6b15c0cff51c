# SPDX-License-Identifier: MIT
"""Drawings that the database made and changed, audited by ezdxf: no faults that the originals do not have.

Usage: tst_file_second_opinion.py FILE_RESAVE FOLDER... Ends with status 77, "skipped", where ezdxf is absent.
"""

import collections
import logging
import pathlib
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77

try:
    import ezdxf
    from ezdxf import recover
except ImportError:
    print("skipped: ezdxf is not installed")
    sys.exit(SKIPPED)

RESAVE = sys.argv.pop(1)
FOLDERS = [pathlib.Path(folder) for folder in sys.argv[1:]]
del sys.argv[1:]
LARGEST = 700_000  # bytes; ezdxf takes seconds for more


def read(path):
    try:
        return ezdxf.readfile(path)
    except ezdxf.DXFError:
        return recover.readfile(path)[0]


def faults(document):
    auditor = document.audit()
    return collections.Counter(entry.code for entry in auditor.errors + auditor.fixes)


class SecondOpinionTest(unittest.TestCase):
    def setUp(self):
        logging.disable(logging.WARNING)
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def resave(self, *arguments):
        path = pathlib.Path(self.folder.name) / "saved.dxf"
        subprocess.run([RESAVE, *arguments, path], check=True)
        return path

    def test_a_new_drawing_has_no_faults(self):
        document = ezdxf.readfile(self.resave("new"))
        self.assertEqual(faults(document), {})
        kinds = {entity.dxftype() for entity in document.modelspace()}
        self.assertLessEqual({"LINE", "CIRCLE", "TEXT", "MTEXT", "LWPOLYLINE", "ELLIPSE", "INSERT", "RAY", "SOLID"}, kinds)
        self.assertEqual(document.header["$CLAYER"], "Added layer")
        self.assertEqual(document.layers.get("Added layer").dxf.linetype, "Added dashes")
        self.assertEqual([entity.dxftype() for entity in document.blocks.get("Added block")], ["LINE"])
        line = document.modelspace().query("LINE").first
        self.assertEqual(line.dxf.start.x, 1234567.891)
        self.assertEqual(document.modelspace().query("TEXT").first.dxf.text, "Straße 墙")
        self.assertIn("Added style", document.mleader_styles)

    def test_changed_drawings_have_no_new_faults(self):
        drawings = [path for folder in FOLDERS if folder.is_dir() for path in sorted(folder.glob("*.dxf"))]
        self.assertTrue(drawings)
        for path in drawings:
            if path.stat().st_size > LARGEST:
                continue
            original = read(path)
            known = faults(original)
            count = len(original.modelspace())
            for mode in ("add", "copy", "erase"):
                with self.subTest(drawing=path.name, mode=mode):
                    saved = read(self.resave(mode, path))
                    self.assertLessEqual(faults(saved), known)
                    new_count = len(saved.modelspace())
                    if mode == "erase":
                        self.assertEqual(new_count, count // 2)
                    else:
                        self.assertGreaterEqual(new_count, count)


if __name__ == "__main__":
    unittest.main()
