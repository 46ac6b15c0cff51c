// SPDX-License-Identifier: MIT
// Reads the input as a colour text of the kernel. What is refused leaves the colour alone; what is read is a colour by
// layer, by block, by index or by red, green and blue.
#include "private/zvcolortext.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    ZvCmEntityColor before;
    before.setRGB(1, 2, 3);
    ZvCmEntityColor color = before;
    const bool isRead = zvReadColorText(text, color);
    const int method = color.colorMethod();
    const bool isKnown
        = method == ZvCm::kByLayer || method == ZvCm::kByBlock || method == ZvCm::kByACI || method == ZvCm::kByColor;
    if (isRead ? !isKnown : color != before)
        std::abort();
    return 0;
}
