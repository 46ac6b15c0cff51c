// SPDX-License-Identifier: MIT
#include "db/zvdbdatabase.h"

#include "db/zvdbentities.h"
#include "zvdbdatabase_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbAbstractViewportData, ZvRxObject)

namespace {

const std::size_t historyLength = 10;

ZvGePoint3d pointOf(const ZvDbVariableValue &value)
{
    return ZvGePoint3d(value.real[0], value.real[1], value.real[2]);
}

ZvGeVector3d vectorOf(const ZvDbVariableValue &value)
{
    return ZvGeVector3d(value.real[0], value.real[1], value.real[2]);
}

void setReal(ZvDbVariableValue &value, double x, double y, double z)
{
    value.real[0] = x;
    value.real[1] = y;
    value.real[2] = z;
}

ZvGeMatrix3d matrixOf(const ZvGePoint3d &origin, const ZvGeVector3d &x, const ZvGeVector3d &y)
{
    return ZvGeMatrix3d().setCoordSystem(origin, x, y, x.crossProduct(y));
}

/// The space that is worked in: paper space (1) on the paper itself, model space (0) otherwise, also where it is worked
/// in through a viewport of a layout.
int spaceAtHand(const ZvDbDatabasePrivate &d)
{
    return d.q.tilemode() || !d.viewportWorkedIn().isNull() ? 0 : 1;
}

/// The system of model space (0) or paper space (1).
ZvDbUcs currentUcs(const ZvDbDatabasePrivate &d, int space)
{
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    ZvDbUcs ucs;
    ucs.origin = pointOf(d.variable(n.ucsorg[space]));
    ucs.x = vectorOf(d.variable(n.ucsxdir[space]));
    ucs.y = vectorOf(d.variable(n.ucsydir[space]));
    ucs.name = d.variable(n.ucsname[space]).id;
    ucs.orthographic = int(d.variable(n.ucsorthoview[space]).integer);
    return ucs;
}

/// Sets the system and gives back which of its three notices are due: geometry, name, number.
void storeUcs(ZvDbDatabasePrivate &d, int space, const ZvDbUcs &ucs, bool changed[3])
{
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    ZvDbVariableValue origin;
    setReal(origin, ucs.origin.x, ucs.origin.y, ucs.origin.z);
    ZvDbVariableValue x;
    setReal(x, ucs.x.x, ucs.x.y, ucs.x.z);
    ZvDbVariableValue y;
    setReal(y, ucs.y.x, ucs.y.y, ucs.y.z);
    ZvDbVariableValue name = d.variable(n.ucsname[space]);
    name.id = ucs.name;
    ZvDbVariableValue number = d.variable(n.ucsorthoview[space]);
    number.integer = ucs.orthographic;

    changed[0] = d.storeVariable(n.ucsorg[space], origin);
    changed[0] = d.storeVariable(n.ucsxdir[space], x) || changed[0];
    changed[0] = d.storeVariable(n.ucsydir[space], y) || changed[0];
    changed[1] = d.storeVariable(n.ucsname[space], name);
    changed[2] = d.storeVariable(n.ucsorthoview[space], number);
}

void noteHistory(ZvDbDatabasePrivate &d, int space)
{
    auto payload = std::make_unique<ZvDbUcsPayload>();
    payload->paper = space == 1;
    payload->systems = d.ucsHistory[space];
    ZvDbChange change;
    change.kind = ZvDbChange::kUcsHistory;
    change.payload = std::move(payload);
    d.undo.note(std::move(change));
}

void announce(ZvDbDatabasePrivate &d, int space, const bool changed[3])
{
    d.undo.endImplicitStep();
    if (changed[1])
        d.notifyVariable(space == 0 ? "UCSNAME" : "PUCSNAME");
    if (changed[2])
        d.notifyVariable(space == 0 ? "UCSORTHOVIEW" : "PUCSORTHOVIEW");
    if (changed[0] || changed[1] || changed[2])
        d.notifyVariable(space == 0 ? "UCS" : "PUCS");
}

bool isSame(const ZvDbUcs &a, const ZvDbUcs &b)
{
    return a.origin.isEqualTo(b.origin) && a.x.isEqualTo(b.x) && a.y.isEqualTo(b.y) && a.name == b.name
        && a.orthographic == b.orthographic;
}

} // namespace

ZvDbObjectId ZvDbDatabase::ucsname() const
{
    return currentUcs(*d, 0).name;
}

