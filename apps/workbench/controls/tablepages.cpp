// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "db/zvdbdatabase.h"
#include "linetypemanager.h"
#include "textforms.h"
#include "zvqtlinetypetableview.h"

#include "base/zvjson.h"

namespace {

constexpr int kLongTable = 300;

ZvQtLinetypeTableView *makeTable(int mode, QWidget *parent)
{
    auto *table = new ZvQtLinetypeTableView(mode, parent);
    table->setTabKeyNavigation(false); // the page is left by it
    table->setMinimumHeight(116);
    if (const ZvDbDatabase *database = curDatabase())
        table->loadLtypeData(LinetypeManager::tableBag(*database));
    return table;
}

} // namespace

QVector<ControlPageData> tablePages()
{
    typedef ZvQtLinetypeTableView Table;
    ControlPageData page{"ZvQtLinetypeTableView", "lineTypeTable",
                         PAGE_TEXT("A table of line types with pictures, filled and written back by its host."),
                         ControlPageData::kPlain | ControlPageData::kLong,
                         [](bool, QWidget *parent) -> QWidget * { return makeTable(Table::kInteractive, parent); }};
    page.variants
        = {{"Plain", PAGE_TEXT("Not interactive"), [](QWidget *parent) { return makeTable(Table::kPlain, parent); }}};
    page.fillLong = [](QWidget &control) {
        const ZvJsonPtr elements = ElementValue::createObject(IElementValueBase::kArray);
        for (int i = 0; i < kLongTable; ++i) {
            const ZvJsonPtr element = ElementValue::createObject(IElementValueBase::kObject);
            element->SetDataI("idx", i);
            element->SetDataSW("name", toZvString(QStringLiteral("LINE%1").arg(i + 1, 3, 10, QLatin1Char('0'))));
            elements->append(element);
        }
        const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
        bag->SetDataJ("elements", elements);
        static_cast<Table &>(control).loadLtypeData(bag);
    };
    page.columns = 1;
    return {page};
}
