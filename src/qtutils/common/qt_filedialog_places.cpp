// SPDX-License-Identifier: MIT
// The list of places at the left of the file dialog: the computer, its mount points, the user's folders.
#include "common/qt_filedialog.h"

#include "private/zvqtstring.h"

#include "utils/zvfiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QUrl>

#include <pwd.h>
#include <unistd.h>

#include <functional>
#include <utility>

namespace {

constexpr QSize kListSize(200, 377);
// Keys of entries as well as their texts: only what is shown is translated.
constexpr char kComputer[] = QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "我的电脑");
constexpr char kHome[] = QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "用户");
constexpr char kDataDisk[] = QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "数据盘");

/// A folder of the user's, under the name that the desktop gives it in Chinese or in English.
struct HomeFolder
{
    const char *text;
    const char *folder; ///< The entry's key too.
};

constexpr HomeFolder kHomeFolders[] = {
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "桌面"), "桌面"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "桌面"), "Desktop"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "视频"), "视频"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "视频"), "Videos"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "图片"), "图片"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "图片"), "Pictures"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "文档"), "文档"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "文档"), "Documents"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "下载"), "下载"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "下载"), "Downloads"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "音乐"), "音乐"},
    {QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "音乐"), "Music"},
};

/// Texts of mount points that have one of their own.
struct MountText
{
    const char *path;
    const char *text;
};

constexpr MountText kMountTexts[] = {
    {"/backup", QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "备份分区")},
    {"/boot", QT_TRANSLATE_NOOP("ZvQtFileDialogImpl", "引导分区")},
    {"/data", kDataDisk},
};

/// Of the user record, not of the environment. Taken as Latin-1: a home folder with other characters is not found, and
/// its entries are missing.
QString homePath()
{
    const passwd *user = getpwuid(getuid());
    return user ? QString::fromLatin1(user->pw_dir) : QString();
}

/// In the order of the system's listing; none where it fails or takes too long.
QStringList listMountPoints()
{
    ZvUtf8String output;
    zvutPipeCmd("lsblk -l -o MOUNTPOINT", output);
    QStringList paths;
    const QStringList lines = zvToQString(output).split(QLatin1Char('\n'));
    for (const QString &line : lines.mid(1)) { // the first one is the title
        if (!line.isEmpty() && line != QLatin1String("/") && line != QLatin1String("[SWAP]")
            && !line.contains(QLatin1String("/boot/efi")))
            paths << line;
    }
    return paths;
}

QString shown(const char *text)
{
    return QCoreApplication::translate("ZvQtFileDialogImpl", text);
}

QString mountText(const QString &path)
{
    for (const MountText &mount : kMountTexts) {
        if (path == QLatin1String(mount.path))
            return shown(mount.text);
    }
    return path.contains(QLatin1String("/media")) ? path.mid(path.lastIndexOf(QLatin1Char('/')) + 1) : path;
}

void addPlace(QListWidget *list, const QString &text, const QString &key, const char *icon)
{
    auto *item = new QListWidgetItem(QIcon(QString::fromLatin1(icon)), text, list);
    item->setData(Qt::UserRole, key);
}

/// The folder of an entry by its key; empty for a mount point that is gone.
QString placeOf(const QString &key)
{
    if (key == QString::fromUtf8(kComputer))
        return QStringLiteral("/");
    if (key == QString::fromUtf8(kDataDisk))
        return QStringLiteral("/data/");
    if (key == QString::fromUtf8(kHome))
        return homePath() + QLatin1Char('/');
    for (const HomeFolder &row : kHomeFolders) {
        if (key == QString::fromUtf8(row.folder))
            return homePath() + QLatin1Char('/') + key + QLatin1Char('/');
    }
    return listMountPoints().contains(key) ? key + QLatin1Char('/') : QString();
}

/// Return and Space do what a click does. Return would press the dialog's default button otherwise.
class PlaceKeys : public QObject
{
public:
    PlaceKeys(QListWidget *list, std::function<void()> choose) : QObject(list), m_choose(std::move(choose))
    {
        list->installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space)
            return false;
        m_choose();
        return true;
    }

private:
    const std::function<void()> m_choose;
};

} // namespace

void ZvQtFileDialogImpl::addPlaces(QSplitter *splitter)
{
    constexpr char kComputerIcon[] = ":/res/computer.png";
    constexpr char kFolderIcon[] = ":/res/file.png";

    auto *list = new QListWidget;
    list->setAccessibleName(QCoreApplication::translate("ZvAccessibility", "Places"));
    list->setMinimumSize(kListSize);
    list->setMaximumSize(kListSize);
    addPlace(list, shown(kComputer), QString::fromUtf8(kComputer), kComputerIcon);
    for (const QString &path : listMountPoints())
        addPlace(list, mountText(path), path, kFolderIcon);
    const QString home = homePath();
    if (!home.isEmpty() && QDir(home).exists()) // an empty path would be the current folder
        addPlace(list, shown(kHome), QString::fromUtf8(kHome), kFolderIcon);
    for (const HomeFolder &row : kHomeFolders) {
        const QString folder = QString::fromUtf8(row.folder);
        if (QDir(home + QLatin1Char('/') + folder).exists())
            addPlace(list, shown(row.text), folder, kFolderIcon);
    }
    splitter->insertWidget(0, list);
    connect(list, &QListWidget::itemClicked, this, &ZvQtFileDialogImpl::onCustomSideBarItemClicked);
    new PlaceKeys(list, [this, list] {
        if (list->currentItem())
            onCustomSideBarItemClicked(list->currentItem());
    });
}

void ZvQtFileDialogImpl::onCustomSideBarItemClicked(QListWidgetItem *item)
{
    QLineEdit *edit = fileNameEdit();
    const QString name = edit ? edit->text() : QString();
    const QString place = placeOf(item->data(Qt::UserRole).toString());
    if (!place.isEmpty())
        selectUrl(QUrl::fromLocalFile(place));
    if (edit)
        edit->setText(name); // the place's own name went there
}
