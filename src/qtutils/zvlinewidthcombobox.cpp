// SPDX-License-Identifier: MIT
#include "zvlinewidthcombobox.h"

#include "private/zvaccessibility.h"
#include "private/zvboundcontrol.h"
#include "private/zvrowpicture.h"
#include "private/zvtranslation.h"

#include "db/zvdbrecords.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kWeightStep = 15; // hundredths of a millimetre for a pixel of the sample

struct SpecialRow
{
    int bit;
    ZvDb::LineWeight weight;
};

constexpr SpecialRow kSpecialRows[] = {
    {ZvLineWidthComboBox::kItemByLayer, ZvDb::kLnWtByLayer},
    {ZvLineWidthComboBox::kItemByBlock, ZvDb::kLnWtByBlock},
    {ZvLineWidthComboBox::kItemDefault, ZvDb::kLnWtByLwDefault},
};

constexpr char kUseObjects[] = QT_TRANSLATE_NOOP("ZvLineWidthComboBox", "使用对象线宽");

constexpr int kWeights[]
    = {0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

const ZvNoticeFilter &noticeFilter()
{
    static const ZvNoticeFilter filter = {
        {L"CLAYER", L"CELWEIGHT"},
        true,
        {{ZvDbLayerTableRecord::desc, ZvObjectRule::kDerived}},
    };
    return filter;
}

QString label(bool inch, ZvDb::LineWeight weight)
{
    const char *name = ZevaUISetting::getLineName(inch, weight);
    // The only one that is a word of a language.
    return weight == ZvDb::kLnWtByLwDefault ? QCoreApplication::translate("ZevaUISetting", name)
                                            : QString::fromUtf8(name);
}

} // namespace

// ---- construction ---------------------------------------------------------------------------------------------------

ZvLineWidthComboBox::ZvLineWidthComboBox(QWidget *parent)
    : ZvLineWidthComboBox(false, kItemByLayer | kItemByBlock | kItemDefault, parent)
{
}

ZvLineWidthComboBox::ZvLineWidthComboBox(bool hook, int mask, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook, &m_lineWeightInfo), m_itemMask(mask)
{
    const ZvUpdateBusJoin joined(*this);
    init(false);
    zvNameForReaders(this);
    zvTranslateRows(this, "ZvLineWidthComboBox", {kUseObjects});
    zvTranslateRows(this, "ZevaUISetting", {ZevaUISetting::getLineName(false, ZvDb::kLnWtByLwDefault)});
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ZvLineWidthComboBox::currentWeightIndexChanged);
}

ZvLineWidthComboBox::~ZvLineWidthComboBox()
{
    zvLeaveUpdateBus(*this);
}

// ---- rows -----------------------------------------------------------------------------------------------------------

void ZvLineWidthComboBox::initializeData()
{
    clear();
    zvResetRowPictures(*this, m_iconWidth, m_iconHeight);
}

void ZvLineWidthComboBox::init(bool inch)
{
    const ZvHookedCleared filling(*this);
    const ZvQtBlockSignalUtil block(this);
    initializeData();
    // The running pen width goes on from the fill before: the first rows bring it down by themselves.
    for (const SpecialRow &row : kSpecialRows) {
        if (m_itemMask & row.bit)
            drawLine(label(inch, row.weight), row.weight);
    }
    if (m_itemMask & kItemUseObjects)
        zvAddPlainRow(*this, tr(kUseObjects));
    for (const int weight : kWeights)
        drawLine(label(inch, ZvDb::LineWeight(weight)), ZvDb::LineWeight(weight));
}

void ZvLineWidthComboBox::drawLine(QString &&name, ZvDb::LineWeight weight)
{
    const int limit = m_penWidth + 1;
    const double wanted = std::trunc((weight / kWeightStep + 1) * (1.0 + m_lineweightScale));
    int penWidth = 0;
    if (wanted <= limit) {
        penWidth = int(std::max(wanted, 0.0));
        m_penWidth = penWidth;
    } else {
        m_penWidth = limit;
        penWidth = std::min(m_iconHeight / 2, limit);
    }
    addSampleRow(name, weight, penWidth);
}

