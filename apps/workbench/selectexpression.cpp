// SPDX-License-Identifier: MIT
#include "selectexpression.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"
#include "textforms.h"

#include <QRegularExpression>
#include <QStringList>

#include <functional>
#include <memory>

namespace {

/// Entities of the space at hand that \a wanted takes.
void collect(const ZvDbDatabase &database, const std::function<bool(const ZvDbEntity &)> &wanted,
             std::vector<ZvDbObjectId> &ids)
{
    const ZvDbDatabase::TransientReads once(const_cast<ZvDbDatabase &>(database));
    const ZvDbObjectPointer<ZvDbBlockTableRecord> space(database.currentSpaceId(), ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *raw = nullptr;
    if (!space || space->newIterator(raw) != Zv::eOk)
        return;
    const std::unique_ptr<ZvDbBlockTableRecordIterator> iterator(raw);
    for (iterator->start(); !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbEntity> entity(iterator->entityId(), ZvDb::kForRead);
        if (entity && (!wanted || wanted(*entity)))
            ids.push_back(iterator->entityId());
    }
}

bool collectHandles(const ZvDbDatabase &database, const QString &expression, std::vector<ZvDbObjectId> &ids,
                    QString &error)
{
    const QStringList words = expression.split(QRegularExpression(QStringLiteral("[,\\s]+")), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        bool isNumber = false;
        const qulonglong handle = word.toULongLong(&isNumber, 16);
        if (!isNumber) {
            error = QStringLiteral("\"%1\" selects nothing: neither all, none, layer=, type= nor handles")
                        .arg(expression);
            return false;
        }
        const ZvDbObjectId id = database.idOfHandle(handle);
        if (id.isErased() || !id.objectClass() || !id.objectClass()->isDerivedFrom(ZvDbEntity::desc())) {
            error = QStringLiteral("There is no entity with the handle %1").arg(word);
            return false;
        }
        ids.push_back(id);
    }
    return true;
}

} // namespace

bool evaluateSelectExpression(const ZvDbDatabase &database, const QString &expression, std::vector<ZvDbObjectId> &ids,
                              QString &error)
{
    ids.clear();
    const QString trimmed = expression.trimmed();
    const auto is
        = [&trimmed](const char *word) { return trimmed.compare(QLatin1String(word), Qt::CaseInsensitive) == 0; };
    if (is("none"))
        return true;
    if (is("all")) {
        collect(database, {}, ids);
        return true;
    }
    const int equals = trimmed.indexOf(QLatin1Char('='));
    const QString key = trimmed.left(equals).trimmed().toLower();
    const ZvString name = toZvString(trimmed.mid(equals + 1).trimmed());
    if (equals > 0 && key == QLatin1String("layer")) {
        ZvDbObjectId layer;
        if (const ZvDbObjectPointer<ZvDbLayerTable> table(database.layerTableId(), ZvDb::kForRead); table)
            layer = table->getIdAt(name);
        if (layer.isNull()) {
            error = QStringLiteral("There is no layer named %1").arg(toQString(name));
            return false;
        }
        collect(
            database, [layer](const ZvDbEntity &entity) { return entity.layerId() == layer; }, ids);
        return true;
    }
    if (equals > 0 && key == QLatin1String("type")) {
        collect(
            database, [&name](const ZvDbEntity &entity) { return name.compareNoCase(entity.fileName()) == 0; }, ids);
        return true;
    }
    return collectHandles(database, trimmed, ids, error);
}
