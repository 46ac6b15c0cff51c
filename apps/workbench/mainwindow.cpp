// SPDX-License-Identifier: MIT
#include "mainwindow.h"

#include "actiontable.h"
#include "colordialogdemo.h"
#include "commandline.h"
#include "controlswindow.h"
#include "db/zvdbrecords.h"
#include "documentpage.h"
#include "exportcommand.h"
#include "filedialogdemo.h"
#include "icons.h"
#include "infobar.h"
#include "kernelevents.h"
#include "messageboxdemo.h"
#include "plotcommand.h"
#include "printpreviewdemo.h"
#include "recentfiles.h"
#include "startpage.h"
#include "statusfields.h"
#include "taskdialogdemo.h"
#include "textforms.h"
#include "workbenchhost.h"
#include "workprogress.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

namespace {

constexpr QSize kDefaultSize(1280, 800);
constexpr int kIconSize = 24;
const char *const kGeometryKey = "window/geometry";
const char *const kStateKey = "window/state";
const char *const kFolderKey = "lastFolder";
constexpr int kStateVersion = 1;

/// A text in which an ampersand is no mnemonic.
QString verbatim(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// Names of the views that the drawing keeps, in the order of its table.
QStringList namedViews(const ZvDbDatabase &database)
{
    QStringList names;
    const ZvDbObjectPointer<ZvDbViewTable> table(database.viewTableId(), ZvDb::kForRead);
    ZvDbSymbolTableIterator *raw = nullptr;
    if (!table || table->newIterator(raw) != Zv::eOk)
        return names;
    const std::unique_ptr<ZvDbSymbolTableIterator> iterator(raw);
    for (; !iterator->done(); iterator->step())
        names << nameOf(iterator->getRecordId());
    return names;
}

} // namespace

MainWindow::MainWindow(QSettings *settings, QWidget *parent)
    : QMainWindow(parent), m_settings(settings), m_recentFiles(new RecentFiles(settings, this))
{
    setObjectName(QStringLiteral("workbench"));
    setWindowIcon(Icons::application());
    setAcceptDrops(true);
    setDockOptions(QMainWindow::AllowTabbedDocks | QMainWindow::AnimatedDocks);
    setIconSize(QSize(kIconSize, kIconSize));

    makeCentralWidget();
    makeCommandLine();
    makeStatusBar();
    makeActions();
    makeToolBars();
    makeMenus();

    m_events = std::make_unique<KernelEvents>();
    m_host = std::make_unique<WorkbenchHost>(this);
    addExportCommand();
    addPlotCommand();
    connectKernel();

    std::vector<const ZvEdCommand *> commands;
    if (const ZvEdCommandStack *stack = zvedCommandStack())
        stack->commands(commands);
    QStringList names;
    for (const ZvEdCommand *command : commands) {
        if ((command->flags & ZvEdCommand::kInternal) == 0)
            names << toQString(command->localName);
    }
    m_commandLine->setCommandNames(names);

    resize(kDefaultSize);
    m_startPage->setRecentFiles(m_recentFiles->paths());
    updateState();
}

void MainWindow::restoreLayout()
{
    if (!m_settings)
        return;
    restoreGeometry(m_settings->value(QLatin1String(kGeometryKey)).toByteArray());
    restoreState(m_settings->value(QLatin1String(kStateKey)).toByteArray(), kStateVersion);
}

MainWindow::~MainWindow()
{
    removePlotCommand();
    removeExportCommand();
    m_host.reset();
    m_events.reset();
}

// ---- what stands in the window ------------------------------------------------------------------

void MainWindow::makeCentralWidget()
{
    m_infoBar = new InfoBar;
    m_startPage = new StartPage;
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("documentTabs"));
    m_tabs->setAccessibleName(tr("Drawings"));
    m_tabs->setDocumentMode(true);
    m_tabs->setMovable(true);
    m_tabs->tabBar()->setFocusPolicy(Qt::NoFocus);
    m_tabs->tabBar()->setElideMode(Qt::ElideMiddle);
    m_pages = new QStackedWidget;
    m_pages->addWidget(m_startPage);
    m_pages->addWidget(m_tabs);

