# SPDX-License-Identifier: MIT
"""What both sample drawings share: a new document with fixed header data, line types, styles and drawing shortcuts."""

import math

import ezdxf
from ezdxf.entities import factory
from ezdxf.entities.dxfclass import DXFClass
from ezdxf.lldxf.extendedtags import ExtendedTags

LATIN = "DejaVu Sans"
CJK = "Noto Sans CJK SC"

# Name, description, pattern as the DXF table wants it: total length first, dashes positive, gaps negative, dots 0.
# Lengths are millimetres on paper at a line type scale of 1.
LINE_TYPES = [
    ("CENTER", "Center ____ _ ____ _ ____ _ ____", [20.0, 12.5, -2.5, 2.5, -2.5]),
    ("CENTER2", "Center (.5x) ___ _ ___ _ ___ _", [11.0, 7.0, -1.5, 1.0, -1.5]),
    ("DASHED", "Dashed __ __ __ __ __ __ __", [6.0, 4.0, -2.0]),
    ("HIDDEN", "Hidden _ _ _ _ _ _ _ _ _ _", [3.5, 2.5, -1.0]),
    ("DASHDOT", "Dash dot __ . __ . __ . __ .", [8.0, 5.0, -1.5, 0.0, -1.5]),
    ("PHANTOM", "Phantom _____ _ _ _____ _ _", [18.0, 10.0, -1.5, 1.75, -1.5, 1.75, -1.5]),
    ("DOT", "Dot . . . . . . . . . . .", [1.5, 0.0, -1.5]),
]

# Line types with a text in the gap, in the notation of line type definition files.
TEXT_LINE_TYPES = [
    ("GAS_LINE", "Gas line ----GAS----GAS----", 'A,9,-2.6,["GAS",LATIN,S=1.8,U=0.0,X=-2.3,Y=-0.9],-3.2', 14.8),
    ("FENCE_X", "Fence ----x----x----x----", 'A,6,-0.9,["x",LATIN,S=2.2,U=0.0,X=-0.65,Y=-0.85],-0.9', 7.8),
]


def rgb(red, green, blue):
    return (red << 16) | (green << 8) | blue


def new_document():
    """An empty drawing in millimetres whose header, handles and text measures are the same in every run."""
    ezdxf.options.write_fixed_meta_data_for_testing = True
    ezdxf.options.use_matplotlib = False  # text widths must not depend on whether a font library is installed
    doc = ezdxf.new("R2013", setup=False, units=4)
    header = doc.header
    header["$MEASUREMENT"] = 1
    header["$LASTSAVEDBY"] = "samples"
    header["$LWDISPLAY"] = 1
    header["$LUNITS"] = 2
    header["$LUPREC"] = 2
    header["$AUPREC"] = 1
    header["$PSLTSCALE"] = 0

    doc.styles.get("Standard").dxf.font = "DejaVuSans.ttf"
    style(doc, "LATIN", "DejaVuSans.ttf", LATIN)
    style(doc, "LATIN-NARROW", "DejaVuSansCondensed.ttf", "DejaVu Sans Condensed", width=0.9)
    style(doc, "中文", "NotoSansCJK-Regular.ttc", CJK)
    style(doc, "中文-粗", "NotoSansCJK-Bold.ttc", CJK, bold=True)
    doc.styles.new("中文-大字体", dxfattribs={"font": "txt.shx", "bigfont": "hztxt.shx", "width": 0.8})

    for name, description, pattern in LINE_TYPES:
        doc.linetypes.add(name, pattern, description=description)
    for name, description, pattern, length in TEXT_LINE_TYPES:
        doc.linetypes.add(name, pattern, description=description, length=length)
    doc.appids.add("ZEVA_SAMPLES")
    return doc


def save(doc, path):
    """Saves the drawing; the class definitions go in by name, since the writer takes them from an unordered set."""
    for name in sorted(doc.entitydb.dxf_types_in_use()):
        doc.classes.add_class(name)
        if name == "MULTILEADER":  # ezdxf 0.18 defines the class only under the name MLEADER
            doc.classes.register(DXFClass.new(dxfattribs={
                "name": name, "cpp_class_name": "AcDbMLeader", "app_name": "ACDB_MLEADER_CLASS", "flags": 1025,
                "is_an_entity": 1}))
    doc.saveas(path)


def plot_model(doc, name, width, height):
    """Model space comes on one sheet, as large as fits, in its middle."""
    fit, centered, model = 0, 4, 1024
    doc.modelspace().dxf_layout.update_dxf_attribs({
        "paper_size": name, "paper_width": width, "paper_height": height, "plot_rotation": 0,
        "plot_type": 1,  # all that is drawn
        "plot_layout_flags": model + centered + 16 + 128,  # by the standard scale, with line weights
        "standard_scale_type": fit,
    })


