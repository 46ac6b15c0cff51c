// SPDX-License-Identifier: MIT
#include "exportcommand.h"

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvui.h"
#include "filequestions.h"
#include "textforms.h"
#include "utils/zvrenderer.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QWidget>

namespace {

QString text(const char *english)
{
    return QCoreApplication::translate("Export", english);
}

QString askForFile(const ZvApDocument &document)
{
    const auto *window = static_cast<QWidget *>(zvuiMainWindow());
    if (!window || !window->isVisible())
        return QString();
    return askFileToSave(text("Export a picture"), pathBeside(document) + QLatin1String(".png"),
                         text("PNG pictures (*.png);;PDF documents (*.pdf);;SVG pictures (*.svg);;Drawings (*.dxf)"));
}

void runExport()
{
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    ZvEdPrompt prompt;
    prompt.kind = ZvEdPrompt::kStringWithBlanks;
    prompt.text = toZvString(text("File name (.png, .pdf, .svg, .dxf), or Enter for a dialog:"));
    prompt.allowNone = true;
    ZvString answer;
    const ZvEdInput input = zvedGetString(prompt, answer);
    if (input == ZvEdInput::kCancel)
        return;
    const QString path = input == ZvEdInput::kNone ? askForFile(*document) : toQString(answer);
    if (path.isEmpty())
        return;

    ZvEdHost *host = zvedHost();
    ZvDbProgress *progress = host ? host->beginProgress(toZvString(text("Exporting %1").arg(path))) : nullptr;
    QString error;
    const bool done = exportDrawing(*document->database(), path, error, progress);
    if (host)
        host->endProgress();
    if (done)
        zvedPrint(toZvString(text("Written: %1").arg(path)));
    else
        zvedFailCommand(toZvString(error));
}

const char *const kGroup = "WORKBENCH";
const char *const kName = "EXPORT";

} // namespace

bool exportDrawing(ZvDbDatabase &database, const QString &path, QString &error, ZvDbProgress *progress)
{
    ZvString message;
    Zv::ErrorStatus status = Zv::eOk;
    if (QFileInfo(path).suffix().compare(QLatin1String("dxf"), Qt::CaseInsensitive) == 0) {
        ZvDbFileReport report;
        status = database.writeCopy(toZvString(path), report, progress);
        message = report.message;
    } else {
        status = zvgiExport(&database, toZvString(path), message, 0, 0, progress);
    }
    if (status == Zv::eOk)
        return true;
    error = message.isEmpty() ? text("%1 could not be written.").arg(path)
                              : QStringLiteral("%1: %2").arg(path, toQString(message));
    return false;
}

void addExportCommand()
{
    constexpr int kFlags = ZvEdCommand::kNoUndoMark | ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
    if (ZvEdCommandStack *stack = zvedCommandStack())
        stack->addCommand(kGroup, kName, kName, kFlags, runExport, nullptr, -1, ZvRxResourceInstance(nullptr), 0);
}

void removeExportCommand()
{
    if (ZvEdCommandStack *stack = zvedCommandStack())
        stack->removeCmd(kGroup, kName);
}
