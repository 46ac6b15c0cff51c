# SPDX-License-Identifier: MIT
"""A flanged bearing housing on an A3 sheet, 1:1 in millimetres: front view, section A-A, top view and detail B 4:1."""

import math

from drafting import (
    Pen, current_names, layer, material, new_document, plot_model, render_dimension, table_style)

SHEET = (0.0, 0.0, 420.0, 297.0)
FRAME = (25.0, 5.0, 415.0, 292.0)

LAYERS = [
    ("粗实线 Outline", 7, None, 50, "Continuous", "可见轮廓 Visible outlines"),
    ("细实线 Thin", 9, (150, 160, 176), 18, "Continuous", "细实线 Thin lines, thread ends"),
    ("虚线 Hidden", 41, (214, 178, 96), 25, "HIDDEN", "不可见轮廓 Hidden outlines"),
    ("中心线 Centre", 1, (222, 96, 92), 18, "CENTER2", "中心线 Centre lines"),
    ("剖面线 Hatch", 150, (92, 152, 214), 18, "Continuous", "剖面线 Section hatching"),
    ("尺寸 Dimensions", 3, (104, 186, 142), 18, "Continuous", "尺寸与公差 Dimensions and tolerances"),
    ("公差 Tolerances", 131, (88, 184, 190), 18, "Continuous", "形位公差与粗糙度 Geometric tolerances, roughness"),
    ("剖切 Section", 221, (226, 108, 156), 50, "Continuous", "剖切符号 Section and detail marks"),
    ("双点画线 Phantom", 191, (160, 138, 210), 18, "PHANTOM", "相邻件 Adjacent parts"),
    ("文字 Text", 254, (146, 154, 168), 25, "Continuous", "文字 Notes"),
    ("图框 Border", 7, None, 50, "Continuous", "图框 Border and title block"),
    ("图框-细 Border thin", 9, (140, 150, 166), 18, "Continuous", "图框细线 Thin lines of the border"),
    ("辅助线 Construction", 8, None, 13, "DOT", "辅助线 Construction lines, off and not plotted"),
    ("VIEWPORTS", 8, None, 13, "Continuous", "视口 Viewport frames, not plotted"),
]

NOT_PLOTTED = ("辅助线 Construction", "VIEWPORTS")

# The housing. All views share these sizes; radii where the name says so.
BASE_LENGTH, BASE_DEPTH, BASE_HEIGHT = 150.0, 64.0, 18.0
HOLE_SPACING, HOLE = 120.0, 13.0
AXIS_HEIGHT = 80.0
FLANGE_R, HUB_R, SEAT_R, THROUGH_R, SEAL_R = 55.0, 42.0, 36.0, 30.0, 25.0
FLANGE_THICKNESS, HUB_LENGTH = 12.0, 64.0
SEAT_DEPTH, SEAL_DEPTH = 24.0, 12.0
GROOVE_R, GROOVE_WIDTH, GROOVE_AT = 38.0, 2.7, 3.0
BOLT_R, THREAD_R, CORE_R, THREAD_DEPTH = 48.5, 4.0, 3.4, 20.0
PEDESTAL_TOP, PEDESTAL_FOOT = 38.0, 46.0  # half widths seen from the front
PEDESTAL_DEPTH, FILLET = 36.0, 5.0

FRONT_X, BASE_Y = 118.0, 122.0
AXIS_Y = BASE_Y + AXIS_HEIGHT
SECTION_X = 268.0  # middle of the housing's length along its axis
TOP_Y = 64.0
DETAIL, DETAIL_SCALE = (372.0, 218.0), 4.0
DETAIL_REACH, DETAIL_DROP = 20.0, 8.0  # from its middle to the flange face and down to the seat, on paper


class Part:
    def __init__(self):
        self.doc = new_document()
        self.msp = self.doc.modelspace()

    def pen(self, layer_name, **attributes):
        return Pen(self.msp, layer=layer_name, **attributes)

    @property
    def outline(self):
        return self.pen("粗实线 Outline")

    @property
    def thin(self):
        return self.pen("细实线 Thin")

    @property
    def hidden(self):
        return self.pen("虚线 Hidden")

    @property
    def centre(self):
        return self.pen("中心线 Centre")


