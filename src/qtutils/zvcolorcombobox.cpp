// SPDX-License-Identifier: MIT
#include "zvcolorcombobox.h"

#include "private/zvaccessibility.h"
#include "private/zvboundcontrol.h"
#include "private/zvcolorchoice.h"
#include "private/zvcolorkeys.h"
#include "private/zvcolornames.h"
#include "private/zvcolorswatch.h"
#include "private/zvcolortext.h"
#include "private/zvqtcolor.h"

#include "db/zvdbrecords.h"
#include "utils/zventityimage.h"

#include <QMessageBox>
#include <QPointer>
#include <QStyledItemDelegate>

namespace {

constexpr int kBasicColors = 7; // by index from 1
constexpr int kMostFixedRows = kBasicColors + 4;
constexpr int kLastIndex = 255;
constexpr int kForeground = 7; // white on a dark background, black on a light one
constexpr int kMostCustomColors = 10;
constexpr int kSwatchMargin = 4; // pixels beyond the text's height, and of a row beyond the swatch
constexpr int kDialogBackground = int(0xFF30281E);

QString noneName()
{
    return ZvColorComboBox::tr("无");
}

QColor paletteColor(const unsigned int *palette, int index)
{
    return zvPackedToQColor(palette ? palette[index] : 0);
}

/// Of the layer that by layer means; a colour by layer, which a layer cannot have, counts as the foreground.
QColor colorOfLayer(const ZvCmColor &color, const unsigned int *palette)
{
    if (color.isByColor())
        return zvToQColor(color);
    const int index = color.colorIndex();
    if (index == ZvCm::kACIbyLayer)
        return paletteColor(palette, kForeground);
    return color.isByACI() && index <= kLastIndex ? paletteColor(palette, index) : QColor();
}

QColor colorOfByLayer(const unsigned int *palette, const ZvDbObjectId &layerId)
{
    if (layerId.isNull() || layerId.isErased())
        return colorOfLayer(ZevaUISetting::getCLayerColor(), palette);
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(layerId, ZvDb::kForRead);
    return layer ? zvToQColor(layer->color()) : QColor();
}

QColor colorOfByBlock(const unsigned int *palette, const ZvDbObjectId &layerId)
{
    if (layerId.isNull() || layerId.isErased())
        return paletteColor(palette, kForeground);
    // The layer is opened and nothing is taken from it. Kept: with a layer, callers get by block without a colour.
    const ZvDbObjectPointer<ZvDbObject> layer(layerId, ZvDb::kForRead);
    return QColor();
}

QString indexName(int index, const unsigned int *palette)
{
    if (index == kForeground && palette && palette[kForeground] == 0)
        return zvBlackName();
    const QString name = zvColorName(index);
    return name.isEmpty() ? zvNumberedColorName(index) : name;
}

bool hasCurrentPalette()
{
    const ZvEdDisplayContext *display = zvDisplayContext();
    return display && display->paletteState();
}

bool operator==(const ColorData &a, const ColorData &b)
{
    return a.name == b.name && a.color == b.color && a.type == b.type && a.entityColor == b.entityColor;
}

/// The colour as ZevaUISetting takes it.
class ZvCmColorWarp : public ZvCmColor
{
};

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"BLOCKEDITOR", L"CLAYER", L"CECOLOR", L"TILEMODE"},
        true,
        {{ZvDbLayerTableRecord::desc}},
    };
    return filter;
}

} // namespace

// ---- colours and records --------------------------------------------------------------------------------------------

ColorData formatColor(const ZvCmEntityColor &entityColor, const unsigned int *palette, ZvDbObjectId layerId)
{
    ColorData data;
    data.entityColor = entityColor;
    switch (entityColor.colorMethod()) {
    case ZvCm::kByACI: {
        const int index = entityColor.colorIndex();
        data.color = index >= 1 && index <= kLastIndex ? paletteColor(palette, index) : QColor(Qt::white);
        data.name = indexName(index, palette);
        break;
    }
    case ZvCm::kByBlock:
        data.type = kColorItemByBlock;
        data.name = QStringLiteral("ByBlock");
        data.color = colorOfByBlock(palette, layerId);
        break;
    case ZvCm::kByLayer:
        data.type = kColorItemByLayer;
        data.name = QStringLiteral("ByLayer");
        data.color = colorOfByLayer(palette, layerId);
        break;
    case ZvCm::kNone:
        data.name = noneName();
        // Read with red and blue exchanged, which the foreground's grey does not show.
        data.color = QColor(QRgb(palette ? palette[kForeground] : 0));
        break;
    default:
        data.color = QColor(QRgb(entityColor.color()));
        data.name = QStringLiteral("RGB:%1,%2,%3").arg(data.color.red()).arg(data.color.green()).arg(data.color.blue());
        break;
    }
    return data;
}

