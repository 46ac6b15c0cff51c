// SPDX-License-Identifier: MIT
#include "common/qt_taskdialog.h"

#include "private/zvbagreader.h"
#include "private/zvdialogicons.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDebug>
#include <QFile>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QSpacerItem>
#include <QVBoxLayout>

namespace {

enum ContentFlag {
    kShowTexts = 1,
    kShowFooterButtons = 2,
    kShowCommands = 4,
    kShowCheck = 8,
};

enum Option {
    kOpenLinks = 1,
    kWindowIcon = 2,
};

constexpr int kCallersButtons = 64; // the value of "flag" for the texts of "btnText"

struct StandardButton
{
    int bit; ///< In "flag", "focusFlagBtnId" and "nDisabledButtonMask".
    const char *text;
    int id;
};

// From left to right: retry stands before cancel although its bit is the higher one.
constexpr StandardButton kStandardButtons[] = {
    {1, QT_TRANSLATE_NOOP("ZvQtTaskDialog", "确定(&O)"), 1}, {2, QT_TRANSLATE_NOOP("ZvQtTaskDialog", "是(&Y)"), 6},
    {4, QT_TRANSLATE_NOOP("ZvQtTaskDialog", "否(&N)"), 7},   {16, QT_TRANSLATE_NOOP("ZvQtTaskDialog", "重试(&R)"), 4},
    {8, QT_TRANSLATE_NOOP("ZvQtTaskDialog", "取消(&C)"), 2}, {32, QT_TRANSLATE_NOOP("ZvQtTaskDialog", "关闭(&C)"), 8},
};
constexpr const StandardButton &kOkButton = kStandardButtons[0];
constexpr int kCancelId = 2;
constexpr int kCloseId = 8;

constexpr int kCommandWidth = 417;
constexpr int kSpacing = 1;
constexpr QMargins kMargins(1, 1, 1, 1);

// Every widget is born as the child of the one whose layout takes it: giving it another parent later costs as much as
// making it.

/// A widget in \a outer with a tight layout of its own.
template <class Layout> Layout *addPanel(QLayout *outer)
{
    auto *panel = new QWidget(outer->parentWidget());
    auto *layout = new Layout(panel);
    layout->setSpacing(kSpacing);
    layout->setContentsMargins(kMargins);
    outer->addWidget(panel);
    return layout;
}

QLabel *addText(QLayout *column, const QString &text)
{
    auto *label = new QLabel(text, column->parentWidget());
    label->setWordWrap(true);
    column->addWidget(label);
    return label;
}

bool isStandardId(int id)
{
    for (const StandardButton &button : kStandardButtons) {
        if (button.id == id)
            return true;
    }
    return false;
}

} // namespace

bool ZvQtTaskDialog::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    ZvQtModeDialogImpl::onInit(params, helper);
    m_title = zvBagString(params, "title");
    m_message = zvBagString(params, "msg");
    m_content = zvBagString(params, "content");
    m_expandedInformation = zvBagString(params, "expandedInformation");
    m_mainIcon = zvBagString(params, "mainicon");
    m_dlgtype = zvBagInt(params, "dlgtype", 0);
    m_contentFlag = zvBagInt(params, "contentFlag", 0);
    m_flag = zvBagInt(params, "flag", 0);
    m_focusFlagBtnId = zvBagInt(params, "focusFlagBtnId", 0);
    m_options = zvBagInt(params, "options", 0);

    m_pMainLayout = new QVBoxLayout;
    setLayout(m_pMainLayout);
    setUpWindow();
    createTopBlock();
    createFooter();
    params->SetDataI("ControlBtn", kCloseId);
    adjustSize();
    return true;
}

void ZvQtTaskDialog::reject()
{
    if (m_pGroupButtons && !m_pGroupButtons->buttons().isEmpty())
        params()->SetDataI("ControlBtn", m_pGroupButtons->id(m_pGroupButtons->buttons().last()));
    QDialog::reject();
}

void ZvQtTaskDialog::setUpWindow()
{
    setWindowTitle(m_title);
    const QString iconOfType = zvDialogIconPath(m_dlgtype);
    if (!iconOfType.isEmpty())
        m_mainIcon = iconOfType;
    if ((m_options & kWindowIcon) && QFile::exists(m_mainIcon))
        setWindowIcon(QIcon(m_mainIcon));
}

void ZvQtTaskDialog::createTopBlock()
{
    auto *block = new QWidget(this);
    auto *row = new QHBoxLayout(block);
    if (QFile::exists(m_mainIcon))
        row->addWidget(zvMakeDialogIcon(m_mainIcon, block));
    auto *contentColumn = new QWidget(block);
    m_pContentLayout = new QVBoxLayout(contentColumn);
    row->addWidget(contentColumn);
    m_pMainLayout->addWidget(block);
    createTexts();
    createCommandBtns();
}

void ZvQtTaskDialog::createTexts()
{
    auto *row = addPanel<QHBoxLayout>(m_pContentLayout);
    if (!(m_contentFlag & kShowTexts))
        return;
    auto *column = addPanel<QVBoxLayout>(row);
    const bool opensLinks = m_options & kOpenLinks;
    addText(column, m_message);
    if (!m_content.isEmpty()) {
        column->addWidget(new QLabel(column->parentWidget())); // a gap
        addText(column, m_content)->setOpenExternalLinks(opensLinks);
    }
    if (!m_expandedInformation.isEmpty())
        addText(column, m_expandedInformation)->setOpenExternalLinks(opensLinks);
}

