# SPDX-License-Identifier: MIT
"""The block definitions of the plan: doors, windows, furniture, fixtures, plants and drawing symbols, in millimetres.

Geometry stands on layer 0 and so takes the layer of the block reference.
"""

import math
import random

from drafting import Pen, rectangle

FINE, THIN, BOLD = 9, 13, 35  # line weights in hundredths of a millimetre


def block(doc, name, description=""):
    definition = doc.blocks.new(name)
    if description:
        definition.block.dxf.description = description
    return Pen(definition, layer="0")


def doors(doc):
    for width in (700, 800, 900, 1200):
        pen = block(doc, f"DOOR-{width}", "Single door; hinge at the origin, swings to +Y")
        pen.with_(lineweight=25).rect(0, 0, 40, width)
        pen.with_(lineweight=THIN).arc(0, 0, width, 0, 90)
        pen.with_(lineweight=THIN, linetype="HIDDEN").line(40, 0, width, 0)
        pen.attdef("MARK", "Door mark", width * 0.5, width * 0.42, 150)

    pen = block(doc, "DOOR-SLIDING-1800", "Sliding door; left end of the opening at the origin")
    pen.with_(lineweight=25).rect(0, 10, 940, 40)
    pen.with_(lineweight=25).rect(860, -50, 940, 40)
    pen.with_(lineweight=THIN).line(300, 130, 700, 130)
    pen.with_(lineweight=THIN).path([(600, 170), (700, 130), (600, 90)])
    pen.attdef("MARK", "Door mark", 900, 270, 150)


def windows(doc):
    for width in (600, 900, 1200, 1500, 1800, 2400, 3600):
        pen = block(doc, f"WINDOW-{width}", "Window in a wall of 240; left end of the opening at the origin")
        thin = pen.with_(lineweight=THIN)
        for y in (-120, 120):
            pen.with_(lineweight=25).line(0, y, width, y)
        for y in (-30, 30):
            thin.line(0, y, width, y)
        panes = max(1, round(width / 1200))
        for pane in range(panes + 1):
            thin.rect(max(0, min(width - 50, pane * width / panes - 25)), -45, 50, 90)
        pen.attdef("MARK", "Window mark", width / 2, -270, 150)


def cushions(pen, x, y, width, depth, count):
    for number in range(count):
        pen.rect(x + number * width / count + 10, y, width / count - 20, depth, 60)


