// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "db/zvdbdatabase.h"
#include "zvutilsblockcombobox.h"
#include "zvutilsblockunitcombobox.h"
#include "zvutilsdimstylecombobox.h"
#include "zvutilshatchnamecombobox.h"
#include "zvutilslayercombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilsplotstyletablecombobox.h"
#include "zvutilsshadeplotcombobox.h"
#include "zvutilstablecellcolstylecombobox.h"
#include "zvutilstablecellrowstylecombobox.h"
#include "zvutilstablecellstylecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"
#include "zvutilsucscombobox.h"
#include "zvutilsviewcombobox.h"

#include <QCoreApplication>

namespace {

/// Drop-downs of the cell styles of one table style, which a further drop-down on the page chooses.
template <class Combo> ControlPageData cellStylePage(const char *className, const char *id, const char *purpose)
{
    ControlPageData page{className, id, purpose, ControlPageData::kBound,
                         [](bool hooked, QWidget *parent) -> QWidget * {
                             const ZvDbDatabase *database = curDatabase();
                             const ZvDbObjectId style = database ? database->tablestyle() : ZvDbObjectId();
                             return new Combo(hooked, style, parent);
                         }};
    page.finish = [](ControlPage &shown) {
        auto *tables = new ZvUtilsTableStyleComboBox(&shown);
        tables->setObjectName(QStringLiteral("tableStyle"));
        shown.addSetting(QCoreApplication::translate("ControlPages", "Table style"), tables);
        QObject::connect(tables, &ZvUtilsTableStyleComboBox::styleItemChanged, &shown, [&shown, tables] {
            for (QWidget *control : shown.controls())
                static_cast<Combo *>(control)->init(tables->getCurrentStyleId());
        });
    };
    return page;
}

} // namespace

QVector<ControlPageData> stylePages()
{
    ControlPageData text{
        "ZvUtilsTextStyleComboBox", "textStylePicker",
        PAGE_TEXT("The current text style or that of the selected texts."), ControlPageData::kBound,
        [](bool hooked, QWidget *parent) -> QWidget * { return new ZvUtilsTextStyleComboBox(hooked, parent, true); }};
    text.variants = {{"Unsorted", PAGE_TEXT("In the drawing's order"),
                      [](QWidget *parent) { return new ZvUtilsTextStyleComboBox(parent, false); }}};
    return {
        text,
        {"ZvUtilsDimStyleComboBox", "dimensionStylePicker",
         PAGE_TEXT("The current dimension style or that of the selected dimensions."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsDimStyleComboBox>},
        {"ZvUtilsMleaderStyleComboBox", "multileaderStylePicker",
         PAGE_TEXT("The current multileader style or that of the selected multileaders."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsMleaderStyleComboBox>},
        {"ZvUtilsTableStyleComboBox", "tableStylePicker",
         PAGE_TEXT("The current table style or that of the selected tables."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsTableStyleComboBox>},
        cellStylePage<ZvUtilsTableCellStyleComboBox>(
            "ZvUtilsTableCellStyleComboBox", "cellStylePicker",
            PAGE_TEXT("The cell styles of a table style, below one that stands for that of row or column.")),
        cellStylePage<ZvUtilsTableCellRowStyleComboBox>("ZvUtilsTableCellRowStyleComboBox", "rowStylePicker",
                                                        PAGE_TEXT("The cell styles of a table style, for a row.")),
        cellStylePage<ZvUtilsTableCellColStyleComboBox>(
            "ZvUtilsTableCellColStyleComboBox", "columnStylePicker",
            PAGE_TEXT("The cell styles of a table style, for a column, below one that stands for none.")),
    };
}

QVector<ControlPageData> namedObjectPages()
{
    typedef ZvUtilsLayerComboBox Layers;
    ControlPageData layer{"ZvUtilsLayerComboBox", "layerPicker",
                          PAGE_TEXT("The current layer or that of the selected entities, by name alone."),
                          ControlPageData::kBound, [](bool hooked, QWidget *parent) -> QWidget * {
                              return hooked ? new Layers(true, Layers::kPlain, parent)
                                            : new Layers(Layers::kPlain, parent);
                          }};
    layer.variants = {{"Current", PAGE_TEXT("With a row for the current one"),
                       [](QWidget *parent) { return new Layers(Layers::kWithUseCurrent, parent); }}};
    ControlPageData block{"ZvUtilsBlockComboBox", "blockPicker", PAGE_TEXT("The blocks that can be inserted, by name."),
                          ControlPageData::kBound, [](bool hooked, QWidget *parent) -> QWidget * {
                              return new ZvUtilsBlockComboBox(hooked, parent, false);
                          }};
    block.variants = {{"Used", PAGE_TEXT("Only blocks in use"),
                       [](QWidget *parent) { return new ZvUtilsBlockComboBox(parent, true); }}};
    return {
        layer,
        block,
        {"ZvUtilsBlockUnitComboBox", "unitPicker", PAGE_TEXT("The units that a block can be drawn in."),
         ControlPageData::kBound, makeBoundCombo<ZvUtilsBlockUnitComboBox>},
        {"ZvUtilsHatchNameComboBox", "hatchPicker", PAGE_TEXT("The hatch patterns used in the space that is shown."),
         ControlPageData::kBound, makeBoundCombo<ZvUtilsHatchNameComboBox>},
        {"ZvUtilsPlotStyleTableComboBox", "plotTablePicker",
         PAGE_TEXT("The plot style table files that fit the drawing, below one for none."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsPlotStyleTableComboBox>},
        {"ZvUtilsShadePlotComboBox", "shadePlotPicker",
         PAGE_TEXT("The shade plot modes that the host's plot service offers."), ControlPageData::kBound,
         makeBoundCombo<ZvUtilsShadePlotComboBox>},
    };
}

QVector<ControlPageData> ucsAndViewPages()
{
    return {
        {"ZvUtilsUcsComboBox", "ucsPicker",
         PAGE_TEXT("The coordinate system in force; picks switch to a preset, a stored or the previous one."),
         ControlPageData::kBound, makeBoundCombo<ZvUtilsUcsComboBox>},
        {"ZvUtilsViewComboBox", "viewPicker",
         PAGE_TEXT("Picks show a preset view, a view of the drawing, or the view manager; hooked or not."),
         ControlPageData::kBound, makeBoundCombo<ZvUtilsViewComboBox>},
    };
}
