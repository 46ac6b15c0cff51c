// SPDX-License-Identifier: MIT
#include "drawingview.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "paperspace.h"
#include "textforms.h"
#include "viewcolors.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kSliceBudget = 8; // milliseconds
constexpr int kShowEvery = 40; // milliseconds between two looks at a picture that grows
constexpr int kBurst = 700; // milliseconds within which steps of the wheel join
constexpr int kDragDistance = 4; // logical pixels from a click to a drag
constexpr std::size_t kPreviousViews = 50;
constexpr double kWheelStep = 1.25;
constexpr std::size_t kSelectedAtATime = 200; // entities between two looks at the clock

/// As a highlighted entity, in device pixels.
void drawBorder(QPainter &painter, unsigned color, const ViewCamera &camera, double pixelRatio, const QRectF &border)
{
    const QRectF rect = camera.toWidget(border);
    painter.setPen(QPen(QColor(int(color & 0xFF), int(color >> 8 & 0xFF), int(color >> 16 & 0xFF)), 2.0 * pixelRatio,
                        Qt::DashLine));
    painter.drawRect(QRectF(rect.topLeft() * pixelRatio, rect.size() * pixelRatio));
}

/// Draws a list of entities from number \a first on until the time is used up.
int drawListSlice(ZvGiRenderer &renderer, const ZvGiRenderer::Options &options, const std::vector<ZvDbObjectId> &ids,
                  QPainter &painter, const ViewCamera &camera, double pixelRatio, int first, int budget)
{
    const QSizeF size = camera.size() * pixelRatio;
    QElapsedTimer clock;
    clock.start();
    std::size_t next = std::size_t(first);
    while (next < ids.size()) {
        const std::size_t end = std::min(ids.size(), next + kSelectedAtATime);
        std::vector<ZvDbObjectId> some;
        for (; next < end; ++next) {
            if (isViewport(ids[next]))
                drawBorder(painter, options.highlightColor, camera, pixelRatio, viewportBorder(ids[next]));
            else
                some.push_back(ids[next]);
        }
        renderer.drawEntities(painter, options, some, camera.view(), size.width(), size.height());
        if (clock.elapsed() >= budget && next < ids.size())
            return int(next);
    }
    return -1;
}

} // namespace