def furniture(doc):
    pen = block(doc, "SOFA-L", "Corner sofa, 2900 x 1750")
    pen.rect(0, 0, 2900, 950, 110)
    pen.path([(0, 850), (0, -700), (100, -800, 0.0), (850, -800), (950, -700), (950, 0)])
    thin = pen.with_(lineweight=THIN)
    cushions(thin, 950, 60, 1720, 650, 2)
    thin.rect(230, -720, 660, 1430, 60)
    for x in (260, 950, 1810):
        thin.rect(x, 720, 800 if x > 260 else 640, 190, 70)
    thin.rect(2690, 60, 170, 830, 60)
    thin.rect(50, -700, 160, 1400, 60)

    pen = block(doc, "ARMCHAIR", "Armchair, 820 x 800, centre at the origin")
    pen.rect(-410, -400, 820, 800, 160)
    thin = pen.with_(lineweight=THIN)
    thin.rect(-260, -360, 520, 540, 70)
    thin.path([(-330, -400), (-330, 180, -0.42), (330, 180), (330, -400)])

    pen = block(doc, "COFFEE-TABLE", "Coffee table, centre at the origin")
    pen.rect(-600, -350, 1200, 700, 120)
    pen.with_(lineweight=FINE).rect(-560, -310, 1120, 620, 90)
    thin = pen.with_(lineweight=FINE)
    thin.circle(-180, 60, 120)
    thin.circle(-180, 60, 70)
    thin.rect(120, -190, 300, 210)

    pen = block(doc, "RUG", "Rug, 3400 x 2300, centre at the origin")
    pen = pen.with_(lineweight=FINE)
    pen.rect(-1700, -1150, 3400, 2300)
    pen.rect(-1580, -1030, 3160, 2060)
    for side in (-1, 1):
        for step in range(24):
            y = -1104 + step * 96
            pen.line(side * 1700, y, side * 1780, y)

    pen = block(doc, "TV-UNIT", "Television on a low board, 2400 x 420")
    pen.rect(0, 0, 2400, 420)
    thin = pen.with_(lineweight=THIN)
    thin.path([(500, 200), (540, 260), (1860, 260), (1900, 200)], close=True)
    for x in (800, 1600):
        thin.line(x, 0, x, 200)

    pen = block(doc, "CHAIR", "Dining chair, faces +Y, centre at the origin")
    pen.rect(-220, -210, 440, 440, 90)
    pen.with_(lineweight=25).path([(-230, -170), (-200, -245, 0.12), (200, -245), (230, -170)])

    pen = block(doc, "DINING-TABLE", "Dining table, 2000 x 950, with six chairs, centre at the origin")
    pen.rect(-1000, -475, 2000, 950, 60)
    pen.with_(lineweight=FINE).rect(-960, -435, 1920, 870, 40)
    for x in (-640, 0, 640):
        pen.insert("CHAIR", x, -560)
        pen.insert("CHAIR", x, 560, rotation=180)
    thin = pen.with_(lineweight=FINE)
    for x in (-640, 0, 640):
        for y in (-250, 250):
            thin.circle(x, y, 130)
            thin.circle(x, y, 85)

    for name, width in (("BED-DOUBLE", 1800), ("BED-SINGLE", 1350)):
        pen = block(doc, name, f"Bed, {width} x 2050, head at the origin, lies to +X")
        half = width / 2
        pen.rect(0, -half - 40, 80, width + 80)
        pen.rect(80, -half, 2000, width, 50)
        thin = pen.with_(lineweight=THIN)
        pillow = width * 0.42
        for side in (-1, 1):
            thin.rect(150, side * width * 0.24 - pillow / 2, 400, pillow, 110)
        thin.path([(700, -half), (700, half)])
        thin.path([(700, -half), (950, half - width * 0.45, 0.08), (700, half * 0.75)])
        thin.path([(950, half - width * 0.45), (2080, half - width * 0.52)])
        for side in (-1, 1):
            edge = side * (half + 290)
            pen.rect(0, edge - 240, 420, 480, 30)
            thin.circle(210, edge, 130)
            thin.circle(210, edge, 55)
            thin.line(40, edge, 380, edge)
            thin.line(210, edge - 170, 210, edge + 170)

    pen = block(doc, "DESK", "Desk with chair, 1600 x 700, back at the origin")
    pen.rect(0, -700, 1600, 700, 20)
    thin = pen.with_(lineweight=THIN)
    thin.path([(480, -160), (1120, -160), (1160, -110), (440, -110)], close=True)
    thin.rect(530, -470, 540, 180, 15)
    for row in range(1, 4):
        thin.line(530, -470 + row * 45, 1070, -470 + row * 45)
    thin.rect(1140, -440, 70, 120, 30)
    thin.rect(120, -520, 240, 330)
    pen.rect(520, -1260, 560, 540, 150)
    pen.with_(lineweight=25).path([(500, -1120), (560, -1300, 0.25), (1040, -1300), (1100, -1120)])

    pen = block(doc, "BOOKSHELF", "Bookshelf, 2400 x 320")
    pen.rect(0, 0, 2400, 320)
    thin = pen.with_(lineweight=FINE)
    for x in (800, 1600):
        pen.line(x, 0, x, 320)
    dice = random.Random(7)
    x = 30
    while x < 2330:
        thickness = dice.randint(25, 60)
        thin.rect(x, 30, thickness, dice.randint(170, 240))
        x += thickness + (dice.randint(60, 160) if dice.random() < 0.12 else 4)

    pen = block(doc, "WARDROBE-1800", "Wardrobe, 1800 x 600")
    pen.rect(0, 0, 1800, 600)
    thin = pen.with_(lineweight=FINE)
    thin.line(0, 300, 1800, 300)
    dice = random.Random(11)
    for number in range(16):
        x = 90 + number * 108
        tilt = dice.uniform(-28, 28)
        thin.path([(x - 12 + tilt, 60), (x + 12 + tilt, 60), (x + 12 - tilt, 540), (x - 12 - tilt, 540)], close=True)

    pen = block(doc, "PIANO", "Upright piano with stool, 1500 x 620")
    pen.rect(0, 0, 1500, 380)
    pen.rect(30, -240, 1440, 240)
    thin = pen.with_(lineweight=FINE)
    for key in range(1, 36):
        thin.line(30 + key * 40, -240, 30 + key * 40, -110 if key % 7 in (1, 2, 4, 5, 6) else -20)
    pen.rect(450, -760, 600, 340, 50)

    pen = block(doc, "SUN-LOUNGER", "Lounger, 680 x 1950")
    pen.rect(0, 0, 680, 1950, 60)
    thin = pen.with_(lineweight=FINE)
    for step in range(1, 14):
        thin.line(40, step * 100, 640, step * 100)
    thin.rect(60, 1450, 560, 420, 80)

    pen = block(doc, "PARASOL", "Garden table under a parasol, centre at the origin")
    pen.circle(0, 0, 450)
    thin = pen.with_(lineweight=FINE)
    thin.circle(0, 0, 410)
    thin.circle(0, 0, 40)
    for number in range(4):
        angle = 45 + number * 90
        radians = math.radians(angle)
        pen.insert("CHAIR", 700 * math.cos(radians), 700 * math.sin(radians), rotation=angle + 90)
    dashed = pen.with_(lineweight=THIN, linetype="DASHED")
    dashed.path([(1250 * math.cos(math.radians(a)), 1250 * math.sin(math.radians(a))) for a in range(0, 360, 45)],
                close=True)
    for angle in range(0, 180, 45):
        x, y = 1250 * math.cos(math.radians(angle)), 1250 * math.sin(math.radians(angle))
        dashed.line(-x, -y, x, y)


