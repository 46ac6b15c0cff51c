// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "filedialogrun.h"
#include "modaldriver.h"
#include "pagesetups.h"
#include "plotcommand.h"
#include "printpreviewdemo.h"
#include "smalldisk.h"
#include "textforms.h"
#include "utils/zvpage.h"
#include "workbenchtest.h"
#include "zevatest.h"

#include <QImage>
#include <QMainWindow>
#include <QMenu>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QToolBar>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

const QString kPrint = QStringLiteral("打印");
const QString kClose = QStringLiteral("关闭");
const QColor kDesk(128, 128, 128);
const QColor kPaper(224, 224, 224);
constexpr QSize kLargeView(7200, 5200);

QWidget *sheetOf(QDialog *dialog)
{
    const auto *window = dialog->findChild<QMainWindow *>();
    return window ? window->centralWidget() : nullptr;
}

void press(QDialog *dialog, const QString &text)
{
    auto *bar = dialog->findChild<QToolBar *>();
    QVERIFY(bar);
    for (QAction *action : bar->actions()) {
        if (action->text() == text)
            QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
    }
}

/// The sheet of the preview, drawn so large that its finest lines are seen.
QImage previewed(QDialog *dialog)
{
    dialog->resize(kLargeView);
    return sheetOf(dialog)->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The rows and columns between the first and the last pixel of those colours.
QRect paperIn(const QImage &image)
{
    const auto isPaper = [&](int x, int y) { return image.pixelColor(x, y) != kDesk; };
    const QPoint middle = image.rect().center();
    QRect paper(middle, middle);
    while (paper.left() > 0 && isPaper(paper.left() - 1, middle.y()))
        paper.setLeft(paper.left() - 1);
    while (paper.right() + 1 < image.width() && isPaper(paper.right() + 1, middle.y()))
        paper.setRight(paper.right() + 1);
    while (paper.top() > 0 && isPaper(middle.x(), paper.top() - 1))
        paper.setTop(paper.top() - 1);
    while (paper.bottom() + 1 < image.height() && isPaper(middle.x(), paper.bottom() + 1))
        paper.setBottom(paper.bottom() + 1);
    return paper;
}

/// As much of a PDF's page as a picture of that size shows with so many pixels to a millimetre; null without the
/// program for it. Not scaled to fit: the page itself has whole points.
QImage rasterized(const QString &pdf, const QSize &size, const QSizeF &pixelsPerMillimetre)
{
    const QString picture = pdf + QStringLiteral("-page");
    QProcess process;
    process.start(QStringLiteral("pdftoppm"),
                  {QStringLiteral("-png"), QStringLiteral("-singlefile"), QStringLiteral("-rx"),
                   QString::number(pixelsPerMillimetre.width() * 25.4, 'f', 6), QStringLiteral("-ry"),
                   QString::number(pixelsPerMillimetre.height() * 25.4, 'f', 6), pdf, picture});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QImage();
    return QImage(picture + QStringLiteral(".png")).copy(QRect(QPoint(), size)).convertToFormat(QImage::Format_RGB32);
}

/// As one sees it from a distance at which single pixels do not count.
QImage fromAfar(const QImage &image)
{
    return image.scaledToWidth(900, Qt::SmoothTransformation).convertToFormat(QImage::Format_Grayscale8);
}

/// The mean structural similarity of two grey pictures of one size, over windows of 8 by 8 pixels: 1 for equal ones.
double similarity(const QImage &a, const QImage &b)
{
    constexpr int kWindow = 8;
    constexpr int kStep = 4;
    constexpr double kC1 = (0.01 * 255) * (0.01 * 255);
    constexpr double kC2 = (0.03 * 255) * (0.03 * 255);
    constexpr double kCount = kWindow * kWindow;
    double sum = 0.0;
    int windows = 0;
    for (int y0 = 0; y0 + kWindow <= a.height(); y0 += kStep) {
        for (int x0 = 0; x0 + kWindow <= a.width(); x0 += kStep) {
            double sa = 0, sb = 0, saa = 0, sbb = 0, sab = 0;
            for (int y = y0; y < y0 + kWindow; ++y) {
                const uchar *la = a.constScanLine(y);
                const uchar *lb = b.constScanLine(y);
                for (int x = x0; x < x0 + kWindow; ++x) {
                    sa += la[x];
                    sb += lb[x];
                    saa += la[x] * la[x];
                    sbb += lb[x] * lb[x];
                    sab += la[x] * lb[x];
                }
            }
            const double ma = sa / kCount;
            const double mb = sb / kCount;
            const double va = saa / kCount - ma * ma;
            const double vb = sbb / kCount - mb * mb;
            const double cov = sab / kCount - ma * mb;
            sum += (2 * ma * mb + kC1) * (2 * cov + kC2) / ((ma * ma + mb * mb + kC1) * (va + vb + kC2));
            ++windows;
        }
    }
    return windows ? sum / windows : 0.0;
}

/// Width and height of the page, in millimetres.
QSizeF pageSize(const QString &pdf)
{
    QProcess process;
    process.start(QStringLiteral("pdfinfo"), {pdf});
    if (!process.waitForFinished(60000))
        return QSizeF();
    const QRegularExpression line(QStringLiteral("Page size:\\s+([0-9.]+) x ([0-9.]+) pts"));
    const QRegularExpressionMatch match = line.match(QString::fromUtf8(process.readAllStandardOutput()));
    return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble()) * 25.4 / 72.0;
}

