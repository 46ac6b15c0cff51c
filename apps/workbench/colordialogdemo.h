// SPDX-License-Identifier: MIT
#ifndef COLORDIALOGDEMO_H
#define COLORDIALOGDEMO_H

#include "dialogdemo.h"

/// The colour dialog with each of its keys.
const QVector<DialogDemo> &colorDialogDemos();

#endif
