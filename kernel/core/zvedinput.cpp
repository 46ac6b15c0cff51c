// SPDX-License-Identifier: MIT
#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"
#include "zvcore_p.h"
#include "zvedqueue_p.h"

#include <charconv>
#include <cmath>
#include <string>
#include <unordered_set>

namespace {

const double kPi = std::acos(-1.0);

ZvGePoint3d s_lastPoint; // of the current drawing's last point input, in world coordinates
std::vector<ZvDbObjectId> s_previousSelection;

/// A number that fills the whole text; a leading "+" is fine.
bool parseNumber(std::string_view text, double &value)
{
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && std::isfinite(value);
}

ZvGeMatrix3d currentUcs()
{
    const ZvDbDatabase *database = zvcoreCurrentDatabase();
    return database ? database->ucsMatrix() : ZvGeMatrix3d();
}

/// "x,y", "x,y,z", "distance<angle" in the current coordinate system; a leading "@" counts from the last point, a
/// leading "*" is in world coordinates.
bool parsePoint(const ZvString &text, ZvGePoint3d &point)
{
    std::string plain = text.toStdString();
    bool relative = false;
    bool world = false;
    while (!plain.empty() && (plain.front() == '@' || plain.front() == '*')) {
        relative = relative || plain.front() == '@';
        world = world || plain.front() == '*';
        plain.erase(0, 1);
    }
    ZvGeVector3d value;
    if (relative && plain.empty()) {
        point = s_lastPoint;
        return true;
    }
    if (const std::size_t mark = plain.find('<'); mark != std::string::npos) {
        double distance = 0.0;
        double angle = 0.0;
        const std::string_view whole(plain);
        if (!parseNumber(whole.substr(0, mark), distance) || !parseNumber(whole.substr(mark + 1), angle))
            return false;
        value = {distance * std::cos(angle * kPi / 180.0), distance * std::sin(angle * kPi / 180.0), 0.0};
    } else {
        double *components[] = {&value.x, &value.y, &value.z};
        std::size_t from = 0;
        int count = 0;
        for (; count < 3; ++count) {
            const std::size_t comma = plain.find(',', from);
            const std::size_t length = comma == std::string::npos ? std::string::npos : comma - from;
            if (!parseNumber(std::string_view(plain).substr(from, length), *components[count]))
                return false;
            if (comma == std::string::npos)
                break;
            from = comma + 1;
        }
        if (count < 1 || count > 2)
            return false;
    }
    const ZvGeMatrix3d ucs = world ? ZvGeMatrix3d() : currentUcs();
    if (relative) {
        point = s_lastPoint + value.transformBy(ucs);
    } else {
        point = ZvGePoint3d(value.x, value.y, value.z);
        point.transformBy(ucs);
    }
    return true;
}

/// The keyword of the list that \a text stands for: its capitals at least, more letters as long as they fit. A leading
/// "_" and "." make no difference.
bool findKeyword(const ZvString &keywords, const ZvString &text, ZvString &found)
{
    ZvString word = text;
    while (!word.isEmpty() && (word.at(0) == L'_' || word.at(0) == L'.'))
        word = word.mid(1);
    if (word.isEmpty())
        return false;
    int from = 0;
    while (from < keywords.length()) {
        const int blank = keywords.find(L' ', from);
        const int to = blank < 0 ? keywords.length() : blank;
        const ZvString keyword = keywords.mid(from, to - from);
        int least = 0;
        for (int i = 0; i < keyword.length(); ++i) {
            if (!(keyword.at(i) >= L'a' && keyword.at(i) <= L'z'))
                least = i + 1;
        }
        if (word.length() >= std::max(least, 1) && keyword.startsWithNoCase(word)) {
            found = keyword;
            return true;
        }
        from = to + 1;
    }
    return false;
}

/// What all requests do: asks until \a accept takes the input.
template<class Accept>
ZvEdInput ask(const ZvEdPrompt &prompt, ZvString *keyword, Accept accept)
{
    for (;;) {
        const ZvEdToken token = zvcoreNextToken(prompt);
        switch (token.kind) {
        case ZvEdToken::kNothing:
        case ZvEdToken::kCancel:
            zvcorePrintPrompt(prompt, L"*Cancel*");
            return ZvEdInput::kCancel;
        case ZvEdToken::kEnter:
            zvcorePrintPrompt(prompt, ZvString());
            if (prompt.allowNone)
                return ZvEdInput::kNone;
            break;
        default:
            zvcorePrintPrompt(prompt, token.text);
            if (token.kind == ZvEdToken::kText && keyword && findKeyword(prompt.keywords, token.text, *keyword))
                return ZvEdInput::kKeyword;
            if (accept(token))
                return ZvEdInput::kNormal;
            if (token.kind == ZvEdToken::kText && keyword && prompt.allowOther) {
                *keyword = token.text;
                return ZvEdInput::kKeyword;
            }
        }
        // Wrong input is told of and asked for again; where nobody answers, the next token is a cancel.
        if (token.kind == ZvEdToken::kText) {
            zvcoreNoteError(ZvString(L"Not a valid answer: ") + token.text);
            zvedPrint(ZvString(L"Not a valid answer: ") + token.text);
        }
    }
}

ZvEdSelectionHolder *pickFirst()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    return context ? context->selectionHolder() : nullptr;
}

}