bool convertColorStrToColorData(const ZvString &text, ColorData &data)
{
    ZvCmEntityColor color;
    if (!zvReadColorText(zvToQString(text), color))
        return false;
    data = formatColor(color, zvsiutCurPalette(), ZvDbObjectId());
    return true;
}

// ---- construction ---------------------------------------------------------------------------------------------------

ZvColorComboBox::ZvColorComboBox(QWidget *parent) : QComboBox(parent), CZvQtControlHelp(false)
{
    setUp();
    init(ZvCmColor(), false, m_layerId);
}

ZvColorComboBox::ZvColorComboBox(bool hook, QWidget *parent) : QComboBox(parent), CZvQtControlHelp(hook, &m_colorInfo)
{
    setObjectName(tr("ZvColorComboBox"));
    setUp();
    init(ZvCmColor(), false, m_layerId);
}

ZvColorComboBox::ZvColorComboBox(bool hook, const ZvCmColor &color, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, &m_colorInfo)
{
    setUp();
    init(color, true, m_layerId);
}

ZvColorComboBox::~ZvColorComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvColorComboBox::setUp()
{
    const ZvUpdateBusJoin joined(*this);
    zvNameForReaders(this);
    Initialize();
    connect(this, qOverload<int>(&QComboBox::activated), this, &ZvColorComboBox::on_activated);
}

void ZvColorComboBox::Initialize()
{
    qRegisterMetaType<ColorData>("ColorData");
    m_previousIndex = 0;
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &ZvColorComboBox::currentColorIndexChanged);
    m_swatchSize = QFontMetrics(font()).height() + kSwatchMargin;
    setItemDelegate(new QStyledItemDelegate(this)); // one that heeds the height of the style sheet
    setStyleSheet(
        QStringLiteral("QComboBox QAbstractItemView::item {min-height: %1px;}").arg(m_swatchSize + kSwatchMargin));
}

// ---- the list -------------------------------------------------------------------------------------------------------

void ZvColorComboBox::init(const ZvCmColor &color, bool addColor, ZvDbObjectId layerId)
{
    {
        const ZvHookedCleared filling(*this);
        const ZvQtBlockSignalUtil block(this);
        if (const ZvApDocument *document = zvCurrentDocument()) {
            const unsigned int *palette = zvsiutCurPalette();
            m_hasSelectItem = false;
            m_paletteStamp = palette[0];
            showRows(fixedRows(*document, palette, layerId));
            subInit();
            if (addColor && hasCurrentPalette()) {
                addRow(count(), formatColor(color.entityColor(), palette, ZvDbObjectId()));
                setCurrentIndex(count() - 1);
            }
            if (m_viewStyle & kColorViewSelect)
                AppendFinish();
        } else {
            clear();
        }
    }
    const QVariant current = currentData();
    if (current.canConvert<ColorData>())
        m_shownColor = current.value<ColorData>().color;
}

QVector<ColorData> ZvColorComboBox::fixedRows(const ZvApDocument &document, const unsigned int *palette,
                                              const ZvDbObjectId &layerId) const
{
    QVector<ColorData> rows;
    rows.reserve(kMostFixedRows);
    const ZvDbDatabase *drawing = document.database();
    if (m_viewStyle & kColorViewUseCurrent && drawing) {
        // The picture of the current colour, but no colour: the caller leaves what he has.
        ColorData current = formatColor(drawing->cecolor().entityColor(), palette, ZvDbObjectId());
        current.name = tr("使用当前项");
        current.entityColor = zvPlainColor(ZvCm::kNone);
        rows << current;
    }
    if (m_viewStyle & kColorViewNone)
        rows << formatColor(zvPlainColor(ZvCm::kNone), palette, ZvDbObjectId());
    if (m_viewStyle & kColorViewByLayerBlock) {
        rows << formatColor(zvPlainColor(ZvCm::kByLayer), palette, layerId);
        rows << formatColor(zvPlainColor(ZvCm::kByBlock), palette, ZvDbObjectId());
    }
    for (int index = 1; index <= kBasicColors; ++index) {
        ZvCmEntityColor basic;
        basic.setColorIndex(std::uint16_t(index));
        rows << formatColor(basic, palette, ZvDbObjectId());
    }
    return rows;
}

