// SPDX-License-Identifier: MIT
#ifndef ZVLINEWIDTHCOMBOBOX_H
#define ZVLINEWIDTHCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"
#include "db/zvdbtypes.h"

#include <QComboBox>
#include <QString>

/// The line weight drop-down.
///
/// A row for each line weight with a sample line, the label of ZevaUISetting::getLineName(), and the weight as an int
/// under Qt::UserRole: hundredths of a millimetre, -1 ByLayer, -2 ByBlock, -3 the default. The samples grow by at most
/// one pixel from row to row, so that a list of real weights still fits.
///
/// Unhooked it is a plain picker that tells by lineWeightItemChanged() what the user picks. Hooked it follows the
/// drawing, showing the current weight or that of the selected entities, and writes what the user picks to the drawing;
/// its list is filled anew, in millimetres, each time it opens, and does not open while an ordinary command runs.
class ZV_EXPORT ZvLineWidthComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Rows beside the weights themselves, in this order at the head of the list: bits to be combined.
    enum ItemMask {
        kItemByLayer = 1,
        kItemByBlock = 2,
        kItemDefault = 4,
        kItemUseObjects = 8, ///< "使用对象线宽": no weight, so that picking it writes nothing.
    };

    /// Unhooked, with the first three of ItemMask.
    explicit ZvLineWidthComboBox(QWidget *parent);
    /// \a mask holds bits of ItemMask.
    ZvLineWidthComboBox(bool hook, int mask, QWidget *parent);
    ~ZvLineWidthComboBox() override;

    // ---- rows

    /// Empties the list; row pictures get their standard size of 80 by 25 pixels.
    void initializeData();
    /// Fills the list anew, with labels in millimetres or in inches. A hooked control finds its rows by the millimetre
    /// labels alone: with inches it gathers a plain row for each weight that it has to show.
    void init(bool inch);
    /// Adds a row at the end. Its sample is one pixel wide; that of the default has its own weight's width.
    void drawLine(QString &name, ZvDb::LineWeight weight);
    /// The same with the sample that the list has: as wide as the weight wants, but at most one pixel wider than the
    /// row that was added before it, and then at most half as wide as the picture is high.
    void drawLine(QString &&name, ZvDb::LineWeight weight);
    /// Adds another row for the weight of the current one; removes nothing.
    void updateListWidthCurlayout(bool inch);
    /// Blank: no row is current.
    void SetNullItem();
    /// Samples are drawn this much wider, as a part of their width: 1.0 doubles it. For rows that are added from now
    /// on.
    void setLineweightScale(double scale);

    // ---- value

    /// 0 for a row without a weight. Asserts for an index out of range, and gives the default.
    ZvDb::LineWeight GetLineWeight(int index) const;
    /// 0 also when no row is current.
    ZvDb::LineWeight GetCurrentLineWeight() const;
    /// First row of this weight, -1 when there is none.
    int getLineWidget(ZvDb::LineWeight weight) const;
    /// The same, under another name that callers use.
    int findItemByLineWeight(ZvDb::LineWeight weight) const;

    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

    void showPopup() override;

Q_SIGNALS:
    /// The user picked a row, maybe one without a weight.
    void lineWeightItemChanged(int index);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's weight, and lineWeightItemChanged() is
    /// emitted.
    void currentWeightIndexChanged(int index);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void addSampleRow(const QString &name, ZvDb::LineWeight weight, int penWidth);

    std::int32_t m_iconWidth = 80; // pixels
    std::int32_t m_penWidth = 1; // of the row drawn last, pixels
    std::int32_t m_iconHeight = 25;
    bool m_isSized = false; // got its first size
    std::int32_t m_itemMask = kItemByLayer | kItemByBlock | kItemDefault;
    double m_lineweightScale = 0.0;
    ZvGlobalUIReactorHelp::SLineWeightInfo m_lineWeightInfo;
};

#endif
