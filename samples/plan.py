# SPDX-License-Identifier: MIT
"""The ground floor of a small house with its garden, drawn 1:75 in millimetres; grid A-1 is the origin."""

import math

from ezdxf.math import Vec2
from ezdxf.render import mleader

from drafting import (
    Pen, current_names, layer, material, new_document, plot_model, rectangle, render_dimension, table_style,
    union_loops)
from plan_blocks import define_blocks

SCALE = 75.0  # model millimetres to a millimetre on paper
GRID_X = [0, 3900, 6300, 8700, 12900, 17100]
GRID_Y = [0, 4500, 6900, 9300, 10800]

# The sheet: A3 lengthened by a quarter, 525 x 297 mm on paper.
SHEET = (-7250.0, -6300.0, 32125.0, 15975.0)
FRAME = (SHEET[0] + 1875, SHEET[1] + 375, SHEET[2] - 375, SHEET[3] - 375)
STRIP = FRAME[2] - 4500  # left edge of the title strip

# Name, colour index, true colour or None, weight, line type, description. The colours are of middle lightness:
# they stand out on a dark drawing background and print well on white.
LAYERS = [
    ("A-WALL", 7, None, 50, "Continuous", "承重墙轮廓 Outlines of bearing walls"),
    ("A-WALL-FILL", 253, (112, 122, 140), 13, "Continuous", "承重墙填充 Poché of bearing walls"),
    ("A-WALL-PRTN", 9, None, 35, "Continuous", "隔墙 Partitions"),
    ("A-WALL-PRTN-FILL", 8, (120, 128, 142), 9, "Continuous", "隔墙填充 Hatch of partitions"),
    ("S-COLS", 254, (156, 164, 178), 50, "Continuous", "结构柱 Columns"),
    ("A-DOOR", 30, (226, 152, 74), 25, "Continuous", "门 Doors"),
    ("A-GLAZ", 150, (84, 160, 226), 25, "Continuous", "窗 Windows"),
    ("A-STRS", 9, (152, 148, 184), 25, "Continuous", "楼梯 Stairs"),
    ("A-ROOF-OVHD", 193, (150, 128, 204), 18, "DASHED", "屋檐投影 Roof above"),
    ("A-FLOR-PATT", 8, (104, 114, 130), 9, "Continuous", "地面铺装 Floor finishes"),
    ("A-CLNG 吊顶", 201, None, 13, "HIDDEN", "吊顶 Ceilings, frozen on this sheet"),
    ("轴线", 1, (214, 96, 92), 13, "CENTER", "轴线 Grid lines, locked"),
    ("轴号", 11, (226, 126, 118), 25, "Continuous", "轴号 Grid bubbles"),
    ("标注-尺寸", 3, (98, 176, 136), 13, "Continuous", "尺寸标注 Dimensions"),
    ("标注-引线", 41, (210, 156, 72), 13, "Continuous", "引线 Leaders"),
    ("标注-符号", 221, (226, 104, 152), 35, "Continuous", "剖切与标高 Section and level marks"),
    ("文字-房间", 7, None, 25, "Continuous", "房间名称 Room tags"),
    ("文字-说明", 254, (142, 150, 166), 18, "Continuous", "说明文字 Notes"),
    ("家具", 71, (150, 172, 128), 18, "Continuous", "家具 Furniture"),
    ("卫生洁具", 131, (80, 178, 186), 18, "Continuous", "卫生洁具 Sanitary fixtures"),
    ("厨房设备", 33, (206, 158, 122), 18, "Continuous", "厨房设备 Kitchen"),
    ("L-PLNT-TREE", 93, (96, 168, 92), 18, "Continuous", "乔木 Trees"),
    ("L-PLNT-BLOS", 211, (206, 128, 172), 18, "Continuous", "花木 Blossoming trees"),
    ("L-PLNT-SHRB", 83, (124, 156, 78), 13, "Continuous", "灌木 Shrubs"),
    ("L-LAWN 草坪", 95, (84, 128, 80), 9, "Continuous", "草坪 Lawn"),
    ("L-PAVE 铺地", 32, (150, 132, 112), 13, "Continuous", "铺地 Paving, steps and kerbs"),
    ("L-PAVE-PATT", 34, (116, 106, 96), 9, "Continuous", "铺地填充 Paving patterns"),
    ("L-POOL 水池", 140, (72, 148, 208), 25, "Continuous", "水池 Pool"),
    ("SITE$0$用地红线", 240, (226, 88, 88), 50, "PHANTOM", "用地红线 Site boundary, from the bound site drawing"),
    ("SITE$0$FENCE", 37, (170, 130, 92), 18, "FENCE_X", "围栏 Fence, from the bound site drawing"),
    ("P-GAS 燃气", 51, (208, 166, 48), 25, "GAS_LINE", "燃气管 Gas"),
    ("P-WATR 给水", 141, (98, 172, 240), 25, "DASHED", "给水管 Water"),
    ("P-SANR 排水", 36, (176, 138, 100), 25, "DASHDOT", "排水管 Drainage"),
    ("E-POWR 插座", 1, None, 18, "Continuous", "插座 Sockets, off on this sheet"),
    ("C-VEHC", 252, (140, 148, 162), 18, "Continuous", "车辆 Vehicles"),
    ("图框", 7, None, 50, "Continuous", "图框 Sheet frame and title strip"),
    ("图框-细线", 9, (140, 150, 166), 18, "Continuous", "图框细线 Thin lines of the sheet"),
    ("VIEWPORTS", 8, None, 13, "Continuous", "视口 Viewport frames, not plotted"),
]

