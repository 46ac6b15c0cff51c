// SPDX-License-Identifier: MIT
#include "common/qt_messagebox.h"

#include "private/zvbagreader.h"
#include "private/zvdialogicons.h"
#include "private/zvlogline.h"
#include "qt_utils.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDebug>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

enum ContentFlag {
    kShowMessage = 1,
    kShowSelectors = 4,
    kShowChecks = 8,
};

struct Button
{
    const char *text; ///< Null ends a set.
    int id;
};

constexpr Button kOk = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "确定(&O)"), 1};
constexpr Button kCancel = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "取消(&C)"), 2};
constexpr Button kAbort = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "终止(&A)"), 3};
constexpr Button kRetry = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "重试(&R)"), 4};
constexpr Button kIgnore = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "忽略(&I)"), 5};
constexpr Button kYes = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "是(&Y)"), 6};
constexpr Button kNo = {QT_TRANSLATE_NOOP("ZvQtMessageBox", "否(&N)"), 7};

// By "flag". OK alone has id 0 where OK beside Cancel has id 1: callers tell the two sets apart by it.
constexpr Button kButtonSets[][4] = {
    {{kOk.text, 0}, {}},      {kOk, kCancel, {}}, {kAbort, kRetry, kIgnore, {}},
    {kYes, kNo, kCancel, {}}, {kYes, kNo, {}},    {kRetry, kCancel, {}},
};
constexpr int kButtonSetCount = int(sizeof(kButtonSets) / sizeof(kButtonSets[0]));
constexpr int kCallersButtons = 6; // the value of "flag" for the texts of "btnText"

constexpr int kMinimumWidth = 300;
constexpr QMargins kRowMargins(0, 0, 0, 8);
constexpr QMargins kMessageMargins(8, 0, 0, 0);

void logTrace(int line, const char *text)
{
    zvLogLine(3, line, "qtutils/common/qt_messagebox", "operator()", text);
}

} // namespace

