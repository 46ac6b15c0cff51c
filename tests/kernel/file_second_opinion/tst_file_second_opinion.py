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

    def drawings(self):
        drawings = [path for folder in FOLDERS if folder.is_dir() for path in sorted(folder.glob("*.dxf"))]
        self.assertTrue(drawings)
        return [path for path in drawings if path.stat().st_size <= LARGEST]

    def test_settings_are_where_others_look_for_them(self):
        for path in self.drawings():
            original = read(path)
            if original.dxfversion < "AC1021":
                continue
            with self.subTest(drawing=path.name):
                saved = read(self.resave("settings", path))
                self.assertLessEqual(faults(saved), faults(original))
                header = saved.header
                self.assertEqual(header["$CECOLOR"], 3)
                self.assertEqual(header["$CELWEIGHT"], 70)
                self.assertEqual(header["$CLAYER"], "Picked layer")
                self.assertEqual(header["$CELTYPE"], "Picked dashes")
                self.assertEqual(header["$TEXTSTYLE"], "Picked texts")
                self.assertEqual(header["$DIMSTYLE"], "Picked dimensions")
                self.assertEqual(header["$DIMSCALE"], 12.5)
                self.assertEqual(header["$UCSNAME"], "Picked system")
                self.assertEqual(header["$UCSORG"], (1, 2, 3))
                root = saved.rootdict
                self.assertEqual(header["$CMATERIAL"], root["ACAD_MATERIAL"]["Picked material"].dxf.handle)
                self.assertEqual(header["$CEPSNID"], root["ACAD_PLOTSTYLENAME"]["Picked plot style"].dxf.handle)
                self.assertIn("Picked tables", root["ACAD_TABLESTYLE"])
                self.assertIn("Picked leaders", root["ACAD_MLEADERSTYLE"])
                variables = root["AcDbVariableDictionary"]
                self.assertEqual(variables["CTABLESTYLE"].dxf.value, "Picked tables")
                self.assertEqual(variables["CMLEADERSTYLE"].dxf.value, "Picked leaders")
                extension = saved.layers.head.get_extension_dict().dictionary
                self.assertIn("Picked state", extension["ACAD_LAYERSTATES"])
                font = saved.styles.get("Picked texts").get_extended_font_data()
                self.assertEqual(font, ("Liberation Sans", True, True))

    def test_the_viewport_worked_in_is_the_layouts_last(self):
        saved = read(self.resave("viewport"))
        self.assertEqual(faults(saved), {})
        layout = saved.layout("Layout1")
        last = layout.dxf_layout.dxf.viewport_handle
        self.assertEqual(last, [entity.dxf.handle for entity in layout.query("VIEWPORT")][-1])

    def test_what_belongs_to_an_entity_has_its_layer(self):
        for path in self.drawings():
            with self.subTest(drawing=path.name):
                original = read(path)
                saved = read(self.resave("recolor", path))
                self.assertLessEqual(faults(saved), faults(original))
                for polyline in saved.modelspace().query("POLYLINE"):
                    parts = [*polyline.vertices, polyline.seqend]
                    self.assertEqual({part.dxf.layer for part in parts if part}, {"Picked layer"})
                    self.assertEqual({vertex.dxf.color for vertex in polyline.vertices}, {77})

    def test_changed_drawings_have_no_new_faults(self):
        for path in self.drawings():
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
