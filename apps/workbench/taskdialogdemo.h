// SPDX-License-Identifier: MIT
#ifndef TASKDIALOGDEMO_H
#define TASKDIALOGDEMO_H

#include "dialogdemo.h"

/// The task dialog in each of its uses.
const QVector<DialogDemo> &taskDialogDemos();

#endif