void ZvQtTaskDialog::createCommandBtns()
{
    if (!(m_contentFlag & kShowCommands))
        return;
    auto *column = addPanel<QVBoxLayout>(m_pContentLayout);
    m_pGroupSelectors = new QButtonGroup(this);
    const int defaultId = zvBagInt(params(), "defaultBtnId", 0);
    for (const ZvJsonPtr &command : zvBagElements(params(), "selBtnText")) {
        const int id = zvBagInt(command, "id", 0);
        auto *button = new QPushButton(zvBagString(command, "caption"), column->parentWidget());
        button->setMinimumWidth(kCommandWidth);
        button->setStyleSheet(QStringLiteral("QPushButton {color:rgb(0, 116, 216);}"));
        if (id != defaultId)
            button->setAutoDefault(false);
        button->setDefault(id == defaultId);
        column->addWidget(button);
        m_pGroupSelectors->addButton(button, id);
    }
    connect(m_pGroupSelectors, QOverload<int>::of(&QButtonGroup::buttonClicked), this,
            &ZvQtTaskDialog::onCommandClicked);
}

void ZvQtTaskDialog::createFooter()
{
    const bool showsCheck = m_contentFlag & kShowCheck;
    const bool showsButtons = (m_contentFlag & kShowFooterButtons) && m_flag != 0;
    if (!showsCheck && !showsButtons)
        return;
    m_pFooterLayout = addPanel<QVBoxLayout>(m_pMainLayout);
    auto *column = addPanel<QVBoxLayout>(m_pFooterLayout);
    if (showsCheck)
        createCheckBox(column);
    if (showsButtons)
        createFooterButtons(column);
}

void ZvQtTaskDialog::createCheckBox(QVBoxLayout *column)
{
    auto *check = new QCheckBox(zvBagString(params(), "checkboxText"), column->parentWidget());
    column->addWidget(check, 0, Qt::AlignLeft);
    const bool isChecked = zvBagBool(params(), "checkboxChecked", false);
    check->setChecked(isChecked);
    params()->SetDataB("selectedCheck", isChecked);
    connect(check, &QCheckBox::stateChanged, this, &ZvQtTaskDialog::onCheckStateChanged);
}

void ZvQtTaskDialog::createFooterButtons(QVBoxLayout *column)
{
    const int disabledMask = zvBagInt(params(), "nDisabledButtonMask", 0);
    auto *row = addPanel<QHBoxLayout>(column);
    row->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    m_pGroupButtons = new QButtonGroup(this);
    if (m_flag == kCallersButtons)
        addCustomButtons(row, disabledMask);
    else
        addStandardButtons(row, disabledMask);
    connect(m_pGroupButtons, QOverload<int>::of(&QButtonGroup::buttonClicked), this, &ZvQtTaskDialog::onFooterClicked);
}

void ZvQtTaskDialog::addStandardButtons(QHBoxLayout *row, int disabledMask)
{
    for (const StandardButton &standard : kStandardButtons) {
        if (!(m_flag & standard.bit))
            continue;
        QPushButton *button = addFooterButton(row, tr(standard.text), standard.id);
        if (disabledMask & standard.bit)
            button->setEnabled(false);
        if (m_focusFlagBtnId == standard.bit)
            button->setAutoDefault(true);
    }
}

void ZvQtTaskDialog::addCustomButtons(QHBoxLayout *row, int disabledMask)
{
    const QStringList texts = zvBagTexts(params(), "btnText");
    if (texts.isEmpty()) {
        QPushButton *button = addFooterButton(row, tr(kOkButton.text), kOkButton.id);
        button->setEnabled(!(disabledMask & kOkButton.bit));
        button->setAutoDefault(true);
        return;
    }
    // The mask is tested against the index as a number, not against a bit for each button: mask 2 disables buttons 2,
    // 3, 6, 7 and so on, and button 0 never. Callers choose their masks by that.
    for (int id = 0; id < texts.size(); ++id) {
        QPushButton *button = addFooterButton(row, texts.at(id), id);
        if (id & disabledMask)
            button->setEnabled(false);
        else if (id == 0)
            button->setAutoDefault(true);
    }
}

QPushButton *ZvQtTaskDialog::addFooterButton(QHBoxLayout *row, const QString &text, int id)
{
    auto *button = new QPushButton(text, row->parentWidget());
    row->addWidget(button, 0, Qt::AlignRight);
    m_pGroupButtons->addButton(button, id);
    return button;
}

void ZvQtTaskDialog::onCommandClicked(int id)
{
    qDebug() << "m_pGroupSelectors = " << id;
    params()->SetDataI("ControlBtn", id);
    accept();
}

void ZvQtTaskDialog::onFooterClicked(int id)
{
    // A dialog of standard buttons alone never answers an id that its caller cannot know.
    if (m_flag != kCallersButtons && !isStandardId(id) && !(m_contentFlag & kShowCommands))
        id = kCancelId;
    params()->SetDataI("ControlBtn", id);
    accept();
}

void ZvQtTaskDialog::onCheckStateChanged(int state)
{
    params()->SetDataB("selectedCheck", state == Qt::Checked);
}
