// SPDX-License-Identifier: MIT
#ifndef GI_SHEET_H
#define GI_SHEET_H

#include "gi_drawer.h"

#include "db/zvdbdatabase.h"

/// What is seen of a space, and how large.
struct GiSheet
{
    ZvDbObjectId block;
    ZvGePoint2d center; ///< In drawing units.
    double width = 420.0; ///< Millimetres: A3 across.
    double height = 297.0;
    double unit = 1.0; ///< Millimetres of a drawing unit.
    bool isPaper = false;
};

/// Box around what is visible in a block, without an index: one pass over a drawing that may be large.
ZvGeExtents3d giVisibleExtents(ZvDbDatabase *database, ZvDbObjectId block);
/// Fits the drawing to the sheet.
void giFit(const ZvGeExtents3d &extents, double margin, GiSheet &sheet);
/// As on paper; \a plotting leaves out what is not plotted.
ZvGiRenderer::Options giPaperOptions(bool plotting);

/// Draws the sheet on whatever it is; device units are \a scale to a millimetre.
class GiSheetDrawing
{
public:
    GiSheetDrawing(ZvDbDatabase *database, const GiSheet &sheet)
        : m_database(database), m_sheet(sheet), m_styles(database), m_blocks(database, m_styles)
    {
    }

    /// Asked now and then with the part that is done; false cancels.
    using Progress = std::function<bool(double fraction)>;
    /// False when it was cancelled.
    bool draw(const ZvGiRenderer::Options &options, GiTarget target, double scale, const Progress &progress);

private:
    ZvDbDatabase *m_database;
    const GiSheet &m_sheet;
    GiStyles m_styles;
    GiBlocks m_blocks;
    GiImages m_images;
};

#endif