    auto *central = new QWidget;
    auto *column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_infoBar);
    column->addWidget(m_pages, 1);
    setCentralWidget(central);

    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::tabChosen);
    connect(m_startPage, &StartPage::newWanted, this, [this] { m_actions[QStringLiteral("new")]->trigger(); });
    connect(m_startPage, &StartPage::openWanted, this, [this] { m_actions[QStringLiteral("open")]->trigger(); });
    connect(m_startPage, &StartPage::fileWanted, this, &MainWindow::openFile);
    connect(m_recentFiles, &RecentFiles::changed, this,
            [this] { m_startPage->setRecentFiles(m_recentFiles->paths()); });
}

void MainWindow::makeCommandLine()
{
    m_commandLine = new CommandLine;
    auto *dock = new QDockWidget(tr("Command Line"), this);
    dock->setObjectName(QStringLiteral("commandLineDock"));
    dock->setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    dock->setWidget(m_commandLine);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {110}, Qt::Vertical);

    connect(m_commandLine, &CommandLine::lineEntered, this,
            [](const QString &line) { zvedCommandLine(toZvString(line)); });
    connect(m_commandLine, &CommandLine::cancelled, this, &MainWindow::escape);
}

void MainWindow::makeStatusBar()
{
    m_progress = new WorkProgress;
    m_status = new StatusFields(statusBar());
    m_status->setProgressWidget(m_progress);
    connect(m_status, &StatusFields::lineWeightsToggled, this, &MainWindow::setLineWeightDisplay);
    connect(m_progress, &WorkProgress::runningChanged, this, [this](bool running) {
        for (int i = 0; i < m_tabs->count(); ++i)
            static_cast<DocumentPage *>(m_tabs->widget(i))->view()->setPaused(running);
    });
}

QAction *MainWindow::makeAction(const ActionSpec &spec)
{
    auto *action = new QAction(actionText(spec.text), this);
    action->setObjectName(QLatin1String(spec.id));
    if (*spec.icon)
        action->setIcon(Icons::icon(QLatin1String(spec.icon)));
    if (*spec.shortcut)
        action->setShortcut(QKeySequence::fromString(QLatin1String(spec.shortcut)));
    if (*spec.tip) {
        const QString shortcut = action->shortcut().toString(QKeySequence::NativeText);
        action->setStatusTip(actionText(spec.tip));
        action->setToolTip(shortcut.isEmpty() ? actionText(spec.tip)
                                              : tr("%1 (%2)").arg(actionText(spec.tip), shortcut));
    }
    const QString macro = QLatin1String(spec.macro);
    if (!macro.isEmpty())
        connect(action, &QAction::triggered, this, [this, macro] { m_host->runMacro(macro); });
    if (spec.needsDrawing)
        m_drawingActions << action;
    m_actions.insert(QLatin1String(spec.id), action);
    return action;
}

void MainWindow::makeActions()
{
    m_recentMenu = new QMenu(this);
    m_namedViewMenu = new QMenu(this);
    m_barsMenu = new QMenu(this);
    for (const MenuSpec &menu : menuTable()) {
        for (const ActionSpec &spec : menu.actions) {
            if (*spec.id)
                makeAction(spec);
        }
    }
    m_actions[QStringLiteral("recentMenu")]->setMenu(m_recentMenu);
    m_actions[QStringLiteral("namedViewMenu")]->setMenu(m_namedViewMenu);
    m_actions[QStringLiteral("barsMenu")]->setMenu(m_barsMenu);
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    connect(m_namedViewMenu, &QMenu::aboutToShow, this, &MainWindow::fillNamedViewMenu);
    connect(m_barsMenu, &QMenu::aboutToShow, this, &MainWindow::fillBarsMenu);

    connect(m_actions[QStringLiteral("quit")], &QAction::triggered, this, &QWidget::close);
    connect(m_actions[QStringLiteral("about")], &QAction::triggered, this, &MainWindow::showAbout);
    QAction *lineWeights = m_actions[QStringLiteral("lineweights")];
    lineWeights->setCheckable(true);
    connect(lineWeights, &QAction::triggered, this, &MainWindow::setLineWeightDisplay);
}

