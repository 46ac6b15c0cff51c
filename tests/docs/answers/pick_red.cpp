// SPDX-License-Identifier: MIT
// The user of the property tool bar: picks red for the drawing, takes it back, and closes the window. Where something
// does not come true in time the program ends with 1.
#include "base/zvstring.h"
#include "core/zveditor.h"
#include "db/zvdbdatabase.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <vector>

namespace {

constexpr int kMostMilliseconds = 60000; // for a busy machine; what comes true comes at once
constexpr int kRed = 1;
constexpr int kByLayer = 256;

QComboBox *colorCombo()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        const QList<QComboBox *> combos
            = qobject_cast<const QMainWindow *>(window) ? window->findChildren<QComboBox *>() : QList<QComboBox *>();
        for (QComboBox *combo : combos) {
            if (combo->inherits("ZvColorComboBox"))
                return combo;
        }
    }
    return nullptr;
}

/// Drawing and control at once.
bool isCurrent(int color, const QString &text)
{
    const ZvDbDatabase *drawing = curDatabase();
    const QComboBox *combo = colorCombo();
    return drawing && drawing->cecolor().colorIndex() == color && combo && combo->isEnabled()
        && combo->currentText() == text;
}

class User : public QObject
{
public:
    explicit User(QObject *parent) : QObject(parent)
    {
        m_clock.start();
        connect(&m_timer, &QTimer::timeout, this, &User::look);
        m_timer.start(10);
    }

private:
    struct Step
    {
        std::function<bool()> isDue;
        std::function<void()> act;
    };

    void look()
    {
        if (m_clock.elapsed() > kMostMilliseconds) {
            qCritical("step %d is not due: tool bar and drawing are not in step", int(m_step));
            QApplication::exit(1);
        } else if (m_step < m_steps.size() && m_steps[m_step].isDue()) {
            m_steps[m_step++].act();
        }
    }

    const QString m_byLayer = QStringLiteral("ByLayer");
    const QString m_red = QStringLiteral("红");
    const std::vector<Step> m_steps = {
        {[this] { return isCurrent(kByLayer, m_byLayer); },
         [this] {
             QComboBox *combo = colorCombo();
             combo->showPopup(); // fills the list
             combo->setCurrentIndex(combo->findText(m_red));
             combo->hidePopup();
         }},
        {[this] { return isCurrent(kRed, m_red); }, [] { zvedCommandLine("_U"); }},
        {[this] { return isCurrent(kByLayer, m_byLayer); }, [] { QApplication::closeAllWindows(); }},
    };
    std::size_t m_step = 0;
    QElapsedTimer m_clock;
    QTimer m_timer;
};

void sitDown()
{
    new User(QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(sitDown)
