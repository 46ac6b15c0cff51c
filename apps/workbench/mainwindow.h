// SPDX-License-Identifier: MIT
#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include "core/zveditor.h"

#include <QHash>
#include <QMainWindow>

#include <memory>
#include <optional>

class CommandLine;
class DocumentPage;
class DrawingView;
class InfoBar;
class KernelEvents;
class RecentFiles;
class StartPage;
class StatusFields;
class WorkProgress;
class WorkbenchHost;
class ZvApDocument;
class QMenu;
class QSettings;
class QStackedWidget;
class QTabWidget;
struct ActionSpec;
struct DialogDemo;

/// The window of the workbench: a tab for each drawing, menus and tool bars, command line, status bar. What it does to
/// a drawing goes through commands.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// Needs the core started. \a settings remember window and files; null: nothing is remembered. They must outlive
    /// the window.
    explicit MainWindow(QSettings *settings, QWidget *parent = nullptr);
    /// All documents must be closed.
    ~MainWindow() override;

    /// Brings back size, tool bars and panels of the last time, once all of them stand in the window.
    void restoreLayout();
    WorkbenchHost *host() const { return m_host.get(); }
    CommandLine *commandLine() const { return m_commandLine; }
    InfoBar *infoBar() const { return m_infoBar; }
    WorkProgress *progress() const { return m_progress; }
    StartPage *startPage() const { return m_startPage; }
    QTabWidget *documentTabs() const { return m_tabs; }
    DocumentPage *currentPage() const;
    /// Null while no drawing is open.
    DrawingView *currentView() const;
    QString lastFolder() const;
    /// Everything that is to be seen has been drawn.
    bool isComplete() const;

    /// What a running command asks for; nothing while none does.
    void setPrompt(const std::optional<ZvEdPrompt> &prompt);
    /// Opens a drawing once nothing else runs, in front of a person.
    void openFile(const QString &path);
    /// Closes a drawing once nothing runs, after asking.
    void closeDocument(ZvApDocument *document);
    /// Takes back what was begun last: a window, the running command, the selection.
    void escape();
    void showAbout();
    /// The window of controls, at the page of that name or the first one.
    void showControls(const QString &page = QString());

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeCentralWidget();
    void makeCommandLine();
    void makeActions();
    void makeMenus();
    void addDemos(QMenu *menu, const QVector<DialogDemo> &demos);
    void makeToolBars();
    void makeStatusBar();
    QAction *makeAction(const ActionSpec &spec);
    void connectKernel();
    void fillRecentMenu();
    void fillNamedViewMenu();
    void fillBarsMenu();

    DocumentPage *pageOf(const ZvApDocument *document) const;
    QWidget *makeCloseButton(ZvApDocument *document);
    void addPage(ZvApDocument *document);
    void removePage(ZvApDocument *document);
    void showDocument(ZvApDocument *document);
    void tabChosen(int index);
    /// Titles, enabled actions, status bar: all that follows the current drawing.
    void updateState();
    void setLineWeightDisplay(bool on);

    QSettings *m_settings;
    RecentFiles *m_recentFiles;
    InfoBar *m_infoBar = nullptr;
    StartPage *m_startPage = nullptr;
    QTabWidget *m_tabs = nullptr;
    QStackedWidget *m_pages = nullptr;
    CommandLine *m_commandLine = nullptr;
    WorkProgress *m_progress = nullptr;
    StatusFields *m_status = nullptr;
    QMenu *m_recentMenu = nullptr;
    QMenu *m_namedViewMenu = nullptr;
    QMenu *m_barsMenu = nullptr;
    QHash<QString, QAction *> m_actions;
    QList<QAction *> m_drawingActions; // enabled while a drawing is open
    std::unique_ptr<KernelEvents> m_events;
    std::unique_ptr<WorkbenchHost> m_host;
};

#endif
