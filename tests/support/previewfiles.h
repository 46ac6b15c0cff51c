// SPDX-License-Identifier: MIT
#ifndef PREVIEWFILES_H
#define PREVIEWFILES_H

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QVector>

/// \file
/// Heads of drawing files with previews in them, made byte by byte.

constexpr char kPreviewSentinel[] = "\x1F\x25\x6D\x07\xD4\x36\x28\x28\x9D\x57\xCA\x3F\x9D\x44\x10\x2B";

inline QByteArray littleEndian(quint32 value, int size = 4)
{
    QByteArray bytes(size, 0);
    for (int i = 0; i < size; ++i)
        bytes[i] = char(value >> (8 * i));
    return bytes;
}

/// A bitmap without file header, all of one colour: 1, 4 or 8 bits by the last row of a table that is black otherwise,
/// or 16, 24 or 32 bits.
inline QByteArray bitmap(int width, int height, int bits = 8, const QColor &color = QColor(0x33, 0x33, 0x33))
{
    const QByteArray bgr
        = QByteArray(1, char(color.blue())) + QByteArray(1, char(color.green())) + QByteArray(1, char(color.red()));
    const int row = (width * bits + 31) / 32 * 4;
    QByteArray table;
    QByteArray pixels;
    if (bits <= 8) {
        table = QByteArray(4 * ((1 << bits) - 1), '\0') + bgr + '\0';
        pixels = QByteArray(row, '\xFF');
    } else if (bits == 16) {
        const int word = (color.red() >> 3) << 10 | (color.green() >> 3) << 5 | color.blue() >> 3;
        pixels = littleEndian(quint32(word), 2).repeated(row / 2);
    } else {
        pixels = QByteArray(bits == 24 ? bgr : QByteArray(bgr + '\0')).repeated(width).leftJustified(row, '\0');
    }
    return littleEndian(40) + littleEndian(quint32(width)) + littleEndian(quint32(height)) + littleEndian(1, 2)
        + littleEndian(quint32(bits), 2) + QByteArray(24, '\0') + table + pixels.repeated(height);
}

inline QByteArray png(int width, int height, const QColor &color = Qt::red)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// 1 is the header, 2 a bitmap, 3 a metafile, 6 a PNG.
struct PreviewPart
{
    int kind;
    QByteArray content;
    quint32 claimedSize = 0; ///< 0: the true one.
    quint32 claimedStart = 0;
};

/// The head of a drawing file with these pictures behind it.
inline QByteArray drawing(const QVector<PreviewPart> &parts, const QByteArray &version = "AC1027")
{
    const quint32 seeker = 0x100;
    QByteArray file = version + QByteArray(0x0D - version.size(), 0) + littleEndian(seeker);
    file = file.leftJustified(int(seeker), 0);
    file += QByteArray(kPreviewSentinel, 16);
    const quint32 content = seeker + 16 + 4 + 1 + quint32(parts.size()) * 9;
    QByteArray entries;
    QByteArray contents;
    for (const PreviewPart &part : parts) {
        const quint32 start = part.claimedStart ? part.claimedStart : content + quint32(contents.size());
        const quint32 size = part.claimedSize ? part.claimedSize : quint32(part.content.size());
        entries += char(part.kind) + littleEndian(start) + littleEndian(size);
        contents += part.content;
    }
    return file + littleEndian(quint32(contents.size())) + char(parts.size()) + entries + contents;
}

#endif
