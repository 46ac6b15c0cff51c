// SPDX-License-Identifier: MIT
#ifndef ZVLINETYPECOMBOBOX_H
#define ZVLINETYPECOMBOBOX_H

#include "zvqtcontrolhelp.h"
#include "zvqtobjectid.h"

#include "base/zvarray.h"
#include "base/zvexport.h"

#include <QComboBox>
#include <QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QImage;
QT_END_NAMESPACE

/// The line type drop-down.
///
/// A row for each line type of the drawing, with a picture of its pattern, its name, and the id of its record under
/// Qt::UserRole. The last row, "其他...", holds no id and opens the line type manager: by a command, or as the service
/// of ZvQtLinetypeService. Line types of external references have no row.
///
/// Unhooked it is a plain picker that tells by lineTypeItemChanged() what the user picks. Hooked it follows the
/// drawing, showing the current line type or that of the selected entities, and writes what the user picks to the
/// drawing; its list is filled anew each time it opens, and does not open while an ordinary command runs.
class ZV_EXPORT ZvLineTypeComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Unhooked, of a fixed height. With \a noPendingItem there is no row "其他...". \a useCommand has that row run the
    /// command and then show what the drawing has, which for an unhooked control is nothing; otherwise it asks the
    /// service, as dialogs want it.
    ZvLineTypeComboBox(QWidget *parent, bool noPendingItem, bool useCommand);
    /// With the row "其他...", which runs the command.
    ZvLineTypeComboBox(bool hook, QWidget *parent);
    /// What a form makes: unhooked, with the row "其他...", which asks the service.
    explicit ZvLineTypeComboBox(QWidget *parent) : ZvLineTypeComboBox(parent, false, false) { }
    ~ZvLineTypeComboBox() override;

    // ---- rows

    /// Fills the list anew.
    void init();
    /// Empties the list and fills it with the drawing's line types. The one that the drawing has first comes last, and
    /// is current; without the row "其他..." it comes first. Row pictures get their standard size of 80 by 25 pixels.
    void readLineTypeInfo();
    /// Adds a row: above the last one, or at the end where there is no row "其他...". Its picture is \a image, cropped
    /// to the size of row pictures, without its background; none for a null image.
    void drawLineItem(ZvDbObjectId &id, QImage &image, QString &name);
    /// Adds the row "其他..." at the end.
    void addPendingItem();
    /// Blank: no row is current.
    void SetNullItem();

    // ---- value

    /// Makes the first row of this record current, as the user would; nothing where there is none.
    void setCurrentLineType(ZvDbObjectId id);
    /// The current drawing's line type of that row's name; null for an unknown name and out of range.
    ZvDbObjectId getLineType(int index) const;
    /// The id of the row that is shown, as getLineType(); null for a blank box.
    ZvDbObjectId getCurrentLineType() const;
    /// The row's text; empty out of range.
    QString getLineTypeString(int index) const;
    /// The name that is shown; empty for a blank box.
    QString getCurrentLineTypeString() const;

    /// Shows what the drawing has now. A line type without a row gets one; one without a picture leaves the control
    /// blank. The argument is not used.
    void updateData(bool);
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    /// The user picked a line type.
    void lineTypeItemChanged(int index);

public Q_SLOTS:
    /// What a change of the current row does: the row "其他..." opens the manager, any other is a pick.
    void currentLTypeIndexChanged(int index);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    struct FilledRows;

    bool isPendingRow(int index) const;
    QIcon rowPicture(const QImage &image) const;
    int addMissingRow(const QString &name);
    void pickPendingRow();
    void pickFromManager();

    ZvArray<ZvDbObjectId> m_ids{0, 8}; // all that were ever listed
    std::int32_t m_iconWidth = 80; // pixels
    std::int32_t m_iconHeight = 25;
    bool m_isSized = false; // got its first size
    std::int32_t m_lastIndex = 0; // last row that was a line type
    bool m_hasNoPendingRow = false;
    bool m_isWheeling = false;
    bool m_usesCommand = true;
    ZvGlobalUIReactorHelp::SLineTypeInfo m_lineTypeInfo;
    std::unique_ptr<FilledRows> m_filled;
};

#endif
