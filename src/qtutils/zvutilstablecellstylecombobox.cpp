// SPDX-License-Identifier: MIT
#include "zvutilstablecellstylecombobox.h"

#include "private/zvnamedcombo.h"

ZvUtilsTableCellStyleComboBox::ZvUtilsTableCellStyleComboBox(const ZvDbObjectId &tableStyle, QWidget *parent)
    : ZvUtilsTableCellStyleComboBox(false, tableStyle, parent)
{
}

ZvUtilsTableCellStyleComboBox::ZvUtilsTableCellStyleComboBox(bool hook, const ZvDbObjectId &tableStyle, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    zvJoinUpdateBus(*this);
    zvSetUpList(*this);
    init(tableStyle);
}

ZvUtilsTableCellStyleComboBox::~ZvUtilsTableCellStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsTableCellStyleComboBox::init(const ZvDbObjectId &tableStyle)
{
    clear();
    zvAddPlainRow(*this, QStringLiteral("按行/列"));
    ZvArray<ZvString> names;
    ZevaUISetting::getTableCellStyleNames(names, tableStyle);
    zvAppendNames(*this, *this, names);
}

void ZvUtilsTableCellStyleComboBox::curIndexChanged(int)
{
    zvTellPickUnheard(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

void ZvUtilsTableCellStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
