// SPDX-License-Identifier: MIT
#include "zvutilsblockunitcombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

namespace {

constexpr const char *kUnits[] = {
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "无单位"),   QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "英寸"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "英尺"),     QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "英里"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "毫米"),     QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "厘米"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "米"),       QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "千米"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "微英寸"),   QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "密耳"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "码"),       QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "埃"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "毫微米"),   QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "分米"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "十米"),     QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "百米"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "百万公里"), QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "天文"),
    QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "光年"),     QT_TRANSLATE_NOOP("ZvUtilsBlockUnitComboBox", "秒差距"),
};

std::vector<ZvRow> unitRows()
{
    std::vector<ZvRow> rows;
    for (const char *unit : kUnits)
        rows.push_back({QIcon(), ZvUtilsBlockUnitComboBox::tr(unit), QVariant()});
    return rows;
}

} // namespace

ZvUtilsBlockUnitComboBox::ZvUtilsBlockUnitComboBox(QWidget *parent) : ZvUtilsBlockUnitComboBox(false, parent) { }

ZvUtilsBlockUnitComboBox::ZvUtilsBlockUnitComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    init();
}

ZvUtilsBlockUnitComboBox::~ZvUtilsBlockUnitComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsBlockUnitComboBox::init()
{
    zvSetUpList(*this);
    zvTranslateRows(this, "ZvUtilsBlockUnitComboBox", {std::begin(kUnits), std::end(kUnits)});
    const ZvHookedCleared filling(*this);
    zvAppendRows(*this, unitRows());
}

void ZvUtilsBlockUnitComboBox::curIndexChanged(int)
{
    zvTellPick(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

void ZvUtilsBlockUnitComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