ZvEdInput zvedGetPoint(const ZvEdPrompt &prompt, ZvGePoint3d &point, ZvString *keyword)
{
    return ask(prompt, keyword, [&](const ZvEdToken &token) {
        if (token.kind == ZvEdToken::kPoint)
            point = token.point;
        else if (token.kind != ZvEdToken::kText || !parsePoint(token.text, point))
            return false;
        s_lastPoint = point;
        return true;
    });
}

ZvEdInput zvedGetDistance(const ZvEdPrompt &prompt, double &distance, ZvString *keyword)
{
    return ask(prompt, keyword, [&](const ZvEdToken &token) {
        if (token.kind == ZvEdToken::kText && parseNumber(token.text.toStdString(), distance))
            return true;
        ZvGePoint3d point = token.point;
        if (!prompt.hasBase || (token.kind == ZvEdToken::kText && !parsePoint(token.text, point)))
            return false;
        distance = point.distanceTo(prompt.base);
        return true;
    });
}

ZvEdInput zvedGetAngle(const ZvEdPrompt &prompt, double &angle, ZvString *keyword)
{
    return ask(prompt, keyword, [&](const ZvEdToken &token) {
        if (token.kind == ZvEdToken::kText && parseNumber(token.text.toStdString(), angle)) {
            angle *= kPi / 180.0;
            return true;
        }
        ZvGePoint3d point = token.point;
        if (!prompt.hasBase || (token.kind == ZvEdToken::kText && !parsePoint(token.text, point)))
            return false;
        const ZvGeVector3d direction = point - prompt.base;
        angle = std::atan2(direction.y, direction.x);
        return true;
    });
}

ZvEdInput zvedGetReal(const ZvEdPrompt &prompt, double &value, ZvString *keyword)
{
    return ask(prompt, keyword, [&](const ZvEdToken &token) {
        return token.kind == ZvEdToken::kText && parseNumber(token.text.toStdString(), value);
    });
}

ZvEdInput zvedGetInteger(const ZvEdPrompt &prompt, int &value, ZvString *keyword)
{
    return ask(prompt, keyword, [&](const ZvEdToken &token) {
        double number = 0.0;
        if (token.kind != ZvEdToken::kText || !parseNumber(token.text.toStdString(), number)
            || number != std::floor(number) || std::fabs(number) > 2147483647.0)
            return false;
        value = int(number);
        return true;
    });
}

ZvEdInput zvedGetString(const ZvEdPrompt &prompt, ZvString &text)
{
    return ask(prompt, nullptr, [&](const ZvEdToken &token) {
        if (token.kind != ZvEdToken::kText)
            return false;
        text = token.text;
        return true;
    });
}

