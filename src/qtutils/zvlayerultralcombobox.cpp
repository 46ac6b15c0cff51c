// SPDX-License-Identifier: MIT
#include "zvlayerultralcombobox.h"

#include "private/zvboundcontrol.h"
#include "private/zvcolorchoice.h"
#include "private/zvaccessibility.h"
#include "private/zvcolorkeys.h"
#include "private/zvlayerkeys.h"
#include "private/zvcolorswatch.h"
#include "private/zvlayertable.h"
#include "private/zvqtcolor.h"
#include "zvcolorcombobox.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <tuple>

namespace {

constexpr int kMostVisible = 200;
constexpr int kIcons = 6;
constexpr int kIconSize = 16; // pixels, as all sizes here
constexpr int kSwatchSize = 24;
constexpr int kNarrowestList = 220;
constexpr int kBesideTheNames = 120;
constexpr double kNameMargin = 3.0;
constexpr int kDialogBackground = int(0xFF30281E);
constexpr int kAssertLine = 694; // callers know the assertion by this place
constexpr char kAssertUnit[] = "zvlayerultralcombobox";

/// By their places in the icon array, which ZvLayerTable::iconIndex() tells.
const QString &iconFile(int index)
{
    static const QString files[kIcons] = {
        QStringLiteral("/ico_zeva/layer_on.ico"),     QStringLiteral("/ico_zeva/layer_off.ico"),
        QStringLiteral("/ico_zeva/layer_frozed.ico"), QStringLiteral("/ico_zeva/layer_thaw.ico"),
        QStringLiteral("/ico_zeva/layer_lock.ico"),   QStringLiteral("/ico_zeva/layer_unlock.ico"),
    };
    return files[index];
}

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CVPORT", L"BLOCKEDITOR", L"CLAYER", L"TILEMODE"},
        true,
        {{&ZvDbLayerTableRecord::desc},
         {&ZvDbViewport::desc},
         {&ZvDbDictionary::desc, ZvObjectRule::kExact, ZvObjectRule::kAlways,
          [](const ZvDbDatabase *database) { return ZvDbLayerState::dictionaryId(database, false); }}},
    };
    return filter;
}

/// Of the layer states that changeLayerStatus() flips, by column.
constexpr ZevaUISetting::Layer_Info_Type kStates[]
    = {ZevaUISetting::kLayerOnOff, ZevaUISetting::kLayerFreeze, ZevaUISetting::kLayerLock};

ZvString nextUndoKey()
{
    static int openings = 0;
    return zvToZvString(QStringLiteral("layer list %1").arg(++openings));
}

} // namespace

// ---- setting up -----------------------------------------------------------------------------------------------------

ZvLayerUltralComboBox::ZvLayerUltralComboBox(QWidget *parent) : QComboBox(parent)
{
    setMaxVisibleItems(kMostVisible);
    initializeData();
    init();
}

ZvLayerUltralComboBox::ZvLayerUltralComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_layerInfo : nullptr)
{
    const ZvUpdateBusJoin joined(*this);
    m_joinedBus = hook;
    setMaxVisibleItems(kMostVisible);
    initializeData();
    init();
}

ZvLayerUltralComboBox::~ZvLayerUltralComboBox()
{
    hooked = hooked || m_joinedBus; // a failed filling has left it cleared
    zvLeaveUpdateBus(*this);
}

void ZvLayerUltralComboBox::initializeData()
{
    m_label = new QLabel(this);
    m_table = new ZvLayerTable(&m_icons, this);
    setModel(m_table->model());
    setView(m_table);
    zvGiveKeys(m_table);
    zvNameForReaders(this);
    setObjectName(QStringLiteral("ZvLayerUltralComboBox"));
    m_table->setObjectName(QStringLiteral("m_listView"));
    // The table is no window and fills no screen; but it has to count as shown before the list first opens.
    m_table->showFullScreen();
    connect(m_table.data(), &QTableWidget::cellPressed, this, [this](int row, int) {
        ZevaUISetting::restoreFocus2MainView();
        setCurrentIndexEx(row, hooked);
        hidePopup();
    });
    connect(m_table.data(), &ZvLayerTable::buttonClicked, this, &ZvLayerUltralComboBox::rowButtonClicked);
    const auto forgetPlace = [this] { m_listPlace = QRect(); };
    connect(m_table.data(), &ZvLayerTable::lookChanged, this, forgetPlace);
    connect(m_table->model(), &QAbstractItemModel::dataChanged, this, forgetPlace);
    m_icons.clear();
    for (int icon = 0; icon < kIcons; ++icon)
        m_icons.append(zvsiQtCreateIcon(toFullPath(iconFile(icon)), false, kIconSize, kIconSize));
}

