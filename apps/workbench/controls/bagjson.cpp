// SPDX-License-Identifier: MIT
#include "bagjson.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <climits>
#include <cmath>

QJsonValue jsonOfBag(const ZvJsonPtr &bag)
{
    if (bag.isNull() || bag->isNullNode())
        return QJsonValue();
    const unsigned flags = bag->typeFlags();
    if (flags & IElementValueBase::kFlagArray) {
        QJsonArray array;
        for (int i = 0; i < bag->elementCount(); ++i)
            array.append(jsonOfBag(bag->element(i)));
        return array;
    }
    if (flags & IElementValueBase::kFlagObject) {
        QJsonObject object;
        for (int i = 0; i < bag->elementCount(); ++i)
            object.insert(QString::fromUtf8(bag->keyAt(i).c_str()), jsonOfBag(bag->element(i)));
        return object;
    }
    if (flags & IElementValueBase::kFlagString)
        return QString::fromUtf8(bag->asString().c_str());
    if (flags & IElementValueBase::kFlagBool)
        return bag->asBool();
    if (flags & (IElementValueBase::kFlagInteger | IElementValueBase::kFlagDouble))
        return bag->asDouble();
    return QJsonValue();
}

namespace {

/// Puts \a value under a key or, in an array, at the place of that number.
void setMember(const ZvJsonPtr &bag, const char *key, const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        bag->SetDataB(key, value.toBool());
        break;
    case QJsonValue::Double: {
        const double number = value.toDouble();
        if (number == std::floor(number) && number >= INT_MIN && number <= INT_MAX)
            bag->SetDataI(key, int(number));
        else
            bag->SetDataD(key, number);
        break;
    }
    case QJsonValue::String:
        bag->SetDataS(key, value.toString().toUtf8().constData());
        break;
    default:
        bag->SetDataJ(key, bagOfJson(value));
        break;
    }
}

} // namespace

ZvJsonPtr bagOfJson(const QJsonValue &value)
{
    if (value.isArray()) {
        const QJsonArray array = value.toArray();
        const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kArray);
        for (int i = 0; i < array.size(); ++i)
            setMember(bag, QByteArray::number(i).constData(), array[i]);
        return bag;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
        for (auto at = object.begin(); at != object.end(); ++at)
            setMember(bag, at.key().toUtf8().constData(), at.value());
        return bag;
    }
    if (value.isNull() || value.isUndefined())
        return nullptr;
    const ZvJsonPtr holder = ElementValue::createObject(IElementValueBase::kObject);
    setMember(holder, "value", value);
    return holder->member("value");
}
