// SPDX-License-Identifier: MIT
#ifndef STARTUPSTEPS_H
#define STARTUPSTEPS_H

#include "programoptions.h"

class MainWindow;

/// Does what the command line of the program asked for: opens the files, selects, runs macros and scripts, and writes
/// state, picture and export.
class StartupSteps
{
public:
    /// The window must outlive the steps and be shown.
    StartupSteps(MainWindow &window, const ProgramOptions &options) : m_window(window), m_options(options) { }
    /// Goes on after a step that failed, so that state and picture show what came of it.
    void run();
    /// What failed first, on one line; empty when nothing did.
    QString error() const { return m_error; }

private:
    void openFiles();
    void select();
    void runCommands();
    void showControls();
    void writeState();
    void grab();
    void grabControls();
    void exportDrawing();
    void fail(const QString &error);

    MainWindow &m_window;
    ProgramOptions m_options;
    QString m_error;
};

#endif
