// SPDX-License-Identifier: MIT
#ifndef PREVIEWPANEL_H
#define PREVIEWPANEL_H

#include "kernelevents.h"

#include "db/zvdbentity.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class QLabel;
class ZvQtImageWidget;

/// A picture of the selected entities. Of a large selection it shows the first ones, since each paint draws them anew.
///
/// It shows copies: what the user erases or undoes meanwhile does not concern them. It is brought up to date while it
/// is visible, once the event loop is idle.
class PreviewPanel : public QWidget
{
    Q_OBJECT
public:
    explicit PreviewPanel(QWidget *parent = nullptr);
    ~PreviewPanel() override;

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showSelection();
    void showLater();

    KernelEvents m_events;
    QTimer m_later;
    std::vector<std::unique_ptr<ZvDbEntity>> m_copies; // what the picture shows
    ZvQtImageWidget *m_picture;
    QLabel *m_summary;
};

#endif
