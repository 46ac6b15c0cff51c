// SPDX-License-Identifier: MIT
#include "zvutilstablestylecombobox.h"

#include "private/zvnamedcombo.h"

#include "db/zvdbentities.h"
#include "db/zvdbstyles.h"

namespace {

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CTABLESTYLE"},
        false,
        {{ZvDbTableStyle::desc}, {ZvDbTable::desc, ZvObjectRule::kDerived, ZvObjectRule::kAffectingSelection}},
    };
    return filter;
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.tableStyleDictionaryId(); });
}

} // namespace

ZvUtilsTableStyleComboBox::ZvUtilsTableStyleComboBox(QWidget *parent) : ZvUtilsTableStyleComboBox(false, parent) { }

ZvUtilsTableStyleComboBox::ZvUtilsTableStyleComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsTableStyleComboBox::~ZvUtilsTableStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsTableStyleComboBox::init()
{
    clear();
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZevaUISetting::getTableStyleTableRecords(styles, nullptr);
    zvAppendStyles(*this, *this, styles);
}

QString ZvUtilsTableStyleComboBox::getCurrentStyleName() const
{
    return currentText();
}

ZvDbObjectId ZvUtilsTableStyleComboBox::getCurrentStyleId() const
{
    return ZevaUISetting::findTableStyleTableRecordByName(zvToZvString(currentText()), nullptr);
}

void ZvUtilsTableStyleComboBox::curIndexChanged(int index)
{
    if (zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCTableStyle({}, name); }))
        Q_EMIT styleItemChanged(currentText());
}

void ZvUtilsTableStyleComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

bool ZvUtilsTableStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsTableStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvFollowObject<ZvDbTableStyle>(
        *this, *this, m_info, [](const ZvDbDatabase &drawing) { return zvStyleVariable(L"CTABLESTYLE", drawing); });
}