# Walls by their centre lines and thickness.
BEARING = [
    (0, 0, 17100, 0), (17100, 0, 17100, 9300), (12900, 9300, 17100, 9300), (12900, 9300, 12900, 10800),
    (0, 10800, 12900, 10800), (0, 0, 0, 10800), (3900, 0, 3900, 4500), (12900, 0, 12900, 9300),
]
PARTITIONS = [
    (0, 4500, 3900, 4500), (0, 6900, 6300, 6900), (8700, 6900, 12900, 6900), (1800, 4500, 1800, 6900),
    (3900, 6900, 3900, 10800), (6300, 6900, 6300, 10800), (8700, 6900, 8700, 10800),
    (12900, 4500, 17100, 4500), (12900, 6900, 17100, 6900),
]
BEARING_THICKNESS, PARTITION_THICKNESS = 240, 120

# Windows: width, left end of the opening seen from outside the wall line, rotation of the block, mark.
WINDOWS = [
    (1800, (1050, 0), 0, "C1818"), (3600, (4500, 0), 0, "TM3624"), (3600, (8900, 0), 0, "TM3624"),
    (2400, (13800, 0), 0, "C2418"), (1800, (17100, 1300), 90, "C1818"), (900, (17100, 5300), 90, "C0915"),
    (900, (17100, 7700), 90, "C0915"), (1200, (15600, 9300), 180, "C1215"), (2400, (12000, 10800), 180, "C2415"),
    (900, (5700, 10800), 180, "C0915"), (1500, (2700, 10800), 180, "C1518"), (1800, (0, 9800), 270, "C1818"),
    (600, (0, 6000), 270, "C0615"), (1500, (0, 3000), 270, "C1518"),
]

# Doors: width, hinge on the wall line, rotation of the block, mirrored, mark. The block opens from the hinge to +X
# and swings to +Y.
DOORS = [
    (1200, (8100, 10800), 180, False, "M1224"), (900, (3550, 4500), 180, False, "M0921"),
    (900, (2600, 6900), 0, False, "M0921"), (800, (1800, 6600), 270, False, "M0821"),
    (800, (5400, 6900), 0, True, "M0821"), (900, (12900, 6650), 270, False, "M0921"),
    (900, (13200, 4500), 180, True, "M0921"), (800, (13300, 6900), 0, False, "M0821"),
    (900, (12900, 10450), 270, False, "M0924"),
]
SLIDING_DOORS = [(1800, (9600, 6900), 0, "TLM1824")]

# Name in Chinese, name, inner outline as rectangle, place of the tag.
ROOMS = [
    ("书房", "Study", (120, 120, 3780, 4440), (1600, 1850)),
    ("客厅", "Living room", (4020, 120, 8700, 4440), (6150, 3650)),
    ("餐厅", "Dining", (8700, 120, 12780, 4440), (10900, 3750)),
    ("走廊", "Hall", (1860, 4560, 8700, 6840), (5100, 5600)),
    ("洗衣", "Laundry", (120, 4560, 1740, 6840), (1200, 5650)),
    ("次卧", "Bedroom", (120, 6960, 3840, 10680), (1750, 10030)),
    ("浴室", "Bath", (3960, 6960, 6240, 10680), (4830, 8950)),
    ("门厅", "Entrance", (6360, 6960, 8640, 10680), (7600, 8500)),
    ("厨房", "Kitchen", (8760, 6960, 12780, 10680), (10700, 8700)),
    ("主卧", "Main bedroom", (13020, 120, 16980, 4440), (15100, 3780)),
    ("衣帽间", "Dressing", (13020, 4560, 16980, 6840), (14650, 5500)),
    ("主卫", "En suite", (13020, 6960, 16980, 9180), (14850, 8050)),
]


class Plan:
    """The drawing under construction; each step below adds one subject to it."""

    def __init__(self):
        self.doc = new_document()
        self.msp = self.doc.modelspace()

    def pen(self, layer_name, **attributes):
        return Pen(self.msp, layer=layer_name, **attributes)


# ---- Tables --------------------------------------------------------------------------------------------------------

def add_layers(plan):
    for name, color, true_color, weight, linetype, description in LAYERS:
        layer(plan.doc, name, color, description, weight, linetype, true_color, plot=name != "VIEWPORTS")
    layers = plan.doc.layers
    layers.get("A-CLNG 吊顶").freeze()
    layers.get("E-POWR 插座").off()
    layers.get("轴线").lock()
    layers.get("A-FLOR-PATT").transparency = 0.3
    layers.get("L-LAWN 草坪").transparency = 0.2


