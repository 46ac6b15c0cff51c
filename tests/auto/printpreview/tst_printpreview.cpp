// SPDX-License-Identifier: MIT
#include "mainwindowhost.h"
#include "modaldriver.h"
#include "modulesession.h"
#include "stranger.h"
#include "zevatest.h"
#include "zvqtcanvas.h"

#include "base/zverror.h"
#include "db/zvdbentities.h"
#include "utils/zvcanvas.h"
#include "utils/zvpage.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QDialog>
#include <QImage>
#include <QLineEdit>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QToolBar>
#include <QToolButton>
#include <QValidator>
#include <QWheelEvent>

#include <cmath>
#include <functional>
#include <memory>

namespace {

constexpr double kPixelsPerMillimetre = 3.7795275590551185;
const QColor kDesk(128, 128, 128);
const QColor kPaper(224, 224, 224);
constexpr unsigned kRed = 0xFF0000FFu; // packed
const QString kFitWidth = QStringLiteral("窗口缩放");
const QString kFitPage = QStringLiteral("缩放为原窗口");
const QString kZoomOut = QStringLiteral("缩小");
const QString kZoomIn = QStringLiteral("放大");
const QString kPrint = QStringLiteral("打印");
const QString kClose = QStringLiteral("关闭");

class Device : public ZvRxObjectImpl<ZvsiReferenceDevice>
{
public:
    explicit Device(int dotsPerInch) : m_dotsPerInch(dotsPerInch) { }
    int capability(int number) override { return number == 88 ? m_dotsPerInch : -1; }

private:
    int m_dotsPerInch;
};

/// A cross from corner to corner of the printable area, and a red block in the first tenth of it. Counts its calls, and
/// keeps where the corners come out.
class Page : public ZvRxObjectImpl<ZvsiRenderObject>
{
public:
    explicit Page(const QSizeF &size) : m_size(size) { }
    void draw(ZvRxObjectPtr object) override
    {
        ++calls;
        auto *canvas = zvrxCast<ZvQtCanvas>(object);
        origin = canvas->pointToQt({0, 0});
        end = canvas->pointToQt({m_size.width(), m_size.height()});
        canvas->setLineStyle(0, 0, 0xFF000000u, 0, 0);
        canvas->drawLine({0, 0}, {m_size.width(), m_size.height()});
        canvas->drawLine({0, m_size.height()}, {m_size.width(), 0});
        canvas->setFillStyle(ZvsiCanvas::kHatchSolidFill, kRed);
        fill(*canvas, QRectF(0, 0, m_size.width() / 10, m_size.height() / 10));
        if (drawsBeyond)
            fill(*canvas, QRectF(m_size.width() * 3, 0, m_size.width() / 2, m_size.height()));
        if (drawsBeyond)
            fill(*canvas, QRectF(-m_size.width(), 0, m_size.width() / 2, m_size.height()));
    }

    int calls = 0;
    bool drawsBeyond = false;
    QPointF origin;
    QPointF end;

private:
    static void fill(ZvQtCanvas &canvas, const QRectF &rect)
    {
        ZvArray<float> coordinates;
        ZvArray<int> operations;
        int k = 0;
        for (const QPointF &corner : {rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()}) {
            coordinates.append(float(corner.x()));
            coordinates.append(float(corner.y()));
            operations.append(k == 0 ? int(0x80000000u) : 0x10000000);
            operations.append(k++);
        }
        operations.append(int(0x90000000u));
        canvas.drawPaths(2, coordinates, operations);
    }

    QSizeF m_size;
};

struct Paper
{
    double width = 210.0;
    double height = 297.0;
    double left = 5.0;
    double top = 5.0;
    double right = 5.0;
    double bottom = 5.0;
    int unit = 0;
    int dotsPerInch = 96; ///< 0: no reference device.

    double devicePerUnit() const { return unit == 2 ? 1.0 : dotsPerInch / 25.4; }
    QSizeF printable() const { return QSizeF(width - left - right, height - top - bottom) * devicePerUnit(); }
};

ZvJsonPtr makeObject()
{
    return ElementValue::createObject(IElementValueBase::kObject);
}

ZvJsonPtr makeParams(const Paper &paper, const ZvRxObjectPtr &page = nullptr)
{
    const ZvJsonPtr tree = makeObject();
    tree->SetDataI("paper_code", 9);
    tree->SetDataSW("name", L"ISO A4");
    tree->SetDataI("paper_unit", paper.unit);
    tree->SetDataD("paper_w", paper.width);
    tree->SetDataD("paper_h", paper.height);
    tree->SetDataD("paper_margin_left", paper.left);
    tree->SetDataD("paper_margin_top", paper.top);
    tree->SetDataD("paper_margin_right", paper.right);
    tree->SetDataD("paper_margin_bottom", paper.bottom);
    const ZvJsonPtr params = makeObject();
    params->SetDataJ("paper", tree);
    if (page)
        params->SetDataO("intHelper", page);
    if (paper.dotsPerInch > 0)
        params->SetDataO("refDC", ZvRxObjectPtr::adopt(new Device(paper.dotsPerInch)));
    return params;
}

/// The preview of the service with its parameters, and the hands that work it.
class Preview
{
public:
    explicit Preview(const ZvJsonPtr &params)
        : adapter(ModuleSession::createDialog(L"CADPreviewDialog")), dialog(ModuleSession::dialogOf(adapter)),
          isReady(adapter->onInit(params, nullptr))
    {
    }
    explicit Preview(const Paper &paper, const ZvRxObjectPtr &page = nullptr) : Preview(makeParams(paper, page)) { }

    /// With a sheet widget of that size.
    void show(const QSize &size = QSize(500, 400))
    {
        dialog->setWindowState(Qt::WindowNoState);
        dialog->resize(size.width(), size.height() + 100);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        dialog->resize(dialog->size() + size - sheet()->size());
        QTRY_COMPARE(sheet()->size(), size);
        QTRY_VERIFY(dialog->isActiveWindow());
        sheet()->grab();
    }

