// SPDX-License-Identifier: MIT
#ifndef WORKBENCHHOST_H
#define WORKBENCHHOST_H

#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "core/zvui.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <vector>

class CommandLine;
class DrawingView;
class InfoBar;
class MainWindow;
class WorkProgress;
class QEventLoop;

/// The program as the kernel sees it: runs the queue of commands when the event loop is idle, waits for input in a
/// nested loop, shows progress, reports and questions, and hands out main window and main view.
///
/// All message boxes of the workbench come through zvuiMessageBoxEx().
class WorkbenchHost : public QObject, public ZvEdHost, public ZvUiHost, public ZvApWindow
{
    Q_OBJECT
public:
    /// The window must outlive the host. Registers with the kernel, and takes itself back at the end.
    explicit WorkbenchHost(MainWindow *window);
    ~WorkbenchHost() override;

    /// Whether there is a person to ask. Without one questions answer themselves in the way that loses nothing on disk,
    /// reports go to the standard error, and a command that waits for input is cancelled.
    bool isInteractive() const { return m_interactive; }
    void setInteractive(bool interactive) { m_interactive = interactive; }
    bool isWaiting() const { return m_loop != nullptr; }
    bool isBusy() const;

    /// Cancels what runs, and calls \a action when no command and no long work runs any more; at once where none does.
    void whenIdle(std::function<void()> action);
    /// Runs a macro in place of what runs now; one that begins with "'" inside the command that waits.
    void runMacro(const QString &macro);
    /// Runs everything queued now; false with the first error.
    bool runQueue(QString *error = nullptr);

    /// Opens a drawing with progress and report; null when that failed.
    ZvApDocument *openDocument(const QString &path);
    /// Saves a drawing, asking for a name where it has none. False when that failed or was given up.
    bool saveDocument(ZvApDocument *document);
    /// The message in a box with the icon for errors.
    void showError(const QString &message);
    /// Reports that could not be shown to anybody since the last call.
    QStringList takeUnshownErrors();

    // ---- ZvEdHost
    void queueFilled() override;
    bool waitForInput(const ZvEdPrompt &prompt) override;
    void print(const ZvString &text) override;
    void changeView(const ViewRequest &request) override;
    void pick(const ZvGePoint3d &point, std::vector<ZvDbObjectId> &ids) override;
    void pickWindow(const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing,
                    std::vector<ZvDbObjectId> &ids) override;
    bool currentView(ViewState &state) override;
    ZvString askFileName(bool saving, const ZvString &suggestion) override;
    bool mayClose(ZvApDocument *document) override;
    ZvDbProgress *beginProgress(const ZvString &title) override;
    void endProgress() override;
    void showFileReport(const ZvString &path, const ZvDbFileReport &report) override;
    void quit() override;

    // ---- ZvUiHost
    void *mainWindow() override;
    int setCursor(void *window, int cursor) override;

    // ---- ZvApWindow
    void *handle() const override;
    ZvApView *mainView() const override;

Q_SIGNALS:
    /// A command waits for input; the event loop runs next.
    void waiting(const QString &prompt);

private:
    void runIdleActions();
    void leaveLoop();

    MainWindow *m_window; // not owned
    QEventLoop *m_loop = nullptr; // of the innermost wait
    QTimer m_idle;
    std::vector<std::function<void()>> m_idleActions;
    QStringList m_unshownErrors;
    int m_cursor = 256;
    bool m_interactive = true;
    bool m_running = false;
};

#endif
