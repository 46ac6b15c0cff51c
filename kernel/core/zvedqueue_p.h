// SPDX-License-Identifier: MIT
#ifndef ZVEDQUEUE_P_H
#define ZVEDQUEUE_P_H

#include "core/zveditor.h"

#include <vector>

/// One piece of input as a prompt sees it.
struct ZvEdToken
{
    enum Kind {
        kNothing, ///< No input is to be had.
        kText, ///< A word, or a line where blanks belong to it. Never empty.
        kEnter,
        kCancel,
        kPoint,
        kSelection,
    };
    Kind kind = kNothing;
    ZvString text;
    ZvGePoint3d point;
    std::vector<ZvDbObjectId> ids;
};

/// The next piece from the queue, or from the host when the queue is empty. Starts a transparent command by the way.
ZvEdToken zvcoreNextToken(const ZvEdPrompt &prompt);
/// Prompt, keywords and default as the history shows them.
void zvcorePrintPrompt(const ZvEdPrompt &prompt, const ZvString &answer);
/// What failed first in the run of the queue at hand.
void zvcoreNoteError(const ZvString &text);

#endif
