// SPDX-License-Identifier: MIT
#include "zvlinetypecombobox.h"

#include "private/zvaccessibility.h"
#include "private/zvbagreader.h"
#include "private/zvboundcontrol.h"
#include "private/zvrowpicture.h"
#include "private/zvtranslation.h"
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
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSignalBlocker>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr int kFrameHeight = 8; // pixels of a fixed height beyond the text's

constexpr char kPendingName[] = QT_TRANSLATE_NOOP("ZvLineTypeComboBox", "其他...");

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CLAYER", L"CELTYPE"},
        true,
        {{ZvDbLayerTableRecord::desc, ZvObjectRule::kDerived}, {ZvDbLinetypeTableRecord::desc, ZvObjectRule::kDerived}},
    };
    return filter;
}

/// Tells whether the first rows of a list still stand as they were filled, without looking at each of them.
class RowWatch
{
public:
    void start(const QComboBox &combo, int rows)
    {
        if (m_model != combo.model()) {
            m_model = combo.model();
            m_listener = std::make_unique<QObject>();
            const auto touchedFrom = [this](int row) { m_isTouched = m_isTouched || row < m_rows; };
            const auto touched = [this] { m_isTouched = true; };
            const auto changed = [touchedFrom](const QModelIndex &first) { touchedFrom(first.row()); };
            const auto moved = [touchedFrom](const QModelIndex &, int first) { touchedFrom(first); };
            QObject *listener = m_listener.get();
            QObject::connect(m_model, &QAbstractItemModel::dataChanged, listener, changed);
            QObject::connect(m_model, &QAbstractItemModel::rowsInserted, listener, moved);
            QObject::connect(m_model, &QAbstractItemModel::rowsRemoved, listener, moved);
            QObject::connect(m_model, &QAbstractItemModel::rowsMoved, listener, touched);
            QObject::connect(m_model, &QAbstractItemModel::columnsInserted, listener, touched);
            QObject::connect(m_model, &QAbstractItemModel::columnsRemoved, listener, touched);
            QObject::connect(m_model, &QAbstractItemModel::layoutChanged, listener, touched);
            QObject::connect(m_model, &QAbstractItemModel::modelReset, listener, touched);
        }
        m_root = combo.rootModelIndex();
        m_column = combo.modelColumn();
        m_rows = rows;
        m_isTouched = false;
    }
    bool isUntouched(const QComboBox &combo) const
    {
        return m_model && m_model == combo.model() && m_root == combo.rootModelIndex()
            && m_column == combo.modelColumn() && !m_isTouched;
    }

private:
    QPointer<QAbstractItemModel> m_model;
    std::unique_ptr<QObject> m_listener;
    QPersistentModelIndex m_root;
    int m_column = 0;
    int m_rows = 0;
    bool m_isTouched = false;
};

QString currentLineTypeName(const ZvDbDatabase &drawing, const QString &fallback)
{
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(drawing.celtype(), ZvDb::kForRead);
    return record ? zvToQString(record->name()) : fallback;
}

} // namespace

/// The rows of the last fill, in the drawing's order. A list is filled each time it opens, and hardly ever has anything
/// changed: the renderer hands out the same raster then, and a row whose id, name and raster are the same is left
/// alone.
struct ZvLineTypeComboBox::FilledRows
{
    struct Row
    {
        ZvDbObjectId id;
        ZvString name;
        ZvSmartPtr<ZvGiRasterImage> raster; // keeps its address from being used again
        QIcon icon;
    };

    std::vector<Row> all;
    RowWatch watch;
};

// ---- construction ---------------------------------------------------------------------------------------------------

ZvLineTypeComboBox::ZvLineTypeComboBox(QWidget *parent, bool noPendingItem, bool useCommand)
    : QComboBox(parent), CZvQtControlHelp(false, &m_lineTypeInfo), m_hasNoPendingRow(noPendingItem),
      m_usesCommand(useCommand), m_filled(std::make_unique<FilledRows>())
{
    QFont fixedPitch = font();
    fixedPitch.setFixedPitch(true);
    setFixedHeight(int(QFontMetricsF(fixedPitch).height()) + kFrameHeight);
    init();
    zvTranslateRows(this, "ZvLineTypeComboBox", {kPendingName});
    zvNameForReaders(this);
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &ZvLineTypeComboBox::currentLTypeIndexChanged);
}

ZvLineTypeComboBox::ZvLineTypeComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, &m_lineTypeInfo), m_filled(std::make_unique<FilledRows>())
{
    const ZvUpdateBusJoin joined(*this);
    init();
    zvTranslateRows(this, "ZvLineTypeComboBox", {kPendingName});
    zvNameForReaders(this);
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
    std::vector<FilledRows::Row> before = std::move(m_filled->all);
    std::vector<FilledRows::Row> rows;
    rows.reserve(before.size());
    std::vector<int> changed;
    const auto iconOf = [&](const ZvSmartPtr<ZvGiRasterImage> &raster) {
        for (const auto *list : {&before, &rows}) {
            for (const FilledRows::Row &row : *list) {
                if (row.raster && row.raster.get() == raster.get())
                    return row.icon; // another of the same picture, or the same one at another place
            }
        }
        return rowPicture(zvutZvGiRasterImage2QImage(raster));
    };
    ZevaUISetting::getLineTypeInfo(m_iconWidth, m_iconHeight,
                                   [&](ZvSmartPtr<ZvGiRasterImage> &raster, ZvString &name, ZvDbObjectId &id) {
                                       if (!id.isValid()) {
                                           update();
                                           return;
                                       }
                                       const std::size_t position = rows.size();
                                       if (position < before.size()) {
                                           FilledRows::Row &row = before[position];
                                           if (row.id == id && row.raster.get() == raster.get() && row.name == name) {
                                               rows.push_back(std::move(row));
                                               return;
                                           }
                                       }
                                       if (!m_ids.contains(id))
                                           m_ids.append(id);
                                       changed.push_back(int(position));
                                       rows.push_back({id, name, raster, iconOf(raster)});
                                   });

    // New rows go before the last one, which is not yet the row "其他...": so the type that comes first is pushed to
    // the end by the others, and is still the current one there. Kept: users know it above "其他...".
    const int number = int(rows.size());
    const bool isPushedDown = !m_hasNoPendingRow && number > 0;
    const auto placeOf = [&](int position) { return isPushedDown ? (position + number - 1) % number : position; };
    if (m_filled->watch.isUntouched(*this) && before.size() == rows.size()) {
        if (count() > number)
            model()->removeRows(number, count() - number, rootModelIndex());
        for (const int position : changed) {
            const FilledRows::Row &row = rows[std::size_t(position)];
            model()->setItemData(model()->index(placeOf(position), modelColumn(), rootModelIndex()),
                                 {{Qt::DisplayRole, zvToQString(row.name)},
                                  {Qt::DecorationRole, row.icon},
                                  {Qt::UserRole, QVariant::fromValue(row.id)}});
        }
    } else {
        std::vector<ZvRow> listed(rows.size());
        for (int position = 0; position < number; ++position) {
            const FilledRows::Row &row = rows[std::size_t(position)];
            listed[std::size_t(placeOf(position))] = {row.icon, zvToQString(row.name), QVariant::fromValue(row.id)};
        }
        clear();
        zvAppendRows(*this, listed);
    }
    m_filled->all = std::move(rows);
    m_filled->watch.start(*this, number);
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
    insertItem(count(), rowPicture(QImage()), tr(kPendingName), QVariant());
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
    if (zvRefillForOpening(*this, *this, [this] { init(); }))
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