void ZvLayerUltralComboBox::init()
{
    const unsigned int *palette = zvcmAcadPalette(0);
    m_paletteWord = palette ? palette[0] : 0;
    readLayerData(palette);
}

bool ZvLayerUltralComboBox::Source::operator==(const Source &other) const
{
    return isReusable && other.isReusable && database == other.database && stamp == other.stamp
        && palette == other.palette;
}

ZvLayerUltralComboBox::Source ZvLayerUltralComboBox::sourceNow(const unsigned int *palette) const
{
    Source source;
    if (const ZvDbDatabase *database = zvCurrentDocumentDatabase()) {
        source.database = database->number();
        source.stamp = database->changeStamp(database->layerTableId());
    }
    if (palette)
        std::copy_n(palette, source.palette.size(), source.palette.begin());
    source.isReusable = true;
    return source;
}

void ZvLayerUltralComboBox::readLayerData(const unsigned int *palette)
{
    // Plain calls and no guards: an error gets out with all as it is then, and hosts that catch it look at hooked.
    blockSignals(true);
    Source source = sourceNow(palette);
    const bool isUnchanged = source == m_source && m_table && m_table->rowCount() == m_names.size();
    if (!isUnchanged) {
        m_source.isReusable = false;
        m_rows.clear();
        m_rowsByName.clear();
        m_rowsByExactName.clear();
        ZvArray<LayerData> layers;
        ZevaUISetting::getLayerInfos(layers, nullptr);
        const bool wasHooked = hooked;
        hooked = false;
        QVector<ZvLayerTable::Layer> rows;
        rows.reserve(layers.length());
        QHash<quint32, QColor> colours; // layers share a few
        for (const LayerData &layer : layers) {
            if (layer.isHidden)
                continue;
            const ZvCmEntityColor entityColor = layer.color.entityColor();
            auto colour = colours.find(entityColor.color());
            if (colour == colours.end())
                colour = colours.insert(entityColor.color(), formatColor(entityColor, palette, ZvDbObjectId()).color);
            if (entityColor.colorMethod() == ZvCm::kByLayer)
                source.isReusable = false; // looks like the current layer, of which the stamp does not know
            const int row = rows.size();
            rows.append({layer.isOff, layer.isFrozen, layer.isLocked, *colour, zvToQString(layer.name)});
            m_rows.emplace_hint(m_rows.end(), row, layer);
            m_rowsByName.emplace(layer.name, row);
        }
        const QVector<QString> names = m_names;
        m_names.resize(rows.size());
        m_nameWidths.resize(std::size_t(rows.size()), -1);
        for (int row = 0; row < rows.size(); ++row) {
            if (row >= names.size() || names.at(row) != rows.at(row).name)
                m_nameWidths[std::size_t(row)] = -1;
            m_names[row] = rows.at(row).name;
            m_rowsByExactName.insert(m_names.at(row), row);
        }
        if (m_table)
            m_table->setLayers(rows);
        hooked = wasHooked;
        if (hooked)
            widestName(); // here and not while the user waits for the list
        m_source = source;
    }
    // As in a box that was emptied and filled row by row.
    if (m_table)
        m_table->selectionModel()->clear();
    QComboBox::setCurrentIndex(m_names.isEmpty() ? -1 : 0);
    blockSignals(false);
}

void ZvLayerUltralComboBox::addItemLayerInfo(bool off, bool frozen, bool locked, const QColor &colour,
                                             const QString &name)
{
    m_source.isReusable = false;
    if (m_table)
        m_table->appendLayer({off, frozen, locked, colour, name});
}

QString ZvLayerUltralComboBox::toFullPath(QString rel)
{
    return QCoreApplication::applicationDirPath() + rel;
}

// ---- the closed box -------------------------------------------------------------------------------------------------

