// SPDX-License-Identifier: MIT
#ifndef SIGNALLOG_H
#define SIGNALLOG_H

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <functional>

class QMetaMethod;

/// Listens to all signals of objects, whatever their classes, and tells each as a line such as
/// "colorCombo: ColorItemChanged(#0000ff)".
class SignalLog : public QObject
{
public:
    explicit SignalLog(std::function<void(const QString &line)> tell);

    /// Listens to the signals that the object's class and its base classes declare, up to \a base and without it.
    /// Signals named in \a unheard are left out: those that come with each painting.
    void listen(QObject &object, const QString &name, const QMetaObject &base, const QStringList &unheard = {});
    /// Listens to one signal by its signature, such as "clicked(bool)"; nothing for one that is not there.
    void listenTo(QObject &object, const QString &name, const char *signature);

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    struct Heard
    {
        QPointer<QObject> object;
        QString name;
        int signal; // index of the method
    };

    void connectTo(QObject &object, const QString &name, const QMetaMethod &signal);

    std::function<void(const QString &)> m_tell;
    QVector<Heard> m_heard; // a signal's place here is its slot's number
};

#endif