def add_styles(plan):
    doc = plan.doc
    common = {"dimtxsty": "LATIN", "dimblk": "ARCHTICK", "dimscale": SCALE, "dimtxt": 2.5, "dimasz": 2.0,
              "dimexe": 1.5, "dimexo": 2.0, "dimgap": 0.8, "dimdec": 0, "dimtad": 1, "dimtih": 0, "dimtoh": 0,
              "dimzin": 8, "dimdsep": 46, "dimfxlon": 1, "dimfxl": 4.0, "dimtmove": 2, "dimtix": 1, "dimtofl": 1,
              "dimlwd": 13, "dimlwe": 13,
              "dimclrd": 256, "dimclre": 256, "dimclrt": 256}
    doc.dimstyles.add("建筑-75", dxfattribs=common)
    doc.dimstyles.add("室内-75", dxfattribs={**common, "dimtxt": 2.0, "dimasz": 1.2, "dimfxl": 2.0})
    doc.dimstyles.add("ARCH-METRES", dxfattribs={**common, "dimlfac": 0.001, "dimdec": 2, "dimpost": "<> m"})
    doc.dimstyles.add("角度-半径", dxfattribs={**common, "dimblk": "", "dimasz": 2.5})

    mleader_style = doc.mleader_styles.duplicate_entry("Standard", "说明-75")
    mleader_style.set_mtext_style("中文")
    mleader_style.dxf.name = "说明-75"
    mleader_style.dxf.char_height = 2.5
    mleader_style.dxf.arrow_head_size = 2.0
    mleader_style.dxf.dogleg_length = 3.0
    mleader_style.dxf.landing_gap_size = 1.0
    mleader_style.dxf.scale = SCALE
    doc.mleader_styles.duplicate_entry("Standard", "Notes small").dxf.char_height = 2.0

    table_style(doc, "面积表", "Room schedule", "中文", (170.0, 250.0, 190.0))
    table_style(doc, "Door schedule", "Doors and windows", "LATIN", (150.0, 220.0, 170.0))
    current_names(doc, CMLEADERSTYLE="说明-75", CTABLESTYLE="面积表")

    material(doc, "混凝土 Concrete", "Fair-faced concrete", (150, 152, 155))
    material(doc, "Oak", "Oiled oak floor", (176, 132, 84))
    material(doc, "Glass", "Clear double glazing", (170, 205, 225), opacity=0.35)
    material(doc, "石材 Stone", "Grey granite paving", (128, 126, 122))

    doc.ucs.add("轴网 Grid A-1", dxfattribs={"origin": (0, 0, 0)})
    doc.ucs.add("Kitchen corner", dxfattribs={"origin": (8760, 6960, 0)})
    tilt = math.radians(15)
    doc.ucs.add("花园 Garden", dxfattribs={
        "origin": (17700, -3600, 0), "xaxis": (math.cos(tilt), math.sin(tilt), 0),
        "yaxis": (-math.sin(tilt), math.cos(tilt), 0)})


def add_views(plan):
    garden = plan.doc.ucs.get("花园 Garden")
    for name, left, bottom, right, top in (
            ("全图 Sheet", *SHEET), ("一层 Ground floor", -1300, -600, 18300, 11500),
            ("客厅 Living room", 3700, -200, 13200, 7000), ("厨房 Kitchen", 8500, 6700, 13200, 11000),
            ("Entrance", 5400, 6500, 9600, 12600), ("花园 Garden", 12600, -4700, 26300, 5200)):
        attributes = {"center": ((left + right) / 2, (bottom + top) / 2), "width": right - left,
                      "height": top - bottom, "direction": (0, 0, 1), "target": (0, 0, 0)}
        if name == "花园 Garden":
            attributes.update(ucs=1, ucs_origin=garden.dxf.origin, ucs_xaxis=garden.dxf.xaxis,
                              ucs_yaxis=garden.dxf.yaxis, ucs_handle=garden.dxf.handle, ucs_ortho_type=0)
        plan.doc.views.add(name, dxfattribs=attributes)


# ---- The building --------------------------------------------------------------------------------------------------

def wall_box(x1, y1, x2, y2, thickness):
    half = thickness / 2
    return (x1 - half, y1 - half, x2 + half, y2 + half)


def opening_box(width, start, rotation, mirrored=False):
    """The rectangle an opening cuts from its wall; it is a little wider than any wall."""
    dx, dy = round(math.cos(math.radians(rotation))), round(math.sin(math.radians(rotation)))
    if mirrored:
        dx, dy = -dx, -dy
    x2, y2 = start[0] + dx * width, start[1] + dy * width
    x1, x2 = sorted((start[0], x2))
    y1, y2 = sorted((start[1], y2))
    across = BEARING_THICKNESS / 2 + 1
    return (x1, y1 - across, x2, y2 + across) if dx else (x1 - across, y1, x2 + across, y2)


def add_walls(plan):
    openings = [opening_box(width, start, rotation) for width, start, rotation, _ in WINDOWS + SLIDING_DOORS]
    openings += [opening_box(*door[:4]) for door in DOORS]
    bearing = [wall_box(*line, BEARING_THICKNESS) for line in BEARING]
    partitions = [wall_box(*line, PARTITION_THICKNESS) for line in PARTITIONS]
    concrete = plan.doc.materials.get("混凝土 Concrete").dxf.handle

    outline = plan.pen("A-WALL", material_handle=concrete)
    for group in union_loops(bearing, openings):
        plan.pen("A-WALL-FILL", material_handle=concrete).fill(*group)
        for loop in group:
            outline.path(loop, close=True).set_xdata(
                "ZEVA_SAMPLES", [(1000, "wall"), (1000, "REI 90"), (1040, float(BEARING_THICKNESS)), (1070, 1)])
    for group in union_loops(partitions, openings + bearing):
        plan.pen("A-WALL-PRTN-FILL").hatch("ANSI31", 24.0, *group)
        for loop in group:
            plan.pen("A-WALL-PRTN").path(loop, close=True)

    for x, y in ((0, 0), (3900, 0), (12900, 0), (17100, 0), (0, 4500), (3900, 4500), (12900, 4500), (17100, 4500),
                 (0, 6900), (12900, 6900), (17100, 6900), (12900, 9300), (17100, 9300), (0, 10800), (3900, 10800),
                 (6300, 10800), (8700, 10800), (12900, 10800), (8700, 4500), (6300, 6900), (8700, 6900)):
        dx = 30 if x == 0 else -30 if x == 17100 else 0
        dy = 30 if y == 0 else -30 if y == 10800 else 0
        square = rectangle(x - 150 + dx, y - 150 + dy, 300, 300)
        plan.pen("S-COLS").fill(square)
        plan.pen("A-WALL").path(square, close=True)


