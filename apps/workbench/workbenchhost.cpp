// SPDX-License-Identifier: MIT
#include "workbenchhost.h"

#include "commandline.h"
#include "db/zvdbrecords.h"
#include "drawingview.h"
#include "filequestions.h"
#include "infobar.h"
#include "mainwindow.h"
#include "textforms.h"
#include "workprogress.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>

#include <algorithm>

namespace {

// Codes of the message box.
constexpr int kMessageRow = 1;
constexpr int kOkOnly = 0;
constexpr int kYesNoCancel = 3;
constexpr int kQuestionIcon = 32;
constexpr int kErrorIcon = 80;
constexpr int kCancelButton = 2;
constexpr int kYesButton = 6;
constexpr int kNoButton = 7;

constexpr int kPlainArrow = 256; // as the dialogs name it

QString warningLine(const ZvDbFileReport::Warning &warning)
{
    QString line = toQString(warning.text);
    if (warning.count > 1)
        line += QCoreApplication::translate("WorkbenchHost", " (%1 times)").arg(warning.count);
    if (warning.firstLine > 0)
        line += QCoreApplication::translate("WorkbenchHost", ", first at line %1").arg(warning.firstLine);
    return line;
}

} // namespace

WorkbenchHost::WorkbenchHost(MainWindow *window) : m_window(window)
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, [this] { runQueue(); });
    connect(window->progress(), &WorkProgress::runningChanged, this, [this](bool running) {
        if (!running && !m_idleActions.empty())
            m_idle.start();
    });
    zvedSetHost(this);
    zvuiSetHost(this);
    if (CHcSystem *system = CHcSystem::instance()) {
        if (ZvApApplication *application = system->application())
            application->setWindow(this);
    }
}

WorkbenchHost::~WorkbenchHost()
{
    if (CHcSystem *system = CHcSystem::instance()) {
        if (ZvApApplication *application = system->application())
            application->setWindow(nullptr);
    }
    zvuiSetHost(nullptr);
    zvedSetHost(nullptr);
}

bool WorkbenchHost::isBusy() const
{
    return m_running || !zvedRunningCommand().isEmpty() || m_window->progress()->isRunning();
}

void WorkbenchHost::whenIdle(std::function<void()> action)
{
    if (!isBusy()) {
        action();
        return;
    }
    m_idleActions.push_back(std::move(action));
    if (m_window->progress()->isRunning())
        m_window->progress()->cancel();
    zvedCancelCommand();
}

void WorkbenchHost::runMacro(const QString &macro)
{
    const auto queue = [macro] { zvedMenuMacro(toZvString(macro), false); };
    const bool transparent = macro.startsWith(QLatin1Char('\''));
    if (transparent && isWaiting())
        queue();
    else
        whenIdle(queue);
}

bool WorkbenchHost::runQueue(QString *error)
{
    if (isBusy())
        return true;
    m_running = true;
    ZvString text;
    const bool ok = zvedRunQueue(&text);
    m_running = false;
    if (error)
        *error = toQString(text);
    runIdleActions();
    return ok;
}

void WorkbenchHost::runIdleActions()
{
    while (!m_idleActions.empty() && !isBusy()) {
        const std::function<void()> action = std::move(m_idleActions.front());
        m_idleActions.erase(m_idleActions.begin());
        action();
    }
}

void WorkbenchHost::leaveLoop()
{
    if (m_loop)
        m_loop->quit();
}

void WorkbenchHost::queueFilled()
{
    if (m_loop)
        leaveLoop();
    else
        m_idle.start();
}

bool WorkbenchHost::waitForInput(const ZvEdPrompt &prompt)
{
    if (!m_interactive)
        return false;
    QEventLoop loop;
    QEventLoop *const outer = m_loop;
    m_loop = &loop;
    m_window->setPrompt(prompt);
    Q_EMIT waiting(toQString(prompt.text));
    loop.exec();
    m_loop = outer;
    m_window->setPrompt(std::nullopt);
    // The loop ends with an empty queue when the program ends.
    return zvedQueueHasInput();
}