    QMainWindow *window() const { return dialog->findChild<QMainWindow *>(); }
    QToolBar *bar() const { return dialog->findChild<QToolBar *>(); }
    QWidget *sheet() const { return window()->centralWidget(); }
    QComboBox *box() const { return dialog->findChild<QComboBox *>(); }
    QLineEdit *edit() const { return box()->lineEdit(); }
    QString zoom() const { return edit()->text(); }
    /// Only as good as the text: a tenth of a percent.
    double percent() const { return zoom().remove(QLatin1Char('%')).toDouble(); }
    QAction *action(const QString &text) const
    {
        for (QAction *action : bar()->actions()) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }
    QToolButton *button(const QString &text) const
    {
        return qobject_cast<QToolButton *>(bar()->widgetForAction(action(text)));
    }
    void press(const QString &text) { QTest::mouseClick(button(text), Qt::LeftButton); }
    QImage picture() const { return sheet()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    void wheel(const QPointF &pos, int delta)
    {
        QWheelEvent event(pos, sheet()->mapToGlobal(pos.toPoint()), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(sheet(), &event);
        sheet()->grab();
    }
    void mouse(QEvent::Type type, const QPointF &pos, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, pos, button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(sheet(), &event);
        sheet()->grab();
    }
    void drag(const QVector<QPointF> &path, Qt::MouseButton button = Qt::LeftButton)
    {
        mouse(QEvent::MouseButtonPress, path.first(), button, button);
        for (int i = 1; i < path.size() - 1; ++i)
            mouse(QEvent::MouseMove, path[i], Qt::NoButton, button);
        mouse(QEvent::MouseButtonRelease, path.last(), button, Qt::NoButton);
    }
    void typeZoom(const QString &text)
    {
        edit()->setFocus();
        edit()->selectAll();
        QTest::keyClicks(edit(), text);
    }

    ZvUiDialogBasePtr adapter;
    QDialog *dialog;
    bool isReady;
};

/// Where the colour, or one that is drawn on it, is.
QRect boundsOf(const QImage &image, const std::function<bool(QColor)> &is)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (is(image.pixelColor(x, y)))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

QRect paperIn(const QImage &image)
{
    return boundsOf(image, [](const QColor &color) { return color != kDesk; });
}

QRect whiteIn(const QImage &image)
{
    return boundsOf(image, [](const QColor &color) { return color != kDesk && color != kPaper; });
}

bool isAllDesk(const QImage &image)
{
    return paperIn(image).isNull();
}

/// What the sheet lies on: the pixel rectangles told from the sizes alone.
struct Expected
{
    QRect paper;
    QRect white;
};

Expected expectedAt(const Paper &paper, double scale, const QPointF &offset)
{
    const double d = paper.devicePerUnit();
    const auto x = [&](double v) { return int(std::floor(v * scale + 0.5) + offset.x()); };
    const auto y = [&](double v) { return int(std::floor(-v * scale + 0.5) + offset.y()); };
    Expected expected;
    expected.paper.setCoords(x(-paper.left * d), y((paper.height - paper.top) * d),
                             x((paper.width - paper.left) * d) - 1, y(-paper.top * d) - 1);
    const QSizeF printable = paper.printable();
    expected.white.setCoords(x(0), y(printable.height()), x(printable.width()) - 1, y(0) - 1);
    return expected;
}

/// As a fit of the page, or of its width, places it in a view.
Expected fitted(const Paper &paper, const QSize &view, bool toWidth)
{
    const double d = paper.devicePerUnit();
    const double scale = toWidth ? view.width() / (1.1 * paper.width * d) : view.height() / (1.1 * paper.height * d);
    const QPointF center((paper.width / 2 - paper.left) * d, (paper.height / 2 - paper.top) * d);
    return expectedAt(paper, scale,
                      {std::floor(view.width() * 0.5 - center.x() * scale + 0.5),
                       std::floor(view.height() * 0.5 + center.y() * scale + 0.5)});
}

const Paper kA4;

} // namespace

Q_DECLARE_METATYPE(Paper)

class TestPrintPreview : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        ZevaTest::init();
        m_session = std::make_unique<ModuleSession>();
    }
    void cleanup()
    {
        m_session.reset();
        ZevaTest::cleanup();
    }
    void windowIsAFullScreenDialog();
    void dialogAlwaysStandsBeforeTheMainWindow();
    void toolBarHasItsItemsInOrder();
    void iconsAreThoseOfThePrintSupportLibrary_data();
    void iconsAreThoseOfThePrintSupportLibrary();
    void zoomBoxListsItsFactors();
    void zoomButtonsRepeat();
    void toolBarHasNoContextMenu();
    void focusIsOnTheSheet();
    void endings_data();
    void endings();
    void printIsOnlyEnabledWhereTheCallerSaysSo_data();
    void printIsOnlyEnabledWhereTheCallerSaysSo();
    void foreignObjectThrows_data();
    void foreignObjectThrows();
    void sheetLiesWhereThePageFits_data();
    void sheetLiesWhereThePageFits();
    void sheetThatCannotBeShownIsGrey_data();
    void sheetThatCannotBeShownIsGrey();
    void withoutDeviceThePageFitsByTenUnits();
    void renderObjectDrawsOnThePrintableArea_data();
    void renderObjectDrawsOnThePrintableArea();
    void resizingKeepsTheCentreAndTheViewHeight();
    void trueSizeIsAHundredPercent_data();
    void trueSizeIsAHundredPercent();
    void typedZoom_data();
    void typedZoom();
    void refusedZoomGoesBackToTheLastGoodOne();
    void boxThatNobodyTypedIntoTellsTheView();
    void zoomOutOfRangeIsClamped_data();
    void zoomOutOfRangeIsClamped();
    void pickFromTheListCountsWhenTheBoxIsLeft();
    void validator_data();
    void validator();
    void zoomButtonsKeepTheCentre_data();
    void zoomButtonsKeepTheCentre();
    void fittingIsOnAfterAFitAndOffAfterAZoom();
    void secondClickOnAFitFitsAgain();
    void wheelKeepsThePointUnderThePointer_data();
    void wheelKeepsThePointUnderThePointer();
    void wheelTakesTheWholePixelUnderThePointer();
    void wheelStopsAtTheClamp_data();
    void wheelStopsAtTheClamp();
    void dragMovesTheSheet_data();
    void dragMovesTheSheet();
    void moveWithoutAButtonMovesNothing();
    void panningDrawsNothingAgain();
    void panningALargeLayoutDrawsNothingAgain();
    void panningInACloseViewDrawsWhatComesIntoView();
    void drawingBesideThePaperIsSeen();
    void sheetIsDrawnAnew_data();
    void sheetIsDrawnAnew();

private:
    std::unique_ptr<ModuleSession> m_session;
};

// ---- the window ---------------------------------------------------------------------------------

