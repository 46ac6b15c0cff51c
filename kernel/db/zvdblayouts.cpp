// SPDX-License-Identifier: MIT
#include "db/zvdbdatabase.h"

#include "db/zvdbentities.h"
#include "zvdbdatabase_p.h"

#include <algorithm>

namespace {

const wchar_t modelName[] = L"Model";

const ZvDbVariableNumbers &numbers()
{
    return zvdbVariableNumbers();
}

} // namespace

// ---- ZvDbDatabasePrivate

std::vector<ZvDbLayout *> ZvDbDatabasePrivate::layouts()
{
    std::vector<ZvDbLayout *> result;
    const ZvDbObjectId id = dictionaryId("ACAD_LAYOUT", false);
    const ZvDbDictionary *dictionary = id.isNull() ? nullptr : zvrxCast<ZvDbDictionary>(objectAt(id.index()));
    if (!dictionary)
        return result;
    const std::unique_ptr<ZvDbDictionaryIterator> it(dictionary->newIterator());
    for (; !it->done(); it->next()) {
        if (isUsable(it->objectId(), ZvDbLayout::desc())) {
            if (ZvDbObject *layout = objectAt(it->objectId().index()))
                result.push_back(static_cast<ZvDbLayout *>(layout));
        }
    }
    const auto rank = [](const ZvDbLayout *layout) { return layout->isModelType() ? -1 : layout->tabOrder(); };
    std::stable_sort(result.begin(), result.end(),
                     [&](const ZvDbLayout *a, const ZvDbLayout *b) { return rank(a) < rank(b); });
    return result;
}

ZvDbObjectId ZvDbDatabasePrivate::paperLayoutAtHand()
{
    const ZvDbObjectId id = variable(numbers().ctab).id;
    if (isUsable(id, ZvDbLayout::desc()))
        return id;
    // Files call the block of the layout that was current last "*Paper_Space", and number the others.
    const ZvDbObjectId block = recordId("BLOCK_RECORD", L"*Paper_Space");
    ZvDbObjectId first;
    for (const ZvDbLayout *layout : layouts()) {
        if (layout->isModelType())
            continue;
        if (!block.isNull() && layout->getBlockTableRecordId() == block)
            return layout->objectId();
        if (first.isNull())
            first = layout->objectId();
    }
    return first;
}

ZvDbObjectId ZvDbDatabasePrivate::overallViewport(ZvDbObjectId block)
{
    if (!isUsable(block, ZvDbBlockTableRecord::desc()))
        return ZvDbObjectId();
    const ZvDbObject *record = objectAt(block.index());
    if (!record)
        return ZvDbObjectId();
    ZvDbObjectId first;
    for (std::uint32_t index : static_cast<const ZvDbBlockTableRecord *>(record)->entityIndices()) {
        if (stubs[index].isErased() || !classAt(index).descriptor->isDerivedFrom(ZvDbViewport::desc()))
            continue;
        const ZvDbObject *viewport = objectAt(index);
        if (viewport && static_cast<const ZvDbViewport *>(viewport)->number() == 1)
            return idAt(index);
        if (first.isNull())
            first = idAt(index); // files that number no viewport begin with the paper's
    }
    return first;
}

ZvDbObjectId ZvDbDatabasePrivate::viewportWorkedIn() const
{
    const ZvDbObjectId id = variable(numbers().cvport).id;
    return !q.tilemode() && isUsable(id, ZvDbViewport::desc()) ? id : ZvDbObjectId();
}

void ZvDbDatabasePrivate::readViewportWorkedIn()
{
    if (q.tilemode())
        return;
    ZvDbVariableValue &at = variables[std::size_t(numbers().cvport)];
    at.id = ZvDbObjectId();
    at.integer = 1; // the paper
    const ZvDbObjectId id = paperLayoutAtHand();
    const ZvDbLayout *layout = id.isNull() ? nullptr : static_cast<ZvDbLayout *>(objectAt(id.index()));
    const ZvDbObjectId last = layout ? layout->lastViewportId() : ZvDbObjectId();
    if (!isUsable(last, ZvDbViewport::desc()) || stubs[last.index()].owner != layout->getBlockTableRecordId().index()
        || last == overallViewport(layout->getBlockTableRecordId()))
        return;
    const ZvDbObject *viewport = objectAt(last.index());
    if (!viewport)
        return;
    at.id = last;
    at.integer = static_cast<const ZvDbViewport *>(viewport)->number();
}

void ZvDbDatabasePrivate::writeViewportWorkedIn()
{
    const ZvDbObjectId id = q.tilemode() ? ZvDbObjectId() : paperLayoutAtHand();
    // A layout that the file does not tell of is not told of because of this.
    if (id.isNull() || (stubs[id.index()].record == 0 && !stubs[id.index()].has(ZvDbStub::kFileChanged)))
        return;
    ZvDbLayout *layout = static_cast<ZvDbLayout *>(objectAt(id.index()));
    const ZvDbObjectId overall = overallViewport(layout->getBlockTableRecordId());
    const ZvDbObjectId last = viewportWorkedIn().isNull() ? overall : viewportWorkedIn();
    // What names no viewport stands for the paper.
    const bool isOnPaper = !isUsable(layout->lastViewportId(), ZvDbViewport::desc());
    if (last == layout->lastViewportId() || (last == overall && isOnPaper))
        return;
    ZvDbObjectAccess::setLastViewport(*layout, last);
    touch(id.index());
}