def add_tables(part):
    doc = part.doc
    for name, color, true_color, weight, linetype, description in LAYERS:
        layer(doc, name, color, description, weight, linetype, true_color, plot=name not in NOT_PLOTTED)
    doc.layers.get("辅助线 Construction").off()

    common = {"dimtxsty": "LATIN", "dimtxt": 3.0, "dimasz": 3.0, "dimexe": 1.5, "dimexo": 0.8, "dimgap": 0.8,
              "dimdec": 2, "dimtad": 1, "dimtih": 0, "dimtoh": 0, "dimzin": 8, "dimdsep": 46, "dimtofl": 1,
              "dimtix": 1, "dimlwd": 18, "dimlwe": 18, "dimclrd": 256, "dimclre": 256, "dimclrt": 256,
              "dimtfac": 0.7}
    doc.dimstyles.add("机械 GB-3", dxfattribs=common)
    doc.dimstyles.add("公差 Tolerance", dxfattribs={
        **common, "dimtol": 1, "dimtp": 0.03, "dimtm": 0.0, "dimtdec": 3, "dimtolj": 1})
    doc.dimstyles.add("直径 Diameter", dxfattribs={**common, "dimpost": "%%c<>"})
    doc.dimstyles.add("放大 4-1", dxfattribs={**common, "dimlfac": 0.25})

    mleader_style = doc.mleader_styles.duplicate_entry("Standard", "序号 Balloon")
    mleader_style.set_mtext_style("中文")
    mleader_style.dxf.name = "序号 Balloon"
    mleader_style.dxf.char_height = 3.0
    mleader_style.dxf.arrow_head_size = 2.5
    table_style(doc, "明细栏", "Parts list", "中文", (3.0, 4.0, 3.5))
    current_names(doc, CMLEADERSTYLE="序号 Balloon", CTABLESTYLE="明细栏")
    material(doc, "HT200", "Grey cast iron", (118, 122, 128))

    doc.ucs.add("轴心 Bore axis", dxfattribs={"origin": (FRONT_X, AXIS_Y, 0)})
    doc.ucs.add("底面 Base", dxfattribs={"origin": (FRONT_X, BASE_Y, 0)})
    for name, left, bottom, right, top in (
            ("全图 Sheet", *SHEET), ("主视图 Front", 30, 105, 200, 275), ("剖视 A-A", 205, 105, 335, 285),
            ("俯视图 Top", 30, 15, 200, 110), ("局部 B", 330, 175, 412, 275)):
        doc.views.add(name, dxfattribs={
            "center": ((left + right) / 2, (bottom + top) / 2), "width": right - left, "height": top - bottom,
            "direction": (0, 0, 1), "target": (0, 0, 0)})


def mirror(points, axis):
    """The outline mirrored at a vertical line; its bulges run the other way."""
    return [(2 * axis - p[0], p[1], -(p[2] if len(p) > 2 else 0.0)) for p in points]


def cross(pen, x, y, reach):
    pen.line(x - reach, y, x + reach, y)
    pen.line(x, y - reach, x, y + reach)


