// SPDX-License-Identifier: MIT
#include "zvutilsshadeplotcombobox.h"

#include "private/zvnamedcombo.h"
#include "zevaqt.h"
#include "zvqtplotservice.h"

#include "base/zvregistry.h"

ZvUtilsShadePlotComboBox::ZvUtilsShadePlotComboBox(QWidget *parent) : ZvUtilsShadePlotComboBox(false, parent) { }

ZvUtilsShadePlotComboBox::ZvUtilsShadePlotComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsShadePlotComboBox::~ZvUtilsShadePlotComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsShadePlotComboBox::init()
{
    clear();
    const ZvHookedCleared filling(*this);
    const ZvRxObjectPtr registered(zv_arbitDict_getservice(ZvString(ZvQtPlotService::kKey)));
    if (!registered)
        return;
    auto *service = zvqt_queryRequired<ZvQtPlotService>(registered.get());
    const ZvApDocument *document = zvCurrentDocument();
    if (!document)
        return;
    const ZvJsonPtr modes = service->shadePlotModes(document->database());
    if (!modes || !modes->isArray())
        return;
    std::vector<ZvRow> rows;
    for (int i = 0; i < modes->elementCount(); ++i) {
        const ZvJsonPtr mode = modes->element(i);
        const ZvJsonPtr value = mode ? mode->element(0) : ZvJsonPtr();
        const QString text = value && !value->isNullNode() ? zvToQString(value->asString()) : QStringLiteral("");
        rows.push_back({QIcon(), text, text});
    }
    zvAppendRows(*this, std::move(rows));
}

QString ZvUtilsShadePlotComboBox::getCurrentName() const
{
    return currentText();
}

void ZvUtilsShadePlotComboBox::showPopup()
{
    if (hooked)
        zvRefillKeepingText(*this, *this, [this] { init(); });
    QComboBox::showPopup();
}

void ZvUtilsShadePlotComboBox::curIndexChanged(int)
{
    ZevaUISetting::restoreFocus2MainView();
    Q_EMIT ItemChanged(currentText());
}

void ZvUtilsShadePlotComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