def fixtures(doc):
    pen = block(doc, "WC", "Close-coupled WC, back at the origin, faces -Y")
    pen.rect(-190, -180, 380, 180, 30)
    pen.path([(-150, -200), (-180, -400), (-180, -440, 0.95), (180, -440), (180, -400), (150, -200)], close=True)
    thin = pen.with_(lineweight=THIN)
    thin.ellipse(0, -420, (0, 150), 0.78)
    thin.circle(0, -90, 25)

    pen = block(doc, "BASIN-900", "Wash basin in a board of 900 x 520, back at the origin")
    pen.rect(-450, -520, 900, 520, 20)
    thin = pen.with_(lineweight=THIN)
    thin.ellipse(0, -270, (270, 0), 0.66)
    thin.ellipse(0, -270, (235, 0), 0.63)
    thin.circle(0, -270, 22)
    thin.path([(-18, -40), (-12, -190, 0.9), (12, -190), (18, -40)], close=True)

    pen = block(doc, "BATHTUB", "Bathtub, 1700 x 780")
    pen.rect(0, 0, 1700, 780, 30)
    thin = pen.with_(lineweight=THIN)
    thin.path([(120, 180), (200, 90, 0.0), (1380, 90, 0.414), (1620, 330), (1620, 450, 0.414), (1380, 690),
               (200, 690), (120, 600)], close=True)
    thin.circle(260, 390, 35)
    thin.rect(40, 350, 60, 80, 15)

    pen = block(doc, "SHOWER", "Shower, 900 x 900")
    pen.rect(0, 0, 900, 900)
    thin = pen.with_(lineweight=THIN)
    thin.rect(45, 45, 810, 810, 40)
    thin.line(45, 45, 855, 855)
    thin.line(45, 855, 855, 45)
    thin.circle(450, 450, 60)
    thin.circle(450, 450, 25)

    pen = block(doc, "WASHER", "Washing machine, 600 x 600")
    pen.rect(0, 0, 600, 600, 20)
    thin = pen.with_(lineweight=THIN)
    thin.circle(300, 330, 205)
    thin.circle(300, 330, 160)
    thin.line(0, 90, 600, 90)

    pen = block(doc, "SINK-DOUBLE", "Kitchen sink with two bowls, 900 x 480")
    pen.rect(0, 0, 900, 480, 40)
    thin = pen.with_(lineweight=THIN)
    thin.rect(50, 50, 480, 330, 60)
    thin.rect(570, 50, 280, 330, 60)
    thin.circle(290, 215, 28)
    thin.circle(710, 215, 28)
    thin.path([(520, 440), (530, 250, 0.9), (560, 250), (570, 440)])

    pen = block(doc, "HOB", "Hob with four burners, 760 x 500")
    pen.rect(0, 0, 760, 500, 20)
    thin = pen.with_(lineweight=THIN)
    for x, y, radius in ((200, 350, 95), (540, 350, 115), (200, 160, 75), (540, 150, 85)):
        thin.circle(x, y, radius)
        thin.circle(x, y, radius * 0.45)
        for angle in range(45, 405, 90):
            a = math.radians(angle)
            thin.line(x + radius * 0.6 * math.cos(a), y + radius * 0.6 * math.sin(a),
                      x + radius * 1.25 * math.cos(a), y + radius * 1.25 * math.sin(a))

    pen = block(doc, "FRIDGE", "Refrigerator, 700 x 680")
    pen.rect(0, 0, 700, 680)
    thin = pen.with_(lineweight=THIN)
    thin.line(0, 60, 700, 60)
    thin.line(0, 680, 700, 60)
    thin.line(0, 60, 700, 680)