def add_front_view(part):
    x, y = FRONT_X, AXIS_Y
    outline, thin, hidden, centre = part.outline, part.thin, part.hidden, part.centre
    for radius in (FLANGE_R, SEAT_R, THROUGH_R, SEAL_R):
        outline.circle(x, y, radius)
    outline.circle(x, y, SEAT_R + 1.5)
    hidden.circle(x, y, HUB_R)
    centre.circle(x, y, BOLT_R)
    for angle in (45, 135, 225, 315):
        a = math.radians(angle)
        bx, by = x + BOLT_R * math.cos(a), y + BOLT_R * math.sin(a)
        outline.circle(bx, by, CORE_R)
        thin.arc(bx, by, THREAD_R, angle + 100, angle + 370)
        centre.line(x + (BOLT_R - 8) * math.cos(a), y + (BOLT_R - 8) * math.sin(a),
                    x + (BOLT_R + 8) * math.cos(a), y + (BOLT_R + 8) * math.sin(a))
    cross(centre, x, y, FLANGE_R + 8)
    centre.line(x, y - FLANGE_R - 8, x, BASE_Y - 6)

    # Foot and pedestal; the pedestal leaves from behind the flange.
    half = BASE_LENGTH / 2
    outline.path([(x - half, BASE_Y), (x + half, BASE_Y), (x + half, BASE_Y + BASE_HEIGHT - 3, 0.414),
                  (x + half - 3, BASE_Y + BASE_HEIGHT)])
    outline.path([(x - half, BASE_Y), (x - half, BASE_Y + BASE_HEIGHT - 3, -0.414),
                  (x - half + 3, BASE_Y + BASE_HEIGHT)])
    slope = (PEDESTAL_FOOT - PEDESTAL_TOP) / (AXIS_HEIGHT - 25 - BASE_HEIGHT)
    for side in (-1, 1):
        outline.line(x + side * (half - 3), BASE_Y + BASE_HEIGHT,
                     x + side * (PEDESTAL_FOOT + FILLET), BASE_Y + BASE_HEIGHT)
        foot = x + side * PEDESTAL_FOOT
        outline.path([(x + side * (PEDESTAL_FOOT + FILLET), BASE_Y + BASE_HEIGHT, -side * 0.36),
                      (foot - side * slope * FILLET, BASE_Y + BASE_HEIGHT + FILLET)])
        # Up to the point where the flange hides it.
        top = y - math.sqrt(FLANGE_R ** 2 - (PEDESTAL_FOOT - 3.2) ** 2)
        rise = top - BASE_Y - BASE_HEIGHT
        outline.line(foot - side * slope * FILLET, BASE_Y + BASE_HEIGHT + FILLET, foot - side * slope * rise, top)
        hidden.line(foot - side * slope * rise, top, x + side * (PEDESTAL_TOP - 1), y - 22)
        # Holes in the foot, with their spot faces.
        hole = x + side * HOLE_SPACING / 2
        for offset in (-HOLE / 2, HOLE / 2):
            hidden.line(hole + offset, BASE_Y, hole + offset, BASE_Y + BASE_HEIGHT - 2)
        hidden.path([(hole - 12, BASE_Y + BASE_HEIGHT), (hole - 12, BASE_Y + BASE_HEIGHT - 2),
                     (hole + 12, BASE_Y + BASE_HEIGHT - 2), (hole + 12, BASE_Y + BASE_HEIGHT)])
        centre.line(hole, BASE_Y - 5, hole, BASE_Y + BASE_HEIGHT + 5)
    outline.line(x - 30, BASE_Y, x - 30, BASE_Y + 3)
    outline.line(x + 30, BASE_Y, x + 30, BASE_Y + 3)
    outline.line(x - 30, BASE_Y + 3, x + 30, BASE_Y + 3)


def bore_profile(left, right):
    """Half of the bore from the left face to the right one, as (x, radius)."""
    return [(left, SEAT_R + 1.5), (left + 1.5, SEAT_R), (left + GROOVE_AT, SEAT_R), (left + GROOVE_AT, GROOVE_R),
            (left + GROOVE_AT + GROOVE_WIDTH, GROOVE_R), (left + GROOVE_AT + GROOVE_WIDTH, SEAT_R),
            (left + SEAT_DEPTH, SEAT_R), (left + SEAT_DEPTH, THROUGH_R), (right - SEAL_DEPTH, THROUGH_R),
            (right - SEAL_DEPTH, SEAL_R), (right, SEAL_R)]


