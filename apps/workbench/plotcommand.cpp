// SPDX-License-Identifier: MIT
#include "plotcommand.h"

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvui.h"
#include "dialogcommand.h"
#include "filequestions.h"
#include "textforms.h"
#include "utils/zvpage.h"
#include "zvqtcanvas.h"

#include <QCoreApplication>
#include <QPageSize>
#include <QPainter>
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

bool isPrintWanted(ZvDbDatabase &database)
{
    const ZvJsonPtr params = previewParameters(database, database.currentLayoutId());
    params->SetDataB("enable_print", true);
    const ZvJsonPtr answer
        = zvuiShowModelDialogEx("Dialog/Common", "CADPreviewDialog", params, nullptr, zvuiMainWindow());
    int result = 0;
    return answer && answer->GetDataI("result", result) && result == kPrint;
}

/// False where there is nothing to print, or not any more.
bool askForPerson(ZvApDocument &document, QString &path)
{
    if (!isPrintWanted(*document.database()))
        return false;
    if (!QPrinterInfo::defaultPrinter().isNull())
        return true;
    path = askFileToSave(text("Print into a file"), pathBeside(document) + QLatin1String(".pdf"),
                         text("PDF documents (*.pdf)"));
    return !path.isEmpty();
}

bool askAtCommandLine(QString &path)
{
    ZvEdPrompt prompt;
    prompt.kind = ZvEdPrompt::kStringWithBlanks;
    prompt.text = toZvString(text("Name of the PDF file:"));
    ZvString answer;
    if (zvedGetString(prompt, answer) != ZvEdInput::kNormal)
        return false;
    path = toQString(answer);
    return !path.isEmpty();
}

void runPlot()
{
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    QString path;
    if (!(DialogCommand::isForPerson() ? askForPerson(*document, path) : askAtCommandLine(path)))
        return;
    QString error;
    if (!plotPage(*document->database(), path, error))
        zvedFailCommand(toZvString(error));
    else
        zvedPrint(toZvString(path.isEmpty() ? text("Printed.") : text("Written: %1").arg(path)));
}

} // namespace

ZvJsonPtr previewParameters(ZvDbDatabase &database, ZvDbObjectId layout)
{
    const ZvGiPage page = zvgiReadPage(&database, layout);
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataO("intHelper", renderer(database, page));
    params->SetDataJ("paper", zvgiPaperTree(page));
    params->SetDataO("refDC", zvsiMakeReferenceDevice(kDotsPerInch));
    return params;
}

bool plotPage(ZvDbDatabase &database, const QString &path, QString &error)
{
    const ZvGiPage page = zvgiReadPage(&database, database.currentLayoutId());
    QPrinter printer(QPrinter::HighResolution);
    if (!path.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printer.setResolution(kDotsPerInch);
    }
    printer.setDocName(toQString(page.paperName));
    printer.setFullPage(true);
    printer.setPageSize(QPageSize(QSizeF(page.width, page.height), QPageSize::Millimeter, toQString(page.paperName)));
    QPainter painter;
    if (!painter.begin(&printer)) {
        error = text("%1 could not be written.").arg(path.isEmpty() ? printer.printerName() : path);
        return false;
    }
    const double pixelsPerMillimetre = printer.resolution() / kMillimetresPerInch;
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->setMatrix(ZvGeMatrix2d::translation(ZvGeVector2d(page.marginLeft, page.marginTop) * pixelsPerMillimetre)
                      * ZvGeMatrix2d::scaling(pixelsPerMillimetre / kUnitsPerMillimetre));
    canvas->attachPainter(&painter);
    renderer(database, page)->draw(canvas);
    if (painter.end() && printer.printerState() != QPrinter::Error)
        return true;
    error = text("%1 could not be written.").arg(path.isEmpty() ? printer.printerName() : path);
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
