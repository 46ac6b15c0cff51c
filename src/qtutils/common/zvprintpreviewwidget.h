// SPDX-License-Identifier: MIT
#ifndef ZVPRINTPREVIEWWIDGET_H
#define ZVPRINTPREVIEWWIDGET_H

#include "base/zvjson.h"
#include "base/zvrxobject.h"
#include "base/zvstring.h"

#include <QImage>
#include <QWidget>

/// One sheet of paper, drawn by a render object, to be zoomed and moved about.
///
/// Device units are those of the reference device, y up, with the origin on the lower left corner of the printable
/// area. The render object's origin is the upper left corner of that area, its y runs down.
///
/// The sheet is drawn once for a scale, into a picture: moving it about draws nothing again that the picture has.
class ZvPrintPreviewWidget : public QWidget
{
    Q_OBJECT
public:
    explicit ZvPrintPreviewWidget(QWidget *parent = nullptr);

    /// Takes "paper", "intHelper" and "refDC"; without "paper" there is none.
    /// \throws ZvError_NotThatKindOfClass for an object that is no ZvRxObject.
    void setPage(const ZvJsonPtr &params);
    void fitPage();
    void fitWidth();
    /// Multiplies the scale; the middle of the view stays.
    void zoomBy(double factor);
    /// \a percent of the paper's true size on a screen of 96 dots per inch; the middle of the view stays.
    void zoomToPercent(double percent);
    double pixelScalePercent();

Q_SIGNALS:
    /// Also where the scale came out as it was.
    void scaleChanged();
    /// By a factor or to a percentage, the wheel included; not by a fit.
    void zoomed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    /// Where things lie in the widget, in pixels. Two equal ones look alike.
    struct Sheet
    {
        QRect paper; ///< Null: nothing to be seen.
        QRect printable;
    };

    double devicePerUnit();
    QRectF paperOnDevice(double d) const;
    QRectF extents();
    void setView(const QRectF &extents, double viewHeight);
    void zoomTo(double scale, const QPointF &fixed);
    QPointF viewCenter() const { return QPointF(m_centerX, m_centerY); }
    void placeCenter();
    void readCenter();
    void dragTo(const QPoint &pos);
    void showChange();

    Sheet sheet();
    QRect toPixels(const QRectF &device) const;
    void drawSheet(QPainter &painter, const Sheet &sheet);
    void updatePicture(const Sheet &sheet);
    bool isPictureOf(const Sheet &sheet) const;
    bool isDrawnBeyond(const QRect &paper) const;

    double m_scaleX = 1.0;
    double m_scaleY = 1.0; // negative once fitted
    double m_offsetX = 0.0; // of the device origin, in pixels
    double m_offsetY = 0.0;
    double m_centerX = 0.0; // the device point in the middle of the view
    double m_centerY = 0.0;
    double m_viewHeight = 1.0; // in device units
    int m_widgetWidth = 1;
    int m_widgetHeight = 1;
    int m_paperCode = 0;
    ZvString m_paperName;
    // In paper units; the printable rectangle from the paper's left and top.
    double m_paperWidth = 210.0;
    double m_paperHeight = 297.0;
    double m_printLeft = 5.0;
    double m_printTop = 5.0;
    double m_printRight = 205.0;
    double m_printBottom = 292.0;
    int m_paperUnit = 0;
    QPoint m_lastPos;
    bool m_isDragging = false;
    ZvRxObjectPtr m_renderObject;
    ZvRxObjectPtr m_referenceDevice;
    double m_devicePerUnit = 0.0; // worked out on first need

    QImage m_picture; // null: has to be drawn
    QRect m_pictureRect; // in the widget, as the sheet lay when it was drawn
    Sheet m_pictureSheet;
    bool m_hasStrays = false; // the sheet draws outside the paper
};

#endif
