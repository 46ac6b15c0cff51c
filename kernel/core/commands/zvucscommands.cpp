// SPDX-License-Identifier: MIT
#include "db/zvdbrecords.h"
#include "zvcommands_p.h"

namespace {

/// The orthographic systems, by their numbers from 1.
struct Orthographic
{
    const wchar_t *keyword;
    ZvGeVector3d x;
    ZvGeVector3d y;
};
const Orthographic kOrthographic[] = {
    {L"Top", {1, 0, 0}, {0, 1, 0}},     {L"BOttom", {-1, 0, 0}, {0, 1, 0}}, {L"Front", {1, 0, 0}, {0, 0, 1}},
    {L"BAck", {-1, 0, 0}, {0, 0, 1}},   {L"Left", {0, -1, 0}, {0, 0, 1}},   {L"Right", {0, 1, 0}, {0, 0, 1}},
};

void restoreNamed(ZvDbDatabase &database, const ZvString &name)
{
    ZvDbObjectId id;
    if (const ZvDbObjectPointer<ZvDbUCSTable> table(database.UCSTableId(), ZvDb::kForRead); table)
        id = table->getIdAt(name);
    ZvDbObjectPointer<ZvDbUCSTableRecord> record(id, ZvDb::kForRead);
    if (!record) {
        zvedFailCommand(ZvString(L"There is no coordinate system named ") + name);
        return;
    }
    const ZvGePoint3d origin = record->origin();
    const ZvGeVector3d x = record->xAxis();
    const ZvGeVector3d y = record->yAxis();
    record.close();
    database.setUcs(origin, x, y, id, 0);
}

void saveNamed(ZvDbDatabase &database, const ZvString &name)
{
    const ZvGeMatrix3d ucs = database.ucsMatrix();
    const ZvGePoint3d origin(ucs(0, 3), ucs(1, 3), ucs(2, 3));
    const ZvGeVector3d x(ucs(0, 0), ucs(1, 0), ucs(2, 0));
    const ZvGeVector3d y(ucs(0, 1), ucs(1, 1), ucs(2, 1));
    ZvDbObjectPointer<ZvDbUCSTable> table(database.UCSTableId(), ZvDb::kForWrite);
    if (!table)
        return;
    ZvDbObjectId id = table->getIdAt(name);
    if (id.isNull()) {
        auto *record = new ZvDbUCSTableRecord;
        if (record->setName(name) != Zv::eOk) {
            delete record;
            zvedFailCommand(ZvString(L"Not a valid name: ") + name);
            return;
        }
        table->add(record, id);
        record->close();
    }
    table.close();
    if (ZvDbObjectPointer<ZvDbUCSTableRecord> record(id, ZvDb::kForWrite); record) {
        record->setOrigin(origin);
        record->setXAxis(x);
        record->setYAxis(y);
    }
    database.setUcs(origin, x, y, id, 0);
}

void deleteNamed(ZvDbDatabase &database, const ZvString &name)
{
    ZvDbObjectId id;
    if (const ZvDbObjectPointer<ZvDbUCSTable> table(database.UCSTableId(), ZvDb::kForRead); table)
        id = table->getIdAt(name);
    ZvDbObjectPointer<ZvDbUCSTableRecord> record(id, ZvDb::kForWrite);
    if (record)
        record->erase();
    else
        zvedFailCommand(ZvString(L"There is no coordinate system named ") + name);
}

void named(ZvDbDatabase &database)
{
    ZvString option;
    if (zvedGetKeyword(zvcorePrompt(ZvEdPrompt::kKeyword, L"Named system [Restore/Save/Delete]:", L"Restore Save Delete"), option)
        != ZvEdInput::kKeyword)
        return;
    ZvString name;
    if (!zvcoreAskName(L"Name:", name))
        return;
    if (option == L"Restore")
        restoreNamed(database, name);
    else if (option == L"Save")
        saveNamed(database, name);
    else
        deleteNamed(database, name);
}

/// An origin, then points on the X axis and in the plane; each may be left out.
void threePoints(ZvDbDatabase &database, const ZvGePoint3d &origin)
{
    const ZvGeMatrix3d ucs = database.ucsMatrix();
    ZvGeVector3d x(ucs(0, 0), ucs(1, 0), ucs(2, 0));
    ZvGeVector3d y(ucs(0, 1), ucs(1, 1), ucs(2, 1));
    ZvEdPrompt prompt = zvcorePromptFrom(ZvEdPrompt::kPoint, L"Point on the X axis <accept>:", origin);
    prompt.allowNone = true;
    ZvGePoint3d point;
    ZvEdInput input = zvedGetPoint(prompt, point);
    if (input == ZvEdInput::kCancel)
        return;
    if (input == ZvEdInput::kNormal && point.distanceTo(origin) > 0.0) {
        const ZvGeVector3d z = x.crossProduct(y);
        x = (point - origin).normal();
        y = z.crossProduct(x).length() > 1e-10 ? z.crossProduct(x).normal() : y;
        prompt.text = L"Point in the XY plane <accept>:";
        input = zvedGetPoint(prompt, point);
        if (input == ZvEdInput::kCancel)
            return;
        const ZvGeVector3d normal = x.crossProduct(point - origin);
        if (input == ZvEdInput::kNormal && normal.length() > 1e-10)
            y = normal.crossProduct(x).normal();
    }
    database.setUcs(origin, x, y, ZvDbObjectId(), 0);
}

void ucs()
{
    ZvDbDatabase &database = *zvcoreCurrentDatabase();
    ZvEdPrompt prompt = zvcorePrompt(
        ZvEdPrompt::kPoint, L"Origin or [World/Top/BOttom/Front/BAck/Left/Right/Previous/Named] <World>:",
        L"World Top BOttom Front BAck Left Right Previous Named");
    prompt.allowNone = true;
    ZvGePoint3d origin;
    ZvString keyword;
    switch (zvedGetPoint(prompt, origin, &keyword)) {
    case ZvEdInput::kNormal:
        threePoints(database, origin);
        return;
    case ZvEdInput::kCancel:
        return;
    case ZvEdInput::kNone:
        keyword = L"World";
        break;
    case ZvEdInput::kKeyword:
        break;
    }
    if (keyword == L"World") {
        database.setUcs(ZvGePoint3d::kOrigin, ZvGeVector3d::kXAxis, ZvGeVector3d::kYAxis, ZvDbObjectId(), 0);
    } else if (keyword == L"Previous") {
        if (database.restorePreviousUcs() != Zv::eOk)
            zvedPrint(L"There is no coordinate system before this one.");
    } else if (keyword == L"Named") {
        named(database);
    } else {
        for (int i = 0; i < 6; ++i) {
            if (keyword == kOrthographic[i].keyword)
                database.setUcs(ZvGePoint3d::kOrigin, kOrthographic[i].x, kOrthographic[i].y, ZvDbObjectId(), i + 1);
        }
    }
}

const ZvBuiltInCommand kCommands[] = {{"UCS", ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet, ucs}};

}

ZvBuiltInCommands zvcoreUcsCommands()
{
    return kCommands;
}

void zvedRestorePreviousUCS()
{
    zvedMenuMacro(L"_.UCS _Previous", false);
}
