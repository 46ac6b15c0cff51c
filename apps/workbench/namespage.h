// SPDX-License-Identifier: MIT
#ifndef NAMESPAGE_H
#define NAMESPAGE_H

#include <QString>

#include <functional>

class QWidget;

/// A page with the drop-downs of names for dialogs, fed from the open drawing; \a tell is told what they emit.
QWidget *makeNamesPage(const std::function<void(const QString &)> &tell);

#endif
