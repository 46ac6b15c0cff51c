// SPDX-License-Identifier: MIT
#ifndef ZVLAYERTABLE_H
#define ZVLAYERTABLE_H

#include "base/zvarray.h"

#include <QColor>
#include <QHash>
#include <QIcon>
#include <QPair>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTableWidget>
#include <QVector>

#include <array>

class QStyledItemDelegate;

/// What the style made of a button at rest.
struct ZvLayerButtonPicture
{
    QPixmap pixmap;
    QStyle::State state;
    QSize iconSize;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};
/// By the button's object name and its icon's key.
using ZvLayerButtonPictures = QHash<QPair<QString, qint64>, ZvLayerButtonPicture>;

/// The drop-down of the layer combo: a row for each layer, with four live push buttons and the layer's name.
///
/// Thousands of buttons under one viewport make painting quadratic and in the end overflow the stack, since each button
/// looks at all its siblings. So the buttons of kBlockRows rows sit together on a block, a plain child of the viewport,
/// and only the blocks in view are shown. A button stays on its block for life: moving it to another parent would style
/// it anew. To callers nothing differs: cellWidget(row, column) answers with the button all the same, and it can be
/// clicked.
///
/// Up to kAllBuilt rows have their buttons from the start. Of longer lists a row gets its buttons when it first comes
/// into view, and keeps them.
class ZvLayerTable : public QTableWidget
{
    Q_OBJECT
public:
    enum Column { kSwitch, kFreeze, kLock, kColor, kName, kColumns };
    static constexpr int kButtons = kName; ///< The columns before the name.
    static constexpr int kAllBuilt = 2000;
    static constexpr int kBlockRows = 16;

    /// What a row shows.
    struct Layer
    {
        bool off = false;
        bool frozen = false;
        bool locked = false;
        QColor color;
        QString name;
    };

    /// A button of a row at the time it was clicked. Once the row shows another layer, or none, an icon set here is set
    /// on nothing.
    class Cell
    {
    public:
        void setIcon(const QIcon &icon) const;
        /// What the row showed when it was made or last filled: what was clicked since is not in it.
        const Layer &layer() const { return m_layer; }

    private:
        friend class ZvLayerTable;
        QPointer<ZvLayerTable> m_table;
        QPointer<QPushButton> m_button;
        int m_row = -1;
        unsigned m_serial = 0;
        Layer m_layer;
    };

    /// \a icons are the six of the states, in the order on, off, frozen, thawed, locked, unlocked; they may be set
    /// later, before there are rows. Not owned.
    ZvLayerTable(const ZvArray<QIcon> *icons, QWidget *parent);
    ~ZvLayerTable() override;

    /// Shows these layers, a row each. What a row shows already stays as it is.
    void setLayers(const QVector<Layer> &layers);
    /// Adds a row at the end.
    void appendLayer(const Layer &layer);
    Cell cellAt(int row, int column) const;
    /// Position among the icons of a state's icon.
    static int iconIndex(Column column, bool state);

Q_SIGNALS:
    void buttonClicked(int row, int column);
    /// Style or font.
    void lookChanged();

protected:
    void reset() override;
    void updateEditorGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void rowsInserted(const QModelIndex &parent, int first, int last) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last) override;

private:
    struct Row
    {
        bool isLayer = false; // false for a row that others inserted: it gets no buttons
        bool isStale = false; // some button has another icon than its layer asks for
        bool wasSeen = false; // in view, once
        unsigned serial = 0; // changes with the layer
        int block = -1; // -1 while not built
        std::array<QPushButton *, kButtons> buttons = {}; // owned by the block; null while not built
        Layer layer;
    };
    struct Block
    {
        QWidget *widget; // owned by the viewport
        int first; // rows
        int last;
    };

    void showLayer(int row, const Layer &layer);
    void buildRow(int row);
    void updateIcons(const Row &row) const;
    QIcon iconOf(const Layer &layer, int column) const;
    int blockFor(int row);
    void placeRowsInView();
    void placeRow(int row, const QRect &block);
    void forget(Row &row);
    void findRowsOfBlocks();

    const ZvArray<QIcon> *const m_icons;
    QVector<Row> m_rows; // one for each row of the model
    QVector<Block> m_blocks;
    QVector<int> m_shownBlocks;
    mutable QHash<QRgb, QIcon> m_swatches;
    ZvLayerButtonPictures m_pictures; // until the style or its colours change
    QPointer<QStyledItemDelegate> m_delegate; // unless others delete it
    bool m_isPlacing = false;
};

#endif
