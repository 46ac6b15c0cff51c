// SPDX-License-Identifier: MIT
#include "zvutilslayercombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

namespace {

constexpr char kUseCurrent[] = QT_TRANSLATE_NOOP("ZvUtilsLayerComboBox", "使用当前项");

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CVPORT", L"BLOCKEDITOR", L"CLAYER", L"TILEMODE"},
        true,
        {{ZvDbLayerTableRecord::desc},
         {ZvDbViewport::desc},
         {ZvDbDictionary::desc, ZvObjectRule::kExact, ZvObjectRule::kAlways,
          [](const ZvDbDatabase *drawing) { return ZvDbLayerState::dictionaryId(drawing, false); }}},
    };
    return filter;
}

ZvListSource listSource()
{
    return zvListSource([](const ZvDbDatabase &drawing) { return drawing.layerTableId(); });
}

} // namespace

ZvUtilsLayerComboBox::ZvUtilsLayerComboBox(int mode, QWidget *parent) : ZvUtilsLayerComboBox(false, mode, parent)
{
    connect(this, qOverload<int>(&QComboBox::activated), this, &ZvUtilsLayerComboBox::activatedIndexChanged);
}

ZvUtilsLayerComboBox::ZvUtilsLayerComboBox(bool hook, int mode, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, hook ? &m_info : nullptr), m_mode(mode)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateRows(this, "ZvUtilsLayerComboBox", {kUseCurrent});
    init();
}

ZvUtilsLayerComboBox::~ZvUtilsLayerComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsLayerComboBox::init()
{
    clear();
    if (m_mode == kWithUseCurrent)
        zvAddPlainRow(*this, tr(kUseCurrent));
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    ZvArray<ZvString> names;
    for (const ZevaUISetting::SigleLayerData &layer : layers) {
        const bool isLeftOut = layer.isHidden || layer.name.isEmpty() || (m_mode == kWithUseCurrent && layer.isFrozen);
        if (!isLeftOut)
            names.append(layer.name);
    }
    zvAppendNames(*this, *this, names);
}

void ZvUtilsLayerComboBox::onInit()
{
    init();
}

QString ZvUtilsLayerComboBox::getLayerName(int index)
{
    return itemText(index);
}

QString ZvUtilsLayerComboBox::getCurrentLayerName()
{
    return getLayerName(currentIndex());
}

void ZvUtilsLayerComboBox::curIndexChanged(int index)
{
    const auto write = [this](const ZvString &name) {
        if (m_mode != kWithUseCurrent)
            ZevaUISetting::setCLayer({}, name);
    };
    if (zvTakePick(*this, *this, index, write))
        Q_EMIT layerItemChanged(index);
}

void ZvUtilsLayerComboBox::activatedIndexChanged(int index)
{
    // With a selection the caller moves entities there, which a frozen layer allows.
    if (index < 0 || ZevaUISetting::hasSelected())
        return;
    if (ZevaUISetting::getLayInfo(zvToZvString(itemText(index))).isFrozen)
        setCurrentIndex(m_savedIndex);
}

void ZvUtilsLayerComboBox::showPopup()
{
    m_savedIndex = currentIndex();
    zvRefillNamesForOpening(*this, *this, listSource, [this] { init(); });
    QComboBox::showPopup();
}

void ZvUtilsLayerComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    zvSwallowKernelError("zvutilslayercombobox", 253, [this] {
        zvFollowObject<ZvDbLayerTableRecord>(*this, *this, m_info,
                                             [](const ZvDbDatabase &drawing) { return drawing.clayer(); });
    });
}