def plants(doc):
    """Trees seen from above: a scalloped crown, limbs and leaves, the same in every run."""
    def crown(pen, radius, count, depth):
        step = 2 * math.pi / count
        points = [(radius * math.cos(k * step), radius * math.sin(k * step), depth) for k in range(count)]
        pen.path(points, close=True)

    dice = random.Random(3)
    pen = block(doc, "SITE$0$TREE-ROUND", "Broad-leaved tree, crown of 1000 about the origin")
    crown(pen.with_(lineweight=25), 1000, 22, 0.55)
    thin = pen.with_(lineweight=FINE)
    for number in range(11):
        angle = number * 2 * math.pi / 11 + dice.uniform(-0.12, 0.12)
        reach = dice.uniform(700, 920)
        x, y = reach * math.cos(angle), reach * math.sin(angle)
        thin.line(60 * math.cos(angle), 60 * math.sin(angle), x, y)
        for side in (-0.42, 0.42):
            fork, tip = reach * 0.52, reach * dice.uniform(0.78, 0.95)
            thin.line(fork * math.cos(angle), fork * math.sin(angle),
                      tip * math.cos(angle + side * 0.6), tip * math.sin(angle + side * 0.6))
    pen.circle(0, 0, 60)

    pen = block(doc, "SITE$0$TREE-PINE", "Conifer, crown of 1000 about the origin")
    points = []
    for number in range(48):
        angle = number * 2 * math.pi / 48
        radius = 1000 if number % 2 == 0 else dice.uniform(760, 840)
        points.append((radius * math.cos(angle), radius * math.sin(angle)))
    pen.with_(lineweight=25).path(points, close=True)
    thin = pen.with_(lineweight=FINE)
    for number in range(24):
        angle = number * 2 * math.pi / 24
        inner = dice.uniform(60, 420)
        thin.line(inner * math.cos(angle), inner * math.sin(angle), 960 * math.cos(angle), 960 * math.sin(angle))
    pen.circle(0, 0, 50)

    pen = block(doc, "SITE$0$TREE-BLOSSOM", "Blossoming tree, crown of 1000 about the origin")
    crown(pen.with_(lineweight=25), 980, 13, 0.75)
    thin = pen.with_(lineweight=FINE)
    for number in range(34):
        angle, radius = dice.uniform(0, 2 * math.pi), 900 * math.sqrt(dice.random())
        size = dice.uniform(50, 105)
        thin.path([(radius * math.cos(angle) - size, radius * math.sin(angle), 1.0),
                   (radius * math.cos(angle) + size, radius * math.sin(angle), 0.7)], close=False)
    pen.circle(0, 0, 70)

    pen = block(doc, "SITE$0$SHRUB", "Shrub of 300 about the origin")
    crown(pen.with_(lineweight=THIN), 300, 9, 0.6)
    thin = pen.with_(lineweight=FINE)
    for angle in range(0, 360, 60):
        a = math.radians(angle + 15)
        thin.line(60 * math.cos(a), 60 * math.sin(a), 230 * math.cos(a), 230 * math.sin(a))

    pen = block(doc, "SITE$0$POT", "Planter of 250 about the origin")
    pen.circle(0, 0, 250)
    thin = pen.with_(lineweight=FINE)
    for number in range(9):
        angle = number * 2 * math.pi / 9
        thin.path([(0, 0, 0.35), (235 * math.cos(angle), 235 * math.sin(angle), 0.35), (0, 0)])


def vehicles(doc):
    pen = block(doc, "CAR", "Car, 1820 x 4560, centre at the origin, front to +Y")
    pen.with_(lineweight=25).path(
        [(-800, -2280, 0.06), (800, -2280, 0.3), (910, -2050), (890, 0), (905, 1500, 0.16), (760, 2180, 0.13),
         (-760, 2180, 0.16), (-905, 1500), (-890, 0), (-910, -2050, 0.3)], close=True)
    thin = pen.with_(lineweight=THIN)
    thin.path([(-740, 780, -0.13), (740, 780), (640, 260, 0.1), (-640, 260)], close=True)
    thin.path([(-650, -1250, -0.08), (650, -1250), (720, -1700, -0.1), (-720, -1700)], close=True)
    for side in (-1, 1):
        thin.path([(side * 770, 700), (side * 670, 220), (side * 670, -1220), (side * 745, -1620)])
        thin.line(side * 670, -420, side * 800, -420)
        thin.path([(side * 895, 560), (side * 1060, 520), (side * 1040, 400), (side * 890, 430)])
        thin.path([(side * 560, 1150), (side * 520, 2120)])
        thin.path([(side * 800, 1850), (side * 620, 2120), (side * 560, 2060), (side * 740, 1800)], close=True)


