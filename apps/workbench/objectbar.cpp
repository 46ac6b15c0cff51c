// SPDX-License-Identifier: MIT
#include "objectbar.h"

#include "zvglobaluireactorhelp.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsdimstylecombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilsplotstylenamecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"
#include "zvutilsucscombobox.h"
#include "zvutilsviewcombobox.h"

#include <QAbstractItemView>

namespace {
constexpr int kListWidth = 24; // of an open list at least, in average characters
}

ObjectBar::ObjectBar(const QString &id, const QString &title, QWidget *parent) : ComboBar(id, title, parent)
{
    connect(&m_events, &KernelEvents::documentCreated, this, &ObjectBar::fill);
    connect(&m_events, &KernelEvents::documentBecameCurrent, this, &ObjectBar::fill);
}

template <class Combo> void ObjectBar::add(Combo *combo, const char *id, const QString &name, const QString &toolTip)
{
    combo->setObjectName(QLatin1String(id));
    addCombo(combo, name, toolTip);
    combo->view()->setMinimumWidth(kListWidth * fontMetrics().averageCharWidth());
    m_fills.emplace_back([combo] {
        combo->blockSignals(true);
        combo->init();
        combo->blockSignals(false);
        CZvGlobalUIReactorHelp notice;
        notice.kind = kNoticeDocumentCurrent;
        combo->acceptUpdateUI(notice);
    });
}

/// By themselves the lists are read when they open, and an empty one shows no value.
void ObjectBar::fill()
{
    for (const std::function<void()> &fillOne : m_fills)
        fillOne();
}

ObjectBar *ObjectBar::makeStyleBar(QWidget *parent)
{
    auto *bar = new ObjectBar(QStringLiteral("stylesBar"), tr("Styles"), parent);
    bar->add(new ZvUtilsTextStyleComboBox(true, bar, true), "textStyleCombo", tr("Text style"),
             tr("Style of the selected texts, or of new ones"));
    bar->add(new ZvUtilsDimStyleComboBox(true, bar), "dimensionStyleCombo", tr("Dimension style"),
             tr("Style of the selected dimensions, or of new ones"));
    bar->add(new ZvUtilsMleaderStyleComboBox(true, bar), "multileaderStyleCombo", tr("Multileader style"),
             tr("Style of the selected multileaders, or of new ones"));
    bar->add(new ZvUtilsTableStyleComboBox(true, bar), "tableStyleCombo", tr("Table style"),
             tr("Style of the selected tables, or of new ones"));
    return bar;
}

ObjectBar *ObjectBar::makeViewBar(QWidget *parent)
{
    auto *bar = new ObjectBar(QStringLiteral("viewsBar"), tr("Views"), parent);
    bar->add(new ZvUtilsUcsComboBox(true, bar), "ucsCombo", tr("Coordinate system"),
             tr("The coordinate system in force; a pick switches it"));
    bar->add(new ZvUtilsViewComboBox(true, bar), "viewCombo", tr("View"), tr("Looks at the drawing from a side"));
    bar->add(new ZvUtilsMaterialComboBox(true, bar), "materialCombo", tr("Material"),
             tr("Material of the selected entities, or of new ones"));
    bar->add(new ZvUtilsPlotStyleNameComboBox(true, bar), "plotStyleCombo", tr("Plot style"),
             tr("Plot style of the selected entities, or of new ones"));
    return bar;
}
