// SPDX-License-Identifier: MIT
#include "qt_utils.h"
#include "x11client.h"
#include "xdotool.h"
#include "zevatest.h"

#include <QMouseEvent>
#include <QProcess>
#include <QWidget>

Q_DECLARE_METATYPE(QMargins)

namespace {

/// A window that the window manager leaves alone: what is sent for it arrives, but starts no drag.
class UnmanagedWindow : public QWidget
{
public:
    UnmanagedWindow() : QWidget(nullptr, Qt::Window | Qt::X11BypassWindowManagerHint) { }
};

/// A window that hands a press to the window manager, as a title bar of its own would.
class DragWindow : public QWidget
{
public:
    explicit DragWindow(Qt::WindowFrameSection section) : m_section(section) { }
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        ++presses;
        zvqt_window_start_native_drag_linux(this, event->globalPos(), m_section);
    }

private:
    Qt::WindowFrameSection m_section;
};

bool runXdotool(const QStringList &arguments)
{
    return QProcess::execute(QStringLiteral("xdotool"), arguments) == 0;
}

/// Holds the left button down for its life.
class HeldButton
{
public:
    HeldButton() : m_pressed(runXdotool({QStringLiteral("mousedown"), QStringLiteral("1")})) { }
    ~HeldButton() { runXdotool({QStringLiteral("mouseup"), QStringLiteral("1")}); }
    Q_DISABLE_COPY(HeldButton)
    bool isPressed() const { return m_pressed; }

private:
    bool m_pressed;
};

bool movePointer(const QPoint &pos)
{
    return runXdotool({QStringLiteral("mousemove"), QString::number(pos.x()), QString::number(pos.y())});
}

} // namespace

/// Native dragging on a real X server with a window manager.
class TestNativeDrag : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();

    void displayIsTheApplicationsConnection();
    void sectionBecomesTheDirection_data();
    void sectionBecomesTheDirection();
    void sectionWithoutDirectionSendsNothing_data();
    void sectionWithoutDirectionSendsNothing();
    void releaseIsSentToTheWidgetBeforeTheRequest();
    void requestNamesTheTopLevelWindow();
    void pointerIsGivenBack();
    void windowFollowsThePointer_data();
    void windowFollowsThePointer();
};

void TestNativeDrag::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QVERIFY(X11Client().isConnected());
}

void TestNativeDrag::displayIsTheApplicationsConnection()
{
    void *display = zvqt_get_display();
    QVERIFY(display);
    QCOMPARE(zvqt_get_display(), display);
}

void TestNativeDrag::sectionBecomesTheDirection_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<long>("direction");
    QTest::newRow("left") << int(Qt::LeftSection) << 7L;
    QTest::newRow("top left") << int(Qt::TopLeftSection) << 0L;
    QTest::newRow("top") << int(Qt::TopSection) << 1L;
    QTest::newRow("top right") << int(Qt::TopRightSection) << 2L;
    QTest::newRow("right") << int(Qt::RightSection) << 3L;
    QTest::newRow("bottom right") << int(Qt::BottomRightSection) << 4L;
    QTest::newRow("bottom") << int(Qt::BottomSection) << 5L;
    QTest::newRow("bottom left") << int(Qt::BottomLeftSection) << 6L;
    QTest::newRow("title bar: move") << int(Qt::TitleBarArea) << 8L;
}

void TestNativeDrag::sectionBecomesTheDirection()
{
    QFETCH(int, section);
    QFETCH(long, direction);
    UnmanagedWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    X11Client client;
    client.listenToRoot();
    QVERIFY(zvqt_window_start_native_drag_linux(&window, QPoint(123, 45), Qt::WindowFrameSection(section)));

    const QVector<X11Event> events = client.takeEvents(zvqt_get_display());
    QCOMPARE(events.size(), 1);
    const X11Event &request = events.first();
    QCOMPARE(request.type, X11Client::kClientMessage);
    QVERIFY(request.sentByAClient);
    QCOMPARE(request.messageType, QByteArray("_NET_WM_MOVERESIZE"));
    QCOMPARE(request.format, 32);
    QCOMPARE(request.window, static_cast<unsigned long>(window.winId()));
    QCOMPARE(request.data[0], 123L);
    QCOMPARE(request.data[1], 45L);
    QCOMPARE(request.data[2], direction);
    QCOMPARE(request.data[3], 1L);
    QCOMPARE(request.data[4], 0L);
}

void TestNativeDrag::sectionWithoutDirectionSendsNothing_data()
{
    QTest::addColumn<int>("section");
    QTest::newRow("no section") << int(Qt::NoSection);
    QTest::newRow("below all sections") << -1;
    QTest::newRow("above all sections") << 10;
}

void TestNativeDrag::sectionWithoutDirectionSendsNothing()
{
    QFETCH(int, section);
    UnmanagedWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    X11Client client;
    client.listenToRoot();
    client.listenToButtonRelease(window.winId());
    QVERIFY(zvqt_window_start_native_drag_linux(&window, QPoint(10, 10), Qt::WindowFrameSection(section)));
    QCOMPARE(client.takeEvents(zvqt_get_display()).size(), 0);
}

