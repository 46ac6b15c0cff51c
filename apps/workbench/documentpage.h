// SPDX-License-Identifier: MIT
#ifndef DOCUMENTPAGE_H
#define DOCUMENTPAGE_H

#include "drawingview.h"
#include "kernelevents.h"

#include <QTabBar>
#include <QWidget>

/// A document's page in the window: its drawing view, and below it a tab for each layout.
class DocumentPage : public QWidget
{
    Q_OBJECT
public:
    /// The document must outlive the page.
    explicit DocumentPage(ZvApDocument *document, QWidget *parent = nullptr);

    ZvApDocument *document() const { return m_view->document(); }
    DrawingView *view() const { return m_view; }
    QTabBar *layoutTabs() const { return m_layouts; }
    /// Makes view and tabs show the layout at hand.
    void layoutSwitched();

Q_SIGNALS:
    /// A layout's tab was chosen.
    void layoutWanted(const QString &name);
    /// Something in the drawing or its settings has changed.
    void drawingChanged();

private:
    void refresh(bool picture);
    void fillLayouts();

    DrawingView *m_view;
    QTabBar *m_layouts;
    DatabaseWatcher m_watcher;
};

#endif
