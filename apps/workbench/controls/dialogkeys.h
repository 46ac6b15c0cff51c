// SPDX-License-Identifier: MIT
#ifndef DIALOGKEYS_H
#define DIALOGKEYS_H

#include <QVector>

/// A key of a common dialog, as a caller writes or reads it.
struct DialogKey
{
    enum Kind { kInteger, kBool, kText, kWideText, kTree, kObject };
    /// Bits. A dialog answers some in the parameters that it was given, others in its result tree.
    enum Way { kParameter = 1, kAnswer = 2, kResult = 4 };

    const char *name;
    Kind kind;
    unsigned way;
    const char *initial; ///< What the dialog takes when the key is missing, as a person writes it; empty for nothing.
    const char *meaning; ///< To be translated in the context "DialogKeys".
};

/// A dialog of "Dialog/Common" with all its keys.
struct DialogDescription
{
    const char *name;
    const char *purpose; ///< One sentence, to be translated in the context "DialogKeys".
    QVector<DialogKey> keys;
};

const QVector<DialogDescription> &dialogDescriptions();
/// The dialog of that name, which must be one of dialogDescriptions().
const DialogDescription &dialogDescription(const char *name);

/// Name of a kind, for people.
const char *dialogKeyKindName(DialogKey::Kind kind);

#endif