def symbols(doc):
    pen = block(doc, "GRID-BUBBLE", "Grid bubble of 10 mm on paper at 1:75")
    pen.circle(0, 0, 375)
    pen.attdef("AXIS", "Axis", 0, 0, 300)

    pen = block(doc, "ROOM-TAG", "Room name and area")
    pen.attdef("NAME", "房间名称", 0, 260, 300, style="中文")
    pen.attdef("NAME-EN", "Room name", 0, -70, 200)
    pen.attdef("AREA", "Area", 0, -360, 180)

    pen = block(doc, "LEVEL-MARK", "Level mark")
    pen.path([(0, 0), (-225, 225), (225, 225)], close=True)
    pen.line(-225, 225, 1300, 225)
    pen.attdef("LEVEL", "Level", 300, 270, 190, align="LEFT")

    pen = block(doc, "SECTION-MARK", "Section mark; the origin on the cut, looks to -X")
    pen.with_(lineweight=70).line(0, 0, 0, 750)
    pen.with_(lineweight=50).line(0, 0, -450, 0)
    pen.solid([(-450, -130), (-450, 130), (-800, 0)])
    pen.attdef("SECTION", "Section", -380, 400, 350)

    pen = block(doc, "NORTH-ARROW", "North arrow of 24 mm on paper")
    pen.circle(0, 0, 900)
    pen.with_(lineweight=THIN).circle(0, 0, 840)
    pen.fill([(0, 900), (-250, -810), (0, -560)])
    pen.path([(0, 900), (250, -810), (0, -560)])
    pen.text("N", 0, 1050, 420, align="BOTTOM_CENTER")

    pen = block(doc, "SCALE-BAR", "Scale bar of 5 m")
    for number in range(5):
        outline = rectangle(number * 1000, 0, 1000, 140)
        pen.path(outline, close=True)
        if number % 2 == 0:
            pen.fill(outline)
    for number in (0, 1, 2, 5):
        pen.text(f"{number}", number * 1000, 230, 190, align="CENTER")
    pen.text("m", 5180, 230, 190)

    pen = block(doc, "TITLE-BLOCK", "Foot of the title strip, 4500 x 5700")
    for y in (5700, 4300, 3100, 2500, 1900, 1300, 700):
        pen.with_(lineweight=25).line(0, y, 4500, y)
    for y in (3100, 2500, 1900, 1300):
        pen.with_(lineweight=THIN).line(1350, y, 1350, y - 600)
    label = pen.with_(lineweight=THIN)
    for y, text in ((2800, "设计 Drawn"), (2200, "审核 Checked"), (1600, "比例 Scale"), (1000, "日期 Date")):
        label.text(text, 110, y, 150, align="MIDDLE_LEFT", style="中文")
    label.text("工程名称 Project", 110, 5450, 150, align="MIDDLE_LEFT", style="中文")
    label.text("图名 Title", 110, 4060, 150, align="MIDDLE_LEFT", style="中文")
    label.text("图号 Sheet", 110, 350, 150, align="MIDDLE_LEFT", style="中文")
    pen.attdef("PROJECT-CN", "Project", 2250, 5080, 330, style="中文-粗")
    pen.attdef("PROJECT", "Project", 2250, 4600, 230)
    pen.attdef("TITLE-CN", "Title", 2250, 3740, 300, style="中文-粗")
    pen.attdef("TITLE", "Title", 2250, 3330, 200)
    pen.attdef("DRAWN", "Drawn by", 2925, 2800, 190)
    pen.attdef("CHECKED", "Checked by", 2925, 2200, 190)
    pen.attdef("SCALE", "Scale", 2925, 1600, 190)
    pen.attdef("DATE", "Date", 2925, 1000, 190)
    pen.attdef("SHEET", "Sheet number", 2700, 350, 400)


def define_blocks(doc):
    for make in (doors, windows, furniture, fixtures, plants, vehicles, symbols):
        make(doc)
