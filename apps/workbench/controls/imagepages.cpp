// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "base/zvjson.h"
#include "db/zvdbentities.h"
#include "qt_utils.h"
#include "zvimagecombobox.h"
#include "zvimageitem.h"
#include "zvimagevew.h"
#include "zvqtcanvas.h"
#include "zvqtimagewidget.h"

#include <QCoreApplication>
#include <QListWidget>
#include <QPainter>

namespace {

QString text(const char *english)
{
    return QCoreApplication::translate("ControlPages", english);
}

// ---- pictures of entities

template <class Entity, class... Args> void add(ZvQtImageWidget::Entities &entities, int colorIndex, Args... args)
{
    auto *entity = new ZvRxObjectImpl<Entity>(args...);
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(colorIndex));
    entity->setColor(color);
    entities.append(ZvSmartPtr<ZvDbEntity>::adopt(entity));
}

/// A few entities that belong to no drawing.
ZvQtImageWidget::Entities sampleEntities()
{
    ZvQtImageWidget::Entities entities;
    add<ZvDbCircle>(entities, 3, ZvGePoint3d(0, 0, 0), ZvGeVector3d(0, 0, 1), 30.0);
    add<ZvDbCircle>(entities, 1, ZvGePoint3d(0, 0, 0), ZvGeVector3d(0, 0, 1), 10.0);
    add<ZvDbLine>(entities, 5, ZvGePoint3d(-45, 0, 0), ZvGePoint3d(45, 0, 0));
    add<ZvDbLine>(entities, 5, ZvGePoint3d(0, -35, 0), ZvGePoint3d(0, 35, 0));
    return entities;
}

constexpr int kFrame = 10; // pixels

QColor frameColor()
{
    return QColor(255, 196, 64);
}

/// Shows the entities with the frame that the widget's properties name.
void showEntities(ZvQtImageWidget &picture, const ZvQtImageWidget::Entities &entities)
{
    const ZvJsonPtr options = ElementValue::createObject(IElementValueBase::kObject);
    options->SetDataI("padding_size", picture.property("frame").toInt());
    options->SetDataI("padding_clr", int(picture.property("frameColor").value<QColor>().rgb()));
    // Without a drawing the kernel draws the background alone.
    picture.attachDbEntities(entities, nullptr, options);
}

ControlPageData imageWidget()
{
    const auto make = [](QWidget *parent, int frame, const ZvQtImageWidget::Entities &entities) {
        auto *picture = new ZvQtImageWidget(parent);
        picture->setMinimumSize(160, 90);
        picture->setProperty("frame", frame);
        picture->setProperty("frameColor", frameColor());
        showEntities(*picture, entities);
        return picture;
    };
    ControlPageData page{"ZvQtImageWidget", "imageWidget",
                         PAGE_TEXT("A small picture of some entities, with a frame on request."),
                         ControlPageData::kPlain,
                         [make](bool, QWidget *parent) -> QWidget * { return make(parent, kFrame, sampleEntities()); }};
    page.variants = {{"Empty", PAGE_TEXT("Without entities"),
                      [make](QWidget *parent) { return make(parent, kFrame, ZvQtImageWidget::Entities()); }}};
    const auto set = [](const char *property) {
        return [property](QWidget &control, const QVariant &value) {
            control.setProperty(property, value);
            const bool isEmpty = ControlPage::nameOf(control).endsWith(QLatin1String("Empty"));
            showEntities(static_cast<ZvQtImageWidget &>(control),
                         isEmpty ? ZvQtImageWidget::Entities() : sampleEntities());
        };
    };
    ValueKind frame{kFrame};
    frame.least = 0;
    frame.most = 40;
    frame.unit = text(" pixels");
    page.settings = {
        {"frame", PAGE_TEXT("Frame"), frame, set("frame")},
        {"frameColor", PAGE_TEXT("Colour of the frame"), {frameColor()}, set("frameColor")},
    };
    return page;
}