def add_section(part):
    """Section A-A: the housing cut by its middle plane and seen from the left, so the flange is on the right.

    The outlines are put together with the flange on the left and mirrored.
    """
    outline, centre, hatch = part.outline, part.centre, part.pen("剖面线 Hatch")
    x, y = SECTION_X, AXIS_Y
    left, right = x - HUB_LENGTH / 2, x + HUB_LENGTH / 2
    bore = bore_profile(left, right)
    flange = left + FLANGE_THICKNESS

    upper = [(px, y + r) for px, r in bore]
    upper += [(right, y + HUB_R - 2), (right - 2, y + HUB_R), (flange + FILLET, y + HUB_R, -0.414),
              (flange, y + HUB_R + FILLET), (flange, y + FLANGE_R - 1), (flange - 1, y + FLANGE_R),
              (left + 1, y + FLANGE_R), (left, y + FLANGE_R - 1)]
    web, foot = PEDESTAL_DEPTH / 2, BASE_DEPTH / 2
    floor = BASE_Y + BASE_HEIGHT
    lower = [(px, y - r) for px, r in bore]
    lower += [(right, y - HUB_R + 2), (right - 2, y - HUB_R), (x + web + FILLET, y - HUB_R, 0.414),
              (x + web, y - HUB_R - FILLET)]
    lower += [(x + web, floor + FILLET, 0.414), (x + web + FILLET, floor), (x + foot - 3, floor, -0.414),
              (x + foot, floor - 3), (x + foot, BASE_Y), (x - foot, BASE_Y), (x - foot, floor - 3, -0.414),
              (x - foot + 3, floor), (x - web - FILLET, floor, 0.414), (x - web, floor + FILLET)]
    lower += [(x - web, y - FLANGE_R), (left + 1, y - FLANGE_R), (left, y - FLANGE_R + 1)]
    iron = part.doc.materials.get("HT200").dxf.handle
    for region in (mirror(upper, x), mirror(lower, x)):
        outline.with_(material_handle=iron).path(region, close=True)
        hatch.hatch("ANSI31", 0.9, region)
    # Edges of the bore seen behind the cut.
    for px, radius in ((left, SEAT_R + 1.5), (left + 1.5, SEAT_R), (left + GROOVE_AT, GROOVE_R),
                       (left + GROOVE_AT + GROOVE_WIDTH, GROOVE_R), (left + SEAT_DEPTH, SEAT_R),
                       (right - SEAL_DEPTH, THROUGH_R), (right, SEAL_R)):
        outline.line(2 * x - px, y - radius, 2 * x - px, y + radius)
    centre.line(left - 8, y, right + 8, y)
    centre.line(x, BASE_Y - 5, x, floor + 30)

    construction = part.pen("辅助线 Construction")
    for radius in (SEAL_R, THROUGH_R, SEAT_R, HUB_R, FLANGE_R):
        construction.line(FRONT_X, y + radius, right, y + radius)

    mark = part.pen("剖切 Section")
    mark.with_(lineweight=18).circle(right - GROOVE_AT - 1.5, y + SEAT_R + 1, 8)
    mark.with_(lineweight=18).line(right - 1, y + SEAT_R + 8, right + 7, y + SEAT_R + 27)
    mark.text("B", right + 9, y + SEAT_R + 29, 5, align="BOTTOM_CENTER")
    mark.text("A–A", x, y + FLANGE_R + 24, 6, align="BOTTOM_CENTER")