void ZvLayerUltralComboBox::drawSectionView(bool off, bool frozen, bool locked, const QColor &colour,
                                            const QString &name)
{
    constexpr int kRightOfPicture = 22; // the arrow
    constexpr int kBelowPicture = 4;
    constexpr int kStep = 18;
    constexpr int kNameLeft = 77;
    if (!m_label)
        return;
    QPixmap picture(width() - kRightOfPicture, height() - kBelowPicture);
    if (picture.isNull()) { // too small a box for any
        m_label->setPixmap(picture);
        return;
    }
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QPoint at(1, 1);
    for (const int icon :
         {ZvLayerTable::iconIndex(ZvLayerTable::kSwitch, off), ZvLayerTable::iconIndex(ZvLayerTable::kFreeze, frozen),
          ZvLayerTable::iconIndex(ZvLayerTable::kLock, locked)}) {
        const QPixmap state(toFullPath(iconFile(icon))); // from the file each time
        if (!state.isNull())
            painter.drawPixmap(at, state.scaled(kIconSize, kIconSize, Qt::IgnoreAspectRatio, Qt::FastTransformation));
        at.rx() += kStep;
    }
    painter.drawPixmap(at, zvColorPixmapWithBorder(kIconSize, kIconSize, colour));
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText)); // it may be painted while disabled
    painter.drawText(QRect(QPoint(kNameLeft, 0), QPoint(width() - 1, height() - 1 - kBelowPicture)),
                     Qt::AlignLeft | Qt::AlignVCenter, name);
    painter.end();
    m_label->setPixmap(picture);
}

void ZvLayerUltralComboBox::setCurrentIndexEx(int index, bool applyToDrawing)
{
    const ZvQtBlockSignalUtil block(this);
    const auto found = m_rows.find(index);
    if (found == m_rows.end()) {
        if (m_label)
            m_label->hide();
        return;
    }
    const ZvString name = found->second.name;
    if (applyToDrawing && !ZevaUISetting::setCLayer(ZvDbObjectId(), name))
        return;
    QComboBox::setCurrentIndex(index);
    m_currentRow = index;
    const LayerData now = ZevaUISetting::getLayInfo(name);
    m_rows[index].color = now.color;
    if (m_label && m_label->isHidden())
        m_label->show();
    drawSectionView(now.isOff, now.isFrozen, now.isLocked, zvToQColor(now.color.entityColor()), zvToQString(name));
}

void ZvLayerUltralComboBox::SetNullItem()
{
    setCurrentIndexEx(-1, false);
}

void ZvLayerUltralComboBox::resizeEvent(QResizeEvent *event)
{
    constexpr int kMargin = 2;
    constexpr int kRight = 21;
    constexpr int kBottom = 3;
    QComboBox::resizeEvent(event);
    if (event->size() == event->oldSize() || !m_label)
        return;
    const ZvQtBlockSignalUtil block(this);
    m_label->setGeometry(
        QRect(QPoint(kMargin, kMargin), QPoint(event->size().width() - kRight, event->size().height() - kBottom)));
}

// ---- the drawing ----------------------------------------------------------------------------------------------------

void ZvLayerUltralComboBox::updateData(bool)
{
    if (!zvCurrentDocument())
        return;
    const ZvShown shown = zvWhatToShow(m_layerInfo);
    if (zvIsBlank(shown)) {
        zvShowBlank(*this, shown, [this] { SetNullItem(); });
        return;
    }
    const ZvDbObjectId id = shown == ZvShown::kCurrentValue ? zvCurrentDocumentDatabase()->clayer() : m_layerInfo.value;
    if (!id.isValid() || m_rows.empty())
        return;
    blockSignals(true);
    zvSwallowKernelError(kAssertUnit, kAssertLine, [this, &id] { showLayer(id); });
    blockSignals(false);
}

/// Of the row where the list has one.
void ZvLayerUltralComboBox::showLayer(const ZvDbObjectId &id)
{
    ZvString name;
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
        if (!layer)
            return;
        name = layer->name();
    }
    setEnabled(true);
    const auto found = m_rowsByName.find(name);
    if (found != m_rowsByName.end()) {
        m_currentName = zvToQString(found->first);
        setCurrentIndexEx(found->second, false);
        return;
    }
    // Hidden, or new since the list was read. A blank box stays blank: the picture waits for its next layer of the
    // list.
    const ZvHookedCleared reading(*this);
    const LayerData layer = ZevaUISetting::getLayInfo(id);
    if (layer.name.contains(L'*'))
        return;
    const QColor colour = formatColor(layer.color.entityColor(), zvcmAcadPalette(0), ZvDbObjectId()).color;
    m_currentName = zvToQString(layer.name);
    drawSectionView(layer.isOff, layer.isFrozen, layer.isLocked, colour, m_currentName);
}

void ZvLayerUltralComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (zvNoticeConcerns(noticeFilter(), notice))
        updateData(false);
}

// ---- the list -------------------------------------------------------------------------------------------------------

