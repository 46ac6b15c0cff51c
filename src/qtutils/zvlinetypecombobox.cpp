// SPDX-License-Identifier: MIT
#include "zvlinetypecombobox.h"

#include "private/zvbagreader.h"
#include "private/zvboundcontrol.h"
#include "private/zvrowpicture.h"
#include "zevaqt.h"
#include "zvqtlinetypeservice.h"
#include "zvqtrasterimage.h"

#include "base/zvregistry.h"
#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "db/zvdbrecords.h"

#include <QAbstractItemModel>
#include <QBitmap>
#include <QFontMetricsF>
#include <QPainter>
#include <QPointer>
#include <QSignalBlocker>

#include <algorithm>
#include <vector>

namespace {

constexpr int kFrameHeight = 8; // pixels of a fixed height beyond the text's

const QString &pendingName()
{
    static const QString name = QStringLiteral("其他...");
    return name;
}

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CLAYER", L"CELTYPE"},
        true,
        {{ZvDbLayerTableRecord::desc, ZvObjectRule::kDerived}, {ZvDbLinetypeTableRecord::desc, ZvObjectRule::kDerived}},
    };
    return filter;
}

/// Whether these rows stand in the list already, with whatever behind them: they are not touched then. A list is filled
/// each time it opens, and hardly ever has anything changed.
bool beginsWith(const QComboBox &combo, const std::vector<ZvRow> &rows)
{
    if (rows.empty() || std::size_t(combo.count()) < rows.size())
        return false;
    const QAbstractItemModel &model = *combo.model();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ZvRow &row = rows[i];
        const QModelIndex index = model.index(int(i), combo.modelColumn(), combo.rootModelIndex());
        const QVariant held = index.data(Qt::UserRole);
        if (held.userType() != row.data.userType() || held.value<ZvDbObjectId>() != row.data.value<ZvDbObjectId>()
            || index.data(Qt::DisplayRole).toString() != row.text
            || index.data(Qt::DecorationRole).value<QIcon>().cacheKey() != row.icon.cacheKey())
            return false;
    }
    return true;
}

QString currentLineTypeName(const ZvDbDatabase &drawing, const QString &fallback)
{
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(drawing.celtype(), ZvDb::kForRead);
    return record ? zvToQString(record->name()) : fallback;
}

} // namespace

/// Row pictures of the last fill, with the rasters they were made of, in the drawing's order. The renderer hands out
/// the same raster as long as nothing in it changes, so that most refills make no picture.
struct ZvLineTypeComboBox::KeptPictures
{
    struct Kept
    {
        ZvSmartPtr<ZvGiRasterImage> raster; // keeps its address from being used again
        QIcon icon;
    };

    /// Null for one that was not there. \a position is where it was, if the drawing has no more and no fewer by now.
    const Kept *find(const ZvGiRasterImage *raster, std::size_t position) const
    {
        if (position < all.size() && all[position].raster.get() == raster)
            return &all[position];
        const auto found
            = std::find_if(all.begin(), all.end(), [raster](const Kept &kept) { return kept.raster.get() == raster; });
        return found != all.end() ? &*found : nullptr;
    }

    std::vector<Kept> all;
};

// ---- construction ---------------------------------------------------------------------------------------------------

ZvLineTypeComboBox::ZvLineTypeComboBox(QWidget *parent, bool noPendingItem, bool useCommand)
    : QComboBox(parent), CZvQtControlHelp(false, &m_lineTypeInfo), m_hasNoPendingRow(noPendingItem),
      m_usesCommand(useCommand), m_pictures(std::make_unique<KeptPictures>())
{
    QFont fixedPitch = font();
    fixedPitch.setFixedPitch(true);
    setFixedHeight(int(QFontMetricsF(fixedPitch).height()) + kFrameHeight);
    init();
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &ZvLineTypeComboBox::currentLTypeIndexChanged);
}

ZvLineTypeComboBox::ZvLineTypeComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, &m_lineTypeInfo), m_pictures(std::make_unique<KeptPictures>())
{
    zvJoinUpdateBus(*this);
    init();
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &ZvLineTypeComboBox::currentLTypeIndexChanged);
}

ZvLineTypeComboBox::~ZvLineTypeComboBox()
{
    zvLeaveUpdateBus(*this);
}

// ---- rows -----------------------------------------------------------------------------------------------------------

void ZvLineTypeComboBox::init()
{
    readLineTypeInfo();
    if (!m_hasNoPendingRow)
        addPendingItem();
}

