// SPDX-License-Identifier: MIT
#ifndef STATEREPORT_H
#define STATEREPORT_H

#include <QJsonObject>

class QWidget;

/// What is open, set, selected and shown, for people and tests that drive the workbench without hands.
///
/// Keys: "documents", "current", "selection", "controls"; the man page tells them all. The controls are those below
/// \a window's tool bars that follow the drawing.
QJsonObject stateReport(const QWidget &window);

#endif