void MainWindow::makeMenus()
{
    QMenu *presets = nullptr;
    QMenu *dialogs = nullptr;
    for (const MenuSpec &spec : menuTable()) {
        QMenu *menu = nullptr;
        if (QLatin1String(spec.id) == QLatin1String("presetMenu"))
            presets = menu = new QMenu(this);
        else
            menu = menuBar()->addMenu(actionText(spec.title));
        menu->setObjectName(QLatin1String(spec.id));
        for (const ActionSpec &action : spec.actions) {
            if (*action.id)
                menu->addAction(m_actions[QLatin1String(action.id)]);
            else
                menu->addSeparator();
        }
        if (QLatin1String(spec.id) == QLatin1String("dialogsMenu"))
            dialogs = menu;
    }
    m_actions[QStringLiteral("presetMenu")]->setMenu(presets);
    addDemos(dialogs, messageBoxDemos());
    dialogs->addSeparator();
    QMenu *tasks = dialogs->addMenu(tr("&Task Dialog"));
    tasks->setObjectName(QStringLiteral("taskDialogMenu"));
    addDemos(tasks, taskDialogDemos());
    QMenu *colors = dialogs->addMenu(tr("Co&lour Dialog"));
    colors->setObjectName(QStringLiteral("colorDialogMenu"));
    addDemos(colors, colorDialogDemos());
    QMenu *files = dialogs->addMenu(tr("File &Dialog"));
    files->setObjectName(QStringLiteral("fileDialogMenu"));
    addDemos(files, fileDialogDemos());
    QMenu *previews = dialogs->addMenu(tr("&Print Preview"));
    previews->setObjectName(QStringLiteral("printPreviewMenu"));
    addDemos(previews, printPreviewDemos());
    dialogs->addSeparator();
    QAction *controls = dialogs->addAction(tr("Co&ntrols..."), this, [this] { showControls(); });
    controls->setObjectName(QStringLiteral("controls"));
}

void MainWindow::addDemos(QMenu *menu, const QVector<DialogDemo> &demos)
{
    for (const DialogDemo &demo : demos) {
        QAction *action = menu->addAction(demo.menuText);
        action->setObjectName(demo.id);
        m_actions.insert(demo.id, action);
        connect(action, &QAction::triggered, this, [this, demo] { m_commandLine->print(runDemo(demo)); });
    }
}

void MainWindow::showControls(const QString &page)
{
    auto *controls = new ControlsWindow(this);
    controls->setAttribute(Qt::WA_DeleteOnClose);
    controls->showPage(page);
    controls->show();
}

void MainWindow::makeToolBars()
{
    for (const ToolBarSpec &spec : toolBarTable()) {
        auto *bar = new QToolBar(actionText(spec.title), this);
        bar->setObjectName(QLatin1String(spec.id));
        bar->setAccessibleName(actionText(spec.title));
        for (const char *id : spec.actions) {
            if (*id)
                bar->addAction(m_actions[QLatin1String(id)]);
            else
                bar->addSeparator();
        }
        addToolBar(spec.vertical ? Qt::LeftToolBarArea : Qt::TopToolBarArea, bar);
    }
}

void MainWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    const QStringList paths = m_recentFiles->paths();
    for (const QString &path : paths) {
        QAction *action = m_recentMenu->addAction(verbatim(QFileInfo(path).fileName()));
        action->setToolTip(path);
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, path] { openFile(path); });
    }
    if (paths.isEmpty()) {
        m_recentMenu->addAction(tr("No drawing was opened yet"))->setEnabled(false);
        return;
    }
    m_recentMenu->addSeparator();
    m_recentMenu->addAction(tr("&Forget These"), m_recentFiles, &RecentFiles::clear);
}

void MainWindow::fillNamedViewMenu()
{
    m_namedViewMenu->clear();
    const DrawingView *view = currentView();
    const ZvDbDatabase *database = view ? view->document()->database() : nullptr;
    const QStringList names = database ? namedViews(*database) : QStringList();
    for (const QString &name : names) {
        QAction *action = m_namedViewMenu->addAction(verbatim(name));
        // As a line, not as a macro: a name may hold what ends a macro.
        connect(action, &QAction::triggered, this, [this, name] {
            m_host->whenIdle([name] { zvedCommandLine(toZvString(QStringLiteral("_-VIEW _Restore ") + name)); });
        });
    }
    if (names.isEmpty())
        m_namedViewMenu->addAction(tr("The drawing has no named views"))->setEnabled(false);
}

void MainWindow::fillBarsMenu()
{
    m_barsMenu->clear();
    const QList<QToolBar *> bars = findChildren<QToolBar *>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolBar *bar : bars)
        m_barsMenu->addAction(bar->toggleViewAction());
    m_barsMenu->addSeparator();
    const QList<QDockWidget *> docks = findChildren<QDockWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QDockWidget *dock : docks)
        m_barsMenu->addAction(dock->toggleViewAction());
}

// ---- documents ----------------------------------------------------------------------------------

void MainWindow::connectKernel()
{
    connect(m_events.get(), &KernelEvents::documentCreated, this, &MainWindow::addPage);
    connect(m_events.get(), &KernelEvents::documentToBeDestroyed, this, &MainWindow::removePage);
    connect(m_events.get(), &KernelEvents::documentDestroyed, this, &MainWindow::updateState);
    connect(m_events.get(), &KernelEvents::documentBecameCurrent, this, &MainWindow::showDocument);
    connect(m_events.get(), &KernelEvents::commandDone, this, &MainWindow::updateState);
    connect(m_events.get(), &KernelEvents::selectionChanged, this, [this] {
        if (DrawingView *view = currentView())
            view->selectionChanged();
        updateState();
    });
    connect(m_events.get(), &KernelEvents::layoutSwitched, this, [this] {
        if (DocumentPage *page = currentPage())
            page->layoutSwitched();
        updateState();
    });
}

DocumentPage *MainWindow::currentPage() const
{
    return qobject_cast<DocumentPage *>(m_tabs->currentWidget());
}

DrawingView *MainWindow::currentView() const
{
    const DocumentPage *page = currentPage();
    return page ? page->view() : nullptr;
}

DocumentPage *MainWindow::pageOf(const ZvApDocument *document) const
{
    for (int i = 0; i < m_tabs->count(); ++i) {
        auto *page = qobject_cast<DocumentPage *>(m_tabs->widget(i));
        if (page && page->document() == document)
            return page;
    }
    return nullptr;
}

QWidget *MainWindow::makeCloseButton(ZvApDocument *document)
{
    auto *button = new QToolButton;
    button->setObjectName(QStringLiteral("closeTab"));
    button->setAccessibleName(tr("Close this drawing"));
    button->setToolTip(tr("Close"));
    button->setIcon(Icons::icon(QStringLiteral("close")));
    button->setIconSize(QSize(14, 14));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    // The button dies with the tab: it must have left its click by then.
    connect(
        button, &QToolButton::clicked, this, [this, document] { closeDocument(document); }, Qt::QueuedConnection);
    return button;
}

