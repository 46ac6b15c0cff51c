// SPDX-License-Identifier: MIT
#ifndef FILEDIALOGRUN_H
#define FILEDIALOGRUN_H

#include "modaldriver.h"
#include "modulesession.h"

#include "base/zvjson.h"
#include "utils/zvfiles.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColor>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
#include <QVector>

#include <unistd.h>

/// \file
/// What the tests of the file dialog share: parameters, a folder of files, the dialog, and the hands that work it.

struct BagKey
{
    BagKey() = default;
    BagKey(const char *name, bool on) : key(name), value(on) { }
    BagKey(const char *name, int number) : key(name), value(number) { }
    BagKey(const char *name, const char *text) : key(name), value(QString::fromUtf8(text)) { }
    BagKey(const char *name, const QString &text) : key(name), value(text) { }

    const char *key = "";
    QVariant value;
};
typedef QVector<BagKey> BagKeys;
Q_DECLARE_METATYPE(BagKeys)

inline ZvJsonPtr makeBag(const BagKeys &keys)
{
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    for (const BagKey &key : keys) {
        if (key.value.type() == QVariant::Bool)
            bag->SetDataB(key.key, key.value.toBool());
        else if (key.value.type() == QVariant::Int)
            bag->SetDataI(key.key, key.value.toInt());
        else
            bag->SetDataSW(key.key, ZvString(key.value.toString().toUtf8().constData()));
    }
    return bag;
}

/// "(missing)" for a key that is not there.
inline QString textOf(const ZvJsonPtr &bag, const char *key)
{
    ZvUtf8String text;
    return bag->GetDataS(key, text) ? QString::fromUtf8(text.c_str()) : QStringLiteral("(missing)");
}

inline QStringList keysOf(const ZvJsonPtr &bag)
{
    QStringList keys;
    for (int i = 0; i < bag->elementCount(); ++i)
        keys << QString::fromUtf8(bag->keyAt(i).c_str());
    keys.sort();
    return keys;
}

/// "name|path" of each opened file.
inline QStringList filesOf(const ZvJsonPtr &result)
{
    QStringList files;
    ZvJsonPtr array;
    if (!result->GetDataJ("filePaths", array))
        return {QStringLiteral("(missing)")};
    for (int i = 0; i < array->elementCount(); ++i)
        files << textOf(array->element(i), "name") + QLatin1Char('|') + textOf(array->element(i), "path");
    return files;
}

/// A folder made for one test, which disappears with it. The settings that Qt keeps of its dialogs go to a folder of
/// the same kind.
class FileTree
{
public:
    FileTree() : m_path(QDir(m_folder.path()).canonicalPath())
    {
        // One that ends up in a listing is the test's, not the user's.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
    }
    QString path(const QString &name = QString()) const
    {
        return name.isEmpty() ? m_path : m_path + QLatin1Char('/') + name;
    }
    QString addFile(const QString &name, const QByteArray &content = QByteArray("content")) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? path(name) : QString();
    }
    QString addFolder(const QString &name) const { return QDir().mkpath(path(name)) ? path(name) : QString(); }
    QByteArray settings() const
    {
        QFile file(m_settings.filePath(QStringLiteral("QtProject.conf")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_settings;
    QString m_path;
};

/// Without the rights of the superuser, who may write anywhere, for the life of the object.
class OrdinaryUser
{
public:
    OrdinaryUser() : m_changed(geteuid() == 0 && setresuid(kNobody, kNobody, 0) == 0) { }
    ~OrdinaryUser()
    {
        if (m_changed && setresuid(0, 0, 0) != 0)
            qFatal("the rights cannot be taken back");
    }
    Q_DISABLE_COPY(OrdinaryUser)
    bool isOrdinary() const { return geteuid() != 0; }

private:
    static constexpr uid_t kNobody = 65534;
    const bool m_changed;
};

/// The adapter does not tell its dialog: it is the one that is not in \a before.
inline QFileDialog *newFileDialog(const QWidgetList &before)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *dialog = qobject_cast<QFileDialog *>(window);
        if (dialog && !before.contains(window))
            return dialog;
    }
    return nullptr;
}