void ZvLineTypeComboBox::readLineTypeInfo()
{
    qRegisterMetaType<ZvDbObjectId>("ZvDbObjectId");
    const ZvHookedCleared filling(*this);
    const QSignalBlocker quiet(this);
    zvResetRowPictures(*this, m_iconWidth, m_iconHeight);
    std::vector<ZvRow> rows;
    KeptPictures pictures;
    ZevaUISetting::getLineTypeInfo(
        m_iconWidth, m_iconHeight, [&](ZvSmartPtr<ZvGiRasterImage> &raster, ZvString &name, ZvDbObjectId &id) {
            if (!id.isValid()) {
                update();
                return;
            }
            // Refills deliver the same in the same order, as a rule.
            const std::size_t position = rows.size();
            const bool isKnown = int(position) < m_ids.length() && m_ids[int(position)] == id;
            if (!isKnown && !m_ids.contains(id))
                m_ids.append(id);
            const KeptPictures::Kept *kept = m_pictures->find(raster.get(), position);
            pictures.all.push_back(kept ? *kept
                                        : KeptPictures::Kept{raster, rowPicture(zvutZvGiRasterImage2QImage(raster))});
            rows.push_back({pictures.all.back().icon, zvToQString(name), QVariant::fromValue(id)});
        });
    std::swap(*m_pictures, pictures);
    // New rows go before the last one, which is not yet the row "其他...": so the type that comes first is pushed to
    // the end by the others, and is still the current one there. Kept: users know it above "其他...".
    const bool isPushedDown = !m_hasNoPendingRow && !rows.empty();
    if (isPushedDown)
        std::rotate(rows.begin(), rows.begin() + 1, rows.end());
    if (beginsWith(*this, rows)) {
        model()->removeRows(int(rows.size()), count() - int(rows.size()), rootModelIndex());
    } else {
        clear();
        zvAppendRows(*this, rows);
    }
    setCurrentIndex(isPushedDown ? count() - 1 : 0);
}

QIcon ZvLineTypeComboBox::rowPicture(const QImage &image) const
{
    QPixmap picture(m_iconWidth, m_iconHeight);
    picture.fill(Qt::transparent);
    if (!image.isNull()) {
        QPixmap line = QPixmap::fromImage(image);
        line.setMask(line.createHeuristicMask(true)); // the background falls away
        QPainter painter(&picture);
        painter.drawPixmap(0, 0, line);
    }
    return QIcon(picture);
}

void ZvLineTypeComboBox::drawLineItem(ZvDbObjectId &id, QImage &image, QString &name)
{
    insertItem(m_hasNoPendingRow ? count() : count() - 1, rowPicture(image), name, QVariant::fromValue(id));
}

void ZvLineTypeComboBox::addPendingItem()
{
    // In an empty list the row becomes current at once, which is no pick.
    const QSignalBlocker quiet(this);
    insertItem(count(), rowPicture(QImage()), pendingName(), QVariant());
}

bool ZvLineTypeComboBox::isPendingRow(int index) const
{
    return !m_hasNoPendingRow && index == count() - 1 && !itemData(index).canConvert<ZvDbObjectId>();
}

void ZvLineTypeComboBox::SetNullItem()
{
    setCurrentIndex(-1);
}

// ---- value ----------------------------------------------------------------------------------------------------------

void ZvLineTypeComboBox::setCurrentLineType(ZvDbObjectId id)
{
    for (int row = 0; row < count(); ++row) {
        const QVariant held = itemData(row);
        if (held.canConvert<ZvDbObjectId>() && held.value<ZvDbObjectId>() == id) {
            setCurrentIndex(row);
            return;
        }
    }
}

ZvDbObjectId ZvLineTypeComboBox::getLineType(int index) const
{
    const QString name = itemText(index);
    return name.isEmpty() ? ZvDbObjectId() : ZevaUISetting::findLineStyleTableRecordByName(zvToZvString(name), nullptr);
}

ZvDbObjectId ZvLineTypeComboBox::getCurrentLineType() const
{
    return getLineType(currentIndex());
}

QString ZvLineTypeComboBox::getLineTypeString(int index) const
{
    return itemText(index);
}

QString ZvLineTypeComboBox::getCurrentLineTypeString() const
{
    return getLineTypeString(currentIndex());
}

// ---- the drawing ----------------------------------------------------------------------------------------------------