def add_openings(plan):
    windows, doors = plan.pen("A-GLAZ"), plan.pen("A-DOOR")
    for width, start, rotation, mark in WINDOWS:
        reference = windows.insert(f"WINDOW-{width}", *start, rotation=rotation)
        place_mark(reference, mark, start, rotation, (width / 2, -260))
    for width, hinge, rotation, mirrored, mark in DOORS:
        side = -1.0 if mirrored else 1.0
        reference = doors.insert(f"DOOR-{width}", *hinge, rotation=rotation, xscale=side)
        place_mark(reference, mark, hinge, rotation, (side * width * 0.42, width * 0.36))
    for width, start, rotation, mark in SLIDING_DOORS:
        reference = doors.insert(f"DOOR-SLIDING-{width}", *start, rotation=rotation)
        place_mark(reference, mark, start, rotation, (width / 2, 290))


def place_mark(reference, mark, start, rotation, offset):
    """The mark stands upright or reads from the right, wherever its door or window is turned."""
    angle = math.radians(rotation)
    x = start[0] + offset[0] * math.cos(angle) - offset[1] * math.sin(angle)
    y = start[1] + offset[0] * math.sin(angle) + offset[1] * math.cos(angle)
    reading = 90 if rotation in (90, 270) and "WINDOW" in reference.dxf.name else 0
    attribute = reference.add_attrib("MARK", mark, (x, y), dxfattribs={
        "height": 125, "style": "LATIN-NARROW", "layer": reference.dxf.layer, "rotation": reading})
    attribute.set_pos((x, y), align="MIDDLE_CENTER")


def add_stairs(plan):
    pen, thin = plan.pen("A-STRS"), plan.pen("A-STRS", lineweight=13)
    left, bottom, width, tread, count = 8850.0, 4560.0, 1050.0, 270.0, 13
    cut = 9
    pen.line(left, bottom + width, left + tread * count, bottom + width)
    pen.line(left, bottom, left + tread * count, bottom)
    pen.line(left, bottom + width - 60, left + tread * cut, bottom + width - 60)
    for step in range(count + 1):
        x = left + step * tread
        (thin if step <= cut else thin.with_(linetype="HIDDEN")).line(x, bottom, x, bottom + width - 60)
    for shift in (0, 90):
        x = left + cut * tread + 60 + shift
        pen.path([(x, bottom - 120), (x + 110, bottom + 430), (x + 20, bottom + 500), (x + 200, bottom + 580),
                  (x + 110, bottom + 620), (x + 220, bottom + width + 120)])
    middle = bottom + (width - 60) / 2
    thin.circle(left + 135, middle, 45)
    thin.line(left + 180, middle, left + tread * 8.2, middle)
    thin.solid([(left + tread * 8.2, middle - 70), (left + tread * 8.2, middle + 70), (left + tread * 8.9, middle)])
    plan.pen("文字-说明").text("上 17 UP", left + 60, bottom + width + 90, 180, style="中文")


def add_roof(plan):
    pen = plan.pen("A-ROOF-OVHD")
    pen.path([(-720, -720), (3300, -720), (3300, -1500), (13500, -1500), (13500, -720), (17820, -720), (17820, 10020),
              (13620, 10020), (13620, 11520), (-720, 11520)], close=True)
    carport = rectangle(19300, 4900, 5700, 5600)
    pen.path(carport, close=True)
    pen.line(19300, 4900, 25000, 10500)
    pen.line(19300, 10500, 25000, 4900)
    for x in (19600, 24700):
        for y in (5200, 10200):
            post = rectangle(x - 100, y - 100, 200, 200)
            plan.pen("S-COLS").fill(post)
            plan.pen("A-WALL").path(post, close=True)


def add_floors(plan):
    pen = plan.pen("A-FLOR-PATT")
    for room, tile in (((120, 4560, 1740, 6840), 300), ((3960, 6960, 6240, 10680), 300),
                       ((13020, 6960, 16980, 9180), 300), ((8760, 6960, 12780, 10680), 600),
                       ((6360, 6960, 8640, 10680), 600)):
        x1, y1, x2, y2 = room
        grid = [(0.0, (x1, y1), (0.0, tile), []), (90.0, (x1, y1), (-tile, 0.0), [])]
        pen.hatch("TILES", 1.0, rectangle(x1, y1, x2 - x1, y2 - y1), definition=grid)


# ---- What stands in it ---------------------------------------------------------------------------------------------