ZvEdInput zvedGetKeyword(const ZvEdPrompt &prompt, ZvString &keyword)
{
    return ask(prompt, &keyword, [](const ZvEdToken &) { return false; });
}

namespace {

/// Adds without doubles, in order.
class Picks
{
public:
    void add(const std::vector<ZvDbObjectId> &ids)
    {
        for (const ZvDbObjectId &id : ids) {
            if (!id.isErased() && m_known.insert(id).second)
                m_ids.push_back(id);
        }
    }
    std::vector<ZvDbObjectId> take() { return std::move(m_ids); }
    std::size_t size() const { return m_ids.size(); }

private:
    std::vector<ZvDbObjectId> m_ids;
    std::unordered_set<ZvDbObjectId> m_known;
};

/// Two corners from the input.
ZvEdInput askWindow(ZvGePoint3d &first, ZvGePoint3d &second)
{
    ZvEdPrompt prompt;
    prompt.text = L"First corner:";
    ZvEdInput input = zvedGetPoint(prompt, first);
    if (input != ZvEdInput::kNormal)
        return input;
    prompt.kind = ZvEdPrompt::kCorner;
    prompt.text = L"Opposite corner:";
    prompt.base = first;
    prompt.hasBase = true;
    return zvedGetPoint(prompt, second);
}

/// The one entity of a handle in hexadecimal digits.
bool entityOfHandle(const ZvString &text, ZvDbObjectId &id)
{
    const ZvDbDatabase *database = zvcoreCurrentDatabase();
    const std::string digits = text.toStdString();
    std::uint64_t handle = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), handle, 16);
    if (!database || result.ec != std::errc() || result.ptr != digits.data() + digits.size())
        return false;
    id = database->idOfHandle(handle);
    return id.isValid() && !id.isErased() && id.objectClass()->isDerivedFrom(ZvDbEntity::desc());
}

}

ZvEdInput zvedGetSelection(const ZvEdPrompt &prompt, std::vector<ZvDbObjectId> &ids)
{
    if (const ZvEdSelectionHolder *holder = pickFirst(); holder && !holder->ids().empty()) {
        ids = holder->ids();
        s_previousSelection = ids;
        return ZvEdInput::kNormal;
    }
    ZvEdPrompt asking = prompt;
    asking.kind = ZvEdPrompt::kSelection;
    asking.keywords = L"ALL Window Crossing Last Previous LAyer";
    asking.allowNone = true;
    Picks picks;
    for (;;) {
        ZvString keyword;
        std::vector<ZvDbObjectId> picked;
        const ZvEdInput input = ask(asking, &keyword, [&](const ZvEdToken &token) {
            if (token.kind == ZvEdToken::kSelection) {
                picked = token.ids;
                return true;
            }
            ZvGePoint3d point = token.point;
            ZvDbObjectId id;
            if (token.kind == ZvEdToken::kText && entityOfHandle(token.text, id)) {
                picked.push_back(id);
                return true;
            }
            if (token.kind == ZvEdToken::kText && !parsePoint(token.text, point))
                return false;
            if (ZvEdHost *host = zvedHost())
                host->pick(point, picked);
            if (picked.size() > 1)
                picked.resize(1); // the topmost
            return true;
        });
        if (input == ZvEdInput::kCancel)
            return input;
        if (input == ZvEdInput::kNone)
            break;
        if (input == ZvEdInput::kKeyword) {
            if (keyword == L"ALL") {
                zvcoreSelectableEntities(picked);
            } else if (keyword == L"Last") {
                std::vector<ZvDbObjectId> all;
                zvcoreSelectableEntities(all);
                if (!all.empty())
                    picked.push_back(all.back());
            } else if (keyword == L"Previous") {
                picked = s_previousSelection;
            } else if (keyword == L"LAyer") {
                ZvEdPrompt name;
                name.kind = ZvEdPrompt::kStringWithBlanks;
                name.text = L"Layer name:";
                ZvString layer;
                if (zvedGetString(name, layer) == ZvEdInput::kCancel)
                    return ZvEdInput::kCancel;
                zvcoreEntitiesOnLayer(layer, picked);
            } else {
                ZvGePoint3d first;
                ZvGePoint3d second;
                if (askWindow(first, second) != ZvEdInput::kNormal)
                    return ZvEdInput::kCancel;
                zvcoreEntitiesInWindow(first, second, keyword == L"Crossing", picked);
            }
        }
        const std::size_t before = picks.size();
        picks.add(picked);
        zvedPrint(ZvString(std::to_string(picks.size() - before).c_str()) + ZvString(L" found, ")
                  + ZvString(std::to_string(picks.size()).c_str()) + ZvString(L" in all"));
    }
    ids = picks.take();
    if (ids.empty())
        return ZvEdInput::kNone;
    s_previousSelection = ids;
    return ZvEdInput::kNormal;
}