void TestPrintPreview::windowIsAFullScreenDialog()
{
    const Preview preview(kA4);
    QVERIFY(preview.isReady);
    QCOMPARE(preview.dialog->windowTitle(), QStringLiteral("Print Preview"));
    QCOMPARE(preview.dialog->windowType(), Qt::Dialog);
    QVERIFY(!(preview.dialog->windowFlags() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(preview.dialog->windowState(), Qt::WindowStates(Qt::WindowFullScreen));
    QCOMPARE(preview.dialog->minimumSize(), QSize(100, 100));
    QCOMPARE(preview.dialog->size(), QGuiApplication::primaryScreen()->availableGeometry().size());
    QVERIFY(preview.dialog->isModal());
    QCOMPARE(preview.dialog->focusWidget(), preview.sheet());
    preview.dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(preview.dialog));
    const QSize screen = QGuiApplication::primaryScreen()->size();
    QCOMPARE(preview.dialog->size(), screen);
    QCOMPARE(preview.window()->size(), screen);
    QCOMPARE(preview.sheet()->width(), screen.width());
}

void TestPrintPreview::dialogAlwaysStandsBeforeTheMainWindow()
{
    QWidget given;
    QVERIFY(!ModuleSession::dialogOf(ModuleSession::createDialog(L"CADPreviewDialog", &given))->parentWidget());
    QWidget mainWindow;
    const MainWindowHost host(&mainWindow);
    const ZvUiDialogBasePtr adapter = ModuleSession::createDialog(L"CADPreviewDialog", &given);
    QCOMPARE(ModuleSession::dialogOf(adapter)->parentWidget(), &mainWindow);
}

void TestPrintPreview::toolBarHasItsItemsInOrder()
{
    const Preview preview(kA4);
    QStringList items;
    for (QAction *action : preview.bar()->actions()) {
        if (action->isSeparator())
            items << QStringLiteral("|");
        else
            items << (preview.bar()->widgetForAction(action) == preview.box() ? QStringLiteral("box") : action->text());
    }
    QCOMPARE(items,
             (QStringList{kFitWidth, kFitPage, QStringLiteral("|"), QStringLiteral("box"), kZoomOut, kZoomIn,
                          QStringLiteral("|"), kPrint, kClose}));
    QCOMPARE(preview.action(kFitWidth)->objectName(), QStringLiteral("fitWidthAction"));
    QCOMPARE(preview.action(kFitPage)->objectName(), QStringLiteral("fitPageAction"));
    QVERIFY(preview.action(kFitWidth)->isCheckable());
    QVERIFY(preview.action(kFitPage)->isCheckable());
    QVERIFY(preview.action(kFitPage)->isChecked());
    QVERIFY(!preview.action(kFitWidth)->isChecked());
}

void TestPrintPreview::iconsAreThoseOfThePrintSupportLibrary_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("icon");
    QTest::newRow("fit width") << kFitWidth << "fit-width";
    QTest::newRow("fit page") << kFitPage << "fit-page";
    QTest::newRow("zoom out") << kZoomOut << "zoom-out";
    QTest::newRow("zoom in") << kZoomIn << "zoom-in";
    QTest::newRow("print") << kPrint << "print";
    QTest::newRow("close shows the arrow") << kClose << "go-next";
}

void TestPrintPreview::iconsAreThoseOfThePrintSupportLibrary()
{
    QFETCH(QString, text);
    QFETCH(QString, icon);
    const Preview preview(kA4);
    const QIcon shown = preview.action(text)->icon();
    for (const int size : {24, 32}) {
        const QImage file(
            QStringLiteral(":/qt-project.org/dialogs/qprintpreviewdialog/images/%1-%2.png").arg(icon).arg(size));
        QVERIFY(!file.isNull());
        QCOMPARE(file.size(), QSize(size, size));
        QCOMPARE(shown.pixmap(size, size).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
                 file.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }
}

void TestPrintPreview::zoomBoxListsItsFactors()
{
    const Preview preview(kA4);
    QStringList texts;
    QVector<int> halves;
    for (int i = 0; i < preview.box()->count(); ++i) {
        texts << preview.box()->itemText(i);
        halves << preview.box()->itemData(i).toInt();
    }
    QCOMPARE(halves, (QVector<int>{25, 50, 100, 200, 250, 300, 400, 800, 1600}));
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("12.5% 25% 50% 100% 125% 150% 200% 400% 800%"));
    QVERIFY(preview.box()->isEditable());
    QCOMPARE(preview.box()->minimumContentsLength(), 7);
    QCOMPARE(preview.box()->insertPolicy(), QComboBox::NoInsert);
    QCOMPARE(preview.edit()->contextMenuPolicy(), Qt::NoContextMenu);
}

void TestPrintPreview::zoomButtonsRepeat()
{
    const Preview preview(kA4);
    for (const QString &text : {kZoomIn, kZoomOut}) {
        QVERIFY(preview.button(text)->autoRepeat());
        QCOMPARE(preview.button(text)->autoRepeatDelay(), 200);
        QCOMPARE(preview.button(text)->autoRepeatInterval(), 200);
    }
    QVERIFY(!preview.button(kPrint)->autoRepeat());
}

void TestPrintPreview::toolBarHasNoContextMenu()
{
    const Preview preview(kA4);
    QVERIFY(!preview.window()->createPopupMenu());
}

void TestPrintPreview::focusIsOnTheSheet()
{
    Preview preview(kA4);
    preview.show();
    QCOMPARE(preview.dialog->focusWidget(), preview.sheet());
}

// ---- how it ends, what it takes -----------------------------------------------------------------

void TestPrintPreview::endings_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("result");
    QTest::newRow("print") << kPrint << 0 << 6;
    QTest::newRow("close") << kClose << 0 << 2;
    QTest::newRow("Escape") << QString() << int(Qt::Key_Escape) << 2;
    QTest::newRow("window frame") << QString() << 0 << 2;
}

void TestPrintPreview::endings()
{
    QFETCH(QString, button);
    QFETCH(int, key);
    QFETCH(int, result);
    const ZvJsonPtr params = makeParams(kA4);
    params->SetDataB("enable_print", true);
    Preview preview(params);
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        if (!button.isEmpty())
            preview.press(button);
        else if (key)
            QTest::keyClick(dialog, Qt::Key(key));
        else
            dialog->close();
    });
    QCOMPARE(preview.adapter->doModal(), result);
    QVERIFY(driver.finished());
    int written = 0;
    QVERIFY(preview.adapter->getResult()->GetDataI("result", written));
    QCOMPARE(written, result);
}

void TestPrintPreview::printIsOnlyEnabledWhereTheCallerSaysSo_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isEnabled");
    QTest::newRow("\"enable_print\" missing") << -1 << false;
    QTest::newRow("false") << 0 << false;
    QTest::newRow("true") << 1 << true;
}

void TestPrintPreview::printIsOnlyEnabledWhereTheCallerSaysSo()
{
    QFETCH(int, value);
    QFETCH(bool, isEnabled);
    const ZvJsonPtr params = makeParams(kA4);
    if (value >= 0)
        params->SetDataB("enable_print", value);
    const Preview preview(params);
    QCOMPARE(preview.action(kPrint)->isEnabled(), isEnabled);
    QVERIFY(preview.action(kClose)->isEnabled());
}

