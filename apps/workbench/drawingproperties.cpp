// SPDX-License-Identifier: MIT
#include "drawingproperties.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "textforms.h"

#include <iterator>

namespace {

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

template <class T> bool styleOf(const ZvDbEntity &entity, QString &value, ZvDbObjectId (T::*style)() const)
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

const DrawingProperty kProperties[] = {
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

} // namespace

DrawingPropertyList drawingProperties()
{
    return {std::begin(kProperties), std::end(kProperties)};
}

const DrawingProperty *drawingProperty(const char *key)
{
    for (const DrawingProperty &property : drawingProperties()) {
        if (qstrcmp(property.key, key) == 0)
            return &property;
    }
    return nullptr;
}
