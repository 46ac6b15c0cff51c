// SPDX-License-Identifier: MIT
#include "taskdialogdemo.h"

#include "textforms.h"

#include <QCoreApplication>

namespace {

enum ContentFlag { kTexts = 1, kButtons = 2, kCommands = 4, kCheck = 8 };
enum Button { kOk = 1, kYes = 2, kNo = 4, kCancel = 8, kRetry = 16, kClose = 32, kCallersButtons = 64 };
enum Option { kOpenLinks = 1, kWindowIcon = 2 };
enum IconCode { kQuestion = 32, kInformation = 48, kWarning = 64, kError = 80 };

QString text(const char *english)
{
    return QCoreApplication::translate("TaskDialogDemo", english);
}

ZvJsonPtr parameters(const char *message, const char *content, int contentFlag, int buttons, int icon)
{
    ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("title", toZvString(text("Task dialog")));
    params->SetDataSW("msg", toZvString(text(message)));
    params->SetDataS("content", text(content).toUtf8().constData());
    params->SetDataI("contentFlag", contentFlag);
    params->SetDataI("flag", buttons);
    params->SetDataI("dlgtype", icon);
    return params;
}

ZvJsonPtr command(int id, const char *caption)
{
    ZvJsonPtr object = ElementValue::createObject(IElementValueBase::kObject);
    object->SetDataI("id", id);
    object->SetDataS("caption", text(caption).toUtf8().constData());
    return object;
}

ZvJsonPtr standardButtons()
{
    const ZvJsonPtr params = parameters("The drawing could not be written.", "The disk is full.", kTexts | kButtons,
                                        kRetry | kCancel | kClose, kError);
    params->SetDataI("focusFlagBtnId", kCancel);
    return params;
}

ZvJsonPtr disabledButtons()
{
    const ZvJsonPtr params = parameters("Overwrite the drawing?", "Another program has it open.", kTexts | kButtons,
                                        kOk | kYes | kNo | kCancel, kWarning);
    params->SetDataI("nDisabledButtonMask", kOk | kYes);
    return params;
}

ZvJsonPtr ownButtons()
{
    const ZvJsonPtr params
        = parameters("A file of that name is there already.", "", kTexts | kButtons, kCallersButtons, kWarning);
    params->SetDataJ("btnText", bagOfTexts({text("Replace"), text("Keep both"), text("Skip")}));
    return params;
}

ZvJsonPtr commands()
{
    const ZvJsonPtr params = parameters("What shall become of the missing fonts?",
                                        "Three styles name fonts that this computer does not have.",
                                        kTexts | kButtons | kCommands, kCancel, kQuestion);
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    array->append(command(101, "Choose a font for each style"));
    array->append(command(102, "Take a similar font for all of them"));
    array->append(command(103, "Leave the texts out"));
    params->SetDataJ("selBtnText", array);
    params->SetDataI("defaultBtnId", 102);
    return params;
}

ZvJsonPtr checkBox()
{
    const ZvJsonPtr params
        = parameters("The drawing was saved in an older version.", "Objects of newer versions are kept as they are.",
                     kTexts | kButtons | kCheck, kOk, kInformation);
    params->SetDataS("checkboxText", text("Do not show this again").toUtf8().constData());
    params->SetDataB("checkboxChecked", true);
    return params;
}

ZvJsonPtr everything()
{
    const ZvJsonPtr params
        = parameters("The drawing needs attention.",
                     "Some of what it refers to was not found. <a href=\"https://example.org/\">Read more</a>.",
                     kTexts | kButtons | kCommands | kCheck, kYes | kNo | kCancel, kWarning);
    params->SetDataS("expandedInformation", text("2 images, 1 font and 1 drawing are missing.").toUtf8().constData());
    params->SetDataI("options", kOpenLinks | kWindowIcon);
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    array->append(command(1, "Look for them now"));
    array->append(command(2, "Open the drawing as it is"));
    params->SetDataJ("selBtnText", array);
    params->SetDataI("defaultBtnId", 1);
    params->SetDataS("checkboxText", text("Always do so").toUtf8().constData());
    return params;
}

} // namespace

const QVector<DialogDemo> &taskDialogDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("taskDialogStandard"), text("&Standard Buttons"), "TaskDialog", standardButtons},
        {QStringLiteral("taskDialogDisabled"), text("&Disabled Buttons"), "TaskDialog", disabledButtons},
        {QStringLiteral("taskDialogOwn"), text("&Own Buttons"), "TaskDialog", ownButtons},
        {QStringLiteral("taskDialogCommands"), text("&Commands"), "TaskDialog", commands},
        {QStringLiteral("taskDialogCheck"), text("Check &Box"), "TaskDialog", checkBox},
        {QStringLiteral("taskDialogEverything"), text("&Everything"), "TaskDialog", everything},
    };
    return demos;
}
