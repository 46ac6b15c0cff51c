// SPDX-License-Identifier: MIT
#ifndef WORKBENCHTEST_H
#define WORKBENCHTEST_H

#include "core/zvapdocument.h"
#include "db/zvdbentities.h"
#include "documentpage.h"
#include "drawingview.h"
#include "mainwindow.h"
#include "workbench.h"
#include "workbenchhost.h"

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QQueue>
#include <QTest>
#include <QTimer>

#include <functional>

/// A running workbench with its window shown, and the hands that use it.
class WorkbenchSession
{
public:
    WorkbenchSession()
    {
        window().show();
        m_exposed = QTest::qWaitForWindowExposed(&window());
    }

    bool isExposed() const { return m_exposed; }
    MainWindow &window() { return m_workbench.window(); }
    Workbench &workbench() { return m_workbench; }
    UpdateBusHost &bus() { return m_workbench.bus(); }
    ZvApDocument *document() const { return zvDocManagerPtr()->currentDocument(); }
    ZvDbDatabase &database() const { return *document()->database(); }
    DrawingView &view() { return *window().currentView(); }
    const std::vector<ZvDbObjectId> &selection() const
    {
        return document()->editingContext()->selectionHolder()->ids();
    }

    /// An empty drawing of which the view shows 0,0 to at least 400,200 and then some.
    void newDrawing()
    {
        zvDocManagerPtr()->newDocument();
        QCoreApplication::processEvents();
        ViewCamera camera = view().camera();
        ZvGeExtents2d box;
        box.add(ZvGePoint2d(0, 0));
        box.add(ZvGePoint2d(400, 200));
        camera.fit(box, 0.1);
        view().setCamera(camera);
        database().clearUndo();
        database().setModified(false);
    }

    ZvDbObjectId addLine(const ZvGePoint3d &from, const ZvGePoint3d &to)
    {
        ZvDbObjectId id;
        auto *line = new ZvDbLine(from, to);
        if (database().appendEntity(line, database().modelSpaceId(), id) != Zv::eOk)
            delete line;
        return id;
    }

    QPoint pixel(double x, double y) { return view().camera().toWidget(ZvGePoint3d(x, y)).toPoint(); }

    void moveTo(const QPoint &pos, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent event(QEvent::MouseMove, pos, view().mapToGlobal(pos), Qt::NoButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&view(), &event);
    }
    void click(const QPoint &pos, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        moveTo(pos);
        QTest::mouseClick(&view(), button, modifiers, pos);
    }
    void drag(const QPoint &from, const QPoint &to, Qt::MouseButton button = Qt::LeftButton)
    {
        moveTo(from);
        QTest::mousePress(&view(), button, Qt::NoModifier, from);
        moveTo((from + to) / 2, button);
        moveTo(to, button);
        QTest::mouseRelease(&view(), button, Qt::NoModifier, to);
    }
    /// Types at the view, as a person who has just used the mouse there; the text ends with Enter.
    void type(const QString &text)
    {
        QTest::keyClicks(&view(), text);
        QTest::keyClick(&view(), Qt::Key_Return);
    }
    QAction *action(const char *name) { return window().findChild<QAction *>(QLatin1String(name)); }

private:
    Workbench m_workbench;
    bool m_exposed = false;
};

/// Answers the prompts of commands from inside the event loop in which a command waits, as a user would.
///
/// Answers are queued before the command is started; each is called when a prompt is shown whose text holds \a part. A
/// prompt without an answer, or with another text than expected, is cancelled, and so is everything when the time is
/// up: finish() is false then and failure() says why.
class PromptDriver : public QObject
{
public:
    explicit PromptDriver(WorkbenchSession &session) : m_session(session)
    {
        connect(session.window().host(), &WorkbenchHost::waiting, this,
                [this](const QString &prompt) { QTimer::singleShot(0, this, [this, prompt] { answer(prompt); }); });
        m_watchdog.setSingleShot(true);
        connect(&m_watchdog, &QTimer::timeout, this, [this] { fail(QStringLiteral("the time is up")); });
        m_watchdog.start(kPatience);
    }
    void next(const QString &part, std::function<void()> answer) { m_answers.enqueue({part, std::move(answer)}); }
    /// Runs the event loop until no command runs and nothing is queued; true when all answers were used.
    bool finish()
    {
        const bool idle = QTest::qWaitFor(
            [this] { return !m_session.window().host()->isBusy() && !zvedQueueHasInput(); }, 2 * kPatience);
        if (!m_answers.isEmpty() && m_failure.isEmpty())
            m_failure = QStringLiteral("never asked: ") + m_answers.head().part;
        return idle && m_failure.isEmpty();
    }
    QByteArray failure() const { return m_failure.toUtf8(); }

private:
    static constexpr int kPatience = 10000;
    struct Answer
    {
        QString part;
        std::function<void()> give;
    };

    void answer(const QString &prompt)
    {
        if (m_answers.isEmpty() || !prompt.contains(m_answers.head().part)) {
            fail(QStringLiteral("unexpected prompt: ") + prompt);
            return;
        }
        m_answers.dequeue().give();
    }
    void fail(const QString &failure)
    {
        if (m_failure.isEmpty())
            m_failure = failure;
        zvedCancelCommand();
    }

    WorkbenchSession &m_session;
    QQueue<Answer> m_answers;
    QTimer m_watchdog;
    QString m_failure;
};

#endif
