// SPDX-License-Identifier: MIT
#ifndef LOOK_H
#define LOOK_H

class QApplication;
class QFont;

enum class Look { kLight, kDark };

/// Style, palette and font of the program, the same on every desktop.
void applyLook(QApplication &application, Look look = Look::kLight);
/// A font with letters of one width, as large as \a likeThis.
QFont monospaceFont(const QFont &likeThis);

#endif