DrawingView::DrawingView(ZvApDocument *document, QWidget *parent)
    : QWidget(parent), m_document(document),
      m_renderer(document->database() ? std::make_unique<ZvGiRenderer>(document->database()) : nullptr),
      m_drawing(
          [this](QPainter &painter, const ViewCamera &camera, double ratio, int first, int budget) {
              if (!m_renderer)
                  return -1;
              const QSizeF size = camera.size() * ratio;
              return m_renderer->drawSlice(painter, renderOptions(ratio), database()->currentSpaceId(), camera.view(),
                                           size.width(), size.height(), first, budget);
          },
          [this](QPainter &painter, const ViewCamera &camera) {
              if (isPaper())
                  paintPaperGround(painter, camera, layoutPaper(*database()));
              else
                  painter.fillRect(QRectF(QPointF(), camera.size()), ViewColors::kModelGround);
          }),
      m_selected(
          [this](QPainter &painter, const ViewCamera &camera, double ratio, int first, int budget) {
              ZvEdContext *context = m_document->editingContext();
              if (!m_renderer || !context || !context->selectionHolder())
                  return -1;
              ZvGiRenderer::Options options = renderOptions(ratio);
              options.highlight = true;
              options.highlightColor = ViewColors::packed(ViewColors::kSelected);
              return drawListSlice(*m_renderer, options, context->selectionHolder()->ids(), painter, camera, ratio,
                                   first, budget);
          },
          {}),
      m_hoverPicture(
          [this](QPainter &painter, const ViewCamera &camera, double ratio, int first, int budget) {
              if (!m_renderer || m_hovered.isNull())
                  return -1;
              ZvGiRenderer::Options options = renderOptions(ratio);
              options.highlight = true;
              options.highlightColor = ViewColors::packed(ViewColors::kHover);
              return drawListSlice(*m_renderer, options, {m_hovered}, painter, camera, ratio, first, budget);
          },
          {})
{
    setObjectName(QStringLiteral("drawingView"));
    setAccessibleName(tr("Drawing"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(120, 80);
    updateCursor();

    m_sliceTimer.setInterval(0);
    connect(&m_sliceTimer, &QTimer::timeout, this, &DrawingView::drawSlices);
    m_hoverTimer.setSingleShot(true);
    m_hoverTimer.setInterval(20);
    connect(&m_hoverTimer, &QTimer::timeout, this, &DrawingView::lookForHovered);

    if (database()) {
        m_layout = toQString(database()->currentLayoutName());
        m_lineWeights = database()->lineWeightDisplay();
    }
}

DrawingView::~DrawingView() = default;

void *DrawingView::widget() const
{
    return const_cast<DrawingView *>(this);
}

// ---- what is seen -------------------------------------------------------------------------------

bool DrawingView::isPaper() const
{
    return database() && !database()->tilemode();
}

ZvGiRenderer::Options DrawingView::renderOptions(double pixelRatio) const
{
    ZvGiRenderer::Options options;
    options.background = ViewColors::packed(isPaper() ? ViewColors::kPaper : ViewColors::kModelGround);
    options.lineWeights = m_lineWeights;
    options.pixelsPerMillimetre = logicalDpiX() / 25.4 * pixelRatio;
    return options;
}

ViewCamera DrawingView::initialCamera() const
{
    ViewCamera camera(ZvGiView(), size());
    if (!m_renderer)
        return camera;
    const ZvDbObjectId space = database()->currentSpaceId();
    ZvGiView view;
    if (isPaper()) {
        const QRectF paper = layoutPaper(*database()).sheet;
        ZvGeExtents2d box;
        if (paper.isValid()) {
            box.add(ZvGePoint2d(paper.left(), paper.top()));
            box.add(ZvGePoint2d(paper.right(), paper.bottom()));
        } else {
            box = m_renderer->displayExtents(space, view);
        }
        camera.fit(box);
        return camera;
    }

    // The file says where its author looked. Where that shows nothing of the drawing, all of it is shown.
    ZvDbObjectPointer<ZvDbViewportTableRecord> viewport(database()->currentViewportId(), ZvDb::kForRead);
    if (viewport && viewport->height() > 0.0) {
        view.target = viewport->target();
        view.direction = viewport->viewDirection();
        view.twist = viewport->viewTwist();
        view.center = viewport->centerPoint();
        view.height = viewport->height();
    }
    const ZvGeExtents2d extents = m_renderer->displayExtents(space, view);
    camera.setView(view);
    const ZvGeExtents2d seen = camera.visible();
    const bool meets = !extents.isEmpty() && seen.minimum.x < extents.maximum.x && seen.maximum.x > extents.minimum.x
        && seen.minimum.y < extents.maximum.y && seen.maximum.y > extents.minimum.y;
    if (!viewport || (!extents.isEmpty() && !meets)) {
        camera.fit(extents);
        if (extents.isEmpty()) {
            view.height = 297.0;
            view.center = ZvGePoint2d(210.0, 148.5);
            camera.setView(view);
        }
    }
    return camera;
}

ZvGeExtents2d DrawingView::shownFromAbove() const
{
    ZvGeExtents2d world;
    const ZvGiView &seen = m_camera.view();
    if (m_hasCamera && seen.direction.x == 0.0 && seen.direction.y == 0.0 && seen.direction.z > 0.0
        && seen.twist == 0.0) {
        const ZvGeExtents2d display = m_camera.visible();
        const ZvGeVector2d target(seen.target.x, seen.target.y);
        world.add(display.minimum + target);
        world.add(display.maximum + target);
    }
    return world;
}

void DrawingView::ensureCamera()
{
    if (m_hasCamera)
        return;
    m_hasCamera = true;
    m_camera = initialCamera();
    showCamera();
}

void DrawingView::setCamera(const ViewCamera &camera)
{
    ensureCamera();
    moveCamera(camera, false);
}

void DrawingView::moveCamera(const ViewCamera &camera, bool burst)
{
    if (camera == m_camera)
        return;
    const bool joins = burst && m_lastBurst.isValid() && m_lastBurst.elapsed() < kBurst;
    if (!joins) {
        m_previous.push_back(m_camera);
        if (m_previous.size() > kPreviousViews)
            m_previous.erase(m_previous.begin());
    }
    if (burst)
        m_lastBurst.start();
    else
        m_lastBurst.invalidate();
    m_camera = camera;
    m_camera.resize(size());
    showCamera();
}

void DrawingView::showCamera()
{
    const double ratio = devicePixelRatioF();
    m_drawing.setCamera(m_camera, ratio);
    m_selected.setCamera(m_camera, ratio);
    m_hoverPicture.setCamera(m_camera, ratio);
    startSlices();
    update();
    Q_EMIT cameraChanged();
}

void DrawingView::zoomExtents()
{
    if (!m_renderer)
        return;
    ensureCamera();
    ZvGeExtents2d box = m_renderer->displayExtents(database()->currentSpaceId(), m_camera.view());
    const QRectF paper = layoutPaper(*database()).sheet;
    if (paper.isValid()) {
        box.add(ZvGePoint2d(paper.left(), paper.top()));
        box.add(ZvGePoint2d(paper.right(), paper.bottom()));
    }
    ViewCamera camera = m_camera;
    camera.fit(box);
    setCamera(camera);
}

void DrawingView::zoomPrevious()
{
    if (m_previous.empty())
        return;
    const ViewCamera camera = m_previous.back();
    m_previous.pop_back();
    m_lastBurst.invalidate();
    m_camera = camera;
    m_camera.resize(size());
    showCamera();
}

void DrawingView::lookFrom(const ZvGeVector3d &direction)
{
    if (!m_renderer || direction.length() == 0.0)
        return;
    ensureCamera();
    ViewCamera camera = m_camera;
    ZvGiView view = camera.view();
    view.direction = direction.normal();
    view.twist = 0.0;
    camera.setView(view);
    camera.fit(m_renderer->displayExtents(database()->currentSpaceId(), view));
    setCamera(camera);
}

void DrawingView::regenerate()
{
    m_drawing.invalidate();
    m_selected.invalidate();
    m_hovered = ZvDbObjectId();
    m_hoverPicture.clear();
    if (m_hasCamera)
        showCamera();
}

void DrawingView::layoutSwitched()
{
    const QString layout = toQString(database()->currentLayoutName());
    if (layout == m_layout)
        return;
    const QString before = std::exchange(m_layout, layout);
    if (!m_hasCamera)
        return;
    m_layoutCameras.insert(before, m_camera);
    m_previous.clear();
    m_drawing.clear();
    m_selected.clear();
    m_hovered = ZvDbObjectId();
    m_hoverPicture.clear();
    m_camera = m_layoutCameras.contains(layout) ? m_layoutCameras.value(layout) : initialCamera();
    m_camera.resize(size());
    showCamera();
    updateCursor();
}

void DrawingView::selectionChanged()
{
    m_selected.invalidate();
    startSlices();
}

void DrawingView::setLineWeightsShown(bool on)
{
    if (on == m_lineWeights)
        return;
    m_lineWeights = on;
    regenerate();
}

void DrawingView::setPaused(bool paused)
{
    m_paused = paused;
    if (paused)
        m_sliceTimer.stop();
    else
        startSlices();
}

bool DrawingView::isComplete() const
{
    return m_hasCamera && m_drawing.isComplete() && m_selected.isComplete() && m_hoverPicture.isComplete();
}

void DrawingView::startSlices()
{
    if (m_hasCamera && !m_paused && !m_sliceTimer.isActive())
        m_sliceTimer.start();
}

void DrawingView::drawSlices()
{
    bool changed = m_drawing.drawSlice(kSliceBudget);
    changed = m_selected.drawSlice(kSliceBudget) || changed;
    changed = m_hoverPicture.drawSlice(kSliceBudget) || changed;
    const bool complete = isComplete();
    // Showing costs time too: a picture that grows is shown now and then.
    if (changed && (complete || !m_lastUpdate.isValid() || m_lastUpdate.elapsed() > kShowEvery)) {
        m_lastUpdate.start();
        update();
    }
    if (!complete)
        return;
    m_sliceTimer.stop();
    update();
    Q_EMIT completed();
}

void DrawingView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (!m_hasCamera)
        return;
    m_camera.resize(size());
    for (ViewCamera &camera : m_previous)
        camera.resize(size());
    showCamera();
}

// ---- selecting ----------------------------------------------------------------------------------

DrawingView::Asked DrawingView::asked() const
{
    if (!m_prompt)
        return Asked::Nothing;
    switch (m_prompt->kind) {
    case ZvEdPrompt::kPoint:
    case ZvEdPrompt::kCorner:
    case ZvEdPrompt::kDistance:
    case ZvEdPrompt::kAngle:
        return Asked::Point;
    case ZvEdPrompt::kSelection:
        return Asked::Selection;
    default:
        return Asked::Text;
    }
}

Crosshair DrawingView::crosshair() const
{
    switch (asked()) {
    case Asked::Nothing:
        return Crosshair::Both;
    case Asked::Selection:
        return Crosshair::PickBox;
    default:
        return Crosshair::Plain;
    }
}

void DrawingView::setPrompt(const std::optional<ZvEdPrompt> &prompt)
{
    m_prompt = prompt;
    m_drag = m_drag == Drag::Pan ? Drag::Pan : Drag::None;
    if (asked() != Asked::Nothing && asked() != Asked::Selection)
        setHovered(ZvDbObjectId());
    updateCursor();
    update();
}

ZvGePoint3d DrawingView::worldAt(const QPointF &pos) const
{
    return m_camera.onPlane(pos, database() ? database()->ucsMatrix() : ZvGeMatrix3d::kIdentity);
}

std::vector<ZvDbObjectId> DrawingView::entitiesAt(const QPointF &pos) const
{
    const QPointF box(kPickBox, kPickBox);
    return entitiesIn(QRectF(pos - box, pos + box), true);
}

std::vector<ZvDbObjectId> DrawingView::entitiesIn(const QRectF &window, bool crossing) const
{
    std::vector<ZvDbObjectId> ids;
    if (!m_renderer)
        return ids;
    const QRectF upright = window.normalized();
    const ZvGePoint2d low = m_camera.toDisplay(upright.bottomLeft());
    const ZvGePoint2d high = m_camera.toDisplay(upright.topRight());
    m_renderer->pick(database()->currentSpaceId(), m_camera.view(), low, high, !crossing, ids);
    if (isPaper()) {
        const QRectF box(QPointF(low.x, low.y), QPointF(high.x, high.y));
        const auto misses = [&](ZvDbObjectId id) { return isViewport(id) && !takesViewport(id, box, crossing); };
        ids.erase(std::remove_if(ids.begin(), ids.end(), misses), ids.end());
    }
    return ids;
}

void DrawingView::select(const std::vector<ZvDbObjectId> &ids, Qt::KeyboardModifiers modifiers)
{
    ZvEdContext *context = m_document->editingContext();
    if (!context || !context->selectionHolder())
        return;
    if (modifiers & Qt::ShiftModifier)
        context->selectionHolder()->remove(ids);
    else
        context->selectionHolder()->add(ids);
}

void DrawingView::press(const QPointF &pos, Qt::KeyboardModifiers modifiers)
{
    switch (asked()) {
    case Asked::Text:
        return;
    case Asked::Point:
        Q_EMIT pointEntered(worldAt(pos));
        return;
    case Asked::Nothing:
    case Asked::Selection:
        break;
    }
    if (m_drag == Drag::Window) {
        finishWindow(pos, modifiers);
        return;
    }
    const std::vector<ZvDbObjectId> found = entitiesAt(pos);
    if (found.empty()) {
        m_drag = Drag::Window;
        m_dragStart = pos;
        setHovered(ZvDbObjectId());
        return;
    }
    if (asked() == Asked::Selection)
        Q_EMIT pointEntered(worldAt(pos));
    else
        select({found.front()}, modifiers);
}

void DrawingView::finishWindow(const QPointF &pos, Qt::KeyboardModifiers modifiers)
{
    m_drag = Drag::None;
    update();
    const bool crossing = pos.x() < m_dragStart.x();
    if (asked() == Asked::Selection)
        Q_EMIT windowEntered(worldAt(m_dragStart), worldAt(pos), crossing);
    else
        select(entitiesIn(QRectF(m_dragStart, pos), crossing), modifiers);
}

bool DrawingView::escape()
{
    if (m_drag == Drag::None)
        return false;
    m_drag = Drag::None;
    updateCursor();
    update();
    return true;
}

void DrawingView::setHovered(ZvDbObjectId id)
{
    if (id == m_hovered)
        return;
    m_hovered = id;
    m_hoverPicture.clear();
    m_hoverPicture.setCamera(m_camera, devicePixelRatioF());
    startSlices();
    update();
}

void DrawingView::lookForHovered()
{
    const bool picks = asked() == Asked::Nothing || asked() == Asked::Selection;
    if (!m_pointerInside || m_drag != Drag::None || !picks || m_paused)
        return;
    QElapsedTimer clock;
    clock.start();
    const std::vector<ZvDbObjectId> found = entitiesAt(m_pointer);
    // Where looking is slow it is done when the pointer rests.
    m_hoverTimer.setInterval(std::clamp(int(clock.elapsed()) * 8, 20, 1000));
    setHovered(found.empty() ? ZvDbObjectId() : found.front());
}

// ---- pointer and keys ---------------------------------------------------------------------------

void DrawingView::updateCursor()
{
    if (m_drag == Drag::Pan)
        setCursor(Qt::ClosedHandCursor);
    else if (m_spaceHeld)
        setCursor(Qt::OpenHandCursor);
    else
        setCursor(Qt::BlankCursor); // the crosshair is painted
}

void DrawingView::pointerTo(const QPointF &pos)
{
    const bool bandMoves = m_drag == Drag::Window || (m_prompt && m_prompt->hasBase);
    if (bandMoves)
        update();
    else
        update(crosshairRegion(m_pointer, kPickBox) + crosshairRegion(pos, kPickBox));
    m_pointer = pos;
    m_pointerInside = true;
}

void DrawingView::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    const bool spacePan = event->button() == Qt::LeftButton && m_spaceHeld;
    if (event->button() == Qt::MiddleButton || spacePan) {
        m_spaceUsed = m_spaceHeld;
        m_drag = Drag::Pan;
        m_dragStart = event->localPos();
        setHovered(ZvDbObjectId());
        updateCursor();
        return;
    }
    pointerTo(event->localPos());
    if (event->button() == Qt::LeftButton)
        press(event->localPos(), event->modifiers());
    else if (event->button() == Qt::RightButton && m_prompt)
        Q_EMIT enterPressed();
    else if (event->button() == Qt::RightButton)
        Q_EMIT menuWanted(event->globalPos());
}