void TestPrintPreview::foreignObjectThrows_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("render object") << QByteArray("intHelper");
    QTest::newRow("reference device") << QByteArray("refDC");
}

void TestPrintPreview::foreignObjectThrows()
{
    QFETCH(QByteArray, key);
    const ZvJsonPtr params = makeParams(kA4);
    params->SetDataO(key.constData(), Stranger::make());
    const ZvUiDialogBasePtr adapter = ModuleSession::createDialog(L"CADPreviewDialog");
    QVERIFY_EXCEPTION_THROWN(adapter->onInit(params, nullptr), ZvError_NotThatKindOfClass);
}

// ---- the sheet ----------------------------------------------------------------------------------

void TestPrintPreview::sheetLiesWhereThePageFits_data()
{
    QTest::addColumn<Paper>("paper");
    QTest::addColumn<QSize>("view");
    QTest::addColumn<bool>("toWidth");
    const Paper across{297, 210, 5, 5, 5, 5, 0, 300};
    const Paper uneven{200, 100, 10, 30, 20, 5, 0, 96};
    const Paper device{800, 600, 40, 20, 10, 60, 2, 72};
    const Paper least{1, 1, 0.1, 0.1, 0.1, 0.1, 2, 96};
    QTest::newRow("A4") << kA4 << QSize(500, 400) << false;
    QTest::newRow("A4, its width") << kA4 << QSize(500, 400) << true;
    QTest::newRow("A4 in a high view") << kA4 << QSize(300, 500) << false;
    QTest::newRow("A4 across at 300 dots per inch") << across << QSize(500, 400) << false;
    QTest::newRow("A4 across, its width") << across << QSize(500, 400) << true;
    QTest::newRow("uneven margins: above and below are exchanged") << uneven << QSize(500, 400) << false;
    QTest::newRow("unit 2: device units") << device << QSize(501, 401) << false;
    QTest::newRow("unit 2, its width") << device << QSize(501, 401) << true;
    QTest::newRow("a device unit wide and high, the least") << least << QSize(500, 400) << false;
}

void TestPrintPreview::sheetLiesWhereThePageFits()
{
    QFETCH(Paper, paper);
    QFETCH(QSize, view);
    QFETCH(bool, toWidth);
    Preview preview(paper);
    preview.show(view);
    if (toWidth)
        preview.press(kFitWidth);
    const QImage image = preview.picture();
    const Expected expected = fitted(paper, view, toWidth);
    // Of the extents' paper units, a tenth more than the paper has, each has so many pixels.
    const double pixels = toWidth ? view.width() / (1.1 * paper.width) : view.height() / (1.1 * paper.height);
    QCOMPARE(preview.zoom(), QString::asprintf("%.1f%%", pixels / kPixelsPerMillimetre * 100));
    const QRect all(QPoint(), view);
    QCOMPARE(paperIn(image), expected.paper & all);
    QCOMPARE(whiteIn(image), expected.white & all);
    if (all.contains(expected.paper)) {
        QCOMPARE(image.pixelColor(expected.paper.topLeft()), kPaper);
        QCOMPARE(image.pixelColor(expected.paper.bottomRight()), kPaper);
        QCOMPARE(image.pixelColor(expected.white.topLeft()), QColor(Qt::white));
        QCOMPARE(image.pixelColor(expected.white.bottomRight()), QColor(Qt::white));
    }
}

void TestPrintPreview::sheetThatCannotBeShownIsGrey_data()
{
    QTest::addColumn<Paper>("paper");
    QTest::addColumn<bool>("hasPaper");
    QTest::newRow("no \"paper\"") << kA4 << false;
    QTest::newRow("millimetres without a reference device") << Paper{210, 297, 5, 5, 5, 5, 0, 0} << true;
    QTest::newRow("less than a device unit wide") << Paper{0.9, 100, 0, 0, 0, 0, 2, 96} << true;
    QTest::newRow("less than a device unit high") << Paper{100, 0.9, 0, 0, 0, 0, 2, 96} << true;
    QTest::newRow("no size") << Paper{0, 0, 0, 0, 0, 0, 0, 96} << true;
}

void TestPrintPreview::sheetThatCannotBeShownIsGrey()
{
    QFETCH(Paper, paper);
    QFETCH(bool, hasPaper);
    const auto page = ZvSmartPtr<Page>::adopt(new Page(paper.printable()));
    const ZvJsonPtr params = hasPaper ? makeParams(paper, page) : makeObject();
    if (!hasPaper)
        params->SetDataO("intHelper", page);
    Preview preview(params);
    QVERIFY(preview.isReady);
    preview.show();
    QVERIFY(isAllDesk(preview.picture()));
    preview.wheel(QPointF(20, 20), 120);
    preview.drag({{20, 20}, {40, 40}});
    preview.press(kFitWidth);
    preview.press(kZoomIn);
    QVERIFY(isAllDesk(preview.picture()));
    QCOMPARE(page->calls, 0);
}

void TestPrintPreview::withoutDeviceThePageFitsByTenUnits()
{
    // Drawn with one unit for the paper's, fitted by ten.
    const Paper paper{400, 300, 10, 10, 10, 10, 2, 0};
    Preview preview(paper);
    preview.show();
    const double scale = 400 / (1.1 * 3000);
    const Expected expected = expectedAt(
        paper, scale,
        {std::floor(250 - (200 - 10) * 10 * scale + 0.5), std::floor(200 + (150 - 10) * 10 * scale + 0.5)});
    QCOMPARE(paperIn(preview.picture()), expected.paper);
    QCOMPARE(whiteIn(preview.picture()), expected.white);
}

void TestPrintPreview::renderObjectDrawsOnThePrintableArea_data()
{
    QTest::addColumn<Paper>("paper");
    QTest::newRow("A4 at 96 dots per inch") << kA4;
    QTest::newRow("A4 at 600 dots per inch") << Paper{210, 297, 5, 5, 5, 5, 0, 600};
    QTest::newRow("device units") << Paper{800, 600, 40, 20, 10, 60, 2, 72};
}

