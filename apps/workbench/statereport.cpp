// SPDX-License-Identifier: MIT
#include "statereport.h"

#include "core/zvapdocument.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "textforms.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonValue>
#include <QTableWidget>
#include <QToolBar>

#include <functional>
#include <iterator>

namespace {

QJsonArray documents()
{
    QJsonArray list;
    const ZvApDocManager *manager = zvDocManagerPtr();
    for (int i = 0; manager && i < manager->documentCount(); ++i) {
        const ZvApDocument *document = manager->documentAt(i);
        int layers = 0;
        int entities = 0;
        if (const ZvDbDatabase *database = document->database()) {
            entities = database->entityCount();
            if (const ZvDbObjectPointer<ZvDbLayerTable> table(database->layerTableId(), ZvDb::kForRead); table)
                layers = table->count();
        }
        list << QJsonObject {{QStringLiteral("path"), toQString(document->fileName())},
                             {QStringLiteral("modified"), document->isModified()},
                             {QStringLiteral("entities"), entities},
                             {QStringLiteral("layers"), layers}};
    }
    return list;
}

/// The text style of the kinds of entity that have one; false for the others.
bool textStyleOf(const ZvDbEntity &entity, QString &value)
{
    if (const auto *text = zvrxCast<ZvDbText>(&entity))
        value = nameOf(text->textStyle());
    else if (const auto *mtext = zvrxCast<ZvDbMText>(&entity))
        value = nameOf(mtext->textStyle());
    else if (const auto *dimension = zvrxCast<ZvDbDimension>(&entity))
        value = nameOf(dimension->textStyleId());
    else if (const auto *leader = zvrxCast<ZvDbMLeader>(&entity))
        value = nameOf(leader->textStyleId());
    else
        return false;
    return true;
}

template<class T>
bool styleOf(const ZvDbEntity &entity, QString &value, ZvDbObjectId (T::*style)() const)
{
    const auto *object = zvrxCast<T>(&entity);
    if (!object)
        return false;
    value = nameOf((object->*style)());
    return true;
}

bool layoutOf(const ZvDbEntity &entity, QString &value)
{
    const ZvDbObjectPointer<ZvDbBlockTableRecord> block(entity.blockId(), ZvDb::kForRead);
    if (!block)
        return false;
    value = nameOf(block->layoutId());
    return true;
}

/// A setting of the drawing, and the property of an entity that goes by the same name.
struct Property
{
    const char *key;
    QString (*current)(const ZvDbDatabase &database);
    /// False for an entity that has no such property.
    bool (*ofEntity)(const ZvDbEntity &entity, QString &value);
};

const Property kProperties[] = {
    {"layer", [](const ZvDbDatabase &d) { return nameOf(d.clayer()); },
     [](const ZvDbEntity &e, QString &value) {
         value = toQString(e.layer());
         return true;
     }},
    {"color", [](const ZvDbDatabase &d) { return colorText(d.cecolor()); },
     [](const ZvDbEntity &e, QString &value) {
         value = colorText(e.color());
         return true;
     }},
    {"linetype", [](const ZvDbDatabase &d) { return nameOf(d.celtype()); },
     [](const ZvDbEntity &e, QString &value) {
         value = toQString(e.linetype());
         return true;
     }},
    {"lineweight", [](const ZvDbDatabase &d) { return lineWeightText(d.celweight()); },
     [](const ZvDbEntity &e, QString &value) {
         value = lineWeightText(e.lineWeight());
         return true;
     }},
    {"textstyle", [](const ZvDbDatabase &d) { return nameOf(d.textstyle()); }, textStyleOf},
    {"dimstyle", [](const ZvDbDatabase &d) { return nameOf(d.dimstyle()); },
     [](const ZvDbEntity &e, QString &value) { return styleOf(e, value, &ZvDbDimension::dimensionStyle); }},
    {"mleaderstyle", [](const ZvDbDatabase &d) { return nameOf(d.mleaderstyle()); },
     [](const ZvDbEntity &e, QString &value) { return styleOf(e, value, &ZvDbMLeader::MLeaderStyle); }},
    {"tablestyle", [](const ZvDbDatabase &d) { return nameOf(d.tablestyle()); },
     [](const ZvDbEntity &e, QString &value) { return styleOf(e, value, &ZvDbTable::tableStyle); }},
    {"material",
     [](const ZvDbDatabase &d) {
         const QString name = nameOf(d.cmaterial());
         return name.isEmpty() ? QStringLiteral("ByLayer") : name;
     },
     [](const ZvDbEntity &e, QString &value) {
         value = toQString(e.material());
         return true;
     }},
    {"plotstyle", [](const ZvDbDatabase &d) { return toQString(d.cplotstyle()); },
     [](const ZvDbEntity &e, QString &value) {
         value = toQString(e.plotStyleName());
         return true;
     }},
    {"ucs", [](const ZvDbDatabase &d) { return ucsText(d); }, [](const ZvDbEntity &, QString &) { return false; }},
    {"layout", [](const ZvDbDatabase &d) { return toQString(d.currentLayoutName()); }, layoutOf},
};
constexpr std::size_t kPropertyCount = std::size(kProperties);

QJsonObject current(const ZvDbDatabase *database)
{
    QJsonObject object;
    for (const Property &property : kProperties)
        object.insert(QLatin1String(property.key), database ? QJsonValue(property.current(*database)) : QJsonValue());
    return object;
}

QJsonObject selection(const ZvApDocument *document)
{
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    const ZvEdSelectionHolder *holder = context ? context->selectionHolder() : nullptr;
    const std::vector<ZvDbObjectId> ids = holder ? holder->ids() : std::vector<ZvDbObjectId>();

    QString common[kPropertyCount];
    bool agrees[kPropertyCount];
    std::fill(std::begin(agrees), std::end(agrees), !ids.empty());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const ZvDbObjectPointer<ZvDbEntity> entity(ids[i], ZvDb::kForRead);
        for (std::size_t p = 0; p < kPropertyCount; ++p) {
            QString value;
            if (!agrees[p])
                continue;
            agrees[p] = entity && kProperties[p].ofEntity(*entity, value) && (i == 0 || value == common[p]);
            common[p] = value;
        }
    }
    QJsonObject object {{QStringLiteral("count"), int(ids.size())}};
    for (std::size_t p = 0; p < kPropertyCount; ++p)
        object.insert(QLatin1String(kProperties[p].key), agrees[p] ? QJsonValue(common[p]) : QJsonValue());
    return object;
}

