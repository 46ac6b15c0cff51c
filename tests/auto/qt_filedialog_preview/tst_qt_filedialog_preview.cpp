// SPDX-License-Identifier: MIT
// The preview pane of the file dialog.
#include "filedialogrun.h"
#include "previewfiles.h"
#include "zevatest.h"

#include "base/zvlog.h"
#include "base/zvstream.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QImageReader>
#include <QSplitter>
#include <QTreeView>

#include <functional>
#include <memory>
#include <sys/stat.h>

namespace {

struct LogLine
{
    int level;
    QByteArray function;
    QByteArray text;
};
QVector<LogLine> s_log;

void keepLogLine(int level, int, const char *, const char *function, const char *text)
{
    s_log.append({level, function, text});
}

/// The pane, found from its group.
class Pane
{
public:
    explicit Pane(const FileDialog &box)
        : group(box.dialog->findChild<QGroupBox *>()), host(group ? group->layout()->itemAt(0)->widget() : nullptr),
          label(host ? host->findChild<QLabel *>() : nullptr), panel(group ? group->parentWidget() : nullptr)
    {
    }
    bool isEmpty() const { return label->text().isEmpty() && label->pixmap(Qt::ReturnByValue).isNull(); }
    QSize picture() const { return label->pixmap(Qt::ReturnByValue).size(); }

    QGroupBox *group;
    QWidget *host;
    QLabel *label;
    /// As large as the host lets it be.
    bool isFitted() const
    {
        return (label->width() == host->width() && label->height() <= host->height())
            || (label->height() == host->height() && label->width() <= host->width());
    }

    QWidget *panel;
};

QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QByteArray picture(const char *format, const QSize &size = QSize(40, 30))
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(200, 40, 40));
    return encoded(image, format);
}

/// A PNG of exactly so many bytes: what stands behind its end does not count.
QByteArray pngOfSize(int bytes)
{
    return picture("PNG").leftJustified(bytes, '\0');
}

const QSize kSize(40, 30);

/// Opens files as the services that it stands before, and looks on.
class WatchedServices : public ZvSystemServices
{
public:
    explicit WatchedServices(std::function<void()> look) : m_behind(zvrxSystemServices()), m_look(std::move(look))
    {
        zvrxSetSystemServices(this);
    }
    ~WatchedServices() override { zvrxSetSystemServices(m_behind); }
    ZvStreamBufPtr openFile(const ZvString &fileName, unsigned access, int share, int creation) override
    {
        opened << QString::fromUtf8(fileName.toUtf8().c_str());
        codes << QStringLiteral("%1 %2 %3").arg(access, 0, 16).arg(share).arg(creation);
        m_look();
        stream = m_behind->openFile(fileName, access, share, creation);
        return stream;
    }

    QStringList opened;
    QStringList codes;
    ZvStreamBufPtr stream;

private:
    ZvSystemServices *m_behind;
    std::function<void()> m_look;
};

} // namespace

class TestQtFileDialogPreview : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void paneStandsAtTheRight();
    void kindGoesByTheExtension_data();
    void kindGoesByTheExtension();
    void pictureIsLimitedOnDisk_data();
    void pictureIsLimitedOnDisk();
    void pictureFillsTheHost_data();
    void pictureFillsTheHost();
    void pictureFollowsTheHostsSize();
    void filesAndPreviewGrowWithTheDialog();
    void oddPicturesLeaveThePaneEmpty_data();
    void oddPicturesLeaveThePaneEmpty();

    void thumbnailOfADrawing_data();
    void thumbnailOfADrawing();
    void drawingWithoutThumbnailIsLogged_data();
    void drawingWithoutThumbnailIsLogged();
    void brokenDrawings_data();
    void brokenDrawings();
    void withoutSystemServicesNothingIsShown();
    void drawingIsOpenedForSharedReading();
    void signalsAreBlockedDuringAThumbnail();
    void signalsAreUnblockedAfterAThumbnail();
    void realDrawings_data();
    void realDrawings();

    void anotherFileClearsThePreview();
    void fileInDirIsShownAtOnce();
    void selectionInTheListIsShown();
    void backslashesAreSlashes();
    void hiddenExtensionsShowNothing();

private:
    std::unique_ptr<ModuleSession> m_session;
    std::unique_ptr<FileTree> m_tree;
};

