// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "zvcolorcombobox.h"
#include "zvlayerultralcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsplotstylenamecombobox.h"

#include <QCoreApplication>
#include <QTableWidget>

namespace {

constexpr int kLayers = 2500; // more rows than have their buttons from the start
constexpr int kUsualWeights
    = ZvLineWidthComboBox::kItemByLayer | ZvLineWidthComboBox::kItemByBlock | ZvLineWidthComboBox::kItemDefault;

void setColorStyle(QWidget &control, unsigned style)
{
    control.setProperty("viewStyle", style); // the class does not tell it
    static_cast<ZvColorComboBox &>(control).setViewStyle(style);
}

ControlVariant colorVariant(const char *suffix, const char *label, unsigned style)
{
    return {suffix, label, [style](QWidget *parent) {
                auto *combo = new ZvColorComboBox(parent);
                setColorStyle(*combo, style);
                return combo;
            }};
}

/// A switch for one bit of the list's contents.
ControlSetting colorSetting(const char *id, const char *label, unsigned bit, bool isOn)
{
    return {id, label, {isOn}, [bit](QWidget &control, const QVariant &on) {
                const QVariant kept = control.property("viewStyle");
                const unsigned usual = ZvColorComboBox::kColorViewByLayerBlock | ZvColorComboBox::kColorViewSelect;
                const unsigned style = kept.isValid() ? kept.toUInt() : usual;
                setColorStyle(control, on.toBool() ? style | bit : style & ~bit);
            }};
}

ControlPageData colorCombo()
{
    typedef ZvColorComboBox C;
    ControlPageData page{"ZvColorComboBox", "colorCombo",
                         PAGE_TEXT("A colour of the drawing or of the selected entities: by layer, by block, the basic "
                                   "colours, and any other by the colour dialog."),
                         ControlPageData::kBound, makeBoundCombo<ZvColorComboBox>};
    page.variants = {
        colorVariant("Plain", PAGE_TEXT("Without ByLayer and ByBlock"), C::kColorViewSelect),
        colorVariant("Current", PAGE_TEXT("With none and the current one"),
                     C::kColorViewUseCurrent | C::kColorViewNone | C::kColorViewByLayerBlock | C::kColorViewSelect),
        colorVariant("Basic", PAGE_TEXT("Basic colours only"), 0),
    };
    page.settings = {
        colorSetting("byLayerAndBlock", PAGE_TEXT("ByLayer and ByBlock"), C::kColorViewByLayerBlock, true),
        colorSetting("selectRow", PAGE_TEXT("Row for the dialog"), C::kColorViewSelect, true),
        colorSetting("noneRow", PAGE_TEXT("No colour"), C::kColorViewNone, false),
        colorSetting("currentRow", PAGE_TEXT("The current colour"), C::kColorViewUseCurrent, false),
    };
    page.fillLong = [](QWidget &control) {
        for (int index = 10; index < 250; ++index) {
            ZvCmColor color;
            color.setColorIndex(std::uint16_t(index));
            static_cast<ZvColorComboBox &>(control).AppendColorItem(color);
        }
    };
    return page;
}

ControlPageData layerCombo()
{
    ControlPageData page{"ZvLayerUltralComboBox", "layerCombo",
                         PAGE_TEXT("The current layer or that of the selected entities; its list also switches, "
                                   "freezes, locks and recolours layers."),
                         ControlPageData::kBound, [](bool hooked, QWidget *parent) -> QWidget * {
                             auto *combo = new ZvLayerUltralComboBox(hooked, parent);
                             combo->setMinimumHeight(combo->fontMetrics().height() + 10);
                             return combo;
                         }};
    // Their rows stand for no layers: the buttons change nothing.
    page.fillLong = [](QWidget &control) {
        for (int i = 0; i < kLayers; ++i) {
            const QColor color = QColor::fromHsv(i * 7 % 360, 200, 230);
            static_cast<ZvLayerUltralComboBox &>(control).addItemLayerInfo(
                i % 3 == 1, i % 4 == 1, i % 5 == 1, color,
                QCoreApplication::translate("ControlPages", "Row %1").arg(i + 1, 4, 10, QLatin1Char('0')));
        }
    };
    // The class itself tells nothing of picks.
    page.finish = [](ControlPage &shown) {
        for (QWidget *control : shown.controls()) {
            auto *table = static_cast<QTableWidget *>(static_cast<QComboBox *>(control)->view());
            shown.log().listenTo(*table, ControlPage::nameOf(*control), "cellPressed(int,int)");
        }
    };
    return page;
}

ControlPageData lineTypeCombo()
{
    ControlPageData page{"ZvLineTypeComboBox", "lineTypeCombo",
                         PAGE_TEXT("The current line type or that of the selected entities, with pictures of the "
                                   "patterns and a way to the line type manager."),
                         ControlPageData::kBound, [](bool hooked, QWidget *parent) -> QWidget * {
                             return hooked ? new ZvLineTypeComboBox(true, parent)
                                           : new ZvLineTypeComboBox(parent, false, false);
                         }};
    page.variants = {{"Plain", PAGE_TEXT("Without the line type manager"),
                      [](QWidget *parent) { return new ZvLineTypeComboBox(parent, true, false); }}};
    return page;
}

ControlPageData lineWeightCombo()
{
    ControlPageData page{"ZvLineWidthComboBox", "lineWeightCombo",
                         PAGE_TEXT("The current line weight or that of the selected entities, with sample lines."),
                         ControlPageData::kBound, [](bool hooked, QWidget *parent) -> QWidget * {
                             return new ZvLineWidthComboBox(hooked, kUsualWeights, parent);
                         }};
    page.variants = {
        {"Object", PAGE_TEXT("With the object's own weight"),
         [](QWidget *parent) {
             return new ZvLineWidthComboBox(false, kUsualWeights | ZvLineWidthComboBox::kItemUseObjects, parent);
         }},
        {"Inch", PAGE_TEXT("In inches, twice as wide"),
         [](QWidget *parent) {
             auto *combo = new ZvLineWidthComboBox(false, 0, parent);
             combo->setLineweightScale(1.0);
             combo->init(true);
             return combo;
         }},
    };
    const auto refill = [](ZvLineWidthComboBox &combo) { combo.init(combo.property("inch").toBool()); };
    ValueKind scale{0.0};
    scale.least = 0;
    scale.most = 10;
    scale.step = 0.5;
    page.settings = {
        {"inch",
         PAGE_TEXT("In inches"),
         {false},
         [refill](QWidget &control, const QVariant &on) {
             control.setProperty("inch", on);
             refill(static_cast<ZvLineWidthComboBox &>(control));
         }},
        {"scale", PAGE_TEXT("Drawn wider by"), scale,
         [refill](QWidget &control, const QVariant &value) {
             auto &combo = static_cast<ZvLineWidthComboBox &>(control);
             combo.setLineweightScale(value.toDouble());
             refill(combo);
         }},
    };
    return page;
}

} // namespace

QVector<ControlPageData> propertyControlPages()
{
    return {
        colorCombo(),
        layerCombo(),
        lineTypeCombo(),
        lineWeightCombo(),
        {"ZvUtilsMaterialComboBox", "materialPicker",
         PAGE_TEXT("The current material or that of the selected entities."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsMaterialComboBox>},
        {"ZvUtilsPlotStyleNameComboBox", "plotStylePicker",
         PAGE_TEXT("The current named plot style or that of the selected entities."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsPlotStyleNameComboBox>},
    };
}
