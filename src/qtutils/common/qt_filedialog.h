// SPDX-License-Identifier: MIT
#ifndef QT_FILEDIALOG_H
#define QT_FILEDIALOG_H

#include "zevaqt.h"

#include <QFileDialog>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidgetItem;
class QSplitter;
QT_END_NAMESPACE

/// The file dialog, "FileDialogBox" and "FileNavDialogBox" of the service "Dialog/Common": Qt's own dialog, which is
/// found by its children's object names and dressed up with a list of places at the left and a preview at the right.
///
/// Input, in the parameter tree: "caption", "dir" (a folder, or a file in it), "filter" (entries with a pattern in
/// parentheses, separated by ";;"), "Open" (else the dialog saves), "MutiFile" (several files may be opened; spelled
/// so), "defFilter" (whole text of the filter entry to begin with), "HideExtend" (no places, no preview), "BoxHide"
/// (no question before a file is replaced), "saveDefName" (proposed name, without its extension) and "useFilterIdx"
/// (filter entry of a save dialog). Texts are empty, switches false and numbers 0 where they are missing.
///
/// Output, in the adapter's result tree: "result"; when accepted "useFilter" and, of an open dialog, "filePaths" (an
/// array of objects with "name" and "path"), of a save dialog "useFilterIdx", "fileName" and "filePath".
///
/// Nothing is kept between two runs: Qt notes nothing of the dialog in the user's settings.
class ZvQtFileDialogImpl : public QFileDialog
{
    Q_OBJECT
public:
    ZvQtFileDialogImpl(QWidget *parent, Qt::WindowFlags flags);
    ~ZvQtFileDialogImpl() override;

    /// Sets the dialog up. To be called once. Always true; a null \a params is an empty tree.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper);
    /// Checks the name first. A refusal is a message, and the dialog stays.
    void accept() override;
    /// ".abc" for a filter that ends in "*.abc)", otherwise empty.
    QString selectedSuffix() const;

    QLineEdit *fileNameEdit() const;
    QComboBox *fileTypeCombo() const;

public Q_SLOTS:
    /// Shows the preview of a file; of a name that has none, nothing.
    void onCurrentChanged(const QString &file);
    /// Goes to the templates for their filter, and exchanges the extension of the name to save.
    void onFilterChanged(QString filter);
    /// Goes to a place. The typed name stays.
    void onCustomSideBarItemClicked(QListWidgetItem *item);

protected:
    /// Gives the panes the room that they need at the first show.
    void showEvent(QShowEvent *event) override;
    /// Lets files and preview grow with the dialog, beside places that do not.
    bool event(QEvent *event) override;

private:
    void setStartFolder(QString dir);
    void connectFilters(bool opens);
    void acceptOpen();
    void acceptSave();
    bool isSaveNameUsable(const QString &name) const;
    QString withSuffix(const QString &name) const;

    void addPanes();
    void addPlaces(QSplitter *splitter);
    void addPreview(QSplitter *splitter);

    void showPicture(const QString &file);
    void showThumbnail(const QString &file);
    void showPixmap(const QPixmap &pixmap);
    void fitPreview();

    QWidget *m_lowerPanel = nullptr; // empty, for applications that put something there
    QGridLayout *m_lowerLayout = nullptr;
    QGroupBox *m_previewGroup = nullptr;
    QWidget *m_previewHost = nullptr;
    QLabel *m_previewLabel = nullptr; // null without the panes
    QSplitter *m_splitter = nullptr; // Qt's, with the panes in it; null without them
    ZvJsonPtr m_ownTree; // for applications, like the lower panel; nothing here reads it
    ZvJsonPtr m_pParams;
    bool m_hideExtend = false;
    bool m_boxHide = false;
    bool m_hasRoom = false;
};

/// The dialog as the kernel knows it. A save dialog is run until its path is one that the system can store.
class ZvQtFileDialog : public ZvQtUIModeDialogBase
{
public:
    ZvQtFileDialog() = default;
    ~ZvQtFileDialog() override;

    /// Makes the dialog, modal. Always true; a second call changes nothing.
    bool createDialog(QWidget *parent, Qt::WindowFlags flags);
    /// Keeps both and gives them to the dialog. False without a dialog.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override;
    int doModal() override;

private:
    bool writeSaveResult();
    void writeOpenResult();

    QPointer<ZvQtFileDialogImpl> m_pDialog; // the same object as m_pWidget, typed
};

/// Makes the file dialog with its adapter, the count at 1; null when that fails. A null \a parent is replaced by the
/// application's window.
ZvRxObjectPtr zvqt_makeFileDialog(QWidget *parent, Qt::WindowFlags flags);

#endif
