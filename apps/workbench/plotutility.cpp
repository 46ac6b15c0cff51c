// SPDX-License-Identifier: MIT
#include "plotutility.h"

#include "base/zvregistry.h"
#include "textforms.h"
#include "zvqtplotservice.h"

#include <QCoreApplication>

namespace {

struct ShadePlotMode
{
    const char *text;
    int code; // as viewports keep it
};

constexpr ShadePlotMode kModes[] = {
    {QT_TRANSLATE_NOOP("PlotUtility", "As displayed"), 0},
    {QT_TRANSLATE_NOOP("PlotUtility", "Wireframe"), 1},
    {QT_TRANSLATE_NOOP("PlotUtility", "Hidden"), 2},
    {QT_TRANSLATE_NOOP("PlotUtility", "Rendered"), 3},
};

class Service : public ZvQtPlotService
{
public:
    ZvJsonPtr shadePlotModes(ZvDbDatabase *) override
    {
        const ZvJsonPtr modes = ElementValue::createObject(IElementValueBase::kArray);
        for (const ShadePlotMode &mode : kModes) {
            const ZvJsonPtr element = ElementValue::createObject(IElementValueBase::kObject);
            element->SetDataSW("name", toZvString(QCoreApplication::translate("PlotUtility", mode.text)));
            element->SetDataI("code", mode.code);
            modes->append(element);
        }
        return modes;
    }
};

ZvString key()
{
    return ZvString(ZvQtPlotService::kKey);
}

} // namespace

PlotUtility::PlotUtility()
{
    zv_arbitDict_regservice(key(), ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Service>));
}

PlotUtility::~PlotUtility()
{
    zv_arbitDict_clearservice(key());
}
