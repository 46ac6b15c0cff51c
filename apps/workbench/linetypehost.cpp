// SPDX-License-Identifier: MIT
#include "linetypehost.h"

#include "base/zvregistry.h"
#include "core/zvui.h"
#include "linetypemanager.h"
#include "textforms.h"
#include "undostep.h"
#include "zvqtlinetypeservice.h"

#include <QApplication>

namespace {

const char *const kName = "LINETYPE";

ZvString serviceKey()
{
    return ZvString(wchar_t(ZvQtLinetypeService::kKey));
}

void runLinetype()
{
    ZvDbDatabase *database = curDatabase();
    if (!DialogCommand::isForPerson()) {
        const UndoStep step(*database, kName); // the command makes none, see below
        DialogCommand::runLineForm(kName);
        return;
    }
    LinetypeManager manager(*database, LinetypeManager::kManage, static_cast<QWidget *>(zvuiMainWindow()));
    manager.exec();
}

} // namespace

class LinetypeHost::Service : public ZvStaticRxObject<ZvQtLinetypeService>
{
public:
    void manageLinetypes(ZvDbDatabase *database, ZvJsonPtr bag) override
    {
        if (!database || !bag)
            return;
        // Over the dialog that asks, which is modal itself.
        QWidget *asking = QApplication::activeModalWidget();
        LinetypeManager manager(*database, LinetypeManager::kChoose,
                                asking ? asking : static_cast<QWidget *>(zvuiMainWindow()));
        ZvString selected;
        if (bag->GetDataSW("curSelName", selected))
            manager.select(toQString(selected));
        if (manager.exec() != QDialog::Accepted)
            return;
        bag->SetDataI("idx", manager.chosen().idx);
        bag->SetDataSW("ltypeName", toZvString(manager.chosen().name));
        bag->SetDataId("ltypeId", manager.chosen().ltypeId.asInt64());
    }
};

// Each change in the manager is a step of undo: the command makes none around them.
LinetypeHost::LinetypeHost()
    : m_service(std::make_unique<Service>()), m_command(kName, ZvEdCommand::kNoUndoMark, runLinetype)
{
    zv_arbitDict_regservice(serviceKey(), ZvRxObjectPtr(m_service.get()));
}

LinetypeHost::~LinetypeHost()
{
    zv_arbitDict_clearservice(serviceKey());
}