/// The file dialog of the service with its parameters.
class FileDialog
{
public:
    explicit FileDialog(const ZvJsonPtr &parameters, const char *name = "FileDialogBox") : params(parameters)
    {
        const QWidgetList before = QApplication::topLevelWidgets();
        adapter = ModuleSession::createDialog(name);
        dialog = newFileDialog(before);
        isReady = adapter->onInit(parameters, nullptr);
    }
    explicit FileDialog(const BagKeys &keys, const char *name = "FileDialogBox") : FileDialog(makeBag(keys), name) { }

    void show()
    {
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
    }
    ZvJsonPtr result() const { return adapter->getResult(); }
    QLineEdit *edit() const { return dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")); }
    QComboBox *filters() const { return dialog->findChild<QComboBox *>(QStringLiteral("fileTypeCombo")); }
    QListWidget *places() const { return dialog->findChild<QListWidget *>(); }

    ZvJsonPtr params;
    ZvUiDialogBasePtr adapter;
    QFileDialog *dialog = nullptr;
    bool isReady = false;
};

/// Types over what stands in the name field: letters by the keyboard, others as an input method sends them.
inline void typeName(QDialog *dialog, const QString &text)
{
    QApplication::setActiveWindow(dialog); // after a message box there may be no window manager to do it
    auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    for (const QChar c : text) {
        if (c.unicode() < 0x80) {
            QTest::keyClick(edit, c.toLatin1());
        } else {
            QInputMethodEvent event;
            event.setCommitString(QString(c));
            QCoreApplication::sendEvent(edit, &event);
        }
    }
}

inline void pressReturn(QDialog *dialog)
{
    QTest::keyClick(dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
}

inline ModalDriver::Action typeAndAccept(const QString &text)
{
    return [text](QDialog *dialog) {
        typeName(dialog, text);
        pressReturn(dialog);
    };
}

inline void pressEscape(QDialog *dialog)
{
    QTest::keyClick(dialog, Qt::Key_Escape);
}

/// Clicks a file in the list, once it is there.
inline void clickRow(QDialog *dialog, const QString &name, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    auto *tree = dialog->findChild<QTreeView *>(QStringLiteral("treeView"));
    QModelIndex row;
    const auto isListed = [&] {
        for (int i = 0; i < tree->model()->rowCount(tree->rootIndex()); ++i) {
            const QModelIndex one = tree->model()->index(i, 0, tree->rootIndex());
            if (one.data().toString() == name)
                row = one;
        }
        return row.isValid();
    };
    QTRY_VERIFY2(isListed(), qPrintable(name));
    tree->scrollTo(row);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers, tree->visualRect(row).center());
}

/// Picks an entry of the filter list as a user does.
inline void pickFilter(QDialog *dialog, int index)
{
    auto *combo = dialog->findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
    combo->setFocus();
    while (combo->currentIndex() != index)
        QTest::keyClick(combo, combo->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
}

/// A message box as it was seen.
struct SeenBox
{
    QString title;
    QString text;
    QStringList buttons;
    QColor icon; ///< Of its picture; invalid without one.
};

/// Notes a message box and presses the button whose text begins so.
inline ModalDriver::Action answerBox(SeenBox &seen, const QString &button)
{
    return [&seen, button](QDialog *dialog) {
        seen.title = dialog->windowTitle();
        const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            seen.text += label->text();
            const QImage picture = label->pixmap(Qt::ReturnByValue).toImage();
            if (!picture.isNull())
                seen.icon = picture.pixelColor(picture.rect().center());
        }
        QAbstractButton *pressed = nullptr;
        const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
        for (QAbstractButton *one : buttons) {
            seen.buttons << one->text();
            if (one->text().startsWith(button))
                pressed = one;
        }
        if (pressed)
            QTest::mouseClick(pressed, Qt::LeftButton);
    };
}

#endif
