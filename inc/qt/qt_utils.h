// SPDX-License-Identifier: MIT
#ifndef QT_UTILS_H
#define QT_UTILS_H

#include "base/zvexport.h"

#include <QIcon>
#include <QtGlobal>
#include <Qt>

QT_BEGIN_NAMESPACE
class QObject;
class QPoint;
class QString;
class QWidget;
QT_END_NAMESPACE

/// \file
/// The seam between the library and the platform: screen density, the X11 display, native window dragging, key codes,
/// file permissions, icons. All of it belongs to the main thread.

/// The X11 display (a `Display *`) of the running application. Null without an application object and on platforms
/// that are not X11.
ZV_EXPORT void *zvqt_get_display();

/// Dots per inch of the screen that shows \a widget's window; of the primary screen where \a widget is null or its
/// window was never shown. Always 96 under Qt::AA_Use96Dpi, and without any screen.
ZV_EXPORT int zvqt_getWindowDPI(const QWidget *widget);

/// Whether Qt scales pixels by itself, so that sizes must not be scaled once more. Always false.
ZV_EXPORT bool zvqt_isDPIScalingActive();

/// \a value, a size in pixels of a 96 dpi screen, in pixels of \a widget's screen. Rounded to the nearest integer,
/// halves upwards, below zero too: 1.5 gives 2 and -1.5 gives -1. The screen is that of zvqt_getWindowDPI().
ZV_EXPORT int zvqt_dpiScaled(int value, const QWidget *widget);
/// The same without rounding.
ZV_EXPORT double zvqt_dpiScaledF(double value, const QWidget *widget);

/// Hands the mouse button that is held down over \a widget to the window manager, which moves the widget's top-level
/// window (Qt::TitleBarArea) or resizes it by an edge or corner until the button goes up. \a globalPos is the pointer's
/// position in pixels of the root window. To be called from a mouse press or move handler.
///
/// The application is told first that the button went up, since the window manager takes the pointer away and the real
/// release never arrives.
///
/// Always true. Qt::NoSection sends nothing, and neither does a platform other than X11. A window manager that does
/// not know `_NET_WM_MOVERESIZE` ignores the request.
ZV_EXPORT bool zvqt_window_start_native_drag_linux(QWidget *widget, const QPoint &globalPos,
                                                   Qt::WindowFrameSection section);

/// The host's virtual key number for the Qt key code \a key (a value of Qt::Key, without modifiers).
///
/// Digits, upper-case letters and the signs between 32 and 90 are their own number; lower-case letters are no Qt key
/// codes. 0 is a key of a known range that has no number, 65535 a key of no known range.
ZV_EXPORT int qt_key_to_ansi_vk(int key);

/// The widget behind an opaque window handle: on this platform the handle is the widget. Null gives null.
ZV_EXPORT QWidget *qt_windowHandle_to_widget(void *handle);

/// Sets the permission bits \a mode (as for chmod(2)) on the folder \a path and on all files and folders in it, hidden
/// ones excepted. The folder comes before its content: a mode without the owner's read and execute bits hides the
/// content from anyone but root.
///
/// 0 on success. -1 where \a path is no folder, and where the folder is empty, although its own mode has been set then.
/// Single entries that refuse the change are passed over.
ZV_EXPORT int zvutRecursiveChmod(const QString &path, int mode);

/// The picture of the file \a path, stretched to \a width by \a height pixels; on denser screens that of the file with
/// "@2x" before its ending, where there is one. With \a blank the picture is wiped, which leaves a transparent icon of
/// that size (the file must exist all the same). Null for an empty path and for a file that does not load.
ZV_EXPORT QIcon zvsiQtCreateIcon(const QString &path, bool blank, int width, int height);

/// Blocks an object's signals for the length of a scope, so that showing a value does not write it back.
///
/// The end of the scope always unblocks: the state before is not remembered. Guards therefore do not nest, and a guard
/// inside another's scope ends the outer one's effect. The object, which may be null, must outlive the guard.
class ZvQtBlockSignalUtil
{
public:
    /// Blocks \a object's signals now.
    ZV_EXPORT explicit ZvQtBlockSignalUtil(QObject *object);
    ZV_EXPORT ~ZvQtBlockSignalUtil();
    Q_DISABLE_COPY(ZvQtBlockSignalUtil)

private:
    QObject *m_object; // not owned
};

#endif
