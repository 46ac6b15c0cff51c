// SPDX-License-Identifier: MIT
#ifndef ZVQTIMAGEWIDGET_H
#define ZVQTIMAGEWIDGET_H

#include "base/zvarray.h"
#include "base/zvjson.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentity.h"

#include <QWidget>

/// A small preview of some entities, with a border and, on request, a frame around the picture. Nothing is kept: each
/// paint has the kernel draw the entities anew, so that the widget is for small pictures.
///
/// The widget holds a reference to each of entities, drawing and options until it is destroyed or given others. The
/// entities may belong to no drawing. Those of a drawing may be closed; they must not be deleted while they are shown.
///
/// Options (a property bag, shared with the caller: the widget writes into it):
///
/// | key            | type    | default            |                                                              |
/// |----------------|---------|--------------------|--------------------------------------------------------------|
/// | "width"        | integer | the widget's       | of the picture in pixels; each resize of the widget sets it  |
/// | "height"       | integer | the widget's       | the same                                                     |
/// | "background"   | integer | black, white paper | packed colour, as a signed number                            |
/// | "padding_size" | integer | 0                  | width of the frame in pixels; 0 and below: no frame          |
/// | "padding_clr"  | integer | 0                  | colour of the frame as a QRgb with alpha; 0 is transparent   |
///
/// "background" is filled in when it is missing: white where the drawing shows a layout's paper, otherwise black.
/// Further keys reach the kernel, which gets the tree as it stands.
class ZV_EXPORT ZvQtImageWidget : public QWidget
{
    Q_OBJECT
public:
    /// The entities: an array that is shared, with a reference to each.
    using Entities = ZvArrayEx<ZvSmartPtr<ZvDbEntity>, ZvObjectsAllocator<ZvSmartPtr<ZvDbEntity>>>;

    /// Shows the plain background until attachDbEntities(). Owned by \a parent.
    explicit ZvQtImageWidget(QWidget *parent);
    ~ZvQtImageWidget() override;

    /// Shows \a entities of \a db, null for the current drawing. The array is shared, not copied; call again, or
    /// update(), after changing it. Null \a options are the defaults.
    void attachDbEntities(const Entities &entities, ZvDbDatabasePtr db, ZvJsonPtr options);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void writeMissingBackground();

    Entities m_entities;
    ZvDbDatabasePtr m_database;
    ZvJsonPtr m_options;
};

/// A new image widget, owned by \a parent, that shows \a entities: see ZvQtImageWidget::attachDbEntities().
ZV_EXPORT ZvQtImageWidget *zvqt_createImageWidget(QWidget *parent, ZvDbDatabasePtr database,
                                                  const ZvQtImageWidget::Entities &entities, ZvJsonPtr options);

#endif
