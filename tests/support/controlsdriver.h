// SPDX-License-Identifier: MIT
#ifndef CONTROLSDRIVER_H
#define CONTROLSDRIVER_H

#include "controlpage.h"
#include "controlswindow.h"
#include "workbenchtest.h"

#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

/// The workbench's window of controls, opened from its menu at a page.
class ControlsDriver
{
public:
    ControlsDriver(WorkbenchSession &session, const char *page)
    {
        session.action("controls")->trigger();
        m_window = session.window().findChild<ControlsWindow *>(QStringLiteral("controlsWindow"));
        if (!m_window || !m_window->isVisible() || !m_window->showPage(QLatin1String(page)))
            qFatal("the window of controls did not open at %s", page);
        QCoreApplication::processEvents(); // what follows the drawing is filled
    }
    ~ControlsDriver() { delete m_window; }
    Q_DISABLE_COPY(ControlsDriver)

    ControlsWindow &window() { return *m_window; }
    QWidget &page() { return *m_window->currentPage(); }
    /// A control of the page by its name, or a field of the settings; null where there is none.
    template <class Control> Control *control(const char *name)
    {
        for (Control *candidate : page().findChildren<Control *>()) {
            const QString id = candidate->property("id").toString();
            if ((id.isEmpty() ? candidate->objectName() : id) == QLatin1String(name))
                return candidate;
        }
        return nullptr;
    }
    /// All lines of the log, the oldest first.
    QStringList told()
    {
        const QString text = page().findChild<QPlainTextEdit *>(QStringLiteral("signalLog"))->toPlainText();
        return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    }
    /// Empties the log by its button.
    void forget() { QTest::mouseClick(page().findChild<QPushButton *>(QStringLiteral("clearLog")), Qt::LeftButton); }

private:
    QPointer<ControlsWindow> m_window;
};

#endif
