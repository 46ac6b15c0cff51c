// SPDX-License-Identifier: MIT
// The preview at the right of the file dialog.
#include "common/qt_filedialog.h"

#include "private/zvlogline.h"
#include "private/zvqtstring.h"
#include "qt_utils.h"

#include "base/zvstream.h"
#include "utils/zvfiles.h"
#include "utils/zvpreview.h"
#include "utils/zvraster.h"

#include <QDataStream>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QImageReader>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>

#include <functional>

namespace {

constexpr QSize kFilesSize(389, 377);
constexpr QSize kSideBarSize(149, 377);
constexpr QSize kPreviewSize(250, 377);
constexpr int kPanelRows = 5;
constexpr int kPanelColumns = 4;

constexpr long long kMaxPictureFile = 0x1FFFFF; // bytes on disk
constexpr long long kMaxPicturePixels = 1 << 28; // a small file may claim more than there is memory

enum class PreviewKind { kPicture, kNothing, kDrawing };

struct PreviewRow
{
    const char *extensions; ///< Separated by ";".
    PreviewKind kind;
};

constexpr PreviewRow kPreviews[] = {
    {"jpg;bmp;gif;jpeg;tif;tiff;tga;png;pcx;cal", PreviewKind::kPicture},
    {"pdf", PreviewKind::kNothing},
    {"dwg", PreviewKind::kDrawing},
};

PreviewKind previewKind(const QString &extension)
{
    for (const PreviewRow &row : kPreviews) {
        if (QString::fromLatin1(row.extensions).split(QLatin1Char(';')).contains(extension))
            return row.kind;
    }
    return PreviewKind::kNothing;
}

/// Keeps the picture in place when the dialog or its panes change their sizes.
class PreviewHost : public QWidget
{
public:
    PreviewHost(QWidget *parent, std::function<void()> resized) : QWidget(parent), m_resized(std::move(resized)) { }

protected:
    void resizeEvent(QResizeEvent *) override { m_resized(); }

private:
    std::function<void()> m_resized;
};

QPixmap loadPicture(const QString &file)
{
    // A pipe would keep the dialog waiting.
    if (!QFileInfo(file).isFile())
        return QPixmap();
    QImageReader reader(file);
    const QSize size = reader.size();
    if (size.isValid() && (long long)(size.width()) * size.height() > kMaxPicturePixels)
        return QPixmap();
    return QPixmap::fromImageReader(&reader);
}

/// The bitmap file around the bytes of a bitmap without file header. Empty for bytes that cannot be one.
QByteArray bitmapFile(const ZvArray<unsigned char> &bitmap)
{
    constexpr quint16 kBitmapMark = 19778; // "BM"
    constexpr int kFileHeaderSize = 14;

    const QByteArray bytes(reinterpret_cast<const char *>(bitmap.asArrayPtr()), bitmap.length());
    const ZvStreamBufPtr stream
        = ZvFlatMemStream::createNew(const_cast<char *>(bytes.constData()), std::size_t(bytes.size()), 0);
    const quint32 size = stream->readUInt32();
    const quint32 width = stream->readUInt32();
    const qint32 height = qint32(stream->readUInt32());
    stream->readUInt16(); // planes
    bool isRead = false;
    const quint16 bits = stream->readUInt16(&isRead);
    if (!isRead)
        return QByteArray();

    const quint32 tableSize = bits < 9 ? 1u << (bits + 2) : 0;
    const quint32 offset = size + kFileHeaderSize + tableSize;
    const quint32 rows = height < 0 ? 0u - quint32(height) : quint32(height); // upside down where it is negative
    QByteArray file;
    QDataStream header(&file, QIODevice::WriteOnly);
    header.setByteOrder(QDataStream::LittleEndian);
    header << kBitmapMark << quint32(offset + quint32(ZvGiRasterImage::calcBMPScanLineSize(width, bits)) * rows)
           << quint32(0) << offset;
    return file + bytes;
}

QPixmap thumbnailPixmap(const ZvThumbnailImage &thumbnail)
{
    QPixmap pixmap;
    if (!thumbnail.bmp.isEmpty())
        pixmap.loadFromData(bitmapFile(thumbnail.bmp));
    else
        pixmap.loadFromData(thumbnail.png.asArrayPtr(), uint(thumbnail.png.length()));
    return pixmap;
}

} // namespace

void ZvQtFileDialogImpl::addPanes()
{
    auto *splitter = findChild<QSplitter *>(QStringLiteral("splitter"));
    if (!splitter)
        return;
    if (auto *files = findChild<QStackedWidget *>(QStringLiteral("stackedWidget")))
        files->setMinimumSize(kFilesSize);
    if (auto *sideBar = findChild<QWidget *>(QStringLiteral("sidebar"))) {
        sideBar->setMinimumSize(kSideBarSize);
        sideBar->hide();
    }
    addPlaces(splitter);
    addPreview(splitter);
    m_splitter = splitter;
}