void ZvLineWidthComboBox::drawLine(QString &name, ZvDb::LineWeight weight)
{
    addSampleRow(name, weight, weight == ZvDb::kLnWtByLwDefault ? ZevaUISetting::getLWDefault() / 10 + 1 : 1);
}

void ZvLineWidthComboBox::addSampleRow(const QString &name, ZvDb::LineWeight weight, int penWidth)
{
    QPixmap sample(m_iconWidth, m_iconHeight);
    sample.fill(Qt::transparent);
    {
        QPainter painter(&sample);
        QPen pen = painter.pen();
        pen.setWidth(penWidth);
        painter.setPen(pen);
        painter.drawLine(0, m_iconHeight / 2, m_iconWidth, m_iconHeight / 2);
    }
    insertItem(count(), QIcon(sample), name, int(weight));
}

void ZvLineWidthComboBox::updateListWidthCurlayout(bool inch)
{
    const ZvQtBlockSignalUtil block(this);
    const ZvDb::LineWeight weight = GetCurrentLineWeight();
    drawLine(label(inch, weight), weight);
}

void ZvLineWidthComboBox::SetNullItem()
{
    setCurrentIndex(-1);
}

void ZvLineWidthComboBox::setLineweightScale(double scale)
{
    m_lineweightScale = scale;
}

// ---- value ----------------------------------------------------------------------------------------------------------

ZvDb::LineWeight ZvLineWidthComboBox::GetLineWeight(int index) const
{
    if (index < 0 || index >= count()) {
        ZvAssert("false", "zvlinewidthcombobox", 218); // the place that reports of hosts know
        return ZvDb::kLnWtByLwDefault;
    }
    return ZvDb::LineWeight(itemData(index).toInt());
}

ZvDb::LineWeight ZvLineWidthComboBox::GetCurrentLineWeight() const
{
    return ZvDb::LineWeight(currentData().toInt());
}

int ZvLineWidthComboBox::getLineWidget(ZvDb::LineWeight weight) const
{
    for (int row = 0; row < count(); ++row) {
        const QVariant held = itemData(row);
        if (held.canConvert<int>() && held.toInt() == int(weight))
            return row;
    }
    return -1;
}

int ZvLineWidthComboBox::findItemByLineWeight(ZvDb::LineWeight weight) const
{
    return getLineWidget(weight);
}

// ---- the drawing ----------------------------------------------------------------------------------------------------

void ZvLineWidthComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    if (!zvNoticeConcerns(noticeFilter(), notice))
        return;
    const ZvShown shown = zvWhatToShow(m_lineWeightInfo);
    if (zvIsBlank(shown)) {
        zvShowBlank(*this, shown);
        return;
    }
    const ZvDb::LineWeight weight
        = shown == ZvShown::kCurrentValue ? zvCurrentDocumentDatabase()->celweight() : m_lineWeightInfo.value;
    // Always by the millimetre label: a list in inches never has it and gets a row more. Kept: hosts with such lists
    // tell the added rows from their own by their having no picture.
    zvShowName(*this, *this, label(false, weight), ZvNameMatch::kExact);
}

// ---- the user -------------------------------------------------------------------------------------------------------

bool ZvLineWidthComboBox::event(QEvent *event)
{
    return QComboBox::event(event);
}

void ZvLineWidthComboBox::resizeEvent(QResizeEvent *event)
{
    QComboBox::resizeEvent(event);
    zvFitRowPictures(*this, *event, m_isSized, m_iconWidth, m_iconHeight);
}

void ZvLineWidthComboBox::showPopup()
{
    if (zvRefillForOpening(*this, *this, [this] { init(false); }))
        QComboBox::showPopup();
}

void ZvLineWidthComboBox::currentWeightIndexChanged(int index)
{
    if (index < 0)
        return;
    ZevaUISetting::restoreFocus2MainView();
    {
        const ZvQtBlockSignalUtil block(this);
        const QVariant held = itemData(index);
        if (hooked && held.canConvert<int>())
            ZevaUISetting::setCeWeight(ZvDb::LineWeight(held.toInt()));
    }
    Q_EMIT lineWeightItemChanged(index);
}