void ZvLayerUltralComboBox::showPopup()
{
    m_undoKey = nextUndoKey();
    if (!m_table || !m_label) {
        QComboBox::showPopup();
        return;
    }
    if (!hooked) {
        openList();
        return;
    }
    if (zvIsOrdinaryCommandActive())
        return;
    blockSignals(true);
    init();
    blockSignals(true); // the filling has ended the block, and the row that is shown must not be taken for a pick
    m_table->setMinimumWidth(std::max({width(), kNarrowestList, widestName() + kBesideTheNames}));
    const int row = m_rowsByExactName.value(m_currentName, -1);
    QComboBox::setCurrentIndex(row);
    m_table->selectRow(row);
    blockSignals(false);
    openList();
}

bool ZvLayerUltralComboBox::ListSetting::operator==(const ListSetting &other) const
{
    const auto values = [](const ListSetting &s) {
        return std::tie(s.box, s.screen, s.available, s.iconSize, s.column, s.leastWidth, s.rowsHeight,
                        s.needsScrollBar, s.row, s.scrolled);
    };
    return values(*this) == values(other);
}

ZvLayerUltralComboBox::ListSetting ZvLayerUltralComboBox::listSetting() const
{
    ListSetting setting;
    setting.box = QRect(mapToGlobal(QPoint()), size());
    setting.screen = screen()->geometry();
    setting.available = screen()->availableGeometry();
    setting.iconSize = iconSize();
    setting.column = modelColumn();
    setting.leastWidth = m_table->minimumWidth();
    setting.rowsHeight = m_table->verticalHeader()->length();
    const QScrollBar *bar = m_table->horizontalScrollBar();
    setting.needsScrollBar
        = m_table->horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff && bar->minimum() < bar->maximum();
    setting.row = currentIndex();
    setting.scrolled = m_table->verticalScrollBar()->value();
    return setting;
}

/// To find its place the base goes through all rows twice, which with thousands of layers is what the user waits for.
/// A list that opens as it did before gets the place that it had.
void ZvLayerUltralComboBox::openList()
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    // Other styles stop at the most visible items. A list that others open while a button of the mouse is down takes
    // the release for a choice or not by a clock that the base alone can set.
    const bool isQuick = style()->styleHint(QStyle::SH_ComboBox_Popup, &option, this)
        && (m_isInMouseEvent || QGuiApplication::mouseButtons() == Qt::NoButton);
    ListSetting setting = listSetting();
    if (setting.rowsHeight > m_listPlace.height()) { // it fills the screen, at whatever row it opens
        m_listSetting.row = setting.row;
        m_listSetting.scrolled = setting.scrolled;
    }
    if (isQuick && !m_listPlace.isNull() && count() > 0 && !m_table->isVisible() && setting == m_listSetting) {
        openListAgain();
        return;
    }
    m_listSetting = setting;
    m_listPlace = QRect();
    QComboBox::showPopup();
    if (m_table->isVisible())
        m_listPlace = m_table->window()->geometry();
}

void ZvLayerUltralComboBox::openListAgain()
{
    QWidget *popup = m_table->window();
    popup->layout()->activate();
    popup->setGeometry(m_listPlace);
    const bool updates = popup->updatesEnabled();
    popup->setUpdatesEnabled(false);
    popup->raise();
    popup->show();
    QMetaObject::invokeMethod(popup, "updateScrollers");
    m_table->setFocus();
    m_table->scrollTo(m_table->currentIndex(), QAbstractItemView::PositionAtCenter);
    popup->setUpdatesEnabled(updates);
    popup->update();
}

/// Of the rows that stand for layers, with a margin; 0 without any.
int ZvLayerUltralComboBox::widestName()
{
    if (m_measuredFont != font() || m_nameWidths.size() != std::size_t(m_names.size())) {
        m_measuredFont = font();
        m_nameWidths.assign(std::size_t(m_names.size()), -1);
    }
    const QFontMetricsF metrics(font());
    int widest = 0;
    for (int row = 0; row < m_names.size(); ++row) {
        int &width = m_nameWidths[std::size_t(row)];
        if (width < 0)
            width = int(metrics.horizontalAdvance(m_names.at(row)) + kNameMargin);
        widest = std::max(widest, width);
    }
    return widest;
}

void ZvLayerUltralComboBox::hidePopup()
{
    QComboBox::hidePopup();
}

bool ZvLayerUltralComboBox::event(QEvent *event)
{
    const bool wasInMouseEvent = m_isInMouseEvent;
    m_isInMouseEvent = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease
        || event->type() == QEvent::MouseButtonDblClick;
    const bool isTaken = QComboBox::event(event);
    m_isInMouseEvent = wasInMouseEvent;
    return isTaken;
}

void ZvLayerUltralComboBox::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && m_writes > 0) {
        update(); // the base would close the list
        return;
    }
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange
        || event->type() == QEvent::LayoutDirectionChange)
        m_listPlace = QRect();
    QComboBox::changeEvent(event);
}

