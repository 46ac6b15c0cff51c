// SPDX-License-Identifier: MIT
#include "private/zvnamedcombo.h"

#include "private/zvresbufptr.h"

void zvAppendNames(QComboBox &combo, CZvQtControlHelp &control, const ZvArray<ZvString> &names)
{
    const ZvHookedCleared filling(control);
    std::vector<ZvRow> rows;
    rows.reserve(std::size_t(names.length()));
    for (const ZvString &name : names)
        rows.push_back({QIcon(), zvToQString(name), QVariant()});
    zvAppendRows(combo, rows);
}

void zvAppendStyles(QComboBox &combo, CZvQtControlHelp &control,
                    const ZvArray<ZevaUISetting::ZvsiStyleInfoItem> &styles)
{
    ZvArray<ZvString> names;
    for (const ZevaUISetting::ZvsiStyleInfoItem &style : styles)
        names.append(style.name);
    zvAppendNames(combo, control, names);
}

ZvDbObjectId zvStyleVariable(const wchar_t *variable, const ZvDbDatabase &drawing)
{
    const ZvResBufPtr value(zvHostService()->readVariable(variable, &drawing));
    return value ? value->getObjectId(&drawing) : ZvDbObjectId();
}
