// SPDX-License-Identifier: MIT
#ifndef MESSAGEBOXDEMO_H
#define MESSAGEBOXDEMO_H

#include "dialogdemo.h"

/// The uses of the message box.
const QVector<DialogDemo> &messageBoxDemos();

#endif