bool hasPoppler()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty()
        && !QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty();
}

} // namespace

/// PLOT: the preview of a layout's page, and the page on paper.
class tst_workbench_plot : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (!QPrinterInfo::defaultPrinter().isNull())
            QSKIP("there is a printer here, which these tests would print on");
    }
    void init();
    void cleanup();
    void whatIsPrintedIsWhatWasPreviewed_data();
    void whatIsPrintedIsWhatWasPreviewed();
    void similarityTellsPagesApart();
    void closingThePreviewPrintsNothing_data();
    void closingThePreviewPrintsNothing();
    void givingUpTheFileNamePrintsNothing();
    void fileNameBeginsBesideTheDrawing();
    void scriptNamesTheFile();
    void fileThatCannotBeWrittenIsTold_data();
    void fileThatCannotBeWrittenIsTold();
    void fullDiskIsToldAndTheOldFileStays_data();
    void fullDiskIsToldAndTheOldFileStays();
    void displayIsWhatTheViewShows();
    void namedPageSetupIsChosen_data();
    void namedPageSetupIsChosen();
    void givingUpThePageSetupPrintsNothing();
    void scriptNamesThePageSetup_data();
    void scriptNamesThePageSetup();
    void plottingLeavesTheDrawingAlone();
    void menuAndShortcutNeedADrawing();
    void everyDialogOfTheMenu_data();
    void everyDialogOfTheMenu();

