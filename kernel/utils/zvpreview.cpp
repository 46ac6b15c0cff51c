// SPDX-License-Identifier: MIT
#include "utils/zvpreview.h"

#include <cstring>
#include <exception>

namespace {

constexpr std::uint64_t kSeekerPosition = 0x0D;
constexpr unsigned char kSentinel[16]
    = {0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28, 0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};
constexpr unsigned char kPngSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
// A preview is a small picture; whatever claims more is damaged.
constexpr std::uint64_t kMaxPictureBytes = 64u << 20;
constexpr std::uint64_t kMaxSide = 16384;

enum PictureKind { kHeader = 1, kBitmap = 2, kPng = 6 };

struct Entry
{
    unsigned kind = 0;
    std::uint32_t start = 0;
    std::uint32_t size = 0;
};

std::uint32_t littleEndian32(const unsigned char *bytes)
{
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | std::uint32_t(bytes[3]) << 24;
}

std::uint32_t bigEndian32(const unsigned char *bytes)
{
    return std::uint32_t(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

/// Reads all bytes of an entry; false, with nothing kept, when the stream does not hold them.
bool readEntry(ZvStreamBuf &stream, const Entry &entry, ZvArray<unsigned char> &bytes)
{
    const std::uint64_t length = stream.length();
    if (entry.size == 0 || entry.size > kMaxPictureBytes || entry.start > length || entry.size > length - entry.start
        || !stream.seek(entry.start))
        return false;
    bytes.setLogicalLength(int(entry.size));
    if (stream.read(bytes.asArrayPtr(), entry.size) == entry.size)
        return true;
    bytes.clear();
    return false;
}

/// Whether a bitmap without file header holds the pixels that it speaks of.
bool isWholeBitmap(const ZvArray<unsigned char> &bytes)
{
    constexpr int kInfoHeaderSize = 40;
    if (bytes.length() < kInfoHeaderSize)
        return false;
    const unsigned char *header = bytes.asArrayPtr();
    const std::uint64_t headerSize = littleEndian32(header);
    const std::int64_t width = std::int32_t(littleEndian32(header + 4));
    const std::int64_t height = std::int32_t(littleEndian32(header + 8));
    const unsigned bits = header[14] | header[15] << 8;
    const std::uint32_t compression = littleEndian32(header + 16);
    const std::uint64_t rows = std::uint64_t(height < 0 ? -height : height);
    if (headerSize < kInfoHeaderSize || headerSize > std::uint64_t(bytes.length()) || width < 1 || rows < 1
        || std::uint64_t(width) > kMaxSide || rows > kMaxSide)
        return false;
    if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32)
        return false;
    if (compression != 0)
        return true; // packed rows: their decoder counts for itself
    const std::uint64_t rowSize = (std::uint64_t(width) * bits + 31) / 32 * 4;
    const std::uint64_t tableSize = bits <= 8 ? 4u << bits : 0;
    return headerSize + tableSize + rowSize * rows <= std::uint64_t(bytes.length());
}

bool isPng(const ZvArray<unsigned char> &bytes)
{
    constexpr int kFirstChunkEnd = 33;
    if (bytes.length() < kFirstChunkEnd || std::memcmp(bytes.asArrayPtr(), kPngSignature, sizeof kPngSignature) != 0)
        return false;
    const std::uint32_t width = bigEndian32(bytes.asArrayPtr() + 16);
    const std::uint32_t height = bigEndian32(bytes.asArrayPtr() + 20);
    return width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide;
}

void takePicture(ZvStreamBuf &stream, const Entry &entry, ZvThumbnailImage &thumbnail)
{
    ZvArray<unsigned char> bytes;
    switch (entry.kind) {
    case kHeader:
        if (thumbnail.header.isEmpty() && readEntry(stream, entry, bytes))
            thumbnail.header = std::move(bytes);
        return;
    case kBitmap:
        if (thumbnail.bmp.isEmpty() && readEntry(stream, entry, bytes) && isWholeBitmap(bytes))
            thumbnail.bmp = std::move(bytes);
        return;
    case kPng:
        if (thumbnail.png.isEmpty() && readEntry(stream, entry, bytes) && isPng(bytes))
            thumbnail.png = std::move(bytes);
        return;
    }
}

void readPreview(ZvStreamBuf &stream, ZvThumbnailImage &thumbnail)
{
    bool ok = false;
    if (!stream.seek(kSeekerPosition))
        return;
    const std::uint32_t position = stream.readUInt32(&ok);
    unsigned char sentinel[sizeof kSentinel];
    if (!ok || !stream.seek(position) || stream.read(sentinel, sizeof sentinel) != sizeof sentinel
        || std::memcmp(sentinel, kSentinel, sizeof sentinel) != 0)
        return;
    stream.readUInt32(&ok); // the size of all pictures together: each entry says its own
    const unsigned count = ok ? stream.readUInt8(&ok) : 0;
    Entry entries[255];
    unsigned known = 0;
    for (; ok && known < count; ++known) {
        Entry &entry = entries[known];
        entry.kind = stream.readUInt8(&ok);
        entry.start = ok ? stream.readUInt32(&ok) : 0;
        entry.size = ok ? stream.readUInt32(&ok) : 0;
    }
    for (unsigned i = 0; i < known; ++i)
        takePicture(stream, entries[i], thumbnail);
}

} // namespace

void zvDbGetPreviewBitmap(ZvStreamBuf *stream, ZvThumbnailImage *thumbnail)
{
    if (!thumbnail)
        return;
    *thumbnail = ZvThumbnailImage();
    if (!stream)
        return;
    try {
        readPreview(*stream, *thumbnail);
    } catch (const std::exception &) {
        *thumbnail = ZvThumbnailImage(); // out of memory, or a stream that throws: no preview
    }
}
