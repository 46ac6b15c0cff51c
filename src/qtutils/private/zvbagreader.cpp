// SPDX-License-Identifier: MIT
#include "private/zvbagreader.h"

#include "private/zvqtstring.h"

namespace {

bool hasValue(const ZvJsonPtr &node)
{
    return node && !node->isNullNode();
}

} // namespace

ZvJsonPtr zvBagTree(const ZvJsonPtr &node, const char *key)
{
    if (!node)
        return ZvJsonPtr();
    const ZvJsonPtr member = node->member(key);
    return hasValue(member) ? member : ZvJsonPtr();
}

int zvBagInt(const ZvJsonPtr &node, const char *key, int fallback)
{
    const ZvJsonPtr member = zvBagTree(node, key);
    return member ? member->asInteger() : fallback;
}

long long zvBagLong(const ZvJsonPtr &node, const char *key, long long fallback)
{
    const ZvJsonPtr member = zvBagTree(node, key);
    return member ? member->asLong() : fallback;
}

bool zvBagBool(const ZvJsonPtr &node, const char *key, bool fallback)
{
    const ZvJsonPtr member = zvBagTree(node, key);
    return member ? member->asBool() : fallback;
}

double zvBagDouble(const ZvJsonPtr &node, const char *key, double fallback)
{
    const ZvJsonPtr member = zvBagTree(node, key);
    return member ? member->asDouble() : fallback;
}

QString zvBagString(const ZvJsonPtr &node, const char *key, const QString &fallback)
{
    const ZvJsonPtr member = zvBagTree(node, key);
    return member ? zvToQString(member->asString()) : fallback;
}

QVector<ZvJsonPtr> zvBagElements(const ZvJsonPtr &node, const char *key)
{
    QVector<ZvJsonPtr> elements;
    const ZvJsonPtr array = zvBagTree(node, key);
    const int count = array ? array->elementCount() : 0;
    for (int i = 0; i < count; ++i) {
        const ZvJsonPtr element = array->element(i);
        elements << (hasValue(element) ? element : ZvJsonPtr());
    }
    return elements;
}

QStringList zvBagTexts(const ZvJsonPtr &node, const char *key)
{
    QStringList texts;
    for (const ZvJsonPtr &element : zvBagElements(node, key))
        texts << (element ? zvToQString(element->asString()) : QString());
    return texts;
}

ZvDbObjectId zvBagId(const ZvJsonPtr &node, const char *key)
{
    const ZvJsonPtr member = zvBagTree(node, key);
    return member ? ZvDbObjectId::fromInt64(member->asId()) : ZvDbObjectId();
}

bool zvBagHasKey(const ZvJsonPtr &node, const char *key)
{
    return node && node->hasKey(key);
}
