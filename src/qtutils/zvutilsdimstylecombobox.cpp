// SPDX-License-Identifier: MIT
#include "zvutilsdimstylecombobox.h"

#include "private/zvnamedcombo.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

namespace {

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"DIMSTYLE"},
        false,
        {{ZvDbDimStyleTableRecord::desc},
         {ZvDbDimension::desc, ZvObjectRule::kDerived, ZvObjectRule::kAffectingSelection}},
    };
    return filter;
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.dimStyleTableId(); });
}

} // namespace

ZvUtilsDimStyleComboBox::ZvUtilsDimStyleComboBox(QWidget *parent) : ZvUtilsDimStyleComboBox(false, parent) { }

ZvUtilsDimStyleComboBox::ZvUtilsDimStyleComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsDimStyleComboBox::~ZvUtilsDimStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsDimStyleComboBox::init()
{
    clear();
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZevaUISetting::getDimStyleTableRecords(styles, nullptr);
    zvAppendStyles(*this, *this, styles);
}

QString ZvUtilsDimStyleComboBox::getCurrentStyleName() const
{
    return currentText();
}

ZvDbObjectId ZvUtilsDimStyleComboBox::getCurrentStyleId() const
{
    return ZevaUISetting::findDimStyleTableRecordByName(zvToZvString(currentText()), nullptr);
}

void ZvUtilsDimStyleComboBox::curIndexChanged(int index)
{
    if (zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCDimStyle({}, name); }))
        Q_EMIT itemChanged(currentText());
}

void ZvUtilsDimStyleComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

bool ZvUtilsDimStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsDimStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvSwallowKernelError("zvutilsdimstylecombobox", 225, [this] {
        zvFollowObject<ZvDbDimStyleTableRecord>(*this, *this, m_info,
                                                [](const ZvDbDatabase &drawing) { return drawing.dimstyle(); });
    });
}
