// SPDX-License-Identifier: MIT
#include "propertyrow.h"

#include "core/zvapdocument.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"
#include "drawingproperties.h"
#include "textforms.h"
#include "zvodasetting.h"

#include <QHash>
#include <QPainter>
#include <QPair>
#include <QPixmap>

#include <iterator>

using namespace ZvGlobalUIReactorHelp;

/// What one property has of its own.
struct PropertySpec
{
    const char *key; // of drawingProperties()
    const char *label;
    bool ofEveryEntity;
    bool takesText;
    SPickFirstInfo *(*makeInfo)();
    QString (*uniformText)(const SPickFirstInfo &info);
    QStringList (*choices)(ZvDbDatabase &database);
    bool (*write)(const QString &value);
};

namespace {

constexpr int kHeaviestLine = ZvDb::kLnWt211;

template <class Info> SPickFirstInfo *makeInfo()
{
    return new Info;
}

template <class Info> const auto &valueOf(const SPickFirstInfo &info)
{
    return static_cast<const Info &>(info).value;
}

void addOnce(QStringList &list, const QString &name)
{
    if (!name.isEmpty() && !list.contains(name, Qt::CaseInsensitive))
        list << name;
}

QStringList namesOf(const ZvArray<ZvString> &names, QStringList list)
{
    for (const ZvString &name : names)
        addOnce(list, toQString(name));
    return list;
}

QStringList styleNames(void (*read)(ZvArray<ZevaUISetting::ZvsiStyleInfoItem> &, ZvDbDatabase *),
                       ZvDbDatabase &database)
{
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    read(styles, &database);
    QStringList names;
    for (const ZevaUISetting::ZvsiStyleInfoItem &style : styles)
        addOnce(names, toQString(style.name));
    return names;
}

/// What colorText() writes, back to the colour.
bool parseColor(const QString &text, ZvCmColor &color)
{
    const QString word = text.trimmed();
    if (word.compare(QLatin1String("ByLayer"), Qt::CaseInsensitive) == 0) {
        color.setColorMethod(ZvCm::kByLayer);
        return true;
    }
    if (word.compare(QLatin1String("ByBlock"), Qt::CaseInsensitive) == 0) {
        color.setColorMethod(ZvCm::kByBlock);
        return true;
    }
    const QStringList parts = word.split(QLatin1Char(','));
    int numbers[3] = {};
    for (int i = 0; i < parts.size() && i < 3; ++i) {
        bool ok = false;
        numbers[i] = parts[i].trimmed().toInt(&ok);
        if (!ok || numbers[i] < 0 || numbers[i] > 255)
            return false;
    }
    if (parts.size() == 3)
        color.setRGB(std::uint8_t(numbers[0]), std::uint8_t(numbers[1]), std::uint8_t(numbers[2]));
    else if (parts.size() == 1 && numbers[0] > 0)
        color.setColorIndex(std::uint16_t(numbers[0]));
    else
        return false;
    return true;
}

QStringList colorChoices(ZvDbDatabase &)
{
    QStringList list{QStringLiteral("ByLayer"), QStringLiteral("ByBlock")};
    for (int index = 1; index <= 9; ++index)
        list << QString::number(index);
    return list;
}

bool writeColor(const QString &value)
{
    ZvCmColor color;
    if (!parseColor(value, color))
        return false;
    ZevaUISetting::setCeColor(color);
    return true;
}

QList<ZvDb::LineWeight> lineWeights()
{
    QList<ZvDb::LineWeight> weights{ZvDb::kLnWtByLayer, ZvDb::kLnWtByBlock, ZvDb::kLnWtByLwDefault};
    for (int weight = 0; weight <= kHeaviestLine; ++weight) {
        if (*ZevaUISetting::getLineName(false, ZvDb::LineWeight(weight)))
            weights << ZvDb::LineWeight(weight);
    }
    return weights;
}

QStringList lineWeightChoices(ZvDbDatabase &)
{
    QStringList list;
    for (const ZvDb::LineWeight weight : lineWeights())
        list << lineWeightText(weight);
    return list;
}

bool writeLineWeight(const QString &value)
{
    for (const ZvDb::LineWeight weight : lineWeights()) {
        if (lineWeightText(weight) == value) {
            ZevaUISetting::setCeWeight(weight);
            return true;
        }
    }
    return false;
}

QStringList layerChoices(ZvDbDatabase &database)
{
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, &database);
    QStringList list;
    for (const ZevaUISetting::SigleLayerData &layer : layers)
        addOnce(list, toQString(layer.name));
    return list;
}

