# SPDX-License-Identifier: MIT
"""What the built libraries define and want, and what the headers promise: shared by the checks of both."""

import collections
import pathlib
import re
import subprocess

# ZV_EXPORT in front of a class, or of a function or a variable.
EXPORTED_CLASS = re.compile(r"\b(?:class|struct)\s+ZV_EXPORT\s+(\w+)")
EXPORTED_OPERATOR = re.compile(r"\bZV_EXPORT\b[^;{}()]*?\b(operator\s*[^\s\w(]+)\s*\(")
EXPORTED_FUNCTION = re.compile(r"\bZV_EXPORT\b[^;{}()]*?\b(\w+)\s*\(")
EXPORTED_VARIABLE = re.compile(r"\b(?:extern\s+ZV_EXPORT|ZV_EXPORT\s+extern)\b[^;{}()]*?\b(\w+)\s*;")
NAMESPACE = re.compile(r"^\s*(?:inline\s+)?namespace\s+(\w+)", re.MULTILINE)
# A macro whose parameter is an exported class.
CLASS_MACRO = re.compile(r"#\s*define\s+(\w+)\((\w+)\)(?=(?:[^\n]*\\\n)*[^\n]*class\s+ZV_EXPORT\s+\2\b)")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)

# What the compiler makes for a class, in front of the class's name.
OF_A_CLASS = re.compile(r"^(vtable|VTT|typeinfo name|typeinfo|construction vtable|guard variable) for ")
THUNK = re.compile(r"^(non-virtual|virtual) thunk to ")

Symbol = collections.namedtuple("Symbol", "mangled kind name")


def read_symbols(library, which):
    """The dynamic symbols of a library; \\a which is "--defined-only" or "--undefined-only"."""
    listing = subprocess.run(["nm", "-D", "--no-demangle", which, str(library)], check=True, stdout=subprocess.PIPE, text=True)
    rows = [line.split()[-2:] for line in listing.stdout.splitlines()]
    mangled = [name.split("@")[0] for _, name in rows]
    demangled = subprocess.run(["c++filt"], check=True, input="\n".join(mangled), stdout=subprocess.PIPE, text=True)
    return [Symbol(name, kind, text) for (kind, _), name, text in zip(rows, mangled, demangled.stdout.splitlines())]


def without_brackets(text, opening, closing):
    """The text without what stands in these brackets, nested ones included."""
    result = []
    depth = 0
    for at, char in enumerate(text):
        # The brackets of operator<, operator> and operator() are part of a name.
        if not depth and re.search(r"\boperator[<>(]*$", text[:at]) and char in "<>()":
            if char not in "()" or text[at:at + 2] == "()" or text[:at].endswith("operator("):
                result.append(char)
                continue
        if char == opening:
            depth += 1
        elif char == closing:
            depth -= 1
        elif not depth:
            result.append(char)
    return "".join(result)


def qualified_name(demangled):
    """"bool A::f<int>(long) const" is "A::f"; what the compiler makes for a class A is "A"."""
    text = THUNK.sub("", demangled)
    text, of_a_class = OF_A_CLASS.subn("", text)
    text = without_brackets(text.replace("(anonymous namespace)", "{anonymous}"), "<", ">")
    text = re.sub(r"\[abi:\w+\]", "", without_brackets(text, "(", ")")).replace(" const", "").strip()
    if of_a_class:
        return text.split("::{")[0]
    match = re.search(r"((?:[\w{}~]+::)*operator.*)$", text)
    return match[1] if match else text.split(" ")[-1]


class Promises:
    """What the headers of some folders export, without namespaces."""

    def __init__(self, folders):
        self.classes = set()
        self.functions = set()
        self.namespaces = set()
        for folder in folders:
            for header in sorted(pathlib.Path(folder).rglob("*.h")):
                self.read(header.read_text(encoding="utf-8"))

    def read(self, text):
        text = COMMENT.sub("", text).replace("#define ZV_EXPORT", "")
        for macro, parameter in CLASS_MACRO.findall(text):
            text = text.replace(f"ZV_EXPORT {parameter}", parameter)
            self.classes |= set(re.findall(rf"^{macro}\((\w+)\)", text, re.MULTILINE))
        self.classes |= set(EXPORTED_CLASS.findall(text))
        text = EXPORTED_CLASS.sub("class", text)
        for pattern in (EXPORTED_OPERATOR, EXPORTED_FUNCTION, EXPORTED_VARIABLE):
            self.functions |= {re.sub(r"\s", "", name) for name in pattern.findall(text)}
        self.namespaces |= set(NAMESPACE.findall(text))

    def owner(self, name):
        """The part of a qualified name that a header has to promise: the class, or the function itself."""
        parts = name.split("::")
        while len(parts) > 1 and parts[0] in self.namespaces:
            parts = parts[1:]
        return parts[0].replace(" ", "")

    def covers(self, name):
        owner = self.owner(name)
        return owner in self.classes or owner in self.functions