bool ZvQtFileDialogImpl::event(QEvent *event)
{
    // A splitter is never higher than the lowest of its widgets may be, which is the list of places.
    if (m_splitter && event->type() == QEvent::LayoutRequest)
        m_splitter->setMaximumHeight(QWIDGETSIZE_MAX);
    return QFileDialog::event(event);
}

void ZvQtFileDialogImpl::showEvent(QShowEvent *event)
{
    QFileDialog::showEvent(event);
    // The least size is a little less than the panes need, and the files would disappear behind the preview. What they
    // need is known now; later the size is the user's.
    if (m_previewLabel && !m_hasRoom && layout())
        resize(size().expandedTo(layout()->totalMinimumSize()));
    m_hasRoom = true;
}

void ZvQtFileDialogImpl::addPreview(QSplitter *splitter)
{
    auto *panel = new QWidget(splitter);
    panel->setMinimumSize(kPreviewSize);
    auto *panelLayout = new QGridLayout(panel);

    m_previewGroup = new QGroupBox(panel);
    m_previewGroup->setTitle(QCoreApplication::translate("", "预览"));
    auto *groupLayout = new QGridLayout(m_previewGroup);
    m_previewHost = new PreviewHost(m_previewGroup, [this] { fitPreview(); });
    m_previewLabel = new QLabel(m_previewHost);
    groupLayout->addWidget(m_previewHost);
    panelLayout->addWidget(m_previewGroup, 0, 0, kPanelRows, kPanelColumns);

    m_lowerPanel = new QWidget(panel);
    m_lowerLayout = new QGridLayout(m_lowerPanel);
    panelLayout->addWidget(m_lowerPanel, kPanelRows, 0, kPanelRows, kPanelColumns);
}

void ZvQtFileDialogImpl::onCurrentChanged(const QString &file)
{
    if (m_hideExtend || !m_previewLabel)
        return;
    m_previewLabel->clear();
    QString path = file;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (path.mid(path.lastIndexOf(QLatin1Char('/')) + 1).isEmpty())
        return;
    // Of the whole path: without a "." in the name this is no extension, and matches none.
    switch (previewKind(path.mid(path.lastIndexOf(QLatin1Char('.')) + 1).toLower())) {
    case PreviewKind::kPicture:
        showPicture(path);
        return;
    case PreviewKind::kDrawing:
        showThumbnail(path);
        return;
    case PreviewKind::kNothing:
        return;
    }
}

void ZvQtFileDialogImpl::showPicture(const QString &file)
{
    if (zvutGetFileSize(zvToZvUtf8String(file)) > kMaxPictureFile) {
        m_previewLabel->setAlignment(Qt::AlignCenter);
        m_previewLabel->setText(tr(">2M不显示预览"));
        fitPreview();
        return;
    }
    showPixmap(loadPicture(file));
}

void ZvQtFileDialogImpl::showThumbnail(const QString &file)
{
    const ZvQtBlockSignalUtil dialogGuard(this);
    const ZvQtBlockSignalUtil labelGuard(m_previewLabel);
    ZvSystemServices *services = zvrxSystemServices();
    if (!services)
        return;
    ZvThumbnailImage thumbnail;
    {
        const ZvStreamBufPtr stream = services->openFile(zvToZvString(file), ZvSystemServices::kRead,
                                                         ZvSystemServices::kShareAll, ZvSystemServices::kOpenExisting);
        zvDbGetPreviewBitmap(stream.get(), &thumbnail);
    }
    if (thumbnail.bmp.isEmpty() && thumbnail.png.isEmpty()) {
        m_previewLabel->clear();
        zvLogLine(4, __LINE__, "qtutils/common/qt_filedialog", "onCurrentChanged", "m_odImage为空");
        return;
    }
    showPixmap(thumbnailPixmap(thumbnail));
}

void ZvQtFileDialogImpl::showPixmap(const QPixmap &pixmap)
{
    m_previewLabel->clear();
    if (pixmap.isNull())
        return;
    m_previewLabel->setPixmap(pixmap);
    fitPreview();
}

void ZvQtFileDialogImpl::fitPreview()
{
    const QSize host = m_previewHost->size();
    const QSize picture = m_previewLabel->pixmap(Qt::ReturnByValue).size();
    if (picture.isEmpty()) {
        m_previewLabel->setGeometry(QRect(QPoint(), host)); // a text, if anything
        return;
    }
    const float width = float(picture.width());
    const float height = float(picture.height());
    if (width / float(host.width()) > height / float(host.height()))
        m_previewLabel->resize(host.width(), int(height * float(host.width()) / width));
    else
        m_previewLabel->resize(int(float(host.height()) * width / height), host.height());
    m_previewLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_previewLabel->setScaledContents(true); // the label scales: no second picture is kept
    m_previewLabel->move((host.width() - m_previewLabel->width()) / 2, (host.height() - m_previewLabel->height()) / 2);
}
