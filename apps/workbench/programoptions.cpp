// SPDX-License-Identifier: MIT
#include "programoptions.h"

#include "controlswindow.h"

#include <QCommandLineParser>
#include <QHash>

namespace {

struct Option
{
    const char *name;
    const char *value; ///< Null for one that takes none.
    const char *help;
};

const Option kOptions[] = {
    {"select", "EXPR", "select entities: all, none, layer=NAME, type=NAME (such as LINE), or handles such as 1F,2A3"},
    {"macro", "TEXT", "run a menu macro; may be given several times"},
    {"script", "FILE", "run the command lines of a file; may be given several times"},
    {"state", "FILE", "write the state of drawings, settings, selection and controls as JSON"},
    {"grab", "FILE.png", "write a picture of the main window once the drawing is shown completely"},
    {"export", "FILE", "write the drawing as .dxf, .png, .pdf or .svg, by the ending"},
    {"controls", "[PAGE]", "open the window of controls, at the page of that class or dialog"},
    {"grab-controls", "FOLDER", "write a picture of each page of that window, and index.md that shows them"},
    {"recovery", "FOLDER", "keep copies of unsaved drawings there, for the case that the program is killed"},
    {"autosave", "SECONDS", "time between two such copies, 30 by default; 0 keeps none"},
    {"lang", "LANGUAGE", "texts of the library in this language, such as en; zh is the language they are written in"},
    {"dark", nullptr, "light texts on a dark background"},
    {"quit", nullptr, "end when all of the above is done"},
    {"help", nullptr, "show this text"},
    {"version", nullptr, "show the version"},
};

constexpr int kLongestAutosave = 3600; // seconds

QString fromTable(const char *text)
{
    return QString::fromLatin1(text);
}

const QString kControls = QStringLiteral("--controls");

/// Takes "--controls" and its page out, since the parser knows no value that may be missing. What follows is a page
/// when it is the name of one, and a file otherwise.
QStringList takeControls(QStringList arguments, ProgramOptions &options)
{
    const QStringList pages = ControlsWindow::pageNames();
    for (int i = 1; i < arguments.size() && arguments[i] != QLatin1String("--"); ++i) {
        const QString argument = arguments[i];
        const bool hasValue = argument.startsWith(kControls + QLatin1Char('='));
        if (argument != kControls && !hasValue)
            continue;
        options.showControls = true;
        arguments.removeAt(i);
        if (hasValue)
            options.controlsPage = argument.mid(kControls.size() + 1);
        else if (i < arguments.size() && pages.contains(arguments[i]))
            options.controlsPage = arguments.takeAt(i);
        if (hasValue && !pages.contains(options.controlsPage))
            options.error = QStringLiteral("The window of controls has no page \"%1\".").arg(options.controlsPage);
        --i;
    }
    return arguments;
}

} // namespace

ProgramOptions ProgramOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const Option &option : kOptions) {
        QStringList names(fromTable(option.name));
        if (names.first() == QLatin1String("help"))
            names << QStringLiteral("h");
        parser.addOption(QCommandLineOption(names, fromTable(option.help), fromTable(option.value)));
    }

    ProgramOptions options;
    if (!parser.parse(takeControls(arguments, options))) {
        options.error = parser.errorText();
        return options;
    }
    options.files = parser.positionalArguments();
    options.select = parser.value(QStringLiteral("select"));
    options.stateFile = parser.value(QStringLiteral("state"));
    options.grabFile = parser.value(QStringLiteral("grab"));
    options.exportFile = parser.value(QStringLiteral("export"));
    options.grabControlsFolder = parser.value(QStringLiteral("grab-controls"));
    options.recoveryFolder = parser.value(QStringLiteral("recovery"));
    if (parser.isSet(QStringLiteral("autosave"))) {
        bool isNumber = false;
        options.autosaveSeconds = parser.value(QStringLiteral("autosave")).toInt(&isNumber);
        if (!isNumber || options.autosaveSeconds < 0 || options.autosaveSeconds > kLongestAutosave)
            options.error = QStringLiteral("The option --autosave needs a number of seconds from 0 to 3600.");
    }
    options.language = parser.value(QStringLiteral("lang"));
    options.isDark = parser.isSet(QStringLiteral("dark"));
    options.quit = parser.isSet(QStringLiteral("quit"));
    options.showHelp = parser.isSet(QStringLiteral("help"));
    options.showVersion = parser.isSet(QStringLiteral("version"));

    // The parser keeps the order of the names, and for each name the order of its values.
    QHash<QString, int> taken;
    const QStringList names = parser.optionNames();
    for (const QString &name : names) {
        const bool isScript = name == QLatin1String("script");
        if (isScript || name == QLatin1String("macro"))
            options.steps << Step{isScript, parser.values(name).value(taken[name]++)};
    }
    for (const char *name : {"select", "state", "grab", "export", "grab-controls", "recovery", "lang"}) {
        if (parser.isSet(fromTable(name)) && parser.value(fromTable(name)).isEmpty())
            options.error = QStringLiteral("The option --%1 needs a value.").arg(fromTable(name));
    }
    return options;
}

QString ProgramOptions::helpText()
{
    QString text = QStringLiteral("Usage: zvworkbench [OPTION...] [FILE...]\n"
                                  "Opens the drawings (DXF) in the workbench.\n\n");
    for (const Option &option : kOptions) {
        QString left = QStringLiteral("  --") + fromTable(option.name);
        if (option.value)
            left += QLatin1Char(' ') + fromTable(option.value);
        text += left.leftJustified(25) + fromTable(option.help) + QLatin1Char('\n');
    }
    text += QStringLiteral(
        "\n"
        "Whatever the order on the command line: the files are opened, then --select is done, then all\n"
        "macros and scripts in the order given, then --controls, --state, --grab, --grab-controls, --export\n"
        "and --quit. All but the opening concerns the drawing that is current, which is the last one\n"
        "opened; --controls and --grab-controls start a new one where none is.\n"
        "With --quit nothing is asked: a command that waits for more input is cancelled.\n"
        "\n"
        "Exit status: 0, or 1 with one line on the standard error when something failed.\n");
    return text;
}

QString ProgramOptions::versionText()
{
    return QStringLiteral("zvworkbench %1\n").arg(QStringLiteral(WORKBENCH_VERSION));
}
