// SPDX-License-Identifier: MIT
#include "zvutilsplotstylenamecombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvresbufptr.h"
#include "private/zvtranslation.h"

#include "core/zvedvars.h"
#include "db/zvdbdictionary.h"

namespace {

const wchar_t *const kNormal = L"Normal"; // as the drawing names it

constexpr char kNormalText[] = QT_TRANSLATE_NOOP("ZvUtilsPlotStyleNameComboBox", "普通");

/// As the user knows it. What a pick writes is the drawing's name in every language.
QString normalText()
{
    return ZvUtilsPlotStyleNameComboBox::tr(kNormalText);
}

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CPLOTSTYLE", L"PSTYLEMODE"},
        true,
        {{ZvDbDictionary::desc, ZvObjectRule::kExact, ZvObjectRule::kAlways,
          [](const ZvDbDatabase *drawing) { return zvHostService()->plotStyleDictionaryId(drawing, true); }}},
    };
    return filter;
}

ZvString currentPlotStyleName(const ZvDbDatabase &)
{
    const ZvResBufPtr value(zvutNewRb(ZvRes::kText));
    if (zvedGetVar(L"CPLOTSTYLE", value.get()) != ZvRes::kNormal || value->restype != ZvRes::kText)
        return ZvString();
    return value->text();
}

/// First row of a plot style by its name or, of the one that users know otherwise, by their word for it.
int findShown(const QComboBox &combo, const ZvString &name)
{
    const bool isNormal = name.compareNoCase(kNormal) == 0;
    for (int row = 0; row < combo.count(); ++row) {
        const QString text = combo.itemText(row);
        if (name.compareNoCase(zvToZvString(text)) == 0 || (isNormal && text == normalText()))
            return row;
    }
    return -1;
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.plotStyleDictionaryId(); });
}

} // namespace

ZvUtilsPlotStyleNameComboBox::ZvUtilsPlotStyleNameComboBox(QWidget *parent)
    : ZvUtilsPlotStyleNameComboBox(false, parent)
{
}

ZvUtilsPlotStyleNameComboBox::ZvUtilsPlotStyleNameComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateRows(this, "ZvUtilsPlotStyleNameComboBox", {kNormalText});
    init();
}

ZvUtilsPlotStyleNameComboBox::~ZvUtilsPlotStyleNameComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsPlotStyleNameComboBox::init()
{
    clear();
    ZvArray<ZvString> styles;
    ZevaUISetting::getPlotStyleNames(styles, nullptr);
    ZvArray<ZvString> names;
    names.append(L"ByLayer");
    names.append(L"ByBlock");
    bool isNormalShown = false;
    for (const ZvString &style : styles) {
        const bool isNormal = !isNormalShown && style == kNormal;
        names.append(isNormal ? zvToZvString(normalText()) : style);
        isNormalShown = isNormalShown || isNormal;
    }
    zvAppendNames(*this, *this, names);
}

QString ZvUtilsPlotStyleNameComboBox::getCurrentPlotStyleName() const
{
    return currentText();
}

void ZvUtilsPlotStyleNameComboBox::curIndexChanged(int index)
{
    const auto write = [](const ZvString &name) {
        const bool isNormal = name.compareNoCase(zvToZvString(normalText())) == 0;
        ZevaUISetting::setCPlotStyle({}, isNormal ? ZvString(kNormal) : name);
    };
    if (zvTakePick(*this, *this, index, write))
        Q_EMIT plotStyleTableItemChanged(currentText());
}

void ZvUtilsPlotStyleNameComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

void ZvUtilsPlotStyleNameComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvFollowValue(*this, m_info, currentPlotStyleName, [this](const ZvString &name) {
        if (name.isEmpty() || count() == 0)
            return;
        const int row = findShown(*this, name);
        const QString text = row >= 0 ? itemText(row) : zvToQString(name);
        zvSwallowKernelError("zvutilsplotstylenamecombobox", 218,
                             [&] { zvShowName(*this, *this, text, ZvNameMatch::kExact); });
    });
}
