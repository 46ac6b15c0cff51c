// SPDX-License-Identifier: MIT
#include "signallog.h"

#include <QAction>
#include <QColor>
#include <QMetaMethod>
#include <QModelIndex>
#include <QPoint>
#include <QRect>
#include <QVariant>

#include <utility>

namespace {

QString pointText(const QPoint &point)
{
    return QStringLiteral("%1, %2").arg(point.x()).arg(point.y());
}

/// What lies behind the pointer, by the name of its type.
QString argumentText(const QByteArray &typeName, const void *value)
{
    if (typeName.endsWith('*')) {
        if (!(QMetaType::typeFlags(QMetaType::type(typeName)) & QMetaType::PointerToQObject))
            return QString::fromLatin1(typeName);
        const QObject *object = *static_cast<QObject *const *>(value);
        if (!object)
            return QStringLiteral("null");
        if (const auto *action = qobject_cast<const QAction *>(object))
            return action->text();
        return object->objectName().isEmpty() ? QLatin1String(object->metaObject()->className()) : object->objectName();
    }
    QByteArray plainName = typeName;
    if (plainName.endsWith('&'))
        plainName.chop(1);
    const int type = QMetaType::type(plainName);
    if (type == QMetaType::UnknownType)
        return QString::fromLatin1(typeName);
    const QVariant variant(type, value);
    switch (type) {
    case QMetaType::QModelIndex: {
        const auto index = variant.toModelIndex();
        return QStringLiteral("row %1, column %2").arg(index.row()).arg(index.column());
    }
    case QMetaType::QPoint:
        return pointText(variant.toPoint());
    case QMetaType::QRect:
        return pointText(variant.toRect().topLeft()) + QLatin1String(", ") + pointText(variant.toRect().bottomRight());
    default:
        return variant.canConvert<QString>() ? variant.toString() : QString::fromLatin1(typeName);
    }
}

} // namespace

SignalLog::SignalLog(std::function<void(const QString &)> tell) : m_tell(std::move(tell)) { }

void SignalLog::listen(QObject &object, const QString &name, const QMetaObject &base, const QStringList &unheard)
{
    const QMetaObject *meta = object.metaObject();
    for (int i = base.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        // A signal with a default argument stands there twice, and both are sent at once.
        const bool isClone = i > 0 && meta->method(i - 1).name() == method.name()
            && meta->method(i - 1).parameterCount() == method.parameterCount() + 1
            && meta->method(i - 1).methodSignature().startsWith(method.methodSignature().chopped(1));
        if (method.methodType() == QMetaMethod::Signal && !isClone
            && !unheard.contains(QString::fromLatin1(method.name())))
            connectTo(object, name, method);
    }
}

void SignalLog::listenTo(QObject &object, const QString &name, const char *signature)
{
    const int signal = object.metaObject()->indexOfSignal(signature);
    if (signal >= 0)
        connectTo(object, name, object.metaObject()->method(signal));
}

void SignalLog::connectTo(QObject &object, const QString &name, const QMetaMethod &signal)
{
    const int slot = QObject::staticMetaObject.methodCount() + m_heard.size();
    m_heard.append({&object, name, signal.methodIndex()});
    QMetaObject::connect(&object, signal.methodIndex(), this, slot, Qt::DirectConnection);
}

int SignalLog::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    const Heard heard = m_heard.at(id); // telling may make it hear more
    if (!heard.object)
        return -1;
    const QMetaMethod signal = heard.object->metaObject()->method(heard.signal);
    const QList<QByteArray> types = signal.parameterTypes();
    QStringList texts;
    for (int i = 0; i < types.size(); ++i)
        texts << argumentText(types[i], arguments[i + 1]);
    m_tell(QStringLiteral("%1: %2(%3)").arg(heard.name, QLatin1String(signal.name()), texts.join(QLatin1String(", "))));
    return -1;
}
