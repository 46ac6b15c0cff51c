# SPDX-License-Identifier: MIT
"""Headers as the reference reads them.

A comment in our headers speaks for what stands right below it and, where these follow without a break, for what goes
with that by its name: the setter behind its getter, overloads but of constructors, "green" and "blue" behind "red", a run of properties. Doxygen gives a comment
to one declaration alone unless a group is marked. mark() marks these groups and adds no line, so that warnings tell the
header's own lines.
"""

import re

BEGIN = "/** @{ */"
END = "/** @} */"

# Names that differ in one of these words go together.
COMPANIONS = [
    ("x", "y", "z"), ("red", "green", "blue", "alpha"), ("minimum", "maximum"), ("min", "max"), ("width", "height"),
    ("begin", "end", "abort"), ("start", "end"), ("first", "second", "last"), ("left", "right", "top", "bottom"),
    ("undo", "redo"), ("add", "remove"), ("append", "remove"), ("u", "v"), ("lower", "upper"), ("horizontal", "vertical"),
    ("bold", "italic"), ("rows", "cols", "columns"), ("row", "column"),
]
COMMENT = re.compile(r"^\s*///(?!<)")
PROPERTY = re.compile(r"^\s*Q_PROPERTY\(.*\)$")
TEMPLATE = re.compile(r"^\s*template\s*<.*>\s*$")
NO_MEMBER = re.compile(r"^\s*(#|\}|Q_|QT_|ZV\w+\(|(friend|using|namespace|public|protected|private|class|struct|enum)\b)")
WORDS = re.compile(r"[A-Z]?[a-z0-9]+|[A-Z]+(?![a-z])")


def without_texts(line):
    """The code of a line: no comment, and nothing between quotes."""
    line = re.sub(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)*\'', '""', line)
    return re.sub(r"/\*.*?\*/", "", line).split("//")[0].rstrip()


def end_of_declaration(lines, at):
    """The last line of the declaration that begins in line \\a at; None where that is something else."""
    if PROPERTY.match(lines[at]):
        return at
    first = at + 1 if TEMPLATE.match(lines[at]) and at + 1 < len(lines) else at
    if NO_MEMBER.match(lines[first]):
        return None
    depth = 0
    for number in range(at, len(lines)):
        if not lines[number].strip():
            return None
        code = without_texts(lines[number])
        depth += sum(map(code.count, "({[")) - sum(map(code.count, ")}]"))
        if depth < 0:
            return None
        if depth == 0 and re.search(r"[;}]$", code) and not re.match(r"^\s*[:,]", lines[min(number + 1, len(lines) - 1)]):
            return number
    return None


def name_of(lines, first, last):
    """What is declared: a function, or a variable. Properties in a row go together."""
    code = " ".join(without_texts(line).strip() for line in lines[first:last + 1])
    code = re.sub(r"^template\s*<[^>]*>\s*", "", code).split("{")[0] + ";"
    if re.match(r"^(explicit\s+)?(?!Q_)~?[A-Z]\w*\(", code):
        return "" # a constructor: others do something else
    operator = re.search(r"\boperator\s*(\S+?)\s*\(", code)
    if operator:
        return "operator"
    match = re.search(r"(~?\w+)\s*\(", code)
    assigned = re.search(r"^[^(]*?(\w+)\s*(=|\{|\[|;)", code)
    if match and not (assigned and assigned.end() < match.start()):
        return match[1]
    return assigned[1] if assigned else ""


def go_together(one, other):
    """Whether what is called \\a other may stand under the comment of \\a one, which is right before it."""
    if not one or not other:
        return False
    if one == other:
        return True
    plain = re.sub(r"^is(?=[A-Z])", "", one)
    if other in (f"set{one[0].upper()}{one[1:]}", f"set{plain[0].upper()}{plain[1:]}"):
        return True
    words, others = WORDS.findall(one), WORDS.findall(other)
    if len(words) != len(others):
        return False
    different = [(a.lower(), b.lower()) for a, b in zip(words, others) if a != b]
    return len(different) == 1 and any(different[0][0] in row and different[0][1] in row for row in COMPANIONS)


def groups(lines):
    """First comment line and last line of each group."""
    at = 0
    while at < len(lines):
        if not COMMENT.match(lines[at]):
            at += 1
            continue
        comment = at
        while at < len(lines) and COMMENT.match(lines[at]):
            at += 1
        names = []
        last = None
        while at < len(lines) and lines[at].strip() and not COMMENT.match(lines[at]) and "///<" not in lines[at]:
            end = end_of_declaration(lines, at)
            if end is None:
                break
            name = name_of(lines, at, end)
            if names and not any(go_together(earlier, name) for earlier in names):
                break
            names.append(name)
            last = end
            at = end + 1
        if len(names) > 1:
            yield comment, last


def virtual_names(texts):
    """What the headers declare virtual: an override of anything else is one of Qt's operations."""
    return {name for text in texts for name in re.findall(r"\bvirtual\b[^;{}()]*?(~?\w+)\s*\(", text)}


def mark(text, virtuals):
    lines = text.split("\n")
    if "\\file" not in text:
        lines[0] = "/** \\file */" # in the licence's place: free functions are shown for files that are documented
    for at, line in enumerate(lines):
        match = re.match(r"^(\s+)(\S.*\b(\w+)\(.*\boverride;)$", line)
        if match and "~" not in line and match[3] not in virtuals and not COMMENT.match(lines[at - 1]):
            lines[at] = f"{match[1]}/** Reimplemented from the Qt base class. */ {match[2]}"
        # What a class keeps for those derived from it is told where they have to know it.
        match = re.match(r"^(\s+)([^(]*\bm_\w+(\s*=[^;]*|\s*\{[^;]*\})?;)(\s*//(?!/).*)?$", line)
        if match and not COMMENT.match(lines[at - 1]):
            lines[at] = f"{match[1]}/** @cond */ {match[2]} /** @endcond */{match[4] or ''}"
    for first, last in list(groups(lines)):
        if "//" in lines[first - 1]:
            lines[first] = f"{BEGIN} {lines[first]}"
        else:
            lines[first - 1] = f"{lines[first - 1]} {BEGIN}"
        if "//" in lines[last]:
            lines[last + 1] = f"{END} {lines[last + 1]}"
        else:
            lines[last] = f"{lines[last]} {END}"
    return "\n".join(lines)