void TestNativeDrag::releaseIsSentToTheWidgetBeforeTheRequest()
{
    UnmanagedWindow window;
    QWidget title(&window);
    title.setGeometry(20, 30, 100, 25);
    title.winId(); // a window of its own, for the other client to listen to
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    X11Client client;
    client.listenToRoot();
    client.listenToButtonRelease(title.winId());
    const QPoint globalPos = title.mapToGlobal(QPoint(7, 9));
    QVERIFY(zvqt_window_start_native_drag_linux(&title, globalPos, Qt::TitleBarArea));

    const QVector<X11Event> events = client.takeEvents(zvqt_get_display());
    QCOMPARE(events.size(), 2);
    const X11Event &release = events.first();
    QCOMPARE(release.type, X11Client::kButtonRelease);
    QVERIFY(release.sentByAClient);
    QCOMPARE(release.window, static_cast<unsigned long>(title.winId()));
    QCOMPARE(release.root, client.rootWindow());
    QCOMPARE(release.time, 0UL);
    QCOMPARE(release.pos, QPoint(7, 9));
    QCOMPARE(release.rootPos, globalPos);
    QCOMPARE(release.button, 0U);
    QCOMPARE(release.state, 0U);
    QVERIFY(release.sameScreen);
    QCOMPARE(events.last().type, X11Client::kClientMessage);
}

void TestNativeDrag::requestNamesTheTopLevelWindow()
{
    UnmanagedWindow window;
    QWidget middle(&window);
    QWidget title(&middle);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    X11Client client;
    client.listenToRoot();
    QVERIFY(zvqt_window_start_native_drag_linux(&title, QPoint(1, 2), Qt::RightSection));
    const QVector<X11Event> events = client.takeEvents(zvqt_get_display());
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.first().window, static_cast<unsigned long>(window.winId()));
}

void TestNativeDrag::pointerIsGivenBack()
{
    UnmanagedWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    X11Client client;
    window.grabMouse();
    QVERIFY(!client.canGrabPointer(zvqt_get_display()));

    zvqt_window_start_native_drag_linux(&window, QPoint(0, 0), Qt::TitleBarArea);
    const bool isFree = client.canGrabPointer(zvqt_get_display());
    window.releaseMouse();
    QVERIFY(isFree);
}

void TestNativeDrag::windowFollowsThePointer_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QMargins>("edges"); // which edges follow the pointer to the right and down
    QTest::newRow("title bar moves the window") << int(Qt::TitleBarArea) << QMargins(1, 1, 1, 1);
    QTest::newRow("left edge") << int(Qt::LeftSection) << QMargins(1, 0, 0, 0);
    QTest::newRow("top left corner") << int(Qt::TopLeftSection) << QMargins(1, 1, 0, 0);
    QTest::newRow("top edge") << int(Qt::TopSection) << QMargins(0, 1, 0, 0);
    QTest::newRow("top right corner") << int(Qt::TopRightSection) << QMargins(0, 1, 1, 0);
    QTest::newRow("right edge") << int(Qt::RightSection) << QMargins(0, 0, 1, 0);
    QTest::newRow("bottom right corner") << int(Qt::BottomRightSection) << QMargins(0, 0, 1, 1);
    QTest::newRow("bottom edge") << int(Qt::BottomSection) << QMargins(0, 0, 0, 1);
    QTest::newRow("bottom left corner") << int(Qt::BottomLeftSection) << QMargins(1, 0, 0, 1);
}

void TestNativeDrag::windowFollowsThePointer()
{
    QFETCH(int, section);
    QFETCH(QMargins, edges);
    DragWindow window{Qt::WindowFrameSection(section)};
    window.setGeometry(300, 300, 240, 180);
    window.show();
    QVERIFY(waitForKeyboard(&window));

    const QRect before = window.geometry();
    const QPoint start = before.center();
    const QPoint shift(60, 40);
    const QRect wanted = before.adjusted(edges.left() * shift.x(), edges.top() * shift.y(), edges.right() * shift.x(),
                                         edges.bottom() * shift.y());
    QVERIFY(movePointer(start));
    {
        const HeldButton button;
        QVERIFY(button.isPressed());
        QTRY_COMPARE(window.presses, 1);
        // The window manager tells the application of a mere move at the end only, so the server is asked. Motion
        // counts from when the window manager has taken the request: the pointer moves until the window does.
        const X11Client client;
        int nudges = 0;
        const auto hasMoved = [&] {
            if (client.geometryOf(window.winId()) != before)
                return true;
            movePointer(start + shift / 2 + QPoint(nudges % 2, nudges % 2));
            ++nudges;
            return false;
        };
        QTRY_VERIFY(hasMoved());
        QVERIFY(movePointer(start + shift));
        QTRY_COMPARE(client.geometryOf(window.winId()), wanted);
    }
    QTRY_COMPARE(window.geometry(), wanted);
    X11Client client;
    QTRY_VERIFY(client.canGrabPointer(zvqt_get_display()));
}

ZEVA_TEST_MAIN(TestNativeDrag)
#include "tst_native_drag.moc"