def style(doc, name, font, family, width=1.0, bold=False):
    entry = doc.styles.new(name, dxfattribs={"font": font, "width": width})
    entry.set_extended_font_data(family, bold=bold)
    return entry


def layer(doc, name, color, description, weight=-3, linetype="Continuous", true_color=None, plot=True):
    entry = doc.layers.add(name, color=color, linetype=linetype, lineweight=weight, plot=plot)
    if true_color is not None:
        entry.dxf.true_color = rgb(*true_color)
    entry.description = description
    return entry


def material(doc, name, description, color, opacity=1.0):
    entry = doc.materials.new(name)
    entry.dxf.description = description
    entry.dxf.diffuse_color_method = 1
    entry.dxf.diffuse_color_value = rgb(*color) - 0x3E000000  # the top byte 0xC2 says "a true colour"
    entry.dxf.opacity = opacity
    return entry


def table_style(doc, name, description, text_style, heights):
    """A table style; `heights` are the text heights of the data, title and heading cells in drawing units."""
    table_styles = doc.rootdict.get_required_dict("ACAD_TABLESTYLE")
    handle = doc.entitydb.next_handle()
    tags = [(0, "TABLESTYLE"), (5, handle), (330, table_styles.dxf.handle), (100, "AcDbTableStyle"), (280, 0),
            (3, description), (70, 0), (71, 0), (40, heights[0] * 0.4), (41, heights[0] * 0.4), (280, 0), (281, 0)]
    for height, align, fill in zip(heights, (5, 5, 5), (0, 1, 1)):
        tags += [(7, text_style), (140, height), (170, align), (62, 0), (63, 254), (283, fill), (90, 4), (91, 0)]
        for border in range(6):
            tags += [(274 + border, 18), (284 + border, 1), (64 + border, 0)]
    text = "".join(f"{code}\n{value}\n" for code, value in tags)
    entry = factory.load(ExtendedTags.from_text(text), doc)
    doc.entitydb.add(entry)
    doc.objects.add_object(entry)
    table_styles[name] = entry
    return entry


def current_names(doc, **names):
    """Settings the header has no place for, such as CMLEADERSTYLE, live in a dictionary of their own."""
    variables = doc.rootdict.get_required_dict("AcDbVariableDictionary")
    for name, value in names.items():
        variables.add_dict_var(name, value)


def render_dimension(dimension):
    """Draws the dimension's block, with its lines on the dimension's own layer rather than on layer 0."""
    entity = dimension.render().dimension
    for part in entity.doc.blocks.get(entity.dxf.geometry):
        if part.dxf.layer == "0":
            part.dxf.layer = entity.dxf.layer
    return entity


class Pen:
    """Draws on one layout or block with common attributes."""

    def __init__(self, target, **attributes):
        self.target = target
        self.attributes = attributes

    def with_(self, **attributes):
        return Pen(self.target, **{**self.attributes, **attributes})

    def line(self, x1, y1, x2, y2):
        return self.target.add_line((x1, y1), (x2, y2), dxfattribs=dict(self.attributes))

    def circle(self, x, y, radius):
        return self.target.add_circle((x, y), radius, dxfattribs=dict(self.attributes))

    def arc(self, x, y, radius, start, end):
        return self.target.add_arc((x, y), radius, start, end, dxfattribs=dict(self.attributes))

    def ellipse(self, x, y, major, ratio):
        return self.target.add_ellipse((x, y), major, ratio, dxfattribs=dict(self.attributes))

    def path(self, points, close=False):
        """A polyline; a point is (x, y) or (x, y, bulge)."""
        vertices = [(point[0], point[1], point[2] if len(point) > 2 else 0.0) for point in points]
        return self.target.add_lwpolyline(vertices, format="xyb", close=close, dxfattribs=dict(self.attributes))

    def rect(self, x, y, width, height, radius=0.0):
        return self.path(rectangle(x, y, width, height, radius), close=True)

    def solid(self, points):
        return self.target.add_solid(solid_order(points), dxfattribs=dict(self.attributes))

    def fill(self, *loops):
        return self._hatch(loops, lambda hatch: None)

    def hatch(self, name, scale, *loops, angle=0.0, definition=None):
        def pattern(hatch):
            color = hatch.dxf.color
            hatch.set_pattern_fill(name, color=color, scale=scale, angle=angle, definition=definition,
                                   pattern_type=1 if definition is None else 2)
        return self._hatch(loops, pattern)

    def _hatch(self, loops, finish):
        hatch = self.target.add_hatch(color=self.attributes.get("color", 256), dxfattribs=dict(self.attributes))
        for number, loop in enumerate(loops):
            vertices = [(point[0], point[1], point[2] if len(point) > 2 else 0.0) for point in loop]
            hatch.paths.add_polyline_path(vertices, is_closed=True, flags=1 if number == 0 else 0)
        finish(hatch)
        return hatch

    def text(self, text, x, y, height, align="LEFT", style="LATIN", rotation=0.0):
        entity = self.target.add_text(
            text, dxfattribs={**self.attributes, "height": height, "style": style, "rotation": rotation})
        entity.set_pos((x, y), align=align)
        return entity

    def mtext(self, text, x, y, height, width, style="中文", spacing=1.0):
        return self.target.add_mtext(text, dxfattribs={
            **self.attributes, "char_height": height, "width": width, "style": style, "insert": (x, y),
            "attachment_point": 1, "line_spacing_factor": spacing})

    def insert(self, name, x, y, rotation=0.0, xscale=1.0, yscale=1.0):
        return self.target.add_blockref(name, (x, y), dxfattribs={
            **self.attributes, "rotation": rotation, "xscale": xscale, "yscale": yscale})

    def attdef(self, tag, prompt, x, y, height, align="MIDDLE_CENTER", style="LATIN"):
        entity = self.target.add_attdef(tag, (x, y), "", dxfattribs={
            **self.attributes, "height": height, "style": style, "prompt": prompt})
        entity.set_pos((x, y), align=align)
        return entity


