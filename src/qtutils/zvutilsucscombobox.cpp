// SPDX-License-Identifier: MIT
#include "zvutilsucscombobox.h"

#include "private/zvcurrentucs.h"
#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

#include "core/zveditor.h"
#include "db/zvdbrecords.h"

namespace {

struct Preset
{
    int type; ///< A ZevaUISetting::UcsItemType.
    const char *picture;
    const wchar_t *macro;
};

constexpr Preset kPresets[] = {
    {ZevaUISetting::kUcsTop, ":/res/view_top.bmp", L"_.UCS _Top"},
    {ZevaUISetting::kUcsBottom, ":/res/view_bottom.bmp", L"_.UCS _Bottom"},
    {ZevaUISetting::kUcsLeft, ":/res/view_left.bmp", L"_.UCS _Left"},
    {ZevaUISetting::kUcsRight, ":/res/view_right.bmp", L"_.UCS _Right"},
    {ZevaUISetting::kUcsFront, ":/res/view_front.bmp", L"_.UCS _Front"},
    {ZevaUISetting::kUcsBack, ":/res/view_back.bmp", L"_.UCS _Back"},
    {ZevaUISetting::kUcsWorld, ":/res/view_world.bmp", L"_.UCS _World"},
};
/// Of the rows that are no systems of the drawing, as the facade names them.
constexpr const char *kPresetTexts[] = {"未命名", "世界", "上一个", "俯视", "仰视", "左视", "右视", "前视", "后视"};
constexpr int kPictureSize = 16; // pixels

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CVPORT", L"UCS", L"PUCS", L"TILEMODE"},
        false,
        {{ZvDbUCSTableRecord::desc}, {ZvDbAbstractViewportData::desc, ZvObjectRule::kDerived}},
    };
    return filter;
}

/// What type of row the system in force is to be found by, apart from the unnamed one.
bool isInForce(const ZevaUISetting::ZvsiUcsInfoItem &item, const ZvCurrentUcs &ucs)
{
    switch (item.type) {
    case ZevaUISetting::kUcsWorld:
        return ucs.name.isNull() && ucs.orthographic == 0 && ucs.isWorld();
    case ZevaUISetting::kUcsNamed:
        return item.objectId == ucs.name;
    default:
        return item.type == ucs.orthographic;
    }
}

/// The fixed rows hang on the system in force and on its predecessor.
ZvListSource listSource()
{
    ZvListSource source = zvListSource([](const ZvDbDatabase &drawing) { return drawing.UCSTableId(); });
    if (!source.table.isNull())
        source.variant = (ZvCurrentUcs(*curDatabase()).isUnnamed() ? 1 : 0) + (zvHasPreviousUcs() ? 2 : 0);
    return source;
}

} // namespace

ZvUtilsUcsComboBox::ZvUtilsUcsComboBox(QWidget *parent) : ZvUtilsUcsComboBox(false, parent) { }

ZvUtilsUcsComboBox::ZvUtilsUcsComboBox(bool hook, QWidget *parent) : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateRows(this, "ZevaUISetting", {std::begin(kPresetTexts), std::end(kPresetTexts)});
    initIcons();
    init();
}

ZvUtilsUcsComboBox::~ZvUtilsUcsComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsUcsComboBox::initIcons()
{
    for (const Preset &preset : kPresets)
        m_icons[preset.type] = zvsiQtCreateIcon(QLatin1String(preset.picture), false, kPictureSize, kPictureSize);
}

int ZvUtilsUcsComboBox::reload(ZvArray<ZevaUISetting::ZvsiUcsInfoItem> &items, ZvString &currentName)
{
    const ZvDbDatabase *drawing = curDatabase();
    if (!drawing)
        return -1;
    ZevaUISetting::getUcses(items, nullptr);
    const ZvCurrentUcs ucs(*drawing);
    for (const ZevaUISetting::ZvsiUcsInfoItem &item : items) {
        if (item.type == ZevaUISetting::kUcsUnnamed)
            return item.type; // only listed when it is in force; the caller's name stays
        if (isInForce(item, ucs)) {
            currentName = item.name;
            return item.type;
        }
    }
    return -1;
}

void ZvUtilsUcsComboBox::init()
{
    clear();
    const ZvHookedCleared filling(*this);
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZvString name;
    const int type = reload(items, name);
    std::vector<ZvRow> rows;
    for (const ZevaUISetting::ZvsiUcsInfoItem &item : items) {
        const auto icon = m_icons.find(item.type);
        rows.push_back({icon != m_icons.end() ? icon->second : QIcon(), zvToQString(item.name), item.type});
    }
    zvAppendRows(*this, std::move(rows));
    const int row = type < 0 ? -1 : zvFindRow(*this, zvToQString(name), ZvNameMatch::kIgnoreCase);
    if (row >= 0)
        setCurrentIndex(row);
}

bool ZvUtilsUcsComboBox::selectItem(int type)
{
    if (type == ZevaUISetting::kUcsPrevious)
        zvedRestorePreviousUCS();
    if (type == ZevaUISetting::kUcsNamed && !currentText().isEmpty())
        zvedMenuMacro(L"_.UCS _Named _Restore " + zvToZvString(currentText()) + L";", false);
    for (const Preset &preset : kPresets) {
        if (preset.type == type)
            zvedMenuMacro(preset.macro, false);
    }
    return true;
}

QString ZvUtilsUcsComboBox::getCurrentName() const
{
    return currentText();
}

void ZvUtilsUcsComboBox::curIndexChanged(int index)
{
    if (index < 0)
        return;
    ZevaUISetting::restoreFocus2MainView();
    {
        // By its type, and not by its text: a preset without a text is sent all the same.
        const ZvQtBlockSignalUtil block(this);
        const QVariant type = itemData(index);
        if (hooked && type.canConvert<int>())
            selectItem(type.toInt());
    }
    Q_EMIT itemChanged(currentText());
}

bool ZvUtilsUcsComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsUcsComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

void ZvUtilsUcsComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    if (!zvCurrentDocumentDatabase()) {
        zvShowBlank(*this, ZvShown::kBlankDisabled);
        return;
    }
    const ZvQtBlockSignalUtil block(this);
    setEnabled(true);
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZvString name;
    if (reload(items, name) < 0)
        return;
    // The unnamed one comes without a name, and does not move the box.
    zvShowName(*this, *this, name.isEmpty() ? QString() : zvToQString(name), ZvNameMatch::kIgnoreCase);
}
