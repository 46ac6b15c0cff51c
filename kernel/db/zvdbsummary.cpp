// SPDX-License-Identifier: MIT
#include "db/zvdbsummary.h"

#include "db/zvdbentities.h"
#include "zvdbdatabase_p.h"

namespace {

typedef ZvDbEntitySummary Summary;

/// An entity of one pair, opened when something asks for it.
class PairEntity
{
public:
    explicit PairEntity(ZvDbObjectId id) : m_id(id) { }
    ~PairEntity()
    {
        if (m_entity)
            m_entity->close();
    }
    PairEntity(const PairEntity &) = delete;
    PairEntity &operator=(const PairEntity &) = delete;

    /// Null where it cannot be opened, and for the null id.
    const ZvDbEntity *get()
    {
        if (!m_tried)
            zvdbOpenObject(m_entity, m_id, ZvDb::kForRead);
        m_tried = true;
        return m_entity;
    }

private:
    const ZvDbObjectId m_id;
    ZvDbEntity *m_entity = nullptr;
    bool m_tried = false;
};

/// A style and the classes that have it.
struct StyleRow
{
    Summary::Property property;
    ZvDbObjectId Summary::*value;
    bool (*read)(const ZvDbEntity &entity, ZvDbObjectId &style); // false: of another class
    bool ofOneClass;
};

bool readTableStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    const auto *table = zvrxCast<ZvDbTable>(&entity);
    if (table)
        style = table->tableStyle();
    return table != nullptr;
}

bool readDimStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    const auto *dimension = zvrxCast<ZvDbDimension>(&entity);
    if (dimension)
        style = dimension->dimensionStyle();
    return dimension != nullptr;
}

bool readMLeaderStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    const auto *leader = zvrxCast<ZvDbMLeader>(&entity);
    if (leader)
        style = leader->MLeaderStyle();
    return leader != nullptr;
}

bool readTextStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    if (const auto *text = zvrxCast<ZvDbText>(&entity))
        style = text->textStyle();
    else if (const auto *mtext = zvrxCast<ZvDbMText>(&entity))
        style = mtext->textStyle();
    else if (const auto *dimension = zvrxCast<ZvDbDimension>(&entity))
        style = dimension->textStyleId();
    else if (const auto *leader = zvrxCast<ZvDbMLeader>(&entity))
        style = leader->textStyleId();
    else
        return false;
    return true;
}

constexpr StyleRow kStyles[] = {
    {Summary::kTableStyle, &Summary::tableStyle, readTableStyle, true},
    {Summary::kDimStyle, &Summary::dimStyle, readDimStyle, true},
    {Summary::kTextStyle, &Summary::textStyle, readTextStyle, false},
    {Summary::kMLeaderStyle, &Summary::mleaderStyle, readMLeaderStyle, true},
};
constexpr unsigned kStyleProperties = Summary::kAllProperties & ~Summary::kCommonProperties;

/// Whether both combinations show the same plot style without a look at names.
bool samePlotStyle(const ZvDbEntityProperties &a, const ZvDbEntityProperties &b)
{
    return a.plotStyleType == b.plotStyleType && a.plotStyle == b.plotStyle;
}

class Summarizer
{
public:
    Summarizer(ZvDbDatabasePrivate &database, const std::vector<ZvDbObjectId> &ids, unsigned wanted, Summary &summary)
        : m_database(database),
          m_ids(ids),
          m_base(std::uint64_t(database.number) << 32),
          m_numbers(database.propertyNumbers.data()),
          m_count(database.propertyNumbers.size()),
          m_allReadable(database.erasedBits.empty() && database.writeCount == 0),
          m_wanted(wanted & Summary::kAllProperties),
          m_summary(summary),
          m_isKnown(database.propertiesTable.end())
    {
        m_isKnown[0] = true; // an absent entity has nothing to compare
    }

    bool run()
    {
        const std::size_t n = m_ids.size();
        const std::size_t half = (n + 1) / 2;
        const char *const isKnown = m_isKnown.data();
        fetchNumbers();
        bool readsAll = (pending() & kStyleProperties) != 0;
        for (std::size_t i = 0; i < half; ++i) {
            const std::size_t j = n - 1 - i;
            if (i + kAhead < half) {
                fetchNumber(m_ids[i + kAhead]);
                fetchNumber(m_ids[j - kAhead]);
            }
            std::uint32_t first = 0;
            std::uint32_t second = 0;
            if (!readNumber(m_ids[i], first) || (j != i && !readNumber(m_ids[j], second)))
                return false;
            if (isKnown[first] && isKnown[second] && !readsAll)
                continue; // nearly always: nothing else is read then
            takePair(m_ids[i], first, m_ids[j], second);
            if (!pending())
                return true;
            readsAll = (pending() & kStyleProperties) != 0;
        }
        return true;
    }

private:
    static constexpr std::size_t kAhead = 32; // pairs between the fetch of a number and its use
    static constexpr std::size_t kPerLine = 64 / sizeof(std::uint32_t); // numbers that come from memory together

    /// Numbers fetched here and there keep the processor waiting. To fetch them all in order is quicker by far where a
    /// good part of them is wanted.
    void fetchNumbers() const
    {
        if (m_ids.size() < m_count / 8 || !isScattered())
            return;
        const volatile std::uint32_t *const numbers = m_numbers; // read for the sake of reading
        for (std::size_t i = 0; i < m_count; i += kPerLine)
            static_cast<void>(numbers[i]);
    }

    /// Selections are seldom in the order of the drawing; a few neighbours tell.
    bool isScattered() const
    {
        constexpr std::size_t kSamples = 32;
        const std::size_t step = m_ids.size() / kSamples + 1;
        std::size_t apart = 0;
        for (std::size_t i = 1; i < m_ids.size(); i += step)
            apart += m_ids[i].asInt64() - m_ids[i - 1].asInt64() + kPerLine > 2 * kPerLine;
        return apart > kSamples / 4;
    }

