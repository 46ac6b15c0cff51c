// SPDX-License-Identifier: MIT
#include "zvutilstextstylecombobox.h"

#include "private/zvnamedcombo.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

namespace {

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"TEXTSTYLE"},
        false,
        {{ZvDbTextStyleTableRecord::desc},
         {ZvDbText::desc, ZvObjectRule::kExact, ZvObjectRule::kAffectingSelection},
         {ZvDbMText::desc, ZvObjectRule::kExact, ZvObjectRule::kAffectingSelection}},
    };
    return filter;
}

bool isOfExternalReference(ZvDbObjectId style)
{
    const ZvDbObjectPointer<ZvDbTextStyleTableRecord> record(style, ZvDb::kForRead);
    return record && record->isDependent();
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.textStyleTableId(); });
}

} // namespace

ZvUtilsTextStyleComboBox::ZvUtilsTextStyleComboBox(QWidget *parent, bool sorted)
    : ZvUtilsTextStyleComboBox(false, parent, sorted)
{
}

ZvUtilsTextStyleComboBox::ZvUtilsTextStyleComboBox(bool hook, QWidget *parent, bool sorted)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr), m_sorted(sorted)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsTextStyleComboBox::~ZvUtilsTextStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsTextStyleComboBox::init()
{
    clear();
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> styles;
    ZevaUISetting::getTextStyleTableRecords(styles, nullptr, m_sorted);
    const ZvHookedCleared filling(*this);
    std::vector<ZvRow> rows;
    rows.reserve(std::size_t(styles.length()));
    for (const ZevaUISetting::ZvsiTextStyleInfoItem &style : styles) {
        if (!style.name.isEmpty() && !isOfExternalReference(style.objectId))
            rows.push_back({QIcon(), zvToQString(style.name), QVariant::fromValue(style)});
    }
    zvAppendRows(*this, std::move(rows));
}

void ZvUtilsTextStyleComboBox::updateTextStyle()
{
    zvRefillKeepingText(*this, *this, [this] { init(); });
}

void ZvUtilsTextStyleComboBox::setCurrentTextStyle(ZvDbObjectId id)
{
    for (int row = 0; row < count(); ++row) {
        ZevaUISetting::ZvsiTextStyleInfoItem item;
        if (getTextStyleInfo(item, row) && item.objectId == id)
            setCurrentIndex(row);
    }
}

int ZvUtilsTextStyleComboBox::findItemByTextStyle(const QString &name)
{
    return zvFindRow(*this, name, ZvNameMatch::kExact);
}

bool ZvUtilsTextStyleComboBox::getTextStyleInfo(ZevaUISetting::ZvsiTextStyleInfoItem &item, int index)
{
    const QVariant data = itemData(index == -1 ? currentIndex() : index);
    if (!data.canConvert<ZevaUISetting::ZvsiTextStyleInfoItem>())
        return false;
    item = data.value<ZevaUISetting::ZvsiTextStyleInfoItem>();
    return true;
}

QString ZvUtilsTextStyleComboBox::getCurrentTextStyleName() const
{
    return currentText();
}

ZvDbObjectId ZvUtilsTextStyleComboBox::getCurrentTextStyleId() const
{
    return ZevaUISetting::findTextStyleTableRecordByName(zvToZvString(currentText()), nullptr);
}

void ZvUtilsTextStyleComboBox::curIndexChanged(int index)
{
    if (zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCTextStyle({}, name); }))
        Q_EMIT textStyleTableItemChanged(currentText());
}

void ZvUtilsTextStyleComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

bool ZvUtilsTextStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsTextStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvSwallowKernelError("zvutilstextstylecombobox", 299, [this] {
        zvFollowObject<ZvDbTextStyleTableRecord>(*this, *this, m_info,
                                                 [](const ZvDbDatabase &drawing) { return drawing.textstyle(); });
    });
}
