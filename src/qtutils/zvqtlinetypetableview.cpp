// SPDX-License-Identifier: MIT
#include "zvqtlinetypetableview.h"

#include "private/zvaccessibility.h"
#include "private/zvbagreader.h"
#include "private/zvcurrentdrawing.h"
#include "private/zvlinetypepicture.h"
#include "private/zvqtstring.h"
#include "private/zvrasterview.h"
#include "private/zvtablewalk.h"
#include "private/zvtranslation.h"
#include "zvpreviewitemdelegate.h"
#include "zvsortfilterproxymodel.h"

#include "core/zvui.h"
#include "db/zvdbrecords.h"

#include <QBitmap>
#include <QCursor>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStandardItemModel>

namespace {

constexpr int kPictureColumnWidth = 250;
constexpr int kWidthStep = 1000; // pixels: cells grow a lot before a picture falls short
constexpr int kPictureHeight = 30;
constexpr double kLineMargin = 10.0; // of the line, at the picture's right end
constexpr double kRepeat = 25.0;

// Codes of the message box: yes, no and cancel; the warning picture; icon and text.
constexpr int kYesNoCancel = 3;
constexpr int kWarning = 64;
constexpr int kMessageRow = 1;

QImage::Format formatOf(const ZvGiRasterImage &raster)
{
    // Blue first is read as red first: the pictures are black on white, and it does not show.
    return zvIs32BitsWithAlpha(raster.pixelFormat()) ? QImage::Format_RGBX8888 : QImage::Format_RGB888;
}

LtypeData toLtypeData(const ZvJsonPtr &element)
{
    LtypeData data;
    data.idx = zvBagInt(element, "idx", 0);
    data.name = zvBagString(element, "name");
    data.comments = zvBagString(element, "comments");
    data.xref = zvBagInt(element, "xref", 0);
    data.ltypeId = zvBagId(element, "ltypeId");
    return data;
}

} // namespace

ZvQtLinetypeTableView::ZvQtLinetypeTableView(int mode, QWidget *parent)
    : QTableView(parent), CZvQtControlHelp(false, nullptr), m_mode(mode)
{
    static const int type = qRegisterMetaType<LtypeData>("LtypeData");
    Q_UNUSED(type)
    initializeData();
}

ZvQtLinetypeTableView::~ZvQtLinetypeTableView() = default;

void ZvQtLinetypeTableView::initializeData()
{
    zvNameForReaders(this);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    setSortingEnabled(true);

    m_model = new QStandardItemModel(this);
    m_proxy = new ZvSortFilterProxyModel(this);
    m_proxy->setSourceModel(m_model);
    m_model->sort(kNameColumn, Qt::AscendingOrder);
    setModel(m_proxy);

    m_model->setColumnCount(kColumnCount);
    const auto setTitles = [this] {
        const char *const titles[] = {QT_TR_NOOP("线型"), QT_TR_NOOP("外观"), QT_TR_NOOP("说明")};
        for (int column = 0; column < kColumnCount; ++column)
            m_model->setHeaderData(column, Qt::Horizontal, tr(titles[column]), Qt::EditRole);
    };
    setTitles();
    zvOnLanguageChange(this, setTitles);
    horizontalHeader()->resizeSection(kPictureColumn, kPictureColumnWidth);

    setItemDelegate(new ZvPreviewItemDelegate(this));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    if (m_mode == kInteractive)
        resConnect();
}

void ZvQtLinetypeTableView::resConnect()
{
    connect(this, &QAbstractItemView::clicked, this, &ZvQtLinetypeTableView::onTableViewClicked);
    connect(this, &QAbstractItemView::doubleClicked, this, &ZvQtLinetypeTableView::onTableViewDoubleClicked);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ZvQtLinetypeTableView::onCurrentRowChanged);
    connect(this, &QWidget::customContextMenuRequested, this, &ZvQtLinetypeTableView::showRowMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, &ZvQtLinetypeTableView::showHeaderMenu);
}

// ---- what the user does

void ZvQtLinetypeTableView::onTableViewClicked(const QModelIndex &index)
{
    Q_EMIT ltypeItemSelect(m_proxy->mapToSource(index));
}

void ZvQtLinetypeTableView::onTableViewDoubleClicked(const QModelIndex &index)
{
    Q_EMIT ltypeItemDoubleClicked(m_proxy->mapToSource(index), index);
}

void ZvQtLinetypeTableView::onCurrentRowChanged(const QModelIndex &current, const QModelIndex &)
{
    // As it comes, of the sorted table: receivers that need the record ask for the current one.
    Q_EMIT ltypeItemSelect(current);
}

void ZvQtLinetypeTableView::selectAllRows()
{
    selectAll();
    Q_EMIT clearSignals();
}

