// SPDX-License-Identifier: MIT
#include "actiontable.h"

#include <QCoreApplication>

namespace {
const ActionSpec kSeparator{""};
}

const QVector<MenuSpec> &menuTable()
{
    // clang-format off
    static const QVector<MenuSpec> menus = {
        {"fileMenu", QT_TRANSLATE_NOOP("Actions", "&File"), {
            {"new", QT_TRANSLATE_NOOP("Actions", "&New"), "Ctrl+N", "new", "_.NEW", false, QT_TRANSLATE_NOOP("Actions", "Start an empty drawing")},
            {"open", QT_TRANSLATE_NOOP("Actions", "&Open..."), "Ctrl+O", "open", "_.OPEN", false, QT_TRANSLATE_NOOP("Actions", "Open a drawing")},
            {"recentMenu", QT_TRANSLATE_NOOP("Actions", "Open &Recent"), "", "", "", false},
            kSeparator,
            {"save", QT_TRANSLATE_NOOP("Actions", "&Save"), "Ctrl+S", "save", "_.SAVE", true, QT_TRANSLATE_NOOP("Actions", "Save the drawing")},
            {"saveas", QT_TRANSLATE_NOOP("Actions", "Save &As..."), "Ctrl+Shift+S", "saveas", "_.SAVEAS", true, QT_TRANSLATE_NOOP("Actions", "Save the drawing under another name")},
            {"plot", QT_TRANSLATE_NOOP("Actions", "&Print..."), "Ctrl+P", "print", "_.PLOT", true, QT_TRANSLATE_NOOP("Actions", "Preview the page of the layout, and print it")},
            {"export", QT_TRANSLATE_NOOP("Actions", "&Export Picture..."), "Ctrl+E", "export", "_.EXPORT;;", true, QT_TRANSLATE_NOOP("Actions", "Write a picture of the drawing")},
            kSeparator,
            {"close", QT_TRANSLATE_NOOP("Actions", "&Close"), "Ctrl+W", "", "_.CLOSE", true, QT_TRANSLATE_NOOP("Actions", "Close the drawing")},
            {"quit", QT_TRANSLATE_NOOP("Actions", "&Quit"), "Ctrl+Q", "", "", false, QT_TRANSLATE_NOOP("Actions", "Close all drawings and end the program")},
        }},
        {"editMenu", QT_TRANSLATE_NOOP("Actions", "&Edit"), {
            {"undo", QT_TRANSLATE_NOOP("Actions", "&Undo"), "Ctrl+Z", "undo", "_.UNDO", true, QT_TRANSLATE_NOOP("Actions", "Take back the last step")},
            {"redo", QT_TRANSLATE_NOOP("Actions", "&Redo"), "Ctrl+Y", "redo", "_.REDO", true, QT_TRANSLATE_NOOP("Actions", "Do again what was taken back")},
            kSeparator,
            {"selectall", QT_TRANSLATE_NOOP("Actions", "Select &All"), "Ctrl+A", "selectall", "_.SELECT _ALL", true, QT_TRANSLATE_NOOP("Actions", "Select everything that is seen")},
            {"selectnone", QT_TRANSLATE_NOOP("Actions", "Select &Nothing"), "Ctrl+Shift+A", "", "_.SELECT _NONE", true, QT_TRANSLATE_NOOP("Actions", "Select nothing")},
            kSeparator,
            {"delete", QT_TRANSLATE_NOOP("Actions", "&Erase"), "Del", "erase", "_.ERASE", true, QT_TRANSLATE_NOOP("Actions", "Erase the selected entities")},
        }},
        {"viewMenu", QT_TRANSLATE_NOOP("Actions", "&View"), {
            {"zoomextents", QT_TRANSLATE_NOOP("Actions", "Zoom &Extents"), "Ctrl+0", "zoomextents", "'_.ZOOM _Extents", true, QT_TRANSLATE_NOOP("Actions", "Show the whole drawing")},
            {"zoomwindow", QT_TRANSLATE_NOOP("Actions", "Zoom &Window"), "Ctrl+Shift+W", "zoomwindow", "'_.ZOOM _Window", true, QT_TRANSLATE_NOOP("Actions", "Show a part of the drawing between two corners")},
            {"zoomprevious", QT_TRANSLATE_NOOP("Actions", "Zoom &Previous"), "Ctrl+Shift+0", "zoomprevious", "'_.ZOOM _Previous", true, QT_TRANSLATE_NOOP("Actions", "Show what was shown before")},
            {"pan", QT_TRANSLATE_NOOP("Actions", "P&an"), "", "pan", "'_.PAN", true, QT_TRANSLATE_NOOP("Actions", "Shift the picture from one point to another")},
            {"regen", QT_TRANSLATE_NOOP("Actions", "&Regenerate"), "F5", "regen", "'_.REGEN", true, QT_TRANSLATE_NOOP("Actions", "Draw the picture anew")},
            kSeparator,
            {"presetMenu", QT_TRANSLATE_NOOP("Actions", "&Directions"), "", "", "", true},
            {"namedViewMenu", QT_TRANSLATE_NOOP("Actions", "&Named Views"), "", "", "", true},
            kSeparator,
            {"lineweights", QT_TRANSLATE_NOOP("Actions", "&Line Weights"), "", "", "", true, QT_TRANSLATE_NOOP("Actions", "Show lines as wide as they are plotted")},
            {"barsMenu", QT_TRANSLATE_NOOP("Actions", "&Tool Bars and Panels"), "", "", "", false},
        }},
        {"drawMenu", QT_TRANSLATE_NOOP("Actions", "&Draw"), {
            {"line", QT_TRANSLATE_NOOP("Actions", "&Line"), "", "line", "_.LINE", true, QT_TRANSLATE_NOOP("Actions", "Draw straight lines")},
            {"pline", QT_TRANSLATE_NOOP("Actions", "&Polyline"), "", "pline", "_.PLINE", true, QT_TRANSLATE_NOOP("Actions", "Draw a line of several segments")},
            {"circle", QT_TRANSLATE_NOOP("Actions", "&Circle"), "", "circle", "_.CIRCLE", true, QT_TRANSLATE_NOOP("Actions", "Draw a circle")},
            {"arc", QT_TRANSLATE_NOOP("Actions", "&Arc"), "", "arc", "_.ARC", true, QT_TRANSLATE_NOOP("Actions", "Draw an arc through three points")},
            {"text", QT_TRANSLATE_NOOP("Actions", "&Text"), "", "text", "_.TEXT", true, QT_TRANSLATE_NOOP("Actions", "Write a line of text")},
        }},
        {"modifyMenu", QT_TRANSLATE_NOOP("Actions", "&Modify"), {
            {"move", QT_TRANSLATE_NOOP("Actions", "&Move"), "", "move", "_.MOVE", true, QT_TRANSLATE_NOOP("Actions", "Move entities")},
            {"copy", QT_TRANSLATE_NOOP("Actions", "&Copy"), "", "copy", "_.COPY", true, QT_TRANSLATE_NOOP("Actions", "Copy entities")},
            {"erase", QT_TRANSLATE_NOOP("Actions", "&Erase"), "", "erase", "_.ERASE", true, QT_TRANSLATE_NOOP("Actions", "Erase entities")},
        }},
        {"formatMenu", QT_TRANSLATE_NOOP("Actions", "F&ormat"), {
            {"linetypes", QT_TRANSLATE_NOOP("Actions", "Line &Types..."), "", "", "_.LINETYPE", true, QT_TRANSLATE_NOOP("Actions", "Load, make, rename and delete line types")},
        }},
        {"dialogsMenu", QT_TRANSLATE_NOOP("Actions", "D&ialogs"), {}},
        {"helpMenu", QT_TRANSLATE_NOOP("Actions", "&Help"), {
            {"about", QT_TRANSLATE_NOOP("Actions", "&About the Workbench"), "", "", "", false, QT_TRANSLATE_NOOP("Actions", "Show the versions")},
        }},
        // Not in the menu bar: the entries of View > Directions.
        {"presetMenu", QT_TRANSLATE_NOOP("Actions", "&Directions"), {
            {"viewtop", QT_TRANSLATE_NOOP("Actions", "&Top"), "", "", "^C^C_-VIEW _TOP", true},
            {"viewbottom", QT_TRANSLATE_NOOP("Actions", "&Bottom"), "", "", "^C^C_-VIEW _BOTTOM", true},
            {"viewleft", QT_TRANSLATE_NOOP("Actions", "&Left"), "", "", "^C^C_-VIEW _LEFT", true},
            {"viewright", QT_TRANSLATE_NOOP("Actions", "&Right"), "", "", "^C^C_-VIEW _RIGHT", true},
            {"viewfront", QT_TRANSLATE_NOOP("Actions", "&Front"), "", "", "^C^C_-VIEW _FRONT", true},
            {"viewback", QT_TRANSLATE_NOOP("Actions", "Bac&k"), "", "", "^C^C_-VIEW _BACK", true},
            kSeparator,
            {"viewsw", QT_TRANSLATE_NOOP("Actions", "&South-West Isometric"), "", "", "^C^C_-VIEW _SWISO", true},
            {"viewse", QT_TRANSLATE_NOOP("Actions", "South-&East Isometric"), "", "", "^C^C_-VIEW _SEISO", true},
            {"viewne", QT_TRANSLATE_NOOP("Actions", "&North-East Isometric"), "", "", "^C^C_-VIEW _NEISO", true},
            {"viewnw", QT_TRANSLATE_NOOP("Actions", "North-&West Isometric"), "", "", "^C^C_-VIEW _NWISO", true},
        }},
    };
    // clang-format on
    return menus;
}

const QVector<ToolBarSpec> &toolBarTable()
{
    static const QVector<ToolBarSpec> bars = {
        {"standardBar",
         QT_TRANSLATE_NOOP("Actions", "Standard"),
         false,
         {"new", "open", "save", "plot", "export", "", "undo", "redo"}},
        {"viewBar",
         QT_TRANSLATE_NOOP("Actions", "View"),
         false,
         {"zoomextents", "zoomwindow", "zoomprevious", "pan", "regen"}},
        {"drawBar", QT_TRANSLATE_NOOP("Actions", "Draw"), true, {"line", "pline", "circle", "arc", "text"}},
        {"modifyBar", QT_TRANSLATE_NOOP("Actions", "Modify"), true, {"move", "copy", "erase"}},
    };
    return bars;
}

QString actionText(const char *english)
{
    return QCoreApplication::translate("Actions", english);
}