void TestQtFileDialogPreview::init()
{
    ZevaTest::init();
    m_session = std::make_unique<ModuleSession>();
    m_tree = std::make_unique<FileTree>();
    s_log.clear();
    zvSetLogHandler(keepLogLine);
}

void TestQtFileDialogPreview::cleanup()
{
    zvSetLogHandler(nullptr);
    m_tree.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void TestQtFileDialogPreview::paneStandsAtTheRight()
{
    FileDialog box(BagKeys{});
    box.show();
    const Pane pane(box);
    QVERIFY(pane.group && pane.host && pane.label);
    QCOMPARE(pane.group->title(), QStringLiteral("预览"));
    QCOMPARE(pane.label->parentWidget(), pane.host);
    QCOMPARE(pane.host->layout(), nullptr); // the label is placed by hand
    const auto *splitter = box.dialog->findChild<QSplitter *>(QStringLiteral("splitter"));
    QCOMPARE(splitter->indexOf(pane.panel), splitter->count() - 1);
    QCOMPARE(pane.panel->minimumSize(), QSize(250, 377));

    const auto *grid = qobject_cast<QGridLayout *>(pane.panel->layout());
    QVERIFY(grid && qobject_cast<QGridLayout *>(pane.group->layout()));
    QCOMPARE(grid->count(), 2);
    for (int i = 0; i < 2; ++i) {
        int row, column, rowSpan, columnSpan;
        const_cast<QGridLayout *>(grid)->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(row, 5 * i);
        QCOMPARE(column, 0);
        QCOMPARE(rowSpan, 5);
        QCOMPARE(columnSpan, 4);
    }
    QCOMPARE(grid->itemAt(0)->widget(), pane.group);
    const QWidget *lower = grid->itemAt(1)->widget();
    QVERIFY(qobject_cast<QGridLayout *>(lower->layout()));
    QCOMPARE(lower->layout()->count(), 0);
    QVERIFY(pane.isEmpty());
}

void TestQtFileDialogPreview::kindGoesByTheExtension_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isShown");
    const QByteArray any = picture("PNG");
    for (const char *extension : {"jpg", "bmp", "gif", "jpeg", "tif", "tiff", "tga", "png", "pcx", "cal"})
        QTest::newRow(extension) << QStringLiteral("a.") + QLatin1String(extension) << any << true;
    QTest::newRow("a true JPEG") << "a.jpg" << picture("JPG") << true;
    QTest::newRow("a true BMP") << "a.bmp" << picture("BMP") << true;
    QTest::newRow("upper case") << "a.PNG" << any << true;
    QTest::newRow("mixed case") << "a.JpEg" << any << true;
    QTest::newRow("drawing in upper case") << "a.DWG" << drawing({{6, png(40, 30)}}) << true;
    QTest::newRow("Chinese name") << QStringLiteral("图片 一.png") << any << true;
    QTest::newRow("two extensions") << "a.txt.png" << any << true;
    QTest::newRow("PDF") << "a.pdf" << any << false;
    QTest::newRow("unknown extension") << "a.svg" << any << false;
    QTest::newRow("beginning of an extension") << "a.pn" << any << false;
    QTest::newRow("two extensions of the list") << "a.png;bmp" << any << false;
    QTest::newRow("point at the end") << "a.png." << any << false;
    QTest::newRow("no point") << "png" << any << false;
    QTest::newRow("no point but one in the folder") << "b.png/file" << any << false;
    QTest::newRow("nothing but the extension") << ".png" << any << true;
}

void TestQtFileDialogPreview::kindGoesByTheExtension()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(bool, isShown);
    const QString path = m_tree->addFile(name, content);
    if (name == QLatin1String("a.tga") && QImageReader::supportedImageFormats().contains("tga"))
        expectWarning(QStringLiteral("QTgaHandler::canRead(): Image type not supported")); // Qt tries by the name first
    FileDialog box(BagKeys{});
    box.show();
    Q_EMIT box.dialog->currentChanged(path);
    QCOMPARE(Pane(box).picture(), isShown ? kSize : QSize(0, 0));
    QCOMPARE(Pane(box).label->text(), QString());
}

