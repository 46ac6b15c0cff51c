// SPDX-License-Identifier: MIT
#include "zvutilsblockcombobox.h"

#include "private/zvnamedcombo.h"

ZvUtilsBlockComboBox::ZvUtilsBlockComboBox(QWidget *parent, bool usedOnly)
    : ZvUtilsBlockComboBox(false, parent, usedOnly)
{
}

ZvUtilsBlockComboBox::ZvUtilsBlockComboBox(bool hook, QWidget *parent, bool usedOnly)
    : QComboBox(parent), CZvQtControlHelp(hook), m_usedOnly(usedOnly)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsBlockComboBox::~ZvUtilsBlockComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsBlockComboBox::init()
{
    clear();
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, nullptr, m_usedOnly);
    zvAppendNames(*this, *this, names);
}

void ZvUtilsBlockComboBox::curIndexChanged(int)
{
    zvTellPick(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

void ZvUtilsBlockComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
