// SPDX-License-Identifier: MIT
#include "zvcolordialog.h"

#include "private/zvbagreader.h"
#include "private/zvcolorkeys.h"
#include "private/zvqtcolor.h"
#include "uicolorindextab.h"
#include "uitruecolortab.h"
#include "zvqthelpservice.h"

#include "base/zvcmcolor.h"
#include "base/zvregistry.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize kDialogSize(375, 395);

constexpr int kIndexTab = 0; // positions in a dialog with both tabs
constexpr int kTrueColorTab = 1;

enum TabBit : long long {
    kIndexTabBit = 1,
    kTrueColorTabBit = 2,
    kDefaultTabs = 7,
};

// What by layer, by block and a true colour of the index tab turn into on the way to the true colour tab, which has
// none of them: red 0, green 0, blue 7. Callers know the near-black blue and it stays.
constexpr int kColorOfNoIndex = 0x70000;
constexpr unsigned kNoIndex = unsigned(-1);

bool hasPaletteColor(unsigned index)
{
    return index != ZvCm::kACIbyBlock && index != ZvCm::kACIbyLayer && index != kNoIndex;
}

} // namespace

ZvColorTabWidget::ZvColorTabWidget(QWidget *parent) : QTabWidget(parent) { }

ZvColorDialog::ZvColorDialog(QWidget *parent) : QDialog(parent)
{
    auto *layout = new QVBoxLayout(this);
    setWindowTitle(tr("选择颜色"));
    setStyleSheet(QStringLiteral("color:#000000"));

    m_pTabWidget = new ZvColorTabWidget(this);
    m_pTabWidget->setStyleSheet(QStringLiteral("background-color:#ffffff"));
    layout->addWidget(m_pTabWidget);

    auto *buttons = new QDialogButtonBox(this);
    const auto addButton = [buttons](const QString &text, QDialogButtonBox::ButtonRole role) {
        QPushButton *button = buttons->addButton(text, role);
        button->setStyleSheet(QStringLiteral("background-color:#ffffff"));
        return button;
    };
    // Without a default of its own the dialog would take the by layer button for it, and Enter in a text entry would
    // throw away what was typed.
    addButton(tr("确定"), QDialogButtonBox::YesRole)->setDefault(true);
    addButton(tr("取消"), QDialogButtonBox::NoRole);
    addButton(tr("帮助"), QDialogButtonBox::HelpRole);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &ZvColorDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ZvColorDialog::reject);
    connect(buttons, &QDialogButtonBox::helpRequested, this, &ZvColorDialog::slot_help_button_clicked);
}

ZvColorDialog::~ZvColorDialog() = default;

void ZvColorDialog::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    m_pParams = params ? params : ElementValue::createObject(IElementValueBase::kObject);
    m_pHelper = helper.get();

    const long long tabs = zvBagLong(m_pParams, kTabsKey, kDefaultTabs);
    if (tabs & kIndexTabBit) {
        m_pIndexColorWnd = new ZvIndexColorWnd(this);
        m_pIndexColorWnd->onInit(m_pParams, helper);
        m_pTabWidget->addTab(m_pIndexColorWnd, tr("索引颜色"));
    }
    if (!(tabs & kTrueColorTabBit)) {
        m_pTabWidget->setCurrentIndex(0);
        return;
    }
    m_pTrueColorWnd = new ZvTrueColorWnd(this);
    m_pTrueColorWnd->onInit(m_pParams, helper);
    m_pTabWidget->addTab(m_pTrueColorWnd, tr("真彩色"));
    if (!m_pIndexColorWnd) {
        m_pTabWidget->setCurrentIndex(0);
        return;
    }

    switch (zvBagInt(m_pParams, kClrMethodKey, ZvCm::kByACI)) {
    case ZvCm::kByLayer:
    case ZvCm::kByBlock:
    case ZvCm::kByACI:
        m_pTabWidget->setCurrentIndex(kIndexTab);
        break;
    case ZvCm::kByColor:
        m_pTabWidget->setCurrentIndex(kTrueColorTab);
        break;
    default:
        break;
    }
    // Not before the first tab is chosen: that choice carries no colour across.
    connect(m_pTabWidget, &QTabWidget::currentChanged, this, &ZvColorDialog::slot_currentTabChange);
}

void ZvColorDialog::accept()
{
    const int tab = m_pTabWidget->currentIndex();
    // A dialog with the true colour tab alone has it at the index tab's place and takes nothing from it.
    if (tab == kIndexTab && m_pIndexColorWnd) {
        unsigned index = kNoIndex;
        if (!m_pIndexColorWnd->selectedIndex(index))
            return;
    } else if (tab == kTrueColorTab && !applyTrueColor()) {
        return;
    }
    if (auto *helper = zvrxCast<ZvUiHelper>(m_pHelper))
        helper->onNotify(m_pParams);
    QDialog::accept();
}

void ZvColorDialog::slot_currentTabChange(int index)
{
    if (!m_pIndexColorWnd || !m_pTrueColorWnd)
        return;
    if (index == kIndexTab) {
        unsigned red = 0;
        unsigned green = 0;
        unsigned blue = 0;
        m_pTrueColorWnd->readRgb(red, green, blue); // a refused text gives the colour before it; the user was told
        m_pIndexColorWnd->showTrueColor(int(red), int(green), int(blue));
        m_pParams->SetDataI(kSelectClrKey, int(zvPackRgb(red, green, blue)));
        m_pParams->SetDataI(kClrMethodKey, ZvCm::kByColor);
    } else if (index == kTrueColorTab) {
        unsigned color = kNoIndex;
        if (!m_pIndexColorWnd->selectedIndex(color)) {
            // Comes back here for the index tab, and so shows the true colour tab's colour in place of the refused
            // text.
            m_pTabWidget->setCurrentIndex(kIndexTab);
            return;
        }
        m_pParams->SetDataI(kSelectClrKey,
                            hasPaletteColor(color) ? int(m_pIndexColorWnd->paletteColor(color)) : kColorOfNoIndex);
        m_pTrueColorWnd->onInit(m_pParams, ZvRxObjectPtr(m_pHelper));
    }
}

void ZvColorDialog::slot_help_button_clicked()
{
    ZvRxObject *object = zv_arbitDict_getservice(ZvString(wchar_t(ZvQtHelpService::kKey)));
    if (!object)
        return;
    // The host's class is known by the place of its operation alone.
    static_cast<ZvQtHelpService *>(zvqt_queryRequired<ZvRxObject>(object))->showHelp();
}

bool ZvColorDialog::applyTrueColor()
{
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    if (!m_pTrueColorWnd->readRgb(red, green, blue))
        return false;
    m_pParams->SetDataI(kSelectClrKey, int(zvPackRgb(red, green, blue)));
    m_pParams->SetDataI(kClrMethodKey, ZvCm::kByColor);
    return true;
}

ZvQtColorDialog::ZvQtColorDialog(QWidget *parent) : m_pDialog(new ZvColorDialog(parent))
{
    m_pWidget = m_pDialog.data();
    m_pDialog->setFixedSize(kDialogSize);
}

ZvQtColorDialog::~ZvQtColorDialog() = default; // the base deletes the dialog

bool ZvQtColorDialog::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    if (m_pDialog)
        m_pDialog->onInit(params, helper);
    return ZvQtUIModeDialogBase::onInit(params, helper);
}
