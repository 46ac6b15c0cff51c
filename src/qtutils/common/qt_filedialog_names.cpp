// SPDX-License-Identifier: MIT
// The names of the file dialog: the checks before it closes, and the extensions that the filters give.
#include "common/qt_filedialog.h"

#include "common/qt_filedialog_filters.h"
#include "private/zvbagreader.h"
#include "private/zvqtstring.h"

#include "base/zvconfig.h"
#include "utils/zvfiles.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>

namespace {

constexpr char kRefusedCharacters[] = "<>/\\\";:?*,=`";
constexpr int kMaxNameLength = 254; // although the message speaks of 255

// Of the message box: sets of buttons, the ids of those that go on, content and icon.
enum ButtonSet { kOk = 0, kOkCancel = 1, kYesNo = 4, kCallersButtons = 6 };
constexpr int kOkButton = 1;
constexpr int kYesButton = 6;
constexpr int kMessageRow = 1;
constexpr int kNoIcon = 0;
constexpr int kWarningIcon = 64;

/// The id of the button that the user pressed.
int ask(const QString &title, const QString &text, ButtonSet buttons)
{
    const ZvJsonPtr answer
        = zvuiMessageBoxEx(zvToZvString(title), zvToZvString(text), ZvJsonPtr(), buttons, kMessageRow, kWarningIcon);
    return zvBagInt(answer, "ControlBtn", -1);
}

bool hasRefusedCharacter(const QString &name)
{
    for (const QChar c : name) {
        if (QLatin1String(kRefusedCharacters).contains(c))
            return true;
    }
    return false;
}

/// The first folder of the templates, ending in "/"; empty where the settings have none.
QString templateFolder()
{
    ZvArray<ZvUtf8String> paths;
    zvutEnumPaths(zv_runtime_config("paths/templatePaths"), paths);
    if (paths.isEmpty() || paths[0].isEmpty())
        return QString();
    const QString folder = zvToQString(paths[0]);
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

} // namespace

QString ZvQtFileDialogImpl::selectedSuffix() const
{
    return zvFilterSuffix(selectedNameFilter());
}

void ZvQtFileDialogImpl::onFilterChanged(QString filter)
{
    if (filter.contains(QLatin1String("*.dwt"))) {
        const QString folder = templateFolder();
        if (!folder.isEmpty())
            setDirectory(folder);
    }
    QLineEdit *edit = fileNameEdit();
    if (zvBagBool(m_pParams, "Open", false) || zvBagBool(m_pParams, "MutiFile", false) || !edit
        || edit->text().isEmpty())
        return;

    const QComboBox *combo = fileTypeCombo();
    if (!filter.contains(QLatin1Char('.')) && combo && combo->currentIndex() + 1 < combo->count())
        filter = combo->itemText(combo->currentIndex() + 1);
    // Without a filter of its own to fall back on, "*.*" gives the name the extension ".*".
    if (filter.contains(QLatin1String("*.*")) && zvBagHasKey(m_pParams, "defFilter"))
        filter = zvBagString(m_pParams, "defFilter");
    if (!filter.contains(QLatin1Char('.')))
        return;
    const QString name = edit->text();
    edit->setText(name.left(name.size() - zvNameSuffix(name).size()) + zvFilterSuffixToEnd(filter));
}

void ZvQtFileDialogImpl::accept()
{
    if (acceptMode() == QFileDialog::AcceptOpen)
        acceptOpen();
    else
        acceptSave();
}

void ZvQtFileDialogImpl::acceptOpen()
{
    const QStringList files = selectedFiles();
    // Of several files only the first one is looked at. A folder is Qt's to enter.
    if (files.isEmpty() || zvutIsExistFile(zvToZvUtf8String(files.first())) || isDir(zvToZvUtf8String(files.first()))) {
        QFileDialog::accept();
        return;
    }
    const QString name = zvToQString(zvutGetFileName(zvToZvString(files.first())));
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("btnText/0", zvToZvString(tr("关闭(&C)")));
    zvuiMessageBoxEx(zvToZvString(windowTitle() + tr("未找到文件")), zvToZvString(name + tr("\n文件名无效")), params,
                     kCallersButtons, kMessageRow, kNoIcon);
}

bool ZvQtFileDialogImpl::isSaveNameUsable(const QString &name) const
{
    if (hasRefusedCharacter(name)) {
        ask(windowTitle(), tr(" %1 \n文件名无效。").arg(name), kOk);
        return false;
    }
    if (name.size() > kMaxNameLength) {
        ask(tr("文件名 - 文字长度"), tr(" 文件全名 不能多于 255 个字符。"), kOk);
        return false;
    }
    return true;
}

QString ZvQtFileDialogImpl::withSuffix(const QString &name) const
{
    QString suffix = selectedSuffix();
    if (suffix.contains(QLatin1String(".*"))) {
        if (!zvBagHasKey(m_pParams, "defFilter"))
            return name;
        suffix = zvFilterSuffixToEnd(zvBagString(m_pParams, "defFilter"));
    }
    return zvNameSuffix(name) == suffix ? name : name + suffix;
}

void ZvQtFileDialogImpl::acceptSave()
{
    const QLineEdit *edit = fileNameEdit();
    QString name = edit ? edit->text().trimmed() : QString();
    if (name.isEmpty() || !isSaveNameUsable(name))
        return;
    name = withSuffix(name);

    const QString path = directory().filePath(name);
    if (!zvutAccessFile(zvToZvString(directory().absolutePath()), 2)) {
        const QString question = tr(" %1 \n您没有权限在此位置中保存文件。 \n请与管理员联系以获得相应权限。"
                                    "\n\n您想改为保存到 %2 的文档文件夹中吗?");
        if (ask(windowTitle(), question.arg(path, zvToQString(zvutGetUserName())), kYesNo) == kYesButton)
            setDirectory(zvToQString(zvutGetHomeDir()));
        return; // the user has to press the button again
    }
    if (!zvutIsExistFile(zvToZvUtf8String(path))) {
        QFileDialog::accept();
        return;
    }
    const QString question = tr(" %1 已经存在。\n是否替换它？");
    if (!m_boxHide && ask(tr("输出数据"), question.arg(path), kOkCancel) != kOkButton)
        return;
    done(QDialog::Accepted); // past Qt's own question
}
