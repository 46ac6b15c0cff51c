// SPDX-License-Identifier: MIT
#ifndef WORKBENCH_H
#define WORKBENCH_H

#include <QString>

#include <memory>

class Autosave;
class ColorCommand;
class LinetypeHost;
class MainWindow;
class PlotUtility;
class QSettings;
class RecoveryStore;
class UpdateBusHost;
class ViewCommand;

/// The running program: starts the kernel's core, loads the library through its module entry, offers the update bus,
/// makes the window, and takes it all back in reverse.
class Workbench
{
public:
    /// Nothing is remembered.
    Workbench();
    /// \a settings may be null.
    explicit Workbench(std::unique_ptr<QSettings> settings);
    /// Closes open drawings without asking.
    ~Workbench();
    Workbench(const Workbench &) = delete;
    Workbench &operator=(const Workbench &) = delete;

    /// Keeps copies of unsaved drawings below \a folder from now on, written every so many seconds (0: on demand only),
    /// and asks about those of programs that were killed.
    void startRecovery(const QString &folder, int seconds);
    /// Null before startRecovery().
    Autosave *autosave() { return m_autosave.get(); }

    MainWindow &window() { return *m_window; }
    UpdateBusHost &bus() { return *m_bus; }

private:
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<UpdateBusHost> m_bus;
    std::unique_ptr<PlotUtility> m_plot;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<ColorCommand> m_color;
    std::unique_ptr<LinetypeHost> m_linetypes;
    std::unique_ptr<ViewCommand> m_view;
    std::unique_ptr<RecoveryStore> m_recovery;
    std::unique_ptr<Autosave> m_autosave;
};

#endif
