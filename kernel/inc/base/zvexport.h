// SPDX-License-Identifier: MIT
#ifndef ZVEXPORT_H
#define ZVEXPORT_H

/// Marks what a library shows to others; everything else is built with hidden visibility.
#define ZV_EXPORT __attribute__((visibility("default")))

#endif
