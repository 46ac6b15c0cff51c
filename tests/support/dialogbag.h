// SPDX-License-Identifier: MIT
#ifndef DIALOGBAG_H
#define DIALOGBAG_H

#include "base/zvjson.h"

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QStringList>

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
