// SPDX-License-Identifier: MIT
#include "zvutilstablecellstylecombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

namespace {

constexpr char kByRowOrColumn[] = QT_TRANSLATE_NOOP("ZvUtilsTableCellStyleComboBox", "按行/列");

} // namespace

ZvUtilsTableCellStyleComboBox::ZvUtilsTableCellStyleComboBox(const ZvDbObjectId &tableStyle, QWidget *parent)
    : ZvUtilsTableCellStyleComboBox(false, tableStyle, parent)
{
}

ZvUtilsTableCellStyleComboBox::ZvUtilsTableCellStyleComboBox(bool hook, const ZvDbObjectId &tableStyle, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateCellStyles(*this);
    zvTranslateRows(this, "ZvUtilsTableCellStyleComboBox", {kByRowOrColumn});
    init(tableStyle);
}

ZvUtilsTableCellStyleComboBox::~ZvUtilsTableCellStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsTableCellStyleComboBox::init(const ZvDbObjectId &tableStyle)
{
    clear();
    zvAddPlainRow(*this, tr(kByRowOrColumn));
    ZvArray<ZvString> names;
    ZevaUISetting::getTableCellStyleNames(names, tableStyle);
    zvAppendNames(*this, *this, names);
}

void ZvUtilsTableCellStyleComboBox::curIndexChanged(int)
{
    zvTellPickUnheard(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

bool ZvUtilsTableCellStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsTableCellStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