void WorkbenchHost::print(const ZvString &text)
{
    m_window->commandLine()->print(toQString(text));
}

// ---- views --------------------------------------------------------------------------------------

void WorkbenchHost::changeView(const ViewRequest &request)
{
    DrawingView *view = m_window->currentView();
    if (!view)
        return;
    ViewCamera camera = view->camera();
    const QPointF first = camera.toWidget(request.first);
    const QPointF second = camera.toWidget(request.second);
    switch (request.kind) {
    case ViewRequest::kExtents:
        view->zoomExtents();
        return;
    case ViewRequest::kPrevious:
        view->zoomPrevious();
        return;
    case ViewRequest::kRegen:
        view->regenerate();
        return;
    case ViewRequest::kDirection:
        view->lookFrom(request.direction);
        return;
    case ViewRequest::kWindow: {
        ZvGeExtents2d box;
        box.add(camera.toDisplay(first));
        box.add(camera.toDisplay(second));
        camera.fit(box, 0.0);
        break;
    }
    case ViewRequest::kScale: {
        const QSizeF size = camera.size();
        camera.zoomAt(QPointF(size.width() / 2, size.height() / 2), request.value);
        break;
    }
    case ViewRequest::kCenter: {
        camera.centerOn(request.first);
        ZvGiView target = camera.view();
        target.height = std::clamp(request.value, ViewCamera::kSmallest, ViewCamera::kLargest);
        camera.setView(target);
        break;
    }
    case ViewRequest::kPan:
        camera.pan(second - first);
        break;
    case ViewRequest::kNamed: {
        const ZvDbObjectPointer<ZvDbViewTableRecord> named(request.view, ZvDb::kForRead);
        if (!named)
            return;
        ZvGiView target;
        target.target = named->target();
        target.direction = named->viewDirection();
        target.twist = named->viewTwist();
        camera.setView(target);
        const ZvGePoint2d center = named->centerPoint();
        ZvGeExtents2d box;
        box.add(ZvGePoint2d(center.x - named->width() / 2, center.y - named->height() / 2));
        box.add(ZvGePoint2d(center.x + named->width() / 2, center.y + named->height() / 2));
        camera.fit(box, 0.0);
        break;
    }
    }
    view->setCamera(camera);
}

void WorkbenchHost::pick(const ZvGePoint3d &point, std::vector<ZvDbObjectId> &ids)
{
    ids.clear();
    if (const DrawingView *view = m_window->currentView())
        ids = view->entitiesAt(view->camera().toWidget(point));
}

void WorkbenchHost::pickWindow(const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing,
                               std::vector<ZvDbObjectId> &ids)
{
    ids.clear();
    if (const DrawingView *view = m_window->currentView())
        ids = view->entitiesIn(QRectF(view->camera().toWidget(first), view->camera().toWidget(second)), crossing);
}

bool WorkbenchHost::currentView(ViewState &state)
{
    const DrawingView *view = m_window->currentView();
    if (!view)
        return false;
    const ZvGiView &seen = view->camera().view();
    state.center = seen.center;
    state.height = seen.height;
    state.width = seen.height * view->camera().size().width() / view->camera().size().height();
    state.target = seen.target;
    state.direction = seen.direction;
    state.twist = seen.twist;
    return true;
}

// ---- files --------------------------------------------------------------------------------------

ZvString WorkbenchHost::askFileName(bool saving, const ZvString &suggestion)
{
    if (!m_interactive)
        return ZvString();
    const QString filter = tr("Drawings (*.dxf);;All files (*)");
    if (!saving)
        return toZvString(askFileToOpen(tr("Open a drawing"), m_window->lastFolder(), filter));
    // A drawing that was never saved has a name without a folder.
    const QString start = QDir(m_window->lastFolder()).filePath(toQString(suggestion));
    QString path = askFileToSave(tr("Save the drawing"), start, filter);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty())
        path += QLatin1String(".dxf");
    return toZvString(path);
}

