// SPDX-License-Identifier: MIT
#include "zvutilsblockunitcombobox.h"

#include "private/zvnamedcombo.h"

namespace {

constexpr const wchar_t *kUnits[] = {
    L"无单位", L"英寸", L"英尺",   L"英里", L"毫米", L"厘米", L"米",       L"千米", L"微英寸", L"密耳",
    L"码",     L"埃",   L"毫微米", L"分米", L"十米", L"百米", L"百万公里", L"天文", L"光年",   L"秒差距",
};

/// Made once: a dialog has several such lists.
const ZvArray<ZvString> &unitNames()
{
    static const ZvArray<ZvString> names = [] {
        ZvArray<ZvString> made;
        for (const wchar_t *unit : kUnits)
            made.append(unit);
        return made;
    }();
    return names;
}

} // namespace

ZvUtilsBlockUnitComboBox::ZvUtilsBlockUnitComboBox(QWidget *parent) : ZvUtilsBlockUnitComboBox(false, parent) { }

ZvUtilsBlockUnitComboBox::ZvUtilsBlockUnitComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    zvJoinUpdateBus(*this);
    init();
}

ZvUtilsBlockUnitComboBox::~ZvUtilsBlockUnitComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsBlockUnitComboBox::init()
{
    zvSetUpList(*this);
    zvAppendNames(*this, *this, unitNames());
}

void ZvUtilsBlockUnitComboBox::curIndexChanged(int)
{
    zvTellPick(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

void ZvUtilsBlockUnitComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
