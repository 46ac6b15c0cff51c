// SPDX-License-Identifier: MIT
#ifndef ZVSELECTIONSUMMARY_H
#define ZVSELECTIONSUMMARY_H

#include "base/zvarray.h"
#include "zvglobaluireactorhelp.h"

/// Brings summaries up to date with a selection that is not empty, by the kernel's summary over all of it at once: those
/// of the library's ten classes that were reset before. A summary of any other class has a merge() of its own, and goes
/// to \a leftover: its entities have to be opened one by one. The others go there with it, so that no entity is opened
/// twice, unless the kernel's summary is at hand from before. With a null entry all do, since the scan then runs to its
/// end whatever they say.
///
/// The last result is remembered: with selection and drawing unchanged the cost does not depend on the number of
/// entities.
void zvSummarizeSelection(const long selectionName[2], const ZvArray<ZvGlobalUIReactorHelp::SPickFirstInfo *> &infos,
                          ZvArray<ZvGlobalUIReactorHelp::SPickFirstInfo *> &leftover);

#endif
