// SPDX-License-Identifier: MIT
#include "messageboxdemo.h"

#include "textforms.h"

#include <QCoreApplication>

namespace {

enum ContentFlag { kMessageRow = 1, kSelectors = 4, kChecks = 8 };
enum ButtonSet { kYesNoCancel = 3, kCallersButtons = 6, kOkCancel = 1 };
enum IconCode { kQuestion = 32, kInformation = 48, kWarning = 64 };

QString text(const char *english)
{
    return QCoreApplication::translate("MessageBoxDemo", english);
}

ZvJsonPtr parameters(const char *message, int buttons, int content, int icon, const char *listKey = nullptr,
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
    return params;
}

ZvJsonPtr plain()
{
    return parameters("The drawing was changed. Save it now?", kYesNoCancel, kMessageRow, kQuestion);
}

ZvJsonPtr ownButtons()
{
    return parameters("A file of that name is there already.", kCallersButtons, kMessageRow, kWarning, "btnText",
                      bagOfTexts({text("Replace"), text("Keep both"), text("Skip")}));
}

ZvJsonPtr selectors()
{
    return parameters("Which part shall be printed?", 0, kMessageRow | kSelectors, kQuestion, "selBtnText",
                      bagOfTexts({text("What is shown"), text("The whole drawing"), text("The selected entities")}));
}

ZvJsonPtr checks()
{
    return parameters("What shall be purged?", kOkCancel, kMessageRow | kChecks, kInformation, "selCheckText",
                      bagOfTexts({text("Unused layers"), text("Unused blocks"), text("Unused line types")}));
}

} // namespace

const QVector<DialogDemo> &messageBoxDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("messageBoxPlain"), text("Message Box: &Fixed Buttons"), "MessageBox", plain},
        {QStringLiteral("messageBoxOwnButtons"), text("Message Box: &Own Buttons"), "MessageBox", ownButtons},
        {QStringLiteral("messageBoxSelectors"), text("Message Box: &Choice"), "MessageBox", selectors},
        {QStringLiteral("messageBoxChecks"), text("Message Box: Check Bo&xes"), "MessageBox", checks},
    };
    return demos;
}
