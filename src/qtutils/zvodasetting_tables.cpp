// SPDX-License-Identifier: MIT
// The facade's reading of tables and dictionaries.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvcurrentucs.h"
#include "private/zveditframe.h"
#include "private/zvresbufptr.h"
#include "private/zvtablewalk.h"
#include "private/zvtranslation.h"

#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

typedef ZevaUISetting::SigleLayerData LayerRow;
typedef ZevaUISetting::ZvsiStyleInfoItem StyleRow;
typedef ZevaUISetting::ZvsiTextStyleInfoItem TextStyleRow;
typedef ZevaUISetting::ZvsiUcsInfoItem UcsRow;

// Dictionaries are closed before the walk, as tables are.

ZvDbDatabase *orCurrent(ZvDbDatabase *database)
{
    return database ? database : curDatabase();
}

bool isBefore(const ZvString &a, const ZvString &b)
{
    return a.compare(b) < 0;
}

/// A name on its way to its place in a list.
struct SortKey
{
    std::uint64_t start; ///< The first four characters in which names may differ; most are told apart by it.
    const wchar_t *text;
    int length;
    int row;

    bool operator<(const SortKey &other) const
    {
        if (start != other.start)
            return start < other.start;
        const int order = std::wmemcmp(text, other.text, std::size_t(std::min(length, other.length)));
        return order != 0 ? order < 0 : length < other.length;
    }
};

/// Four characters of a name in one number that stands in their order. What does not fit into 16 bits ends it there.
std::uint64_t packed(const wchar_t *text, const wchar_t *end)
{
    std::uint64_t number = 0;
    for (int i = 0; i < 4; ++i) {
        number <<= 16;
        if (text == end || *text < 0)
            text = end;
        else if (*text >= 0xFFFF)
            number |= 0xFFFF;
        else
            number |= std::uint64_t(*text++);
    }
    return number;
}

/// Puts rows into the order of their names by code point. Large tables have names that begin alike, and are compared some
/// 60,000 times: what all begin with is left out, and the rest compared as a number.
template <class Row, class NameOf> void sortByName(ZvArray<Row> &rows, NameOf nameOf)
{
    std::vector<SortKey> keys;
    keys.reserve(std::size_t(rows.length()));
    int shared = rows.isEmpty() ? 0 : nameOf(rows[0]).length();
    for (int row = 0; row < rows.length(); ++row) {
        const ZvString &name = nameOf(rows[row]);
        keys.push_back({0, name.wstr(), name.length(), row});
        const SortKey &first = keys.front();
        shared = std::min(shared, name.length());
        shared = int(std::mismatch(first.text, first.text + shared, name.wstr()).first - first.text);
    }
    for (SortKey &key : keys)
        key.start = packed(key.text + shared, key.text + key.length);
    std::sort(keys.begin(), keys.end());
    ZvArray<Row> sorted(rows.length());
    for (const SortKey &key : keys)
        sorted.append(rows[key.row]);
    rows.swap(sorted);
}

/// Names met in a walk. Case counts. They are told apart by their hashes: a large table has many names that begin alike.
class SeenNames
{
public:
    /// True for the first of its name.
    bool add(const ZvString &name) { return m_names.insert(name).second; }

private:
    std::unordered_set<ZvString> m_names;
};

/// Calls \a visit with name and id of each entry in dictionary order, until it returns false.
template <class Visit> void walkDictionary(ZvDbObjectId dictionaryId, Visit visit)
{
    std::unique_ptr<ZvDbDictionaryIterator> iterator;
    {
        const ZvDbObjectPointer<ZvDbDictionary> dictionary(dictionaryId, ZvDb::kForRead);
        if (dictionary)
            iterator.reset(dictionary->newIterator());
    }
    if (!iterator)
        return;
    for (; !iterator->done(); iterator->next()) {
        if (!visit(iterator->name(), iterator->objectId()))
            return;
    }
}

ZvDbObjectId findInTable(ZvDbObjectId tableId, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbSymbolTable> table(tableId, ZvDb::kForRead);
    return table ? table->getIdAt(name) : ZvDbObjectId();
}

