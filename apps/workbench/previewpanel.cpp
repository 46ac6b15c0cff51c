// SPDX-License-Identifier: MIT
#include "previewpanel.h"

#include "currentselection.h"
#include "zvqtimagewidget.h"

#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr std::size_t kMostShown = 500;
constexpr int kMargin = 6; // pixels
} // namespace

PreviewPanel::PreviewPanel(QWidget *parent)
    : QWidget(parent), m_picture(new ZvQtImageWidget(this)), m_summary(new QLabel)
{
    setObjectName(QStringLiteral("previewPanel"));
    setAccessibleName(tr("Preview"));
    m_picture->setObjectName(QStringLiteral("preview"));
    m_picture->setAccessibleName(tr("Picture of the selected entities"));
    m_summary->setObjectName(QStringLiteral("previewSummary"));
    m_summary->setAccessibleName(tr("What the picture shows"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->addWidget(m_summary);
    column->addWidget(m_picture, 1);

    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &PreviewPanel::showSelection);
    for (const auto signal :
         {&KernelEvents::selectionChanged, &KernelEvents::commandDone, &KernelEvents::layoutSwitched})
        connect(&m_events, signal, this, &PreviewPanel::showLater);
    connect(&m_events, &KernelEvents::documentBecameCurrent, this, &PreviewPanel::showLater);
    // At once: the picture refers to the drawing that went.
    connect(&m_events, &KernelEvents::documentDestroyed, this, &PreviewPanel::showSelection);
}

PreviewPanel::~PreviewPanel()
{
    delete m_picture; // before the copies that it shows
}

QSize PreviewPanel::sizeHint() const
{
    return {320, 260};
}

void PreviewPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    showSelection();
}

void PreviewPanel::showLater()
{
    if (isVisible())
        m_later.start();
}

void PreviewPanel::showSelection()
{
    ZvQtImageWidget::Entities entities;
    std::vector<std::unique_ptr<ZvDbEntity>> copies;
    const std::vector<ZvDbObjectId> &ids = selectedIds();
    for (std::size_t i = 0; isVisible() && i < std::min(ids.size(), kMostShown); ++i) {
        const ZvDbObjectPointer<ZvDbEntity> entity(ids[i], ZvDb::kForRead);
        if (!entity)
            continue;
        std::unique_ptr<ZvRxObject> copy(entity->clone());
        if (!copy)
            continue;
        copies.emplace_back(static_cast<ZvDbEntity *>(copy.release()));
        entities.append(copies.back().get());
    }
    m_picture->attachDbEntities(entities, nullptr, nullptr);
    m_copies = std::move(copies); // the ones before are shown no longer

    if (!curDatabase())
        m_summary->setText(tr("No drawing is open"));
    else if (ids.empty())
        m_summary->setText(tr("Nothing selected"));
    else if (ids.size() > kMostShown)
        m_summary->setText(
            tr("The first %1 of %2").arg(QLocale().toString(int(kMostShown)), entityCountText(int(ids.size()))));
    else
        m_summary->setText(entityCountText(int(ids.size())));
}