def add_furniture(plan):
    pen = plan.pen("家具")
    plan.pen("家具", lineweight=9).insert("RUG", 6350, 1600)
    pen.insert("SOFA-L", 7650, 3150, rotation=270)
    pen.insert("ARMCHAIR", 5750, 560, rotation=150)
    pen.insert("COFFEE-TABLE", 6450, 1500, rotation=90)
    pen.insert("TV-UNIT", 4040, 2900, rotation=270)

    dining = [pen.insert("DINING-TABLE", 10900, 2250), pen.insert("SITE$0$POT", 12450, 520)]
    plan.doc.groups.new("餐厅家具 Dining", description="餐桌与花盆").extend(dining)

    pen.insert("DESK", 250, 4400)
    pen.insert("BOOKSHELF", 3770, 400, rotation=90)
    pen.insert("ARMCHAIR", 800, 800, rotation=-40)

    pen.insert("BED-SINGLE", 160, 8450)
    pen.insert("WARDROBE-1800", 3830, 8700, rotation=90)
    pen.insert("BED-DOUBLE", 16960, 2250, rotation=180)
    pen.insert("ARMCHAIR", 13500, 620, rotation=-30)
    pen.insert("WARDROBE-1800", 14500, 6230)
    pen.insert("WARDROBE-1800", 16970, 4700, rotation=90)
    pen.insert("WARDROBE-1800", 6380, 9800, rotation=270)


def add_fixtures(plan):
    pen = plan.pen("卫生洁具")
    pen.insert("WASHER", 150, 6210)
    pen.insert("BASIN-900", 135, 5100, rotation=90)
    pen.insert("BATHTUB", 6230, 8930, rotation=90)
    pen.insert("WC", 4450, 10670)
    pen.insert("BASIN-900", 6230, 8150, rotation=270)

    pen.insert("SHOWER", 16070, 8270)
    pen.insert("WC", 13700, 9170)
    pen.insert("BASIN-900", 15500, 6970, rotation=180)
    pen.insert("BASIN-900", 16430, 6970, rotation=180)

    kitchen = plan.pen("厨房设备")
    kitchen.path([(8770, 7700), (9370, 7700), (9370, 10080), (12180, 10080), (12180, 10670), (8770, 10670)], close=True)
    kitchen.with_(lineweight=9).path([(9390, 7700), (9390, 10060), (12180, 10060)])
    kitchen.insert("SINK-DOUBLE", 10350, 10120)
    kitchen.insert("HOB", 9340, 8300, rotation=90)
    kitchen.insert("FRIDGE", 8770, 6990)
    for x in (9960, 11700):
        kitchen.with_(lineweight=9).line(x, 10080, x, 10670)


# ---- The garden ----------------------------------------------------------------------------------------------------

BOUNDARY = (-1500, -4500, 26000, 12300)
POOL = (13700, -3900, 4600, 2200)
TERRACE = (3500, -3300, 9900, 3180)
DRIVEWAY = (19600, 5000, 5100, 7300)


def add_site(plan):
    x1, y1, x2, y2 = BOUNDARY
    plan.pen("SITE$0$用地红线").rect(x1, y1, x2 - x1, y2 - y1)
    fence = plan.pen("SITE$0$FENCE")
    fence.path([(6000, y2 - 250), (x1 + 250, y2 - 250), (x1 + 250, y1 + 250), (x2 - 250, y1 + 250),
                (x2 - 250, y2 - 250), (25000, y2 - 250)])
    fence.line(9000, y2 - 250, 19400, y2 - 250)


def add_paving(plan):
    edge, pattern = plan.pen("L-PAVE 铺地"), plan.pen("L-PAVE-PATT")

    x, y, width, height = TERRACE
    edge.rect(x, y, width, height)
    boards = [(0.0, (x, y), (0.0, 160.0), [])]
    pattern.hatch("DECKING", 1.0, rectangle(x, y, width, height), definition=boards)
    for step in range(1, 3):
        edge.rect(x + 2800, y - step * 300, 4200, 300)

    x, y, width, height = DRIVEWAY
    edge.rect(x, y, width, height)
    pattern.hatch("BRICK", 1.0, rectangle(x, y, width, height), definition=[
        (0.0, (x, y), (0.0, 300.0), []),
        (90.0, (x, y), (300.0, 300.0), [300.0, -300.0]),
    ])

    walk = [(6400, 10920), (8600, 10920), (8600, 11000), (19600, 11000), (19600, 12050), (9000, 12050), (9000, 12300),
            (6000, 12300), (6000, 11000), (6400, 11000)]
    edge.path(walk, close=True)
    pattern.hatch("SLABS", 1.0, walk, definition=[
        (0.0, (6000, 11000), (0.0, 525.0), []), (90.0, (6000, 11000), (525.0, 700.0), [525.0, -525.0])])
    edge.rect(6600, 10920, 1800, 900)

    stones = [(14050, 9700), (14900, 9950), (15750, 10250), (16600, 10500), (17500, 10700)]
    for number, (x, y) in enumerate(stones):
        edge.rect(x - 300, y - 170, 620, 340, 90)
    for number in range(9):
        t = number / 8  # along a quadratic curve from the terrace to the carport
        x = (1 - t) ** 2 * 13950 + 2 * t * (1 - t) * 19300 + t * t * 18900
        y = (1 - t) ** 2 * -850 + 2 * t * (1 - t) * -1300 + t * t * 4550
        edge.rect(x - 260, y - 190, 540, 380, 110)


def add_pool(plan):
    x, y, width, height = POOL
    pen = plan.pen("L-POOL 水池")
    plan.pen("L-PAVE 铺地").rect(x - 300, y - 300, width + 600, height + 600, 450)
    pen.rect(x, y, width, height, 300)
    pen.with_(lineweight=9).hatch("WATER", 1.0, rectangle(x, y, width, height, 300), definition=[
        (0.0, (x, y), (430.0, 140.0), [520.0, -380.0]), (0.0, (x + 260, y + 70), (-310.0, 280.0), [180.0, -720.0])])
    for step in range(1, 4):
        pen.with_(lineweight=13).path([(x, y + 300 + 250 * (4 - step)), (x + step * 260, y + 300 + 250 * (4 - step)),
                                       (x + step * 260, y + height)])