QStringList lineTypeChoices(ZvDbDatabase &database)
{
    // Those that every drawing has come first.
    QStringList list{QStringLiteral("ByLayer"), QStringLiteral("ByBlock"), QStringLiteral("Continuous")};
    const ZvDbObjectPointer<ZvDbLinetypeTable> table(database.linetypeTableId(), ZvDb::kForRead);
    ZvDbSymbolTableIterator *raw = nullptr;
    if (!table || table->newIterator(raw) != Zv::eOk)
        return list;
    const std::unique_ptr<ZvDbSymbolTableIterator> iterator(raw);
    for (; !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(iterator->getRecordId(), ZvDb::kForRead);
        if (record && !record->isDependent())
            addOnce(list, toQString(record->name()));
    }
    return list;
}

QStringList materialChoices(ZvDbDatabase &database)
{
    ZvArray<ZvString> names;
    ZvArray<ZvDbObjectId> ids;
    ZevaUISetting::getMaterials(names, ids, &database);
    return namesOf(names, {QStringLiteral("ByLayer"), QStringLiteral("ByBlock")});
}

QStringList plotStyleChoices(ZvDbDatabase &database)
{
    ZvArray<ZvString> names;
    ZevaUISetting::getPlotStyleNames(names, &database);
    return namesOf(names, {QStringLiteral("ByLayer"), QStringLiteral("ByBlock"), QStringLiteral("Normal")});
}

QStringList textStyleChoices(ZvDbDatabase &database)
{
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> styles;
    ZevaUISetting::getTextStyleTableRecords(styles, &database, true);
    QStringList names;
    for (const ZevaUISetting::ZvsiTextStyleInfoItem &style : styles)
        addOnce(names, toQString(style.name));
    return names;
}

QStringList dimStyleChoices(ZvDbDatabase &database)
{
    return styleNames(ZevaUISetting::getDimStyleTableRecords, database);
}

QStringList mleaderStyleChoices(ZvDbDatabase &database)
{
    return styleNames(ZevaUISetting::getMleaderStyleTableRecords, database);
}

QStringList tableStyleChoices(ZvDbDatabase &database)
{
    return styleNames(ZevaUISetting::getTableStyleTableRecords, database);
}

/// Most setters of the facade: by name.
template <void (*set)(const ZvDbObjectId &, const ZvString &)> bool writeName(const QString &value)
{
    set(ZvDbObjectId(), toZvString(value));
    return true;
}

bool writeLayer(const QString &value)
{
    return ZevaUISetting::setCLayer(ZvDbObjectId(), toZvString(value));
}

template <class Info> QString uniformName(const SPickFirstInfo &info)
{
    return toQString(valueOf<Info>(info));
}

template <class Info> QString uniformRecord(const SPickFirstInfo &info)
{
    return nameOf(valueOf<Info>(info));
}

/// Calls \a visit with every entity that can be opened.
template <class Visit> void visitEntities(const std::vector<ZvDbObjectId> &ids, Visit visit)
{
    ZvDbDatabase *database = curDatabase();
    if (!database)
        return;
    const ZvDbDatabase::TransientReads once(*database);
    for (const ZvDbObjectId id : ids) {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (entity)
            visit(id, *entity);
    }
}

