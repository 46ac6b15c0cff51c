// SPDX-License-Identifier: MIT
#ifndef CONTROLPAGES_H
#define CONTROLPAGES_H

#include "controlpage.h"

#include <QString>
#include <QVector>

/// \file
/// What the window of controls shows: a function for each family of classes, in a file of its own. A new class gets a
/// page by an entry there.

/// Marks a text of a page's data, to be translated when the page is made.
#define PAGE_TEXT(english) QT_TRANSLATE_NOOP("ControlPages", english)

QVector<ControlPageData> propertyControlPages();
QVector<ControlPageData> stylePages();
QVector<ControlPageData> namedObjectPages();
QVector<ControlPageData> ucsAndViewPages();
QVector<ControlPageData> smallWidgetPages();
QVector<ControlPageData> colorPages();
QVector<ControlPageData> imagePages();
QVector<ControlPageData> tablePages();

/// A page by its name, which is that of the class or of the dialog that it shows.
struct GalleryPage
{
    QString name;
    QString purpose; ///< One sentence.
    std::function<QWidget *()> make;
};

struct GalleryGroup
{
    QString title;
    QVector<GalleryPage> pages;
};

/// All pages, those of the dialogs too, in the language of the moment.
QVector<GalleryGroup> galleryGroups();

/// A bound drop-down by its usual constructors.
template <class Combo> QWidget *makeBoundCombo(bool hooked, QWidget *parent)
{
    return hooked ? new Combo(true, parent) : new Combo(parent);
}

#endif