// ---- lists of pictures

enum RowPicture { kLinePicture, kGradientPicture, kColorPicture };

struct ImageRow
{
    const char *name;
    RowPicture picture;
    QRgb color;
    ZvImageComboBox::ItemModeEx mode;
};

constexpr ImageRow kImageRows[] = {
    {PAGE_TEXT("Solid line"), kLinePicture, qRgb(0, 0, 0), ZvImageComboBox::kItemShown},
    {PAGE_TEXT("Gradient"), kGradientPicture, qRgb(0, 0, 0), ZvImageComboBox::kItemShown},
    {PAGE_TEXT("Red"), kColorPicture, qRgb(214, 48, 49), ZvImageComboBox::kItemShown},
    {PAGE_TEXT("Blue"), kColorPicture, qRgb(24, 118, 210), ZvImageComboBox::kItemShown},
    {PAGE_TEXT("More..."), kLinePicture, qRgb(150, 150, 150), ZvImageComboBox::kItemPickedOnly},
};
constexpr int kImageRowCount = int(sizeof kImageRows / sizeof *kImageRows);
constexpr int kLongList = 20;

/// Paints the row \a item as its entry of kImageRows tells.
void paintImageRow(ZvImageComboBox &combo, const QWidget &item, QPainter &painter, const QRect &area, QString &name)
{
    for (const ImageRow &row : kImageRows) {
        if (item.objectName() != QLatin1String(row.name))
            continue;
        QColor color(row.color);
        painter.setPen(color);
        switch (row.picture) {
        case kLinePicture:
            combo.drawSolidLine(&painter, area, name);
            break;
        case kGradientPicture:
            combo.drawGradientColor(&painter, area.adjusted(0, 3, 0, -3), name);
            break;
        case kColorPicture:
            combo.drawColorGrid(&painter, area.adjusted(0, 3, 0, -3), color, name);
            break;
        }
        painter.setPen(Qt::black);
        name = text(row.name);
    }
}

ZvImageComboBox *makeImageCombo(QWidget *parent, int rows)
{
    auto *combo = new ZvImageComboBox(parent);
    // The list's rows are 23 pixels high on any screen, and so the box is no higher on any.
    combo->setFixedSize(zvqt_dpiScaled(200, combo), 25);
    QObject::connect(combo, &ZvImageComboBox::onDraw, combo,
                     [combo](QWidget *item, QPainter *painter, const QRect &area, QString &name) {
                         paintImageRow(*combo, *item, *painter, area, name);
                     });
    for (int i = 0; i < rows; ++i) {
        const ImageRow &row = kImageRows[i % kImageRowCount];
        combo->createCustomItem(QLatin1String(row.name), row.mode);
    }
    return combo;
}

ControlPageData imageCombo()
{
    ControlPageData page{"ZvImageComboBox", "imageCombo",
                         PAGE_TEXT("A drop-down whose rows are pictures that the caller draws."),
                         ControlPageData::kPlain,
                         [](bool, QWidget *parent) -> QWidget * { return makeImageCombo(parent, kImageRowCount); }};
    page.variants = {
        {"Long", PAGE_TEXT("Long list"), [](QWidget *parent) { return makeImageCombo(parent, kLongList); }},
        {"Empty", PAGE_TEXT("Without rows"), [](QWidget *parent) { return makeImageCombo(parent, 0); }},
    };
    ValueKind row{0};
    row.least = 0;
    row.most = kLongList;
    page.settings = {{"shownRow", PAGE_TEXT("Row shown"), row, [](QWidget &control, const QVariant &value) {
                          static_cast<ZvImageComboBox &>(control).setCurrentItem(value.toInt());
                      }}};
    page.unheard = QStringList{QStringLiteral("onDraw")};
    // The closed box shows what a row last drew, and a row draws first when the list opens: not so late here. There is
    // one such picture for all of them.
    page.finish = [](ControlPage &shown) {
        for (ZvImageItem *item : shown.findChildren<ZvImageItem *>())
            item->grab();
        static_cast<ZvImageComboBox *>(shown.controls().first())->setCurrentItem(0);
    };
    return page;
}