private:
    MainWindow &window() { return m_session->window(); }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    void openSample(const QString &name)
    {
        QVERIFY(window().host()->openDocument(QStringLiteral(ZEVA_SAMPLES_DIR "/") + name));
        QCoreApplication::processEvents();
    }
    /// The drawing's first layout on paper becomes the current one.
    void showSheet()
    {
        ZvArray<ZvString> names;
        m_session->database().layoutNames(names);
        QVERIFY(names.length() > 1);
        QCOMPARE(m_session->database().setCurrentLayout(names[1]), Zv::eOk);
        QCoreApplication::processEvents();
    }
    /// A drawing with two page set-ups for its sheet, which is the current layout, and one for model space.
    void openWithSetups()
    {
        const auto setup = [](const char *width, const char *height, const char *flags) {
            return PlotSettings{{44, width}, {45, height}, {70, flags}, {74, QStringLiteral("1")}};
        };
        ZvDbFileReport report;
        m_session->newDrawing();
        QCOMPARE(m_session->database().writeCopy(toZvString(path("plain.dxf")), report), Zv::eOk);
        QFile file(path("plain.dxf"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray drawing = withPageSetups(file.readAll(),
                                                  {{"Of model space", setup("50", "50", "1024")},
                                                   {"Strip", setup("200", "100", "0")},
                                                   {QStringLiteral("立"), setup("100", "200", "0")}});
        file.close();
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(drawing), drawing.size());
        file.close();
        QVERIFY(window().host()->openDocument(path("plain.dxf")));
        QCoreApplication::processEvents();
        showSheet();
        QFile::remove(path("plain.dxf"));
    }
    void plot(const ModalDriver &driver)
    {
        m_session->action("plot")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(driver.finished(), 60000);
        waitForIdle();
    }
    /// Answers the question for a file with one of that name in the test's folder.
    ModalDriver::Action intoFolder(const char *name) const
    {
        return [this, name](QDialog *dialog) {
            static_cast<QFileDialog *>(dialog)->setDirectory(m_folder->path());
            typeName(dialog, QLatin1String(name));
            pressReturn(dialog);
        };
    }
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }
    QString lastLine() { return window().commandLine()->history().trimmed().split(QLatin1Char('\n')).last(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_plot::init()
{
    ZevaTest::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_plot::cleanup()
{
    m_session.reset();
    m_folder.reset();
    ZevaTest::cleanup();
}

void tst_workbench_plot::whatIsPrintedIsWhatWasPreviewed_data()
{
    QTest::addColumn<QString>("sample");
    QTest::addColumn<bool>("isSheet");
    QTest::addColumn<QSizeF>("paper");
    QTest::newRow("sheet of the plan") << "plan.dxf" << true << QSizeF(594, 420);
    QTest::newRow("part") << "part.dxf" << false << QSizeF(297, 420);
}

void tst_workbench_plot::whatIsPrintedIsWhatWasPreviewed()
{
    QVERIFY2(hasPoppler(), "poppler's programs were not found: packaging/install-packages test");
    QFETCH(QString, sample);
    QFETCH(bool, isSheet);
    QFETCH(QSizeF, paper);
    openSample(sample);
    if (isSheet)
        showSheet();
    QImage preview;
    ModalDriver driver(60000);
    driver.next([&](QDialog *dialog) {
        preview = previewed(dialog);
        press(dialog, kPrint);
    });
    driver.next(intoFolder("page.pdf"));
    plot(driver);
    QCOMPARE(lastLine(), QStringLiteral("Written: ") + path("page.pdf"));

    const QSizeF printed = pageSize(path("page.pdf"));
    const ZvGiPage page = zvgiReadPage(&m_session->database(), m_session->database().currentLayoutId());
    QVERIFY(std::abs(printed.width() - page.width) < 0.2 && std::abs(printed.height() - page.height) < 0.2);
    QVERIFY(std::abs(page.width - paper.width()) < 0.2 || std::abs(page.width - paper.height()) < 0.2);
    const QImage sheet = preview.copy(paperIn(preview));
    QVERIFY(sheet.width() > 900);
    const QImage onPaper
        = rasterized(path("page.pdf"), sheet.size(), {sheet.width() / page.width, sheet.height() / page.height});
    QCOMPARE(onPaper.size(), sheet.size());
    // The preview shows what cannot be printed on in grey.
    QImage white = sheet;
    for (int y = 0; y < white.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(white.scanLine(y));
        std::replace(line, line + white.width(), kPaper.rgb(), qRgb(255, 255, 255));
    }
    const double similar = similarity(fromAfar(white), fromAfar(onPaper));
    QVERIFY2(similar >= 0.98, qPrintable(QString::number(similar)));
}

void tst_workbench_plot::similarityTellsPagesApart()
{
    openSample(QStringLiteral("plan.dxf"));
    showSheet();
    QImage preview;
    ModalDriver driver(60000);
    driver.next([&](QDialog *dialog) {
        preview = previewed(dialog);
        press(dialog, kClose);
    });
    plot(driver);
    const QImage sheet = fromAfar(preview.copy(paperIn(preview)));
    QImage empty = sheet;
    empty.fill(Qt::white);
    QCOMPARE(similarity(sheet, sheet), 1.0);
    QVERIFY(similarity(sheet, empty) < 0.9);
    QVERIFY(similarity(sheet, sheet.mirrored()) < 0.9);
    QVERIFY(similarity(sheet, sheet.copy(sheet.rect().translated(8, 0))) < 0.98);
}

void tst_workbench_plot::closingThePreviewPrintsNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("close") << false;
    QTest::newRow("Escape") << true;
}

void tst_workbench_plot::closingThePreviewPrintsNothing()
{
    QFETCH(bool, byKey);
    m_session->newDrawing();
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        if (byKey)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            press(dialog, kClose);
    });
    plot(driver); // no other dialog
    QVERIFY(!lastLine().startsWith(QStringLiteral("Written")));
}