def add_top_view(part):
    outline, hidden, centre = part.outline, part.hidden, part.centre
    x, y = FRONT_X, TOP_Y
    half, depth = BASE_LENGTH / 2, BASE_DEPTH / 2
    outline.rect(x - half, y - depth, BASE_LENGTH, BASE_DEPTH, 8)
    # Hub and flange hide the pedestal; the flange is at the front, below.
    front = y - HUB_LENGTH / 2
    hub = [(x - HUB_R, front + FLANGE_THICKNESS), (x - HUB_R, y + HUB_LENGTH / 2 - 2),
           (x - HUB_R + 2, y + HUB_LENGTH / 2), (x + HUB_R - 2, y + HUB_LENGTH / 2),
           (x + HUB_R, y + HUB_LENGTH / 2 - 2), (x + HUB_R, front + FLANGE_THICKNESS)]
    outline.path(hub)
    outline.path([(x - FLANGE_R, front + 1), (x - FLANGE_R + 1, front), (x + FLANGE_R - 1, front),
                  (x + FLANGE_R, front + 1), (x + FLANGE_R, front + FLANGE_THICKNESS - 1),
                  (x + FLANGE_R - 1, front + FLANGE_THICKNESS), (x - FLANGE_R + 1, front + FLANGE_THICKNESS),
                  (x - FLANGE_R, front + FLANGE_THICKNESS - 1)], close=True)
    profile = bore_profile(0.0, HUB_LENGTH)
    for side in (-1, 1):
        hidden.path([(x + side * radius, front + along) for along, radius in profile[1:]])
        hole = x + side * HOLE_SPACING / 2
        for row in (-20.0, 20.0):
            outline.circle(hole, y + row, HOLE / 2)
            outline.circle(hole, y + row, 9.5)
            cross(centre, hole, y + row, 12)
    for along, radius in ((SEAT_DEPTH, SEAT_R), (HUB_LENGTH - SEAL_DEPTH, THROUGH_R)):
        hidden.line(x - radius, front + along, x + radius, front + along)
    centre.line(x, y - depth - 6, x, y + depth + 6)
    centre.line(x - half - 5, y, x + half + 5, y)

    mark = part.pen("剖切 Section")
    for end, direction in ((y - depth - 14, 1), (AXIS_Y + FLANGE_R + 18, -1)):
        mark.line(x, end, x, end + direction * 7)
        mark.with_(lineweight=25).line(x, end, x + 9, end)
        mark.solid([(x + 14, end), (x + 9, end + 1.3), (x + 9, end - 1.3)])
        mark.text("A", x - 3, end, 5, align="MIDDLE_RIGHT")


def add_detail(part):
    """Detail B, the retaining ring groove."""
    outline, hatch = part.outline, part.pen("剖面线 Hatch")
    x, y = DETAIL

    def at(along, radius):
        return (x + DETAIL_REACH - along * DETAIL_SCALE,
                y - DETAIL_DROP + (radius - SEAT_R) * DETAIL_SCALE)
    surface = [at(0, SEAT_R + 1.5), at(1.5, SEAT_R), at(GROOVE_AT, SEAT_R), at(GROOVE_AT, GROOVE_R),
               at(GROOVE_AT + GROOVE_WIDTH, GROOVE_R), at(GROOVE_AT + GROOVE_WIDTH, SEAT_R), at(10.0, SEAT_R)]
    break_line = [at(10.0, SEAT_R + 2.6), at(9.4, SEAT_R + 4.4), at(9.9, SEAT_R + 6.2), at(9.2, SEAT_R + 8.0),
                  at(6.4, SEAT_R + 8.3), at(3.4, SEAT_R + 7.9), at(0.0, SEAT_R + 8.2)]
    hatch.hatch("ANSI31", 1.4, surface + break_line)
    outline.path([at(0.0, SEAT_R + 8.2)] + surface)
    part.msp.add_spline([(px, py, 0) for px, py in [at(10.0, SEAT_R)] + break_line],
                        dxfattribs={"layer": "细实线 Thin"})
    part.pen("剖切 Section").text("B", x, y + 35, 6, align="BOTTOM_CENTER")
    part.pen("文字 Text").text("4:1", x + 7, y + 35, 4, align="BOTTOM_LEFT")


