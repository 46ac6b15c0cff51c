# SPDX-License-Identifier: MIT
"""Drawings written by the tag store, read by ezdxf: the same content and no new faults.

Usage: tst_dxf_second_opinion.py DXF_REWRITE FOLDER... Ends with status 77, "skipped", where ezdxf is absent.
"""

import logging
import pathlib
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77

try:
    import ezdxf
    from ezdxf.lldxf.encoding import decode_dxf_unicode
except ImportError:
    print("skipped: ezdxf is not installed")
    sys.exit(SKIPPED)

REWRITE = sys.argv.pop(1)
FOLDERS = [pathlib.Path(folder) for folder in sys.argv[1:]]
del sys.argv[1:]
LARGEST = 600_000  # bytes; ezdxf takes seconds for more

# The texts hold what each page has, and what it has not.
TEXTS = {
    "ANSI_936": ["墙体", "Ø12 墙", "plain"],
    "ANSI_932": ["表面", "壁 Ø"],
    "ANSI_949": ["벽", "é 벽"],
    "ANSI_950": ["牆", "Ж 牆"],
    "ANSI_1252": ["Straße Ø12", "墙", "x²"],
    "ANSI_1251": ["Стена", "墙 é"],
}


def summary(document):
    audit = document.audit()
    entities = sorted((entity.dxftype(), entity.dxf.handle) for entity in document.entitydb.values() if entity.is_alive)
    return document.dxfversion, len(audit.errors), len(audit.fixes), entities


def layer_colours(document):
    return [layer.dxf.color for layer in document.layers]


class SecondOpinionTest(unittest.TestCase):
    def setUp(self):
        logging.disable(logging.WARNING)
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name):
        return str(pathlib.Path(self.folder.name) / name)

    def test_converted_and_changed_drawings_read_as_their_originals(self):
        drawings = [path for folder in FOLDERS for path in sorted(folder.glob("*.dxf"))]
        self.assertTrue(drawings)
        for drawing in drawings:
            if drawing.stat().st_size > LARGEST:
                continue
            with self.subTest(drawing=drawing.name):
                try:
                    document = ezdxf.readfile(drawing)
                except ezdxf.DXFError:
                    continue  # broken beyond what this reader takes, so it has no opinion
                original, colours = summary(document), layer_colours(document)
                converted, changed = self.path("converted.dxf"), self.path("changed.dxf")
                subprocess.run([REWRITE, str(drawing), converted, changed], check=True)
                self.assertEqual(summary(ezdxf.readfile(converted)), original)
                document = ezdxf.readfile(changed)
                self.assertEqual(summary(document), original)
                self.assertEqual(document.header["$LTSCALE"], 2.5)
                different = [new for old, new in zip(colours, layer_colours(document)) if old != new]
                self.assertEqual(different, [211])

    def test_texts_come_through_their_code_page(self):
        for page, texts in TEXTS.items():
            with self.subTest(page=page):
                out = self.path("texts.dxf")
                subprocess.run([REWRITE, "--texts", out, page, *texts], check=True)
                read = [decode_dxf_unicode(entity.dxf.text) for entity in ezdxf.readfile(out).modelspace()]
                self.assertEqual(read, texts)


if __name__ == "__main__":
    unittest.main()
