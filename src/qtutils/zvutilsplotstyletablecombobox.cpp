// SPDX-License-Identifier: MIT
#include "zvutilsplotstyletablecombobox.h"

#include "private/zvnamedcombo.h"
#include "private/zvtranslation.h"

#include "core/zvedvars.h"
#include "db/zvresbuf.h"
#include "utils/zvfiles.h"

namespace {

constexpr char kNoTable[] = QT_TRANSLATE_NOOP("ZvUtilsPlotStyleTableComboBox", "无");

/// Whether plot styles go by colour. They are taken to do so where nothing says otherwise.
bool plotsByColor()
{
    ZvResBuf value;
    if (zvedGetVar(L"PSTYLEMODE", &value) != ZvRes::kNormal || value.restype != ZvRes::kShort)
        return true;
    return value.resval.rint == 1;
}

} // namespace

ZvUtilsPlotStyleTableComboBox::ZvUtilsPlotStyleTableComboBox(QWidget *parent)
    : ZvUtilsPlotStyleTableComboBox(false, parent)
{
}

ZvUtilsPlotStyleTableComboBox::ZvUtilsPlotStyleTableComboBox(bool hook, QWidget *parent)
    : QComboBox(parent), CZvQtControlHelp(hook)
{
    const ZvUpdateBusJoin joined(*this);
    zvSetUpList(*this);
    zvTranslateRows(this, "ZvUtilsPlotStyleTableComboBox", {kNoTable});
    init();
}

ZvUtilsPlotStyleTableComboBox::~ZvUtilsPlotStyleTableComboBox()
{
    zvLeaveUpdateBus(*this);
}

void ZvUtilsPlotStyleTableComboBox::init()
{
    clear();
    zvAddPlainRow(*this, tr(kNoTable));
    ZvArray<ZvString> files;
    zvsiutGetAllPlotStyleFiles(files, plotsByColor(), nullptr);
    for (ZvString &file : files)
        file = zvutGetLastFileNameInPath(file);
    zvAppendNames(*this, *this, files);
}

QString ZvUtilsPlotStyleTableComboBox::getCurrentPlotStyleName() const
{
    return currentText();
}

void ZvUtilsPlotStyleTableComboBox::curIndexChanged(int)
{
    zvTellPickUnheard(*this, [this](const QString &name) { Q_EMIT plotStyleTableItemChanged(name); });
}

void ZvUtilsPlotStyleTableComboBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &) { }