def rectangle(x, y, width, height, radius=0.0):
    """Corner points counter-clockwise, with quarter circles as bulges where a radius is given."""
    if radius <= 0.0:
        return [(x, y), (x + width, y), (x + width, y + height), (x, y + height)]
    quarter = math.tan(math.pi / 8)
    right, top = x + width, y + height
    return [(x + radius, y), (right - radius, y, quarter), (right, y + radius), (right, top - radius, quarter),
            (right - radius, top), (x + radius, top, quarter), (x, top - radius), (x, y + radius, quarter)]


def solid_order(points):
    """SOLID numbers its corners in the order of the letter Z."""
    if len(points) == 3:
        return [points[0], points[1], points[2], points[2]]
    return [points[0], points[1], points[3], points[2]]


def union_loops(rectangles, holes=()):
    """Outlines of the union of axis-parallel rectangles (x1, y1, x2, y2) less the holes.

    Returns a list of groups; the first loop of a group is its outline, the others are the islands in it.
    """
    boxes = list(rectangles) + list(holes)
    xs = sorted({x for box in boxes for x in (box[0], box[2])})
    ys = sorted({y for box in boxes for y in (box[1], box[3])})

    def inside(i, j):
        if not (0 <= i < len(xs) - 1 and 0 <= j < len(ys) - 1):
            return False
        x, y = (xs[i] + xs[i + 1]) / 2, (ys[j] + ys[j + 1]) / 2

        def covers(box):
            return box[0] < x < box[2] and box[1] < y < box[3]
        return any(map(covers, rectangles)) and not any(map(covers, holes))

    edges = {}  # start -> ends, with the filled side on the left
    for i in range(len(xs) - 1):
        for j in range(len(ys) - 1):
            if not inside(i, j):
                continue
            for neighbour, start, end in (((i, j - 1), (i, j), (i + 1, j)), ((i + 1, j), (i + 1, j), (i + 1, j + 1)),
                                          ((i, j + 1), (i + 1, j + 1), (i, j + 1)), ((i - 1, j), (i, j + 1), (i, j))):
                if not inside(*neighbour):
                    edges.setdefault(start, []).append(end)

    loops = []
    while edges:
        start = min(edges)
        loop, here, heading = [start], start, None
        while True:
            ends = edges[here]
            # Where two corners touch, the sharpest left turn keeps the two outlines apart.
            end = max(ends, key=lambda e: 0 if heading is None else
                      heading[0] * (e[1] - here[1]) - heading[1] * (e[0] - here[0]))
            ends.remove(end)
            if not ends:
                del edges[here]
            heading, here = (end[0] - here[0], end[1] - here[1]), end
            if here == start:
                break
            loop.append(here)
        loops.append(corners([(xs[i], ys[j]) for i, j in loop]))

    outlines = [loop for loop in loops if signed_area(loop) > 0]
    groups = [[outline] for outline in outlines]
    for island in (loop for loop in loops if signed_area(loop) < 0):
        owner = min((group for group in groups if contains(group[0], island[0])), key=lambda g: signed_area(g[0]))
        owner.append(island)
    return groups


def corners(points):
    """The loop without the points on straight runs."""
    count = len(points)

    def turns(k):
        (ax, ay), (bx, by), (cx, cy) = points[k - 1], points[k], points[(k + 1) % count]
        return (bx - ax) * (cy - by) != (by - ay) * (cx - bx)
    return [points[k] for k in range(count) if turns(k)]


def signed_area(points):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:] + points[:1])) / 2


def contains(points, point):
    x, y = point
    result = False
    for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
        if (ay > y) != (by > y) and x < (bx - ax) * (y - ay) / (by - ay) + ax:
            result = not result
    return result