// clang-format off
const PropertySpec kSpecs[] = {
    {"layer", QT_TRANSLATE_NOOP("PropertyRow", "Layer"), true, false, makeInfo<SLayerInfo>, uniformRecord<SLayerInfo>,
     layerChoices, writeLayer},
    {"color", QT_TRANSLATE_NOOP("PropertyRow", "Colour"), true, true, makeInfo<SColorInfo>,
     [](const SPickFirstInfo &info) { return colorText(valueOf<SColorInfo>(info)); }, colorChoices, writeColor},
    {"linetype", QT_TRANSLATE_NOOP("PropertyRow", "Line type"), true, false, makeInfo<SLineTypeInfo>,
     uniformName<SLineTypeInfo>, lineTypeChoices, writeName<ZevaUISetting::setCeLType>},
    {"lineweight", QT_TRANSLATE_NOOP("PropertyRow", "Line weight"), true, false, makeInfo<SLineWeightInfo>,
     [](const SPickFirstInfo &info) { return lineWeightText(valueOf<SLineWeightInfo>(info)); }, lineWeightChoices, writeLineWeight},
    {"material", QT_TRANSLATE_NOOP("PropertyRow", "Material"), true, false, makeInfo<SMaterialInfo>,
     uniformName<SMaterialInfo>, materialChoices, writeName<ZevaUISetting::setCMaterial>},
    {"plotstyle", QT_TRANSLATE_NOOP("PropertyRow", "Plot style"), true, false, makeInfo<SPlotStyleInfo>,
     uniformName<SPlotStyleInfo>, plotStyleChoices, writeName<ZevaUISetting::setCPlotStyle>},
    {"textstyle", QT_TRANSLATE_NOOP("PropertyRow", "Text style"), false, false, makeInfo<STextStyleInfo>,
     uniformRecord<STextStyleInfo>, textStyleChoices, writeName<ZevaUISetting::setCTextStyle>},
    {"dimstyle", QT_TRANSLATE_NOOP("PropertyRow", "Dimension style"), false, false, makeInfo<SDimStyleInfo>,
     uniformRecord<SDimStyleInfo>, dimStyleChoices, writeName<ZevaUISetting::setCDimStyle>},
    {"mleaderstyle", QT_TRANSLATE_NOOP("PropertyRow", "Multileader style"), false, false, makeInfo<SMleaderStyleInfo>,
     uniformRecord<SMleaderStyleInfo>, mleaderStyleChoices, writeName<ZevaUISetting::setCMLeaderStyle>},
    {"tablestyle", QT_TRANSLATE_NOOP("PropertyRow", "Table style"), false, false, makeInfo<STableStyleInfo>,
     uniformRecord<STableStyleInfo>, tableStyleChoices, writeName<ZevaUISetting::setCTableStyle>},
};
// clang-format on

} // namespace

/// Puts entities into groups of one value.
class PropertyRow::ValueSorter
{
public:
    explicit ValueSorter(const PropertySpec &spec) : m_spec(spec), m_property(*drawingProperty(spec.key)) { }

    /// The group of an entity, a new one at the end where none fits.
    int indexOf(const ZvDbEntity &entity)
    {
        // Entities of one combination of common properties have the same value: it is read once for each.
        if (!m_spec.ofEveryEntity)
            return readIndexOf(entity);
        const auto known = m_ofCombination.constFind(entity.propertiesNumber());
        if (known != m_ofCombination.constEnd())
            return *known;
        const int index = readIndexOf(entity);
        m_ofCombination.insert(entity.propertiesNumber(), index);
        return index;
    }
    int count() const { return m_values.size(); }
    const ValueCount &value(int index) const { return m_values[index]; }

private:
    int readIndexOf(const ZvDbEntity &entity)
    {
        QString value;
        const bool isPresent = m_property.ofEntity(entity, value);
        const QPair<bool, QString> key(isPresent, value);
        const auto known = m_ofValue.constFind(key);
        if (known != m_ofValue.constEnd())
            return *known;
        m_ofValue.insert(key, m_values.size());
        m_values.append({value, isPresent, 0});
        return m_values.size() - 1;
    }

