// SPDX-License-Identifier: MIT
#ifndef ZVCURRENTUCS_H
#define ZVCURRENTUCS_H

#include "base/zvge3d.h"
#include "db/zvdbobjectid.h"

class ZvDbDatabase;

/// Whether the active viewport of the current document, whatever drawing is read, has a system to go back to.
/// \throws ZvError_NotThatKindOfClass where the active viewport is something else.
bool zvHasPreviousUcs();

/// The coordinate system in force in the space that is worked in.
struct ZvCurrentUcs
{
    explicit ZvCurrentUcs(const ZvDbDatabase &drawing);

    bool isWorld() const;
    bool isUnnamed() const { return name.isNull() && orthographic == 0 && !isWorld(); }

    ZvDbObjectId name; ///< Of its record; null for one without a name.
    int orthographic = 0; ///< A ZevaUISetting::UcsItemType from top to right, 0 for none of them.
    ZvGePoint3d origin;
    ZvGeVector3d x;
    ZvGeVector3d y;
};

#endif
