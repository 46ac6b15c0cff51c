// SPDX-License-Identifier: MIT
#ifndef TEXTFORMS_H
#define TEXTFORMS_H

#include "base/zvcmcolor.h"
#include "base/zvjson.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"

#include <QString>

class ZvDbDatabase;

/// \file
/// The forms in which the workbench writes the drawing's values for people and for the state file.

QString toQString(const ZvString &text);
ZvString toZvString(const QString &text);

/// "ByLayer", "ByBlock", an index such as "7", or red, green and blue such as "255,128,0".
QString colorText(const ZvCmColor &color);
/// "ByLayer", "ByBlock", "Default", or millimetres such as "0.25".
QString lineWeightText(ZvDb::LineWeight weight);
/// Name of a table record or of an object in a dictionary; empty for an id that is neither.
QString nameOf(ZvDbObjectId id);
/// The coordinate system at hand: its name, else "World", the name of the orthographic one ("Top"...), or "Unnamed".
QString ucsText(const ZvDbDatabase &database);
/// A number as the command line takes it, without loss.
QString numberText(double value);
/// A property bag on one line, such as {"ControlBtn": 6, "title": "plan.dxf"}.
QString bagText(const ZvJsonPtr &bag);

#endif