void TestQtFileDialogPreview::pictureIsLimitedOnDisk_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("2097151 bytes") << 0x1FFFFF << true;
    QTest::newRow("2097152 bytes") << 0x200000 << false;
}

void TestQtFileDialogPreview::pictureIsLimitedOnDisk()
{
    QFETCH(int, bytes);
    QFETCH(bool, isShown);
    const QString path = m_tree->addFile("a.png", pngOfSize(bytes));
    FileDialog box(BagKeys{});
    box.show();
    Q_EMIT box.dialog->currentChanged(path);
    const Pane pane(box);
    QCOMPARE(pane.picture(), isShown ? kSize : QSize(0, 0));
    QCOMPARE(pane.label->text(), isShown ? QString() : QStringLiteral(">2M不显示预览"));
    if (!isShown) {
        QCOMPARE(pane.label->geometry(), pane.host->rect());
        QCOMPARE(pane.label->alignment(), Qt::AlignCenter);
    }
}

void TestQtFileDialogPreview::pictureFillsTheHost_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("wide") << QSize(400, 10);
    QTest::newRow("high") << QSize(10, 400);
    QTest::newRow("small, scaled up") << QSize(2, 2);
    QTest::newRow("large") << QSize(1000, 900);
    QTest::newRow("one row") << QSize(1000, 1);
    QTest::newRow("one column") << QSize(1, 1000);
}

void TestQtFileDialogPreview::pictureFillsTheHost()
{
    QFETCH(QSize, size);
    const QString path = m_tree->addFile("a.png", picture("PNG", size));
    FileDialog box(BagKeys{});
    box.show();
    Q_EMIT box.dialog->currentChanged(path);
    const Pane pane(box);
    QCOMPARE(pane.picture(), size); // no scaled picture is kept
    QVERIFY(pane.label->hasScaledContents());
    QCOMPARE(pane.label->sizePolicy(), QSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored));
    const QSize host = pane.host->size();
    QVERIFY(host.width() > 100 && host.height() > 100);
    const bool isWide = double(size.width()) / host.width() > double(size.height()) / host.height();
    const QSize fitted = isWide ? QSize(host.width(), size.height() * host.width() / size.width())
                                : QSize(host.height() * size.width() / size.height(), host.height());
    QCOMPARE(pane.label->size(), fitted);
    QCOMPARE(pane.label->pos(), QPoint((host.width() - fitted.width()) / 2, (host.height() - fitted.height()) / 2));
    if (fitted.width() > 2 && fitted.height() > 2)
        QCOMPARE(pane.host->grab().toImage().pixelColor(pane.label->geometry().center()), QColor(200, 40, 40));
}

void TestQtFileDialogPreview::pictureFollowsTheHostsSize()
{
    FileDialog box({{"dir", m_tree->addFile("a.png", picture("PNG"))}});
    box.show();
    const Pane pane(box);
    QVERIFY(pane.isFitted());
    const QSize before = pane.host->size();
    auto *splitter = box.dialog->findChild<QSplitter *>(QStringLiteral("splitter"));
    box.dialog->resize(1200, 600);
    QTRY_VERIFY(splitter->width() > 1100);
    splitter->setSizes({200, 0, 389, 500});
    QTRY_VERIFY(pane.host->width() > before.width());
    QVERIFY(pane.isFitted());
    QCOMPARE(pane.label->y(), (pane.host->height() - pane.label->height()) / 2);
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("b.png", pngOfSize(0x200000)));
    const QRect large = pane.label->geometry();
    splitter->setSizes({200, 0, 800, 250});
    QTRY_VERIFY(pane.label->geometry() != large);
    QCOMPARE(pane.label->geometry(), pane.host->rect());
}

void TestQtFileDialogPreview::filesAndPreviewGrowWithTheDialog()
{
    FileDialog box(BagKeys{{"Open", true}, {"filter", "All files (*)"}, {"dir", m_tree->path()}});
    box.show();
    const auto *files = box.dialog->findChild<QWidget *>(QStringLiteral("stackedWidget"));
    const auto *preview = box.dialog->findChild<QGroupBox *>();
    const QSize before = box.dialog->size();
    const QSize filesBefore = files->size();
    const QSize previewBefore = preview->size();
    const int entryHeight = box.edit()->height();
    box.dialog->resize(before + QSize(300, 300));
    QTRY_COMPARE(files->height(), filesBefore.height() + 300); // all that there is more of
    QVERIFY(files->width() > filesBefore.width() + 100);
    QVERIFY(preview->height() > previewBefore.height() + 100);
    QCOMPARE(box.edit()->height(), entryHeight);
    QCOMPARE(box.places()->size(), QSize(200, 377));
    box.dialog->resize(before);
    QTRY_COMPARE(files->height(), filesBefore.height());
    QCOMPARE(preview->height(), previewBefore.height());
}

