# SPDX-License-Identifier: MIT
"""The committed sample drawings are what their script writes, are clean, and hold what the tests and the manual rely on.

Usage: tst_samples.py SAMPLES_FOLDER. Ends with status 77, "skipped", where ezdxf is absent or of another version than
the one the samples were made with: another version lays the same drawing out differently.
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

EZDXF_VERSION = (0, 18)
SKIPPED = 77

try:
    import ezdxf
except ImportError:
    print("skipped: ezdxf is not installed")
    sys.exit(SKIPPED)
if tuple(ezdxf.version[:2]) != EZDXF_VERSION:
    print(f"skipped: the samples are made with ezdxf {EZDXF_VERSION}, this is {ezdxf.version}")
    sys.exit(SKIPPED)

FOLDER = pathlib.Path(sys.argv.pop(1)) if len(sys.argv) > 1 else pathlib.Path(__file__).parents[3] / "samples"
DRAWINGS = ("plan.dxf", "part.dxf")


def read(name):
    return ezdxf.readfile(FOLDER / name)


class SamplesTest(unittest.TestCase):
    def test_the_script_writes_the_committed_files_byte_for_byte(self):
        # Two hash seeds: an unordered set in the way of the writer would show as a difference.
        for seed in ("1", "2"):
            with self.subTest(seed=seed), tempfile.TemporaryDirectory() as folder:
                subprocess.run([sys.executable, str(FOLDER / "make_samples.py"), folder], check=True,
                               env={"PYTHONHASHSEED": seed, "LC_ALL": "C.UTF-8", "HOME": folder})
                for name in DRAWINGS:
                    written = (pathlib.Path(folder) / name).read_bytes()
                    self.assertTrue(written == (FOLDER / name).read_bytes(),
                                    f"{name} is not what make_samples.py writes; run it and commit the result")

    def test_the_audit_finds_no_error(self):
        for name in DRAWINGS:
            with self.subTest(name):
                auditor = read(name).audit()
                self.assertEqual([], [error.message for error in auditor.errors + auditor.fixes])

    def test_the_files_are_utf8_text_of_version_2013(self):
        for name in DRAWINGS:
            with self.subTest(name):
                text = (FOLDER / name).read_bytes().decode("utf-8")
                self.assertIn("$ACADVER\n  1\nAC1027\n", text)
                self.assertNotIn("\r", text)

    def test_every_name_an_entity_refers_to_is_defined(self):
        for name in DRAWINGS:
            doc = read(name)
            entities = [entity for layout in doc.layouts for entity in layout]
            entities += [entity for block in doc.blocks for entity in block]
            for entity in entities:
                self.assertIn(entity.dxf.layer, doc.layers, entity)
                self.assertIn(entity.dxf.get("linetype", "BYLAYER"), doc.linetypes, entity)
                if entity.dxftype() in ("TEXT", "MTEXT", "ATTRIB", "ATTDEF"):
                    self.assertIn(entity.dxf.style, doc.styles, entity)
                if entity.dxftype() == "INSERT":
                    self.assertIn(entity.dxf.name, doc.blocks, entity)

    def test_every_dimension_has_its_picture(self):
        for name, least in (("plan.dxf", 35), ("part.dxf", 18)):
            doc = read(name)
            dimensions = doc.modelspace().query("DIMENSION")
            self.assertGreaterEqual(len(dimensions), least)
            for dimension in dimensions:
                self.assertGreaterEqual(len(doc.blocks.get(dimension.dxf.geometry)), 4, dimension)

    def test_the_view_saved_with_the_drawing_shows_all_of_it(self):
        for name in DRAWINGS:
            doc = read(name)
            low, high = doc.header["$EXTMIN"], doc.header["$EXTMAX"]
            view = doc.viewports.get("*Active")[0].dxf
            for axis in (0, 1):
                self.assertAlmostEqual((low[axis] + high[axis]) / 2, view.center[axis], msg=name)
            self.assertGreaterEqual(view.height, high[1] - low[1])
            self.assertLess(view.height, 1.1 * (high[1] - low[1]))

    def test_the_plan_has_the_variety_it_is_shown_for(self):
        doc = read("plan.dxf")
        self.assertGreaterEqual(len(doc.layers), 25)
        states = [(layer.is_frozen(), layer.is_off(), layer.is_locked()) for layer in doc.layers]
        for state in range(3):
            self.assertTrue(any(layer[state] for layer in states))
        self.assertTrue(any(not layer.dxf.name.isascii() for layer in doc.layers))
        self.assertGreaterEqual(len({layer.dxf.linetype for layer in doc.layers}), 6)
        self.assertGreaterEqual(len({layer.dxf.lineweight for layer in doc.layers}), 5)
        self.assertGreaterEqual(len(doc.views), 3)
        self.assertGreaterEqual(len(doc.ucs), 1)
        self.assertGreaterEqual(len(doc.dimstyles), 3)
        self.assertGreaterEqual(len(doc.groups), 1)
        types = [entity.dxftype() for entity in doc.modelspace()]
        self.assertGreaterEqual(types.count("MULTILEADER"), 2)
        self.assertGreaterEqual(types.count("HATCH"), 15)
        self.assertGreaterEqual(types.count("INSERT"), 80)
        self.assertIn("MULTILEADER", [dxf_class.dxf.name for dxf_class in doc.classes])
        self.assertTrue(any(entity.has_xdata("ZEVA_SAMPLES") for entity in doc.modelspace()))
        self.assertTrue(any(insert.attribs for insert in doc.modelspace().query("INSERT")))


if __name__ == "__main__":
    unittest.main(verbosity=2)
