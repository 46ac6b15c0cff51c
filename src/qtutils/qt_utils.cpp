// SPDX-License-Identifier: MIT
#include "qt_utils.h"

#include "private/zvdensepixmap.h"
#include "private/zvkeytable.h"
#include "private/zvx11drag.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QSet>
#include <QWidget>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <cmath>
#include <sys/stat.h>

namespace {

constexpr int kReferenceDpi = 96;

int roundHalfUp(double value)
{
    return int(std::floor(value + 0.5));
}

const QScreen *screenOf(const QWidget *widget)
{
    if (widget) {
        const QWindow *window = widget->window()->windowHandle();
        if (window && window->screen())
            return window->screen();
    }
    return QGuiApplication::primaryScreen();
}

/// Direction of `_NET_WM_MOVERESIZE` by Qt::WindowFrameSection, from Qt::LeftSection on.
constexpr int kMoveResizeDirections[] = {7, 0, 1, 2, 3, 4, 5, 6, 8};

/// \a done holds the folders already seen, by canonical path: links between folders may form a ring.
int chmodTree(const QString &path, mode_t mode, QSet<QString> &done)
{
    const QFileInfo folder(path);
    if (!folder.isDir())
        return -1;
    const QString canonicalPath = folder.canonicalFilePath();
    if (done.contains(canonicalPath))
        return 0;
    done.insert(canonicalPath);

    ::chmod(QFile::encodeName(path).constData(), mode);
    const QFileInfoList entries
        = QDir(path).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::DirsFirst);
    if (entries.isEmpty())
        return -1;
    for (const QFileInfo &entry : entries) {
        if (entry.isDir())
            chmodTree(entry.filePath(), mode, done);
        else
            ::chmod(QFile::encodeName(entry.filePath()).constData(), mode);
    }
    return 0;
}

} // namespace

void *zvqt_get_display()
{
    if (!QCoreApplication::instance())
        return nullptr;
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    return native ? native->nativeResourceForIntegration("display") : nullptr;
}

int zvqt_getWindowDPI(const QWidget *widget)
{
    if (QCoreApplication::testAttribute(Qt::AA_Use96Dpi))
        return kReferenceDpi;
    const QScreen *screen = screenOf(widget);
    return screen ? roundHalfUp(screen->logicalDotsPerInch()) : kReferenceDpi;
}

bool zvqt_isDPIScalingActive()
{
    return false;
}

int zvqt_dpiScaled(int value, const QWidget *widget)
{
    if (zvqt_isDPIScalingActive())
        return value;
    return roundHalfUp(zvqt_dpiScaledF(value, widget));
}

double zvqt_dpiScaledF(double value, const QWidget *widget)
{
    if (zvqt_isDPIScalingActive())
        return value;
    return value * zvqt_getWindowDPI(widget) / double(kReferenceDpi);
}

bool zvqt_window_start_native_drag_linux(QWidget *widget, const QPoint &globalPos, Qt::WindowFrameSection section)
{
    if (section < Qt::LeftSection || section > Qt::TitleBarArea)
        return true;
    zvqt_X11EmulateButtonRelease(widget, globalPos);
    zvqt_X11WMMoveResizeWindow(widget, globalPos.x(), globalPos.y(),
                               kMoveResizeDirections[section - Qt::LeftSection]);
    return true;
}

int qt_key_to_ansi_vk(int key)
{
    return zvVirtualKeyNumber(key);
}

QWidget *qt_windowHandle_to_widget(void *handle)
{
    return static_cast<QWidget *>(handle);
}

int zvutRecursiveChmod(const QString &path, int mode)
{
    QSet<QString> done;
    return chmodTree(path, mode_t(mode), done);
}

QIcon zvsiQtCreateIcon(const QString &path, bool blank, int width, int height)
{
    if (path.isEmpty())
        return QIcon();
    QPixmap pixmap(path);
    if (blank)
        pixmap.fill(Qt::transparent);
    if (pixmap.isNull())
        return QIcon();
    QIcon icon(pixmap.scaled(width, height, Qt::IgnoreAspectRatio, Qt::FastTransformation));
    const QPixmap dense = zvDensePixmap(path, QSize(width, height), Qt::IgnoreAspectRatio);
    if (!blank && !dense.isNull())
        icon.addPixmap(dense);
    return icon;
}

ZvQtBlockSignalUtil::ZvQtBlockSignalUtil(QObject *object) : m_object(object)
{
    if (m_object)
        m_object->blockSignals(true);
}

ZvQtBlockSignalUtil::~ZvQtBlockSignalUtil()
{
    if (m_object)
        m_object->blockSignals(false);
}