void TestPrintPreview::renderObjectDrawsOnThePrintableArea()
{
    QFETCH(Paper, paper);
    const auto page = ZvSmartPtr<Page>::adopt(new Page(paper.printable()));
    Preview preview(paper, page);
    preview.show();
    const QRect white = fitted(paper, QSize(500, 400), false).white;
    QCOMPARE(page->origin, QPointF(white.topLeft()));
    QCOMPARE(page->end, QPointF(white.x() + white.width(), white.y() + white.height()));
    const QImage image = preview.picture();
    QCOMPARE(image.pixelColor(white.topLeft() + QPoint(3, 8)), QColor(Qt::red));
    QCOMPARE(image.pixelColor(white.left() + 3, white.bottom() - 8), QColor(Qt::white));
    QCOMPARE(image.pixelColor(white.right() - 3, white.top() + 8), QColor(Qt::white));
    const QRect red = boundsOf(image, [](const QColor &color) { return color == Qt::red; });
    QCOMPARE(red.topLeft(), white.topLeft());
    QVERIFY(std::abs(red.width() - white.width() / 10.0) <= 1.0);
    QVERIFY(std::abs(red.height() - white.height() / 10.0) <= 1.0);
}

void TestPrintPreview::resizingKeepsTheCentreAndTheViewHeight()
{
    Preview preview(kA4);
    preview.show();
    preview.drag({{100, 100}, {130, 90}});
    const double before = preview.percent();
    preview.dialog->resize(preview.dialog->size() + QSize(100, 200));
    QTRY_COMPARE(preview.sheet()->size(), QSize(600, 600));
    QVERIFY(std::abs(preview.percent() - before * 1.5) < 0.2);
    const double d = kA4.devicePerUnit();
    const double old = 400 / (1.1 * 297 * d);
    const double scale = old * 1.5;
    const QPointF oldOffset(std::floor(250 - 100 * d * old + 0.5) + 30, std::floor(200 + 143.5 * d * old + 0.5) - 10);
    const QPointF center((500 - 2 * oldOffset.x()) / (2 * old), (400 - 2 * oldOffset.y()) / (2 * -old));
    const Expected expected = expectedAt(
        kA4, scale, {std::floor(300 - center.x() * scale + 0.5), std::floor(300 + center.y() * scale + 0.5)});
    QCOMPARE(paperIn(preview.picture()), expected.paper);
}

// ---- zoom ---------------------------------------------------------------------------------------

void TestPrintPreview::trueSizeIsAHundredPercent_data()
{
    QTest::addColumn<int>("dotsPerInch");
    QTest::newRow("at 96 dots per inch") << 96;
    QTest::newRow("device of 300 dots per inch") << 300;
    QTest::newRow("device of 1200 dots per inch") << 1200;
}

void TestPrintPreview::trueSizeIsAHundredPercent()
{
    QFETCH(int, dotsPerInch);
    const Paper paper{50, 40, 5, 5, 5, 5, 0, dotsPerInch};
    Preview preview(paper);
    preview.show();
    preview.typeZoom(QStringLiteral("100"));
    QTest::keyClick(preview.edit(), Qt::Key_Return);
    QCOMPARE(preview.zoom(), QStringLiteral("100%"));
    const QRect sheet = paperIn(preview.picture());
    QVERIFY(std::abs(sheet.width() - 50 * kPixelsPerMillimetre) <= 1.0);
    QVERIFY(std::abs(sheet.height() - 40 * kPixelsPerMillimetre) <= 1.0);
    preview.drag({{10, 10}, {20, 20}});
    preview.dialog->resize(preview.dialog->size() + QSize(10, 0)); // has the text told anew
    QTRY_COMPARE(preview.zoom(), QStringLiteral("100.0%"));
}

void TestPrintPreview::typedZoom_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("byReturn");
    QTest::addColumn<QString>("shown"); // empty: as before
    QTest::newRow("150 and leaving the box") << "150" << false << "150%";
    QTest::newRow("150 and Enter") << "150" << true << "150%";
    QTest::newRow("with its sign") << "75%" << true << "75%";
    QTest::newRow("a decimal") << "33.3" << true << "33.3%";
    QTest::newRow("least, which the box would complete without its sign") << "1%" << true << "1%";
    QTest::newRow("greatest") << "1000" << true << "1000%";
    QTest::newRow("less than the least, left") << "0.5" << false << "";
    QTest::newRow("more than the greatest, left") << "2000" << false << "";
    QTest::newRow("letters are not taken, left") << "abc" << false << "";
    QTest::newRow("emptied, left") << "" << false << "";
    QTest::newRow("the sign alone, left") << "%" << false << "";
}

void TestPrintPreview::typedZoom()
{
    QFETCH(QString, typed);
    QFETCH(bool, byReturn);
    QFETCH(QString, shown);
    Preview preview(kA4);
    preview.show();
    const QString before = preview.zoom();
    const QImage picture = preview.picture();
    preview.typeZoom(typed);
    if (typed.isEmpty())
        QTest::keyClick(preview.edit(), Qt::Key_Delete);
    if (byReturn)
        QTest::keyClick(preview.edit(), Qt::Key_Return);
    else
        QTest::keyClick(preview.edit(), Qt::Key_Tab);
    QVERIFY(byReturn || !preview.edit()->hasFocus());
    if (!shown.isEmpty()) {
        QCOMPARE(preview.zoom(), shown);
        QVERIFY(!preview.action(kFitPage)->isChecked());
        QVERIFY(!preview.action(kFitPage)->actionGroup()->isExclusive());
        QVERIFY(preview.picture() != picture);
    } else {
        // The box is back at its text, which counts when the box is left: to a tenth of a percent the same scale.
        QCOMPARE(preview.percent(), before.chopped(1).toDouble());
        const QPoint moved = paperIn(preview.picture()).center() - paperIn(picture).center();
        QVERIFY(moved.manhattanLength() <= 1);
    }
}

void TestPrintPreview::refusedZoomGoesBackToTheLastGoodOne()
{
    Preview preview(kA4);
    preview.show();
    preview.typeZoom(QStringLiteral("150"));
    QTest::keyClick(preview.edit(), Qt::Key_Return);
    const QImage picture = preview.picture();
    preview.typeZoom(QStringLiteral("2000")); // not left meanwhile
    QTest::keyClick(preview.edit(), Qt::Key_Return);
    QCOMPARE(preview.zoom(), QStringLiteral("2000")); // which is no good text and ends nothing
    QCOMPARE(preview.picture(), picture);
    QTest::keyClick(preview.edit(), Qt::Key_Tab);
    QCOMPARE(preview.zoom(), QStringLiteral("150%"));
    QCOMPARE(preview.picture(), picture);
}

