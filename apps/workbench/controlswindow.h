// SPDX-License-Identifier: MIT
#ifndef CONTROLSWINDOW_H
#define CONTROLSWINDOW_H

#include <QDialog>

class QLabel;
class QWidget;

/// The library's controls unhooked, a page for each family: what they emit stands below.
class ControlsWindow : public QDialog
{
    Q_OBJECT
public:
    explicit ControlsWindow(QWidget *parent = nullptr);

private:
    QWidget *makeColorPage();
    QWidget *makePicturePage();
    void tell(const QString &line);

    QLabel *m_last;
};

#endif