ZvDbObjectId findInDictionary(ZvDbObjectId dictionaryId, const ZvString &name)
{
    ZvDbObjectId found;
    walkDictionary(dictionaryId, [&](const ZvString &entry, ZvDbObjectId id) {
        if (entry.compareNoCase(name) != 0)
            return true;
        found = id;
        return false;
    });
    return found;
}

ZvString nameInDictionary(ZvDbObjectId dictionaryId, ZvDbObjectId wanted)
{
    ZvString found;
    walkDictionary(dictionaryId, [&](const ZvString &entry, ZvDbObjectId id) {
        if (id != wanted)
            return true;
        found = entry;
        return false;
    });
    return found;
}

void readStyles(ZvArray<StyleRow> &styles, ZvDbObjectId dictionaryId)
{
    SeenNames seen;
    walkDictionary(dictionaryId, [&](const ZvString &name, ZvDbObjectId id) {
        if (!name.isEmpty() && id.isValid() && seen.add(name))
            styles.append({name, id});
        return true;
    });
}

// ---- extended data

/// Walks a chain of buffers that has to read in one way only.
class ChainReader
{
public:
    explicit ChainReader(const ZvResBuf *chain) : m_next(chain) { }
    bool text(int type, const ZvString &text)
    {
        const ZvResBuf *buffer = take(type);
        return buffer && buffer->text() == text;
    }
    bool number(int type, int number)
    {
        const ZvResBuf *buffer = take(type);
        return buffer && int(buffer->number()) == number;
    }

private:
    const ZvResBuf *take(int type)
    {
        const ZvResBuf *buffer = m_next && m_next->restype == type ? m_next : nullptr;
        m_next = buffer ? buffer->rbnext : nullptr;
        return buffer;
    }

    const ZvResBuf *m_next;
};

constexpr int kDataText = 1000;
constexpr int kDataApplication = 1001;
constexpr int kDataBrace = 1002;
constexpr int kDataShort = 1070;

bool readsAnnotative(const ZvResBuf *chain)
{
    ChainReader reader(chain);
    return chain && reader.text(kDataApplication, L"AcadAnnotative") && reader.text(kDataText, L"AnnotativeData")
        && reader.text(kDataBrace, L"{") && reader.number(kDataShort, 1) && reader.number(kDataShort, 1)
        && reader.text(kDataBrace, L"}");
}

bool readsMatchOrientation(const ZvResBuf *chain)
{
    ChainReader reader(chain);
    return chain && reader.text(kDataApplication, L"AcadAnnoPO") && reader.number(kDataShort, 1);
}

// ---- cell styles

void translateCellStyle(ZvString &name)
{
    static const struct
    {
        const wchar_t *name;
        const char *shown;
    } rows[] = {{L"_TITLE", QT_TRANSLATE_NOOP("ZevaUISetting", "标题")},
                {L"_HEADER", QT_TRANSLATE_NOOP("ZevaUISetting", "表头")},
                {L"_DATA", QT_TRANSLATE_NOOP("ZevaUISetting", "数据")}};
    for (const auto &row : rows) {
        if (name.compareNoCase(row.name) == 0)
            name = zvTranslated("ZevaUISetting", row.shown);
    }
}

/// The order of the cell styles. It tests the complement of the comparison for being negative, which holds for every
/// result of 0 or above: names come out in falling order, and equal names stand before each other both ways. The lists
/// of cell styles have always been shown so.
bool cellStyleComesFirst(const ZvString &a, const ZvString &b)
{
    return ~a.toUtf8().compareNoCase(b.toUtf8()) < 0;
}

/// Insertion, since the standard sorts demand an order that equal names do not break.
void sortCellStyles(ZvArray<ZvString> &names)
{
    for (int i = 1; i < names.length(); ++i) {
        for (int j = i; j > 0 && cellStyleComesFirst(names[j], names[j - 1]); --j)
            std::swap(names[j], names[j - 1]);
    }
}

// ---- blocks

bool isSpaceName(const ZvString &name)
{
    constexpr int kPrefixLength = 12;
    return name.length() >= kPrefixLength && name.at(0) == L'*'
        && (name.startsWithNoCase(L"*MODEL_SPACE") || name.startsWithNoCase(L"*PAPER_SPACE"));
}

