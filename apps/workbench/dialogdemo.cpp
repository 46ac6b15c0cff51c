// SPDX-License-Identifier: MIT
#include "dialogdemo.h"

#include "core/zvui.h"
#include "textforms.h"

ZvJsonPtr bagOfTexts(const QStringList &texts)
{
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    for (const QString &text : texts)
        array->append(ElementValue::createString(text.toUtf8().constData()));
    return array;
}

QString runCommonDialog(const char *name, const ZvJsonPtr &params, std::initializer_list<const char *> answers)
{
    const ZvJsonPtr result = zvuiShowModelDialogEx("Dialog/Common", name, params, nullptr, zvuiMainWindow());
    QString line = QLatin1String(name) + QStringLiteral(": ") + bagText(result);
    for (const char *key : answers) {
        if (params->hasKey(key))
            line += QStringLiteral(" %1=%2").arg(QLatin1String(key), bagText(params->member(key)));
    }
    return line;
}
