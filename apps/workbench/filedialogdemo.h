// SPDX-License-Identifier: MIT
#ifndef FILEDIALOGDEMO_H
#define FILEDIALOGDEMO_H

#include "dialogdemo.h"

/// The file dialog with each of its keys, under both of its names.
const QVector<DialogDemo> &fileDialogDemos();

#endif
