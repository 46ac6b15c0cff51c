// SPDX-License-Identifier: MIT
#include "db/zvdbrecords.h"

#include "zvdbdatabase_p.h"

#include <unordered_map>
#include <unordered_set>

ZVRX_DEFINE_MEMBERS(ZvDbLayerTableRecord, ZvDbSymbolTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbLinetypeTableRecord, ZvDbSymbolTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbTextStyleTableRecord, ZvDbSymbolTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbUCSTableRecord, ZvDbSymbolTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbAbstractViewTableRecord, ZvDbSymbolTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbViewTableRecord, ZvDbAbstractViewTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbViewportTableRecord, ZvDbAbstractViewTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbRegAppTableRecord, ZvDbSymbolTableRecord)
ZVRX_DEFINE_MEMBERS(ZvDbBlockTableRecord, ZvDbSymbolTableRecord)

namespace {

bool isSame(const ZvGePoint3d &a, const ZvGePoint3d &b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool isSame(const ZvGeVector3d &a, const ZvGeVector3d &b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool isSame(const ZvGePoint2d &a, const ZvGePoint2d &b)
{
    return a.x == b.x && a.y == b.y;
}

template <class T> bool isSame(const T &a, const T &b)
{
    return a == b;
}

} // namespace

/// What all plain setters do: a value that is there already changes nothing and leaves no trace.
#define ZVDB_SET(member, value)                                                                                        \
    do {                                                                                                               \
        if (!isSame(member, value) && assertWriteEnabled())                                                            \
            member = value;                                                                                            \
    } while (false)

// ---- ZvDbLayerTableRecord

namespace {

const wchar_t transparencyApplication[] = L"AcCmTransparency";
const wchar_t descriptionApplication[] = L"AcAecLayerStandard";
const int transparencyByAlpha = 0x02000000;

/// Owns a chain for the time of a scope.
class Chain
{
public:
    explicit Chain(ZvResBuf *first) : m_first(first), m_last(first)
    {
        while (m_last && m_last->rbnext)
            m_last = m_last->rbnext;
    }
    explicit Chain(const wchar_t *application) : Chain(zvutNewRb(1001))
    {
        m_first->resval.rstring = zvutNewString(application);
    }
    Chain(const Chain &) = delete;
    Chain &operator=(const Chain &) = delete;
    ~Chain() { zvutRelRb(m_first); }

    ZvResBuf *get() const { return m_first; }
    void addText(const ZvString &text)
    {
        ZvResBuf *buffer = zvutNewRb(1000);
        buffer->resval.rstring = zvutNewString(text.wstr());
        add(buffer);
    }
    void addLong(int value)
    {
        ZvResBuf *buffer = zvutNewRb(1071);
        buffer->resval.rlong = value;
        add(buffer);
    }

private:
    void add(ZvResBuf *buffer)
    {
        m_last->rbnext = buffer;
        m_last = buffer;
    }
    ZvResBuf *m_first;
    ZvResBuf *m_last;
};

const ZvResBuf *findType(const ZvResBuf *chain, int type, int occurrence = 0)
{
    for (; chain; chain = chain->rbnext) {
        if (chain->restype == type && occurrence-- == 0)
            return chain;
    }
    return nullptr;
}

} // namespace

ZvDbLayerTableRecord::ZvDbLayerTableRecord()
{
    m_color.setColorIndex(7);
}

Zv::ErrorStatus ZvDbLayerTableRecord::setIsFrozen(bool frozen)
{
    setFlag(1, frozen);
    return isFrozen() == frozen ? Zv::eOk : Zv::eNotOpenForWrite;
}

void ZvDbLayerTableRecord::setIsOff(bool off)
{
    ZVDB_SET(m_off, off);
}

void ZvDbLayerTableRecord::setIsLocked(bool locked)
{
    setFlag(4, locked);
}

void ZvDbLayerTableRecord::setViewportDefaultFrozen(bool frozen)
{
    setFlag(2, frozen);
}

void ZvDbLayerTableRecord::setColor(const ZvCmColor &color)
{
    ZVDB_SET(m_color, color);
}

void ZvDbLayerTableRecord::setLinetypeObjectId(ZvDbObjectId id)
{
    ZVDB_SET(m_linetype, id);
}

void ZvDbLayerTableRecord::setLineWeight(ZvDb::LineWeight weight)
{
    ZVDB_SET(m_lineWeight, weight);
}

void ZvDbLayerTableRecord::setIsPlottable(bool plottable)
{
    ZVDB_SET(m_plottable, plottable);
}

void ZvDbLayerTableRecord::setPlotStyleNameId(ZvDbObjectId id)
{
    ZVDB_SET(m_plotStyle, id);
}

void ZvDbLayerTableRecord::setMaterialId(ZvDbObjectId id)
{
    ZVDB_SET(m_material, id);
}

ZvCmTransparency ZvDbLayerTableRecord::transparency() const
{
    ZvCmTransparency result;
    result.setAlpha(255);
    const Chain data(xData(transparencyApplication));
    const ZvResBuf *value = findType(data.get(), 1071);
    if (value && (value->resval.rlong & 0xFF000000) == transparencyByAlpha)
        result.setAlpha(std::uint8_t(value->resval.rlong & 0xFF));
    return result;
}

void ZvDbLayerTableRecord::setTransparency(const ZvCmTransparency &transparency)
{
    const bool byAlpha = transparency.method() == ZvCmTransparency::kByAlpha;
    const std::uint8_t alpha = byAlpha ? transparency.alpha() : 255;
    if (alpha == this->transparency().alpha())
        return;
    Chain data(transparencyApplication);
    if (alpha != 255)
        data.addLong(transparencyByAlpha | alpha);
    setXData(data.get());
}

ZvString ZvDbLayerTableRecord::description() const
{
    const Chain data(xData(descriptionApplication));
    const ZvResBuf *text = findType(data.get(), 1000, 1); // the first text is not ours
    return text ? text->text() : ZvString();
}

void ZvDbLayerTableRecord::setDescription(const ZvString &text)
{
    if (text == description())
        return;
    Chain data(descriptionApplication);
    if (!text.isEmpty()) {
        data.addText(ZvString());
        data.addText(text);
    }
    setXData(data.get());
}

bool ZvDbLayerTableRecord::isHidden() const
{
    return !m_name.isEmpty() && m_name.at(0) == L'*';
}

// ---- ZvDbLinetypeTableRecord

void ZvDbLinetypeTableRecord::setComments(const ZvString &text)
{
    ZVDB_SET(m_comments, text);
}

void ZvDbLinetypeTableRecord::setPatternLength(double length)
{
    ZVDB_SET(m_patternLength, length);
}

void ZvDbLinetypeTableRecord::setDashes(const std::vector<Dash> &dashes)
{
    if (!assertWriteEnabled())
        return;
    m_dashes = dashes;
    m_patternLength = 0.0;
    for (const Dash &dash : dashes)
        m_patternLength += dash.length < 0.0 ? -dash.length : dash.length;
}

// ---- ZvDbTextStyleTableRecord

namespace {

// The bits of the number behind a TrueType family in the extended data; the rest is character set and pitch.
const wchar_t fontApplication[] = L"ACAD";
const int fontItalic = 0x01000000;
const int fontBold = 0x02000000;
const int fontPlain = 34;

int fontBits(const ZvDbTextStyleTableRecord &style)
{
    const Chain data(style.xData(fontApplication));
    const ZvResBuf *bits = findType(data.get(), 1071);
    return bits ? bits->resval.rlong : 0;
}

} // namespace

void ZvDbTextStyleTableRecord::setTextSize(double size)
{
    ZVDB_SET(m_textSize, size);
}

void ZvDbTextStyleTableRecord::setXScale(double scale)
{
    ZVDB_SET(m_xScale, scale);
}

void ZvDbTextStyleTableRecord::setObliquingAngle(double angle)
{
    ZVDB_SET(m_obliquing, angle);
}

void ZvDbTextStyleTableRecord::setIsVertical(bool vertical)
{
    setFlag(4, vertical);
}

void ZvDbTextStyleTableRecord::setIsShapeFile(bool shapeFile)
{
    setFlag(1, shapeFile);
}

void ZvDbTextStyleTableRecord::setFontFileName(const ZvString &name)
{
    ZVDB_SET(m_fontFile, name);
}

void ZvDbTextStyleTableRecord::setBigFontFileName(const ZvString &name)
{
    ZVDB_SET(m_bigFontFile, name);
}

ZvString ZvDbTextStyleTableRecord::typeface() const
{
    const Chain data(xData(fontApplication));
    const ZvResBuf *family = findType(data.get(), 1000);
    return family ? family->text() : ZvString();
}

bool ZvDbTextStyleTableRecord::isBold() const
{
    return (fontBits(*this) & fontBold) != 0;
}

bool ZvDbTextStyleTableRecord::isItalic() const
{
    return (fontBits(*this) & fontItalic) != 0;
}

Zv::ErrorStatus ZvDbTextStyleTableRecord::setFont(const ZvString &typeface, bool bold, bool italic)
{
    if (typeface == this->typeface() && (typeface.isEmpty() || (bold == isBold() && italic == isItalic())))
        return Zv::eOk;
    Chain data(fontApplication);
    if (!typeface.isEmpty()) {
        data.addText(typeface);
        data.addLong(fontPlain | (bold ? fontBold : 0) | (italic ? fontItalic : 0));
    }
    return setXData(data.get());
}

// ---- ZvDbUCSTableRecord

void ZvDbUCSTableRecord::setOrigin(const ZvGePoint3d &origin)
{
    ZVDB_SET(m_origin, origin);
}

void ZvDbUCSTableRecord::setXAxis(const ZvGeVector3d &axis)
{
    ZVDB_SET(m_xAxis, axis);
}

void ZvDbUCSTableRecord::setYAxis(const ZvGeVector3d &axis)
{
    ZVDB_SET(m_yAxis, axis);
}

// ---- ZvDbAbstractViewTableRecord

void ZvDbAbstractViewTableRecord::setCenterPoint(const ZvGePoint2d &center)
{
    ZVDB_SET(m_center, center);
}

void ZvDbAbstractViewTableRecord::setHeight(double height)
{
    ZVDB_SET(m_height, height);
}

void ZvDbAbstractViewTableRecord::setWidth(double width)
{
    ZVDB_SET(m_width, width);
}

void ZvDbAbstractViewTableRecord::setTarget(const ZvGePoint3d &target)
{
    ZVDB_SET(m_target, target);
}

void ZvDbAbstractViewTableRecord::setViewDirection(const ZvGeVector3d &direction)
{
    ZVDB_SET(m_direction, direction);
}

void ZvDbAbstractViewTableRecord::setViewTwist(double angle)
{
    ZVDB_SET(m_twist, angle);
}

void ZvDbViewTableRecord::setIsPaperspaceView(bool paper)
{
    setFlag(1, paper);
}

// ---- ZvDbBlockTableRecord

ZvDbBlockTableRecord &ZvDbBlockTableRecord::operator=(const ZvDbBlockTableRecord &other)
{
    ZvDbSymbolTableRecord::operator=(other);
    m_origin = other.m_origin;
    m_pathName = other.m_pathName;
    m_comments = other.m_comments;
    m_layout = other.m_layout;
    m_blockFlags = other.m_blockFlags;
    m_units = other.m_units;
    return *this;
}

bool ZvDbBlockTableRecord::isAnonymous() const
{
    if (isLayout())
        return false;
    if (m_blockFlags & 1)
        return true;
    // "*U12", "*D3": a letter and a number. Some files leave the flag out.
    if (m_name.length() < 3 || m_name.at(0) != L'*')
        return false;
    for (int i = 2; i < m_name.length(); ++i) {
        if (m_name.at(i) < L'0' || m_name.at(i) > L'9')
            return false;
    }
    return true;
}

bool ZvDbBlockTableRecord::isLayout() const
{
    if (!m_layout.isNull())
        return true;
    const bool isKernelName = !m_name.isEmpty() && m_name.at(0) == L'*'; // of thousands of blocks hardly any is
    return isKernelName && (m_name.startsWithNoCase(L"*Model_Space") || m_name.startsWithNoCase(L"*Paper_Space"));
}

void ZvDbBlockTableRecord::setOrigin(const ZvGePoint3d &origin)
{
    ZVDB_SET(m_origin, origin);
}

namespace {

/// Whether anything of a block is seen: it is a layout's, or a reference to it stands in a block that is seen.
bool isShown(ZvDbDatabasePrivate &d, std::uint32_t block, std::unordered_set<std::uint32_t> &visited)
{
    if (block == 0 || d.stubs[block].isErased() || !visited.insert(block).second)
        return false;
    const ZvDbBlockTableRecord *record = zvrxCast<ZvDbBlockTableRecord>(d.objectAt(block));
    if (!record)
        return false;
    if (record->isLayout())
        return true;
    for (std::uint32_t reference : d.blockReferences(block)) {
        if (isShown(d, d.stubs[reference].owner, visited))
            return true;
    }
    return false;
}

} // namespace

Zv::ErrorStatus ZvDbBlockTableRecord::getBlockReferenceIds(ZvArray<ZvDbObjectId> &ids, bool directOnly, bool) const
{
    ids.clear();
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (!d)
        return Zv::eNoDatabase;
    std::unordered_map<std::uint32_t, bool> listed; // by the block that the reference stands in
    for (std::uint32_t reference : d->blockReferences(objectId().index())) {
        const std::uint32_t owner = d->stubs[reference].owner;
        const auto found = listed.emplace(owner, false);
        if (found.second) {
            std::unordered_set<std::uint32_t> visited;
            found.first->second = !d->stubs[owner].isErased() && (!directOnly || isShown(*d, owner, visited));
        }
        if (found.first->second)
            ids.append(d->idAt(reference));
    }
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbBlockTableRecord::newIterator(ZvDbBlockTableRecordIterator *&iterator) const
{
    iterator = new ZvDbBlockTableRecordIterator;
    const ZvDbDatabase *owner = database();
    iterator->m_database = owner ? std::uint64_t(owner->number()) << 32 : 0;
    iterator->m_entities = m_entities;
    iterator->start();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbBlockTableRecord::appendEntity(ZvDbEntity *entity, ZvDbObjectId &id)
{
    id = ZvDbObjectId();
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (!d)
        return Zv::eNoDatabase;
    if (!isWriteEnabled())
        return Zv::eNotOpenForWrite;
    const Zv::ErrorStatus status = d->q.addObject(entity, id, objectId());
    if (status != Zv::eOk)
        return status;
    m_entities.push_back(id.index());
    // The list only grows, so there is no state to keep for undo: the entity's own creation is on record.
    ZvDbObjectAccess::stub(this)->set(ZvDbStub::kModified, true);
    d->touch(objectId().index());
    return Zv::eOk;
}

int ZvDbBlockTableRecord::entityCount() const
{
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    int count = 0;
    for (std::uint32_t index : m_entities)
        count += !d->stubs[index].isErased();
    return count;
}

// ---- ZvDbBlockTableRecordIterator

void ZvDbBlockTableRecordIterator::start()
{
    m_position = 0;
    while (!done() && entityId().isErased())
        ++m_position;
}

bool ZvDbBlockTableRecordIterator::done() const
{
    return m_position >= m_entities.size();
}

void ZvDbBlockTableRecordIterator::step()
{
    if (done())
        return;
    do
        ++m_position;
    while (!done() && entityId().isErased());
}

ZvDbObjectId ZvDbBlockTableRecordIterator::entityId() const
{
    return done() ? ZvDbObjectId() : ZvDbObjectId::fromInt64(m_database | m_entities[m_position]);
}

Zv::ErrorStatus ZvDbBlockTableRecordIterator::getEntityId(ZvDbObjectId &id) const
{
    id = entityId();
    return id.isNull() ? Zv::eNullObjectId : Zv::eOk;
}

Zv::ErrorStatus ZvDbBlockTableRecordIterator::getEntity(ZvDbEntity *&entity, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(entity, entityId(), mode);
}
