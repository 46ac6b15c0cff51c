// SPDX-License-Identifier: MIT
#include "zvutilstablecellcolstylecombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

namespace {

constexpr char kNoStyle[] = QT_TRANSLATE_NOOP("ZvUtilsTableCellColStyleComboBox", "(无)");

} // namespace

ZvUtilsTableCellColStyleComboBox::ZvUtilsTableCellColStyleComboBox(const ZvDbObjectId &tableStyle, QWidget *parent)
    : ZvUtilsTableCellColStyleComboBox(false, tableStyle, parent)
{
}

ZvUtilsTableCellColStyleComboBox::ZvUtilsTableCellColStyleComboBox(bool hook, const ZvDbObjectId &tableStyle,
                                                                   QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateCellStyles(*this);
    zvTranslateRows(this, "ZvUtilsTableCellColStyleComboBox", {kNoStyle});
    init(tableStyle);
}

ZvUtilsTableCellColStyleComboBox::~ZvUtilsTableCellColStyleComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsTableCellColStyleComboBox::init(const ZvDbObjectId &tableStyle)
{
    clear();
    zvAddPlainRow(*this, tr(kNoStyle));
    ZvArray<ZvString> names;
    ZevaUISetting::getTableCellStyleNames(names, tableStyle);
    zvAppendNames(*this, *this, names);
}

void ZvUtilsTableCellColStyleComboBox::curIndexChanged(int)
{
    zvTellPickUnheard(*this, [this](const QString &name) { Q_EMIT itemChanged(name); });
}

bool ZvUtilsTableCellColStyleComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvUtilsTableCellColStyleComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
