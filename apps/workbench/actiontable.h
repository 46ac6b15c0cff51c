// SPDX-License-Identifier: MIT
#ifndef ACTIONTABLE_H
#define ACTIONTABLE_H

#include <QString>
#include <QVector>

/// An entry of a menu, and with an icon of a tool bar.
struct ActionSpec
{
    const char *id; ///< Object name of the action. Empty: a separator.
    const char *text = "";
    const char *shortcut = "";
    const char *icon = "";
    const char *macro = ""; ///< What the action runs; empty where the window has a function of its own for the id.
    bool needsDrawing = true;
    const char *tip = "";
};

struct MenuSpec
{
    const char *id;
    const char *title;
    QVector<ActionSpec> actions;
};

struct ToolBarSpec
{
    const char *id;
    const char *title;
    bool vertical; ///< At the left side, else at the top.
    QVector<const char *> actions; ///< Ids; an empty one is a separator.
};

/// All texts are English sources for tr() in the context "Actions".
const QVector<MenuSpec> &menuTable();
const QVector<ToolBarSpec> &toolBarTable();
QString actionText(const char *english);

#endif