void TestQtFileDialogPreview::oddPicturesLeaveThePaneEmpty_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = picture("PNG");
    QByteArray huge = good;
    huge.replace(16, 8, QByteArray("\x00\x03\x00\x00\x00\x03\x00\x00", 8)); // 196608 pixels each way
    QTest::newRow("empty file") << "a.png" << QByteArray();
    QTest::newRow("text") << "a.png" << QByteArray("this is no picture");
    QTest::newRow("cut") << "a.png" << good.left(40);
    QTest::newRow("more pixels than there is memory") << "a.png" << huge;
    QTest::newRow("folder") << "a.png/file" << good;
}

void TestQtFileDialogPreview::oddPicturesLeaveThePaneEmpty()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    m_tree->addFile(name, content);
    m_tree->addFile("good.png", picture("PNG"));
    FileDialog box(BagKeys{});
    box.show();
    const Pane pane(box);
    Q_EMIT box.dialog->currentChanged(m_tree->path("good.png"));
    Q_EMIT box.dialog->currentChanged(m_tree->path("a.png"));
    QVERIFY(pane.isEmpty());
    Q_EMIT box.dialog->currentChanged(m_tree->path("missing.png"));
    QVERIFY(pane.isEmpty());
    // A pipe that nobody writes to.
    QCOMPARE(mkfifo(m_tree->path("pipe.png").toUtf8().constData(), 0600), 0);
    Q_EMIT box.dialog->currentChanged(m_tree->path("pipe.png"));
    QVERIFY(pane.isEmpty());
}

void TestQtFileDialogPreview::thumbnailOfADrawing_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QColor>("color");
    const QColor color(0x88, 0x40, 0x10);
    for (const int bits : {1, 4, 8, 16, 24, 32})
        QTest::addRow("bitmap of %d bits", bits) << drawing({{2, bitmap(40, 30, bits, color)}}) << color;
    QTest::newRow("PNG only") << drawing({{6, png(40, 30, color)}}) << color;
    QTest::newRow("the bitmap comes before the PNG")
        << drawing({{6, png(20, 20, Qt::green)}, {2, bitmap(40, 30, 24, color)}}) << color;
    QTest::newRow("bitmap with a longer header")
        << drawing({{2, littleEndian(108) + bitmap(40, 30, 24, color).mid(4).insert(36, QByteArray(68, '\0'))}})
        << color;
    QTest::newRow("bitmap upside down") << drawing(
        {{2, bitmap(40, 30, 24, color).replace(8, 4, littleEndian(quint32(-30)))}})
                                        << color;
}

void TestQtFileDialogPreview::thumbnailOfADrawing()
{
    QFETCH(QByteArray, file);
    QFETCH(QColor, color);
    FileDialog box(BagKeys{});
    box.show();
    Q_EMIT box.dialog->currentChanged(m_tree->addFile(QStringLiteral("平面图.dwg"), file));
    const Pane pane(box);
    QCOMPARE(pane.picture(), kSize);
    const QImage seen = pane.label->pixmap(Qt::ReturnByValue).toImage();
    for (const QPoint &pos : {QPoint(0, 0), seen.rect().center(), seen.rect().bottomRight()}) {
        const QColor pixel = seen.pixelColor(pos);
        QVERIFY(qAbs(pixel.red() - color.red()) < 8 && qAbs(pixel.green() - color.green()) < 8
                && qAbs(pixel.blue() - color.blue()) < 8);
    }
    QVERIFY(s_log.isEmpty());
}

void TestQtFileDialogPreview::drawingWithoutThumbnailIsLogged_data()
{
    QTest::addColumn<int>("logLevel");
    QTest::addColumn<int>("lines");
    QTest::newRow("level 0") << 0 << 1;
    QTest::newRow("level 4") << 4 << 1;
    QTest::newRow("level 5") << 5 << 0;
}