def add_dimensions(part):
    layer_name = {"layer": "尺寸 Dimensions"}
    msp = part.msp

    def linear(base, p1, p2, angle=0, style="机械 GB-3", location=None, **override):
        render_dimension(msp.add_linear_dim(base=base, p1=p1, p2=p2, angle=angle, dimstyle=style, location=location,
                                            override=override, dxfattribs=dict(layer_name)))
    x, y, half = FRONT_X, AXIS_Y, BASE_LENGTH / 2
    linear((x, BASE_Y - 20), (x - half, BASE_Y), (x + half, BASE_Y))
    linear((x, BASE_Y - 12), (x - HOLE_SPACING / 2, BASE_Y), (x + HOLE_SPACING / 2, BASE_Y),
           dimtol=1, dimtp=0.2, dimtm=0.2, dimtdec=1)
    linear((x - half - 10, y), (x - half, BASE_Y), (x - half - 4, y), 90, dimtol=1, dimtp=0.05, dimtm=0.05, dimtdec=2)
    linear((x + half + 8, BASE_Y), (x + half, BASE_Y), (x + half, BASE_Y + BASE_HEIGHT), 90)
    render_dimension(msp.add_diameter_dim(center=(x, y), radius=BOLT_R, angle=160, dimstyle="机械 GB-3",
                                          location=(x - 11.0, y + 6.5),
                                          dxfattribs=dict(layer_name)))
    render_dimension(msp.add_angular_dim_cra(center=(x, y), radius=FLANGE_R + 4, start_angle=45, end_angle=90,
                                             distance=6, dimstyle="机械 GB-3", dxfattribs=dict(layer_name)))

    left, right = SECTION_X - HUB_LENGTH / 2, SECTION_X + HUB_LENGTH / 2
    linear((SECTION_X, y + FLANGE_R + 15), (left, y + HUB_R), (right, y + FLANGE_R))
    linear((right + 26, y), (right, y - FLANGE_R), (right, y + FLANGE_R), 90, "直径 Diameter")
    linear((right + 13, y), (right, y - SEAT_R), (right, y + SEAT_R), 90, "公差 Tolerance", dimpost="%%c<>H7")
    linear((left - 12, y), (left, y - SEAL_R), (left, y + SEAL_R), 90, "直径 Diameter", dimtol=1, dimtp=0.1, dimtm=0.0)
    linear((left - 24, y), (left, y - HUB_R), (left, y + HUB_R), 90, "直径 Diameter")
    linear((SECTION_X, BASE_Y - 12), (SECTION_X - BASE_DEPTH / 2, BASE_Y), (SECTION_X + BASE_DEPTH / 2, BASE_Y))
    linear((right - 4, y + 18), (right - SEAT_DEPTH, y + 18), (right, y + 18))
    linear((left + 4, y - 12), (left, y - 12), (left + SEAL_DEPTH, y - 12))
    linear((right - 4, y + FLANGE_R + 6), (right - FLANGE_THICKNESS, y + FLANGE_R), (right, y + FLANGE_R))

    linear((x + half + 10, TOP_Y), (x + HOLE_SPACING / 2, TOP_Y - 20), (x + HOLE_SPACING / 2, TOP_Y + 20), 90)
    render_dimension(msp.add_radius_dim(center=(x - half + 8, TOP_Y + BASE_DEPTH / 2 - 8), radius=8, angle=135,
                                        dimstyle="机械 GB-3", override={"dimtix": 0, "dimtoh": 1},
                                        dxfattribs=dict(layer_name)))

    dx, dy = DETAIL
    bottom = dy - DETAIL_DROP
    groove = dx + DETAIL_REACH - GROOVE_AT * DETAIL_SCALE
    shoulder = groove - GROOVE_WIDTH * DETAIL_SCALE
    linear((dx, bottom - 17), (shoulder, bottom), (groove, bottom), style="放大 4-1",
           location=(shoulder - 9, bottom - 14.5), dimpost="<>H13")
    linear((dx, bottom - 8), (groove, bottom), (dx + DETAIL_REACH, bottom + 1.5 * DETAIL_SCALE), style="放大 4-1")
    linear((dx - 27, dy), (shoulder, bottom), (shoulder, bottom + (GROOVE_R - SEAT_R) * DETAIL_SCALE), 90, "放大 4-1")


