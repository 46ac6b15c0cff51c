// SPDX-License-Identifier: MIT
#include "workbench.h"

#include "colorcommand.h"
#include "core/zvsystem.h"
#include "mainwindow.h"
#include "panels.h"
#include "propertybar.h"
#include "updatebushost.h"
#include "utils/zventityimage.h"
#include "viewcolors.h"
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
    m_window->addToolBar(new PropertyBar(m_window.get()));
    m_color = std::make_unique<ColorCommand>();
    m_window->restoreLayout();
}

Workbench::~Workbench()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    while (documents->documentCount() > 0)
        documents->closeDocument(documents->documentAt(0));
    m_color.reset();
    m_window.reset(); // with all controls
    m_bus.reset();
    zvrxEntryPoint(kZvRxUnloadModule);
    CHcSystem::stop();
}
