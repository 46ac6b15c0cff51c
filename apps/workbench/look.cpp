// SPDX-License-Identifier: MIT
#include "look.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace {

const char *const kStyleSheet = R"(
QMainWindow::separator { width: 3px; height: 3px; }
QToolBar { spacing: 2px; padding: 2px; border: none; }
QStatusBar::item { border: none; }
QDockWidget::title { padding: 3px 8px; }
)";

QPalette lightPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(237, 240, 244));
    palette.setColor(QPalette::WindowText, QColor(32, 40, 50));
    palette.setColor(QPalette::Base, QColor(255, 255, 255));
    palette.setColor(QPalette::AlternateBase, QColor(245, 247, 250));
    palette.setColor(QPalette::Text, QColor(32, 40, 50));
    palette.setColor(QPalette::Button, QColor(240, 243, 246));
    palette.setColor(QPalette::ButtonText, QColor(32, 40, 50));
    palette.setColor(QPalette::Highlight, QColor(24, 118, 210));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(250, 251, 253));
    palette.setColor(QPalette::ToolTipText, QColor(32, 40, 50));
    const QColor faint(150, 158, 168);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

QPalette darkPalette()
{
    const QColor text(226, 230, 236);
    const QColor faint(128, 134, 142);
    QPalette palette(text, QColor(22, 24, 28), QColor(80, 86, 94), QColor(24, 27, 31), QColor(38, 42, 48), text,
                     QColor(32, 35, 40));
    palette.setColor(QPalette::Window, QColor(45, 49, 55));
    palette.setColor(QPalette::AlternateBase, QColor(38, 42, 48));
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(32, 110, 190));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(110, 180, 255));
    palette.setColor(QPalette::LinkVisited, QColor(190, 160, 240));
    palette.setColor(QPalette::ToolTipBase, QColor(58, 63, 70));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

} // namespace

void applyLook(QApplication &application, Look look)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(look == Look::kDark ? darkPalette() : lightPalette());
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // That platform's own font is larger than any desktop's.
        QFont font = QApplication::font();
        font.setPointSize(9);
        QApplication::setFont(font);
    }
    application.setStyleSheet(QLatin1String(kStyleSheet));
}

QFont monospaceFont(const QFont &likeThis)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch())
        font.setFamily(QStringLiteral("Monospace")); // platforms without a theme name none
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(likeThis.pointSizeF());
    return font;
}