ZvImageItem *makeImageItem(QWidget *parent, int width, int height, const QColor &color)
{
    auto *item = new ZvImageItem(width, height, parent);
    item->setObjectName(text("Picture"));
    item->setMinimumSize(qMax(width, 160), qMax(height, 23));
    item->setProperty("color", color);
    QObject::connect(item, &ZvImageItem::drawLocalGraphic, item,
                     [item](QPainter *painter, const QRect &area, QString &name) {
                         painter->fillRect(area.adjusted(1, 3, -1, -3), item->property("color").value<QColor>());
                         painter->setPen(Qt::black);
                         name = text("Text of the row");
                     });
    return item;
}

ControlPageData imageItem()
{
    const QColor color(24, 118, 210);
    ControlPageData page{"ZvImageItem", "imageItem",
                         PAGE_TEXT("A row of a list of pictures: a graphic on the left and a text on the right."),
                         ControlPageData::kPlain,
                         [color](bool, QWidget *parent) -> QWidget * { return makeImageItem(parent, 180, 23, color); }};
    page.variants = {{"Empty", PAGE_TEXT("Without a picture"),
                      [color](QWidget *parent) { return makeImageItem(parent, 0, 0, color); }}};
    page.settings = {{"color", PAGE_TEXT("Colour"), {color}, [](QWidget &control, const QVariant &value) {
                          control.setProperty("color", value);
                          control.update();
                      }}};
    page.unheard = QStringList{QStringLiteral("drawLocalGraphic")};
    return page;
}

ControlPageData imageView()
{
    const auto make = [](QWidget *parent, int rows) {
        auto *list = new ZvImageVew(parent);
        list->setWindowFlags(Qt::Widget); // otherwise it is a window
        for (int i = 0; i < rows; ++i) {
            auto *item = makeImageItem(nullptr, 180, 23, QColor::fromHsv(i * 47 % 360, 180, 230));
            item->setObjectName(text("Row %1").arg(i + 1));
            list->addItem(item);
        }
        list->findChild<QListWidget *>()->setAccessibleName(text("Rows"));
        list->setWidth(200);
        list->setMinimumSize(list->size());
        return list;
    };
    ControlPageData page{"ZvImageVew", "imageView", PAGE_TEXT("The list that a drop-down of pictures opens."),
                         ControlPageData::kPlain,
                         [make](bool, QWidget *parent) -> QWidget * { return make(parent, 4); }};
    page.variants = {{"Long", PAGE_TEXT("Long list"), [make](QWidget *parent) { return make(parent, kLongList); }}};
    page.columns = 2;
    ValueKind width{200};
    width.least = 60;
    width.most = 400;
    page.settings = {{"width", PAGE_TEXT("Width"), width, [](QWidget &control, const QVariant &value) {
                          control.setMinimumSize(0, 0);
                          static_cast<ZvImageVew &>(control).setWidth(value.toInt());
                          control.setMinimumSize(control.size());
                      }}};
    return page;
}

// ---- the canvas

/// A picture that is drawn on a canvas: lines in the styles, fills, a path and a triangle of three colours.
class CanvasPicture : public QWidget
{
public:
    explicit CanvasPicture(QWidget *parent) : QWidget(parent) { setMinimumSize(240, 110); }

    void setValue(const char *name, const QVariant &value)
    {
        setProperty(name, value);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing, property("smooth").toBool());
        const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
        ZvGeMatrix2d matrix;
        matrix.entry[0][0] = width() / 240.0;
        matrix.entry[1][1] = -height() / 110.0;
        matrix.entry[1][2] = height();
        canvas->setMatrix(matrix);
        canvas->attachPainter(&painter);
        draw(*canvas);
        canvas->attachPainter(nullptr);
    }

