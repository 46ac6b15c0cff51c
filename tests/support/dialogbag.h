// SPDX-License-Identifier: MIT
#ifndef DIALOGBAG_H
#define DIALOGBAG_H

#include "modaldriver.h"

#include "base/zvjson.h"

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QVector>

/// Stands for "the key is missing".
constexpr int kMissing = -1000;

inline int intOf(const ZvJsonPtr &params, const char *key)
{
    int value = kMissing;
    params->GetDataI(key, value);
    return value;
}

inline void setTexts(const ZvJsonPtr &params, const char *key, const QStringList &texts)
{
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    for (const QString &text : texts)
        array->append(ElementValue::createString(text.toUtf8().constData()));
    params->SetDataJ(key, array);
}

/// Texts of the buttons that message and task dialog have of their own.
namespace BoxButtons {
inline const QString kOk = QStringLiteral("确定(&O)");
inline const QString kCancel = QStringLiteral("取消(&C)");
inline const QString kAbort = QStringLiteral("终止(&A)");
inline const QString kRetry = QStringLiteral("重试(&R)");
inline const QString kIgnore = QStringLiteral("忽略(&I)");
inline const QString kYes = QStringLiteral("是(&Y)");
inline const QString kNo = QStringLiteral("否(&N)");
inline const QString kClose = QStringLiteral("关闭(&C)");
}

inline QStringList textsOf(const QList<QPushButton *> &buttons)
{
    QStringList texts;
    for (const QPushButton *button : buttons)
        texts << button->text();
    return texts;
}

/// Three ways out of a dialog that are no button: Escape, the window's frame, the program's own.
inline QVector<ModalDriver::Action> waysOut()
{
    return {
        [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); },
        [](QDialog *dialog) { dialog->close(); },
        [](QDialog *dialog) { dialog->reject(); },
    };
}

/// The pictures of message and task dialog beside the test program, for the life of the object: each of one colour and
/// twice as wide as high. A program that uses them needs a folder of its own.
class DialogPictures
{
public:
    DialogPictures() : m_folder(QCoreApplication::applicationDirPath() + QStringLiteral("/ico_zeva/"))
    {
        QDir().mkpath(m_folder);
        isReady = draw("question.png", question()) && draw("information.png", information())
            && draw("warning.png", warning()) && draw("error.png", error());
    }
    ~DialogPictures() { QDir(m_folder).removeRecursively(); }
    Q_DISABLE_COPY(DialogPictures)

    QString path(const char *file) const { return m_folder + QLatin1String(file); }
    bool draw(const char *file, const QColor &color) const
    {
        QImage image(48, 24, QImage::Format_RGB32);
        image.fill(color);
        return image.save(path(file));
    }

    static QColor question() { return QColor(10, 20, 30); }
    static QColor information() { return QColor(40, 50, 60); }
    static QColor warning() { return QColor(70, 80, 90); }
    static QColor error() { return QColor(100, 110, 120); }

    bool isReady = false;

private:
    const QString m_folder;
};

#endif
