// SPDX-License-Identifier: MIT
#include "controlswindow.h"

#include "kernelevents.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QSplitter>
#include <QStackedWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int kPurposeRole = Qt::UserRole;
constexpr QSize kSize{1000, 620};
constexpr int kListWidth = 250;

} // namespace

ControlsWindow::ControlsWindow(QWidget *parent)
    : QDialog(parent), m_search(new QLineEdit), m_list(new QTreeWidget), m_pages(new QStackedWidget),
      m_events(new KernelEvents(this)), m_groups(galleryGroups())
{
    setObjectName(QStringLiteral("controlsWindow"));
    setWindowTitle(tr("Controls"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_search->setObjectName(QStringLiteral("searchPages"));
    m_search->setAccessibleName(tr("Search the pages"));
    m_search->setPlaceholderText(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_list->setObjectName(QStringLiteral("pageList"));
    m_list->setAccessibleName(tr("Pages"));
    m_list->setHeaderHidden(true);
    m_list->setIndentation(12);
    m_list->setTextElideMode(Qt::ElideMiddle);
    auto *left = new QWidget;
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_search);
    column->addWidget(m_list);
    auto *splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(left);
    splitter->addWidget(m_pages);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({kListWidth, kSize.width() - kListWidth});
    auto *whole = new QVBoxLayout(this);
    whole->addWidget(splitter);
    fillList();
    connect(m_search, &QLineEdit::textChanged, this, &ControlsWindow::filterList);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ControlsWindow::showItem);
    const auto outdated = [this] {
        if (std::exchange(m_isOutdated, true))
            return;
        // After the notice, which some of the controls may be in.
        QTimer::singleShot(0, this, &ControlsWindow::dropPages);
    };
    connect(m_events, &KernelEvents::documentBecameCurrent, this, outdated);
    connect(m_events, &KernelEvents::documentDestroyed, this, outdated);
    resize(kSize);
    showPage(pageNames().first());
}

const GalleryPage *ControlsWindow::pageOf(const QString &name) const
{
    for (const GalleryGroup &group : m_groups) {
        for (const GalleryPage &page : group.pages) {
            if (page.name == name)
                return &page;
        }
    }
    return nullptr;
}

ControlsWindow::~ControlsWindow()
{
    hide(); // a field that loses the keyboard tells so, and what it is told to is still there
}

QStringList ControlsWindow::pageNames()
{
    QStringList names;
    const QVector<GalleryGroup> groups = galleryGroups();
    for (const GalleryGroup &group : groups) {
        for (const GalleryPage &page : group.pages)
            names << page.name;
    }
    return names;
}

bool ControlsWindow::showPage(const QString &name)
{
    if (!pageOf(name))
        return false;
    for (QTreeWidgetItem *item : m_list->findItems(name, Qt::MatchExactly | Qt::MatchRecursive)) {
        if (item->parent()) {
            m_list->setCurrentItem(item);
            m_list->scrollToItem(item);
        }
    }
    return true;
}

QWidget *ControlsWindow::currentPage() const
{
    return m_pages->currentWidget();
}

void ControlsWindow::fillList()
{
    for (const GalleryGroup &group : m_groups) {
        auto *branch = new QTreeWidgetItem(m_list, {group.title});
        branch->setFlags(Qt::ItemIsEnabled); // no page
        for (const GalleryPage &page : group.pages) {
            auto *item = new QTreeWidgetItem(branch, {page.name});
            item->setData(0, kPurposeRole, page.purpose);
            item->setToolTip(0, page.purpose);
        }
        branch->setExpanded(true);
    }
}

/// Hides what has the text neither in its name nor in its sentence, and the groups without a page left.
void ControlsWindow::filterList(const QString &text)
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem *branch = m_list->topLevelItem(i);
        bool hasAny = false;
        for (int j = 0; j < branch->childCount(); ++j) {
            QTreeWidgetItem *item = branch->child(j);
            const bool isFound = item->text(0).contains(text, Qt::CaseInsensitive)
                || item->data(0, kPurposeRole).toString().contains(text, Qt::CaseInsensitive)
                || branch->text(0).contains(text, Qt::CaseInsensitive);
            item->setHidden(!isFound);
            hasAny |= isFound;
        }
        branch->setHidden(!hasAny);
    }
}

void ControlsWindow::showItem(QTreeWidgetItem *item)
{
    const GalleryPage *page = item && item->parent() ? pageOf(item->text(0)) : nullptr;
    if (!page)
        return;
    QWidget *&made = m_made[page->name];
    if (!made) {
        made = page->make();
        m_pages->addWidget(made);
    }
    m_pages->setCurrentWidget(made);
}

void ControlsWindow::dropPages()
{
    // A dialog or a list that is open belongs to one of them, as far as can be known here.
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget()) {
        QTimer::singleShot(100, this, &ControlsWindow::dropPages);
        return;
    }
    m_isOutdated = false;
    for (QWidget *page : qAsConst(m_made))
        page->deleteLater();
    m_made.clear();
    showItem(m_list->currentItem());
}
