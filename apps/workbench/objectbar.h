// SPDX-License-Identifier: MIT
#ifndef OBJECTBAR_H
#define OBJECTBAR_H

#include "combobar.h"
#include "kernelevents.h"

#include <functional>
#include <vector>

/// A tool bar of drop-downs that name objects of the drawing, hooked to it: styles, or what one looks at. Needs the
/// update bus on offer.
class ObjectBar : public ComboBar
{
    Q_OBJECT
public:
    /// Text, dimension, multileader and table style.
    static ObjectBar *makeStyleBar(QWidget *parent);
    /// Coordinate system, view, material and plot style.
    static ObjectBar *makeViewBar(QWidget *parent);

private:
    ObjectBar(const QString &id, const QString &title, QWidget *parent);
    template <class Combo> void add(Combo *combo, const char *id, const QString &name, const QString &toolTip);
    void fill();

    std::vector<std::function<void()>> m_fills; // of each drop-down
    KernelEvents m_events;
};

#endif