void TestQtFileDialogPreview::drawingWithoutThumbnailIsLogged()
{
    QFETCH(int, logLevel);
    QFETCH(int, lines);
    const int before = zeva_log_level();
    zeva_set_log_level(logLevel);
    FileDialog box(BagKeys{});
    box.show();
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.dwg", drawing({})));
    zeva_set_log_level(before);
    QVERIFY(Pane(box).isEmpty());
    QCOMPARE(s_log.size(), lines);
    if (lines > 0) {
        QCOMPARE(s_log.first().level, 4);
        QCOMPARE(s_log.first().function, QByteArray("onCurrentChanged"));
        QCOMPARE(s_log.first().text, QByteArray("m_odImage为空"));
    }
}

void TestQtFileDialogPreview::brokenDrawings_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray good = drawing({{2, bitmap(40, 30)}});
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("no drawing").repeated(50);
    QTest::newRow("cut in the picture") << good.left(good.size() - 100);
    QTest::newRow("cut in the table") << good.left(0x100 + 20);
    QTest::newRow("2 GB claimed") << drawing({{2, bitmap(40, 30), 0x80000000u}});
    QTest::newRow("more pixels than bytes") << drawing({{2, bitmap(40, 30).replace(4, 4, littleEndian(30000))}});
    QTest::newRow("a bitmap that is none") << drawing({{2, QByteArray(2000, '\x7F')}});
    QTest::newRow("a PNG whose pixels are cut") << drawing({{6, png(400, 300).left(60)}});
    QTest::newRow("a packed bitmap of nonsense")
        << drawing({{2, bitmap(40, 30).replace(16, 4, littleEndian(1)).replace(1064, 1, "\xFF")}});
}

void TestQtFileDialogPreview::brokenDrawings()
{
    QFETCH(QByteArray, file);
    FileDialog box(BagKeys{});
    box.show();
    const Pane pane(box);
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("good.png", picture("PNG")));
    QVERIFY(!pane.isEmpty());
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.dwg", file));
    // Of a packed bitmap Qt may make what it can, in the size that was claimed.
    const bool isPacked = QByteArray(QTest::currentDataTag()).startsWith("a packed");
    QVERIFY(pane.isEmpty() || (isPacked && pane.picture() == kSize));
    Q_EMIT box.dialog->currentChanged(m_tree->path("missing.dwg"));
    QVERIFY(pane.isEmpty());
    QCOMPARE(mkfifo(m_tree->path("pipe.dwg").toUtf8().constData(), 0600), 0);
    Q_EMIT box.dialog->currentChanged(m_tree->path("pipe.dwg"));
    QVERIFY(pane.isEmpty());
}

void TestQtFileDialogPreview::withoutSystemServicesNothingIsShown()
{
    FileDialog box(BagKeys{});
    box.show();
    ZvSystemServices *services = zvrxSystemServices();
    zvrxSetSystemServices(nullptr);
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.dwg", drawing({{2, bitmap(40, 30)}})));
    zvrxSetSystemServices(services);
    QVERIFY(Pane(box).isEmpty());
    QVERIFY(s_log.isEmpty());
}

void TestQtFileDialogPreview::drawingIsOpenedForSharedReading()
{
    FileDialog box(BagKeys{});
    box.show();
    const QString path = m_tree->addFile(QStringLiteral("平面图.dwg"), drawing({{2, bitmap(40, 30)}}));
    ZvStaticRxObject<WatchedServices> services([] {});
    Q_EMIT box.dialog->currentChanged(path);
    QCOMPARE(services.opened, QStringList{path});
    QCOMPARE(services.codes, QStringList{QStringLiteral("80000000 64 3")});
    QCOMPARE(zvrxNumRefs(services.stream), 1); // the dialog has let go of it
    QCOMPARE(Pane(box).picture(), kSize);
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.png", picture("PNG")));
    QCOMPARE(services.opened.size(), 1); // pictures are no drawings
}

void TestQtFileDialogPreview::signalsAreBlockedDuringAThumbnail()
{
    FileDialog box(BagKeys{});
    box.show();
    const Pane pane(box);
    int blocked = 0;
    ZvStaticRxObject<WatchedServices> services(
        [&] { blocked = int(box.dialog->signalsBlocked()) + int(pane.label->signalsBlocked()); });
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.dwg", drawing({{2, bitmap(40, 30)}})));
    QCOMPARE(blocked, 2);
}

