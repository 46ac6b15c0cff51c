// SPDX-License-Identifier: MIT
#ifndef ZVDBLINETYPES_H
#define ZVDBLINETYPES_H

#include "base/zvarray.h"
#include "base/zvstring.h"
#include "db/zvdbdatabase.h"

#include <string_view>
#include <vector>

/// A line type as a line type file tells it: with names where the drawing's record has ids.
struct ZV_EXPORT ZvDbLinetypeDefinition
{
    /// One length of the pattern, with what stands at its end.
    struct Element
    {
        /// What stands at the end of the length.
        enum Kind { kPlain, kText, kShape };
        double length = 0.0; ///< Drawing units: above 0 a dash, below 0 a gap, 0 a dot.
        Kind kind = kPlain; ///< Plain: nothing stands there.
        ZvString content; ///< The text, or the name of the shape.
        ZvString style; ///< Text style of the text, or file of the shape.
        double scale = 1.0; ///< Of text or shape: the height of a text, a factor on a shape.
        double rotation = 0.0; ///< Radians.
        bool isAbsolute = false; ///< The rotation is measured from the X axis, not from the line.
        double offsetX = 0.0; ///< Drawing units, along the line.
        double offsetY = 0.0; ///< The same across the line.
    };
    ZvString name; ///< The name, as it is written in the file.
    ZvString comments; ///< The description; may be empty.
    std::vector<Element> elements; ///< The pattern, in order.
    int line = 0; ///< Of the name in the file, from 1 on.
};

/// A line type file (".lin"): lines of the form "*NAME,description", each followed by a line with the pattern,
/// "A,12.7,-6.35,0,-6.35". A length may be followed by a text or shape in brackets:
///
///     ["GAS",STANDARD,S=2.5,R=0,X=-2.5,Y=-1.25]      text, text style, scale, rotation, offsets
///     [TRACK,rails.shx,S=6.35]                       shape, shape file, the same
///
/// R= is measured from the line, A= from the X axis; both are in degrees, with an r behind it in radians, with a g in
/// grads. U= is taken as R=. Lines that begin with ";" are comments.
///
/// The file may be UTF-8 or UTF-16; otherwise its texts are in the code page that is given with it.
class ZV_EXPORT ZvDbLinetypeFile
{
public:
    /// What is wrong with a line of the file.
    struct Problem
    {
        int line = 0; ///< From 1 on.
        ZvString text; ///< What is wrong, in plain words.
    };

    /// eFileAccess for a file that cannot be read, with problem 0 telling why; eFileDamaged when there is not one line
    /// type in it. A definition that is wrong is left out, with a problem for it. \a codePage as in drawings
    /// ("ANSI_936"); empty is ANSI_1252.
    Zv::ErrorStatus read(const ZvString &path, const ZvString &codePage = ZvString());
    /// The same in the code page of a drawing.
    Zv::ErrorStatus read(const ZvString &path, const ZvDbDatabase &database);
    /// The same from memory.
    Zv::ErrorStatus parse(std::string_view bytes, const ZvString &codePage = ZvString());

    /// In file order; of several of one name, case ignored, the first.
    const std::vector<ZvDbLinetypeDefinition> &definitions() const { return m_definitions; }
    /// Case ignored; null when there is none.
    const ZvDbLinetypeDefinition *find(const ZvString &name) const;
    /// What was found wrong, in file order.
    const std::vector<Problem> &problems() const { return m_problems; }
    /// All problems, one a line: "line 12: there is no number in ...".
    ZvString problemText() const;

    /// Reads a line with a pattern into the elements. False: \a why tells what is wrong, nothing was changed.
    static bool parsePattern(const ZvString &pattern, std::vector<ZvDbLinetypeDefinition::Element> &elements,
                             ZvString &why);

private:
    std::vector<ZvDbLinetypeDefinition> m_definitions;
    std::vector<Problem> m_problems;
};

/// Adds the line type to the drawing. Shape files are looked for beside the file \a path that it comes from, compiled
/// or as source (".shp"); the usual shapes of "ltypeshp.shx" need no file. With \a redefine, one of the name is changed,
/// otherwise that is eDuplicateKey. eInvalidInput for a name that is none or a line type that cannot be changed,
/// eKeyNotFound for a text style or shape that is not to be found: \a why tells which. On failure nothing was changed.
ZV_EXPORT Zv::ErrorStatus zvdbAddLinetype(ZvDbDatabase &database, const ZvDbLinetypeDefinition &definition,
                                          const ZvString &path, bool redefine, ZvDbObjectId &id, ZvString &why);

/// eInvalidInput for a name that is none, and for a line type that keeps its name: ByLayer, ByBlock, Continuous, or one
/// of an external reference. eDuplicateKey for a name in use, case ignored.
ZV_EXPORT Zv::ErrorStatus zvdbRenameLinetype(ZvDbObjectId id, const ZvString &name);

/// Line types that nothing in the drawing refers to, in table order: no entity, layer, style or setting, and nothing in
/// the file that was read. Without ByLayer, ByBlock, Continuous and those of external references.
ZV_EXPORT void zvdbUnusedLinetypes(const ZvDbDatabase &database, ZvArray<ZvDbObjectId> &ids);
/// eObjectReferenced for a line type in use; eInvalidInput for one that every drawing has or of an external reference.
ZV_EXPORT Zv::ErrorStatus zvdbEraseLinetype(ZvDbObjectId id);

#endif
