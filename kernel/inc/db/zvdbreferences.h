// SPDX-License-Identifier: MIT
#ifndef ZVDBREFERENCES_H
#define ZVDBREFERENCES_H

#include "base/zvexport.h"
#include "db/zvdbobjectid.h"

/// Whether a setting of the drawing or an object that is not erased refers to the object, other than as to something
/// that it owns. Every object of the drawing is looked at, which for one that has just been read means that all of it
/// is decoded. Of proxies and extended data the handles count, whatever they are for; names in them are only texts.
ZV_EXPORT bool zvdbIsReferenced(ZvDbObjectId id);

#endif