void TestPrintPreview::boxThatNobodyTypedIntoTellsTheView()
{
    Preview preview(kA4);
    preview.show();
    preview.typeZoom(QStringLiteral("1%"));
    QTest::keyClick(preview.edit(), Qt::Key_Return);
    preview.wheel(QPointF(250, 200), -120);
    QCOMPARE(preview.zoom(), QStringLiteral("0.8%")); // too little to be typed, but it is what is shown
    const QImage picture = preview.picture();
    QVERIFY(preview.edit()->hasFocus());
    QTest::keyClick(preview.edit(), Qt::Key_Tab);
    QCOMPARE(preview.zoom(), QStringLiteral("0.8%"));
    QCOMPARE(preview.picture(), picture);
}

void TestPrintPreview::zoomOutOfRangeIsClamped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("below") << "0.2"
                           << "1%";
    QTest::newRow("negative") << "-20%"
                              << "1%";
    QTest::newRow("above") << "5000%"
                           << "1000%";
    QTest::newRow("no number") << "wide"
                               << "wide";
    QTest::newRow("empty") << ""
                           << "";
}

void TestPrintPreview::zoomOutOfRangeIsClamped()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    Preview preview(kA4);
    preview.show();
    const QImage before = preview.picture();
    preview.edit()->setText(text);
    Q_EMIT preview.edit()->editingFinished(); // past the validator, which lets none of these be finished
    QCOMPARE(preview.zoom(), shown);
    QCOMPARE(preview.picture() == before, text == shown);
    QCOMPARE(preview.action(kFitPage)->isChecked(), text == shown);
}

void TestPrintPreview::pickFromTheListCountsWhenTheBoxIsLeft()
{
    Preview preview(kA4);
    preview.show();
    const QImage before = preview.picture();
    preview.edit()->setFocus();
    preview.box()->setCurrentIndex(2);
    QCOMPARE(preview.zoom(), QStringLiteral("50%"));
    QCOMPARE(preview.picture(), before);
    QTest::keyClick(preview.edit(), Qt::Key_Tab);
    QCOMPARE(preview.zoom(), QStringLiteral("50%"));
    QVERIFY(preview.picture() != before);
    QVERIFY(std::abs(paperIn(preview.picture()).height() - 297 * kPixelsPerMillimetre / 2) <= 400.0);
}

void TestPrintPreview::validator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");
    QTest::newRow("whole number") << "150" << int(QValidator::Acceptable);
    QTest::newRow("with a sign") << "150%" << int(QValidator::Acceptable);
    QTest::newRow("one decimal") << "12.5%" << int(QValidator::Acceptable);
    QTest::newRow("two decimals") << "12.55" << int(QValidator::Invalid);
    QTest::newRow("least") << "1" << int(QValidator::Acceptable);
    QTest::newRow("greatest") << "1000.0%" << int(QValidator::Acceptable);
    QTest::newRow("empty") << "" << int(QValidator::Intermediate);
    QTest::newRow("the sign alone") << "%" << int(QValidator::Intermediate);
    QTest::newRow("zero") << "0" << int(QValidator::Intermediate);
    QTest::newRow("too great, four places") << "2000" << int(QValidator::Intermediate);
    QTest::newRow("too great, four places and a sign") << "2000%" << int(QValidator::Invalid);
    QTest::newRow("too great, point at the fifth place") << "2000.0" << int(QValidator::Intermediate);
    QTest::newRow("too great, five places") << "20000" << int(QValidator::Invalid);
    QTest::newRow("too great, point at the sixth place") << "20000.0" << int(QValidator::Invalid);
    QTest::newRow("letters") << "abc" << int(QValidator::Invalid);
    QTest::newRow("two signs") << "5%%" << int(QValidator::Invalid);
}

void TestPrintPreview::validator()
{
    QFETCH(QString, text);
    QFETCH(int, state);
    const Preview preview(kA4);
    QString input = text;
    int pos = 0;
    QCOMPARE(int(preview.edit()->validator()->validate(input, pos)), state);
    QCOMPARE(input, text);
}

void TestPrintPreview::zoomButtonsKeepTheCentre_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<double>("factor");
    QTest::newRow("in") << kZoomIn << 1.1;
    QTest::newRow("out") << kZoomOut << 0.9090909090909091;
}

void TestPrintPreview::zoomButtonsKeepTheCentre()
{
    QFETCH(QString, button);
    QFETCH(double, factor);
    const auto page = ZvSmartPtr<Page>::adopt(new Page(kA4.printable()));
    Preview preview(kA4, page);
    preview.show();
    const QSizeF size(page->end.x() - page->origin.x(), page->end.y() - page->origin.y());
    const QPointF center(250, 200);
    const QPointF part((center.x() - page->origin.x()) / size.width(), (center.y() - page->origin.y()) / size.height());
    preview.press(button);
    preview.sheet()->grab();
    const QSizeF after(page->end.x() - page->origin.x(), page->end.y() - page->origin.y());
    QVERIFY(std::abs(after.height() - size.height() * factor) <= 1.5);
    QVERIFY(std::abs(page->origin.x() + part.x() * after.width() - center.x()) <= 2.0);
    QVERIFY(std::abs(page->origin.y() + part.y() * after.height() - center.y()) <= 2.0);
}

void TestPrintPreview::fittingIsOnAfterAFitAndOffAfterAZoom()
{
    Preview preview(kA4);
    preview.show();
    QAction *width = preview.action(kFitWidth);
    QAction *page = preview.action(kFitPage);
    const auto state = [&] {
        return QStringLiteral("%1 %2 %3")
            .arg(width->isChecked())
            .arg(page->isChecked())
            .arg(page->actionGroup()->isExclusive());
    };
    QCOMPARE(state(), QStringLiteral("0 1 1"));
    preview.press(kZoomIn);
    QCOMPARE(state(), QStringLiteral("0 0 0"));
    preview.press(kFitWidth);
    QCOMPARE(state(), QStringLiteral("1 0 1"));
    QCOMPARE(width->actionGroup()->checkedAction(), width);
    preview.press(kZoomOut);
    QCOMPARE(state(), QStringLiteral("0 0 0"));
    preview.press(kFitPage);
    QCOMPARE(state(), QStringLiteral("0 1 1"));
    QCOMPARE(width->actionGroup()->checkedAction(), page);
    preview.wheel(QPointF(10, 10), 120);
    QCOMPARE(state(), QStringLiteral("0 0 0"));
    preview.press(kFitPage);
    preview.drag({{10, 10}, {50, 50}});
    QCOMPARE(state(), QStringLiteral("0 1 1"));
}

void TestPrintPreview::secondClickOnAFitFitsAgain()
{
    Preview preview(kA4);
    preview.show();
    const QImage before = preview.picture();
    preview.drag({{10, 10}, {50, 50}});
    QVERIFY(preview.picture() != before);
    preview.press(kFitPage);
    QCOMPARE(preview.picture(), before);
    QVERIFY(preview.action(kFitPage)->isChecked());
}

