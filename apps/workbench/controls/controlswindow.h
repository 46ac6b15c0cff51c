// SPDX-License-Identifier: MIT
#ifndef CONTROLSWINDOW_H
#define CONTROLSWINDOW_H

#include "controlpages.h"

#include <QDialog>
#include <QHash>

class KernelEvents;
class QLineEdit;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

/// The library's classes and dialogs, a page each: galleryGroups() says which. A page is made when it is first looked
/// at, and made anew when another drawing becomes current, since the lists of unhooked controls are filled once.
class ControlsWindow : public QDialog
{
    Q_OBJECT
public:
    explicit ControlsWindow(QWidget *parent = nullptr);
    ~ControlsWindow() override;

    /// Names of all pages, in their order.
    static QStringList pageNames();
    /// Shows the page of that name, whatever is searched for; false where there is none.
    bool showPage(const QString &name);
    QWidget *currentPage() const;

private:
    const GalleryPage *pageOf(const QString &name) const;
    void fillList();
    void filterList(const QString &text);
    void showItem(QTreeWidgetItem *item);
    void dropPages();

    QLineEdit *m_search;
    QTreeWidget *m_list;
    QStackedWidget *m_pages;
    KernelEvents *m_events;
    const QVector<GalleryGroup> m_groups;
    QHash<QString, QWidget *> m_made; // by name
    bool m_isOutdated = false; // pages are to be dropped
};

#endif