def add_symbols(part):
    doc = part.doc
    rough = Pen(doc.blocks.new("ROUGHNESS"), layer="0")
    rough.path([(-2.6, 4.5), (0, 0), (5.2, 9)])
    rough.line(-2.6, 4.5, 2.6, 4.5)
    rough.line(5.2, 9, 12, 9)
    rough.attdef("RA", "Ra in micrometres", 5.6, 5.2, 2.6, align="LEFT")
    datum = Pen(doc.blocks.new("DATUM"), layer="0")
    datum.solid([(-2, 0), (2, 0), (0, -3.2)])
    datum.line(0, -3.2, 0, -7)
    datum.rect(-3, -13, 6, 6)
    datum.attdef("DATUM", "Datum", 0, -10, 3.5)

    pen = part.pen("公差 Tolerances")
    left, right = SECTION_X - HUB_LENGTH / 2, SECTION_X + HUB_LENGTH / 2
    for x, y, value in ((left + 6, AXIS_Y + HUB_R, "Ra 6.3"), (right - 22, AXIS_Y - SEAT_R, "Ra 1.6")):
        pen.insert("ROUGHNESS", x, y).add_auto_attribs({"RA": value})
    pen.insert("DATUM", SECTION_X - 22, BASE_Y).add_auto_attribs({"DATUM": "C"})

    # Feature control frame: the bore axis parallel to the base within 0.02.
    x, y = left - 50, AXIS_Y + 50
    for offset, width in ((0, 8), (8, 14), (22, 8)):
        pen.rect(x + offset, y, width, 7)
    pen.line(x + 2, y + 1.5, x + 4.2, y + 5.5)
    pen.line(x + 4, y + 1.5, x + 6.2, y + 5.5)
    pen.text("%%c0.02", x + 15, y + 3.5, 2.8, align="MIDDLE_CENTER")
    pen.text("C", x + 26, y + 3.5, 3.2, align="MIDDLE_CENTER")
    end = left - 5
    pen.path([(x + 30, y + 3.5), (end, y + 3.5), (end, AXIS_Y + 4)])
    pen.solid([(end, AXIS_Y), (end - 0.8, AXIS_Y + 4), (end + 0.8, AXIS_Y + 4)])

    note = part.pen("尺寸 Dimensions")
    x, y = FRONT_X + HOLE_SPACING / 2, TOP_Y - 20
    note.path([(x + 5, y - 4), (x + 14, y - 19), (x + 17, y - 19)])
    note.text("4×%%c13 锪平 %%c19", x + 18, y - 20.5, 3, style="中文")
    a = math.radians(315)
    x, y = FRONT_X + BOLT_R * math.cos(a), AXIS_Y + BOLT_R * math.sin(a)
    note.path([(x + 3, y - 2), (x + 30, y - 6), (x + 33, y - 6)])
    note.text("4×M8", x + 34, y - 7.5, 3)