private:
    void draw(ZvQtCanvas &canvas)
    {
        const int width = property("penWidth").toInt();
        for (int style = 0; style < 4; ++style) {
            canvas.setLineStyle(width, style, 0xFF000000u | unsigned(style * 0x400040), 0, 2);
            canvas.drawLine({10, 100.0 - style * 12}, {110, 100.0 - style * 12});
        }
        canvas.setLineStyle(1, 0, 0xFF404040, 0, 0);
        const ZvsiCanvas::Hatch_Pattern patterns[]
            = {ZvsiCanvas::kHatchSolid, ZvsiCanvas::kHatchDiagonalCross, ZvsiCanvas::kHatchBackwardDiagonal};
        for (int i = 0; i < 3; ++i) {
            const ZvGePoint2d low(120.0 + i * 38, 62);
            const ZvGePoint2d box[] = {low, {low.x + 32, low.y}, {low.x + 32, low.y + 38}, {low.x, low.y + 38}};
            canvas.setFillStyle(patterns[i], 0xFFD27618);
            canvas.drawPaths(1 | 2, boxCoordinates(box), boxOperations());
        }
        canvas.setFillStyle(ZvsiCanvas::kHatchSolid, 0xFF40B0F0);
        canvas.drawGouraudTriangle({120, 8}, {175, 52}, {228, 8}, 0xFF3030D6, 0xFF60B020, 0xFFD27618);
        ZvArray<float> arc;
        for (const float value : {20.0f, 12.0f, 60.0f, 52.0f, 100.0f, 12.0f})
            arc.append(value);
        ZvArray<int> operations;
        for (const unsigned word : {0x80000000u, 0u, 0x20000000u, 1u, 2u, 0x90000000u})
            operations.append(int(word));
        canvas.setLineStyle(2, 0, 0xFF8C3C14, 0, 2);
        canvas.setFillStyle(ZvsiCanvas::kHatchSolid, 0xFFE8F0FF);
        canvas.drawPaths(1 | 2, arc, operations);
    }
    static ZvArray<float> boxCoordinates(const ZvGePoint2d (&corners)[4])
    {
        ZvArray<float> coordinates;
        for (const ZvGePoint2d &corner : corners) {
            coordinates.append(float(corner.x));
            coordinates.append(float(corner.y));
        }
        return coordinates;
    }
    static ZvArray<int> boxOperations()
    {
        ZvArray<int> operations;
        for (const unsigned word : {0x80000000u, 0u, 0x10000000u, 1u, 2u, 3u, 0x90000000u})
            operations.append(int(word));
        return operations;
    }
};

ControlPageData canvas()
{
    ControlPageData page{"ZvQtCanvas", "canvas",
                         PAGE_TEXT("The kernel's drawing surface on a painter: what draws a sheet on it comes out in a "
                                   "widget, a picture or on a printer."),
                         ControlPageData::kUnhooked, [](bool, QWidget *parent) -> QWidget * {
                             auto *picture = new CanvasPicture(parent);
                             picture->setValue("penWidth", 2);
                             picture->setValue("smooth", true);
                             return picture;
                         }};
    const auto set = [](const char *name) {
        return [name](QWidget &control, const QVariant &value) {
            static_cast<CanvasPicture &>(control).setValue(name, value);
        };
    };
    ValueKind width{2};
    width.least = 0;
    width.most = 12;
    page.settings = {
        {"penWidth", PAGE_TEXT("Width of the lines"), width, set("penWidth")},
        {"smooth", PAGE_TEXT("Smooth"), {true}, set("smooth")},
    };
    page.columns = 1;
    return page;
}

} // namespace

QVector<ControlPageData> imagePages()
{
    return {canvas(), imageWidget(), imageCombo(), imageItem(), imageView()};
}
