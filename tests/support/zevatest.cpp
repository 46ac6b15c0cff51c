// SPDX-License-Identifier: MIT
#include "zevatest.h"

#include "base/zvlog.h"
#include "db/zvdbdatabase.h"

#include <QFont>
#include <QLocale>
#include <QStringList>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

namespace {

/// What was announced, and what came without.
struct Watch
{
    QStringList expected;
    QStringList unexpected;

    void start()
    {
        expected.clear();
        unexpected.clear();
    }
    /// True when it was announced.
    bool take(const QString &text)
    {
        if (expected.removeOne(text))
            return true;
        unexpected << text;
        return false;
    }
    /// Empty when all is well.
    QByteArray complaint() const
    {
        if (!unexpected.isEmpty())
            return "Unexpected: " + unexpected.join(QLatin1Char('\n')).toUtf8();
        if (!expected.isEmpty())
            return "Never came: " + expected.join(QLatin1Char('\n')).toUtf8();
        return QByteArray();
    }
};

Watch s_messages;
Watch s_assertions;
QtMessageHandler s_previousMessageHandler = nullptr;
ZvAssertHandler s_previousAssertHandler = nullptr;

/// What the platforms say on their own account: offscreen of windows it does not really show, X11 of windows that are
/// gone by the time the server answers.
bool isOfThePlatform(const QMessageLogContext &context, const QString &text)
{
    return text.startsWith(QLatin1String("This plugin does not support "))
        || QLatin1String(context.category).startsWith(QLatin1String("qt.qpa."));
}

void watchMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (isOfThePlatform(context, text))
        return;
    const bool isHarmless = type == QtDebugMsg || type == QtInfoMsg;
    if (!isHarmless && s_messages.take(text))
        return;
    s_previousMessageHandler(type, context, text);
}

void watchAssertion(const char *text, const char *, int)
{
    s_assertions.take(QString::fromUtf8(text));
}

} // namespace

void ZevaTest::expectWarning(const QString &text)
{
    s_messages.expected << text;
}

void ZevaTest::expectAssertion(const QString &text)
{
    s_assertions.expected << text;
}

void ZevaTest::init()
{
    s_messages.start();
    s_assertions.start();
    s_previousMessageHandler = qInstallMessageHandler(watchMessage);
    s_previousAssertHandler = zvSetAssertHandler(watchAssertion);
}

void ZevaTest::cleanup()
{
    qInstallMessageHandler(s_previousMessageHandler);
    zvSetAssertHandler(s_previousAssertHandler);
    QVERIFY2(s_messages.complaint().isEmpty(), s_messages.complaint().constData());
    QVERIFY2(s_assertions.complaint().isEmpty(), s_assertions.complaint().constData());
    QCOMPARE(zvdbOpenObjectCount(), 0);

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QWidgetList left = QApplication::topLevelWidgets();
    QVERIFY2(left.isEmpty(), left.isEmpty() ? "" : left.first()->metaObject()->className());
}

void zevaPinEnvironment()
{
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("QT_STYLE_OVERRIDE");
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_AUTO_SCREEN_SCALE_FACTOR");
    qputenv("QT_FONT_DPI", qEnvironmentVariableIsSet("ZEVA_TEST_DPI") ? qgetenv("ZEVA_TEST_DPI") : "96");
    // A desktop's theme would bring its own palette, font and dialogs.
    qputenv("XDG_CURRENT_DESKTOP", "");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    QLocale::setDefault(QLocale::c());
}

void zevaPinApplication()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    for (const Qt::UIEffect effect : {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo, Qt::UI_AnimateTooltip,
                                      Qt::UI_FadeTooltip, Qt::UI_AnimateToolBox})
        QApplication::setEffectEnabled(effect, false);
    QApplication::setCursorFlashTime(0);
}

bool zevaWaitForActive(const QWidget *window)
{
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
}