ZvQtMessageBox::ZvQtMessageBox(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags)
    : ZvQtModeDialogImpl(owner, parent, flags)
{
    setWindowFlags(windowFlags()
                   & ~(Qt::WindowContextHelpButtonHint | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
}

bool ZvQtMessageBox::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    ZvQtModeDialogImpl::onInit(params, helper);
    m_hideMaximize = zvBagBool(params, "WindowMaximizeButtonHint", m_hideMaximize);
    return onCreateInner();
}

void ZvQtMessageBox::reject()
{
    if (m_pButtonGroup && !m_pButtonGroup->buttons().isEmpty())
        params()->SetDataI("ControlBtn", m_pButtonGroup->id(m_pButtonGroup->buttons().last()));
    QDialog::reject();
}

bool ZvQtMessageBox::onCreateInner()
{
    if (!params())
        return false;
    const int contentFlag = zvBagInt(params(), "contentFlag", 0);
    m_checkMask = 0;

    auto *outer = new QVBoxLayout;
    auto *messageRow = new QHBoxLayout;
    auto *selectorColumn = new QVBoxLayout;
    auto *checkColumn = new QVBoxLayout;
    auto *buttonRow = new QHBoxLayout;
    outer->addLayout(messageRow);
    outer->addLayout(selectorColumn);
    outer->addLayout(checkColumn);
    outer->addLayout(buttonRow);
    setLayout(outer);

    setWindowTitle(zvBagString(params(), "title"));
    setMinimumWidth(kMinimumWidth);
    setWindowIcon(windowIcon());

    if (contentFlag & kShowMessage)
        addMessage(messageRow);
    if (contentFlag & kShowSelectors)
        addSelectors(selectorColumn);
    if (contentFlag & kShowChecks)
        addChecks(checkColumn);
    if (!(contentFlag & kShowSelectors))
        addButtons(buttonRow);

    if (m_hideMaximize)
        setWindowFlags(windowFlags() & ~Qt::WindowMaximizeButtonHint);
    return true;
}

void ZvQtMessageBox::addMessage(QBoxLayout *row)
{
    const QString path = zvDialogIconPath(zvBagInt(params(), "dlgtype", 0) & 0xFF);
    if (QFile::exists(path))
        row->addWidget(zvMakeDialogIcon(path, this), 0, Qt::AlignLeft);
    // No word wrap: the caller breaks the lines, and a long one widens the dialog.
    auto *message = new QLabel(zvBagString(params(), "msg"), this);
    message->setContentsMargins(kMessageMargins);
    row->addWidget(message, 0, Qt::AlignLeft);
    row->addStretch(0);
    row->setContentsMargins(kRowMargins);
}

void ZvQtMessageBox::addSelectors(QBoxLayout *column)
{
    auto *group = new QButtonGroup(this);
    int id = 0;
    for (const QString &text : zvBagTexts(params(), "selBtnText")) {
        auto *button = new QPushButton(text);
        column->addWidget(button);
        group->addButton(button, id++);
    }
    connect(group, QOverload<int>::of(&QButtonGroup::buttonClicked), this, &ZvQtMessageBox::onSelectorClicked);
    column->setContentsMargins(kRowMargins);
}

void ZvQtMessageBox::addChecks(QBoxLayout *column)
{
    auto *group = new QButtonGroup(this);
    group->setExclusive(false);
    int id = 0;
    for (const QString &text : zvBagTexts(params(), "selCheckText")) {
        auto *check = new QCheckBox(text);
        column->addWidget(check);
        group->addButton(check, id++);
    }
    connect(group, QOverload<int, bool>::of(&QButtonGroup::buttonToggled), this, &ZvQtMessageBox::onCheckToggled);
    column->setContentsMargins(kRowMargins);
}

void ZvQtMessageBox::addButtons(QBoxLayout *row)
{
    row->addStretch(0);
    m_pButtonGroup = new QButtonGroup(this);
    const auto addButton = [this, row](const QString &text, int id) {
        auto *button = new QPushButton(text);
        row->addWidget(button, 0, Qt::AlignRight | Qt::AlignVCenter);
        m_pButtonGroup->addButton(button, id);
    };
    const auto addSet = [&addButton](int set) {
        for (const Button *button = kButtonSets[set]; button->text; ++button)
            addButton(tr(button->text), button->id);
    };

    const int flag = zvBagInt(params(), "flag", 0);
    if (flag >= 0 && flag < kButtonSetCount) {
        addSet(flag);
    } else if (flag == kCallersButtons) {
        const QStringList texts = zvBagTexts(params(), "btnText");
        for (int id = 0; id < texts.size(); ++id)
            addButton(texts.at(id), id);
        if (texts.isEmpty())
            addSet(0);
    }
    row->setContentsMargins(kRowMargins);
    connect(m_pButtonGroup.data(), QOverload<int>::of(&QButtonGroup::buttonClicked), this,
            &ZvQtMessageBox::onButtonClicked);
}

void ZvQtMessageBox::onButtonClicked(int id)
{
    logTrace(__LINE__, "ZvQtMessageBox: ButtonClicked");
    params()->SetDataI("ControlBtn", id);
    {
        const ZvQtBlockSignalUtil guard(this);
        accept();
    }
    logTrace(__LINE__, "ZvQtMessageBox: m_pMessageBox.accept()");
}

void ZvQtMessageBox::onSelectorClicked(int id)
{
    qDebug() << "m_pGroupSelectors = " << id;
    params()->SetDataI("selectedBtn", id);
    accept();
}

void ZvQtMessageBox::onCheckToggled(int id, bool checked)
{
    // The mask has eight bits: boxes behind the eighth have none, and the mask is written all the same.
    const std::uint32_t bit = 1u << (std::uint32_t(id) % 32);
    m_checkMask = std::uint8_t(checked ? m_checkMask | bit : m_checkMask & ~bit);
    qDebug() << "m_pGroupCheck = " << id << ", val = " << (checked ? "true" : "false");
    params()->SetDataI("selectedCheck", m_checkMask);
}