void TestQtFileDialogPreview::signalsAreUnblockedAfterAThumbnail()
{
    FileDialog box(BagKeys{});
    box.show();
    for (const QByteArray &file :
         QVector<QByteArray>{drawing({{2, bitmap(40, 30)}}), drawing({}), QByteArray("nonsense")}) {
        Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.dwg", file));
        QVERIFY(!box.dialog->signalsBlocked());
        QVERIFY(!Pane(box).label->signalsBlocked());
    }
}

void TestQtFileDialogPreview::realDrawings_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(ZEVA_DRAWINGS_DIR "/dwg"));
    const QStringList files = folder.entryList({"*.dwg"}, QDir::Files);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << folder.filePath(file);
    if (files.isEmpty())
        QTest::newRow("no drawings here") << QString();
}

void TestQtFileDialogPreview::realDrawings()
{
    QFETCH(QString, path);
    if (path.isEmpty())
        QSKIP("the folder of real drawings is absent");
    FileDialog box({{"Open", true}, {"dir", path}});
    box.show();
    const Pane pane(box);
    QVERIFY(!pane.isEmpty());
    const QImage seen = pane.label->grab().toImage();
    bool isUniform = true;
    for (int y = 0; y < seen.height() && isUniform; ++y) {
        for (int x = 0; x < seen.width() && isUniform; ++x)
            isUniform = seen.pixel(x, y) == seen.pixel(0, 0);
    }
    QVERIFY(!isUniform);
}

void TestQtFileDialogPreview::anotherFileClearsThePreview()
{
    FileDialog box(BagKeys{});
    box.show();
    const Pane pane(box);
    for (const QString &next :
         QStringList{m_tree->addFile("a.txt"), m_tree->addFile("a.pdf"), m_tree->path() + '/', QString()}) {
        Q_EMIT box.dialog->currentChanged(m_tree->addFile("a.png", picture("PNG")));
        QVERIFY(!pane.isEmpty());
        Q_EMIT box.dialog->currentChanged(next);
        QVERIFY2(pane.isEmpty(), qPrintable(next));
    }
}

void TestQtFileDialogPreview::fileInDirIsShownAtOnce()
{
    // In a save dialog as well.
    FileDialog box({{"dir", m_tree->addFile("in/a.dwg", drawing({{2, bitmap(40, 30)}}))}});
    box.show();
    const Pane pane(box);
    QCOMPARE(pane.picture(), kSize);
    QVERIFY(pane.isFitted()); // to the size that it is shown with
    QCOMPARE(box.edit()->text(), QStringLiteral("a.dwg"));
}

void TestQtFileDialogPreview::selectionInTheListIsShown()
{
    m_tree->addFile("in/a.png", picture("PNG"));
    m_tree->addFile("in/b.dwg", drawing({{2, bitmap(60, 50)}}));
    FileDialog box({{"Open", true}, {"dir", m_tree->path("in")}});
    box.show();
    const Pane pane(box);
    clickRow(box.dialog, "a.png");
    QCOMPARE(pane.picture(), kSize);
    clickRow(box.dialog, "b.dwg");
    QCOMPARE(pane.picture(), QSize(60, 50));
}

void TestQtFileDialogPreview::backslashesAreSlashes()
{
    FileDialog box(BagKeys{});
    box.show();
    Q_EMIT box.dialog->currentChanged(m_tree->addFile("in/a.png", picture("PNG")).replace('/', '\\'));
    QCOMPARE(Pane(box).picture(), kSize);
}

void TestQtFileDialogPreview::hiddenExtensionsShowNothing()
{
    FileDialog box({{"HideExtend", true}, {"dir", m_tree->addFile("a.dwg", drawing({}))}});
    box.show();
    QCOMPARE(box.dialog->findChild<QGroupBox *>(), nullptr);
    Q_EMIT box.dialog->currentChanged(m_tree->path("a.dwg"));
    QVERIFY(s_log.isEmpty());
}

ZEVA_TEST_MAIN(TestQtFileDialogPreview)
#include "tst_qt_filedialog_preview.moc"
