// SPDX-License-Identifier: MIT
#include "autosave.h"
#include "language.h"
#include "look.h"
#include "mainwindow.h"
#include "programoptions.h"
#include "startupsteps.h"
#include "workbench.h"
#include "workbenchhost.h"

#include <QApplication>
#include <QGuiApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include <cstdio>

namespace {

void writeTo(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
}

/// What Qt says on machines without a desktop is no news to anybody, and would stand among our own messages.
void dropNoise(QtMsgType, const QMessageLogContext &, const QString &message)
{
    for (const char *noise :
         {"This plugin does not support propagateSizeHints()", "QStandardPaths: XDG_RUNTIME_DIR not set"}) {
        if (message.startsWith(QLatin1String(noise)))
            return;
    }
    writeTo(stderr, message + QLatin1Char('\n'));
}

bool isWatched(const ProgramOptions &options)
{
    return !options.quit && QGuiApplication::platformName() != QLatin1String("offscreen");
}

/// Runs without anybody watching leave no trace in the user's settings.
std::unique_ptr<QSettings> settingsFor(const ProgramOptions &options)
{
    if (!isWatched(options))
        return nullptr;
    return std::make_unique<QSettings>(QStringLiteral("zeva"), QStringLiteral("zvworkbench"));
}

/// Empty: no copies are kept, and nothing is asked about.
QString recoveryFolder(const ProgramOptions &options)
{
    if (options.quit || options.autosaveSeconds == 0)
        return QString();
    if (!options.recoveryFolder.isEmpty() || !isWatched(options))
        return options.recoveryFolder;
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QLatin1String("/recovery");
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const ProgramOptions options = ProgramOptions::parse(arguments);
    // These need no display.
    if (!options.error.isEmpty()) {
        writeTo(stderr, QStringLiteral("zvworkbench: %1\n").arg(options.error));
        return 1;
    }
    if (options.showHelp || options.showVersion) {
        writeTo(stdout, options.showHelp ? ProgramOptions::helpText() : ProgramOptions::versionText());
        return 0;
    }

    qInstallMessageHandler(dropNoise);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zvworkbench"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));
    applyLook(application, options.isDark ? Look::kDark : Look::kLight);
    // Before the first control is made.
    const QString languageError = useLanguage(application, options.language);
    if (!languageError.isEmpty()) {
        writeTo(stderr, QStringLiteral("zvworkbench: %1\n").arg(languageError));
        return 1;
    }

    Workbench workbench(settingsFor(options));
    MainWindow &window = workbench.window();
    window.host()->setInteractive(!options.quit);
    // A run that only converts or reports has nothing to show, and draws no view on its way.
    const bool showsNothing = options.quit && options.grabFile.isEmpty() && options.steps.isEmpty();
    if (!showsNothing)
        window.show();

    StartupSteps steps(window, options);
    QTimer::singleShot(0, &window, [&] {
        const QString recovery = recoveryFolder(options);
        if (!recovery.isEmpty())
            workbench.startRecovery(recovery,
                                    options.autosaveSeconds > 0 ? options.autosaveSeconds : Autosave::kDefaultSeconds);
        steps.run();
        if (!steps.error().isEmpty())
            writeTo(stderr, QStringLiteral("zvworkbench: %1\n").arg(steps.error()));
        if (options.quit)
            QCoreApplication::quit();
    });
    const int status = QApplication::exec();
    return steps.error().isEmpty() ? status : 1;
}
