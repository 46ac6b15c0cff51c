// SPDX-License-Identifier: MIT
#include "zvdbvariables_p.h"

#include <iterator>
#include <string>
#include <unordered_map>

namespace {

typedef ZvDbVariable V;

/// Name, type, place, group code, first version, default of imperial and of metric drawings, default text or where the
/// names of ids are found, and whether only the kernel sets it.
const ZvDbVariable variables[] = {
    {"ACADVER", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, "AC1032", true},
    {"ACADMAINTVER", V::kLong, V::kHeader, 90, ZvDb::kR13, 6, 6, nullptr, true},
    {"DWGCODEPAGE", V::kText, V::kHeader, 3, ZvDb::kR12, 0, 0, "ANSI_1252", true},
    {"LASTSAVEDBY", V::kText, V::kHeader, 1, ZvDb::kR2004, 0, 0, "", false},
    {"REQUIREDVERSIONS", V::kLong, V::kHeader, 160, ZvDb::kR2013, 0, 0, nullptr, true},
    {"INSBASE", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, false},
    {"EXTMIN", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 1e+20, 1e+20, nullptr, true},
    {"EXTMAX", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, -1e+20, -1e+20, nullptr, true},
    {"LIMMIN", V::kPoint2d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, false},
    {"LIMMAX", V::kPoint2d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, false},
    {"ORTHOMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"REGENMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"FILLMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"QTEXTMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"MIRRTEXT", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"LTSCALE", V::kReal, V::kHeader, 40, ZvDb::kR12, 1, 1, nullptr, false},
    {"ATTMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"TEXTSIZE", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.2, 2.5, nullptr, false},
    {"TRACEWID", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.05, 1, nullptr, false},
    {"TEXTSTYLE", V::kNameId, V::kHeader, 7, ZvDb::kR12, 0, 0, "STYLE", false},
    {"CLAYER", V::kNameId, V::kHeader, 8, ZvDb::kR12, 0, 0, "LAYER", false},
    {"CELTYPE", V::kNameId, V::kHeader, 6, ZvDb::kR12, 0, 0, "LTYPE", false},
    {"CECOLOR", V::kColor, V::kHeader, 62, ZvDb::kR12, 0, 0, nullptr, false},
    {"CELTSCALE", V::kReal, V::kHeader, 40, ZvDb::kR13, 1, 1, nullptr, false},
    {"DISPSILH", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMSCALE", V::kReal, V::kHeader, 40, ZvDb::kR12, 1, 1, nullptr, false},
    {"DIMASZ", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.18, 2.5, nullptr, false},
    {"DIMEXO", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.0625, 0.625, nullptr, false},
    {"DIMDLI", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.38, 3.75, nullptr, false},
    {"DIMRND", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMDLE", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMEXE", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.18, 1.25, nullptr, false},
    {"DIMTP", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTM", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTXT", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.18, 2.5, nullptr, false},
    {"DIMCEN", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.09, 2.5, nullptr, false},
    {"DIMTSZ", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTOL", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMLIM", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTIH", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 0, nullptr, false},
    {"DIMTOH", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 0, nullptr, false},
    {"DIMSE1", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMSE2", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTAD", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 1, nullptr, false},
    {"DIMZIN", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 8, nullptr, false},
    {"DIMBLK", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, "", false},
    {"DIMASO", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"DIMSHO", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"DIMPOST", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, "", false},
    {"DIMAPOST", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, "", false},
    {"DIMALT", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMALTD", V::kShort, V::kHeader, 70, ZvDb::kR12, 2, 3, nullptr, false},
    {"DIMALTF", V::kReal, V::kHeader, 40, ZvDb::kR12, 25.4, 0.03937007874016, nullptr, false},
    {"DIMLFAC", V::kReal, V::kHeader, 40, ZvDb::kR12, 1, 1, nullptr, false},
    {"DIMTOFL", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 1, nullptr, false},
    {"DIMTVP", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTIX", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMSOXD", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMSAH", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMBLK1", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, "", false},
    {"DIMBLK2", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, "", false},
    {"DIMSTYLE", V::kNameId, V::kHeader, 2, ZvDb::kR12, 0, 0, "DIMSTYLE", false},
    {"DIMCLRD", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMCLRE", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMCLRT", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"DIMTFAC", V::kReal, V::kHeader, 40, ZvDb::kR12, 1, 1, nullptr, false},
    {"DIMGAP", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.09, 0.625, nullptr, false},
    {"DIMJUST", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMSD1", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMSD2", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMTOLJ", V::kShort, V::kHeader, 70, ZvDb::kR13, 1, 0, nullptr, false},
    {"DIMTZIN", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 8, nullptr, false},
    {"DIMALTZ", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMALTTZ", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMUPT", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMDEC", V::kShort, V::kHeader, 70, ZvDb::kR13, 4, 2, nullptr, false},
    {"DIMTDEC", V::kShort, V::kHeader, 70, ZvDb::kR13, 4, 2, nullptr, false},
    {"DIMALTU", V::kShort, V::kHeader, 70, ZvDb::kR13, 2, 2, nullptr, false},
    {"DIMALTTD", V::kShort, V::kHeader, 70, ZvDb::kR13, 2, 3, nullptr, false},
    {"DIMTXSTY", V::kNameId, V::kHeader, 7, ZvDb::kR13, 0, 0, "STYLE", false},
    {"DIMAUNIT", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"DIMADEC", V::kShort, V::kHeader, 70, ZvDb::kR2000, 0, 0, nullptr, false},
    {"DIMALTRND", V::kReal, V::kHeader, 40, ZvDb::kR2000, 0, 0, nullptr, false},
    {"DIMAZIN", V::kShort, V::kHeader, 70, ZvDb::kR2000, 0, 0, nullptr, false},
    {"DIMDSEP", V::kShort, V::kHeader, 70, ZvDb::kR2000, 46, 44, nullptr, false},
    {"DIMATFIT", V::kShort, V::kHeader, 70, ZvDb::kR2000, 3, 3, nullptr, false},
    {"DIMFRAC", V::kShort, V::kHeader, 70, ZvDb::kR2000, 0, 0, nullptr, false},
    {"DIMLDRBLK", V::kText, V::kHeader, 1, ZvDb::kR2000, 0, 0, "", false},
    {"DIMLUNIT", V::kShort, V::kHeader, 70, ZvDb::kR2000, 2, 2, nullptr, false},
    {"DIMLWD", V::kShort, V::kHeader, 70, ZvDb::kR2000, -2, -2, nullptr, false},
    {"DIMLWE", V::kShort, V::kHeader, 70, ZvDb::kR2000, -2, -2, nullptr, false},
    {"DIMTMOVE", V::kShort, V::kHeader, 70, ZvDb::kR2000, 0, 0, nullptr, false},
    {"DIMFXL", V::kReal, V::kHeader, 40, ZvDb::kR2007, 1, 1, nullptr, false},
    {"DIMFXLON", V::kShort, V::kHeader, 70, ZvDb::kR2007, 0, 0, nullptr, false},
    {"DIMJOGANG", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0.785398163397448, 0.785398163397448, nullptr, false},
    {"DIMTFILL", V::kShort, V::kHeader, 70, ZvDb::kR2007, 0, 0, nullptr, false},
    {"DIMTFILLCLR", V::kShort, V::kHeader, 70, ZvDb::kR2007, 0, 0, nullptr, false},
    {"DIMARCSYM", V::kShort, V::kHeader, 70, ZvDb::kR2007, 0, 0, nullptr, false},
    {"DIMLTYPE", V::kText, V::kHeader, 6, ZvDb::kR2007, 0, 0, "", false},
    {"DIMLTEX1", V::kText, V::kHeader, 6, ZvDb::kR2007, 0, 0, "", false},
    {"DIMLTEX2", V::kText, V::kHeader, 6, ZvDb::kR2007, 0, 0, "", false},
    {"DIMTXTDIRECTION", V::kShort, V::kHeader, 70, ZvDb::kR2010, 0, 0, nullptr, false},
    {"LUNITS", V::kShort, V::kHeader, 70, ZvDb::kR12, 2, 2, nullptr, false},
    {"LUPREC", V::kShort, V::kHeader, 70, ZvDb::kR12, 4, 4, nullptr, false},
    {"SKETCHINC", V::kReal, V::kHeader, 40, ZvDb::kR12, 0.1, 1, nullptr, false},
    {"FILLETRAD", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"AUNITS", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"AUPREC", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"MENU", V::kText, V::kHeader, 1, ZvDb::kR12, 0, 0, ".", false},
    {"ELEVATION", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"PELEVATION", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"THICKNESS", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"LIMCHECK", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"CHAMFERA", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"CHAMFERB", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"CHAMFERC", V::kReal, V::kHeader, 40, ZvDb::kR13, 0, 0, nullptr, false},
    {"CHAMFERD", V::kReal, V::kHeader, 40, ZvDb::kR13, 0, 0, nullptr, false},
    {"SKPOLY", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"TDCREATE", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, true},
    {"TDUCREATE", V::kReal, V::kHeader, 40, ZvDb::kR2000, 0, 0, nullptr, true},
    {"TDUPDATE", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, true},
    {"TDUUPDATE", V::kReal, V::kHeader, 40, ZvDb::kR2000, 0, 0, nullptr, true},
    {"TDINDWG", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, true},
    {"TDUSRTIMER", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, true},
    {"USRTIMER", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"ANGBASE", V::kReal, V::kHeader, 50, ZvDb::kR12, 0, 0, nullptr, false},
    {"ANGDIR", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"PDMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"PDSIZE", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"PLINEWID", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"SPLFRAME", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"SPLINETYPE", V::kShort, V::kHeader, 70, ZvDb::kR12, 6, 6, nullptr, false},
    {"SPLINESEGS", V::kShort, V::kHeader, 70, ZvDb::kR12, 8, 8, nullptr, false},
    {"HANDSEED", V::kText, V::kHeader, 5, ZvDb::kR12, 0, 0, "", true},
    {"SURFTAB1", V::kShort, V::kHeader, 70, ZvDb::kR12, 6, 6, nullptr, false},
    {"SURFTAB2", V::kShort, V::kHeader, 70, ZvDb::kR12, 6, 6, nullptr, false},
    {"SURFTYPE", V::kShort, V::kHeader, 70, ZvDb::kR12, 6, 6, nullptr, false},
    {"SURFU", V::kShort, V::kHeader, 70, ZvDb::kR12, 6, 6, nullptr, false},
    {"SURFV", V::kShort, V::kHeader, 70, ZvDb::kR12, 6, 6, nullptr, false},
    {"UCSBASE", V::kNameId, V::kHeader, 2, ZvDb::kR2000, 0, 0, "UCS", false},
    {"UCSNAME", V::kNameId, V::kHeader, 2, ZvDb::kR12, 0, 0, "UCS", true},
    {"UCSORG", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, true},
    {"UCSXDIR", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, true},
    {"UCSYDIR", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, true},
    {"UCSORTHOREF", V::kNameId, V::kHeader, 2, ZvDb::kR2000, 0, 0, "UCS", false},
    {"UCSORTHOVIEW", V::kShort, V::kHeader, 70, ZvDb::kR2000, 0, 0, nullptr, true},
    {"UCSORGTOP", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"UCSORGBOTTOM", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"UCSORGLEFT", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"UCSORGRIGHT", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"UCSORGFRONT", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"UCSORGBACK", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"PUCSBASE", V::kNameId, V::kHeader, 2, ZvDb::kR2000, 0, 0, "UCS", false},
    {"PUCSNAME", V::kNameId, V::kHeader, 2, ZvDb::kR12, 0, 0, "UCS", true},
    {"PUCSORG", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, true},
    {"PUCSXDIR", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, true},
    {"PUCSYDIR", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, true},
    {"PUCSORTHOREF", V::kNameId, V::kHeader, 2, ZvDb::kR2000, 0, 0, "UCS", false},
    {"PUCSORTHOVIEW", V::kShort, V::kHeader, 70, ZvDb::kR2000, 0, 0, nullptr, true},
    {"PUCSORGTOP", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"PUCSORGBOTTOM", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"PUCSORGLEFT", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"PUCSORGRIGHT", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"PUCSORGFRONT", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"PUCSORGBACK", V::kPoint3d, V::kHeader, 10, ZvDb::kR2000, 0, 0, nullptr, false},
    {"USERI1", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERI2", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERI3", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERI4", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERI5", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERR1", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERR2", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERR3", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERR4", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"USERR5", V::kReal, V::kHeader, 40, ZvDb::kR12, 0, 0, nullptr, false},
    {"WORLDVIEW", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, true},
    {"SHADEDGE", V::kShort, V::kHeader, 70, ZvDb::kR12, 3, 3, nullptr, false},
    {"SHADEDIF", V::kShort, V::kHeader, 70, ZvDb::kR12, 70, 70, nullptr, false},
    {"TILEMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"MAXACTVP", V::kShort, V::kHeader, 70, ZvDb::kR12, 64, 64, nullptr, false},
    {"PINSBASE", V::kPoint3d, V::kHeader, 10, ZvDb::kR13, 0, 0, nullptr, false},
    {"PLIMCHECK", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"PEXTMIN", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, 1e+20, 1e+20, nullptr, true},
    {"PEXTMAX", V::kPoint3d, V::kHeader, 10, ZvDb::kR12, -1e+20, -1e+20, nullptr, true},
    {"PLIMMIN", V::kPoint2d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, false},
    {"PLIMMAX", V::kPoint2d, V::kHeader, 10, ZvDb::kR12, 0, 0, nullptr, false},
    {"UNITMODE", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"VISRETAIN", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"PLINEGEN", V::kShort, V::kHeader, 70, ZvDb::kR12, 0, 0, nullptr, false},
    {"PSLTSCALE", V::kShort, V::kHeader, 70, ZvDb::kR12, 1, 1, nullptr, false},
    {"TREEDEPTH", V::kShort, V::kHeader, 70, ZvDb::kR13, 3020, 3020, nullptr, false},
    {"CMLSTYLE", V::kText, V::kHeader, 2, ZvDb::kR13, 0, 0, "Standard", false},
    {"CMLJUST", V::kShort, V::kHeader, 70, ZvDb::kR13, 0, 0, nullptr, false},
    {"CMLSCALE", V::kReal, V::kHeader, 40, ZvDb::kR13, 1, 20, nullptr, false},
    {"PROXYGRAPHICS", V::kShort, V::kHeader, 70, ZvDb::kR14, 1, 1, nullptr, false},
    {"MEASUREMENT", V::kShort, V::kHeader, 70, ZvDb::kR14, 0, 1, nullptr, false},
    {"CELWEIGHT", V::kShort, V::kHeader, 370, ZvDb::kR2000, -1, -1, nullptr, false},
    {"ENDCAPS", V::kShort, V::kHeader, 280, ZvDb::kR2000, 0, 0, nullptr, false},
    {"JOINSTYLE", V::kShort, V::kHeader, 280, ZvDb::kR2000, 0, 0, nullptr, false},
    {"LWDISPLAY", V::kShort, V::kHeader, 290, ZvDb::kR2000, 0, 0, nullptr, false},
    {"INSUNITS", V::kShort, V::kHeader, 70, ZvDb::kR2000, 1, 4, nullptr, false},
    {"HYPERLINKBASE", V::kText, V::kHeader, 1, ZvDb::kR2000, 0, 0, "", false},
    {"STYLESHEET", V::kText, V::kHeader, 1, ZvDb::kR2000, 0, 0, "", false},
    {"XEDIT", V::kShort, V::kHeader, 290, ZvDb::kR2000, 1, 1, nullptr, false},
    {"CEPSNTYPE", V::kShort, V::kHeader, 380, ZvDb::kR2000, 0, 0, nullptr, true},
    {"CEPSNID", V::kHandleId, V::kHeader, 390, ZvDb::kR2000, 0, 0, "ACAD_PLOTSTYLENAME", true},
    {"PSTYLEMODE", V::kShort, V::kHeader, 290, ZvDb::kR2000, 1, 1, nullptr, true},
    {"FINGERPRINTGUID", V::kText, V::kHeader, 2, ZvDb::kR2000, 0, 0, "", true},
    {"VERSIONGUID", V::kText, V::kHeader, 2, ZvDb::kR2000, 0, 0, "", true},
    {"EXTNAMES", V::kShort, V::kHeader, 290, ZvDb::kR2000, 1, 1, nullptr, false},
    {"PSVPSCALE", V::kReal, V::kHeader, 40, ZvDb::kR2000, 0, 0, nullptr, false},
    {"OLESTARTUP", V::kShort, V::kHeader, 290, ZvDb::kR2000, 0, 0, nullptr, false},
    {"SORTENTS", V::kShort, V::kHeader, 280, ZvDb::kR2004, 127, 127, nullptr, false},
    {"INDEXCTL", V::kShort, V::kHeader, 280, ZvDb::kR2004, 0, 0, nullptr, false},
    {"HIDETEXT", V::kShort, V::kHeader, 280, ZvDb::kR2004, 1, 1, nullptr, false},
    {"XCLIPFRAME", V::kShort, V::kHeader, 280, ZvDb::kR2004, 2, 2, nullptr, false},
    {"HALOGAP", V::kShort, V::kHeader, 280, ZvDb::kR2004, 0, 0, nullptr, false},
    {"OBSCOLOR", V::kShort, V::kHeader, 70, ZvDb::kR2004, 257, 257, nullptr, false},
    {"OBSLTYPE", V::kShort, V::kHeader, 280, ZvDb::kR2004, 0, 0, nullptr, false},
    {"INTERSECTIONDISPLAY", V::kShort, V::kHeader, 280, ZvDb::kR2004, 0, 0, nullptr, false},
    {"INTERSECTIONCOLOR", V::kShort, V::kHeader, 70, ZvDb::kR2004, 257, 257, nullptr, false},
    {"DIMASSOC", V::kShort, V::kHeader, 280, ZvDb::kR2004, 2, 2, nullptr, false},
    {"PROJECTNAME", V::kText, V::kHeader, 1, ZvDb::kR2004, 0, 0, "", false},
    {"CAMERADISPLAY", V::kShort, V::kHeader, 290, ZvDb::kR2007, 0, 0, nullptr, false},
    {"LENSLENGTH", V::kReal, V::kHeader, 40, ZvDb::kR2007, 50, 50, nullptr, false},
    {"CAMERAHEIGHT", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0, 0, nullptr, false},
    {"STEPSPERSEC", V::kReal, V::kHeader, 40, ZvDb::kR2007, 2, 2, nullptr, false},
    {"STEPSIZE", V::kReal, V::kHeader, 40, ZvDb::kR2007, 6, 6, nullptr, false},
    {"3DDWFPREC", V::kReal, V::kHeader, 40, ZvDb::kR2007, 2, 2, nullptr, false},
    {"PSOLWIDTH", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0.25, 5, nullptr, false},
    {"PSOLHEIGHT", V::kReal, V::kHeader, 40, ZvDb::kR2007, 4, 80, nullptr, false},
    {"LOFTANG1", V::kReal, V::kHeader, 40, ZvDb::kR2007, 1.570796326794896, 1.570796326794896, nullptr, false},
    {"LOFTANG2", V::kReal, V::kHeader, 40, ZvDb::kR2007, 1.570796326794896, 1.570796326794896, nullptr, false},
    {"LOFTMAG1", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0, 0, nullptr, false},
    {"LOFTMAG2", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0, 0, nullptr, false},
    {"LOFTPARAM", V::kShort, V::kHeader, 70, ZvDb::kR2007, 7, 7, nullptr, false},
    {"LOFTNORMALS", V::kShort, V::kHeader, 280, ZvDb::kR2007, 1, 1, nullptr, false},
    {"LATITUDE", V::kReal, V::kHeader, 40, ZvDb::kR2007, 37.795, 37.795, nullptr, false},
    {"LONGITUDE", V::kReal, V::kHeader, 40, ZvDb::kR2007, -122.394, -122.394, nullptr, false},
    {"NORTHDIRECTION", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0, 0, nullptr, false},
    {"TIMEZONE", V::kLong, V::kHeader, 70, ZvDb::kR2007, -8000, -8000, nullptr, false},
    {"LIGHTGLYPHDISPLAY", V::kShort, V::kHeader, 280, ZvDb::kR2007, 1, 1, nullptr, false},
    {"TILEMODELIGHTSYNCH", V::kShort, V::kHeader, 280, ZvDb::kR2007, 1, 1, nullptr, false},
    {"CMATERIAL", V::kHandleId, V::kHeader, 347, ZvDb::kR2007, 0, 0, "ACAD_MATERIAL", false},
    {"SOLIDHIST", V::kShort, V::kHeader, 280, ZvDb::kR2007, 0, 0, nullptr, false},
    {"SHOWHIST", V::kShort, V::kHeader, 280, ZvDb::kR2007, 1, 1, nullptr, false},
    {"DWFFRAME", V::kShort, V::kHeader, 280, ZvDb::kR2007, 2, 2, nullptr, false},
    {"DGNFRAME", V::kShort, V::kHeader, 280, ZvDb::kR2007, 0, 0, nullptr, false},
    {"REALWORLDSCALE", V::kShort, V::kHeader, 290, ZvDb::kR2007, 1, 1, nullptr, false},
    {"INTERFERECOLOR", V::kShort, V::kHeader, 62, ZvDb::kR2007, 1, 1, nullptr, false},
    {"CSHADOW", V::kShort, V::kHeader, 280, ZvDb::kR2007, 0, 0, nullptr, false},
    {"SHADOWPLANELOCATION", V::kReal, V::kHeader, 40, ZvDb::kR2007, 0, 0, nullptr, false},
    {"CMLEADERSTYLE", V::kObjectId, V::kDictionary, 1, ZvDb::kR2007, 0, 0, "ACAD_MLEADERSTYLE", false},
    {"CTABLESTYLE", V::kObjectId, V::kDictionary, 1, ZvDb::kR2004, 0, 0, "ACAD_TABLESTYLE", false},
    {"CANNOSCALE", V::kText, V::kDictionary, 1, ZvDb::kR2007, 0, 0, "1:1", false},
    {"CTAB", V::kText, V::kSession, 1, ZvDb::kR2000, 0, 0, "Model", false},
    {"CPLOTSTYLE", V::kText, V::kSession, 1, ZvDb::kR2000, 0, 0, "", false},
    {"CVPORT", V::kShort, V::kSession, 70, ZvDb::kR2000, 2, 2, nullptr, false},
};

const std::unordered_map<std::size_t, int> &numbersByHash()
{
    static const std::unordered_map<std::size_t, int> numbers = [] {
        std::unordered_map<std::size_t, int> map;
        for (int i = 0; i < zvdbVariableCount(); ++i)
            map.emplace(ZvString(variables[i].name).hashNoCase(), i);
        return map;
    }();
    return numbers;
}

} // namespace

int zvdbVariableCount()
{
    return int(std::size(variables));
}

const ZvDbVariable &zvdbVariable(int number)
{
    return variables[number];
}

int zvdbVariableNumber(const ZvString &name)
{
    const auto it = numbersByHash().find(name.hashNoCase());
    return it != numbersByHash().end() && name.compareNoCase(variables[it->second].name) == 0 ? it->second : -1;
}

const char *zvdbVariableNotice(int number)
{
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    if (number == n.cpsntype || number == n.cpsnid)
        return "CPLOTSTYLE";
    for (int space = 0; space < 2; ++space) {
        if (number == n.ucsorg[space] || number == n.ucsxdir[space] || number == n.ucsydir[space])
            return space == 0 ? "UCS" : "PUCS";
    }
    return variables[number].name;
}

const ZvDbVariableNumbers &zvdbVariableNumbers()
{
    static const ZvDbVariableNumbers numbers = [] {
        const auto of = [](const char *name) { return zvdbVariableNumber(name); };
        ZvDbVariableNumbers n;
        n.cecolor = of("CECOLOR");
        n.celtype = of("CELTYPE");
        n.celweight = of("CELWEIGHT");
        n.clayer = of("CLAYER");
        n.cmaterial = of("CMATERIAL");
        n.textstyle = of("TEXTSTYLE");
        n.dimstyle = of("DIMSTYLE");
        n.cmleaderstyle = of("CMLEADERSTYLE");
        n.ctablestyle = of("CTABLESTYLE");
        n.cannoscale = of("CANNOSCALE");
        n.celtscale = of("CELTSCALE");
        n.ltscale = of("LTSCALE");
        n.lwdisplay = of("LWDISPLAY");
        n.pstylemode = of("PSTYLEMODE");
        n.cpsntype = of("CEPSNTYPE");
        n.cpsnid = of("CEPSNID");
        n.tilemode = of("TILEMODE");
        n.ctab = of("CTAB");
        n.cplotstyle = of("CPLOTSTYLE");
        n.cvport = of("CVPORT");
        n.handseed = of("HANDSEED");
        n.insunits = of("INSUNITS");
        n.measurement = of("MEASUREMENT");
        static const char *const spaces[] = {"", "P"};
        for (int i = 0; i < 2; ++i) {
            const std::string p = spaces[i];
            n.ucsname[i] = of((p + "UCSNAME").c_str());
            n.ucsorg[i] = of((p + "UCSORG").c_str());
            n.ucsxdir[i] = of((p + "UCSXDIR").c_str());
            n.ucsydir[i] = of((p + "UCSYDIR").c_str());
            n.ucsorthoview[i] = of((p + "UCSORTHOVIEW").c_str());
            n.limmin[i] = of((p + "LIMMIN").c_str());
            n.limmax[i] = of((p + "LIMMAX").c_str());
            n.extmin[i] = of((p + "EXTMIN").c_str());
            n.extmax[i] = of((p + "EXTMAX").c_str());
        }
        return n;
    }();
    return numbers;
}
