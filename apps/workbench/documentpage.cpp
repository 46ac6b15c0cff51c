// SPDX-License-Identifier: MIT
#include "documentpage.h"

#include "textforms.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

DocumentPage::DocumentPage(ZvApDocument *document, QWidget *parent)
    : QWidget(parent), m_view(new DrawingView(document)), m_layouts(new QTabBar), m_watcher(document->database())
{
    m_layouts->setObjectName(QStringLiteral("layoutTabs"));
    m_layouts->setAccessibleName(tr("Layouts"));
    m_layouts->setShape(QTabBar::RoundedSouth);
    m_layouts->setDocumentMode(true);
    m_layouts->setExpanding(false);
    m_layouts->setDrawBase(false);
    m_layouts->setUsesScrollButtons(true);
    m_layouts->setElideMode(Qt::ElideRight);
    m_layouts->setFocusPolicy(Qt::NoFocus);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_view, 1);
    column->addWidget(m_layouts);

    fillLayouts();
    connect(m_layouts, &QTabBar::currentChanged, this,
            [this](int index) { Q_EMIT layoutWanted(m_layouts->tabData(index).toString()); });
    connect(&m_watcher, &DatabaseWatcher::changed, this, &DocumentPage::refresh);
}

void DocumentPage::fillLayouts()
{
    ZvDbDatabase *database = document()->database();
    ZvArray<ZvString> names;
    if (database)
        database->layoutNames(names);
    const QString current = database ? toQString(database->currentLayoutName()) : QString();

    const QSignalBlocker quiet(m_layouts);
    bool same = m_layouts->count() == names.length();
    for (int i = 0; same && i < names.length(); ++i)
        same = m_layouts->tabData(i).toString() == toQString(names[i]);
    if (!same) {
        while (m_layouts->count() > 0)
            m_layouts->removeTab(0);
        for (const ZvString &name : names) {
            // An ampersand in a name is no mnemonic.
            QString text = toQString(name);
            const int index = m_layouts->addTab(text.replace(QLatin1Char('&'), QLatin1String("&&")));
            m_layouts->setTabData(index, toQString(name));
        }
    }
    for (int i = 0; i < m_layouts->count(); ++i) {
        if (m_layouts->tabData(i).toString() == current)
            m_layouts->setCurrentIndex(i);
    }
}

void DocumentPage::layoutSwitched()
{
    fillLayouts();
    m_view->layoutSwitched();
}

void DocumentPage::refresh(bool picture)
{
    layoutSwitched();
    if (document()->database())
        m_view->setLineWeightsShown(document()->database()->lineWeightDisplay());
    if (picture)
        m_view->regenerate();
    else
        m_view->update();
    Q_EMIT drawingChanged();
}
