// SPDX-License-Identifier: MIT
#include "private/zvcurrentdrawing.h"

#include "zevaqt.h"
#include "zvodasetting.h"

#include "base/zvregistry.h"
#include "core/zvedvars.h"
#include "core/zvsystem.h"

ZvApDocument *zvCurrentDocument()
{
    const ZvApDocManager *manager = zvDocManagerPtr();
    return manager ? manager->currentDocument() : nullptr;
}

ZvDbDatabase *zvCurrentDocumentDatabase()
{
    const ZvApDocument *document = zvCurrentDocument();
    return document ? document->database() : nullptr;
}

ZvEdDisplayContext *zvDisplayContext()
{
    const ZvApDocument *document = zvCurrentDocument();
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    if (!context) {
        const ZvApDocManager *manager = zvDocManagerPtr();
        context = manager ? manager->defaultEditingContext() : nullptr;
    }
    return context ? context->displayContext() : nullptr;
}

ZvEdSelectionHolder *zvSelectionHolder()
{
    const CHcSystem *system = CHcSystem::instance();
    const ZvApDocManager *manager = system ? system->docManager() : nullptr;
    const ZvApDocument *document = manager ? manager->currentDocument() : nullptr;
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    return context ? context->selectionHolder() : nullptr;
}

ZvDbHostService *zvHostService()
{
    return zvqt_queryRequired<ZvDbHostService>(zvrxGetService(3))->applicationObject();
}

bool zvIsPaperWorkedOn(const ZvDbDatabase &drawing)
{
    return zvHostService()->paperSpaceId(&drawing) == ZevaUISetting::getWorkBlockRecId(&drawing);
}

int zvActiveCommandBits()
{
    static const ZvString name(L"CMDACTIVE");
    ZvResBuf value;
    return zvedGetVar(name, &value) == ZvRes::kNormal ? int(value.number()) : 0;
}