void DrawingView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF pos = event->localPos();
    if (m_drag == Drag::Pan) {
        ViewCamera camera = m_camera;
        camera.pan(pos - m_dragStart);
        m_dragStart = pos;
        m_pointer = pos;
        moveCamera(camera, true);
        return;
    }
    pointerTo(pos);
    m_hoverTimer.start();
    Q_EMIT pointerMoved(worldAt(pos));
}

void DrawingView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_drag == Drag::Pan && event->button() != Qt::RightButton) {
        m_drag = Drag::None;
        updateCursor();
        update();
        return;
    }
    const QPointF way = event->localPos() - m_dragStart;
    if (m_drag == Drag::Window && event->button() == Qt::LeftButton && way.manhattanLength() > kDragDistance)
        finishWindow(event->localPos(), event->modifiers());
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton)
        zoomExtents();
    else
        mousePressEvent(event);
}

void DrawingView::wheelEvent(QWheelEvent *event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0.0)
        return;
    ViewCamera camera = m_camera;
    camera.zoomAt(event->position(), std::pow(kWheelStep, steps));
    moveCamera(camera, true);
    event->accept();
}

void DrawingView::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    m_pointerInside = false;
    setHovered(ZvDbObjectId());
    update();
    Q_EMIT pointerLeft();
}