// ---- the row buttons ------------------------------------------------------------------------------------------------

/// The time in which a row button writes: signals blocked and the control disabled, so that notices cannot enter the
/// list half way. What is written joins the other writes of this opening of the list. A message or dialog in between
/// closes the list; it opens again as it was.
class ZvLayerUltralComboBox::RowWrite
{
public:
    explicit RowWrite(ZvLayerUltralComboBox *combo)
        : m_combo(combo), m_wasOpen(combo->m_table->isVisible()), m_place(combo->m_table->verticalScrollBar()->value())
    {
        ZevaUISetting::restoreFocus2MainView();
        m_combo->blockSignals(true);
        ++m_combo->m_writes;
        m_combo->setEnabled(false);
    }
    ~RowWrite()
    {
        if (!m_combo)
            return;
        m_combo->setEnabled(true);
        m_combo->blockSignals(false);
        --m_combo->m_writes;
        m_combo->m_source.isReusable = false; // the button may show what the layer is not
        if (!m_wasOpen || !m_combo->m_table || m_combo->m_table->isVisible() || !m_combo->isVisible()
            || !m_combo->isEnabled())
            return;
        const ZvQtBlockSignalUtil block(m_combo);
        m_combo->QComboBox::showPopup();
        m_combo->m_table->verticalScrollBar()->setValue(m_place);
    }
    Q_DISABLE_COPY(RowWrite)

    /// False once the control is gone.
    explicit operator bool() const { return !m_combo.isNull(); }

    bool changeLayerStatus(ZevaUISetting::Layer_Info_Type type, const ZvString &name, const ZvCmColor &colour) const
    {
        ZvDbDatabase *database = curDatabase();
        if (!database)
            return ZevaUISetting::changeLayerStatus(type, name, colour);
        const ZvDbDatabasePtr hold(database);
        const ZvDbDatabase::UndoMerge merge(*database, m_wasOpen ? m_combo->m_undoKey : ZvString());
        return ZevaUISetting::changeLayerStatus(type, name, colour);
    }

private:
    const QPointer<ZvLayerUltralComboBox> m_combo;
    const bool m_wasOpen;
    const int m_place;
};

void ZvLayerUltralComboBox::rowButtonClicked(int row, int column)
{
    if (column == ZvLayerTable::kColor)
        recolour(row);
    else
        switchState(row, column);
}

void ZvLayerUltralComboBox::switchState(int row, int column)
{
    const ZvLayerTable::Cell cell = m_table->cellAt(row, column);
    const RowWrite write(this);
    ZvCmColor none;
    none.setColorMethod(ZvCm::kByLayer);
    const bool state = write.changeLayerStatus(kStates[column], m_rows[row].name, none);
    if (write)
        cell.setIcon(m_icons[ZvLayerTable::iconIndex(ZvLayerTable::Column(column), state)]);
}

void ZvLayerUltralComboBox::recolour(int row)
{
    const ZvLayerTable::Cell cell = m_table->cellAt(row, ZvLayerTable::kColor);
    const RowWrite write(this);
    const LayerData record = m_rows[row];
    const ZvJsonPtr params = zvColorDialogParams(zvColorChoiceOf(record.color));
    params->SetDataI(kBackgroundColorKey, kDialogBackground);
    ZvColorChoice choice;
    if (!zvRunColorDialog(params, this, choice) || !write)
        return;
    QColor colour;
    ZvCmColor written;
    if (choice.method == ZvCm::kByACI) {
        written.setColorIndex(std::uint16_t(choice.value));
        colour = zvToQColor(written);
    } else {
        // By layer and by block leave the colour invalid, and black is written. Kept: layers have no such colours, and
        // callers get this for them.
        if (choice.method == ZvCm::kByColor)
            colour = zvPackedToQColor(choice.value);
        written.setRGB(std::uint8_t(colour.red()), std::uint8_t(colour.green()), std::uint8_t(colour.blue()));
    }
    write.changeLayerStatus(ZevaUISetting::kLayerColor, record.name, written);
    if (!write)
        return;
    // The states are those with which the row was filled, and stay until the next notice. Kept: a list that is open
    // does not follow its own buttons.
    const ZvLayerTable::Layer &made = cell.layer();
    if (row == m_currentRow)
        drawSectionView(made.off, made.frozen, made.locked, colour, made.name);
    QPixmap swatch(kSwatchSize, kSwatchSize);
    swatch.fill(colour);
    cell.setIcon(QIcon(swatch));
}
