// SPDX-License-Identifier: MIT
#ifndef DESIGNERWIDGETS_H
#define DESIGNERWIDGETS_H

#include <QSize>
#include <QString>

#include <vector>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/// What Qt Designer knows of a widget.
struct DesignerWidget
{
    const char *className;
    const char *header;
    const char *group; ///< Its heading in the widget box.
    const char *icon; ///< File in ":/zevadesigner/icons", without its ending.
    const char *toolTip;
    const char *whatsThis;
    QWidget *(*make)(QWidget *parent); ///< As a compiled form makes it.
    QSize size; ///< When it is dropped, in pixels; empty: what its size hint says.
    const char *objectName = nullptr; ///< When it is dropped; null: made of the class name.
    bool isContainer = false;
};

/// All of them, in the order of the widget box.
const std::vector<DesignerWidget> &designerWidgets();

/// The description of a dropped widget, in the language of forms.
QString designerXml(const DesignerWidget &widget);

#endif
