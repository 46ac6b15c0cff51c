// SPDX-License-Identifier: MIT
#ifndef PRINTPREVIEWDEMO_H
#define PRINTPREVIEWDEMO_H

#include "dialogdemo.h"

/// The print preview of pages, without and with its print action. None of them prints.
const QVector<DialogDemo> &printPreviewDemos();

#endif
