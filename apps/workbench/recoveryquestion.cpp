// SPDX-License-Identifier: MIT
#include "recoveryquestion.h"

#include "autosave.h"
#include "core/zvui.h"
#include "mainwindow.h"
#include "recoverystore.h"
#include "textforms.h"
#include "workbenchhost.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>

namespace {

// Keys of the task dialog.
constexpr int kTextsAndCommands = 1 | 4;
constexpr int kQuestionIcon = 32;

enum Answer { kOpen = 101, kLater, kDelete };

QString text(const char *english)
{
    return QCoreApplication::translate("Recovery", english);
}

QString lineOf(const RecoveryStore::Leftover &leftover)
{
    const QString name = leftover.path.isEmpty() ? leftover.title : leftover.path;
    const QString time = QLocale().toString(leftover.written.toLocalTime(), QLocale::ShortFormat);
    QString line = text("%1, as of %2").arg(name.toHtmlEscaped(), time);
    const QFileInfo file(leftover.path);
    if (!leftover.path.isEmpty() && file.exists() && file.lastModified() > leftover.written)
        line += text(" (the file has been changed since)");
    return line;
}

int ask(const QVector<RecoveryStore::Leftover> &leftovers)
{
    const struct
    {
        Answer id;
        QString caption;
    } commands[] = {
        {kOpen, text("&Open them; nothing is saved before you do so")},
        {kLater, text("Ask &again next time")},
        {kDelete, text("&Delete these changes")},
    };
    QStringList lines;
    for (const RecoveryStore::Leftover &leftover : leftovers)
        lines << lineOf(leftover);

    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("title", toZvString(text("Recover drawings")));
    const QString message = text("Drawings that were not saved when the program ended: %1").arg(lines.size());
    params->SetDataSW("msg", toZvString(message));
    params->SetDataS("content", lines.join(QStringLiteral("<br>")).toUtf8().constData());
    params->SetDataI("contentFlag", kTextsAndCommands);
    params->SetDataI("dlgtype", kQuestionIcon);
    params->SetDataI("defaultBtnId", kOpen);
    const ZvJsonPtr buttons = ElementValue::createObject(IElementValueBase::kArray);
    for (const auto &command : commands) {
        const ZvJsonPtr button = ElementValue::createObject(IElementValueBase::kObject);
        button->SetDataI("id", command.id);
        button->SetDataS("caption", command.caption.toUtf8().constData());
        buttons->append(button);
    }
    params->SetDataJ("selBtnText", buttons);
    zvuiShowModelDialogEx("Dialog/Common", "TaskDialog", params, nullptr, zvuiMainWindow());
    int answer = kLater;
    params->GetDataI("ControlBtn", answer);
    return answer;
}

/// Null when it could not be read; the user has been told then.
ZvApDocument *open(MainWindow &window, const RecoveryStore::Leftover &leftover)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    if (database->readFile(toZvString(leftover.copy), report) != Zv::eOk) {
        window.host()->showFileReport(toZvString(leftover.copy), report);
        return nullptr;
    }
    database->setModified(true);
    return zvDocManagerPtr()->addDocument(database, toZvString(leftover.path));
}

} // namespace

void offerRecovery(MainWindow &window, RecoveryStore &store, Autosave &autosave)
{
    const QVector<RecoveryStore::Leftover> leftovers = store.takeLeftovers();
    if (leftovers.isEmpty())
        return;
    const int answer = ask(leftovers);
    for (const RecoveryStore::Leftover &leftover : leftovers) {
        if (answer == kDelete)
            store.drop(leftover);
        if (answer != kOpen)
            continue;
        const ZvApDocument *document = open(window, leftover);
        // The old copy goes when the new one is there: the program may be killed again at once.
        autosave.writeCopies();
        if (document && autosave.hasCopy(document))
            store.drop(leftover);
    }
}