bool isListedBlock(const ZvDbBlockTableRecord &block, const ZvString &name, bool usedOnly)
{
    if (name.isEmpty() || isSpaceName(name) || block.isFromExternalReference() || block.isDependent()
        || block.isAnonymous())
        return false;
    if (!usedOnly)
        return true;
    ZvArray<ZvDbObjectId> references;
    block.getBlockReferenceIds(references, true, false);
    return !references.isEmpty();
}

} // namespace

// ---- layers

void ZevaUISetting::getLayerInfos(ZvArray<SigleLayerData> &layers, ZvDbDatabase *database)
{
    layers.clear();
    const ZvDbDatabase *source = database ? database : zvCurrentDocumentDatabase();
    if (!source)
        return;
    zvWalkTable(source->layerTableId(), [&layers](ZvDbObjectId id) {
        const SigleLayerData row = getLayInfo(id);
        if (!row.name.contains(L'*'))
            layers.append(row);
        return true;
    });
    sortByName(layers, [](const SigleLayerData &layer) -> const ZvString & { return layer.name; });
}

ZevaUISetting::SigleLayerData ZevaUISetting::getLayInfo(ZvDbObjectId id)
{
    SigleLayerData row;
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
    if (!layer)
        return row;
    row.name = layer->name();
    row.color = layer->color();
    row.isFrozen = layer->isFrozen();
    row.isHidden = layer->isHidden();
    row.isOff = layer->isOff();
    row.isLocked = layer->isLocked();
    return row;
}

ZevaUISetting::SigleLayerData ZevaUISetting::getLayInfo(const ZvString &name)
{
    return getLayInfo(findLayerTableRecordByName(name, nullptr));
}

bool ZevaUISetting::compareLayerInfo(SigleLayerData &a, SigleLayerData &b)
{
    return isBefore(a.name, b.name);
}

// ---- styles

bool ZevaUISetting::compareTextStyleInfo(ZvsiTextStyleInfoItem &a, ZvsiTextStyleInfoItem &b)
{
    return isBefore(a.name, b.name);
}

void ZevaUISetting::getTextStyleTableRecords(ZvArray<ZvsiTextStyleInfoItem> &styles, ZvDbDatabase *database,
                                             bool sorted)
{
    styles.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    SeenNames seen;
    ZvDbHostService *service = zvHostService();
    zvWalkRecords<ZvDbTextStyleTableRecord>(source->textStyleTableId(), [&](const ZvDbTextStyleTableRecord &record) {
        TextStyleRow row;
        row.name = record.name();
        if (!seen.add(row.name))
            return true;
        row.objectId = record.objectId();
        getAnnotationAndMatch(&record, row.isAnnotative, row.isMatchOrientation);
        row.textSize = record.textSize();
        row.xScale = record.xScale();
        row.obliquingAngle = record.obliquingAngle();
        row.firstFlag = service->textStyleFirstFlag(&record);
        row.secondFlag = service->textStyleSecondFlag(&record);
        row.isVertical = record.isVertical();
        styles.append(row);
        return true;
    });
    if (sorted)
        sortByName(styles, [](const ZvsiTextStyleInfoItem &style) -> const ZvString & { return style.name; });
}

void ZevaUISetting::getAnnotationAndMatch(const ZvDbTextStyleTableRecord *record, bool &annotative,
                                          bool &matchOrientation)
{
    annotative = false;
    matchOrientation = false;
    if (!record)
        return;
    static const ZvString annotativeData(L"AcadAnnotative");
    static const ZvString orientationData(L"AcadAnnoPO");
    annotative = readsAnnotative(ZvResBufPtr(record->xData(annotativeData)).get());
    matchOrientation = readsMatchOrientation(ZvResBufPtr(record->xData(orientationData)).get());
}

void ZevaUISetting::getDimStyleTableRecords(ZvArray<ZvsiStyleInfoItem> &styles, ZvDbDatabase *database)
{
    styles.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    SeenNames seen;
    zvWalkRecords<ZvDbDimStyleTableRecord>(source->dimStyleTableId(), [&](const ZvDbDimStyleTableRecord &record) {
        if (!record.isDependent() && seen.add(record.name()))
            styles.append({record.name(), record.objectId()});
        return true;
    });
}

void ZevaUISetting::getMleaderStyleTableRecords(ZvArray<ZvsiStyleInfoItem> &styles, ZvDbDatabase *database)
{
    styles.clear();
    if (const ZvDbDatabase *source = orCurrent(database))
        readStyles(styles, zvHostService()->mleaderStyleDictionaryId(source));
}

