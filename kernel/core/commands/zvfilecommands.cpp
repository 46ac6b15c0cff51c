// SPDX-License-Identifier: MIT
#include "zvcommands_p.h"

namespace {

void reportFailure(const ZvString &path, const ZvDbFileReport &report)
{
    if (ZvEdHost *host = zvedHost())
        host->showFileReport(path, report);
    if (report.status == Zv::eCancelled)
        zvedPrint(ZvString(L"Cancelled: ") + path);
    else
        zvedFailCommand(path + ZvString(L": ") + report.message);
}

/// Shows progress while it lives.
class Progress
{
public:
    explicit Progress(const ZvString &title) : m_host(zvedHost()), m_progress(m_host ? m_host->beginProgress(title) : nullptr) { }
    ~Progress()
    {
        if (m_host)
            m_host->endProgress();
    }
    ZvDbProgress *get() const { return m_progress; }

private:
    ZvEdHost *m_host;
    ZvDbProgress *m_progress;
};

/// The name on the same line, or the one the host asks for.
bool askFileName(bool saving, const ZvString &suggestion, ZvString &path)
{
    if (zvcoreLineHasMore() || !zvedHost())
        return zvcoreAskName(L"File name:", path);
    path = zvedHost()->askFileName(saving, suggestion);
    return !path.isEmpty();
}

void newDrawing()
{
    zvDocManagerPtr()->newDocument();
}

void open()
{
    ZvString path;
    if (!askFileName(false, ZvString(), path))
        return;
    ZvDbFileReport report;
    ZvApDocument *document = nullptr;
    {
        const Progress progress(ZvString(L"Opening ") + path);
        document = zvDocManagerPtr()->openDocument(path, report, progress.get());
    }
    if (!document) {
        reportFailure(path, report);
        return;
    }
    if (!report.warnings.isEmpty() && zvedHost())
        zvedHost()->showFileReport(path, report);
}

bool saveTo(ZvApDocument *document, const ZvString &path)
{
    ZvDbFileReport report;
    Zv::ErrorStatus status = Zv::eOk;
    {
        const Progress progress(ZvString(L"Saving ") + path);
        status = zvDocManagerPtr()->saveDocument(document, path, report, progress.get());
    }
    if (status != Zv::eOk)
        reportFailure(path, report);
    return status == Zv::eOk;
}

void saveAs()
{
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    ZvString path;
    if (!askFileName(true, document->fileName().isEmpty() ? document->title() + ZvString(L".dxf") : document->fileName(), path))
        return;
    saveTo(document, path);
}

void save()
{
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    if (document->fileName().isEmpty())
        saveAs();
    else
        saveTo(document, document->fileName());
}

void close()
{
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    if (!zvedHost() || zvedHost()->mayClose(document))
        zvDocManagerPtr()->closeDocument(document);
}

void quit()
{
    if (ZvEdHost *host = zvedHost())
        host->quit();
}

constexpr int kFlags = ZvEdCommand::kNoUndoMark | ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
const ZvBuiltInCommand kCommands[] = {
    {"NEW", kFlags | ZvEdCommand::kNoDocument, newDrawing},
    {"OPEN", kFlags | ZvEdCommand::kNoDocument, open},
    {"SAVE", kFlags, save},
    {"QSAVE", kFlags, save},
    {"SAVEAS", kFlags, saveAs},
    {"CLOSE", kFlags, close},
    {"QUIT", kFlags | ZvEdCommand::kNoDocument, quit},
};

}

ZvBuiltInCommands zvcoreFileCommands()
{
    return kCommands;
}
