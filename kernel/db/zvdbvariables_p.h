// SPDX-License-Identifier: MIT
#ifndef ZVDBVARIABLES_P_H
#define ZVDBVARIABLES_P_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"
#include "db/zvresbuf.h"

/// What is known of one of the drawing's variables. All stand in one table, in file order.
struct ZvDbVariable
{
    enum Type : std::uint8_t {
        kShort, ///< 16-bit integer or switch; also those of code 290
        kLong, ///< 32-bit integer
        kReal,
        kText,
        kPoint2d,
        kPoint3d,
        kColor, ///< Text "BYLAYER", "BYBLOCK", an index or "RGB:r,g,b" to the outside, an index in the file.
        kNameId, ///< An id that stands as a name: in the file, and to the outside.
        kHandleId, ///< An id that stands as a handle in the file, as a name to the outside.
        kObjectId, ///< An id to the outside; kept by name in the drawing's dictionary of variables.
    };
    enum Place : std::uint8_t {
        kHeader, ///< In the HEADER section.
        kDictionary, ///< As an object in the drawing's dictionary of variables, by name.
        kSession, ///< In no file.
    };
    const char *name; ///< Without "$".
    Type type;
    Place place;
    std::int16_t code; ///< Group code; the first of two or three for points.
    ZvDb::FileVersion since; ///< First version whose files hold it.
    double imperial; ///< Default number, or all coordinates of it.
    double metric;
    const char *text; ///< Default text. Of ids: the table ("LAYER") or root dictionary ("ACAD_MATERIAL") of the names.
    bool readOnly;
};

struct ZvDbVariableValue
{
    double real[3] = {0, 0, 0};
    long long integer = 0;
    ZvString text;
    ZvDbObjectId id;
    ZvCmColor color;

    bool operator==(const ZvDbVariableValue &o) const
    {
        return real[0] == o.real[0] && real[1] == o.real[1] && real[2] == o.real[2] && integer == o.integer
            && text == o.text && id == o.id && color == o.color;
    }
};

/// Numbers of the variables that the kernel itself asks for.
struct ZvDbVariableNumbers
{
    int cecolor, celtype, celweight, clayer, cmaterial, textstyle, dimstyle, cmleaderstyle, ctablestyle, cannoscale;
    int celtscale, ltscale, lwdisplay, pstylemode, cpsntype, cpsnid, tilemode, ctab, cplotstyle, cvport, handseed,
        insunits, measurement;
    /// Of model space and of paper space.
    int ucsname[2], ucsorg[2], ucsxdir[2], ucsydir[2], ucsorthoview[2];
    int limmin[2], limmax[2], extmin[2], extmax[2];
};

int zvdbVariableCount();
const ZvDbVariable &zvdbVariable(int number);
/// -1 for a name that is none. Case ignored, without "$".
int zvdbVariableNumber(const ZvString &name);
const ZvDbVariableNumbers &zvdbVariableNumbers();
/// The name under which a change of the variable is told: several make up "CPLOTSTYLE", "UCS" and "PUCS".
const char *zvdbVariableNotice(int number);

#endif