def add_lawn(plan):
    lawn = plan.pen("L-LAWN 草坪")
    bed = [(18000, 4200), (25500, 4200), (25500, -4000), (19200, -4000, 0.0), (18900, -3000, -0.25), (19500, -900, 0.2),
           (20000, 1500, -0.15), (18000, 3600)]
    lawn.with_(lineweight=18).path(bed, close=True)
    lawn.hatch("GRASS", 42.0, bed)
    west = [(-1100, -4100), (2900, -4100, 0.0), (3100, -2600, 0.2), (2600, -900), (-1100, -900)]
    lawn.with_(lineweight=18).path(west, close=True)
    lawn.hatch("GRASS", 42.0, west)


def add_plants(plan):
    tree, blossom, shrub = plan.pen("L-PLNT-TREE"), plan.pen("L-PLNT-BLOS"), plan.pen("L-PLNT-SHRB")
    for name, x, y, radius, turn in (
            ("ROUND", 22900, 600, 1850, 10), ("ROUND", 24200, -2600, 1250, 60), ("ROUND", 300, -2700, 1350, 25),
            ("PINE", 22250, -3100, 700, 0), ("PINE", 24400, 3300, 900, 12),
            ("PINE", 21300, 3400, 700, 30), ("PINE", 2000, -3600, 600, 5)):
        tree.insert(f"SITE$0$TREE-{name}", x, y, rotation=turn, xscale=radius / 1000, yscale=radius / 1000)
    for x, y, radius, turn in ((15500, 10300, 780, 0), (20000, -1300, 950, 40), (-300, 11650, 560, 80)):
        blossom.insert("SITE$0$TREE-BLOSSOM", x, y, rotation=turn, xscale=radius / 1000, yscale=radius / 1000)
    for number in range(12):
        shrub.insert("SITE$0$SHRUB", -850, -300 + number * 900, rotation=number * 37,
                     xscale=0.95 + 0.12 * (number % 3), yscale=0.95 + 0.12 * (number % 3))
    for number in range(11):
        shrub.insert("SITE$0$SHRUB", 25350, 4700 + number * 640, rotation=number * 53)
    for number in range(6):
        shrub.insert("SITE$0$SHRUB", 900 + number * 780, 11500, rotation=number * 29, xscale=0.9, yscale=0.9)
    for x, y in ((3800, -400), (13100, -400), (6350, 11200), (8650, 11200)):
        shrub.insert("SITE$0$POT", x, y)
    furniture = plan.pen("家具")
    furniture.insert("PARASOL", 5700, -1750, rotation=12)
    furniture.insert("SUN-LOUNGER", 11250, -2750)
    furniture.insert("SUN-LOUNGER", 12300, -2750)
    plan.pen("C-VEHC").insert("CAR", 20900, 7700)
    plan.pen("C-VEHC").insert("CAR", 23500, 7500, rotation=2)


def add_services(plan):
    plan.pen("P-GAS 燃气").path([(26000, 10800), (18500, 10800), (18500, 11250), (11800, 11250), (11800, 10680)])
    plan.pen("P-WATR 给水").path([(5200, 12300), (5200, 10450), (6050, 10450), (6050, 8300)])
    plan.pen("P-SANR 排水").path([(4250, 10400), (4250, 11800), (-1500, 11800)])
    for x, y in ((600, 300), (3500, 4200), (4300, 4000), (8400, 300), (12500, 4100), (13200, 2900), (9000, 10400)):
        socket = plan.pen("E-POWR 插座")
        socket.arc(x, y, 110, 0, 180)
        socket.line(x - 110, y, x + 110, y)
        socket.line(x, y + 110, x, y + 240)
    ceiling = plan.pen("A-CLNG 吊顶")
    for x1, y1, x2, y2 in (room[2] for room in ROOMS):
        ceiling.rect(x1 + 250, y1 + 250, x2 - x1 - 500, y2 - y1 - 500)


# ---- Grid, dimensions, marks ---------------------------------------------------------------------------------------

BUBBLE_TOP, BUBBLE_LEFT = 14900, -4500


def add_grid(plan):
    pen, bubbles = plan.pen("轴线"), plan.pen("轴号")

    def bubble(name, x, y):
        reference = bubbles.insert("GRID-BUBBLE", x, y)
        reference.add_auto_attribs({"AXIS": name})
    for number, x in enumerate(GRID_X):
        pen.line(x, -900, x, BUBBLE_TOP - 375)
        bubble(str(number + 1), x, BUBBLE_TOP)
    for number, y in enumerate(GRID_Y):
        pen.line(BUBBLE_LEFT + 375, y, 17900 if y != 10800 else 13700, y)
        bubble("ABCDE"[number], BUBBLE_LEFT, y)


def chain(plan, points, place, angle, text_at=None):
    for a, b in zip(points, points[1:]):
        if angle == 0:
            p1, p2, base = (a, 12300), (b, 12300), (a, place)
        else:
            p1, p2, base = (-1500, a), (-1500, b), (place, a)
        render_dimension(plan.msp.add_linear_dim(
            base=base, p1=p1, p2=p2, location=text_at, angle=angle, dimstyle="建筑-75",
            dxfattribs={"layer": "标注-尺寸"}))