def add_sheet(part):
    thin, border = part.pen("图框-细 Border thin"), part.pen("图框 Border", lineweight=70)
    thin.rect(*SHEET)
    left, bottom, right, top = FRAME
    border.rect(left, bottom, right - left, top - bottom)
    for x in (left + (right - left) * k / 4 for k in range(1, 4)):
        thin.line(x, bottom, x, bottom - 5)
        thin.line(x, top, x, top + 5)

    doc = part.doc
    block = Pen(doc.blocks.new("TITLE-BLOCK-GB"), layer="0")
    block.with_(lineweight=50).path([(0, 0), (0, 56), (180, 56), (180, 0)])
    line = block.with_(lineweight=25)
    for x1, y1, x2, y2 in ((80, 0, 80, 56), (130, 0, 130, 56), (80, 28, 130, 28), (130, 38, 180, 38),
                           (130, 18, 180, 18), (105, 0, 105, 18), (80, 18, 130, 18), (0, 28, 80, 28)):
        line.line(x1, y1, x2, y2)
    thin_lines = block.with_(lineweight=13)
    for y in (7, 14, 21, 35, 42, 49):
        thin_lines.line(0, y, 80, y)
    for x in (12, 28, 44, 60):
        thin_lines.line(x, 0, x, 56)
    label = block.with_(lineweight=13)
    for x, y, text in ((6, 31.5, "标记"), (20, 31.5, "处数"), (36, 31.5, "分区"), (52, 31.5, "签名"), (70, 31.5, "日期"),
                       (6, 24.5, "设计"), (6, 17.5, "校核"), (6, 10.5, "审核"), (6, 3.5, "工艺"), (36, 24.5, "标准化"),
                       (36, 17.5, "批准")):
        label.text(text, x, y, 2.8, align="MIDDLE_CENTER", style="中文")
    for x, y, text in ((92.5, 14.5, "重量 kg"), (117.5, 14.5, "比例 Scale")):
        label.text(text, x, y, 2.5, align="MIDDLE_CENTER", style="中文")
    for tag, prompt, x, y, height, text_style in (
            ("MATERIAL", "Material", 105, 42, 6, "LATIN"), ("STAGE", "Stage", 105, 23, 3.2, "中文"),
            ("WEIGHT", "Weight", 92.5, 6, 3.5, "LATIN"), ("SCALE", "Scale", 117.5, 6, 3.5, "LATIN"),
            ("COMPANY", "Company", 155, 47, 4, "中文"), ("NAME-CN", "Name", 155, 31, 6, "中文-粗"),
            ("NAME", "Name", 155, 22.5, 2.7, "LATIN"), ("NUMBER", "Drawing number", 155, 9, 5.5, "LATIN"),
            ("DRAWN", "Drawn by", 20, 24.5, 2.8, "中文"), ("CHECKED", "Checked by", 20, 17.5, 2.4, "中文")):
        block.attdef(tag, prompt, x, y, height, style=text_style)
    part.pen("图框 Border", lineweight=35).insert("TITLE-BLOCK-GB", right - 180, bottom).add_auto_attribs({
        "MATERIAL": "HT200", "STAGE": "第 1 张 共 1 张", "WEIGHT": "4.82", "SCALE": "1:1", "COMPANY": "样图 Samples",
        "NAME-CN": "法兰轴承座", "NAME": "Flanged bearing housing", "NUMBER": "ZB-72-001", "DRAWN": "陈林",
        "CHECKED": "M. Weber"})
    part.pen("文字 Text").mtext(
        "技术要求 Technical requirements\\P1. 铸件不得有气孔、裂纹。 Free of blowholes and cracks.\\P"
        "2. 未注圆角 R3–R5。 Unspecified radii R3 to R5.\\P3. 时效处理。 Stress-relieve before machining.\\P"
        "4. 未注公差 ISO 2768-mK。", 240, 98, 3.2, 150, spacing=1.1)


def add_paper(part):
    doc = part.doc
    plot_model(doc, "ISO_A3_(420.00_x_297.00_MM)", 420, 297)
    doc.layouts.rename("Layout1", "A3 图纸")
    layout = doc.layout("A3 图纸")
    layout.page_setup(size=(420, 297), margins=(0, 0, 0, 0), units="mm", name="ISO_A3", device="")
    layout.add_viewport(center=(210, 148.5), size=(410, 287), view_center_point=(210, 148.5), view_height=287)


def finish(part):
    doc, header = part.doc, part.doc.header
    x1, y1, x2, y2 = SHEET
    part.msp.reset_extents((x1, y1, 0), (x2, y2, 0))
    part.msp.reset_limits((x1, y1), (x2, y2))
    doc.update_extents()
    doc.update_limits()
    doc.set_modelspace_vport(height=(y2 - y1) * 1.02, center=((x1 + x2) / 2, (y1 + y2) / 2))
    header["$LTSCALE"] = 1.0
    header["$CLAYER"] = "粗实线 Outline"
    header["$TEXTSTYLE"] = "LATIN"
    header["$DIMSTYLE"] = "机械 GB-3"
    header["$TEXTSIZE"] = 3.0


STEPS = [add_tables, add_sheet, add_section, add_front_view, add_top_view, add_detail, add_dimensions, add_symbols,
         add_paper, finish]


def make_part():
    part = Part()
    for step in STEPS:
        step(part)
    return part.doc
