// SPDX-License-Identifier: MIT
#include "x11client.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

const int X11Client::kButtonRelease = ButtonRelease;
const int X11Client::kClientMessage = ClientMessage;

namespace {

Display *display(void *connection)
{
    return static_cast<Display *>(connection);
}

} // namespace

X11Client::X11Client() : m_display(XOpenDisplay(nullptr)) { }

X11Client::~X11Client()
{
    if (m_display)
        XCloseDisplay(display(m_display));
}

unsigned long X11Client::rootWindow() const
{
    return DefaultRootWindow(display(m_display));
}

void X11Client::setResources(int screen, const QByteArray &resources)
{
    XChangeProperty(display(m_display), RootWindow(display(m_display), screen), XA_RESOURCE_MANAGER, XA_STRING, 8,
                    PropModeReplace, reinterpret_cast<const unsigned char *>(resources.constData()), resources.size());
    XSync(display(m_display), False);
}

QRect X11Client::geometryOf(unsigned long window) const
{
    Window root = 0;
    Window child = 0;
    int x = 0;
    int y = 0;
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int border = 0;
    unsigned int depth = 0;
    XGetGeometry(display(m_display), window, &root, &x, &y, &width, &height, &border, &depth);
    XTranslateCoordinates(display(m_display), window, root, 0, 0, &x, &y, &child);
    return QRect(x, y, int(width), int(height));
}

void X11Client::listenToRoot()
{
    XSelectInput(display(m_display), rootWindow(), SubstructureNotifyMask);
    XSync(display(m_display), False);
}

void X11Client::pressCloseButton(unsigned long window)
{
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display(m_display), "_NET_CLOSE_WINDOW", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = CurrentTime;
    event.xclient.data.l[1] = 2; // from a pager or a task list: on the user's behalf
    XSendEvent(display(m_display), rootWindow(), False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XSync(display(m_display), False);
}

void X11Client::listenToButtonRelease(unsigned long window)
{
    XSelectInput(display(m_display), window, ButtonReleaseMask);
    XSync(display(m_display), False);
}

QVector<X11Event> X11Client::takeEvents(void *application)
{
    XSync(display(application), False);
    XSync(display(m_display), False);

    QVector<X11Event> events;
    while (XPending(display(m_display)) > 0) {
        XEvent native;
        XNextEvent(display(m_display), &native);
        X11Event event;
        event.type = native.type;
        event.sentByAClient = native.xany.send_event;
        event.window = native.xany.window;
        if (native.type == ClientMessage) {
            const XClientMessageEvent &message = native.xclient;
            char *name = XGetAtomName(display(m_display), message.message_type);
            event.messageType = name;
            XFree(name);
            event.format = message.format;
            for (int i = 0; i < 5; ++i)
                event.data[std::size_t(i)] = message.data.l[i];
        } else if (native.type == ButtonRelease) {
            const XButtonEvent &release = native.xbutton;
            event.root = release.root;
            event.time = release.time;
            event.pos = QPoint(release.x, release.y);
            event.rootPos = QPoint(release.x_root, release.y_root);
            event.button = release.button;
            event.state = release.state;
            event.sameScreen = release.same_screen;
        } else {
            continue;
        }
        events << event;
    }
    return events;
}

bool X11Client::canGrabPointer(void *application)
{
    XSync(display(application), False);
    const int status = XGrabPointer(display(m_display), rootWindow(), False, ButtonPressMask, GrabModeAsync,
                                    GrabModeAsync, None, None, CurrentTime);
    if (status == GrabSuccess)
        XUngrabPointer(display(m_display), CurrentTime);
    XSync(display(m_display), False);
    return status == GrabSuccess;
}
