#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The tools of the documents find each kind of fault, and nothing in documents that are in order."""

import pathlib
import re
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "docs/reference"))

import check_links
import comment_runs
import extract_code
import make_reference


def in_folder(files, function):
    """What the function says of a folder with these files."""
    with tempfile.TemporaryDirectory() as name:
        root = pathlib.Path(name).resolve()
        for path, text in files.items():
            (root / path).parent.mkdir(parents=True, exist_ok=True)
            (root / path).write_text(text, encoding="utf-8")
        return function(root)


class Links(unittest.TestCase):
    def found(self, text):
        files = {"docs/page.md": text, "docs/other.md": "# Other page\n\n## A `part` of it\n\n## Twice\n\n## Twice\n",
                 "picture.png": "", "code.h": ""}
        return in_folder(files, lambda root: list(check_links.complaints(root / "docs/page.md", root)))

    def test_links_that_lead_somewhere_pass(self):
        for text in ["[a](other.md)", "![a](../picture.png)", "[a](../code.h)", "[a](other.md#other-page)",
                     "[a](other.md#a-part-of-it)", "[a](other.md#twice-1)", "# Here\n[a](#here)", "[a](https://example.org/x)",
                     "[`a`](other.md)", "[![a](../picture.png)](other.md)", "`[a](nowhere.md)`",
                     "```\n[a](nowhere.md)\n```", "<img src=\"../picture.png\">", "[a](../docs)"]:
            with self.subTest(text=text):
                self.assertEqual(self.found(text), [])

    def test_links_that_lead_nowhere_are_found(self):
        for text in ["[a](nowhere.md)", "![a](nowhere.png)", "[a](other.md#nowhere)", "[a](#nowhere)",
                     "[a](../../outside.md)", "[a]: nowhere.md", "<a href=\"nowhere.md\">", "[a](other.md#twice-2)",
                     "[`a`](nowhere.md)", "[a](nowhere.md \"title\")"]:
            with self.subTest(text=text):
                self.assertEqual(len(self.found(text)), 1)

    def test_a_complaint_tells_the_line(self):
        self.assertIn("docs/page.md:3:", self.found("one\n\n[a](nowhere.md)")[0])


class Code(unittest.TestCase):
    def extract(self, text, prelude="before\n    // the code\nafter\n"):
        files = {"docs/page.md": text, "preludes/here.cpp": prelude}
        return in_folder(files, lambda root: extract_code.extract([root / "docs/page.md"], root / "preludes", root))

    def test_a_file_is_taken_as_it_stands(self):
        self.assertEqual(self.extract("<!-- file: a/b.cpp -->\n```cpp\nint x;\n```\n"), {"a/b.cpp": "int x;\n"})

    def test_a_piece_stands_in_its_prelude(self):
        pieces = self.extract("text\n<!-- in: here -->\n```cpp\nint x;\n```\n")
        (name, text), = pieces.items()
        self.assertEqual(name, "pieces/docs_page_1.cpp")
        self.assertTrue(text.startswith("before\n#line 4 "))
        self.assertIn("int x;\n#line 3 \"prelude\"\nafter\n", text)

    def test_a_piece_with_a_class_of_qt_gets_its_moc(self):
        self.assertIn('#include "docs_page_1.moc"',
                      "".join(self.extract("<!-- in: here -->\n```cpp\nQ_OBJECT\n```\n").values()))

    def test_other_languages_are_left_alone(self):
        self.assertEqual(self.extract("```sh\nls\n```\n```\nx\n```\n"), {})

    def test_mistakes_are_found(self):
        for text in ["```cpp\nint x;\n```\n", "```cmake\nproject(x)\n```\n", "<!-- in: nowhere -->\n```cpp\nx\n```\n",
                     "<!-- file: a.cpp -->\n```cpp\nx\n", "<!-- file: a -->\n\n```cpp\nx\n```\n",
                     "<!-- file: a -->\n```cpp\nx\n```\n<!-- file: a -->\n```cpp\ny\n```\n"]:
            with self.subTest(text=text):
                self.assertRaises(extract_code.Mistake, self.extract, text)

    def test_a_prelude_without_a_place_is_found(self):
        self.assertRaises(extract_code.Mistake, self.extract, "<!-- in: here -->\n```cpp\nx\n```\n", "no place\n")


