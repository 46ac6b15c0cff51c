// SPDX-License-Identifier: MIT
#include "currentselection.h"

#include "core/zvapdocument.h"

#include <QCoreApplication>
#include <QLocale>

const std::vector<ZvDbObjectId> &selectedIds()
{
    static const std::vector<ZvDbObjectId> none;
    const ZvApDocManager *documents = zvDocManagerPtr();
    const ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    const ZvEdSelectionHolder *holder = context ? context->selectionHolder() : nullptr;
    return holder ? holder->ids() : none;
}

QString entityCountText(int count)
{
    if (count == 1)
        return QCoreApplication::translate("CurrentSelection", "1 entity");
    return QCoreApplication::translate("CurrentSelection", "%1 entities").arg(QLocale().toString(count));
}
