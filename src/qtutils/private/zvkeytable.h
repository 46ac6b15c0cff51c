// SPDX-License-Identifier: MIT
#ifndef ZVKEYTABLE_H
#define ZVKEYTABLE_H

/// The table behind qt_key_to_ansi_vk(), with its meaning of 0 and 65535.
int zvVirtualKeyNumber(int qtKey);

#endif
