// SPDX-License-Identifier: MIT
#include "zvutilsmleaderstylecombobox.h"

#include "private/zvnamedcombo.h"

#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbstyles.h"

namespace {

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CMLEADERSTYLE"},
        false,
        {{ZvDbMLeaderStyle::desc},
         // The dictionary itself: styles come and go in it.
         {ZvDbDictionary::desc, ZvObjectRule::kExact, ZvObjectRule::kAlways,
          [](const ZvDbDatabase *drawing) { return drawing->mleaderStyleDictionaryId(); }},
         {ZvDbMLeader::desc, ZvObjectRule::kDerived, ZvObjectRule::kAffectingSelection}},
    };
    return filter;
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.mleaderStyleDictionaryId(); });
}

} // namespace

ZvUtilsMleaderStyleComboBox::ZvUtilsMleaderStyleComboBox(QWidget *parent) : ZvUtilsMleaderStyleComboBox(false, parent)
{
}

ZvUtilsMleaderStyleComboBox::ZvUtilsMleaderStyleComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsMleaderStyleComboBox::~ZvUtilsMleaderStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsMleaderStyleComboBox::init()
{
    clear();
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZevaUISetting::getMleaderStyleTableRecords(styles, nullptr);
    zvAppendStyles(*this, *this, styles);
}

QString ZvUtilsMleaderStyleComboBox::getCurrentStyleName() const
{
    return currentText();
}

ZvDbObjectId ZvUtilsMleaderStyleComboBox::getCurrentStyleId() const
{
    return ZevaUISetting::findMleaderStyleTableRecordByName(zvToZvString(currentText()), nullptr);
}

void ZvUtilsMleaderStyleComboBox::curIndexChanged(int index)
{
    if (zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCMLeaderStyle({}, name); }))
        Q_EMIT itemChanged(currentText());
}

void ZvUtilsMleaderStyleComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

bool ZvUtilsMleaderStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsMleaderStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvFollowObject<ZvDbMLeaderStyle>(
        *this, *this, m_info, [](const ZvDbDatabase &drawing) { return zvStyleVariable(L"CMLEADERSTYLE", drawing); });
}
