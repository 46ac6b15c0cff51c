// SPDX-License-Identifier: MIT
#include "zvdbfiler.h"

void ZvDbFiler::boolean(int code, bool &value, bool standard)
{
    int number = value ? 1 : 0;
    integer(code, number, standard ? 1 : 0);
    value = number != 0;
}

void ZvDbFiler::vector(int code, ZvGeVector3d &value)
{
    ZvGePoint3d point(value.x, value.y, value.z);
    this->point(code, point);
    value = point.asVector();
}

void ZvDbFiler::vector(int code, ZvGeVector3d &value, const ZvGeVector3d &standard)
{
    ZvGePoint3d point(value.x, value.y, value.z);
    this->point(code, point, ZvGePoint3d(standard.x, standard.y, standard.z));
    value = point.asVector();
}

void ZvDbFiler::elevation(int code, double &value)
{
    ZvGePoint3d point(0.0, 0.0, value);
    if (!isReading()) {
        const Groups before = existing(code, {code + 20});
        point.x = before.empty() ? 0.0 : before[0].real;
        point.y = before.size() < 2 ? 0.0 : before[1].real;
    }
    this->point(code, point);
    value = point.z;
}

void ZvDbFiler::colorWord(int code, ZvCmColor &value)
{
    // The word's upper bit makes it a negative number in the file.
    int word = int(value.color());
    integer(code, word, int(ZvCmColor().color()));
    if (isReading())
        value.setColor(std::uint32_t(word));
}

void ZvDbFiler::constant(int code, int value)
{
    if (isNewRecord())
        integer(code, value);
}

void ZvDbFiler::constant(int code, double value)
{
    if (isNewRecord())
        real(code, value);
}

void ZvDbFiler::constant(int code, const char *value)
{
    ZvString content(value);
    if (isNewRecord())
        text(code, content);
}

void ZvDbFiler::constants(std::initializer_list<int> codes, int value)
{
    for (const int code : codes)
        constant(code, value);
}

void ZvDbFiler::constants(std::initializer_list<int> codes, double value)
{
    for (const int code : codes)
        constant(code, value);
}

void ZvDbFiler::constantPoint(int code, double x, double y, double z)
{
    ZvGePoint3d value(x, y, z);
    if (isNewRecord())
        point(code, value);
}

void ZvDbFiler::reals(int code, std::vector<double> &values)
{
    Groups groups;
    if (!isReading()) {
        for (const double value : values)
            groups.emplace_back(code, value);
    }
    run({code}, groups);
    if (!isReading())
        return;
    values.clear();
    for (const Group &group : groups)
        values.push_back(group.real);
}

void ZvDbFiler::points(int code, std::vector<ZvGePoint3d> &values)
{
    Groups groups;
    if (!isReading()) {
        for (const ZvGePoint3d &value : values) {
            groups.emplace_back(code, value.x);
            groups.emplace_back(code + 10, value.y);
            groups.emplace_back(code + 20, value.z, !isNewRecord() && value.z == 0.0);
        }
    }
    run({code, code + 10, code + 20}, groups);
    if (!isReading())
        return;
    values.clear();
    for (const Group &group : groups) {
        if (group.code == code)
            values.emplace_back(group.real, 0.0, 0.0);
        else if (group.code == code + 10)
            values.back().y = group.real;
        else
            values.back().z = group.real;
    }
}

void ZvDbFiler::points2d(int code, std::vector<ZvGePoint2d> &values)
{
    Groups groups;
    if (!isReading()) {
        for (const ZvGePoint2d &value : values) {
            groups.emplace_back(code, value.x);
            groups.emplace_back(code + 10, value.y);
        }
    }
    run({code, code + 10}, groups);
    if (!isReading())
        return;
    values.clear();
    for (const Group &group : groups) {
        if (group.code == code)
            values.emplace_back(group.real, 0.0);
        else
            values.back().y = group.real;
    }
}

void ZvDbFiler::handles(int code, std::vector<ZvDbObjectId> &values)
{
    Groups groups;
    if (!isReading()) {
        // A handle of an unknown object is no reason to touch a list that says what it did.
        std::vector<ZvDbObjectId> before;
        for (const Group &group : existing(code, {})) {
            if (group.code == code && !group.id.isNull())
                before.push_back(group.id);
        }
        if (before == values)
            return;
        for (const ZvDbObjectId value : values)
            groups.emplace_back(code, value);
    }
    run({code}, groups);
    if (!isReading())
        return;
    values.clear();
    for (const Group &group : groups) {
        if (!group.id.isNull())
            values.push_back(group.id);
    }
}

void ZvDbFiler::count(int code, std::size_t number)
{
    int value = int(number);
    integer(code, value);
}
