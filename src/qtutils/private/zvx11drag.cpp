// SPDX-License-Identifier: MIT
#include "private/zvx11drag.h"

#include "qt_utils.h"

#include <QGuiApplication>
#include <QPoint>
#include <QWidget>
#include <qpa/qplatformnativeinterface.h>

#include <X11/Xlib.h>

namespace {

/// Root window of the X screen the application runs on (the one the integration resource "x11screen" numbers).
Window rootWindow()
{
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    return reinterpret_cast<Window>(native->nativeResourceForIntegration("rootwindow"));
}

} // namespace

void zvqt_X11EmulateButtonRelease(QWidget *widget, const QPoint &globalPos)
{
    auto *display = static_cast<Display *>(zvqt_get_display());
    if (!display)
        return;

    const QPoint pos = widget->mapFromGlobal(globalPos);
    XEvent event = {};
    XButtonEvent &button = event.xbutton;
    button.type = ButtonRelease;
    button.send_event = True;
    button.window = widget->winId();
    button.root = rootWindow();
    button.time = CurrentTime;
    button.x = pos.x();
    button.y = pos.y();
    button.x_root = globalPos.x();
    button.y_root = globalPos.y();
    button.same_screen = True;
    if (XSendEvent(display, button.window, True, ButtonReleaseMask, &event) == 0)
        qWarning("Cant send ButtonRelease for native drag");
    XFlush(display);
}

void zvqt_X11WMMoveResizeWindow(QWidget *widget, int x, int y, int direction)
{
    auto *display = static_cast<Display *>(zvqt_get_display());
    if (!display)
        return;

    static const Atom moveResize = XInternAtom(display, "_NET_WM_MOVERESIZE", False);
    // The window manager cannot take the pointer while the press still holds it for this application.
    XUngrabPointer(display, CurrentTime);

    XEvent event = {};
    XClientMessageEvent &message = event.xclient;
    message.type = ClientMessage;
    message.send_event = True;
    message.window = widget->window()->winId();
    message.message_type = moveResize;
    message.format = 32;
    message.data.l[0] = x;
    message.data.l[1] = y;
    message.data.l[2] = direction;
    message.data.l[3] = 1; // the left button
    message.data.l[4] = 0;
    if (XSendEvent(display, rootWindow(), False, SubstructureRedirectMask | SubstructureNotifyMask, &event) == 0)
        qWarning("Cant send _NET_WM_MOVERESIZE for native drag");
    XFlush(display);
}