void TestPrintPreview::wheelKeepsThePointUnderThePointer_data()
{
    QTest::addColumn<QPointF>("pos");
    QTest::addColumn<int>("delta");
    QTest::newRow("in, on the sheet") << QPointF(300, 120) << 120;
    QTest::newRow("out, on the sheet") << QPointF(210, 250) << -120;
    QTest::newRow("in, beside the sheet") << QPointF(30, 390) << 120;
    QTest::newRow("out, beside the sheet") << QPointF(490, 10) << -120;
    QTest::newRow("in, between two pixels") << QPointF(300.4, 119.6) << 120;
    QTest::newRow("in, a part of a notch") << QPointF(300, 120) << 15;
}

void TestPrintPreview::wheelKeepsThePointUnderThePointer()
{
    QFETCH(QPointF, pos);
    QFETCH(int, delta);
    const auto page = ZvSmartPtr<Page>::adopt(new Page(kA4.printable()));
    Preview preview(kA4, page);
    preview.show();
    const QPointF fixed = pos.toPoint();
    const auto size = [&] { return QSizeF(page->end.x() - page->origin.x(), page->end.y() - page->origin.y()); };
    for (int turn = 0; turn < 5; ++turn) {
        const QSizeF before = size();
        const QPointF part((fixed.x() - page->origin.x()) / before.width(),
                           (fixed.y() - page->origin.y()) / before.height());
        const double percent = preview.percent();
        preview.wheel(pos, delta);
        const QPointF after(page->origin.x() + part.x() * size().width(),
                            page->origin.y() + part.y() * size().height());
        // The sheet's edges are whole pixels: what is beside it moves by a little more.
        QVERIFY2((after - fixed).manhattanLength() <= 4.0, qPrintable(QString::number(after.x() - fixed.x())));
        QVERIFY(std::abs(preview.percent() / percent - (delta > 0 ? 1.25 : 0.8)) < 0.01);
    }
}

void TestPrintPreview::wheelTakesTheWholePixelUnderThePointer()
{
    Preview whole(kA4);
    whole.show();
    for (int turn = 0; turn < 5; ++turn)
        whole.wheel(QPointF(130, 370), 120);
    const QImage expected = whole.picture();
    whole.dialog->hide();
    Preview between(kA4);
    between.show();
    for (int turn = 0; turn < 5; ++turn)
        between.wheel(QPointF(129.6, 370.4), 120);
    QVERIFY(paperIn(expected) != expected.rect()); // an edge to see the place by
    QCOMPARE(between.picture(), expected);
}

void TestPrintPreview::wheelStopsAtTheClamp_data()
{
    QTest::addColumn<int>("delta");
    QTest::addColumn<int>("turns");
    QTest::addColumn<double>("scale");
    QTest::newRow("100000") << 120 << 60 << 100000.0;
    QTest::newRow("1e-5") << -120 << 60 << 1e-5;
}

void TestPrintPreview::wheelStopsAtTheClamp()
{
    QFETCH(int, delta);
    QFETCH(int, turns);
    QFETCH(double, scale);
    // Device units so large that the least scale shows in the box.
    const Paper paper{200, 100, 5, 5, 5, 5, 0, 25400000};
    const auto page = ZvSmartPtr<Page>::adopt(new Page(paper.printable()));
    Preview preview(delta > 0 ? Paper{200, 100, 5, 5, 5, 5, 2, 96} : paper, page);
    preview.show();
    for (int turn = 0; turn < turns; ++turn)
        preview.wheel(QPointF(250, 200), delta);
    const double d = delta > 0 ? 1.0 : 1e6;
    const QString expected = QString::asprintf("%.1f%%", d * scale / kPixelsPerMillimetre * 100);
    QCOMPARE(preview.zoom(), expected);
    const QImage before = preview.picture();
    preview.wheel(QPointF(400, 100), delta);
    QCOMPARE(preview.zoom(), expected);
    QCOMPARE(preview.picture(), before);
}

// ---- dragging -----------------------------------------------------------------------------------

void TestPrintPreview::dragMovesTheSheet_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QVector<QPointF>>("path");
    QTest::addColumn<QPoint>("moved");
    const QVector<QPointF> path{{100, 100}, {120, 90}, {140, 115}};
    QTest::newRow("left button") << int(Qt::LeftButton) << path << QPoint(40, 15);
    QTest::newRow("middle button") << int(Qt::MiddleButton) << path << QPoint(40, 15);
    QTest::newRow("right button") << int(Qt::RightButton) << path << QPoint(40, 15);
    QTest::newRow("back button") << int(Qt::BackButton) << path << QPoint(40, 15);
    QTest::newRow("the release is a last move")
        << int(Qt::LeftButton) << QVector<QPointF>{{100, 100}, {80, 110}} << QPoint(-20, 10);
    QTest::newRow("positions are rounded")
        << int(Qt::LeftButton) << QVector<QPointF>{{99.6, 100.4}, {109.5, 89.6}} << QPoint(10, -10);
    QTest::newRow("there and back") << int(Qt::LeftButton) << QVector<QPointF>{{100, 100}, {150, 90}, {100, 100}}
                                    << QPoint();
}

void TestPrintPreview::dragMovesTheSheet()
{
    QFETCH(int, button);
    QFETCH(QVector<QPointF>, path);
    QFETCH(QPoint, moved);
    Preview preview(kA4, ZvRxObjectPtr::adopt(new Page(kA4.printable())));
    preview.show();
    const QRect before = paperIn(preview.picture());
    const QString zoom = preview.zoom();
    preview.drag(path, Qt::MouseButton(button));
    QCOMPARE(paperIn(preview.picture()), before.translated(moved));
    QCOMPARE(preview.zoom(), zoom);
    preview.mouse(QEvent::MouseMove, {10, 10}, Qt::NoButton, Qt::NoButton);
    QCOMPARE(paperIn(preview.picture()), before.translated(moved));
}

void TestPrintPreview::moveWithoutAButtonMovesNothing()
{
    Preview preview(kA4);
    preview.show();
    QVERIFY(preview.sheet()->testAttribute(Qt::WA_MouseTracking));
    const QImage before = preview.picture();
    preview.mouse(QEvent::MouseMove, {10, 10}, Qt::NoButton, Qt::NoButton);
    preview.mouse(QEvent::MouseMove, {60, 90}, Qt::NoButton, Qt::NoButton);
    QCOMPARE(preview.picture(), before);
}

// ---- what is drawn, and how often ---------------------------------------------------------------

