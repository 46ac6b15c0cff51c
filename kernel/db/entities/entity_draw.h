// SPDX-License-Identifier: MIT
#ifndef ZVDB_ENTITY_DRAW_H
#define ZVDB_ENTITY_DRAW_H

#include "db/zvdbentity.h"

/// Measures what is drawn: gives entities with a composed picture their box. Text is measured by the number of its
/// characters, since the database knows no fonts; the box is rather too large than too small.
class ZvDbExtentsDraw : public ZvGiWorldDraw
{
public:
    const ZvGeExtents3d &extents() const { return m_extents; }

    ZvGiTraits &traits() override { return m_traits; }
    double deviation() const override { return 0.0; }
    void polyline(const ZvGePoint3d *points, int count, bool closed) override;
    void widePolyline(const ZvGePoint3d *points, const double *startWidths, const double *endWidths, int count, bool closed,
                      const ZvGeVector3d &normal) override;
    void arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &normal, double start, double sweep) override;
    void ellipse(const ZvGePoint3d &center, const ZvGeVector3d &majorAxis, const ZvGeVector3d &minorAxis, double start,
                 double sweep) override;
    void point(const ZvGePoint3d &position) override;
    void ray(const ZvGePoint3d &base, const ZvGeVector3d &direction, bool both) override;
    void fill(const ZvGiFill &fill) override;
    void text(const ZvGiText &text) override;
    void mtext(const ZvGiMText &text) override;
    void image(const ZvString &path, const ZvGePoint3d &origin, const ZvGeVector3d &u, const ZvGeVector3d &v,
               const std::vector<ZvGePoint2d> &clip) override;
    void block(ZvDbObjectId block, const ZvGeMatrix3d &blockToWorld) override;
    void viewport(ZvDbObjectId viewport) override;

private:
    ZvGeExtents3d m_extents;
    ZvGiTraits m_traits;
};

/// Box around the entity's own picture.
Zv::ErrorStatus zvdbExtentsOfPicture(const ZvDbEntity &entity, ZvGeExtents3d &extents);

/// Box around the entities of a block in the block's coordinates; empty when there are none. Kept until the drawing
/// changes. A block that refers to itself, and what is nested more than 32 deep, counts as empty.
ZvGeExtents3d zvdbBlockExtents(ZvDbObjectId block);

/// Whether an entity may refer to the object: it lives, is of the class, and of the entity's own drawing (any drawing for
/// an entity of none).
bool zvdbMayReferTo(const ZvDbEntity &entity, ZvDbObjectId id, const ZvRxClass *cls);

/// What an entity's picture starts with.
ZvGiTraits zvdbTraitsOf(const ZvDbEntity &entity);

/// A filled arrow head with its tip at \a tip, away from \a from. Nothing when the size or the direction is none.
void zvdbDrawArrow(ZvGiWorldDraw &draw, const ZvGePoint3d &tip, const ZvGePoint3d &from, double size, const ZvGeVector3d &normal);
/// One straight line, where its ends are usable.
void zvdbDrawLine(ZvGiWorldDraw &draw, const ZvGePoint3d &from, const ZvGePoint3d &to);

/// Estimated size of a block of text in drawing units, its formatting codes left out.
void zvdbTextBlockSize(const ZvGiMText &text, double &width, double &height);
/// Estimated length of a line of text in units of its height, control codes such as %%c counted as what they show.
double zvdbTextLength(const ZvString &text);

#endif
