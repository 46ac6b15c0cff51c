// SPDX-License-Identifier: MIT
#include "db/zvdbreferences.h"

#include "zvdbdatabase_p.h"
#include "zvdbfiler.h"

#include <algorithm>
#include <cwchar>

namespace {

/// Lets an object tell its fields as for a new record, and looks for one reference among them.
class ReferenceFinder : public ZvDbFiler
{
public:
    explicit ReferenceFinder(ZvDbObjectId wanted) : ZvDbFiler(false, ZvDb::kR2018), m_wanted(wanted) { }
    bool isFound() const { return m_isFound; }

    void handle(int, ZvDbObjectId &value, bool) override { look(value); }
    void nameIn(Table, int, ZvDbObjectId &value, bool) override { look(value); }
    void run(std::initializer_list<int>, Groups &groups) override { look(groups); }
    void sequence(int, std::initializer_list<int>, Groups &groups) override { look(groups); }

    bool isNewRecord() const override { return true; }
    bool has(int) const override { return false; }
    bool hasSubclass(const char *) const override { return false; }
    Groups existing(int, std::initializer_list<int>) const override { return {}; }
    Groups rest() const override { return {}; }
    Groups groupsOf(ZvDbObjectId, const char *) const override { return {}; }

    // what holds no reference
    void subclass(const char *) override { }
    void integer(int, int &) override { }
    void integer(int, int &, int) override { }
    void real(int, double &) override { }
    void real(int, double &, double) override { }
    void angle(int, double &) override { }
    void angle(int, double &, double) override { }
    void text(int, ZvString &) override { }
    void text(int, ZvString &, const ZvString &) override { }
    void longText(int, int, ZvString &) override { }
    void point(int, ZvGePoint3d &) override { }
    void point(int, ZvGePoint3d &, const ZvGePoint3d &) override { }
    void point2d(int, ZvGePoint2d &) override { }
    void color(int, int, int, ZvCmColor &, const ZvCmColor &, bool, bool *) override { }

private:
    void look(ZvDbObjectId value) { m_isFound = m_isFound || value == m_wanted; }
    void look(const Groups &groups)
    {
        for (const Group &group : groups)
            look(group.id);
    }

    const ZvDbObjectId m_wanted;
    bool m_isFound = false;
};

bool hasReferenceInXData(const ZvDbObject &object, ZvDbObjectId wanted)
{
    constexpr int kHandle = 1005;
    const ZvDbSharedChain chain = ZvDbObjectAccess::xData(object);
    for (const ZvResBuf *data = chain.get(); data; data = data->rbnext) {
        if (data->restype == kHandle && std::wcstoull(data->text().wstr(), nullptr, 16) == wanted.handle())
            return true;
    }
    return false;
}

/// Whether the record of an object that no class reads has the wanted one's handle.
bool hasReferenceInRecord(const ZvDbDatabasePrivate &d, const ZvDbObject &object, ZvDbObjectId wanted)
{
    if (!d.source || (!object.isKindOf(ZvDbProxyObject::desc()) && !object.isKindOf(ZvDbProxyEntity::desc())))
        return false;
    std::vector<ZvDbObjectId> ids;
    d.source->addReferences(object.objectId().index(), ids);
    return std::find(ids.begin(), ids.end(), wanted) != ids.end();
}

} // namespace

bool zvdbIsReferenced(ZvDbObjectId id)
{
    ZvDbDatabasePrivate *d = id.isNull() ? nullptr : ZvDbDatabasePrivate::of(id);
    if (!d)
        return false;
    const bool isSetting = std::any_of(d->variables.begin(), d->variables.end(),
                                       [id](const ZvDbVariableValue &value) { return value.id == id; });
    if (isSetting)
        return true;
    const std::uint32_t owner = d->stubs[id.index()].owner;
    ReferenceFinder finder(id);
    for (std::uint32_t index = 0; index < d->stubs.end(); ++index) {
        if (!d->stubs.isUsed(index) || index == id.index() || index == owner || d->stubs[index].isErased())
            continue;
        ZvDbObject *object = d->objectAt(index);
        if (!object)
            continue;
        object->fileFields(finder);
        if (finder.isFound() || hasReferenceInXData(*object, id) || hasReferenceInRecord(*d, *object, id))
            return true;
    }
    return false;
}
