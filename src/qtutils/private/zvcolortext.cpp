// SPDX-License-Identifier: MIT
#include "private/zvcolortext.h"

#include "private/zvcolornames.h"
#include "private/zvqtcolor.h"

#include <QStringList>

namespace {

bool isDigits(const QString &text)
{
    for (const QChar character : text) {
        if (character < QLatin1Char('0') || character > QLatin1Char('9'))
            return false;
    }
    return !text.isEmpty();
}

/// False for what is no number of 16 bits.
bool readIndex(const QString &text, ZvCmEntityColor &color)
{
    bool fits = false;
    const ushort index = text.toUShort(&fits);
    if (!isDigits(text) || !fits)
        return false;
    color.setColorIndex(index);
    return true;
}

bool readRgb(const QString &text, ZvCmEntityColor &color)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return false;
    for (const QString &part : parts) {
        if (!isDigits(part))
            return false;
    }
    color.setRGB(std::uint8_t(parts[0].toUInt()), std::uint8_t(parts[1].toUInt()), std::uint8_t(parts[2].toUInt()));
    return true;
}

} // namespace

bool zvReadColorText(const QString &text, ZvCmEntityColor &color)
{
    if (text.compare(QLatin1String("BYLAYER"), Qt::CaseInsensitive) == 0) {
        color = zvPlainColor(ZvCm::kByLayer);
        return true;
    }
    if (text.compare(QLatin1String("BYBLOCK"), Qt::CaseInsensitive) == 0) {
        color = zvPlainColor(ZvCm::kByBlock);
        return true;
    }
    if (text.isEmpty() || isDigits(text))
        return readIndex(text, color);
    const QString number = zvNumberOfColorName(text);
    if (!number.isEmpty() && readIndex(number, color))
        return true;
    // Any one of the four characters stands for "RGB:". Kept: callers hand in texts with other prefixes of that length.
    if (QStringLiteral("RGB:").contains(text.at(0)))
        return readRgb(text.mid(4), color);
    const int blank = text.indexOf(QLatin1Char(' '));
    return blank >= 0 && readIndex(text.mid(blank + 1), color);
}
