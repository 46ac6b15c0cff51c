// SPDX-License-Identifier: MIT
#ifndef DRAWINGPROPERTIES_H
#define DRAWINGPROPERTIES_H

#include <QString>

class ZvDbDatabase;
class ZvDbEntity;

/// A setting of the drawing, and the property of an entity that goes by the same name, in the forms of textforms.h.
struct DrawingProperty
{
    const char *key;
    QString (*current)(const ZvDbDatabase &database);
    /// False for an entity that has no such property.
    bool (*ofEntity)(const ZvDbEntity &entity, QString &value);
};

/// A table that lives as long as the program.
struct DrawingPropertyList
{
    const DrawingProperty *first;
    const DrawingProperty *last;
    const DrawingProperty *begin() const { return first; }
    const DrawingProperty *end() const { return last; }
    int size() const { return int(last - first); }
};

/// All properties that the workbench tells of.
DrawingPropertyList drawingProperties();
/// Null for an unknown key.
const DrawingProperty *drawingProperty(const char *key);

#endif