void ZevaUISetting::getTableStyleTableRecords(ZvArray<ZvsiStyleInfoItem> &styles, ZvDbDatabase *database)
{
    styles.clear();
    if (const ZvDbDatabase *source = orCurrent(database))
        readStyles(styles, zvHostService()->tableStyleDictionaryId(source));
}

void ZevaUISetting::getTableCellStyleNames(ZvArray<ZvString> &names, const ZvDbObjectId &tableStyle)
{
    names.clear();
    if (tableStyle.isNull())
        return;
    {
        const ZvDbObjectPointer<ZvDbTableStyle> style(tableStyle, ZvDb::kForRead);
        if (!style)
            return;
        style->getCellStyles(names);
    }
    for (ZvString &name : names)
        translateCellStyle(name);
    sortCellStyles(names);
}

// ---- other named objects

void ZevaUISetting::getBlockNames(ZvArray<ZvString> &names, ZvDbDatabase *database, bool usedOnly)
{
    names.clear();
    ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    ZvEditFrame frame(source); // the search for references may write in kernels that keep an index
    const auto iterator = zvNewTableIterator(source->blockTableId());
    if (!iterator)
        return; // the frame is aborted
    SeenNames seen;
    for (iterator->start(); !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbBlockTableRecord> block(iterator->getRecordId(), ZvDb::kForRead);
        ZvString name;
        if (block && block->getName(name) == Zv::eOk && isListedBlock(*block, name, usedOnly) && seen.add(name))
            names.append(name);
    }
    frame.end();
    sortByName(names, [](const ZvString &name) -> const ZvString & { return name; });
}

void ZevaUISetting::getHatchNames(ZvArray<ZvString> &names, ZvDbDatabase *database)
{
    names.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    ZvDbHostService *service = zvHostService();
    const ZvDbObjectId space = source->tilemode() ? service->modelSpaceId(source) : service->paperSpaceId(source);
    std::unique_ptr<ZvDbBlockTableRecordIterator> iterator;
    {
        const ZvDbObjectPointer<ZvDbBlockTableRecord> block(space, ZvDb::kForRead);
        ZvDbBlockTableRecordIterator *made = nullptr;
        if (block)
            block->newIterator(made);
        iterator.reset(made);
    }
    if (!iterator)
        return;
    SeenNames seen;
    for (; !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbHatch> hatch(iterator->entityId(), ZvDb::kForRead);
        if (!hatch)
            continue;
        const ZvString name = hatch->patternName();
        if (!name.isEmpty() && seen.add(name))
            names.append(name);
    }
}

void ZevaUISetting::getMaterials(ZvArray<ZvString> &names, ZvArray<ZvDbObjectId> &ids, ZvDbDatabase *database)
{
    names.clear();
    ids.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    walkDictionary(zvHostService()->materialDictionaryId(source), [&](const ZvString &name, ZvDbObjectId id) {
        if (!name.isEmpty() && id.isValid()) {
            names.append(name);
            ids.append(id);
        }
        return true;
    });
}

void ZevaUISetting::getPlotStyleNames(ZvArray<ZvString> &names, ZvDbDatabase *database)
{
    names.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    SeenNames seen;
    walkDictionary(zvHostService()->plotStyleDictionaryId(source), [&](const ZvString &name, ZvDbObjectId id) {
        if (!name.isEmpty() && id.isValid() && seen.add(name))
            names.append(name);
        return true;
    });
}

