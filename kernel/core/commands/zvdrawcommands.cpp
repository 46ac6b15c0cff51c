// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "zvcommands_p.h"

#include <cmath>

namespace {

const double kPi = std::acos(-1.0);

/// Puts a new entity into the space at hand, with the current settings, as part of the running command.
ZvDbObjectId append(ZvDbEntity *entity)
{
    ZvDbDatabase *database = zvcoreCurrentDatabase();
    ZvDbObjectId id;
    const Zv::ErrorStatus status = database->appendEntity(entity, database->currentSpaceId(), id);
    if (status != Zv::eOk)
        zvedFailCommand(L"The entity could not be added to the drawing.");
    return id;
}

void erase(ZvDbObjectId id)
{
    if (ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite); entity)
        entity->erase();
}

void line()
{
    std::vector<ZvGePoint3d> points;
    std::vector<ZvDbObjectId> segments;
    ZvGePoint3d point;
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"First point:"), point) != ZvEdInput::kNormal)
        return;
    points.push_back(point);
    for (;;) {
        const bool canClose = segments.size() >= 2;
        ZvEdPrompt prompt = zvcorePromptFrom(ZvEdPrompt::kPoint, canClose ? L"Next point [Close/Undo]:" : L"Next point [Undo]:",
                                             points.back(), canClose ? L"Close Undo" : L"Undo");
        prompt.allowNone = true;
        ZvString keyword;
        switch (zvedGetPoint(prompt, point, &keyword)) {
        case ZvEdInput::kNormal:
            segments.push_back(append(new ZvDbLine(points.back(), point)));
            points.push_back(point);
            break;
        case ZvEdInput::kKeyword:
            if (keyword == L"Close") {
                append(new ZvDbLine(points.back(), points.front()));
                return;
            }
            if (!segments.empty()) {
                erase(segments.back());
                segments.pop_back();
                points.pop_back();
            }
            break;
        default:
            return;
        }
    }
}

void circle()
{
    ZvGePoint3d center;
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Centre point:"), center) != ZvEdInput::kNormal)
        return;
    double radius = 0.0;
    ZvString keyword;
    ZvEdInput input = zvedGetDistance(zvcorePromptFrom(ZvEdPrompt::kDistance, L"Radius or [Diameter]:", center, L"Diameter"),
                                      radius, &keyword);
    if (input == ZvEdInput::kKeyword) {
        input = zvedGetDistance(zvcorePromptFrom(ZvEdPrompt::kDistance, L"Diameter:", center), radius);
        radius /= 2.0;
    }
    if (input != ZvEdInput::kNormal)
        return;
    if (radius <= 0.0) {
        zvedFailCommand(L"The radius must be above 0.");
        return;
    }
    append(new ZvDbCircle(center, ZvGeVector3d::kZAxis, radius));
}

/// Through three points, or around a centre.
void arc()
{
    ZvGePoint3d first;
    ZvString keyword;
    ZvEdInput input = zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Start point or [Center]:", L"Center"), first, &keyword);
    if (input == ZvEdInput::kKeyword) {
        ZvGePoint3d center;
        ZvGePoint3d end;
        if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Centre point:"), center) != ZvEdInput::kNormal
            || zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kPoint, L"Start point:", center), first) != ZvEdInput::kNormal
            || zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kPoint, L"End point:", center), end) != ZvEdInput::kNormal)
            return;
        const double radius = center.distanceTo(first);
        if (radius <= 0.0) {
            zvedFailCommand(L"The start point must not be the centre.");
            return;
        }
        append(new ZvDbArc(center, radius, std::atan2(first.y - center.y, first.x - center.x),
                           std::atan2(end.y - center.y, end.x - center.x)));
        return;
    }
    ZvGePoint3d second;
    ZvGePoint3d third;
    if (input != ZvEdInput::kNormal
        || zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kPoint, L"Second point:", first), second) != ZvEdInput::kNormal
        || zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kPoint, L"End point:", second), third) != ZvEdInput::kNormal)
        return;
    ZvGeCircArc2d through;
    through.set({first.x, first.y}, {second.x, second.y}, {third.x, third.y});
    if (through.radius() <= 1e-10) {
        zvedFailCommand(L"The three points lie on a line.");
        return;
    }
    const ZvGePoint2d center = through.center();
    double start = std::atan2(first.y - center.y, first.x - center.x);
    double end = std::atan2(third.y - center.y, third.x - center.x);
    if (through.isClockWise())
        std::swap(start, end);
    append(new ZvDbArc({center.x, center.y, first.z}, through.radius(), start, end));
}

void polyline()
{
    ZvGePoint3d point;
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Start point:"), point) != ZvEdInput::kNormal)
        return;
    std::vector<ZvGePoint3d> points = {point};
    bool closed = false;
    while (!closed) {
        const bool canClose = points.size() >= 3;
        ZvEdPrompt prompt = zvcorePromptFrom(ZvEdPrompt::kPoint, canClose ? L"Next point [Close/Undo]:" : L"Next point [Undo]:",
                                             points.back(), canClose ? L"Close Undo" : L"Undo");
        prompt.allowNone = true;
        ZvString keyword;
        const ZvEdInput input = zvedGetPoint(prompt, point, &keyword);
        if (input == ZvEdInput::kNormal)
            points.push_back(point);
        else if (input == ZvEdInput::kKeyword && keyword == L"Close")
            closed = true;
        else if (input == ZvEdInput::kKeyword && points.size() > 1)
            points.pop_back();
        else if (input != ZvEdInput::kKeyword)
            break;
    }
    if (points.size() < 2)
        return;
    auto *result = new ZvDbPolyline;
    for (const ZvGePoint3d &vertex : points)
        result->addVertex({vertex.x, vertex.y});
    result->setClosed(closed);
    append(result);
}

void text()
{
    const ZvDbDatabase *database = zvcoreCurrentDatabase();
    double height = 0.0;
    if (const ZvDbObjectPointer<ZvDbTextStyleTableRecord> style(database->textstyle(), ZvDb::kForRead); style)
        height = style->textSize();
    ZvGePoint3d position;
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Start point of the text:"), position) != ZvEdInput::kNormal)
        return;
    if (height <= 0.0) {
        height = 2.5;
        ZvEdPrompt prompt = zvcorePromptFrom(ZvEdPrompt::kDistance, L"Height <2.5>:", position);
        prompt.allowNone = true;
        if (zvedGetDistance(prompt, height) == ZvEdInput::kCancel)
            return;
    }
    double rotation = 0.0;
    ZvEdPrompt prompt = zvcorePromptFrom(ZvEdPrompt::kAngle, L"Rotation <0>:", position);
    prompt.allowNone = true;
    if (zvedGetAngle(prompt, rotation) == ZvEdInput::kCancel)
        return;
    ZvString content;
    if (zvedGetString(zvcorePrompt(ZvEdPrompt::kStringWithBlanks, L"Text:"), content) != ZvEdInput::kNormal)
        return;
    if (height <= 0.0 || std::fabs(rotation) > 1000.0 * kPi) {
        zvedFailCommand(L"The height must be above 0.");
        return;
    }
    append(new ZvDbText(position, content, database->textstyle(), height, rotation));
}

const ZvBuiltInCommand kCommands[] = {
    {"LINE", 0, line}, {"CIRCLE", 0, circle}, {"ARC", 0, arc}, {"PLINE", 0, polyline}, {"TEXT", 0, text}};

}

ZvBuiltInCommands zvcoreDrawCommands()
{
    return kCommands;
}