void ZvQtLinetypeTableView::showRowMenu(const QPoint &pos)
{
    if (!indexAt(pos).isValid())
        return;
    QMenu menu;
    menu.addAction(tr("全部选择(&S)"), this, &ZvQtLinetypeTableView::selectAllRows);
    menu.addAction(tr("全部清除(&C)"), this, [this] {
        clearSelection();
        Q_EMIT clearSignals();
    });
    menu.exec(QCursor::pos());
}

void ZvQtLinetypeTableView::showHeaderMenu()
{
    QMenu menu;
    menu.addAction(tr("最大化列标题"), this, &QTableView::resizeColumnsToContents);
    menu.exec(QCursor::pos());
}

void ZvQtLinetypeTableView::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_A)
        selectAllRows();
    // Past the table's own keys on purpose: hosts give the keys that move and edit meanings of their own.
    QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void ZvQtLinetypeTableView::mousePressEvent(QMouseEvent *event)
{
    QAbstractItemView::mousePressEvent(event); // NOLINT(bugprone-parent-virtual-call)
    const bool isBlank = !indexAt(event->localPos().toPoint()).isValid();
    if (isBlank) {
        clearSelection();
        Q_EMIT clickBlankArea();
    }
    m_blankClicked = isBlank; // last: a host that hears of the press can still read the row that was current
}

void ZvQtLinetypeTableView::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }

// ---- rows

void ZvQtLinetypeTableView::loadLtypeData(ZvJsonPtr bag)
{
    m_proxy->sort(-1); // in the bag's order the rows go in one piece
    m_model->removeRows(0, m_model->rowCount());
    if (!zvBagTree(bag, "elements"))
        return;
    const QVector<ZvJsonPtr> elements = zvBagElements(bag, "elements");
    // Sorted once at the end, not at each cell.
    m_proxy->setDynamicSortFilter(false);
    const auto isLeftOut = [this](const LtypeData &data) { return m_mode == kPlain && data.xref == 1; };
    QVector<LtypeData> datas;
    datas.reserve(elements.size());
    int rows = 0;
    for (const ZvJsonPtr &element : elements) {
        datas.append(toLtypeData(element));
        if (!isLeftOut(datas.last()))
            rows = datas.size();
    }
    m_model->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        const LtypeData &data = datas[row];
        // The row stays free: its number is the element's place in the bag.
        if (isLeftOut(data))
            continue;
        auto *picture = new QStandardItem;
        picture->setData(QVariant::fromValue(data), Qt::UserRole);
        m_model->setItem(row, kNameColumn, new QStandardItem(data.name));
        m_model->setItem(row, kPictureColumn, picture);
        m_model->setItem(row, kCommentsColumn, new QStandardItem(data.comments));
    }
    m_proxy->setDynamicSortFilter(true);
    m_proxy->sort(kNameColumn, Qt::AscendingOrder);
    // The arrow of the header is told, and no second sorting comes of it.
    const QSignalBlocker quiet(horizontalHeader());
    horizontalHeader()->setSortIndicator(kNameColumn, Qt::AscendingOrder);
}

int ZvQtLinetypeTableView::currentSourceRow() const
{
    return m_proxy->mapToSource(currentIndex()).row();
}

QStandardItem *ZvQtLinetypeTableView::itemAt(int sourceRow, Column column) const
{
    return sourceRow < 0 ? nullptr : m_model->item(sourceRow, column);
}

LtypeData ZvQtLinetypeTableView::dataAt(int sourceRow) const
{
    const QStandardItem *item = itemAt(sourceRow, kPictureColumn);
    return item ? item->data(Qt::UserRole).value<LtypeData>() : LtypeData();
}

bool ZvQtLinetypeTableView::getLtypeData(int &idx, QString &name, ZvDbObjectId &id)
{
    const int row = currentSourceRow();
    if (m_blankClicked) {
        zvuiMessageBoxEx(L"Zevara", zvToZvString(tr("请选择单个线型。")), nullptr, kYesNoCancel, kMessageRow, kWarning);
        return false;
    }
    if (!itemAt(row, kPictureColumn))
        return false;
    const LtypeData data = dataAt(row);
    idx = data.idx;
    name = data.name;
    id = data.ltypeId;
    return true;
}

LtypeData ZvQtLinetypeTableView::getLtypeDataByModelIdx(const QModelIndex &index) const
{
    return dataAt(index.row());
}

LtypeData ZvQtLinetypeTableView::getCurrLtypeData() const
{
    return dataAt(currentSourceRow());
}

QList<LtypeData> ZvQtLinetypeTableView::getCurrLtypeDatas() const
{
    QList<LtypeData> list;
    const QModelIndexList cells = selectedIndexes();
    for (const QModelIndex &cell : cells) {
        if (cell.column() == kNameColumn)
            list.append(dataAt(m_proxy->mapToSource(cell).row()));
    }
    return list;
}

