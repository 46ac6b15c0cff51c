// SPDX-License-Identifier: MIT
#include "dialogdemo.h"

#include "core/zvui.h"
#include "dialogkeys.h"
#include "textforms.h"

#include <QCoreApplication>

ZvJsonPtr bagOfTexts(const QStringList &texts)
{
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    for (const QString &text : texts)
        array->append(ElementValue::createString(text.toUtf8().constData()));
    return array;
}

ZvJsonPtr runCommonDialog(const char *name, const ZvJsonPtr &params)
{
    return zvuiShowModelDialogEx("Dialog/Common", name, params, nullptr, zvuiMainWindow());
}

QString runDemo(const DialogDemo &demo)
{
    const std::shared_ptr<void> surroundings = demo.surroundings ? demo.surroundings() : nullptr;
    const ZvJsonPtr params = demo.parameters();
    if (params.isNull())
        return QCoreApplication::translate("DialogDemo", "There is no drawing to preview.");
    const ZvJsonPtr result = runCommonDialog(demo.dialog, params);
    QString line = QLatin1String(demo.dialog) + QStringLiteral(": ") + bagText(result);
    for (const DialogKey &key : dialogDescription(demo.dialog).keys) {
        if (key.way & DialogKey::kAnswer && params->hasKey(key.name))
            line += QStringLiteral(" %1=%2").arg(QLatin1String(key.name), bagText(params->member(key.name)));
    }
    return line;
}
