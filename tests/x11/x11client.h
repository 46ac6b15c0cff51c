// SPDX-License-Identifier: MIT
#ifndef X11CLIENT_H
#define X11CLIENT_H

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QVector>

#include <array>

/// An event as another client of the X server receives it.
struct X11Event
{
    int type = 0;
    bool sentByAClient = false;
    unsigned long window = 0;
    // of a client message
    QByteArray messageType;
    int format = 0;
    std::array<long, 5> data = {};
    // of a button release
    unsigned long root = 0;
    unsigned long time = 0;
    QPoint pos;
    QPoint rootPos;
    unsigned int button = 0;
    unsigned int state = 0;
    bool sameScreen = false;
};

/// A second client of the X server the test runs on, with a connection of its own: what it sees, everybody sees.
class X11Client
{
public:
    static const int kButtonRelease;
    static const int kClientMessage;

    X11Client();
    ~X11Client();
    X11Client(const X11Client &) = delete;
    X11Client &operator=(const X11Client &) = delete;

    bool isConnected() const { return m_display != nullptr; }
    unsigned long rootWindow() const;
    /// The resources that programs on a screen start with, such as "Xft.dpi:\t144\n".
    void setResources(int screen, const QByteArray &resources);
    /// Where \a window is now, without its frame, in pixels of the root window.
    QRect geometryOf(unsigned long window) const;
    /// Receives what is sent to the root window's substructure listeners.
    void listenToRoot();
    /// Asks for \a window to be closed, as the button in its frame does.
    void pressCloseButton(unsigned long window);
    void listenToButtonRelease(unsigned long window);
    /// Client messages and button releases that have arrived, oldest first. \a application is the display of the
    /// application under test: all that it has asked for by now is done before.
    QVector<X11Event> takeEvents(void *application);
    /// Whether the pointer is free for this client to grab. Gives it back at once.
    bool canGrabPointer(void *application);

private:
    void *m_display;
};

#endif