    const PropertySpec &m_spec;
    const DrawingProperty &m_property;
    QHash<std::uint32_t, int> m_ofCombination;
    QHash<QPair<bool, QString>, int> m_ofValue;
    QVector<ValueCount> m_values;
};

int PropertyRow::count()
{
    return int(std::size(kSpecs));
}

PropertyRow::PropertyRow(int index, QObject *parent) : QObject(parent), m_spec(kSpecs[index]), m_info(m_spec.makeInfo())
{
    setObjectName(QLatin1String("property.") + QLatin1String(m_spec.key));
    pickFirstInfo = m_info.get();
}

PropertyRow::~PropertyRow() = default;

QString PropertyRow::label() const
{
    return tr(m_spec.label);
}

QIcon PropertyRow::icon(const QString &value) const
{
    ZvCmColor color;
    const std::uint32_t *palette = zvcmAcadPalette(0xFFFFFF);
    if (!m_spec.takesText || !parseColor(value, color) || color.isByLayer() || color.isByBlock())
        return QIcon();
    QColor shown(color.red(), color.green(), color.blue());
    if (color.isByACI() && palette) {
        const std::uint32_t packed = palette[color.colorIndex()]; // red in the low byte
        shown = QColor(packed & 0xFF, (packed >> 8) & 0xFF, (packed >> 16) & 0xFF);
    }
    QPixmap swatch(16, 16);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.setPen(QColor(110, 118, 128));
    painter.setBrush(shown);
    painter.drawRect(2, 2, 11, 11);
    return QIcon(swatch);
}

void PropertyRow::acceptUpdateUI(const CZvGlobalUIReactorHelp &)
{
    // Nothing is filtered: a reading is cheap, and the panel is to show what every notice brings.
    refresh();
}

void PropertyRow::refresh()
{
    const ZvDbDatabase *database = curDatabase();
    m_mixed = database && m_info->status == kInfoMixed;
    m_enabled = database && m_info->status != kInfoNoDocument;
    m_text.clear();
    if (m_mixed)
        m_text = tr("mixed");
    else if (database && m_info->status == kInfoNoSelection)
        m_text = drawingProperty(m_spec.key)->current(*database);
    else if (database && m_info->status == kInfoUniform)
        m_text = m_spec.uniformText(*m_info);
    Q_EMIT refreshed();
}

QStringList PropertyRow::choices() const
{
    ZvDbDatabase *database = curDatabase();
    return database ? m_spec.choices(*database) : QStringList();
}

bool PropertyRow::takesText() const
{
    return m_spec.takesText;
}

bool PropertyRow::write(const QString &value)
{
    return m_enabled && m_spec.write(value);
}

QVector<PropertyRow::ValueCount> PropertyRow::countValues(const std::vector<ZvDbObjectId> &ids) const
{
    ValueSorter sorter(m_spec);
    QVector<int> counts;
    visitEntities(ids, [&](ZvDbObjectId, const ZvDbEntity &entity) {
        const int index = sorter.indexOf(entity);
        if (index >= counts.size())
            counts.append(0);
        ++counts[index];
    });
    QVector<ValueCount> values;
    for (int i = 0; i < sorter.count(); ++i) {
        values.append(sorter.value(i));
        values.last().count = counts[i];
    }
    return values;
}

std::vector<ZvDbObjectId> PropertyRow::entitiesWith(const ValueCount &value, const std::vector<ZvDbObjectId> &ids) const
{
    ValueSorter sorter(m_spec);
    std::vector<ZvDbObjectId> found;
    visitEntities(ids, [&](ZvDbObjectId id, const ZvDbEntity &entity) {
        const ValueCount &own = sorter.value(sorter.indexOf(entity));
        if (own.isPresent == value.isPresent && own.value == value.value)
            found.push_back(id);
    });
    return found;
}
