// SPDX-License-Identifier: MIT
#include "zvutilmaterialcombobox.h"

#include "private/zvnamedcombo.h"

#include "db/zvdbstyles.h"

namespace {

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {{L"CMATERIAL"}, true, {{ZvDbMaterial::desc}}};
    return filter;
}

ZvString currentMaterialName(const ZvDbDatabase &drawing)
{
    const ZvDbObjectPointer<ZvDbMaterial> material(drawing.cmaterial(), ZvDb::kForRead);
    return material ? material->name() : ZvString();
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.materialDictionaryId(); });
}

} // namespace

ZvUtilsMaterialComboBox::ZvUtilsMaterialComboBox(QWidget *parent) : ZvUtilsMaterialComboBox(false, parent) { }

ZvUtilsMaterialComboBox::ZvUtilsMaterialComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    init();
}

ZvUtilsMaterialComboBox::~ZvUtilsMaterialComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsMaterialComboBox::init()
{
    clear();
    ZvArray<ZvString> names;
    ZvArray<ZvDbObjectId> ids;
    ZevaUISetting::getMaterials(names, ids, nullptr);
    zvAppendNames(*this, *this, names);
}

QString ZvUtilsMaterialComboBox::getCurrentMaterialName() const
{
    return currentText();
}

ZvDbObjectId ZvUtilsMaterialComboBox::getCurrentMaterialId()
{
    return ZevaUISetting::findMaterialByName(zvToZvString(currentText()), nullptr);
}

void ZvUtilsMaterialComboBox::curIndexChanged(int index)
{
    if (zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCMaterial({}, name); }))
        Q_EMIT itemChanged(currentText());
}

void ZvUtilsMaterialComboBox::showPopup()
{
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

void ZvUtilsMaterialComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvFollowValue(*this, m_info, currentMaterialName, [this](const ZvString &name) {
        // A current material that cannot be read moves nothing. Entities that agree in an empty name show it.
        const bool isUnread = name.isEmpty() && m_info.status == ZvGlobalUIReactorHelp::kInfoNoSelection;
        zvShowName(*this, *this, isUnread ? QString() : zvToQString(name), ZvNameMatch::kExact);
    });
}