ZvGePoint3d ZvDbDatabase::ucsorg() const
{
    return currentUcs(*d, 0).origin;
}

ZvGeVector3d ZvDbDatabase::ucsxdir() const
{
    return currentUcs(*d, 0).x;
}

ZvGeVector3d ZvDbDatabase::ucsydir() const
{
    return currentUcs(*d, 0).y;
}

ZvDbObjectId ZvDbDatabase::pucsname() const
{
    return currentUcs(*d, 1).name;
}

ZvGePoint3d ZvDbDatabase::pucsorg() const
{
    return currentUcs(*d, 1).origin;
}

ZvGeVector3d ZvDbDatabase::pucsxdir() const
{
    return currentUcs(*d, 1).x;
}

ZvGeVector3d ZvDbDatabase::pucsydir() const
{
    return currentUcs(*d, 1).y;
}

Zv::ErrorStatus ZvDbDatabase::setUcs(const ZvGePoint3d &origin, const ZvGeVector3d &x, const ZvGeVector3d &y,
                                     ZvDbObjectId name, int orthographic)
{
    const ZvGeVector3d z = x.crossProduct(y);
    if (z.length() <= ZvGeContext::gTol.equalVector || orthographic < 0 || orthographic > 6)
        return Zv::eInvalidInput;
    if (!name.isNull() && !d->isUsable(name, ZvDbUCSTableRecord::desc()))
        return Zv::eInvalidInput;
    const int space = spaceAtHand(*d);
    ZvDbUcs ucs;
    ucs.origin = origin;
    ucs.x = x.normal();
    ucs.y = z.normal().crossProduct(ucs.x); // square to the X axis, whatever was given
    if (y.normal().isEqualTo(ucs.y))
        ucs.y = y.normal();
    ucs.name = name;
    ucs.orthographic = orthographic;
    const ZvDbUcs before = currentUcs(*d, space);
    if (isSame(before, ucs))
        return Zv::eOk;

    const ZvDbDatabasePtr hold(this);
    noteHistory(*d, space);
    std::vector<ZvDbUcs> &history = d->ucsHistory[space];
    if (history.size() == historyLength)
        history.erase(history.begin());
    history.push_back(before);
    bool changed[3];
    storeUcs(*d, space, ucs, changed);
    announce(*d, space, changed);
    return Zv::eOk;
}

bool ZvDbDatabase::hasPreviousUcs() const
{
    return !d->ucsHistory[spaceAtHand(*d)].empty();
}

Zv::ErrorStatus ZvDbDatabase::restorePreviousUcs()
{
    const int space = spaceAtHand(*d);
    std::vector<ZvDbUcs> &history = d->ucsHistory[space];
    if (history.empty())
        return Zv::eKeyNotFound;
    const ZvDbDatabasePtr hold(this);
    noteHistory(*d, space);
    ZvDbUcs ucs = history.back();
    history.pop_back();
    if (!d->isUsable(ucs.name, ZvDbUCSTableRecord::desc()))
        ucs.name = ZvDbObjectId(); // erased since
    bool changed[3];
    storeUcs(*d, space, ucs, changed);
    announce(*d, space, changed);
    return Zv::eOk;
}

ZvGeMatrix3d ZvDbDatabase::ucsMatrix() const
{
    const ZvDbUcs ucs = currentUcs(*d, spaceAtHand(*d));
    return matrixOf(ucs.origin, ucs.x, ucs.y);
}

// ---- what both kinds of viewport know of coordinate systems

namespace {

class ViewportData : public ZvDbAbstractViewportData
{
public:
    bool hasPreviousUcs(const ZvDbObject *viewport, ZvGeMatrix3d &previous) const override
    {
        ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(viewport);
        if (!d)
            return false;
        // Model space is seen through all viewports but the one that is the paper itself.
        const int space = d->overallViewport(viewport->ownerId()) == viewport->objectId() ? 1 : 0;
        if (d->ucsHistory[space].empty())
            return false;
        const ZvDbUcs &ucs = d->ucsHistory[space].back();
        previous = matrixOf(ucs.origin, ucs.x, ucs.y);
        return true;
    }
};

[[maybe_unused]] const bool viewportDataAttached = [] {
    static ViewportData data;
    ZvDbViewportTableRecord::desc()->addX(ZvDbAbstractViewportData::desc(), &data);
    ZvDbViewport::desc()->addX(ZvDbAbstractViewportData::desc(), &data);
    return true;
}();

} // namespace
