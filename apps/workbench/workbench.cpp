// SPDX-License-Identifier: MIT
#include "workbench.h"

#include "autosave.h"
#include "colorcommand.h"
#include "core/zvsystem.h"
#include "linetypehost.h"
#include "mainwindow.h"
#include "objectbar.h"
#include "panels.h"
#include "plotutility.h"
#include "propertybar.h"
#include "recoveryquestion.h"
#include "recoverystore.h"
#include "updatebushost.h"
#include "utils/zventityimage.h"
#include "viewcolors.h"
#include "viewmanager.h"
#include "zvqtentrypoint.h"

#include <QSettings>

Workbench::Workbench() : Workbench(nullptr) { }

Workbench::Workbench(std::unique_ptr<QSettings> settings) : m_settings(std::move(settings))
{
    CHcSystem::start();
    zvrxEntryPoint(kZvRxLoadModule);
    zvsiutSetDisplayBackground(ViewColors::packed(ViewColors::kModelGround) & 0x00FFFFFFu);
    m_bus = std::make_unique<UpdateBusHost>();
    m_window = std::make_unique<MainWindow>(m_settings.get());
    addPanels(*m_window, *m_bus);
    m_plot = std::make_unique<PlotUtility>();
    m_window->addToolBar(new PropertyBar(m_window.get()));
    m_window->addToolBarBreak();
    m_window->addToolBar(ObjectBar::makeStyleBar(m_window.get()));
    m_window->addToolBar(ObjectBar::makeViewBar(m_window.get()));
    m_color = std::make_unique<ColorCommand>();
    m_linetypes = std::make_unique<LinetypeHost>();
    m_view = std::make_unique<ViewCommand>();
    m_window->restoreLayout();
}

Workbench::~Workbench()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    while (documents->documentCount() > 0)
        documents->closeDocument(documents->documentAt(0));
    m_autosave.reset();
    m_recovery.reset();
    m_view.reset();
    m_linetypes.reset();
    m_color.reset();
    m_window.reset(); // with all controls
    m_plot.reset();
    m_bus.reset();
    zvrxEntryPoint(kZvRxUnloadModule);
    CHcSystem::stop();
}

void Workbench::startRecovery(const QString &folder, int seconds)
{
    m_recovery = std::make_unique<RecoveryStore>(folder);
    m_autosave = std::make_unique<Autosave>(*m_window, *m_recovery, seconds);
    offerRecovery(*m_window, *m_recovery, *m_autosave);
}
