// SPDX-License-Identifier: MIT
#ifndef DRAWINGVIEW_H
#define DRAWINGVIEW_H

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "slicedpicture.h"
#include "viewcamera.h"
#include "viewmarks.h"

#include <QElapsedTimer>
#include <QHash>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

/// Shows the space at hand of one document and takes what the pointer does in it: looking around, selecting, and
/// answering the prompt of a running command.
///
/// Without a prompt a click changes the document's pick-first set: it adds, with Shift it takes away; a press beside
/// everything starts a window, to the right for what lies inside, to the left for what it cuts as well. With a prompt
/// the same clicks go out as points and windows. The view writes nothing else into the drawing.
class DrawingView : public QWidget, public ZvApView
{
    Q_OBJECT
public:
    /// The document must outlive the view.
    explicit DrawingView(ZvApDocument *document, QWidget *parent = nullptr);
    ~DrawingView() override;
    void *widget() const override;

    ZvApDocument *document() const { return m_document; }
    const ViewCamera &camera() const { return m_camera; }
    /// What is seen of the drawing from above, in world coordinates; empty from any other side, when the view is
    /// turned, and before it was first painted.
    ZvGeExtents2d shownFromAbove() const;
    /// Looks around as one step that zoomPrevious() takes back.
    void setCamera(const ViewCamera &camera);
    void zoomExtents();
    void zoomPrevious();
    /// From the target to the eye, in world coordinates; ends with the extents.
    void lookFrom(const ZvGeVector3d &direction);

    /// The drawing has changed: draws anew.
    void regenerate();
    /// Another layout is shown now. Each keeps its own camera.
    void layoutSwitched();
    void selectionChanged();
    void setLineWeightsShown(bool on);

    /// What a running command asks for; nothing while none does.
    void setPrompt(const std::optional<ZvEdPrompt> &prompt);
    /// No picture is drawn while the drawing is busy with long work.
    void setPaused(bool paused);
    /// Drawing, selection and hover are drawn completely.
    bool isComplete() const;
    /// Leaves a window or a pan that was begun; false when there was none.
    bool escape();

    /// Topmost first; widget coordinates.
    std::vector<ZvDbObjectId> entitiesAt(const QPointF &pos) const;
    std::vector<ZvDbObjectId> entitiesIn(const QRectF &window, bool crossing) const;

    static constexpr int kPickBox = 4; ///< Half of its side, in logical pixels.

Q_SIGNALS:
    /// On the XY plane of the current coordinate system, in world coordinates.
    void pointerMoved(const ZvGePoint3d &world);
    void pointerLeft();
    void pointEntered(const ZvGePoint3d &world);
    void windowEntered(const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing);
    /// The right button in a prompt: Enter.
    void enterPressed();
    /// The right button without a prompt.
    void menuWanted(const QPoint &globalPos);
    /// A key that the view has no use for.
    void keyTyped(QKeyEvent *event);
    /// The picture is drawn completely again.
    void completed();
    void cameraChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    enum class Drag { None, Pan, Window };
    enum class Asked { Nothing, Point, Selection, Text };

    ZvDbDatabase *database() const { return m_document->database(); }
    Asked asked() const;
    bool isPaper() const;
    ViewGround ground() const { return isPaper() ? ViewGround::Paper : ViewGround::Model; }
    Crosshair crosshair() const;
    ZvGiRenderer::Options renderOptions(double pixelRatio) const;
    ZvGePoint3d worldAt(const QPointF &pos) const;
    ViewCamera initialCamera() const;
    /// The first camera is chosen when the size of the view is known, which is when it is first painted or asked.
    void ensureCamera();
    /// \a burst joins steps that follow one another quickly, as those of a wheel, into one.
    void moveCamera(const ViewCamera &camera, bool burst);
    void showCamera();
    void startSlices();
    void drawSlices();

    void press(const QPointF &pos, Qt::KeyboardModifiers modifiers);
    void select(const std::vector<ZvDbObjectId> &ids, Qt::KeyboardModifiers modifiers);
    void finishWindow(const QPointF &pos, Qt::KeyboardModifiers modifiers);
    void setHovered(ZvDbObjectId id);
    void lookForHovered();
    void pointerTo(const QPointF &pos);
    void updateCursor();

    ZvApDocument *m_document; // not owned
    std::unique_ptr<ZvGiRenderer> m_renderer; // null for a document without a drawing
    ViewCamera m_camera;
    bool m_hasCamera = false;
    QHash<QString, ViewCamera> m_layoutCameras;
    QString m_layout;
    std::vector<ViewCamera> m_previous;
    QElapsedTimer m_lastBurst;

    SlicedPicture m_drawing;
    SlicedPicture m_selected;
    SlicedPicture m_hoverPicture;
    QTimer m_sliceTimer;
    QElapsedTimer m_lastUpdate;
    bool m_paused = false;
    bool m_lineWeights = false;

    std::optional<ZvEdPrompt> m_prompt;
    Drag m_drag = Drag::None;
    QPointF m_dragStart;
    QPointF m_pointer;
    bool m_pointerInside = false;
    bool m_spaceHeld = false;
    bool m_spaceUsed = false;
    ZvDbObjectId m_hovered;
    QTimer m_hoverTimer;
};

#endif
