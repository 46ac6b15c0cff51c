// SPDX-License-Identifier: MIT
#ifndef CONTROLSWINDOW_H
#define CONTROLSWINDOW_H

#include <QDialog>

class QLabel;
class QWidget;

/// The library's controls, a page for each family, unhooked unless they say otherwise: what they emit stands below.
class ControlsWindow : public QDialog
{
    Q_OBJECT
public:
    explicit ControlsWindow(QWidget *parent = nullptr);
    ~ControlsWindow() override;

private:
    QWidget *makeColorPage();
    QWidget *makeLayerPage();
    QWidget *makePicturePage();
    QWidget *makeLineTypePage();
    QWidget *makeLineWeightPage();
    QWidget *makeLinetypeTablePage();
    QWidget *makeImageComboPage();
    QWidget *makeFieldPage();
    QWidget *makeButtonPage();
    QWidget *makeGradientPage();
    void tell(const QString &line);

    QLabel *m_last;
};

#endif