void tst_workbench_plot::givingUpTheFileNamePrintsNothing()
{
    m_session->newDrawing();
    ModalDriver driver;
    driver.next([](QDialog *dialog) { press(dialog, kPrint); });
    driver.next(pressEscape);
    plot(driver);
    QVERIFY(!lastLine().startsWith(QStringLiteral("Written")));
}

void tst_workbench_plot::fileNameBeginsBesideTheDrawing()
{
    QVERIFY(QFile::copy(QStringLiteral(ZEVA_SAMPLES_DIR "/part.dxf"), path("mine.dxf")));
    QVERIFY(window().host()->openDocument(path("mine.dxf")));
    QCoreApplication::processEvents();
    QString shown;
    ModalDriver driver;
    driver.next([](QDialog *dialog) { press(dialog, kPrint); });
    driver.next([&](QDialog *dialog) {
        const auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        shown = static_cast<QFileDialog *>(dialog)->directory().filePath(edit->text());
        pressEscape(dialog);
    });
    plot(driver);
    QCOMPARE(shown, path("mine.pdf"));
}

void tst_workbench_plot::scriptNamesTheFile()
{
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    zvedCommandLine(ZvString("_.PLOT ") + toZvString(path("script page.pdf")));
    waitForIdle();
    QFile file(path("script page.pdf"));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(window().commandLine()->history()));
    QCOMPARE(file.read(4), QByteArray("%PDF"));
    QCOMPARE(lastLine(), QStringLiteral("Written: ") + file.fileName());
}

void tst_workbench_plot::fileThatCannotBeWrittenIsTold_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "no folder/page.pdf";
    QTest::newRow("a folder of that name") << "taken.pdf";
    QTest::newRow("no folder at all") << QString(300, QLatin1Char('x')) + ".pdf";
}

void tst_workbench_plot::fileThatCannotBeWrittenIsTold()
{
    QFETCH(QString, name);
    m_session->newDrawing();
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("taken.pdf")));
    const QString nowhere = m_folder->filePath(name);
    zvedCommandLine(ZvString("_.PLOT ") + toZvString(nowhere));
    waitForIdle();
    QCOMPARE(lastLine(), nowhere + QStringLiteral(" could not be written."));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"taken.pdf"});
}

void tst_workbench_plot::fullDiskIsToldAndTheOldFileStays_data()
{
    QTest::addColumn<bool>("byPerson");
    QTest::newRow("by a script") << false;
    QTest::newRow("from the preview") << true;
}

