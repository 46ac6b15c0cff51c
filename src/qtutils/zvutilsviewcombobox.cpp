// SPDX-License-Identifier: MIT
#include "zvutilsviewcombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

#include "core/zveditor.h"

namespace {

struct Preset
{
    int code;
    const char *text;
    const char *picture; ///< Null for none.
    const wchar_t *macro; ///< Null for none.
};

constexpr Preset kPresets[] = {
    {ZvUtilsViewComboBox::kCurrent, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "当前"), nullptr, nullptr},
    {ZvUtilsViewComboBox::kTop, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "俯视"), ":/res/view_top.bmp",
     L"^C^C_-VIEW _TOP"},
    {ZvUtilsViewComboBox::kBottom, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "仰视"), ":/res/view_bottom.bmp",
     L"^C^C_-VIEW _BOTTOM"},
    {ZvUtilsViewComboBox::kLeft, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "左视"), ":/res/view_left.bmp",
     L"^C^C_-VIEW _LEFT"},
    {ZvUtilsViewComboBox::kRight, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "右视"), ":/res/view_right.bmp",
     L"^C^C_-VIEW _RIGHT"},
    {ZvUtilsViewComboBox::kFront, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "前视"), ":/res/view_front.bmp",
     L"^C^C_-VIEW _FRONT"},
    {ZvUtilsViewComboBox::kBack, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "后视"), ":/res/view_back.bmp",
     L"^C^C_-VIEW _BACK"},
    {ZvUtilsViewComboBox::kSouthWest, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "西南等轴测"), ":/res/view_sw.bmp",
     L"^C^C_-VIEW _SWISO"},
    {ZvUtilsViewComboBox::kSouthEast, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "东南等轴测"), ":/res/view_se.bmp",
     L"^C^C_-VIEW _SEISO"},
    {ZvUtilsViewComboBox::kNorthEast, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "东北等轴测"), ":/res/view_ne.bmp",
     L"^C^C_-VIEW _NEISO"},
    {ZvUtilsViewComboBox::kNorthWest, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "西北等轴测"), ":/res/view_nw.bmp",
     L"^C^C_-VIEW _NWISO"},
};
constexpr Preset kManagerRow
    = {ZvUtilsViewComboBox::kManager, QT_TRANSLATE_NOOP("ZvUtilsViewComboBox", "视图管理器..."), nullptr, L"^C^C_VIEW"};
constexpr int kPictureSize = 16; // pixels

ZvRow rowOf(const Preset &preset)
{
    const QIcon icon
        = preset.picture ? zvsiQtCreateIcon(QLatin1String(preset.picture), false, kPictureSize, kPictureSize) : QIcon();
    return {icon, ZvUtilsViewComboBox::tr(preset.text), preset.code};
}

std::vector<const char *> presetTexts()
{
    std::vector<const char *> texts = {kManagerRow.text};
    for (const Preset &preset : kPresets)
        texts.push_back(preset.text);
    return texts;
}

/// Model and sheet have views of their own.
ZvListSource listSource()
{
    ZvListSource source = zvListSource([](const ZvDbDatabase &drawing) { return drawing.viewTableId(); });
    if (!source.table.isNull())
        source.variant = zvIsPaperWorkedOn(*curDatabase()) ? 1 : 0;
    return source;
}

} // namespace

ZvUtilsViewComboBox::ZvUtilsViewComboBox(QWidget *parent) : ZvUtilsViewComboBox(false, parent) { }

ZvUtilsViewComboBox::ZvUtilsViewComboBox(bool hook, QWidget *parent) : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    setModel(new ZvRowModel(this));
    // Activations: the same view can be picked twice, and a refill sends nothing.
    connect(this, qOverload<int>(&QComboBox::activated), this, &ZvUtilsViewComboBox::activateIndex);
    setInsertPolicy(QComboBox::InsertAfterCurrent);
    zvNameForReaders(this);
    zvTranslateRows(this, "ZvUtilsViewComboBox", presetTexts());
    init();
}

ZvUtilsViewComboBox::~ZvUtilsViewComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsViewComboBox::init()
{
    clear();
    const ZvHookedCleared filling(*this);
    std::vector<ZvRow> rows;
    for (const Preset &preset : kPresets)
        rows.push_back(rowOf(preset));
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> views;
    ZevaUISetting::getCustomViews(views, nullptr);
    for (const ZevaUISetting::ZvsiViewInfoItem &view : views)
        rows.push_back({QIcon(), zvToQString(view.name), int(kNamed)});
    rows.push_back(rowOf(kManagerRow));
    zvAppendRows(*this, std::move(rows));
}

bool ZvUtilsViewComboBox::setPredefinedView(int code)
{
    const wchar_t *macro = code == kManager ? kManagerRow.macro : nullptr;
    for (const Preset &preset : kPresets) {
        if (preset.code == code)
            macro = preset.macro;
    }
    if (macro)
        zvedMenuMacro(macro, false);
    return macro != nullptr;
}

bool ZvUtilsViewComboBox::setCustomDefinedView(const ZvString &name)
{
    // Unlike the presets' macros this one resumes: the command processors that tell the two apart rely on it.
    zvedMenuMacro(L"^C^C_-VIEW R " + name, true);
    return true;
}

QString ZvUtilsViewComboBox::getCurrentName() const
{
    return currentText();
}

void ZvUtilsViewComboBox::activateIndex(int index)
{
    if (index < 0)
        return;
    ZevaUISetting::restoreFocus2MainView();
    const QString text = currentText();
    const QVariant code = itemData(index);
    if (code.canConvert<int>()) {
        const ZvQtBlockSignalUtil block(this);
        if (!setPredefinedView(code.toInt()) && code.toInt() == kNamed)
            setCustomDefinedView(zvToZvString(text));
    }
    Q_EMIT itemChanged(text);
}

bool ZvUtilsViewComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsViewComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

void ZvUtilsViewComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