void MainWindow::addPage(ZvApDocument *document)
{
    auto *page = new DocumentPage(document);
    DrawingView *view = page->view();
    connect(view, &DrawingView::pointerMoved, this, [this, document](const ZvGePoint3d &world) {
        ZvGePoint3d point = world;
        if (document->database())
            point.transformBy(document->database()->ucsMatrix().inverse());
        m_status->showCoordinates(point);
    });
    connect(view, &DrawingView::pointerLeft, m_status, &StatusFields::clearCoordinates);
    connect(view, &DrawingView::pointEntered, this, [](const ZvGePoint3d &world) { zvedFeedPoint(world); });
    connect(view, &DrawingView::windowEntered, this,
            [view](const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing) {
                const ViewCamera &camera = view->camera();
                zvedFeedSelection(view->entitiesIn(QRectF(camera.toWidget(first), camera.toWidget(second)), crossing));
            });
    connect(view, &DrawingView::enterPressed, this, [] { zvedFeedEnter(); });
    connect(view, &DrawingView::keyTyped, m_commandLine, &CommandLine::typeKey);
    connect(view, &DrawingView::menuWanted, this, [this](const QPoint &globalPos) {
        QMenu menu;
        for (const char *id :
             {"undo", "redo", "", "move", "copy", "erase", "", "zoomextents", "zoomprevious", "", "selectall"}) {
            if (*id)
                menu.addAction(m_actions[QLatin1String(id)]);
            else
                menu.addSeparator();
        }
        menu.exec(globalPos);
    });
    connect(page, &DocumentPage::layoutWanted, this, [this, document](const QString &name) {
        m_host->whenIdle([this, document, name] {
            if (pageOf(document))
                document->database()->setCurrentLayout(toZvString(name));
        });
    });
    connect(page, &DocumentPage::drawingChanged, this, &MainWindow::updateState);

    const QSignalBlocker quiet(m_tabs);
    const int index = m_tabs->addTab(page, QString());
    m_tabs->tabBar()->setTabButton(index, QTabBar::RightSide, makeCloseButton(document));
    const QString file = toQString(document->fileName());
    m_recentFiles->add(file);
    if (!file.isEmpty() && document->database())
        m_commandLine->print(tr("Opened %1: %n entities", nullptr, document->database()->entityCount())
                                 .arg(toQString(document->title())));
}

void MainWindow::removePage(ZvApDocument *document)
{
    const QSignalBlocker quiet(m_tabs);
    delete pageOf(document);
}

void MainWindow::showDocument(ZvApDocument *document)
{
    if (DocumentPage *page = pageOf(document)) {
        const QSignalBlocker quiet(m_tabs);
        m_tabs->setCurrentWidget(page);
        page->view()->setFocus();
    }
    updateState();
}

void MainWindow::tabChosen(int)
{
    const DocumentPage *page = currentPage();
    if (!page)
        return;
    m_host->whenIdle([this, document = page->document()] {
        if (pageOf(document))
            zvDocManagerPtr()->setCurrentDocument(document);
    });
}

void MainWindow::openFile(const QString &path)
{
    m_host->whenIdle([this, path] { m_host->openDocument(path); });
}

void MainWindow::closeDocument(ZvApDocument *document)
{
    m_host->whenIdle([this, document] {
        if (!pageOf(document))
            return;
        zvDocManagerPtr()->setCurrentDocument(document);
        if (m_host->mayClose(document))
            zvDocManagerPtr()->closeDocument(document);
    });
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_host->isBusy()) {
        event->ignore();
        m_host->whenIdle([this] { close(); });
        return;
    }
    ZvApDocManager *documents = zvDocManagerPtr();
    // All are asked before the first is closed: giving up leaves everything open.
    for (int i = 0; i < documents->documentCount(); ++i) {
        ZvApDocument *document = documents->documentAt(i);
        if (document->isModified())
            documents->setCurrentDocument(document);
        if (!m_host->mayClose(document)) {
            event->ignore();
            return;
        }
    }
    if (m_settings) {
        m_settings->setValue(QLatin1String(kGeometryKey), saveGeometry());
        m_settings->setValue(QLatin1String(kStateKey), saveState(kStateVersion));
    }
    while (documents->documentCount() > 0)
        documents->closeDocument(documents->documentAt(0));
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            openFile(url.toLocalFile());
    }
    event->acceptProposedAction();
}

