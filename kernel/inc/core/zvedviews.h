// SPDX-License-Identifier: MIT
#ifndef ZVEDVIEWS_H
#define ZVEDVIEWS_H

#include "base/zvexport.h"
#include "base/zvstring.h"
#include "db/zvdbdatabase.h"

/// What the host's view shows now, as the named view \a name: a new one, or the one that has the name already.
/// eNoDatabase without a view to look at, eInvalidInput for a name that tables refuse.
ZV_EXPORT Zv::ErrorStatus zvedSaveView(ZvDbDatabase &database, const ZvString &name, ZvDbObjectId &id);
/// Shows a named view, in the space that it was saved in. eKeyNotFound for an id that is none.
ZV_EXPORT Zv::ErrorStatus zvedRestoreView(ZvDbDatabase &database, ZvDbObjectId id);

#endif
