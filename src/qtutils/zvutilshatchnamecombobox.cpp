// SPDX-License-Identifier: MIT
#include "zvutilshatchnamecombobox.h"

#include "private/zvnamedcombo.h"

ZvUtilsHatchNameComboBox::ZvUtilsHatchNameComboBox(QWidget *parent) : ZvUtilsHatchNameComboBox(false, parent) { }

ZvUtilsHatchNameComboBox::ZvUtilsHatchNameComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    init();
}

ZvUtilsHatchNameComboBox::~ZvUtilsHatchNameComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsHatchNameComboBox::init()
{
    zvSetUpList(*this);
    ZvArray<ZvString> names;
    ZevaUISetting::getHatchNames(names, nullptr);
    zvAppendNames(*this, *this, names);
}

QString ZvUtilsHatchNameComboBox::getCurrentStyleName() const
{
    return currentText();
}

void ZvUtilsHatchNameComboBox::curIndexChanged(int)
{
    zvTellPick(*this, [this](const QString &name) { Q_EMIT styleTableItemChanged(name); });
}

void ZvUtilsHatchNameComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
