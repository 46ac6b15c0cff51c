// SPDX-License-Identifier: MIT
#include "textforms.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbstyles.h"
#include "db/zvdbsymboltable.h"

#include <QLocale>
#include <QStringList>

QString toQString(const ZvString &text)
{
    return QString::fromWCharArray(text.wstr(), text.length());
}

ZvString toZvString(const QString &text)
{
    const std::wstring wide = text.toStdWString();
    return ZvString(wide.data(), int(wide.size()));
}

QString colorText(const ZvCmColor &color)
{
    if (color.isByLayer())
        return QStringLiteral("ByLayer");
    if (color.isByBlock())
        return QStringLiteral("ByBlock");
    if (color.isByColor())
        return QStringLiteral("%1,%2,%3").arg(color.red()).arg(color.green()).arg(color.blue());
    return QString::number(color.colorIndex());
}

QString lineWeightText(ZvDb::LineWeight weight)
{
    switch (weight) {
    case ZvDb::kLnWtByLayer:
        return QStringLiteral("ByLayer");
    case ZvDb::kLnWtByBlock:
        return QStringLiteral("ByBlock");
    case ZvDb::kLnWtByLwDefault:
        return QStringLiteral("Default");
    default:
        return QString::number(weight / 100.0, 'f', 2);
    }
}

QString nameOf(ZvDbObjectId id)
{
    ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForRead);
    if (!object)
        return QString();
    if (const auto *record = zvrxCast<ZvDbSymbolTableRecord>(object.get()))
        return toQString(record->name());
    if (const auto *named = zvrxCast<ZvDbNamedObject>(object.get()))
        return toQString(named->name());
    return QString();
}

QString ucsText(const ZvDbDatabase &database)
{
    const bool model = database.tilemode();
    const QString name = nameOf(model ? database.ucsname() : database.pucsname());
    if (!name.isEmpty())
        return name;
    if (database.ucsMatrix().isEqualTo(ZvGeMatrix3d::kIdentity))
        return QStringLiteral("World");

    static const char *const orthographic[] = {"Unnamed", "Top", "Bottom", "Front", "Back", "Left", "Right"};
    ZvResBuf value;
    int number = 0;
    if (database.getVariable(model ? "UCSORTHOVIEW" : "PUCSORTHOVIEW", value) == Zv::eOk)
        number = int(value.number());
    return QString::fromLatin1(orthographic[number >= 1 && number <= 6 ? number : 0]);
}

QString numberText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString bagText(const ZvJsonPtr &bag)
{
    if (bag.isNull() || bag->isNullNode())
        return QStringLiteral("null");
    const unsigned flags = bag->typeFlags();
    QStringList parts;
    if (flags & IElementValueBase::kFlagArray) {
        for (int i = 0; i < bag->elementCount(); ++i)
            parts << bagText(bag->element(i));
        return QLatin1Char('[') + parts.join(QStringLiteral(", ")) + QLatin1Char(']');
    }
    if (flags & IElementValueBase::kFlagObject) {
        for (int i = 0; i < bag->elementCount(); ++i) {
            const QString key = QString::fromUtf8(bag->keyAt(i).c_str());
            parts << QLatin1Char('"') + key + QStringLiteral("\": ") + bagText(bag->element(i));
        }
        return QLatin1Char('{') + parts.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
    const QString text = QString::fromUtf8(bag->asString().c_str());
    if (flags & IElementValueBase::kFlagString)
        return QLatin1Char('"') + text + QLatin1Char('"');
    if (flags & IElementValueBase::kFlagBool)
        return bag->asBool() ? QStringLiteral("true") : QStringLiteral("false");
    if (flags & IElementValueBase::kFlagInteger)
        return QString::number(bag->asLong());
    if (flags & IElementValueBase::kFlagDouble)
        return QString::number(bag->asDouble());
    return text.isEmpty() ? QStringLiteral("(object)") : text;
}