    void fetchNumber(ZvDbObjectId id) const
    {
        const std::uint64_t index = id.asInt64() - m_base;
        if (index < m_count)
            __builtin_prefetch(m_numbers + index);
    }

    unsigned pending() const { return m_wanted & ~m_summary.mixed; }
    void setMixed(unsigned properties) { m_summary.mixed |= properties; }

    /// Number of the entity's combination, 0 where it cannot be opened. False for an id of elsewhere.
    bool readNumber(ZvDbObjectId id, std::uint32_t &number) const
    {
        const std::uint64_t index = id.asInt64() - m_base;
        if (index >= m_count)
            return index <= 0xFFFFFFFF;
        number = m_numbers[index];
        if (!m_allReadable && number && !isReadable(std::uint32_t(index)))
            number = 0;
        return true;
    }

    bool isReadable(std::uint32_t index) const
    {
        if (m_database.isErasedAt(index))
            return false;
        // Hardly ever is anything open for write in here; a look at every block would cost most of the time.
        return m_database.writeCount == 0 || !m_database.stubs[index].has(ZvDbStub::kOpenForWrite);
    }

    void takePair(ZvDbObjectId firstId, std::uint32_t first, ZvDbObjectId secondId, std::uint32_t second)
    {
        PairEntity a(first ? firstId : ZvDbObjectId());
        PairEntity b(second ? secondId : ZvDbObjectId());
        if (!m_first) {
            takeFirst(a.get(), first, b.get(), second);
        } else {
            compare(a, first);
            compare(b, second);
        }
        if (pending() & kStyleProperties)
            takeStyles(a.get(), b.get());
    }

    /// The first pair with an entity in it gives the values.
    void takeFirst(const ZvDbEntity *a, std::uint32_t first, const ZvDbEntity *b, std::uint32_t second)
    {
        const ZvDbEntity *entity = a ? a : b;
        if (!entity)
            return;
        m_first = a ? first : second;
        m_summary.color = entity->color();
        m_summary.linetype = entity->linetype();
        m_summary.lineWeight = entity->lineWeight();
        m_summary.layer = entity->layerId();
        m_summary.material = entity->material();
        m_summary.plotStyle = entity->plotStyleName();
        if (a && b)
            setMixed(differences(*b, second));
        m_summary.found |= m_wanted & Summary::kCommonProperties & ~m_summary.mixed;
        m_isKnown[first] = m_isKnown[second] = true;
    }

    void compare(PairEntity &entity, std::uint32_t number)
    {
        if (m_isKnown[number] || !(pending() & Summary::kCommonProperties))
            return;
        if (const ZvDbEntity *opened = entity.get())
            setMixed(differences(*opened, number));
        m_isKnown[number] = true;
    }

    /// The pending common properties in which an entity differs from the first one. Different records may have one name.
    unsigned differences(const ZvDbEntity &entity, std::uint32_t number) const
    {
        const ZvDbEntityProperties &a = m_database.propertiesTable.at(m_first);
        const ZvDbEntityProperties &b = m_database.propertiesTable.at(number);
        unsigned result = 0;
        if (a.color != b.color)
            result |= Summary::kColor;
        if (a.lineWeight != b.lineWeight)
            result |= Summary::kLineWeight;
        if (a.layer != b.layer)
            result |= Summary::kLayer;
        if (a.linetype != b.linetype && entity.linetype() != m_summary.linetype)
            result |= Summary::kLinetype;
        if (a.material != b.material && entity.material() != m_summary.material)
            result |= Summary::kMaterial;
        if (!samePlotStyle(a, b) && entity.plotStyleName() != m_summary.plotStyle)
            result |= Summary::kPlotStyle;
        return result & pending();
    }

    void takeStyles(const ZvDbEntity *a, const ZvDbEntity *b)
    {
        if (!a && !b)
            return;
        for (const StyleRow &row : kStyles) {
            if (pending() & row.property)
                takeStyle(row, a, b);
        }
    }

    void takeStyle(const StyleRow &row, const ZvDbEntity *a, const ZvDbEntity *b)
    {
        ZvDbObjectId first;
        ZvDbObjectId second;
        if ((row.ofOneClass && !a) || (a && !row.read(*a, first)) || (b && !row.read(*b, second))
            || (a && b && first != second)) {
            setMixed(row.property);
            return;
        }
        const ZvDbObjectId value = a ? first : second;
        if (!(m_summary.found & row.property)) {
            m_summary.*row.value = value;
            m_summary.found |= row.property;
        } else if (m_summary.*row.value != value) {
            setMixed(row.property);
        }
    }

    ZvDbDatabasePrivate &m_database;
    const std::vector<ZvDbObjectId> &m_ids;
    const std::uint64_t m_base; // first id of the database
    const std::uint32_t *const m_numbers; // by position
    const std::size_t m_count;
    const bool m_allReadable; // nothing was ever erased, and nothing is open for write
    const unsigned m_wanted;
    Summary &m_summary;
    std::vector<char> m_isKnown; // combinations that were compared, by number
    std::uint32_t m_first = 0; // combination that the values come from
};

} // namespace

bool zvdbSummarizeEntities(const std::vector<ZvDbObjectId> &ids, unsigned wanted, ZvDbEntitySummary &summary)
{
    summary = ZvDbEntitySummary();
    if (ids.empty() || !(wanted & ZvDbEntitySummary::kAllProperties))
        return true;
    ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(ids.front());
    if (!database || !Summarizer(*database, ids, wanted, summary).run()) {
        summary = ZvDbEntitySummary();
        return false;
    }
    return true;
}