// ---- commands -----------------------------------------------------------------------------------

void MainWindow::setPrompt(const std::optional<ZvEdPrompt> &prompt)
{
    if (prompt)
        m_commandLine->setPrompt(toQString(prompt->text), prompt->kind == ZvEdPrompt::kStringWithBlanks);
    else
        m_commandLine->clearPrompt();
    if (DrawingView *view = currentView())
        view->setPrompt(prompt);
}

void MainWindow::escape()
{
    DrawingView *view = currentView();
    if ((view && view->escape()) || zvedCancelCommand() || !view)
        return;
    ZvEdContext *context = view->document()->editingContext();
    if (context && context->selectionHolder())
        context->selectionHolder()->clear();
}

void MainWindow::setLineWeightDisplay(bool on)
{
    m_host->whenIdle([this, on] {
        const DrawingView *view = currentView();
        if (view && view->document()->database())
            view->document()->database()->setLineWeightDisplay(on);
        updateState();
    });
}

QString MainWindow::lastFolder() const
{
    const DrawingView *view = currentView();
    const QString file = view ? toQString(view->document()->fileName()) : QString();
    if (!file.isEmpty())
        return QFileInfo(file).absolutePath();
    const QStringList recent = m_recentFiles->paths();
    return recent.isEmpty() ? QDir::currentPath() : QFileInfo(recent.first()).absolutePath();
}

bool MainWindow::isComplete() const
{
    const DrawingView *view = currentView();
    return !view || view->isComplete();
}

void MainWindow::showAbout()
{
    const QString text
        = tr("Workbench %1\n\nA drawing application that shows the library libqtutils at work.\n\n"
             "Qt %2 (built with %3)\nMIT licence")
              .arg(QStringLiteral(WORKBENCH_VERSION), QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR));
    constexpr int kOkOnly = 0;
    constexpr int kMessageRow = 1;
    constexpr int kInformationIcon = 48;
    zvuiMessageBoxEx(toZvString(tr("About the Workbench")), toZvString(text), nullptr, kOkOnly, kMessageRow,
                     kInformationIcon);
}

void MainWindow::updateState()
{
    const ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    const ZvDbDatabase *database = document ? document->database() : nullptr;

    for (int i = 0; i < m_tabs->count(); ++i) {
        const ZvApDocument *shown = static_cast<DocumentPage *>(m_tabs->widget(i))->document();
        const QString star = shown->isModified() ? QStringLiteral("*") : QString();
        m_tabs->setTabText(i, verbatim(toQString(shown->title())) + star);
        m_tabs->setTabToolTip(i, toQString(shown->fileName()));
    }
    m_pages->setCurrentWidget(m_tabs->count() > 0 ? static_cast<QWidget *>(m_tabs) : m_startPage);
    setWindowTitle(document ? tr("%1[*] - Workbench").arg(toQString(document->title())) : tr("Workbench"));
    setWindowModified(document && document->isModified());

    for (QAction *action : qAsConst(m_drawingActions))
        action->setEnabled(database != nullptr);
    QAction *undo = m_actions[QStringLiteral("undo")];
    QAction *redo = m_actions[QStringLiteral("redo")];
    const QString undoName = database ? toQString(database->undoName()) : QString();
    const QString redoName = database ? toQString(database->redoName()) : QString();
    undo->setEnabled(database && database->canUndo());
    redo->setEnabled(database && database->canRedo());
    undo->setText(undoName.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(verbatim(undoName)));
    redo->setText(redoName.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(verbatim(redoName)));
    m_actions[QStringLiteral("lineweights")]->setChecked(database && database->lineWeightDisplay());
    m_status->showDocument(document);
}