ZvApDocument *WorkbenchHost::openDocument(const QString &path)
{
    const ZvString file = toZvString(path);
    ZvDbFileReport report;
    ZvDbProgress *progress = beginProgress(toZvString(tr("Opening %1").arg(QFileInfo(path).fileName())));
    ZvApDocument *document = zvDocManagerPtr()->openDocument(file, report, progress);
    endProgress();
    if (!document || !report.warnings.isEmpty())
        showFileReport(file, report);
    return document;
}

bool WorkbenchHost::saveDocument(ZvApDocument *document)
{
    ZvString path = document->fileName();
    if (path.isEmpty())
        path = askFileName(true, document->title() + ZvString(L".dxf"));
    if (path.isEmpty())
        return false;
    ZvDbFileReport report;
    ZvDbProgress *progress = beginProgress(toZvString(tr("Saving %1").arg(QFileInfo(toQString(path)).fileName())));
    const Zv::ErrorStatus status = zvDocManagerPtr()->saveDocument(document, path, report, progress);
    endProgress();
    if (status != Zv::eOk)
        showFileReport(path, report);
    return status == Zv::eOk;
}

bool WorkbenchHost::mayClose(ZvApDocument *document)
{
    if (!document->isModified() || !m_interactive)
        return true;
    const QString question = tr("Save changes to %1 before closing?").arg(toQString(document->title()));
    const ZvJsonPtr answer = zvuiMessageBoxEx(toZvString(tr("Workbench")), toZvString(question), nullptr, kYesNoCancel,
                                              kMessageRow, kQuestionIcon);
    int button = kCancelButton;
    answer->GetDataI("ControlBtn", button);
    if (button == kYesButton)
        return saveDocument(document);
    return button == kNoButton;
}

ZvDbProgress *WorkbenchHost::beginProgress(const ZvString &title)
{
    m_window->progress()->begin(toQString(title), m_interactive);
    return m_window->progress();
}

void WorkbenchHost::endProgress()
{
    m_window->progress()->end();
}

void WorkbenchHost::showError(const QString &message)
{
    if (!m_interactive) {
        m_unshownErrors << message;
        return;
    }
    zvuiMessageBoxEx(toZvString(tr("Workbench")), toZvString(message), nullptr, kOkOnly, kMessageRow, kErrorIcon);
}

QStringList WorkbenchHost::takeUnshownErrors()
{
    QStringList errors;
    errors.swap(m_unshownErrors);
    return errors;
}

void WorkbenchHost::showFileReport(const ZvString &path, const ZvDbFileReport &report)
{
    const QString file = QFileInfo(toQString(path)).fileName();
    if (report.status == Zv::eCancelled) {
        m_window->commandLine()->print(tr("Cancelled: %1").arg(file));
        return;
    }
    if (report.status != Zv::eOk) {
        const QString message = toQString(report.message);
        showError(message.contains(file) ? message : tr("%1: %2").arg(file, message));
        return;
    }
    QStringList lines;
    for (const ZvDbFileReport::Warning &warning : report.warnings)
        lines << warningLine(warning);
    if (lines.isEmpty())
        return;
    m_window->infoBar()->showMessage(
        tr("%1 was opened, but something in it was not as it should be (kinds of fault: %2).")
            .arg(file, QString::number(lines.size())),
        lines.join(QLatin1Char('\n')));
}

void WorkbenchHost::quit()
{
    // The command that asked for it ends first.
    m_idleActions.emplace_back([this] { m_window->close(); });
    m_idle.start();
}

// ---- windows ------------------------------------------------------------------------------------

void *WorkbenchHost::mainWindow()
{
    return m_window;
}

int WorkbenchHost::setCursor(void *window, int cursor)
{
    auto *widget = static_cast<QWidget *>(window);
    if (!widget)
        return cursor;
    const Qt::CursorShape before = widget->cursor().shape();
    const bool known = cursor >= 0 && cursor <= Qt::LastCursor;
    widget->setCursor(known ? Qt::CursorShape(cursor) : Qt::ArrowCursor);
    return before == Qt::ArrowCursor ? kPlainArrow : int(before);
}

void *WorkbenchHost::handle() const
{
    return m_window;
}

ZvApView *WorkbenchHost::mainView() const
{
    return m_window->currentView();
}
