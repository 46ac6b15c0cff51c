// SPDX-License-Identifier: MIT
#include "dialogkeys.h"

#include <QtGlobal>

#include <algorithm>
#include <cstring>

#define TEXT(english) QT_TRANSLATE_NOOP("DialogKeys", english)

namespace {

typedef DialogKey K;

const DialogKey kResultCode
    = {"result", K::kInteger, K::kResult, "-1", TEXT("1 accepted, 2 cancelled; missing while undecided")};

QVector<DialogKey> fileKeys()
{
    return {
        {"Open", K::kBool, K::kParameter, "false", TEXT("An open dialog; otherwise a save dialog")},
        {"caption", K::kText, K::kParameter, "", TEXT("Window title")},
        {"dir", K::kWideText, K::kParameter, "", TEXT("Folder to start in, or a file in it")},
        {"filter", K::kWideText, K::kParameter, "",
         TEXT("Entries with their patterns in parentheses, ;; between them")},
        {"defFilter", K::kWideText, K::kParameter, "", TEXT("The entry that is chosen at the start, in full")},
        {"MutiFile", K::kBool, K::kParameter, "false", TEXT("An open dialog takes several files")},
        {"HideExtend", K::kBool, K::kParameter, "false", TEXT("Without places and preview")},
        {"BoxHide", K::kBool, K::kParameter, "false", TEXT("Does not ask before a file is written over")},
        {"saveDefName", K::kWideText, K::kParameter, "", TEXT("Name that a save dialog proposes, without its ending")},
        {"useFilterIdx", K::kInteger, K::kParameter | K::kResult, "0",
         TEXT("Of a save dialog: number of the chosen entry, from 0")},
        kResultCode,
        {"filePaths", K::kTree, K::kResult, "", TEXT("Of an open dialog: name and path of each file")},
        {"useFilter", K::kWideText, K::kResult, "", TEXT("The chosen entry")},
        {"fileName", K::kWideText, K::kResult, "", TEXT("Of a save dialog: name with its ending")},
        {"filePath", K::kWideText, K::kResult, "", TEXT("Of a save dialog: the full path")},
    };
}

QVector<DialogDescription> makeDescriptions()
{
    return {
        {"MessageBox",
         TEXT("A message with fixed buttons, buttons of the caller's, a choice that closes it, or check boxes."),
         {
             {"title", K::kWideText, K::kParameter, "", TEXT("Window title")},
             {"msg", K::kWideText, K::kParameter, "", TEXT("The message")},
             {"dlgtype", K::kInteger, K::kParameter, "0",
              TEXT("Picture: 32 question, 48 information, 64 warning, 80 error")},
             {"contentFlag", K::kInteger, K::kParameter, "0",
              TEXT("Sum of: 1 message row, 4 choice instead of buttons, 8 check boxes")},
             {"flag", K::kInteger, K::kParameter, "0",
              TEXT("0 OK, 1 OK and cancel, 2 abort, retry, ignore, 3 yes, no, cancel, 4 yes, no, 5 retry, cancel, "
                   "6 the caller's")},
             {"btnText", K::kTree, K::kParameter, "", TEXT("Texts of the caller's buttons")},
             {"selBtnText", K::kTree, K::kParameter, "", TEXT("Texts of the choice")},
             {"selCheckText", K::kTree, K::kParameter, "", TEXT("Texts of the check boxes")},
             {"WindowMaximizeButtonHint", K::kBool, K::kParameter, "false", TEXT("Takes the maximize button away")},
             {"ControlBtn", K::kInteger, K::kAnswer, "", TEXT("The button that was pressed")},
             {"selectedBtn", K::kInteger, K::kAnswer, "", TEXT("What was chosen, from 0")},
             {"selectedCheck", K::kInteger, K::kAnswer, "",
              TEXT("A bit for each box that is on, once one was switched")},
             kResultCode,
         }},
        {"TaskDialog",
         TEXT("A message with explanations, commands to choose from, a check box and a row of buttons."),
         {
             {"title", K::kWideText, K::kParameter, "", TEXT("Window title")},
             {"msg", K::kWideText, K::kParameter, "", TEXT("The message")},
             {"content", K::kText, K::kParameter, "", TEXT("Text below the message")},
             {"expandedInformation", K::kText, K::kParameter, "", TEXT("Further text")},
             {"mainicon", K::kText, K::kParameter, "", TEXT("Picture file, where dlgtype names none")},
             {"dlgtype", K::kInteger, K::kParameter, "0",
              TEXT("Picture: 32 question, 48 information, 64 warning, 80 error")},
             {"contentFlag", K::kInteger, K::kParameter, "0",
              TEXT("Sum of: 1 texts, 2 buttons, 4 commands, 8 check box")},
             {"flag", K::kInteger, K::kParameter, "0",
              TEXT("Sum of: 1 OK, 2 yes, 4 no, 8 cancel, 16 retry, 32 close; or 64 the caller's")},
             {"btnText", K::kTree, K::kParameter, "", TEXT("Texts of the caller's buttons")},
             {"nDisabledButtonMask", K::kInteger, K::kParameter, "0",
              TEXT("Buttons that cannot be pressed, by the same bits")},
             {"focusFlagBtnId", K::kInteger, K::kParameter, "0",
              TEXT("Button that is made an auto-default one, by its bit")},
             {"options", K::kInteger, K::kParameter, "0",
              TEXT("Sum of: 1 links can be opened, 2 picture in the frame")},
             {"selBtnText", K::kTree, K::kParameter, "", TEXT("Commands, each with id and caption")},
             {"defaultBtnId", K::kInteger, K::kParameter, "0", TEXT("Command that has the keyboard")},
             {"checkboxText", K::kText, K::kParameter, "", TEXT("Text of the check box")},
             {"checkboxChecked", K::kBool, K::kParameter, "false", TEXT("Whether it starts switched on")},
             {"ControlBtn", K::kInteger, K::kAnswer, "8", TEXT("The button or the command that was pressed")},
             {"selectedCheck", K::kBool, K::kAnswer, "", TEXT("Whether the box is on")},
             kResultCode,
         }},
        {"FileDialogBox", TEXT("Opens or saves files, with a list of places and a preview of drawings."), fileKeys()},
        {"FileNavDialogBox", TEXT("The same file dialog by its second name."), fileKeys()},
        {"ColorDialog",
         TEXT("Picks a colour by index, as a true colour, by layer or by block."),
         {
             {"clrMethod", K::kInteger, K::kParameter | K::kAnswer, "",
              TEXT("192 by layer, 193 by block, 194 true colour, 195 by index")},
             {"selectClr", K::kInteger, K::kParameter | K::kAnswer, "0",
              TEXT("256, 0, red + 256 green + 65536 blue, or the index: as clrMethod says")},
             {"tabs", K::kInteger, K::kParameter, "7", TEXT("Sum of: 1 index colours, 2 true colours")},
             {"layerClr", K::kInteger, K::kParameter, "", TEXT("Colour that by layer stands for")},
             {"backgroundColor", K::kInteger, K::kParameter, "",
              TEXT("Ground of the drawing, which settles the palette")},
             {"isByLayerEnable", K::kBool, K::kParameter, "true", TEXT("Whether by layer can be chosen")},
             {"isByBLockEnable", K::kBool, K::kParameter, "true", TEXT("Whether by block can be chosen")},
             kResultCode,
         }},
        {"CADPreviewDialog",
         TEXT("Shows a sheet before it is printed; the caller draws what is on it."),
         {
             {"paper", K::kTree, K::kParameter, "",
              TEXT("paper_code, name, paper_unit (2: device units), paper_w, paper_h, paper_margin_left, _top, _right, "
                   "_bottom")},
             {"enable_print", K::kBool, K::kParameter, "false", TEXT("Whether it can be printed")},
             {"refDC", K::kObject, K::kParameter, "", TEXT("Device whose resolution counts")},
             {"intHelper", K::kObject, K::kParameter, "", TEXT("What draws the sheet")},
             {"result", K::kInteger, K::kResult, "-1", TEXT("6 to be printed, 2 closed")},
         }},
    };
}

} // namespace

const QVector<DialogDescription> &dialogDescriptions()
{
    static const QVector<DialogDescription> descriptions = makeDescriptions();
    return descriptions;
}

const DialogDescription &dialogDescription(const char *name)
{
    const QVector<DialogDescription> &all = dialogDescriptions();
    const auto isIt = [name](const DialogDescription &one) { return std::strcmp(one.name, name) == 0; };
    const auto found = std::find_if(all.begin(), all.end(), isIt);
    Q_ASSERT(found != all.end());
    return *found;
}

const char *dialogKeyKindName(DialogKey::Kind kind)
{
    static const char *const names[]
        = {TEXT("integer"), TEXT("bool"), TEXT("text"), TEXT("wide text"), TEXT("tree"), TEXT("object")};
    return names[kind];
}
