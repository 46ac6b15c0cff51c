// SPDX-License-Identifier: MIT
#include "controlpictures.h"

#include "controlpages.h"
#include "controlswindow.h"
#include "dialogpage.h"
#include "wholefile.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QEventLoopLocker>
#include <QHash>
#include <QTimer>

#include <algorithm>

namespace {

constexpr QSize kPicture{760, 540};

/// Lets a dialog page show its dialog; a picture of that, and the dialog is closed.
QPixmap dialogPicture(DialogPage &page)
{
    QPixmap picture;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&picture, &poll] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        poll.stop();
        QCoreApplication::processEvents();
        picture = dialog->grab();
        dialog->reject();
    });
    poll.start(0);
    page.showDialog();
    return picture;
}

int distance(QRgb a, QRgb b)
{
    return qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b));
}

/// The picture with a table of its 256 most frequent colours, which makes the file a third as long. The others, of the
/// edges of letters and of gradients, become the nearest of these; where that would be seen, all stays as it is.
QImage withColorTable(const QImage &picture)
{
    constexpr int kTable = 256;
    constexpr int kFarOff = 24; // of red, green and blue together
    constexpr int kUnseen = 500; // one pixel in so many
    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> counts;
    for (int y = 0; y < source.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        for (int x = 0; x < source.width(); ++x)
            ++counts[line[x]];
    }
    QVector<QRgb> colors = counts.keys().toVector();
    // By the colour where they are as frequent, so that the same picture gives the same file.
    std::sort(colors.begin(), colors.end(),
              [&counts](QRgb a, QRgb b) { return counts[a] != counts[b] ? counts[a] > counts[b] : a < b; });
    const QVector<QRgb> table = colors.mid(0, kTable);
    QHash<QRgb, uchar> places;
    int farOff = 0; // pixels
    for (const QRgb color : qAsConst(colors)) {
        const auto nearest = std::min_element(
            table.begin(), table.end(), [color](QRgb a, QRgb b) { return distance(a, color) < distance(b, color); });
        if (distance(*nearest, color) > kFarOff)
            farOff += counts[color];
        places.insert(color, uchar(nearest - table.begin()));
    }
    if (farOff > source.width() * source.height() / kUnseen)
        return source;
    QImage result(source.size(), QImage::Format_Indexed8);
    result.setColorTable(table);
    for (int y = 0; y < source.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        uchar *indices = result.scanLine(y);
        for (int x = 0; x < source.width(); ++x)
            indices[x] = places.value(line[x]);
    }
    return result;
}

bool writeText(const QString &path, const QString &text, QString &error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && writeWhole(file, text.toUtf8()))
        return true;
    error = QStringLiteral("%1: %2").arg(path, file.errorString());
    return false;
}

} // namespace

bool writeControlPictures(const QString &folder, QWidget *parent, QString &error)
{
    const QDir place(folder);
    if (!place.mkpath(QStringLiteral("."))) {
        error = QStringLiteral("%1: the folder could not be made.").arg(folder);
        return false;
    }
    const auto save = [&place, &error](const QPixmap &picture, const QString &name) {
        const QString path = place.filePath(name);
        const bool isSaved = !picture.isNull() && withColorTable(picture.toImage()).save(path, "PNG", 0);
        if (!isSaved)
            error = QStringLiteral("%1: the picture could not be written.").arg(path);
        return isSaved;
    };
    const QEventLoopLocker staying; // a dialog that closes may be the last window
    ControlsWindow window(parent);
    window.show();
    for (const QString &name : ControlsWindow::pageNames()) {
        window.showPage(name);
        QCoreApplication::processEvents();
        QWidget *page = window.currentPage();
        window.resize(window.size() + kPicture - page->size());
        QCoreApplication::processEvents();
        if (auto *dialog = qobject_cast<DialogPage *>(page)) {
            if (!save(dialogPicture(*dialog), name + QStringLiteral("-dialog.png")))
                return false;
        }
        QCoreApplication::processEvents();
        if (!save(page->grab(), name + QStringLiteral(".png")))
            return false;
    }
    return writeText(place.filePath(QStringLiteral("index.md")), controlsGuide(QString()), error);
}

QString controlsGuide(const QString &pictures)
{
    QString text = QStringLiteral(
        "# Controls and dialogs\n"
        "\n"
        "Every class of the library that can be seen, in each of its states: ordinary, hooked to the drawing, blank,\n"
        "disabled, with a long list. `zvworkbench --controls` opens these pages to be played with; the build target\n"
        "`docs-pictures` makes this page and its pictures anew.\n");
    const QVector<GalleryGroup> groups = galleryGroups();
    for (const GalleryGroup &group : groups) {
        text += QStringLiteral("\n## %1\n").arg(group.title);
        for (const GalleryPage &page : group.pages) {
            text += QStringLiteral("\n### %1\n\n%2\n\n![%1](%3%1.png)\n").arg(page.name, page.purpose, pictures);
            if (&group == &groups.last())
                text += QStringLiteral("\n![The dialog %1](%2%1-dialog.png)\n").arg(page.name, pictures);
        }
    }
    return text;
}
