// SPDX-License-Identifier: MIT
#include "common/qt_filedialog.h"

#include "common/qt_filedialog_filters.h"
#include "private/zvbagreader.h"
#include "private/zvdialogparent.h"
#include "private/zvqtstring.h"

#include "utils/zvfiles.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>

#include <memory>

namespace {

constexpr int kArrayNode = 1;
constexpr int kObjectNode = 2;
constexpr QSize kMinimumSize(820, 485);

/// Keeps Qt from noting folders, places and widths in the user's settings, which all programs of the user share: for
/// the life of the object no settings of the user can be written.
class NoUserSettings
{
public:
    NoUserSettings()
    {
        const QString file = QSettings(QSettings::UserScope, QStringLiteral("QtProject")).fileName();
        m_path = QFileInfo(file).path();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
    }
    ~NoUserSettings() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_path); }
    Q_DISABLE_COPY(NoUserSettings)

private:
    QString m_path; // Qt tells it by the name of a file only
};

QList<QUrl> standardPlaces()
{
    QList<QUrl> places;
    for (const QStandardPaths::StandardLocation location :
         {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation, QStandardPaths::ApplicationsLocation})
        places << QUrl::fromLocalFile(QStandardPaths::writableLocation(location));
    return places;
}

int findFilter(const QComboBox *combo, const QString &filter)
{
    return combo->findData(filter, Qt::DisplayRole, Qt::MatchCaseSensitive);
}

} // namespace

ZvQtFileDialogImpl::ZvQtFileDialogImpl(QWidget *parent, Qt::WindowFlags flags)
    : QFileDialog(parent, flags), m_ownTree(ElementValue::createObject(kObjectNode))
{
    connect(this, &QFileDialog::currentChanged, this, &ZvQtFileDialogImpl::onCurrentChanged);
}

ZvQtFileDialogImpl::~ZvQtFileDialogImpl()
{
    // Qt writes its notes in the destructor of QFileDialog, which runs before this signal.
    connect(this, &QObject::destroyed, [none = std::make_shared<NoUserSettings>()] {});
}

QLineEdit *ZvQtFileDialogImpl::fileNameEdit() const
{
    return findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
}

QComboBox *ZvQtFileDialogImpl::fileTypeCombo() const
{
    return findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
}

bool ZvQtFileDialogImpl::onInit(ZvJsonPtr params, ZvRxObjectPtr)
{
    m_pParams = params;
    const QString caption = zvBagString(params, "caption");
    const QString dir = zvBagString(params, "dir");
    const QString filter = zvBagString(params, "filter");
    const bool opens = zvBagBool(params, "Open", false);
    const bool takesSeveral = zvBagBool(params, "MutiFile", false);
    const QString defFilter = zvBagString(params, "defFilter");
    m_hideExtend = zvBagBool(params, "HideExtend", false);
    m_boxHide = zvBagBool(params, "BoxHide", false);

    setMinimumSize(kMinimumSize);
    setOption(QFileDialog::DontUseNativeDialog);
    setViewMode(QFileDialog::Detail);
    setWindowTitle(caption);
    setNameFilter(filter);
    selectNameFilter(defFilter);

    if (opens) {
        setAcceptMode(QFileDialog::AcceptOpen);
        if (takesSeveral)
            setFileMode(QFileDialog::ExistingFiles);
    } else {
        setAcceptMode(QFileDialog::AcceptSave);
        setOption(QFileDialog::DontConfirmOverwrite); // Qt would ask for the typed name, which lacks the extension
        setDefaultSuffix(defFilter);
        const QString name = zvToQString(zvutGetFileNoExtName(zvToZvString(zvBagString(params, "saveDefName"))));
        const QString suffix = selectedSuffix();
        if (!name.isEmpty() && !suffix.isEmpty())
            selectFile(directory().filePath(name + suffix));
    }
    if (auto *buttons = findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))) {
        if (QPushButton *cancel = buttons->button(QDialogButtonBox::Cancel))
            cancel->setText(tr("取消"));
    }
    setSidebarUrls(standardPlaces());
    if (!m_hideExtend)
        addPanes();
    setStartFolder(dir);
    connectFilters(opens);
    return true;
}

void ZvQtFileDialogImpl::setStartFolder(QString dir)
{
    if (dir.isEmpty()) {
        setDirectory(QDir::currentPath()); // not the folder that Qt remembers of another dialog
        return;
    }
    dir.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (isDir(zvToZvUtf8String(dir))) {
        setDirectory(dir);
        return;
    }
    const int nameStart = dir.lastIndexOf(QLatin1Char('/')) + 1;
    if (nameStart > 0)
        setDirectory(dir.left(nameStart));
    const QString name = dir.mid(nameStart);
    if (name.isEmpty())
        return;
    if (QLineEdit *edit = fileNameEdit())
        edit->setText(name);
    Q_EMIT currentChanged(dir);
}

