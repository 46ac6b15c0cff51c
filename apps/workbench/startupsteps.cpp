// SPDX-License-Identifier: MIT
#include "startupsteps.h"

#include "controlpictures.h"
#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "drawingview.h"
#include "exportcommand.h"
#include "mainwindow.h"
#include "selectexpression.h"
#include "statereport.h"
#include "textforms.h"
#include "wholefile.h"
#include "workbenchhost.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QPixmap>

namespace {

/// Most controls have nothing to show without a drawing.
void needDrawing()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    if (documents->documentCount() == 0)
        documents->newDocument();
    QCoreApplication::processEvents(); // the view gets its size
}

} // namespace

void StartupSteps::run()
{
    openFiles();
    select();
    runCommands();
    showControls();
    writeState();
    grab();
    grabControls();
    exportDrawing();
}

void StartupSteps::fail(const QString &error)
{
    if (m_error.isEmpty())
        m_error = error.simplified();
}

void StartupSteps::openFiles()
{
    for (const QString &file : qAsConst(m_options.files)) {
        if (!m_window.host()->openDocument(file))
            fail(m_window.host()->takeUnshownErrors().value(0, QStringLiteral("%1 could not be opened.").arg(file)));
    }
    QCoreApplication::processEvents(); // the views get their size
}

void StartupSteps::select()
{
    if (m_options.select.isEmpty())
        return;
    ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    if (!context || !document->database()) {
        fail(QStringLiteral("There is no drawing to select in."));
        return;
    }
    std::vector<ZvDbObjectId> ids;
    QString error;
    if (evaluateSelectExpression(*document->database(), m_options.select, ids, error))
        context->selectionHolder()->set(ids);
    else
        fail(error);
}

void StartupSteps::runCommands()
{
    for (const ProgramOptions::Step &step : qAsConst(m_options.steps)) {
        if (!step.isScript) {
            zvedMenuMacro(toZvString(step.text), false);
            continue;
        }
        QFile script(step.text);
        if (!script.open(QIODevice::ReadOnly | QIODevice::Text)) {
            fail(QStringLiteral("%1: %2").arg(step.text, script.errorString()));
            continue;
        }
        QStringList lines = QString::fromUtf8(script.readAll()).split(QLatin1Char('\n'));
        if (lines.last().isEmpty())
            lines.removeLast(); // what stands behind the last line's end is no line
        for (const QString &line : qAsConst(lines)) {
            if (!line.startsWith(QLatin1Char(';'))) // a remark
                zvedCommandLine(toZvString(line), true);
        }
    }
    QString error;
    if (!m_window.host()->runQueue(&error))
        fail(error);
}

void StartupSteps::showControls()
{
    if (!m_options.showControls)
        return;
    needDrawing();
    m_window.showControls(m_options.controlsPage);
}

void StartupSteps::grabControls()
{
    if (m_options.grabControlsFolder.isEmpty())
        return;
    needDrawing();
    QString error;
    if (!writeControlPictures(m_options.grabControlsFolder, &m_window, error))
        fail(error);
}

void StartupSteps::writeState()
{
    if (m_options.stateFile.isEmpty())
        return;
    QSaveFile file(m_options.stateFile);
    const QByteArray json = QJsonDocument(stateReport(m_window)).toJson();
    if (!file.open(QIODevice::WriteOnly) || !writeWhole(file, json))
        fail(QStringLiteral("%1: %2").arg(m_options.stateFile, file.errorString()));
}

void StartupSteps::grab()
{
    if (m_options.grabFile.isEmpty())
        return;
    // What has just changed reaches the view by the event loop.
    QCoreApplication::processEvents();
    while (!m_window.isComplete()) {
        QEventLoop loop;
        QObject::connect(m_window.currentView(), &DrawingView::completed, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (!m_window.grab().save(m_options.grabFile))
        fail(QStringLiteral("%1: the picture could not be written.").arg(m_options.grabFile));
}

void StartupSteps::exportDrawing()
{
    if (m_options.exportFile.isEmpty())
        return;
    const ZvApDocument *document = zvDocManagerPtr()->currentDocument();
    if (!document || !document->database()) {
        fail(QStringLiteral("There is no drawing to export."));
        return;
    }
    ZvDbProgress *progress
        = m_window.host()->beginProgress(toZvString(QStringLiteral("Exporting ") + m_options.exportFile));
    QString error;
    const bool done = ::exportDrawing(*document->database(), m_options.exportFile, error, progress);
    m_window.host()->endProgress();
    if (!done)
        fail(error);
}