void tst_workbench_plot::fullDiskIsToldAndTheOldFileStays()
{
    QFETCH(bool, byPerson);
    openSample(QStringLiteral("part.dxf"));
    QFile old(path("page.pdf"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    {
        const SmallDisk disk(2000);
        if (byPerson) {
            ModalDriver driver(60000);
            driver.next([](QDialog *dialog) { press(dialog, kPrint); });
            driver.next(intoFolder("page.pdf"));
            driver.next(pressReturn); // it may be replaced
            plot(driver);
        } else {
            zvedCommandLine(ZvString("_.PLOT ") + toZvString(old.fileName()));
            waitForIdle();
        }
    }
    QCOMPARE(lastLine(), old.fileName() + QStringLiteral(" could not be written."));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("old"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{"page.pdf"});
}

void tst_workbench_plot::displayIsWhatTheViewShows()
{
    m_session->newDrawing(); // a new drawing's model space plots the display
    ViewCamera camera = m_session->view().camera();
    ZvGeExtents2d box;
    box.add(ZvGePoint2d(1000, 2000));
    box.add(ZvGePoint2d(1100, 2050));
    camera.fit(box, 0.0);
    m_session->view().setCamera(camera);
    const ZvGeExtents2d shown = camera.visible();
    const ZvGiPage page = pageToPlot(m_session->database());
    QCOMPARE(page.area.minimum.x, shown.minimum.x);
    QCOMPARE(page.area.maximum.y, shown.maximum.y);
    // What is seen from a side cannot be plotted as it is seen: all of the drawing is, of which there is a line.
    m_session->addLine({0, 0, 0}, {40, 20, 0});
    m_session->view().lookFrom(ZvGeVector3d(1, 0, 1));
    const ZvGiPage whole = pageToPlot(m_session->database());
    QVERIFY(whole.area.maximum.x != shown.maximum.x);
}

void tst_workbench_plot::namedPageSetupIsChosen_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QSizeF>("paper");
    QTest::newRow("the layout's own") << 0 << QSizeF(420, 297);
    QTest::newRow("the first") << 1 << QSizeF(200, 100);
    QTest::newRow("the second") << 2 << QSizeF(100, 200);
}

void tst_workbench_plot::namedPageSetupIsChosen()
{
    QFETCH(int, row);
    QFETCH(QSizeF, paper);
    openWithSetups();
    QStringList rows;
    QSizeF previewed;
    ModalDriver driver(60000);
    driver.next([&](QDialog *dialog) {
        auto *combo = dialog->findChild<QComboBox *>();
        for (int i = 0; i < combo->count(); ++i)
            rows << combo->itemText(i);
        for (int i = 0; i < row; ++i)
            QTest::keyClick(combo, Qt::Key_Down);
        pressReturn(dialog);
    });
    driver.next([&](QDialog *dialog) {
        dialog->resize(2000, 600); // of a sheet across all is seen
        const QRect sheet = paperIn(sheetOf(dialog)->grab().toImage());
        previewed = sheet.size();
        press(dialog, kClose);
    });
    plot(driver);
    QCOMPARE(rows,
             (QStringList{
                 QStringLiteral("The settings of Layout1"),
                 QStringLiteral("Strip"),
                 QStringLiteral("立"),
             }));
    const double ratio = previewed.width() / previewed.height() / (paper.width() / paper.height());
    QVERIFY2(std::abs(ratio - 1) < 0.02, qPrintable(QString::number(ratio)));
}

void tst_workbench_plot::givingUpThePageSetupPrintsNothing()
{
    openWithSetups();
    ModalDriver driver;
    driver.next(pressEscape); // and no preview
    plot(driver);
    QVERIFY(!lastLine().startsWith(QStringLiteral("Written")));
}

void tst_workbench_plot::scriptNamesThePageSetup_data()
{
    QTest::addColumn<QString>("setup");
    QTest::addColumn<QSizeF>("paper"); // none: an error
    QTest::newRow("Enter: the layout's own") << "" << QSizeF(420, 297);
    QTest::newRow("by its name") << "strip" << QSizeF(200, 100);
    QTest::newRow("Chinese") << QStringLiteral("立") << QSizeF(100, 200);
    QTest::newRow("no such page setup") << "nowhere" << QSizeF();
}

void tst_workbench_plot::scriptNamesThePageSetup()
{
    QFETCH(QString, setup);
    QFETCH(QSizeF, paper);
    openWithSetups();
    for (const QString &line : {QStringLiteral("_.PLOT"), setup, path("page.pdf")})
        zvedCommandLine(toZvString(line));
    waitForIdle();
    if (!paper.isValid()) {
        QVERIFY(window().commandLine()->history().contains(
            QStringLiteral("There is no page setup \"nowhere\" for this layout.")));
        QVERIFY(!QFile::exists(path("page.pdf")));
        return;
    }
    QCOMPARE(lastLine(), QStringLiteral("Written: ") + path("page.pdf"));
    QVERIFY2(hasPoppler(), "poppler's programs were not found: packaging/install-packages test");
    const QSizeF printed = pageSize(path("page.pdf"));
    QVERIFY(std::abs(printed.width() - paper.width()) < 0.2 && std::abs(printed.height() - paper.height()) < 0.2);
}

void tst_workbench_plot::plottingLeavesTheDrawingAlone()
{
    m_session->newDrawing();
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 10, 0});
    m_session->database().clearUndo();
    m_session->database().setModified(false);
    m_session->document()->editingContext()->selectionHolder()->set({line});
    ModalDriver driver;
    driver.next([](QDialog *dialog) { press(dialog, kPrint); });
    driver.next(intoFolder("page.pdf"));
    plot(driver);
    QVERIFY(QFile::exists(path("page.pdf")));
    QVERIFY(!m_session->database().canUndo());
    QVERIFY(!m_session->database().isModified());
    QCOMPARE(int(m_session->selection().size()), 1);
}

