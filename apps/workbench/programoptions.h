// SPDX-License-Identifier: MIT
#ifndef PROGRAMOPTIONS_H
#define PROGRAMOPTIONS_H

#include <QString>
#include <QStringList>
#include <QVector>

/// What the command line of the program asks for.
struct ProgramOptions
{
    /// A macro, or a file of command lines.
    struct Step
    {
        bool isScript = false;
        QString text; ///< The macro itself, or the script's path.
    };
    QStringList files;
    QVector<Step> steps; ///< In the order in which they were given.
    QString select;
    QString stateFile;
    QString grabFile;
    QString exportFile;
    QString grabControlsFolder;
    bool showControls = false;
    QString controlsPage; ///< Empty: the first.
    QString recoveryFolder; ///< Empty: the usual one.
    int autosaveSeconds = -1; ///< -1: as usual.
    QString language; ///< Of the library's texts; empty: as they are written.
    bool isDark = false;
    bool quit = false;
    bool showHelp = false;
    bool showVersion = false;
    QString error; ///< One line; empty when all is well.

    /// \a arguments start with the program's name. Needs no application object.
    static ProgramOptions parse(const QStringList &arguments);
    static QString helpText();
    static QString versionText();
};

#endif