void zvcoreSelectableEntities(std::vector<ZvDbObjectId> &ids)
{
    ids.clear();
    const ZvDbDatabase *database = zvcoreCurrentDatabase();
    if (!database)
        return;
    // Layers are few and entities many: what a layer allows is found once.
    std::unordered_set<ZvDbObjectId> closedLayers;
    ZvDbLayerTable *layers = nullptr;
    if (database->getSymbolTable(layers, ZvDb::kForRead) == Zv::eOk) {
        ZvDbSymbolTableIterator *iterator = nullptr;
        layers->newIterator(iterator);
        layers->close();
        for (; iterator && !iterator->done(); iterator->step()) {
            const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(iterator->getRecordId(), ZvDb::kForRead);
            if (layer && (layer->isOff() || layer->isFrozen()))
                closedLayers.insert(iterator->getRecordId());
        }
        delete iterator;
    }
    const ZvDbObjectPointer<ZvDbBlockTableRecord> space(database->currentSpaceId(), ZvDb::kForRead);
    if (!space)
        return;
    ZvDbBlockTableRecordIterator *iterator = nullptr;
    space->newIterator(iterator);
    for (; iterator && !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbEntity> entity(iterator->entityId(), ZvDb::kForRead);
        if (entity && closedLayers.count(entity->layerId()) == 0 && entity->visibility() == ZvDb::kVisible)
            ids.push_back(iterator->entityId());
    }
    delete iterator;
}

void zvcoreEntitiesOnLayer(const ZvString &layer, std::vector<ZvDbObjectId> &ids)
{
    std::vector<ZvDbObjectId> all;
    zvcoreSelectableEntities(all);
    ids.clear();
    for (const ZvDbObjectId &id : all) {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (entity && entity->layer().compareNoCase(layer) == 0)
            ids.push_back(id);
    }
}

void zvcoreEntitiesInWindow(const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing, std::vector<ZvDbObjectId> &ids)
{
    ids.clear();
    if (ZvEdHost *host = zvedHost()) {
        host->pickWindow(first, second, crossing, ids);
        return;
    }
    // Without a view: by the entities' boxes, seen from above.
    const double left = std::min(first.x, second.x);
    const double right = std::max(first.x, second.x);
    const double bottom = std::min(first.y, second.y);
    const double top = std::max(first.y, second.y);
    std::vector<ZvDbObjectId> all;
    zvcoreSelectableEntities(all);
    for (const ZvDbObjectId &id : all) {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        ZvGeExtents3d box;
        if (!entity || entity->getGeomExtents(box) != Zv::eOk)
            continue;
        const bool inside = box.minimum.x >= left && box.maximum.x <= right && box.minimum.y >= bottom && box.maximum.y <= top;
        const bool touches = box.maximum.x >= left && box.minimum.x <= right && box.maximum.y >= bottom && box.minimum.y <= top;
        if (crossing ? touches : inside)
            ids.push_back(id);
    }
}