/// -1 where the drawing has no picture of that name: line types of external references have none.
int ZvLineTypeComboBox::addMissingRow(const QString &name)
{
    const ZvHookedCleared adding(*this);
    ZvSmartPtr<ZvGiRasterImage> raster;
    ZvDbObjectId id = ZevaUISetting::getLineTypeRasterImage(zvToZvString(name), m_iconWidth, m_iconHeight, raster);
    QImage image = zvutZvGiRasterImage2QImage(raster);
    if (image.isNull()) {
        update();
        return -1;
    }
    QString text = name;
    drawLineItem(id, image, text);
    return zvFindRow(*this, name, ZvNameMatch::kExact);
}

void ZvLineTypeComboBox::updateData(bool)
{
    if (!zvCurrentDocument())
        return;
    const ZvShown shown = zvWhatToShow(m_lineTypeInfo);
    if (zvIsBlank(shown)) {
        zvShowBlank(*this, shown);
        return;
    }
    QString name = zvToQString(m_lineTypeInfo.value);
    if (shown == ZvShown::kCurrentValue)
        name = currentLineTypeName(*zvCurrentDocumentDatabase(), name);

    const ZvQtBlockSignalUtil block(this);
    setEnabled(true);
    int row = zvFindRow(*this, name, ZvNameMatch::kExact);
    if (row < 0)
        row = addMissingRow(name);
    setCurrentIndex(row);
    m_lastIndex = row;
}

void ZvLineTypeComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (zvNoticeConcerns(noticeFilter(), notice))
        updateData(false);
}

// ---- the user -------------------------------------------------------------------------------------------------------

bool ZvLineTypeComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvLineTypeComboBox::resizeEvent(QResizeEvent *event)
{
    QComboBox::resizeEvent(event);
    zvFitRowPictures(*this, *event, m_isSized, m_iconWidth, m_iconHeight);
}

void ZvLineTypeComboBox::wheelEvent(QWheelEvent *event)
{
    m_isWheeling = true;
    QComboBox::wheelEvent(event);
    m_isWheeling = false;
}

void ZvLineTypeComboBox::showPopup()
{
    if (zvRefillForOpening(*this, *this, ZvOpening::kNotDuringCommand, [this] { init(); }))
        QComboBox::showPopup();
}

void ZvLineTypeComboBox::hidePopup()
{
    QComboBox::hidePopup();
}

void ZvLineTypeComboBox::currentLTypeIndexChanged(int index)
{
    if (isPendingRow(index)) {
        ZevaUISetting::restoreFocus2MainView();
        pickPendingRow();
        return;
    }
    const bool isPicked
        = zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCeLType({}, name); });
    if (!isPicked)
        return;
    m_lastIndex = index;
    Q_EMIT lineTypeItemChanged(index);
}

void ZvLineTypeComboBox::pickPendingRow()
{
    if (m_isWheeling) {
        setCurrentIndex(std::max(count() - 2, 0)); // a pick like others, of the row that the wheel stays on
        return;
    }
    if (!m_usesCommand) {
        pickFromManager();
        return;
    }
    const ZvQtBlockSignalUtil block(this);
    setCurrentIndex(m_lastIndex);
    zvedMenuMacro(L"_LINETYPE\n", true);
    updateData(false);
}

void ZvLineTypeComboBox::pickFromManager()
{
    const ZvRxObjectPtr registered(zv_arbitDict_getservice(ZvString(wchar_t(ZvQtLinetypeService::kKey))));
    if (!registered)
        return; // the row stays current until the next notice
    auto *manager = zvqt_queryRequired<ZvQtLinetypeService>(registered.get());
    const ZvJsonPtr bag = ElementValue::createObject(2);
    bag->SetDataSW("curSelName", zvToZvString(itemText(m_lastIndex)));

    const QPointer<ZvLineTypeComboBox> self(this);
    manager->manageLinetypes(curDatabase(), bag);
    if (!self)
        return; // the drawing's window, and the combo with it, may go while the manager runs
    std::uint64_t chosen = 0;
    bag->GetDataId("ltypeId", chosen); // "idx" and "ltypeName" say the same once more
    readLineTypeInfo();
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(-1); // so that whatever was chosen is a pick, also of the row that a filled list shows
    }
    const ZvDbObjectId id = ZvDbObjectId::fromInt64(chosen);
    if (id.isValid())
        setCurrentLineType(id);
    if (!self)
        return;
    const QSignalBlocker quiet(this);
    if (currentIndex() < 0)
        setCurrentIndex(m_lastIndex); // nothing was chosen
    addPendingItem();
}
