// SPDX-License-Identifier: MIT
#include "programoptions.h"

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
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
        return options;
    }
    options.files = parser.positionalArguments();
    options.select = parser.value(QStringLiteral("select"));
    options.stateFile = parser.value(QStringLiteral("state"));
    options.grabFile = parser.value(QStringLiteral("grab"));
    options.exportFile = parser.value(QStringLiteral("export"));
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
    for (const char *name : {"select", "state", "grab", "export", "recovery", "lang"}) {
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
        text += left.leftJustified(22) + fromTable(option.help) + QLatin1Char('\n');
    }
    text += QStringLiteral(
        "\n"
        "Whatever the order on the command line: the files are opened, then --select is done, then all\n"
        "macros and scripts in the order given, then --state, --grab, --export and --quit. All but the\n"
        "opening concerns the drawing that is current, which is the last one opened.\n"
        "With --quit nothing is asked: a command that waits for more input is cancelled.\n"
        "\n"
        "Exit status: 0, or 1 with one line on the standard error when something failed.\n");
    return text;
}

QString ProgramOptions::versionText()
{
    return QStringLiteral("zvworkbench %1\n").arg(QStringLiteral(WORKBENCH_VERSION));
}