void ZvQtLinetypeTableView::setCurrSelLtypeName(QString name)
{
    int row = 0;
    for (int i = 0; i < m_model->rowCount(); ++i) {
        const QStandardItem *item = itemAt(i, kNameColumn);
        if (item && item->text().compare(name, Qt::CaseInsensitive) == 0) {
            row = m_proxy->mapFromSource(item->index()).row();
            break;
        }
    }
    setFocus(Qt::OtherFocusReason);
    selectRow(row);
}

void ZvQtLinetypeTableView::renameRow(int sourceRow, bool textOnly, const QString &name)
{
    if (!textOnly) {
        QStandardItem *item = itemAt(sourceRow, kPictureColumn);
        if (!item)
            return;
        LtypeData data = dataAt(sourceRow);
        // The old name keeps its picture, for rows that come back under it; names without one get an empty entry.
        const QPixmap picture = m_pixmapCache[data.name];
        m_pixmapCache[name] = picture;
        m_shown.remove(name);
        data.name = name;
        item->setData(QVariant::fromValue(data), Qt::UserRole);
    }
    if (QStandardItem *item = itemAt(sourceRow, kNameColumn))
        item->setText(name);
}

void ZvQtLinetypeTableView::setCurrLtypeName(bool textOnly, QString name)
{
    renameRow(currentSourceRow(), textOnly, name);
}

void ZvQtLinetypeTableView::setLtypeNameByModelIdx(const QModelIndex &index, bool textOnly, QString name)
{
    if (index.isValid())
        renameRow(index.row(), textOnly, name);
}

void ZvQtLinetypeTableView::setCurrLtypeComments(bool textOnly, QString comments)
{
    const int row = currentSourceRow();
    QStandardItem *item = itemAt(row, textOnly ? kCommentsColumn : kPictureColumn);
    if (!item)
        return;
    if (textOnly) {
        item->setText(comments);
        return;
    }
    LtypeData data = dataAt(row);
    data.comments = comments;
    item->setData(QVariant::fromValue(data), Qt::UserRole);
}

QModelIndex ZvQtLinetypeTableView::index(int row, int column, const QModelIndex &parent) const
{
    return m_proxy->index(row, column, parent);
}

// ---- pictures

QPixmap ZvQtLinetypeTableView::createLineTypeImage(const QString &name, int width, int height)
{
    const auto shown = m_shown.constFind(name);
    if (shown != m_shown.constEnd() && shown->size() == QSize(width, height))
        return *shown;
    const QPixmap picture = pictureOf(name, width);
    QPixmap cut(width, height);
    if (picture.isNull() || cut.isNull())
        return QPixmap();
    cut.fill(Qt::transparent);
    QPainter(&cut).drawPixmap(0, 0, picture);
    m_shown.insert(name, cut);
    return cut;
}

QPixmap ZvQtLinetypeTableView::pictureOf(const QString &name, int cellWidth)
{
    const auto kept = m_pixmapCache.constFind(name);
    if (kept != m_pixmapCache.constEnd() && !kept->isNull())
        return *kept;
    ZvSmartPtr<ZvGiRasterImage> raster;
    getLineTypeRasterImage(zvToZvString(name), (cellWidth / kWidthStep + 1) * kWidthStep, kPictureHeight, raster,
                           m_mode == kInteractive);
    if (!raster) {
        QWidget::update(); // the frame, not the cells: no paint leads to the next
        return QPixmap();
    }
    const QImage image = zvRasterView(*raster, formatOf(*raster));
    if (image.isNull())
        return QPixmap();
    // Of a copy: a pixmap may go on using the image's pixels, which are the raster's.
    QPixmap picture = QPixmap::fromImage(image.copy());
    picture.setMask(picture.createHeuristicMask(true));
    m_pixmapCache[name] = picture;
    return picture;
}

void ZvQtLinetypeTableView::getLineTypeRasterImage(const ZvString &name, int width, int height,
                                                   ZvSmartPtr<ZvGiRasterImage> &image, bool includeDependent)
{
    const ZvDbDatabasePtr database(zvCurrentDocumentDatabase());
    if (!database || name.isEmpty() || width < 1 || height < 1)
        return;
    zvWalkRecords<ZvDbLinetypeTableRecord>(database->linetypeTableId(), [&](const ZvDbLinetypeTableRecord &record) {
        if ((record.isDependent() && !includeDependent) || record.name().compareNoCase(name) != 0)
            return true;
        const double scale = zvLinetypePictureScale(record.patternLength(), kRepeat, width, database->celtscale());
        const ZvSmartPtr<ZvDbLine> line = zvMakeLinetypeLine(record.objectId(), width - kLineMargin, scale);
        zvSetOpaqueBlack(*line);
        image = zvDrawLinetypeLine(database, line, zvLinetypePictureOptions(width, height));
        return false;
    });
}
