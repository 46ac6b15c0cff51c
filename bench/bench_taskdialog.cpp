// SPDX-License-Identifier: MIT
//
// The task dialog and its smaller sibling, the message box, beside plain QDialogs with the same widgets made by hand.
// One call is timed, by the processor's time: the dialog is made, shown to its first paint, closed and deleted. "ratio"
// is ours to the plain one; take the median. Aimed at 1.3.
//
// "Plain" has the same labels, icon, buttons and check box, the same word wrap, least widths and style sheets, in one
// layout for each row and column; what it has not is the property bag, the adapter, and the panels around the parts of
// the task dialog. Each row of "taskDialog" adds content:
//
//   0 a message and a row of buttons; 1 with a content text, further text and a check box; 2 with command buttons.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "firstpaint.h"
#include "timing.h"
#include "withmodule.h"

#include "base/zvregistry.h"
#include "core/zvui.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyleFactory>

namespace {

constexpr int kRepetitions = 7;
constexpr int kCalls = 15;

enum Content { kTexts = 1, kButtons = 2, kCommands = 4, kCheck = 8 };
constexpr int kWarning = 64;
constexpr int kOkYesNoCancel = 1 | 2 | 4 | 8;

const QString kTitle = QStringLiteral("Close drawing");
const QString kMessage = QStringLiteral("The drawing was changed since it was last saved. What is to become of it?");
const QString kContent = QStringLiteral("It is open in another window too, which will show what is on disk.");
const QString kFurther
    = QStringLiteral("A copy of it is written every 30 seconds, and stays until the drawing is closed.");
const QString kCheckText = QStringLiteral("Do the same with all drawings");
const QStringList kCommandTexts{QStringLiteral("Save it and close"), QStringLiteral("Close it as it was"),
                                QStringLiteral("Keep it open")};
const QStringList kTaskButtons{QStringLiteral("确定(&O)"), QStringLiteral("是(&Y)"), QStringLiteral("否(&N)"),
                               QStringLiteral("取消(&C)")};
const QStringList kBoxButtons{QStringLiteral("是(&Y)"), QStringLiteral("否(&N)"), QStringLiteral("取消(&C)")};

ZvString wide(const QString &text)
{
    return ZvString(text.toUtf8().constData());
}

QString iconPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/ico_zeva/warning.png");
}

void callOurs(const char *name, const ZvJsonPtr &params)
{
    const ZvUiDialogBasePtr dialog
        = zvrxCast<ZvUiService>(grUISvr(L"Dialog/Common"))->createDialog(ZvString(name), nullptr);
    dialog->onInit(params, nullptr);
    auto *window = static_cast<QDialog *>(dialog->getDlg());
    showToFirstPaint(window);
    window->close();
}

QLabel *plainIcon()
{
    auto *icon = new QLabel;
    icon->setPixmap(QPixmap(iconPath()).scaled(32, 32, Qt::KeepAspectRatio));
    icon->setScaledContents(true);
    icon->setFixedSize(32, 32);
    return icon;
}

void addWrapped(QLayout *column, const QString &text)
{
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    column->addWidget(label);
}

void addButtons(QDialog &dialog, QHBoxLayout *row, const QStringList &texts)
{
    auto *group = new QButtonGroup(&dialog);
    row->addStretch();
    for (const QString &text : texts) {
        auto *button = new QPushButton(text);
        row->addWidget(button, 0, Qt::AlignRight);
        group->addButton(button);
    }
    QObject::connect(group, QOverload<int>::of(&QButtonGroup::buttonClicked), &dialog, &QDialog::accept);
}

