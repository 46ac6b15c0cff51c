// SPDX-License-Identifier: MIT
//
// The file dialog beside Qt's own over the same folder, from the call to the first paint, in one run:
//
//   - a plain QFileDialog, not native;
//   - the same with panes like ours made by hand, which is what the extended dialog is aimed at 1.15 times of;
//   - the dialog of the service, with its panes and without.
//
// The panes made by hand are the same widgets in the same places, with the same sizes and icons and three places, and
// they run the listing of the machine's mount points, as the panes do: whoever wants them has to make that process, once
// for a dialog. It is measured apart. What they have not is the service, the property bag, the checks for the folders of
// the home, and the preview. Both note nothing themselves; Qt's dialog writes its notes into the user's settings when
// it goes, which is part of its time, and which ours keeps it from.
//
// The processor's time is that of this thread alone: the listing and the disk show in the time by the clock.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "firstpaint.h"
#include "withmodule.h"

#include "base/zvregistry.h"
#include "core/zvui.h"
#include "utils/zvfiles.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <memory>

namespace {

constexpr char kListing[] = "lsblk -l -o MOUNTPOINT";
const QString kFilter = QStringLiteral("Drawings (*.abc);;All files (*)");

/// A folder of so many files, made once.
QString folderOf(int files)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> folders;
    std::unique_ptr<QTemporaryDir> &folder = folders[files];
    if (!folder) {
        folder = std::make_unique<QTemporaryDir>();
        for (int i = 0; i < files; ++i) {
            QFile file(folder->filePath(QStringLiteral("drawing %1.abc").arg(i)));
            file.open(QIODevice::WriteOnly);
        }
    }
    return folder->path();
}

void setUp(QFileDialog &dialog, int files)
{
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setNameFilter(kFilter);
    dialog.setMinimumSize(820, 485);
    dialog.setDirectory(folderOf(files));
}

void plainFileDialog(benchmark::State &state)
{
    const int files = int(state.range(0));
    folderOf(files);
    for (auto _ : state) {
        QFileDialog dialog;
        setUp(dialog, files);
        showToFirstPaint(&dialog);
    }
}
BENCHMARK(plainFileDialog)->Arg(50)->Arg(2000)->Unit(benchmark::kMillisecond);

/// The widgets of our panes and the listing of the mount points.
void plainFileDialogWithPanes(benchmark::State &state)
{
    const int files = int(state.range(0));
    folderOf(files);
    for (auto _ : state) {
        QFileDialog dialog;
        setUp(dialog, files);
        dialog.resize(869, 490);
        auto *splitter = dialog.findChild<QSplitter *>(QStringLiteral("splitter"));
        dialog.findChild<QStackedWidget *>(QStringLiteral("stackedWidget"))->setMinimumSize(389, 377);
        dialog.findChild<QWidget *>(QStringLiteral("sidebar"))->hide();
        auto *places = new QListWidget;
        places->setFixedSize(200, 377);
        ZvUtf8String mounts;
        zvutPipeCmd(kListing, mounts);
        for (int i = 0; i < 3; ++i)
            new QListWidgetItem(QIcon(QStringLiteral(":/res/file.png")), QStringLiteral("place"), places);
        splitter->insertWidget(0, places);
        auto *panel = new QWidget(splitter);
        panel->setMinimumSize(250, 377);
        auto *layout = new QGridLayout(panel);
        auto *group = new QGroupBox(QStringLiteral("preview"));
        auto *host = new QWidget;
        new QLabel(host);
        (new QGridLayout(group))->addWidget(host);
        layout->addWidget(group, 0, 0, 5, 4);
        auto *lower = new QWidget;
        new QGridLayout(lower);
        layout->addWidget(lower, 5, 0, 5, 4);
        showToFirstPaint(&dialog);
    }
}
BENCHMARK(plainFileDialogWithPanes)->Arg(50)->Arg(2000)->Unit(benchmark::kMillisecond);

void runFileDialog(benchmark::State &state, bool hasPanes)
{
    const int files = int(state.range(0));
    const QByteArray folder = folderOf(files).toUtf8();
    for (auto _ : state) {
        const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
        params->SetDataB("Open", true);
        params->SetDataB("HideExtend", !hasPanes);
        params->SetDataSW("dir", ZvString(folder.constData()));
        params->SetDataSW("filter", ZvString(kFilter.toUtf8().constData()));
        const ZvUiDialogBasePtr dialog
            = zvrxCast<ZvUiService>(grUISvr(L"Dialog/Common"))->createDialog(L"FileDialogBox", nullptr);
        dialog->onInit(params, nullptr);
        showToFirstPaint(shownDialog("ZvQtFileDialogImpl"));
    }
}

void fileDialogWithoutPanes(benchmark::State &state)
{
    runFileDialog(state, false);
}
BENCHMARK(fileDialogWithoutPanes)->Arg(50)->Arg(2000)->Unit(benchmark::kMillisecond);

void fileDialog(benchmark::State &state)
{
    runFileDialog(state, true);
}
BENCHMARK(fileDialog)->Arg(50)->Arg(2000)->Unit(benchmark::kMillisecond);

void mountListing(benchmark::State &state)
{
    ZvUtf8String output;
    for (auto _ : state)
        zvutPipeCmd(kListing, output);
}
BENCHMARK(mountListing)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_FONT_DPI", "96");
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return runBenchmarksWithModule(argc, argv);
}
