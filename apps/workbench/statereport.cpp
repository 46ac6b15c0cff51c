// SPDX-License-Identifier: MIT
#include "statereport.h"

#include "core/zvapdocument.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"
#include "drawingproperties.h"
#include "textforms.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonValue>
#include <QTableWidget>
#include <QToolBar>
#include <QVector>

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
        list << QJsonObject{{QStringLiteral("path"), toQString(document->fileName())},
                            {QStringLiteral("modified"), document->isModified()},
                            {QStringLiteral("entities"), entities},
                            {QStringLiteral("layers"), layers}};
    }
    return list;
}

QJsonObject current(const ZvDbDatabase *database)
{
    QJsonObject object;
    for (const DrawingProperty &property : drawingProperties())
        object.insert(QLatin1String(property.key), database ? QJsonValue(property.current(*database)) : QJsonValue());
    return object;
}

QJsonObject selection(const ZvApDocument *document)
{
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    const ZvEdSelectionHolder *holder = context ? context->selectionHolder() : nullptr;
    const std::vector<ZvDbObjectId> ids = holder ? holder->ids() : std::vector<ZvDbObjectId>();

    const DrawingPropertyList properties = drawingProperties();
    QVector<QString> common(properties.size());
    QVector<bool> agrees(properties.size(), !ids.empty());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const ZvDbObjectPointer<ZvDbEntity> entity(ids[i], ZvDb::kForRead);
        for (int p = 0; p < properties.size(); ++p) {
            QString value;
            if (!agrees[p])
                continue;
            agrees[p] = entity && properties.first[p].ofEntity(*entity, value) && (i == 0 || value == common[p]);
            common[p] = value;
        }
    }
    QJsonObject object{{QStringLiteral("count"), int(ids.size())}};
    for (int p = 0; p < properties.size(); ++p)
        object.insert(QLatin1String(properties.first[p].key), agrees[p] ? QJsonValue(common[p]) : QJsonValue());
    return object;
}

QJsonObject controlState(const QWidget &control)
{
    QString text = control.property("text").toString();
    QJsonArray rows;
    if (const auto *combo = qobject_cast<const QComboBox *>(&control)) {
        text = combo->currentText();
        for (int i = 0; i < combo->count(); ++i)
            rows << combo->model()->index(i, combo->model()->columnCount() - 1).data().toString();
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

} // namespace

QJsonObject stateReport(const QWidget &window)
{
    const ZvApDocManager *manager = zvDocManagerPtr();
    const ZvApDocument *document = manager ? manager->currentDocument() : nullptr;
    return {{QStringLiteral("documents"), documents()},
            {QStringLiteral("current"), current(document ? document->database() : nullptr)},
            {QStringLiteral("selection"), selection(document)},
            {QStringLiteral("controls"), controls(window)}};
}
