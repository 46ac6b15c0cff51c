// SPDX-License-Identifier: MIT
#include "namespage.h"

#include "zvutilsblockcombobox.h"
#include "zvutilsblockunitcombobox.h"
#include "zvutilshatchnamecombobox.h"
#include "zvutilslayercombobox.h"
#include "zvutilsplotstyletablecombobox.h"
#include "zvutilsshadeplotcombobox.h"
#include "zvutilstablecellcolstylecombobox.h"
#include "zvutilstablecellrowstylecombobox.h"
#include "zvutilstablecellstylecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QWidget>

namespace {

typedef std::function<void(const QString &)> Tell;

QString tr(const char *text)
{
    return QCoreApplication::translate("NamesPage", text);
}

/// Puts a drop-down on the page. What it shows is told, by the signal that all of them send and all can be heard by.
template <class Combo>
Combo *add(QFormLayout &form, const char *id, const QString &label, Combo *combo, const Tell &tell)
{
    combo->setObjectName(QLatin1String(id));
    combo->setAccessibleName(label);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QObject::connect(combo, qOverload<int>(&QComboBox::activated), combo,
                     [combo, tell](int row) { tell(tr("activated: %1, %2").arg(row).arg(combo->currentText())); });
    form.addRow(label, combo);
    return combo;
}

} // namespace

QWidget *makeNamesPage(const std::function<void(const QString &)> &tell)
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("namesPage"));
    auto &form = *new QFormLayout(page);
    add(form, "layerPicker", tr("Layer"), new ZvUtilsLayerComboBox(ZvUtilsLayerComboBox::kPlain, page), tell);
    add(form, "layerPickerCurrent", tr("Layer, or the current one"),
        new ZvUtilsLayerComboBox(ZvUtilsLayerComboBox::kWithUseCurrent, page), tell);
    add(form, "textStylePicker", tr("Text style"), new ZvUtilsTextStyleComboBox(page, true), tell);
    auto *style = add(form, "tableStylePicker", tr("Table style"), new ZvUtilsTableStyleComboBox(page), tell);
    const ZvDbObjectId id = style->getCurrentStyleId();
    auto *cell = add(form, "cellStylePicker", tr("Cell style"), new ZvUtilsTableCellStyleComboBox(id, page), tell);
    auto *row
        = add(form, "rowStylePicker", tr("Cell style of a row"), new ZvUtilsTableCellRowStyleComboBox(id, page), tell);
    auto *column = add(form, "columnStylePicker", tr("Cell style of a column"),
                       new ZvUtilsTableCellColStyleComboBox(id, page), tell);
    QObject::connect(style, &ZvUtilsTableStyleComboBox::styleItemChanged, page, [style, cell, row, column] {
        const ZvDbObjectId chosen = style->getCurrentStyleId();
        cell->init(chosen);
        row->init(chosen);
        column->init(chosen);
    });
    add(form, "blockPicker", tr("Block"), new ZvUtilsBlockComboBox(page, false), tell);
    add(form, "usedBlockPicker", tr("Block in use"), new ZvUtilsBlockComboBox(page, true), tell);
    add(form, "unitPicker", tr("Unit of a block"), new ZvUtilsBlockUnitComboBox(page), tell);
    add(form, "hatchPicker", tr("Hatch pattern in use"), new ZvUtilsHatchNameComboBox(page), tell);
    add(form, "plotTablePicker", tr("Plot style table"), new ZvUtilsPlotStyleTableComboBox(page), tell);
    add(form, "shadePlotPicker", tr("Shade plot"), new ZvUtilsShadePlotComboBox(page), tell);
    return page;
}