void ZvQtFileDialogImpl::connectFilters(bool opens)
{
    QComboBox *combo = fileTypeCombo();
    if (!combo)
        return;
    const int index = opens ? qMax(findFilter(combo, zvBagString(m_pParams, "defFilter")), 0)
                            : zvBagInt(m_pParams, "useFilterIdx", 0);
    if (index >= 0 && index < combo->count()) {
        // The combo alone would leave the list filtered by another entry. Qt gives the name the filter's extension
        // with it, which nobody has asked for yet.
        const QString name = fileNameEdit() ? fileNameEdit()->text() : QString();
        selectNameFilter(combo->itemText(index));
        if (fileNameEdit() && fileNameEdit()->text() != name)
            fileNameEdit()->setText(name);
    }
    combo->setCurrentIndex(index);
    connect(combo, &QComboBox::textActivated, this, &ZvQtFileDialogImpl::onFilterChanged);
}

ZvQtFileDialog::~ZvQtFileDialog() = default;

bool ZvQtFileDialog::createDialog(QWidget *parent, Qt::WindowFlags flags)
{
    if (m_pDialog)
        return true;
    m_pDialog = new ZvQtFileDialogImpl(parent, flags);
    m_pWidget = m_pDialog.data();
    m_pDialog->setModal(true);
    return true;
}

bool ZvQtFileDialog::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    ZvQtUIModeDialogBase::onInit(params, helper);
    return m_pDialog && m_pDialog->onInit(params, helper);
}

int ZvQtFileDialog::doModal()
{
    for (;;) {
        const int code = ZvQtUIModeDialogBase::doModal();
        if (code != kDialogAccepted || !m_pDialog) {
            m_pResult->setInteger("result", code, 0);
            return code;
        }
        if (zvBagBool(m_pParams, "Open", false))
            writeOpenResult();
        else if (!writeSaveResult())
            continue; // no message: the user sees the dialog again with all that was entered
        m_pResult->setInteger("result", code, 0);
        return code;
    }
}

bool ZvQtFileDialog::writeSaveResult()
{
    const QComboBox *combo = m_pDialog->fileTypeCombo();
    const QLineEdit *edit = m_pDialog->fileNameEdit();
    QString folder = m_pDialog->directory().path();
    folder.replace(QLatin1Char('\\'), QLatin1Char('/'));
    int index = combo ? combo->currentIndex() : -1;
    QString filter = m_pDialog->selectedNameFilter();
    if (filter.contains(QLatin1String("*.*")) && zvBagHasKey(m_pParams, "defFilter")) {
        filter = zvBagString(m_pParams, "defFilter");
        index = combo ? findFilter(combo, filter) : -1;
    }

    // Worked out anew from what the user typed, blanks at its ends included: the name that was checked is not kept.
    QString path = folder + QLatin1Char('/') + (edit ? edit->text() : QString());
    const QString suffix = zvFilterSuffix(filter);
    if (!path.endsWith(suffix))
        path += suffix;
    if (!zvutIsValidFilePathName(zvToZvUtf8String(path)))
        return false;
    m_pResult->SetDataI("useFilterIdx", index);
    m_pResult->SetDataSW("useFilter", zvToZvString(filter));
    m_pResult->SetDataSW("fileName", zvToZvString(QFileInfo(path).fileName()));
    m_pResult->SetDataSW("filePath", zvToZvString(path));
    return true;
}

void ZvQtFileDialog::writeOpenResult()
{
    const ZvJsonPtr files = ElementValue::createObject(kArrayNode);
    for (const QString &path : m_pDialog->selectedFiles()) {
        const ZvUtf8String file = zvToZvUtf8String(path);
        const ZvJsonPtr entry = ElementValue::createObject(kObjectNode);
        entry->SetDataS("name", zvutGetFileName(file));
        entry->SetDataS("path", file);
        files->append(entry);
    }
    m_pResult->SetDataSW("useFilter", zvToZvString(m_pDialog->selectedNameFilter()));
    m_pResult->SetDataJ("filePaths", files);
}

ZvRxObjectPtr zvqt_makeFileDialog(QWidget *parent, Qt::WindowFlags flags)
{
    typedef ZvQtRxObjectImpl<ZvQtFileDialog> Adapter;
    const ZvSmartPtr<Adapter> adapter = ZvSmartPtr<Adapter>::adopt(new Adapter());
    if (!parent)
        parent = zvDialogParent(ZvDialogParent::kGivenOrSystem, nullptr);
    if (!adapter->createDialog(parent, flags))
        return ZvRxObjectPtr();
    return adapter;
}
