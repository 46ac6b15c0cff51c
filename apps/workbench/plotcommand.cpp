// SPDX-License-Identifier: MIT
#include "plotcommand.h"

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvui.h"
#include "dialogcommand.h"
#include "drawingview.h"
#include "filequestions.h"
#include "mainwindow.h"
#include "textforms.h"
#include "wholefile.h"
#include "zvqtcanvas.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QInputDialog>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>

namespace {

const char *const kGroup = "WORKBENCH";
const char *const kName = "PLOT";
constexpr int kPrint = 6; // of the preview
constexpr int kDotsPerInch = 600;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kUnitsPerMillimetre = kDotsPerInch / kMillimetresPerInch;

QString text(const char *english)
{
    return QCoreApplication::translate("Plot", english);
}

/// Draws on paper what the preview draws in its window.
ZvSmartPtr<ZvsiRenderObject> renderer(ZvDbDatabase &database, const ZvGiPage &page)
{
    return zvgiMakePageRenderer(ZvDbDatabasePtr(&database), page, kUnitsPerMillimetre);
}

QPageSize paperOf(const ZvGiPage &page)
{
    return QPageSize(QSizeF(page.width, page.height), QPageSize::Millimeter, toQString(page.paperName));
}

bool drawOnPaper(ZvDbDatabase &database, const ZvGiPage &page, QPaintDevice &paper)
{
    QPainter painter;
    if (!painter.begin(&paper))
        return false;
    const double pixelsPerMillimetre = paper.logicalDpiX() / kMillimetresPerInch;
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->setMatrix(ZvGeMatrix2d::translation(ZvGeVector2d(page.marginLeft, page.marginTop) * pixelsPerMillimetre)
                      * ZvGeMatrix2d::scaling(pixelsPerMillimetre / kUnitsPerMillimetre));
    canvas->attachPainter(&painter);
    renderer(database, page)->draw(canvas);
    return painter.end();
}

/// What stood there before stays until the whole page is written.
bool printIntoFile(ZvDbDatabase &database, const ZvGiPage &page, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QPdfWriter paper(&bytes);
    paper.setResolution(kDotsPerInch);
    paper.setTitle(toQString(page.paperName));
    paper.setPageSize(paperOf(page));
    paper.setPageMargins(QMarginsF());
    return drawOnPaper(database, page, paper) && writeWhole(file, bytes.data());
}

bool printOnPaper(ZvDbDatabase &database, const ZvGiPage &page, QString &printerName)
{
    QPrinter paper(QPrinter::HighResolution);
    printerName = paper.printerName();
    paper.setDocName(toQString(page.paperName));
    paper.setFullPage(true);
    paper.setPageSize(paperOf(page));
    return drawOnPaper(database, page, paper) && paper.printerState() != QPrinter::Error;
}

bool isPrintWanted(ZvDbDatabase &database, const ZvGiPage &page)
{
    const ZvJsonPtr params = previewParameters(database, page);
    params->SetDataB("enable_print", true);
    const ZvJsonPtr answer
        = zvuiShowModelDialogEx("Dialog/Common", "CADPreviewDialog", params, nullptr, zvuiMainWindow());
    int result = 0;
    return answer && answer->GetDataI("result", result) && result == kPrint;
}

/// The drawing's page set-ups for the current layout.
QStringList setupNames(ZvDbDatabase &database)
{
    ZvArray<ZvString> names;
    zvgiPageSetupNames(&database, database.currentLayoutId(), names);
    QStringList list;
    for (const ZvString &name : names)
        list << toQString(name);
    return list;
}

QString ownSetup(const ZvDbDatabase &database)
{
    return text("The settings of %1").arg(toQString(database.currentLayoutName()));
}

/// The set-up to take, empty for the layout's own settings. False when the user gives up.
bool askPersonForSetup(ZvDbDatabase &database, QString &setup)
{
    QStringList rows = setupNames(database);
    if (rows.isEmpty())
        return true;
    rows.prepend(ownSetup(database));
    bool isChosen = false;
    const QString row = QInputDialog::getItem(
        static_cast<QWidget *>(zvuiMainWindow()), text("Plot"), text("&Page setup:"), rows, 0, false, &isChosen,
        Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    if (row != rows.first())
        setup = row;
    return isChosen;
}

/// False where there is nothing to print, or not any more.
bool askForPerson(ZvApDocument &document, ZvGiPage &page, QString &path)
{
    QString setup;
    if (!askPersonForSetup(*document.database(), setup))
        return false;
    page = pageToPlot(*document.database(), toZvString(setup));
    if (!isPrintWanted(*document.database(), page))
        return false;
    if (!QPrinterInfo::defaultPrinter().isNull())
        return true;
    path = askFileToSave(text("Print into a file"), pathBeside(document) + QLatin1String(".pdf"),
                         text("PDF documents (*.pdf)"));
    return !path.isEmpty();
}

bool askLine(const QString &question, bool allowNone, QString &line)
{
    ZvEdPrompt prompt;
    prompt.kind = ZvEdPrompt::kStringWithBlanks;
    prompt.text = toZvString(question);
    prompt.allowNone = allowNone;
    ZvString answer;
    const ZvEdInput input = zvedGetString(prompt, answer);
    line = toQString(answer);
    return input == ZvEdInput::kNormal || (allowNone && input == ZvEdInput::kNone);
}

bool askAtCommandLine(ZvApDocument &document, ZvGiPage &page, QString &path)
{
    ZvDbDatabase &database = *document.database();
    const QStringList setups = setupNames(database);
    QString setup;
    if (!setups.isEmpty() && !askLine(text("Page setup <%1>:").arg(ownSetup(database)), true, setup))
        return false;
    if (!setup.isEmpty() && !setups.contains(setup, Qt::CaseInsensitive)) {
        zvedFailCommand(toZvString(text("There is no page setup \"%1\" for this layout.").arg(setup)));
        return false;
    }
    page = pageToPlot(database, toZvString(setup));
    return askLine(text("Name of the PDF file:"), false, path) && !path.isEmpty();
}

void runPlot()
{
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    ZvGiPage page;
    QString path;
    if (!(DialogCommand::isForPerson() ? askForPerson(*document, page, path) : askAtCommandLine(*document, page, path)))
        return;
    QString error;
    if (!plotPage(*document->database(), page, path, error))
        zvedFailCommand(toZvString(error));
    else
        zvedPrint(toZvString(path.isEmpty() ? text("Printed.") : text("Written: %1").arg(path)));
}

} // namespace

ZvGiPage pageToPlot(ZvDbDatabase &database, const ZvString &setup)
{
    const auto *window = qobject_cast<MainWindow *>(static_cast<QWidget *>(zvuiMainWindow()));
    const DrawingView *view = window ? window->currentView() : nullptr;
    const bool isShown = view && view->document()->database() == &database;
    const ZvGeExtents2d display = isShown ? view->shownFromAbove() : ZvGeExtents2d();
    return zvgiReadPage(&database, database.currentLayoutId(), setup, display);
}

ZvJsonPtr previewParameters(ZvDbDatabase &database, const ZvGiPage &page)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataO("intHelper", renderer(database, page));
    params->SetDataJ("paper", zvgiPaperTree(page));
    params->SetDataO("refDC", zvsiMakeReferenceDevice(kDotsPerInch));
    return params;
}

bool plotPage(ZvDbDatabase &database, const ZvGiPage &page, const QString &path, QString &error)
{
    QString target = path;
    if (path.isEmpty() ? printOnPaper(database, page, target) : printIntoFile(database, page, path))
        return true;
    error = text("%1 could not be written.").arg(target);
    return false;
}

void addPlotCommand()
{
    constexpr int kFlags = ZvEdCommand::kNoUndoMark | ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
    if (ZvEdCommandStack *stack = zvedCommandStack())
        stack->addCommand(kGroup, kName, kName, kFlags, runPlot, nullptr, -1, ZvRxResourceInstance(nullptr), 0);
}

void removePlotCommand()
{
    if (ZvEdCommandStack *stack = zvedCommandStack())
        stack->removeCmd(kGroup, kName);
}
