// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "dialogkeys.h"
#include "dialogpage.h"

#include <QCoreApplication>

namespace {

GalleryGroup groupOf(const char *title, const QVector<ControlPageData> &pages)
{
    GalleryGroup group{QCoreApplication::translate("ControlPages", title), {}};
    for (const ControlPageData &data : pages) {
        group.pages << GalleryPage{QLatin1String(data.className),
                                   QCoreApplication::translate("ControlPages", data.purpose),
                                   [data]() -> QWidget * { return new ControlPage(data); }};
    }
    return group;
}

GalleryGroup dialogGroup()
{
    GalleryGroup group{QCoreApplication::translate("ControlPages", "Dialogs"), {}};
    for (const DialogDescription &dialog : dialogDescriptions()) {
        group.pages << GalleryPage{QLatin1String(dialog.name),
                                   QCoreApplication::translate("DialogKeys", dialog.purpose),
                                   [&dialog]() -> QWidget * { return new DialogPage(dialog); }};
    }
    return group;
}

} // namespace

QVector<GalleryGroup> galleryGroups()
{
    return {
        groupOf(PAGE_TEXT("Property controls"), propertyControlPages()),
        groupOf(PAGE_TEXT("Styles"), stylePages()),
        groupOf(PAGE_TEXT("Named objects"), namedObjectPages()),
        groupOf(PAGE_TEXT("UCS and views"), ucsAndViewPages()),
        groupOf(PAGE_TEXT("Small widgets"), smallWidgetPages()),
        groupOf(PAGE_TEXT("Colour"), colorPages()),
        groupOf(PAGE_TEXT("Canvas and images"), imagePages()),
        groupOf(PAGE_TEXT("Tables"), tablePages()),
        dialogGroup(),
    };
}