/// Makes these the only rows, and the first one current. What a fill before has left as it has to be is not touched: a
/// list is filled each time it opens, and hardly ever has anything changed.
void ZvColorComboBox::showRows(const QVector<ColorData> &rows)
{
    if (count() > rows.size())
        model()->removeRows(rows.size(), count() - rows.size(), rootModelIndex());
    for (int row = 0; row < rows.size(); ++row) {
        const ColorData &data = rows.at(row);
        if (row == count()) {
            addRow(row, data);
            continue;
        }
        const QIcon swatch = zvColorSwatch(data.color, m_swatchSize);
        if (itemText(row) == data.name && rowAt(row) == data && itemIcon(row).cacheKey() == swatch.cacheKey())
            continue;
        model()->setItemData(
            model()->index(row, modelColumn(), rootModelIndex()),
            {{Qt::DisplayRole, data.name}, {Qt::DecorationRole, swatch}, {Qt::UserRole, QVariant::fromValue(data)}});
    }
    setCurrentIndex(0);
}

void ZvColorComboBox::subInit()
{
    for (const ColorData &data : m_customColors)
        addRow(count() - 1, data);
}

void ZvColorComboBox::appendCustomInfo(const ColorData &data)
{
    if (m_customColors.length() >= kMostCustomColors)
        m_customColors.removeFirst();
    m_customColors.append(data);
}

void ZvColorComboBox::setViewStyle(unsigned int style)
{
    m_viewStyle = style;
    init(ZvCmColor(), false, m_layerId);
}

void ZvColorComboBox::setLayerId(ZvDbObjectId layerId)
{
    m_layerId = layerId;
}

void ZvColorComboBox::addRow(int index, const ColorData &data)
{
    const int place = m_hasSelectItem ? index : count();
    if (data.type == kColorItemSelect)
        m_hasSelectItem = true;
    const QIcon icon
        = data.type == kColorItemSelect ? zvColorDialogSwatch(m_swatchSize) : zvColorSwatch(data.color, m_swatchSize);
    insertItem(place, icon, data.name, QVariant::fromValue(data));
}

int ZvColorComboBox::AddColorItem(int index, ColorData data)
{
    addRow(index, data);
    return zvFindRow(*this, data.name, ZvNameMatch::kExact);
}

int ZvColorComboBox::AppendColorItem(const QColor &color, const QString &name)
{
    ColorData data;
    data.color = color;
    data.name = name;
    return AddColorItem(count() - 1, data);
}

int ZvColorComboBox::AppendColorItem(const ZvCmColor &color)
{
    return AddColorItem(count() - 1, formatColor(color.entityColor(), zvsiutCurPalette(), ZvDbObjectId()));
}

int ZvColorComboBox::AppendColorItem(const ColorData &data)
{
    return AddColorItem(count() - 1, data);
}

int ZvColorComboBox::insertColorItem(int index, const QString &text, const ZvCmColor &color)
{
    ColorData data = formatColor(color.entityColor(), zvsiutCurPalette(), ZvDbObjectId());
    data.name = text;
    return AddColorItem(index, data);
}

void ZvColorComboBox::SetUseColorNone()
{
    const ZvQtBlockSignalUtil block(this);
    ZvCmColor none;
    none.setColorIndex(ZvCm::kACInone);
    none.setColorMethod(ZvCm::kNone);
    insertColorItem(0, noneName(), none);
}

void ZvColorComboBox::AppendFinish()
{
    ColorData select;
    select.color = QColor(0, 0, 255);
    select.name = tr("选择颜色...");
    select.type = kColorItemSelect;
    addRow(count(), select);
}

void ZvColorComboBox::SetNullItem()
{
    setCurrentIndex(-1);
}

// ---- questions ------------------------------------------------------------------------------------------------------

ColorData ZvColorComboBox::rowAt(int index) const
{
    return itemData(index).value<ColorData>(); // a new record for a row without one
}

int ZvColorComboBox::FindColor(const QColor &color)
{
    for (int row = 0; row < count(); ++row) {
        const ColorData data = rowAt(row);
        if (data.type == kColorItemPlain && data.color == color)
            return row;
    }
    return -1;
}

int ZvColorComboBox::FindColor(const ZvCmColor &color)
{
    const ZvCmEntityColor wanted = color.entityColor();
    const auto matchesByMethod = [&wanted](const ZvCmEntityColor &own) {
        switch (own.colorMethod()) {
        case ZvCm::kByLayer:
        case ZvCm::kByBlock:
        case ZvCm::kByACI:
            return own.colorIndex() == wanted.colorIndex();
        case ZvCm::kByColor:
            return zvToPacked(own) == zvToPacked(wanted);
        default:
            return false;
        }
    };
    for (int row = 0; row < count(); ++row) {
        const ColorData data = rowAt(row);
        if (data.type == kColorItemForeign)
            continue;
        if (data.type != kColorItemSelect && data.entityColor == wanted)
            return row;
        if (matchesByMethod(data.entityColor))
            return row;
    }
    return -1;
}

