// SPDX-License-Identifier: MIT
// Reads the input as a drawing file and shows what it finds as the file dialog does. What is given out has to be whole:
// bytes of the file, in the order in which a bitmap or a PNG begins.
#include "utils/zvpreview.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

bool isOf(std::string_view file, const ZvArray<unsigned char> &bytes)
{
    const std::string_view part(reinterpret_cast<const char *>(bytes.asArrayPtr()), std::size_t(bytes.length()));
    return part.empty() || file.find(part) != std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ZvStreamBufPtr stream = ZvFlatMemStream::createNew(const_cast<std::uint8_t *>(data), size, 0);
    ZvThumbnailImage thumbnail;
    zvDbGetPreviewBitmap(stream.get(), &thumbnail);
    const std::string_view file(reinterpret_cast<const char *>(data), size);
    if (!isOf(file, thumbnail.header) || !isOf(file, thumbnail.bmp) || !isOf(file, thumbnail.png)
        || !thumbnail.unused.isEmpty())
        std::abort();

    if (!thumbnail.bmp.isEmpty()) {
        // The fields that callers build a file header from.
        const ZvStreamBufPtr bitmap
            = ZvFlatMemStream::createNew(thumbnail.bmp.asArrayPtr(), std::size_t(thumbnail.bmp.length()), 0);
        const std::uint32_t headerSize = bitmap->readUInt32();
        const std::uint32_t width = bitmap->readUInt32();
        const std::uint32_t height = bitmap->readUInt32();
        bitmap->readUInt16();
        bool ok = false;
        const unsigned bits = bitmap->readUInt16(&ok);
        if (!ok || headerSize < 40 || headerSize > std::uint32_t(thumbnail.bmp.length()) || width == 0 || height == 0
            || bits == 0 || bits > 32)
            std::abort();
    }
    if (!thumbnail.png.isEmpty() && std::memcmp(thumbnail.png.asArrayPtr(), "\x89PNG", 4) != 0)
        std::abort();
    return 0;
}
