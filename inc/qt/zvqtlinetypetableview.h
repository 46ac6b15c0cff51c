// SPDX-License-Identifier: MIT
#ifndef ZVQTLINETYPETABLEVIEW_H
#define ZVQTLINETYPETABLEVIEW_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"
#include "base/zvjson.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "utils/zvraster.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QPixmap>
#include <QPointer>
#include <QString>
#include <QTableView>

class QSortFilterProxyModel;
class QStandardItem;
class QStandardItemModel;

/// The record of a row, under Qt::UserRole of its middle cell. One with an idx of -1 stands for "no row".
struct LtypeData
{
    int idx = -1; ///< As the bag tells it.
    QString name; ///< Of the line type, as the bag tells it.
    QString comments; ///< Its description.
    int xref = 0; ///< 1 for a line type of an external reference.
    ZvDbObjectId ltypeId; ///< The record in the drawing.
};
Q_DECLARE_METATYPE(LtypeData)

/// A table of line types: name, picture of the pattern, description. The host fills it from a property bag, reads the
/// selection back, and renames:
///
/// \code
/// connect(view, &ZvQtLinetypeTableView::ltypeRename, this, [=](QString &name, const QModelIndex &index) {
///     return renameInDrawing(view->getLtypeDataByModelIdx(index).ltypeId, name); // false: the old name stays
/// });
/// view->edit(view->index(row, 0, QModelIndex()));
/// \endcode
///
/// After a rename the host calls setLtypeNameByModelIdx(), so that record and picture go by the new name.
///
/// The first two rows of the bag stay on top however the table is sorted. Which cells can be selected together is the
/// host's choice (setSelectionMode()), and so are keys: beside Ctrl+A the table takes none.
///
/// A picture is drawn when a cell is first painted, by the current drawing, and kept by name for the life of the view.
/// The table does not follow the drawing; the mixin is there for hosts that keep all controls in one list.
class ZV_EXPORT ZvQtLinetypeTableView : public QTableView, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// The columns of both models, from the left.
    enum Column { kNameColumn, kPictureColumn, kCommentsColumn, kColumnCount };
    /// What the constructor's mode may be; any other value is like kPlain, but lists dependent line types.
    enum Mode {
        kPlain = 0, ///< No signals but those of a press or Ctrl+A; line types of external references are left out.
        kInteractive = 1, ///< Clicks, moves and context menus at work; line types of external references have pictures.
    };

    /// \a mode is one of Mode. Owned by \a parent.
    ZvQtLinetypeTableView(int mode, QWidget *parent);
    /// What a form makes: interactive.
    explicit ZvQtLinetypeTableView(QWidget *parent) : ZvQtLinetypeTableView(kInteractive, parent) { }
    ~ZvQtLinetypeTableView() override;

    // ---- setting up

    /// Wires clicks, moves and context menus. Done by initializeData() in the interactive mode.
    void resConnect();
    /// Done by the constructor.
    void initializeData();

    // ---- rows

    // A "model index" is one of the source model, as the signals pass it on: its row counts in the bag's order.

    /// Replaces all rows by those of the array "elements": objects with "idx" (integer), "name", "comments" (texts),
    /// "xref" (integer) and "ltypeId" (object id), each of which may be missing. Without the array the table is empty.
    /// Where an element is left out (see kPlain) an empty row stands in its place, unless no other comes behind it.
    void loadLtypeData(ZvJsonPtr bag);
    /// The current row. False without one, and with a message after a press in the blank space.
    bool getLtypeData(int &idx, QString &name, ZvDbObjectId &id);
    /// The record of a row by its model index; one with an idx of -1 for an index that is none.
    LtypeData getLtypeDataByModelIdx(const QModelIndex &index) const;
    /// The record of the current row; one with an idx of -1 without one.
    LtypeData getCurrLtypeData() const;
    /// The selected rows, in order of selection.
    QList<LtypeData> getCurrLtypeDatas() const;
    /// Selects the row of that name, case ignored, or the top one, and takes the keyboard.
    void setCurrSelLtypeName(QString name);
    /// Renames the current row, its record and picture too unless \a textOnly. The drawing is left alone.
    void setCurrLtypeName(bool textOnly, QString name);
    /// The same for the row of a model index; nothing for one that is none.
    void setLtypeNameByModelIdx(const QModelIndex &index, bool textOnly, QString name);
    /// Changes the description of the current row: what is shown or what is kept, never both.
    void setCurrLtypeComments(bool textOnly, QString comments);
    /// Of the sorted table, as it is seen.
    QModelIndex index(int row, int column, const QModelIndex &parent) const;

    // ---- pictures

    /// The line type's picture, cut to this size in pixels. Null for a name that the drawing does not have.
    QPixmap createLineTypeImage(const QString &name, int width, int height);
    /// Draws one line type of the current drawing. \a image is left alone for a name that it does not have, and for a
    /// width or height below 1.
    void getLineTypeRasterImage(const ZvString &name, int width, int height, ZvSmartPtr<ZvGiRasterImage> &image,
                                bool includeDependent);

    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

Q_SIGNALS:
    /// A press met no cell. Nothing is selected now.
    void clickBlankArea();
    /// All rows were selected or deselected together.
    void clearSignals();
    /// A click, with a model index, or another row became current, with one of the sorted table.
    void ltypeItemSelect(const QModelIndex &index);
    /// \a index is a model index, \a sortIdx the same cell in the sorted table.
    void ltypeItemDoubleClicked(const QModelIndex &index, const QModelIndex &sortIdx);
    /// The user gave the row of the model index \a index a new name. False refuses it. One receiver at most.
    bool ltypeRename(QString &ltypeName, const QModelIndex &index);

public Q_SLOTS:
    /// Passes a click on, with the model index.
    void onTableViewClicked(const QModelIndex &index);
    /// Passes a double click on.
    void onTableViewDoubleClicked(const QModelIndex &index);
    /// Passes a change of the current row on, with an index of the sorted table.
    void onCurrentRowChanged(const QModelIndex &current, const QModelIndex &previous);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void selectAllRows();
    void showRowMenu(const QPoint &pos);
    void showHeaderMenu();
    int currentSourceRow() const;
    QStandardItem *itemAt(int sourceRow, Column column) const;
    LtypeData dataAt(int sourceRow) const;
    void renameRow(int sourceRow, bool textOnly, const QString &name);
    QPixmap pictureOf(const QString &name, int cellWidth);

    const int m_mode;
    bool m_blankClicked = false;
    QPointer<QStandardItemModel> m_model;
    QPointer<QSortFilterProxyModel> m_proxy;
    QMap<QString, QPixmap> m_pixmapCache; // as drawn, with the background masked out; by name
    QHash<QString, QPixmap> m_shown; // cut to the cell; by name
};

#endif