void callPlainTaskDialog(int content)
{
    QDialog dialog;
    dialog.setWindowTitle(kTitle);
    auto *outer = new QVBoxLayout(&dialog);
    auto *top = new QHBoxLayout;
    auto *column = new QVBoxLayout;
    outer->addLayout(top);
    top->addWidget(plainIcon());
    top->addLayout(column);
    addWrapped(column, kMessage);
    if (content & kCheck) {
        column->addWidget(new QLabel);
        addWrapped(column, kContent);
        addWrapped(column, kFurther);
    }
    if (content & kCommands) {
        auto *group = new QButtonGroup(&dialog);
        for (const QString &text : kCommandTexts) {
            auto *button = new QPushButton(text);
            button->setMinimumWidth(417);
            button->setStyleSheet(QStringLiteral("QPushButton {color:rgb(0, 116, 216);}"));
            button->setAutoDefault(false);
            column->addWidget(button);
            group->addButton(button);
        }
        QObject::connect(group, QOverload<int>::of(&QButtonGroup::buttonClicked), &dialog, &QDialog::accept);
    }
    if (content & kCheck)
        outer->addWidget(new QCheckBox(kCheckText), 0, Qt::AlignLeft);
    auto *row = new QHBoxLayout;
    outer->addLayout(row);
    addButtons(dialog, row, kTaskButtons);
    dialog.adjustSize();
    showToFirstPaint(&dialog);
    dialog.close();
}

void callTaskDialog(int content)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("title", wide(kTitle));
    params->SetDataSW("msg", wide(kMessage));
    params->SetDataI("dlgtype", kWarning);
    params->SetDataI("contentFlag", content);
    params->SetDataI("flag", kOkYesNoCancel);
    if (content & kCheck) {
        params->SetDataS("content", kContent.toUtf8().constData());
        params->SetDataS("expandedInformation", kFurther.toUtf8().constData());
        params->SetDataS("checkboxText", kCheckText.toUtf8().constData());
    }
    for (int i = 0; (content & kCommands) && i < kCommandTexts.size(); ++i) {
        const std::string key = "selBtnText/" + std::to_string(i);
        params->SetDataI((key + "/id").c_str(), 100 + i);
        params->SetDataS((key + "/caption").c_str(), kCommandTexts[i].toUtf8().constData());
    }
    callOurs("TaskDialog", params);
}

void callPlainBox()
{
    QDialog dialog;
    dialog.setWindowTitle(kTitle);
    dialog.setMinimumWidth(300);
    auto *outer = new QVBoxLayout(&dialog);
    auto *top = new QHBoxLayout;
    auto *row = new QHBoxLayout;
    outer->addLayout(top);
    outer->addLayout(row);
    top->addWidget(plainIcon(), 0, Qt::AlignLeft);
    top->addWidget(new QLabel(kMessage), 0, Qt::AlignLeft);
    top->addStretch();
    addButtons(dialog, row, kBoxButtons);
    showToFirstPaint(&dialog);
    dialog.close();
}

void callBox()
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("title", wide(kTitle));
    params->SetDataSW("msg", wide(kMessage));
    params->SetDataI("dlgtype", kWarning);
    params->SetDataI("contentFlag", 1);
    params->SetDataI("flag", 3);
    callOurs("MessageBox", params);
}

template <class Ours, class Plain> void compare(benchmark::State &state, Ours ours, Plain plain)
{
    ours();
    plain();
    for (auto _ : state) {
        std::vector<double> plainTimes;
        const double time = medianOf(kCalls, [&] { // in turns: whatever slows the machine down slows down both
            plainTimes.push_back(processorSecondsOf(plain));
            return processorSecondsOf(ours);
        });
        std::size_t next = 0;
        state.SetIterationTime(time);
        state.counters["ratio"] = time / medianOf(kCalls, [&] { return plainTimes[next++]; });
    }
}

void taskDialog(benchmark::State &state)
{
    constexpr int kContents[] = {kTexts | kButtons, kTexts | kButtons | kCheck, kTexts | kButtons | kCheck | kCommands};
    const int content = kContents[state.range(0)];
    compare(
        state, [content] { callTaskDialog(content); }, [content] { callPlainTaskDialog(content); });
}
BENCHMARK(taskDialog)
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(kRepetitions)
    ->ReportAggregatesOnly()
    ->Unit(benchmark::kMillisecond);

void messageBox(benchmark::State &state)
{
    compare(state, callBox, callPlainBox);
}
BENCHMARK(messageBox)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(kRepetitions)
    ->ReportAggregatesOnly()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (!QFile::exists(iconPath()))
        qWarning("The icon is missing beside the program; neither dialog shows it.");
    return runBenchmarksWithModule(argc, argv);
}