def add_dimensions(plan):
    chain(plan, [-120, 1200, 2700, 3900, 4800, 5700, 6300, 6900, 8100, 8700, 9600, 12000,
                 12900, 14400, 15600, 17220], 12950, 0)
    chain(plan, GRID_X, 13500, 0)
    chain(plan, [-120, 17220], 14050, 0, text_at=(10800, 14205))
    chain(plan, [-120, 1500, 3000, 4500, 5400, 6000, 6900, 8000, 9800, 10920], -2350, 90)
    chain(plan, GRID_Y, -2950, 90)
    chain(plan, [-120, 10920], -3550, 90)

    inside = {"layer": "标注-尺寸"}
    for base, p1, p2 in (((3500, -4050), (3500, -3300), (13400, -3300)),
                         ((19600, 4550), (19600, 5000), (24700, 5000))):
        render_dimension(plan.msp.add_linear_dim(base=base, p1=p1, p2=p2, dimstyle="室内-75", dxfattribs=inside))


def add_marks(plan):
    pen = plan.pen("标注-符号")
    for y, name in ((11300, "1"), (-2450, "1")):
        reference = pen.insert("SECTION-MARK", 10500, y)
        reference.add_auto_attribs({"SECTION": name})
    plan.pen("标注-符号", linetype="DASHDOT", lineweight=18).path([(10500, 11300), (10500, 10450)])
    plan.pen("标注-符号", linetype="DASHDOT", lineweight=18).path([(10500, -1700), (10500, 200)])
    for x, y, level in ((6750, 7150, "±0.000"), (7300, -2950, "-0.020"), (21400, 5300, "-0.150"),
                        (6900, 11200, "-0.015")):
        reference = plan.pen("标注-符号", lineweight=18).insert("LEVEL-MARK", x, y)
        reference.add_auto_attribs({"LEVEL": level})


def add_room_tags(plan):
    pen = plan.pen("文字-房间")
    for chinese, english, (x1, y1, x2, y2), (x, y) in ROOMS:
        area = (x2 - x1) * (y2 - y1) / 1e6
        pen.insert("ROOM-TAG", x, y).add_auto_attribs(
            {"NAME": chinese, "NAME-EN": english, "AREA": f"{area:.1f} m²"})


LEADER_COLOR = (210, 156, 72)


def add_leaders(plan):
    for text, target, insert in (("防腐木露台 Larch deck", (9950, -2650), (10750, -3500)),
                                 ("泳池，水深 1.40 m\\PPool, 1.40 m deep", (17300, -2500), (19500, -2600))):
        builder = plan.msp.add_multileader_mtext("说明-75", dxfattribs={"layer": "标注-引线"})
        builder.set_content(text, style="中文", color=LEADER_COLOR, alignment=mleader.TextAlignment.left)
        builder.set_leader_properties(color=LEADER_COLOR, lineweight=13)
        builder.set_connection_properties(landing_gap=0.8, dogleg_length=3.0)
        builder.set_arrow_properties(size=1.8 * SCALE)
        builder.add_leader_line(mleader.ConnectionSide.left, [Vec2(target)])
        builder.build(insert=Vec2(insert))


# ---- The sheet -----------------------------------------------------------------------------------------------------

def add_sheet(plan):
    x1, y1, x2, y2 = SHEET
    plan.pen("图框-细线").rect(x1, y1, x2 - x1, y2 - y1)
    left, bottom, right, top = FRAME
    pen = plan.pen("图框", lineweight=70)
    pen.rect(left, bottom, right - left, top - bottom)
    pen.with_(lineweight=50).line(STRIP, bottom, STRIP, top)

    title = plan.pen("图框", lineweight=25).insert("TITLE-BLOCK", STRIP, bottom)
    title.add_auto_attribs({
        "PROJECT-CN": "湖畔小屋与工作室", "PROJECT": "Lakeside house and studio",
        "TITLE-CN": "一层平面图", "TITLE": "Ground floor plan", "DRAWN": "L. Chen", "CHECKED": "M. Weber",
        "SCALE": "1:75", "DATE": "2024-05-18", "SHEET": "A-101"})

    plan.pen("图框").insert("NORTH-ARROW", STRIP + 2250, top - 1700, rotation=0)

    name = plan.pen("文字-房间")
    name.text("一层平面图  GROUND FLOOR PLAN", -1500, -5350, 380, style="中文-粗")
    name.text("1:75", 8300, -5350, 260)
    plan.pen("图框", lineweight=50).line(-1500, -5500, 9100, -5500)
    plan.pen("图框", lineweight=18).line(-1500, -5570, 9100, -5570)
    plan.pen("图框", lineweight=18).insert("SCALE-BAR", 20300, -5500)


LEGEND = [
    ("fill", "A-WALL-FILL", "承重墙 Bearing wall"), ("hatch", "A-WALL-PRTN-FILL", "隔墙 Partition"),
    ("line", "SITE$0$用地红线", "用地红线 Site boundary"), ("line", "SITE$0$FENCE", "围栏 Fence"),
    ("line", "P-GAS 燃气", "燃气管 Gas"), ("line", "P-WATR 给水", "给水管 Water"),
    ("line", "P-SANR 排水", "排水管 Drainage"), ("line", "A-ROOF-OVHD", "屋檐投影 Roof above"),
    ("tree", "L-PLNT-TREE", "乔木 Tree"),
]