QJsonObject controlState(const QWidget &control)
{
    QString text = control.property("text").toString();
    QJsonArray rows;
    if (const auto *combo = qobject_cast<const QComboBox *>(&control)) {
        text = combo->currentText();
        for (int i = 0; i < combo->count(); ++i)
            rows << combo->itemText(i);
    }
    return {{QStringLiteral("class"), QLatin1String(control.metaObject()->className())},
            {QStringLiteral("name"), control.objectName()},
            {QStringLiteral("enabled"), control.isEnabled()},
            {QStringLiteral("text"), text},
            {QStringLiteral("rows"), rows}};
}

QJsonArray controls(const QWidget &window)
{
    QJsonArray list;
    const QList<QToolBar *> bars = window.findChildren<QToolBar *>();
    for (const QToolBar *bar : bars) {
        const QList<QWidget *> widgets = bar->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            // The mixin of all controls that follow the drawing; it is no QObject, so only its name can be asked for.
            if (widget->qt_metacast("CZvQtControlHelp"))
                list << controlState(*widget);
        }
    }
    return list;
}

}

QJsonObject stateReport(const QWidget &window)
{
    const ZvApDocManager *manager = zvDocManagerPtr();
    const ZvApDocument *document = manager ? manager->currentDocument() : nullptr;
    return {{QStringLiteral("documents"), documents()},
            {QStringLiteral("current"), current(document ? document->database() : nullptr)},
            {QStringLiteral("selection"), selection(document)},
            {QStringLiteral("controls"), controls(window)}};
}