void tst_workbench_plot::menuAndShortcutNeedADrawing()
{
    QAction *action = m_session->action("plot");
    QVERIFY(window().findChild<QMenu *>(QStringLiteral("fileMenu"))->actions().contains(action));
    QCOMPARE(action->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_P));
    QVERIFY(!action->isEnabled());
    m_session->newDrawing();
    QVERIFY(action->isEnabled());
    ModalDriver driver;
    driver.next([](QDialog *dialog) { press(dialog, kClose); });
    window().activateWindow();
    QTRY_VERIFY(window().isActiveWindow());
    QTest::keyClick(&m_session->view(), Qt::Key_P, Qt::ControlModifier);
    QTRY_VERIFY(driver.finished());
    waitForIdle();
}

void tst_workbench_plot::everyDialogOfTheMenu_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("line");
    for (const DialogDemo &demo : printPreviewDemos())
        QTest::newRow(qPrintable(demo.id)) << demo.id << "CADPreviewDialog: {\"result\": 2}";
}

void tst_workbench_plot::everyDialogOfTheMenu()
{
    QFETCH(QString, action);
    QFETCH(QString, line);
    m_session->newDrawing();
    const QMenu *menu = window().findChild<QMenu *>(QStringLiteral("printPreviewMenu"));
    QVERIFY(menu && menu->actions().contains(m_session->action(action.toUtf8().constData())));
    QRect paper;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        const QImage sheet = sheetOf(dialog)->grab().toImage();
        if (sheet.pixelColor(sheet.rect().center()) != kDesk)
            paper = paperIn(sheet);
        press(dialog, kClose);
    });
    m_session->action(action.toUtf8().constData())->trigger();
    QVERIFY(driver.finished());
    QCOMPARE(lastLine(), line);
    QCOMPARE(paper.isNull(), action == QLatin1String("printPreviewNoPaper"));
}

ZEVA_TEST_MAIN(tst_workbench_plot)
#include "tst_workbench_plot.moc"
