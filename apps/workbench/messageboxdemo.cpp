// SPDX-License-Identifier: MIT
#include "messageboxdemo.h"

#include "core/zvui.h"
#include "textforms.h"

#include <QCoreApplication>

#include <initializer_list>

namespace {

enum ContentFlag { kMessageRow = 1, kSelectors = 4, kChecks = 8 };
enum ButtonSet { kYesNoCancel = 3, kCallersButtons = 6, kOkCancel = 1 };
enum IconCode { kQuestion = 32, kInformation = 48, kWarning = 64 };

QString text(const char *english)
{
    return QCoreApplication::translate("MessageBoxDemo", english);
}

ZvJsonPtr listOf(std::initializer_list<const char *> items)
{
    const ZvJsonPtr list = ElementValue::createObject(IElementValueBase::kArray);
    for (const char *item : items)
        list->append(ElementValue::createString(text(item).toUtf8().constData()));
    return list;
}

/// Shows the box and tells result code and answers.
QString show(const char *message, int buttons, int content, int icon, const char *listKey = nullptr,
             const ZvJsonPtr &list = nullptr)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("title", toZvString(text("Message box")));
    params->SetDataSW("msg", toZvString(text(message)));
    params->SetDataI("flag", buttons);
    params->SetDataI("contentFlag", content);
    params->SetDataI("dlgtype", icon);
    if (listKey)
        params->SetDataJ(listKey, list);
    const ZvJsonPtr result = zvuiShowModelDialogEx("Dialog/Common", "MessageBox", params, nullptr, zvuiMainWindow());

    QString line = QStringLiteral("MessageBox: ") + bagText(result);
    for (const char *key : {"ControlBtn", "selectedBtn", "selectedCheck"}) {
        int value = 0;
        if (params->GetDataI(key, value))
            line += QStringLiteral(" %1=%2").arg(QLatin1String(key)).arg(value);
    }
    return line;
}

QString plain()
{
    return show("The drawing was changed. Save it now?", kYesNoCancel, kMessageRow, kQuestion);
}

QString ownButtons()
{
    return show("A file of that name is there already.", kCallersButtons, kMessageRow, kWarning, "btnText",
                listOf({"Replace", "Keep both", "Skip"}));
}

QString selectors()
{
    return show("Which part shall be printed?", 0, kMessageRow | kSelectors, kQuestion, "selBtnText",
                listOf({"What is shown", "The whole drawing", "The selected entities"}));
}

QString checks()
{
    return show("What shall be purged?", kOkCancel, kMessageRow | kChecks, kInformation, "selCheckText",
                listOf({"Unused layers", "Unused blocks", "Unused line types"}));
}

} // namespace

const QVector<DialogDemo> &messageBoxDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("messageBoxPlain"), text("Message Box: &Fixed Buttons"), plain},
        {QStringLiteral("messageBoxOwnButtons"), text("Message Box: &Own Buttons"), ownButtons},
        {QStringLiteral("messageBoxSelectors"), text("Message Box: &Choice"), selectors},
        {QStringLiteral("messageBoxChecks"), text("Message Box: Check Bo&xes"), checks},
    };
    return demos;
}
