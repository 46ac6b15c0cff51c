// SPDX-License-Identifier: MIT
#ifndef ZVDBTYPES_H
#define ZVDBTYPES_H

#include "base/zverror.h"

namespace ZvDb {

/// What an object is opened for: many may read it, one may write it.
enum OpenMode { kForRead, kForWrite };

/// Line weights in hundredths of a millimetre; the negative values refer. Never scaled by zoom.
/// Entities may hold values that are none of these.
enum LineWeight : int {
    kLnWtByLwDefault = -3,
    kLnWtByBlock = -2,
    kLnWtByLayer = -1,
    kLnWt000 = 0,
    kLnWt005 = 5,
    kLnWt009 = 9,
    kLnWt013 = 13,
    kLnWt015 = 15,
    kLnWt018 = 18,
    kLnWt020 = 20,
    kLnWt025 = 25,
    kLnWt030 = 30,
    kLnWt035 = 35,
    kLnWt040 = 40,
    kLnWt050 = 50,
    kLnWt053 = 53,
    kLnWt060 = 60,
    kLnWt070 = 70,
    kLnWt080 = 80,
    kLnWt090 = 90,
    kLnWt100 = 100,
    kLnWt106 = 106,
    kLnWt120 = 120,
    kLnWt140 = 140,
    kLnWt158 = 158,
    kLnWt200 = 200,
    kLnWt211 = 211,
};

/// Versions of drawing files, in order. The names are the years by which the formats are known.
enum FileVersion { kR12, kR13, kR14, kR2000, kR2004, kR2007, kR2010, kR2013, kR2018 };

/// Kind of the plot style that an entity names.
enum PlotStyleNameType { kPlotStyleByLayer = 0, kPlotStyleByBlock = 1, kPlotStyleNormal = 2, kPlotStyleById = 3 };

/// Whether an entity is shown at all.
enum Visibility { kVisible = 0, kInvisible = 1 };
}

#endif