int ZvColorComboBox::FindColor(int colorIndex)
{
    for (int row = 0; row < count(); ++row) {
        const ColorData data = rowAt(row);
        if (data.type != kColorItemForeign && data.entityColor.colorIndex() == colorIndex)
            return row;
    }
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(colorIndex));
    ColorData data;
    data.color = zvToQColor(color);
    // The one place with brackets: callers look for the row by this text.
    data.name = QStringLiteral("RGB(%1, %2, %3)").arg(color.red()).arg(color.green()).arg(color.blue());
    AddColorItem(count() - 1, data);
    return count() - 1;
}

bool ZvColorComboBox::FindColor(int index, QColor &out)
{
    if (index < 0 || index >= count())
        return false;
    const ColorData data = rowAt(index);
    if (data.type != kColorItemPlain)
        return false;
    out = data.color;
    return true;
}

QColor ZvColorComboBox::GetCurrentColor() const
{
    return rowAt(currentIndex()).color;
}

ZvCmEntityColor ZvColorComboBox::GetCurrentColorEx() const
{
    return rowAt(currentIndex()).entityColor;
}

ZvCmEntityColor ZvColorComboBox::GetColor(int index) const
{
    if (index < 0 || index >= count()) {
        ZvAssert("false", __FILE__, __LINE__);
        return ZvCmEntityColor();
    }
    return rowAt(index).entityColor;
}

// ---- the drawing ----------------------------------------------------------------------------------------------------

void ZvColorComboBox::setCeColor(const ZvCmEntityColor &color)
{
    if (!hooked)
        return;
    ZvCmColorWarp wrapped;
    wrapped.setColorMethod(color.colorMethod());
    if (color.colorMethod() == ZvCm::kByACI)
        wrapped.setColorIndex(color.colorIndex());
    else
        wrapped.setColor(color.color());
    ZevaUISetting::setCeColor(wrapped);
}

void ZvColorComboBox::updateData(bool)
{
    if (!zvCurrentDocument())
        return;
    const ZvShown shown = zvWhatToShow(m_colorInfo);
    if (zvIsBlank(shown)) {
        zvShowBlank(*this, shown);
        return;
    }
    const ZvCmColor color
        = shown == ZvShown::kCurrentValue ? zvCurrentDocumentDatabase()->cecolor() : m_colorInfo.value;
    const unsigned int *palette = zvcmAcadPalette(0);
    if (hasCurrentPalette()) {
        palette = zvsiutCurPalette();
        m_paletteStamp = palette[0];
    }
    const ColorData data = formatColor(color.entityColor(), palette, m_layerId);

    const ZvQtBlockSignalUtil block(this);
    setEnabled(true);
    int row = zvFindRow(*this, data.name, ZvNameMatch::kExact);
    if (row < 0) {
        row = AddColorItem(count() - 1, data);
        appendCustomInfo(data);
    } else if (m_shownColor != data.color) {
        setItemIcon(row, zvColorSwatch(data.color, m_swatchSize)); // ByLayer has the colour of the layer of the moment
    }
    if (row >= 0)
        setCurrentIndex(row);
    m_shownColor = data.color;
}

void ZvColorComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (zvNoticeConcerns(noticeFilter(), notice))
        updateData(false);
}

// ---- the user -------------------------------------------------------------------------------------------------------

bool ZvColorComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvColorComboBox::showPopup()
{
    if (zvRefillForOpening(*this, *this, [this] { init(ZvCmColor(), false, m_layerId); }))
        QComboBox::showPopup();
}

void ZvColorComboBox::on_activated(int)
{
    ZevaUISetting::restoreFocus2MainView();
}

void ZvColorComboBox::currentColorIndexChanged(int index)
{
    if (index == -1)
        return;
    const QVariant held = itemData(index);
    if (!held.canConvert<ColorData>()) {
        QMessageBox box(this);
        box.setText(tr("data err: index(%1)").arg(index));
        box.exec();
        return;
    }
    const ColorData data = held.value<ColorData>();
    if (data.type == kColorItemSelect) {
        pickFromDialog();
        return;
    }
    m_previousIndex = index;
    takePick(data);
}

void ZvColorComboBox::takePick(const ColorData &data)
{
    {
        const ZvQtBlockSignalUtil block(this);
        setCeColor(data.entityColor);
    }
    Q_EMIT ColorItemChanged(data.color);
}