void ZevaUISetting::getUcses(ZvArray<ZvsiUcsInfoItem> &items, ZvDbDatabase *database)
{
    items.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    static const struct
    {
        UcsItemType type;
        const char *text;
    } sides[] = {{kUcsTop, QT_TRANSLATE_NOOP("ZevaUISetting", "俯视")},
                 {kUcsBottom, QT_TRANSLATE_NOOP("ZevaUISetting", "仰视")},
                 {kUcsLeft, QT_TRANSLATE_NOOP("ZevaUISetting", "左视")},
                 {kUcsRight, QT_TRANSLATE_NOOP("ZevaUISetting", "右视")},
                 {kUcsFront, QT_TRANSLATE_NOOP("ZevaUISetting", "前视")},
                 {kUcsBack, QT_TRANSLATE_NOOP("ZevaUISetting", "后视")}};
    const auto shown = [](const char *text) { return zvTranslated("ZevaUISetting", text); };

    if (ZvCurrentUcs(*source).isUnnamed())
        items.append({shown(QT_TRANSLATE_NOOP("ZevaUISetting", "未命名")), ZvDbObjectId(), kUcsUnnamed});
    const bool hasPrevious = zvHasPreviousUcs();
    items.append({shown(QT_TRANSLATE_NOOP("ZevaUISetting", "世界")), ZvDbObjectId(), kUcsWorld});
    if (hasPrevious)
        items.append({shown(QT_TRANSLATE_NOOP("ZevaUISetting", "上一个")), ZvDbObjectId(), kUcsPrevious});
    for (const auto &side : sides)
        items.append({shown(side.text), ZvDbObjectId(), side.type});
    zvWalkRecords<ZvDbUCSTableRecord>(source->UCSTableId(), [&items](const ZvDbUCSTableRecord &record) {
        if (!record.isDependent() && !record.name().isEmpty())
            items.append(UcsRow {record.name(), record.objectId(), kUcsNamed});
        return true;
    });
}

void ZevaUISetting::getCustomViews(ZvArray<ZvsiViewInfoItem> &items, ZvDbDatabase *database)
{
    items.clear();
    const ZvDbDatabase *source = orCurrent(database);
    if (!source)
        return;
    const bool isOnPaper = zvIsPaperWorkedOn(*source);
    zvWalkRecords<ZvDbViewTableRecord>(source->viewTableId(), [&](const ZvDbViewTableRecord &record) {
        if (!record.isDependent() && !record.name().isEmpty() && record.isPaperspaceView() == isOnPaper)
            items.append({record.name(), record.objectId()});
        return true;
    });
}

// ---- finders

ZvDbObjectId ZevaUISetting::findTextStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database)
{
    ZvDbObjectId found;
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return found;
    zvWalkRecords<ZvDbTextStyleTableRecord>(source->textStyleTableId(), [&](const ZvDbTextStyleTableRecord &record) {
        if (record.name().compareNoCase(name) != 0)
            return true;
        found = record.objectId();
        return false;
    });
    return found;
}

ZvDbObjectId ZevaUISetting::findDimStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database)
{
    ZvDbObjectId last;
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return last;
    // The last record read is the answer, found or not: callers that write a style by an unknown name get the last one
    // of the table, unlike with text styles.
    zvWalkRecords<ZvDbDimStyleTableRecord>(source->dimStyleTableId(), [&](const ZvDbDimStyleTableRecord &record) {
        last = record.objectId();
        return record.name().compareNoCase(name) != 0;
    });
    return last;
}

ZvDbObjectId ZevaUISetting::findMleaderStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return ZvDbObjectId();
    return findInDictionary(zvHostService()->mleaderStyleDictionaryId(source), name);
}

ZvDbObjectId ZevaUISetting::findTableStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return ZvDbObjectId();
    return findInDictionary(zvHostService()->tableStyleDictionaryId(source), name);
}

ZvDbObjectId ZevaUISetting::findLineStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return ZvDbObjectId();
    return findInTable(source->linetypeTableId(), name);
}

ZvDbObjectId ZevaUISetting::findMaterialByName(const ZvString &name, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return ZvDbObjectId();
    return findInDictionary(zvHostService()->materialDictionaryId(source), name);
}

ZvDbObjectId ZevaUISetting::findLayerTableRecordByName(const ZvString &name, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || name.isEmpty())
        return ZvDbObjectId();
    return findInTable(source->layerTableId(), name);
}

ZvString ZevaUISetting::findMleaderStyleTableRecordById(const ZvDbObjectId &id, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || !id.isValid())
        return ZvString();
    return nameInDictionary(zvHostService()->mleaderStyleDictionaryId(source), id);
}

ZvString ZevaUISetting::findTableStyleTableRecordById(const ZvDbObjectId &id, ZvDbDatabase *database)
{
    const ZvDbDatabase *source = orCurrent(database);
    if (!source || !id.isValid())
        return ZvString();
    return nameInDictionary(zvHostService()->tableStyleDictionaryId(source), id);
}