bool DrawingView::event(QEvent *event)
{
    // Tab belongs to the command line's completion while one types, not to the focus chain.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Tab) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return QWidget::event(event);
}

void DrawingView::keyPressEvent(QKeyEvent *event)
{
    // Space is Enter at the command line, but held down it turns a drag into a pan: which one, its release tells.
    if (event->key() == Qt::Key_Space && m_pointerInside && event->modifiers() == Qt::NoModifier) {
        if (!event->isAutoRepeat()) {
            m_spaceHeld = true;
            m_spaceUsed = false;
            updateCursor();
        }
        return;
    }
    Q_EMIT keyTyped(event);
}

void DrawingView::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space || event->isAutoRepeat() || !m_spaceHeld) {
        QWidget::keyReleaseEvent(event);
        return;
    }
    m_spaceHeld = false;
    updateCursor();
    if (m_spaceUsed || m_drag == Drag::Pan)
        return;
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    Q_EMIT keyTyped(&typed);
}

void DrawingView::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    m_spaceHeld = false;
    updateCursor();
}

// ---- painting -----------------------------------------------------------------------------------

void DrawingView::paintEvent(QPaintEvent *event)
{
    ensureCamera();
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.fillRect(rect(), isPaper() ? ViewColors::kDesk : ViewColors::kModelGround);
    m_drawing.paint(painter, m_camera);
    m_selected.paint(painter, m_camera);
    if (!m_hovered.isNull())
        m_hoverPicture.paint(painter, m_camera);
    if (asked() == Asked::Point && m_prompt->hasBase && m_pointerInside)
        paintRubberBand(painter, m_camera.toWidget(m_prompt->base), m_pointer, m_prompt->kind == ZvEdPrompt::kCorner);
    if (m_drag == Drag::Window)
        paintSelectionWindow(painter, m_dragStart, m_pointer);
    if (database())
        paintAxes(painter, m_camera, database()->ucsMatrix(), ground());
    if (m_pointerInside && m_drag != Drag::Pan && !m_spaceHeld)
        paintCrosshair(painter, m_pointer.toPoint(), crosshair(), kPickBox, ground());
}