class CommentRuns(unittest.TestCase):
    def groups(self, text):
        """The declarations that share the comment, by line."""
        lines = text.split("\n")
        return [lines[first:last + 1] for first, last in comment_runs.groups(lines)]

    def test_what_goes_together_shares_a_comment(self):
        for first, second in [("int size() const;", "void setSize(int size);"),
                              ("bool isOn() const { return m_on; }", "void setOn(bool on);"),
                              ("bool isOn() const;", "void setIsOn(bool on);"),
                              ("int red() const;", "int green() const;"),
                              ("double x = 0.0;", "double y = 0.0;"),
                              ("void add(int value);", "void remove(int value);"),
                              ("T &at(int i) { return e[i]; }", "const T &at(int i) const { return e[i]; }"),
                              ("P startPoint() const;", "P endPoint() const;"),
                              ("bool operator==(const A &a) const;", "bool operator!=(const A &a) const;"),
                              ("Q_PROPERTY(int a READ a)", "Q_PROPERTY(int b READ b)"),
                              ("Point minimum {1e20, 1e20};", "Point maximum {-1e20, -1e20};")]:
            with self.subTest(first=first, second=second):
                self.assertEqual(len(self.groups(f"\n    /// Text.\n    {first}\n    {second}\n\n")), 1)

    def test_what_does_not_go_together_shares_none(self):
        for text in ["    /// Text.\n    int size() const;\n    int length() const;\n",
                     "    /// Text.\n    explicit Box(int size);\n    Box(bool hook, int size);\n",
                     "    /// Text.\n    int size() const;\n\n    void setSize(int size);\n",
                     "    /// Text.\n    int size() const;\n    /// Other.\n    void setSize(int size);\n",
                     "    /// Text.\n    class A\n    {\n    };\n",
                     "/// Text.\ntemplate<class T>\nstruct A\n{\n    int x;\n    int y;\n};\n"]:
            with self.subTest(text=text):
                self.assertEqual(self.groups("\n" + text), [])

    def test_a_declaration_of_several_lines_stays_whole(self):
        text = "\n    /// Text.\n    A f(int a,\n        int b)\n    {\n        return g(a);\n    }\n    A f(int a);\n\n"
        self.assertEqual(len(self.groups(text)[0]), 7)

    def test_no_line_is_added(self):
        for path in [*(ROOT / "inc/qt").glob("*.h"), *(ROOT / "kernel/inc").rglob("*.h")]:
            text = path.read_text(encoding="utf-8")
            marked = comment_runs.mark(text, {"isA"})
            with self.subTest(path=path.name):
                self.assertEqual(marked.count("\n"), text.count("\n"))
                self.assertEqual(marked.count(comment_runs.BEGIN), marked.count(comment_runs.END))

    def test_an_override_of_qt_says_so_and_ours_does_not(self):
        marked = comment_runs.mark("// x\nclass A\n{\n    void paintEvent(QPaintEvent *event) override;\n    int isA() override;\n",
                                   {"isA"})
        self.assertIn("Reimplemented from the Qt base class. */ void paintEvent", marked)
        self.assertNotIn("*/ int isA", marked)
        self.assertNotIn("Reimplemented", comment_runs.mark("// x\nclass A\n{\n    ~A() override;\n", set()))


class DialogKeys(unittest.TestCase):
    SOURCES = {"MessageBox": "qt_messagebox", "TaskDialog": "qt_taskdialog", "FileDialogBox": "qt_filedialog*",
               "CADPreviewDialog": "zv*preview*"}
    READ = re.compile(r'\b(?:zvBag\w+|bagObject)\((?:params|params\(\)|m_pParams|command|paper), "(\w+)"')
    WRITTEN = re.compile(r'\b(?:[GS]etData\w+|setInteger)\("(\w+)"')

    def test_the_guide_tells_every_key_that_a_dialog_reads_or_writes(self):
        guide = (ROOT / "docs/guides/dialogs.md").read_text(encoding="utf-8")
        sections = re.split(r"^## ", guide, flags=re.MULTILINE)[1:]
        for name, pattern in self.SOURCES.items():
            section = "".join(part for part in sections if f'"{name}"' in part.split("\n", 1)[0])
            sources = "".join(path.read_text(encoding="utf-8")
                              for path in (ROOT / "src/qtutils/common").glob(pattern + ".cpp"))
            keys = {*self.READ.findall(sources), *self.WRITTEN.findall(sources)}
            self.assertGreater(len(keys), 10, name)
            for key in sorted(keys):
                with self.subTest(dialog=name, key=key):
                    self.assertIn(f'"{key}"', section)


class Reference(unittest.TestCase):
    def test_widgets_are_found_by_their_bases(self):
        text = ("class ZV_EXPORT A : public QComboBox, public Other\nclass ZV_EXPORT B : public A\n"
                "class ZV_EXPORT C : public QObject\nclass D : public QWidget\n")
        self.assertEqual(make_reference.widgets([text]), ["A", "B"])


if __name__ == "__main__":
    unittest.main()