void TestPrintPreview::panningDrawsNothingAgain()
{
    const auto page = ZvSmartPtr<Page>::adopt(new Page(kA4.printable()));
    Preview preview(kA4, page);
    preview.show();
    const QImage before = preview.picture();
    const int calls = page->calls;
    QVERIFY(calls > 0);
    QVector<QPointF> path;
    for (int i = 0; i <= 200; ++i)
        path << QPointF(250 + 240 * std::sin(i * 0.1), 200 + 190 * std::cos(i * 0.07));
    preview.drag(path);
    preview.drag({path.last(), path.first()});
    QCOMPARE(preview.picture(), before);
    QCOMPARE(page->calls, calls);
}

void TestPrintPreview::panningALargeLayoutDrawsNothingAgain()
{
    class Counted : public ZvRxObjectImpl<ZvsiRenderObject>
    {
    public:
        explicit Counted(const ZvSmartPtr<ZvsiRenderObject> &drawer) : m_drawer(drawer) { }
        void draw(ZvRxObjectPtr canvas) override
        {
            ++calls;
            m_drawer->draw(canvas);
        }
        int calls = 0;

    private:
        ZvSmartPtr<ZvsiRenderObject> m_drawer;
    };
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvArray<ZvString> layouts;
    database->layoutNames(layouts);
    QCOMPARE(database->setCurrentLayout(layouts[1]), Zv::eOk);
    const ZvGiPage page = zvgiReadPage(database, database->currentLayoutId());
    for (int i = 0; i < 100000; ++i) {
        const ZvGePoint3d from(i % 400 * page.printableWidth() / 400, i / 400 * page.printableHeight() / 250, 0);
        auto *line = new ZvDbLine(from, ZvGePoint3d(from.x + 0.5, from.y + 0.5, 0));
        line->setDatabaseDefaults(database);
        ZvDbObjectId id;
        QCOMPARE(database->appendEntity(line, page.block, id, false), Zv::eOk);
    }
    constexpr int kDotsPerInch = 300;
    const auto counted
        = ZvSmartPtr<Counted>::adopt(new Counted(zvgiMakePageRenderer(database, page, kDotsPerInch / 25.4)));
    const ZvJsonPtr params = makeObject();
    params->SetDataJ("paper", zvgiPaperTree(page));
    params->SetDataO("refDC", zvsiMakeReferenceDevice(kDotsPerInch));
    params->SetDataO("intHelper", counted);
    Preview preview(params);
    preview.show(QSize(600, 400)); // all of it is in view
    const QImage before = preview.picture();
    const QRect drawn = boundsOf(before, [](const QColor &color) { return color.lightness() < 100; });
    QVERIFY2(drawn.width() > whiteIn(before).width() * 0.9, qPrintable(QString::number(drawn.width())));
    const int calls = counted->calls;
    preview.drag({{250, 200}, {260, 210}, {300, 150}, {100, 390}, {30, 20}});
    preview.drag({{30, 20}, {250, 200}});
    QCOMPARE(counted->calls, calls);
    QCOMPARE(preview.picture(), before);
}

void TestPrintPreview::panningInACloseViewDrawsWhatComesIntoView()
{
    const auto page = ZvSmartPtr<Page>::adopt(new Page(kA4.printable()));
    Preview preview(kA4, page);
    preview.show();
    preview.typeZoom(QStringLiteral("300"));
    QTest::keyClick(preview.edit(), Qt::Key_Return);
    preview.sheet()->grab();
    const int calls = page->calls;
    preview.mouse(QEvent::MouseButtonPress, {250, 200}, Qt::LeftButton, Qt::LeftButton);
    preview.mouse(QEvent::MouseMove, {251, 200}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(page->calls, calls + 1); // with half a view in store on every side
    for (int x = 252; x <= 490; ++x)
        preview.mouse(QEvent::MouseMove, {double(x), 180}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(page->calls, calls + 1);
    preview.mouse(QEvent::MouseButtonRelease, {490, 180}, Qt::LeftButton, Qt::NoButton);
    QCOMPARE(page->calls, calls + 1);
    for (int turn = 0; turn < 4; ++turn)
        preview.drag({{250, 200}, {490, 350}});
    const QImage pieced = preview.picture();
    preview.sheet()->hide();
    preview.sheet()->show();
    const int before = page->calls;
    const QImage whole = preview.picture();
    QCOMPARE(page->calls, before + 1);
    QVERIFY(whiteIn(whole).isValid());
    QCOMPARE(pieced, whole);
}

void TestPrintPreview::drawingBesideThePaperIsSeen()
{
    const auto page = ZvSmartPtr<Page>::adopt(new Page(kA4.printable()));
    page->drawsBeyond = true;
    Preview preview(kA4, page);
    preview.show();
    const auto isRed = [](const QColor &color) { return color == Qt::red; };
    QVERIFY(boundsOf(preview.picture(), isRed).left() < paperIn(preview.picture()).center().x() - 100);
    const int calls = page->calls;
    const QPointF start(400, 200);
    preview.mouse(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
    preview.mouse(QEvent::MouseMove, {20, 200}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(page->calls, calls);
    preview.mouse(QEvent::MouseButtonRelease, {20, 200}, Qt::LeftButton, Qt::NoButton);
    QCOMPARE(page->calls, calls + 1);
    const QImage pieced = preview.picture();
    preview.sheet()->hide();
    preview.sheet()->show();
    QCOMPARE(pieced, preview.picture());
    QVERIFY(boundsOf(pieced, isRed).right() > 300);
}

void TestPrintPreview::sheetIsDrawnAnew_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("for another scale") << "wheel";
    QTest::newRow("when the dialog comes back") << "show";
    QTest::newRow("for another page") << "init";
    QTest::newRow("for another size of the view") << "resize";
}

void TestPrintPreview::sheetIsDrawnAnew()
{
    QFETCH(QString, what);
    const auto page = ZvSmartPtr<Page>::adopt(new Page(kA4.printable()));
    Preview preview(kA4, page);
    preview.show();
    const int calls = page->calls;
    if (what == QLatin1String("wheel")) {
        preview.wheel(QPointF(200, 200), 120);
    } else if (what == QLatin1String("show")) {
        preview.adapter->beginEditorCommand();
        preview.dialog->show();
    } else if (what == QLatin1String("init")) {
        QVERIFY(preview.adapter->onInit(makeParams(kA4, page), nullptr));
    } else {
        preview.dialog->resize(preview.dialog->size() + QSize(20, 20));
        QTRY_COMPARE(preview.sheet()->size(), QSize(520, 420));
    }
    preview.sheet()->grab();
    QVERIFY(page->calls > calls);
}

ZEVA_TEST_MAIN(TestPrintPreview)
#include "tst_printpreview.moc"
