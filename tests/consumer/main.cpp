// SPDX-License-Identifier: MIT
// Loads the library as a host does, asks for a dialog and makes controls. 0 when all of it answers.
#include <base/zvregistry.h>
#include <core/zvapdocument.h>
#include <core/zvsystem.h>
#include <core/zvui.h>
#include <zvcolorcombobox.h>
#include <zvqtentrypoint.h>
#include <zvutilslayercombobox.h>

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    CHcSystem::start();
    zvrxEntryPoint(kZvRxLoadModule);
    bool ok = false;
    {
        zvDocManagerPtr()->newDocument();
        auto *service = zvrxCast<ZvUiService>(grUISvr(L"Dialog/Common"));
        const ZvUiDialogBasePtr dialog = service ? service->createDialog(L"MessageBox", nullptr) : nullptr;
        const ZvColorComboBox colors(true, nullptr);
        const ZvUtilsLayerComboBox layers(false, 0, nullptr);
        ok = dialog && colors.count() > 7 && layers.count() == 1 && layers.itemText(0) == QLatin1String("0");
    }
    zvrxEntryPoint(kZvRxUnloadModule);
    CHcSystem::stop();
    return ok ? 0 : 1;
}