// ---- ZvDbDatabase

ZvDbObjectId ZvDbDatabase::modelSpaceId() const
{
    return d->idAt(d->modelSpace);
}

ZvDbObjectId ZvDbDatabase::paperSpaceId() const
{
    const ZvDbObjectId layout = d->paperLayoutAtHand();
    if (layout.isNull())
        return d->recordId("BLOCK_RECORD", L"*Paper_Space");
    return static_cast<const ZvDbLayout *>(d->objectAt(layout.index()))->getBlockTableRecordId();
}

ZvDbObjectId ZvDbDatabase::currentSpaceId() const
{
    return tilemode() || !d->viewportWorkedIn().isNull() ? modelSpaceId() : paperSpaceId();
}

ZvDbObjectId ZvDbDatabase::currentLayoutId() const
{
    if (!tilemode())
        return d->paperLayoutAtHand();
    for (const ZvDbLayout *layout : d->layouts()) {
        if (layout->isModelType())
            return layout->objectId();
    }
    return ZvDbObjectId();
}

ZvString ZvDbDatabase::currentLayoutName() const
{
    if (tilemode())
        return modelName;
    return d->nameOf(d->paperLayoutAtHand());
}

void ZvDbDatabase::layoutNames(ZvArray<ZvString> &names) const
{
    names.clear();
    for (const ZvDbLayout *layout : d->layouts())
        names.append(layout->isModelType() ? ZvString(modelName) : layout->layoutName());
}

Zv::ErrorStatus ZvDbDatabase::setCurrentLayout(const ZvString &name)
{
    if (name.compareNoCase(modelName) == 0)
        return switchLayout(true, d->paperLayoutAtHand());
    for (const ZvDbLayout *layout : d->layouts()) {
        if (!layout->isModelType() && layout->layoutName().compareNoCase(name) == 0)
            return switchLayout(false, layout->objectId());
    }
    return Zv::eKeyNotFound;
}

Zv::ErrorStatus ZvDbDatabase::setTilemode(bool on)
{
    const ZvDbObjectId paper = d->paperLayoutAtHand();
    if (!on && paper.isNull())
        return Zv::eKeyNotFound;
    return switchLayout(on, paper);
}

Zv::ErrorStatus ZvDbDatabase::switchLayout(bool model, ZvDbObjectId paper)
{
    const ZvString before = currentLayoutName();
    ZvDbVariableValue tile = d->variable(numbers().tilemode);
    tile.integer = model;
    ZvDbVariableValue tab = d->variable(numbers().ctab);
    const bool otherPaper = tab.id != paper;
    tab.id = paper;
    const ZvDbDatabasePtr hold(this);
    const bool tileChanged = d->storeVariable(numbers().tilemode, tile);
    d->storeVariable(numbers().ctab, tab);
    // One begins on the paper itself; model space has its own tiles.
    bool viewportChanged = false;
    if (tileChanged || otherPaper) {
        ZvDbVariableValue viewport = d->variable(numbers().cvport);
        viewport.id = ZvDbObjectId();
        viewport.integer = model ? 2 : 1;
        viewportChanged = d->storeVariable(numbers().cvport, viewport);
    }
    d->undo.endImplicitStep();
    if (tileChanged)
        d->notifyVariable("TILEMODE");
    if (before != currentLayoutName())
        d->notifyVariable("CTAB");
    if (viewportChanged)
        d->notifyVariable("CVPORT");
    return Zv::eOk;
}

ZvDbObjectId ZvDbDatabase::currentViewportId() const
{
    if (tilemode())
        return d->recordId("VPORT", L"*Active");
    const ZvDbObjectId workedIn = d->viewportWorkedIn();
    return workedIn.isNull() ? d->overallViewport(paperSpaceId()) : workedIn;
}

Zv::ErrorStatus ZvDbDatabase::setCurrentViewport(ZvDbObjectId viewport)
{
    if (tilemode())
        return Zv::eInvalidInput;
    ZvDbVariableValue value = d->variable(numbers().cvport);
    value.id = ZvDbObjectId();
    value.integer = 1;
    if (!viewport.isNull()) {
        if (!d->isUsable(viewport, ZvDbViewport::desc()) || d->stubs[viewport.index()].owner != paperSpaceId().index())
            return Zv::eInvalidInput;
        if (viewport != d->overallViewport(paperSpaceId())) {
            const ZvDbObject *object = d->objectAt(viewport.index());
            if (!object)
                return Zv::eFileDamaged;
            value.id = viewport;
            value.integer = static_cast<const ZvDbViewport *>(object)->number();
        }
    }
    d->setVariable(numbers().cvport, value);
    return Zv::eOk;
}