void ZvColorComboBox::pickFromDialog()
{
    ZvColorChoice shown = zvColorChoiceOf(rowAt(m_previousIndex).entityColor);
    if (shown.method == ZvCm::kNone)
        shown = {ZvCm::kByACI, 1};
    const ZvJsonPtr params = zvColorDialogParams(shown);
    params->SetDataI(kBackgroundColorKey, kDialogBackground);
    ZvCmColor layerColor;
    ZevaUISetting::getCurrentLayerColor(layerColor);
    params->SetDataI(kLayerClrKey, int(zvToPacked(layerColor)));
    if (!(m_viewStyle & kColorViewByLayerBlock))
        zvForbidByLayerAndBlock(params);

    // Behind the dialog stands the old colour. The drawing, and with it the combo, may go while the dialog runs.
    const QPointer<ZvColorComboBox> self(this);
    ZvColorChoice choice;
    blockSignals(true);
    setCurrentIndex(m_previousIndex);
    const bool accepted = zvRunColorDialog(params, this, choice);
    if (!self)
        return;
    blockSignals(true); // a notice behind the dialog has ended the block
    if (!accepted)
        setCurrentIndex(m_previousIndex);
    blockSignals(false);
    if (!accepted)
        return;

    ZvCmEntityColor chosen;
    if (choice.method == ZvCm::kByColor) {
        chosen.setRGB(std::uint8_t(zvPackedRed(choice.value)), std::uint8_t(zvPackedGreen(choice.value)),
                      std::uint8_t(zvPackedBlue(choice.value)));
    } else if (choice.method == ZvCm::kByACI) {
        chosen.setColorIndex(std::uint16_t(choice.value));
    }

    int row = -1;
    const Found found = findChosen(choice.method, choice.value, chosen, row);
    // Where a cancelled dialog goes back to next time. Kept: by layer and by block count as the first two rows wherever
    // they stand, and a row found by its value leaves the row before it there. Callers see it after their next cancel.
    if (choice.method == ZvCm::kByLayer)
        m_previousIndex = 0;
    else if (choice.method == ZvCm::kByBlock)
        m_previousIndex = 1;
    else if (found == Found::kByValue)
        m_previousIndex = currentIndex();
    else if (found == Found::kByIndex)
        m_previousIndex = row;

    const ColorData data = found == Found::kNo ? addChosen(chosen) : rowAt(row);
    {
        const ZvQtBlockSignalUtil block(this);
        setCurrentText(data.name);
        setCeColor(data.entityColor);
    }
    Q_EMIT ColorItemChanged(data.color);
}

ZvColorComboBox::Found ZvColorComboBox::findChosen(int method, std::uint32_t value, const ZvCmEntityColor &chosen,
                                                   int &row) const
{
    const bool isByLayer = method == ZvCm::kByLayer;
    const bool isByBlock = method == ZvCm::kByBlock;
    const bool hasValue = method == ZvCm::kByColor || method == ZvCm::kByACI;
    for (row = 0; row < count(); ++row) {
        const ColorData data = rowAt(row);
        switch (data.type) {
        case kColorItemByLayer:
            if (isByLayer || (hasValue && value == ZvCm::kACIbyLayer))
                return Found::kByValue;
            break;
        case kColorItemByBlock:
            if (isByBlock || (hasValue && value == ZvCm::kACIbyBlock && method == data.entityColor.colorMethod()))
                return Found::kByValue;
            break;
        case kColorItemPlain:
            if (!hasValue)
                break;
            if (data.entityColor == chosen)
                return Found::kByValue;
            // Compares the bytes of a true colour with an index as well: red 1 and green 0 find the row of index 1,
            // which is then what is written. Kept: callers get the row's record for such a pick.
            if (data.entityColor.colorIndex() == std::uint16_t(value))
                return Found::kByIndex;
            break;
        default:
            break;
        }
    }
    return Found::kNo;
}

ColorData ZvColorComboBox::addChosen(const ZvCmEntityColor &chosen)
{
    const unsigned int *palette = zvCurrentDocument() ? zvsiutCurPalette() : zvcmAcadPalette(0);
    const ColorData data = formatColor(chosen, palette, ZvDbObjectId());
    const int slot = count() - 1;
    {
        const ZvQtBlockSignalUtil block(this);
        if (m_viewStyle & kColorViewSelect && count() >= 1)
            insertItem(slot, zvColorSwatch(data.color, m_swatchSize), data.name, QVariant::fromValue(data));
        else
            AddColorItem(slot, data);
    }
    appendCustomInfo(data);
    m_previousIndex = slot;
    return data;
}
