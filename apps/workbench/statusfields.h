// SPDX-License-Identifier: MIT
#ifndef STATUSFIELDS_H
#define STATUSFIELDS_H

#include "base/zvge3d.h"

#include <QObject>

class QLabel;
class QStatusBar;
class QToolButton;
class ZvApDocument;

/// The fields of the status bar: coordinates, selection, layer, layout and the line weight switch.
class StatusFields : public QObject
{
    Q_OBJECT
public:
    /// Adds the fields; the bar owns them and this object.
    explicit StatusFields(QStatusBar *bar);
    /// In the current coordinate system.
    void showCoordinates(const ZvGePoint3d &point);
    void clearCoordinates();
    /// Null shows empty fields.
    void showDocument(ZvApDocument *document);
    void setProgressWidget(QWidget *widget);

Q_SIGNALS:
    void lineWeightsToggled(bool on);

private:
    QStatusBar *m_bar;
    QLabel *m_coordinates;
    QLabel *m_selection;
    QLabel *m_layerColor;
    QLabel *m_layer;
    QLabel *m_layout;
    QToolButton *m_lineWeights;
};

#endif
