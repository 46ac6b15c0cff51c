// SPDX-License-Identifier: MIT
#include "zvutilstablecellrowstylecombobox.h"

#include "private/zvnamedcombo.h"

ZvUtilsTableCellRowStyleComboBox::ZvUtilsTableCellRowStyleComboBox(const ZvDbObjectId &tableStyle, QWidget *parent)
    : ZvUtilsTableCellRowStyleComboBox(false, tableStyle, parent)
{
}

ZvUtilsTableCellRowStyleComboBox::ZvUtilsTableCellRowStyleComboBox(bool hook, const ZvDbObjectId &tableStyle,
                                                                   QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateCellStyles(*this);
    init(tableStyle);
}

ZvUtilsTableCellRowStyleComboBox::~ZvUtilsTableCellRowStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsTableCellRowStyleComboBox::init(const ZvDbObjectId &tableStyle)
{
    clear();
    ZvArray<ZvString> names;
    ZevaUISetting::getTableCellStyleNames(names, tableStyle);
    zvAppendNames(*this, *this, names);
}

void ZvUtilsTableCellRowStyleComboBox::curIndexChanged(int)
{
    zvTellPickUnheard(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

bool ZvUtilsTableCellRowStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsTableCellRowStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