def add_legend(plan):
    top = FRAME[3] - 3300
    heading = plan.pen("文字-房间")
    text = plan.pen("文字-说明")
    thin = plan.pen("图框-细线")

    thin.line(STRIP, top + 450, FRAME[2], top + 450)
    heading.text("图例 Legend", STRIP + 250, top, 230, style="中文-粗", align="MIDDLE_LEFT")
    for number, (kind, layer_name, label) in enumerate(LEGEND):
        y = top - 450 - number * 405
        swatch = rectangle(STRIP + 250, y - 110, 1100, 220)
        if kind == "line":
            plan.pen(layer_name, ltscale=0.6).line(STRIP + 250, y, STRIP + 1350, y)
        elif kind == "tree":
            plan.pen(layer_name).insert("SITE$0$TREE-ROUND", STRIP + 800, y, xscale=0.2, yscale=0.2)
        else:
            fill = plan.pen(layer_name)
            fill.fill(swatch) if kind == "fill" else fill.hatch("ANSI31", 24.0, swatch)
            plan.pen("A-WALL", lineweight=25).path(swatch, close=True)
        text.text(label, STRIP + 1600, y, 180, style="中文", align="MIDDLE_LEFT")


def add_schedule(plan):
    """Room schedule in the title strip, with the areas computed from the rooms."""
    left, right, row = STRIP + 250, FRAME[2] - 250, 330
    top = FRAME[3] - 8250
    heading, text = plan.pen("文字-房间"), plan.pen("文字-说明")
    thin = plan.pen("图框-细线")
    thin.line(STRIP, top + 800, FRAME[2], top + 800)
    heading.text("面积表 Room schedule", left, top + 380, 230, style="中文-粗", align="MIDDLE_LEFT")
    rows = [(chinese, english, (box[2] - box[0]) * (box[3] - box[1]) / 1e6) for chinese, english, box, _ in ROOMS]
    total = sum(area for *_, area in rows)
    for number, (chinese, english, area) in enumerate(rows + [("合计", "Total", total)]):
        y = top - number * row
        pen = heading if chinese == "合计" else text
        pen.text(chinese, left + 60, y - row / 2, 165, style="中文", align="MIDDLE_LEFT")
        pen.text(english, left + 1150, y - row / 2, 155, align="MIDDLE_LEFT")
        pen.text(f"{area:.1f} m²", right - 60, y - row / 2, 155, align="MIDDLE_RIGHT")
        thin.line(left, y, right, y)
    bottom = top - (len(rows) + 1) * row
    thin.line(left, bottom, right, bottom)
    plan.pen("文字-说明").mtext(
        "说明 Notes\\P1. 尺寸单位为毫米，标高单位为米。\\P    Dimensions in mm, levels in m.\\P"
        "2. ±0.000 = 52.40 m.\\P3. 外墙 240，内墙 120。", left, bottom - 330, 165, 4000)


def add_paper(plan):
    doc = plan.doc
    plot_model(doc, "ISO_A2_(594.00_x_420.00_MM)", 594, 420)
    doc.layouts.rename("Layout1", "A2 图纸 Sheet")
    layout = doc.layout("A2 图纸 Sheet")
    layout.page_setup(size=(594, 420), margins=(10, 10, 10, 25), units="mm", name="ISO_A2", device="")
    pen = Pen(layout, layer="图框")
    pen.with_(lineweight=70).rect(0, 0, 559, 400)
    pen.with_(lineweight=50).line(0, 45, 559, 45)
    layout.add_viewport(center=(205, 225), size=(390, 340), view_center_point=(7600, 4900), view_height=340 * 60)
    layout.add_viewport(center=(482, 305), size=(140, 180), view_center_point=(10750, 8850), view_height=180 * 25)
    layout.add_viewport(center=(482, 130), size=(140, 138), view_center_point=(5100, 8800), view_height=138 * 25)
    text = Pen(layout, layer="文字-房间")
    text.text("湖畔小屋与工作室  Lakeside house and studio", 12, 24, 7, style="中文-粗")
    text.text("一层平面图 Ground floor plan 1:60", 12, 10, 5, style="中文")
    text.text("厨房 Kitchen 1:25", 415, 206, 4, style="中文")
    text.text("浴室 Bath 1:25", 415, 52, 4, style="中文")
    text.text("A-102", 520, 18, 9, align="CENTER")


def finish(plan):
    doc, header = plan.doc, plan.doc.header
    x1, y1, x2, y2 = SHEET
    plan.msp.reset_extents((x1, y1, 0), (x2, y2, 0))
    plan.msp.reset_limits((x1, y1), (x2, y2))
    doc.update_extents()
    doc.update_limits()
    doc.set_modelspace_vport(height=(y2 - y1) * 1.02, center=((x1 + x2) / 2, (y1 + y2) / 2))
    header["$LTSCALE"] = SCALE
    header["$CLAYER"] = "A-WALL"
    header["$TEXTSTYLE"] = "LATIN"
    header["$DIMSTYLE"] = "建筑-75"
    header["$UCSNAME"] = "轴网 Grid A-1"
    header["$TEXTSIZE"] = 187.5


STEPS = [
    add_layers, add_styles, add_views, lambda plan: define_blocks(plan.doc), add_sheet, add_site, add_lawn, add_paving,
    add_pool, add_floors, add_roof, add_grid, add_services, add_walls, add_openings, add_stairs, add_furniture,
    add_fixtures, add_plants, add_dimensions, add_marks, add_leaders, add_room_tags, add_legend, add_schedule,
    add_paper, finish,
]


def make_plan():
    plan = Plan()
    for step in STEPS:
        step(plan)
    return plan.doc
