// SPDX-License-Identifier: MIT
#include "zevatest.h"

#include <QFont>
#include <QLocale>
#include <QStringList>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

namespace {

struct MessageWatch
{
    QtMessageHandler previous = nullptr;
    QStringList expected;
    QStringList unexpected;
};

MessageWatch &messageWatch()
{
    static MessageWatch watch;
    return watch;
}

void watchMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    MessageWatch &watch = messageWatch();
    if (type != QtDebugMsg && type != QtInfoMsg) {
        if (watch.expected.removeOne(text))
            return;
        watch.unexpected << text;
    }
    watch.previous(type, context, text);
}

} // namespace

void ZevaTest::expectWarning(const QString &text)
{
    messageWatch().expected << text;
}

void ZevaTest::init()
{
    MessageWatch &watch = messageWatch();
    watch.expected.clear();
    watch.unexpected.clear();
    watch.previous = qInstallMessageHandler(watchMessage);
}

void ZevaTest::cleanup()
{
    MessageWatch &watch = messageWatch();
    qInstallMessageHandler(watch.previous);
    QVERIFY2(watch.unexpected.isEmpty(), qPrintable(QStringLiteral("Unexpected: ") + watch.unexpected.join(QLatin1Char('\n'))));
    QVERIFY2(watch.expected.isEmpty(), qPrintable(QStringLiteral("Never came: ") + watch.expected.join(QLatin1Char('\n'))));

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
    qputenv("QT_FONT_DPI", "96");
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
