#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The checks of the source tree find each kind of fault, and nothing in a tree that is in order."""

import pathlib
import tempfile
import unittest

import check_exports
import check_kernel_operations
import check_layers
import check_words
import symbols

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
        for first, second in [("Pa", "rt 3.2"), ("the sp", "ec says"), ("Speci", "fication"), ("/wo", "rk/here")]:
            with self.subTest(second=second):
                self.assertEqual(self.found("as " + first + second), 1)

    def test_ordinary_words_pass(self):
        for line in ["a part of the drawing", "the spectrum", "workbench", "a library of parts", "special"]:
            with self.subTest(line=line):
                self.assertEqual(self.found(line), 0)


class Symbols(unittest.TestCase):
    def test_names_are_taken_from_what_the_demangler_says(self):
        for text, name in [("ZvString::find(wchar_t, int) const", "ZvString::find"),
                           ("zvedMenuMacro(ZvString const&, bool)", "zvedMenuMacro"),
                           ("vtable for ZvDbLine", "ZvDbLine"),
                           ("typeinfo name for N::A", "N::A"),
                           ("non-virtual thunk to A::~A()", "A::~A"),
                           ("ZvGeContext::gTol", "ZvGeContext::gTol"),
                           ("void A::f<B>(B const*)", "A::f"),
                           ("operator==(ZvString const&, ZvString const&)", "operator=="),
                           ("ZvGeMatrix2d::operator*=(ZvGeMatrix2d const&)", "ZvGeMatrix2d::operator*="),
                           ("ZvString::operator<(ZvString const&) const", "ZvString::operator<"),
                           ("A::operator()(int) const", "A::operator()"),
                           ("N::P<ZvString>::reset()", "N::P::reset"),
                           ("f(std::vector<int, std::allocator<int> > const&)", "f"),
                           ("ZvString::toStdString[abi:cxx11]() const", "ZvString::toStdString"),
                           ("zvrxEntryPoint", "zvrxEntryPoint")]:
            with self.subTest(text=text):
                self.assertEqual(symbols.qualified_name(text), name)

    HEADER = """#define ZV_EXPORT x
namespace N {
class ZV_EXPORT Inner
{
};
}
class ZV_EXPORT Shown : public Base
{
};
class Hidden
{
};
class Half
{
    ZV_EXPORT explicit Half(int value);
};
/// ZV_EXPORT void commented();
ZV_EXPORT const char *function(int value);
ZV_EXPORT bool operator==(const Shown &a, const Shown &b);
#define DECLARE(Name)            \\
    class ZV_EXPORT Name : public Base \\
    {                            \\
    };
DECLARE(Made)
"""

    def complaints(self, *names):
        promises = symbols.Promises([])
        promises.read(self.HEADER)
        always = ["Half::Half(int)", "function(int)", "operator==(Shown const&, Shown const&)"]
        defined = [symbols.Symbol(name, "T", name) for name in [*always, *names]]
        return list(check_exports.complaints(defined, promises))

    def test_what_headers_export_passes(self):
        for name in ["Shown::f()", "vtable for Shown", "N::Inner::f()", "Made::f()", "Shown::Nested::f() const"]:
            with self.subTest(name=name):
                self.assertEqual(self.complaints(name), [])

    def test_what_no_header_exports_is_found(self):
        for name in ["Hidden::f()", "commented()", "std::vector<Shown>::size()", "vtable for Hidden", "N::other()", "_end"]:
            with self.subTest(name=name):
                self.assertEqual(len(self.complaints(name)), 1)

    def test_a_function_that_is_exported_and_missing_is_found(self):
        promises = symbols.Promises([])
        promises.read("ZV_EXPORT int missing();\n")
        self.assertEqual(len(list(check_exports.complaints([], promises))), 1)


class KernelOperations(unittest.TestCase):
    def wanted(self, *names):
        every = [symbols.Symbol(name, "U", name) for name in names]
        return check_kernel_operations.wanted_operations(every, every)

    def test_making_destroying_and_assigning_count_as_the_class(self):
        self.assertEqual(self.wanted("A::A(int)", "A::~A()", "vtable for A", "A::operator=(A const&)", "B::f()", "B::f(int)"),
                         {"A", "B::f"})

    def test_what_the_kernel_does_not_offer_is_not_asked_of_it(self):
        wanted = [symbols.Symbol("QString::f()", "U", "QString::f()")]
        self.assertEqual(check_kernel_operations.wanted_operations(wanted, []), set())

    def listed(self, *rows):
        return check_kernel_operations.listed_operations(
            "| `elsewhere` | x |\n## The operations\n\n| operation | what |\n|---|---|\n" + "\n".join(rows) + "\n")

    def test_the_first_column_is_the_list(self):
        self.assertEqual(self.listed("| `A`, `B::f` | do `that` |", "| `g` | do it |"), ["A", "B::f", "g"])

    def test_differences_are_found_both_ways(self):
        for wanted, listed in [({"A"}, []), (set(), ["A"]), ({"A"}, ["A", "A"])]:
            with self.subTest(wanted=wanted, listed=listed):
                self.assertEqual(len(list(check_kernel_operations.complaints(wanted, listed))), 1)
        self.assertEqual(list(check_kernel_operations.complaints({"A"}, ["A"])), [])


if __name__ == "__main__":
    unittest.main()
