// SPDX-License-Identifier: MIT
#include "shape_names_p.h"

#include "dxf/dxf_store.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>

namespace {

bool isSame(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return std::toupper(std::uint8_t(x)) == std::toupper(std::uint8_t(y)); });
}

/// A first line that ends with the character of code 26; the lowest number, the highest, how many there are; for each
/// its number and size; then the shapes, each a name, a zero, and what to draw. Numbers have two bytes, the lower
/// first.
std::optional<int> inCompiled(std::string_view bytes, std::string_view name)
{
    std::size_t at = bytes.find('\x1A') + 1;
    const auto word = [&](std::size_t position) {
        return std::size_t(std::uint8_t(bytes[position]) | std::uint8_t(bytes[position + 1]) << 8);
    };
    if (at + 6 > bytes.size())
        return std::nullopt;
    const std::size_t count = word(at + 4);
    at += 6;
    std::size_t shape = at + count * 4;
    for (std::size_t i = 0; i < count && shape < bytes.size(); ++i, at += 4) {
        const std::string_view data = bytes.substr(shape, word(at + 2));
        if (isSame(data.substr(0, data.find('\0')), name))
            return int(word(at));
        shape += word(at + 2);
    }
    return std::nullopt;
}

/// Lines "*130,6,TRACK" among others.
std::optional<int> inSource(std::string_view bytes, std::string_view name)
{
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        const std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        const std::size_t first = line.find(',');
        const std::size_t second = first == std::string_view::npos ? first : line.find(',', first + 1);
        if (line.empty() || line.front() != '*' || second == std::string_view::npos
            || !isSame(zvdxf::trimmed(line.substr(second + 1)), name))
            continue;
        int number = 0;
        const std::string_view digits = zvdxf::trimmed(line.substr(1, first - 1));
        if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec == std::errc())
            return number;
    }
    return std::nullopt;
}

/// The file that line types name most is on few machines. Its shapes are drawn without it, and so are known here.
std::optional<int> inUsualFile(std::string_view fileName, std::string_view name)
{
    constexpr int kFirst = 130;
    constexpr std::string_view kNames[] = {"TRACK1", "ZIG", "BOX", "CIRC1", "BAT"};
    if (!isSame(fileName.substr(0, fileName.rfind('.')), "ltypeshp"))
        return std::nullopt;
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        if (isSame(kNames[i], name))
            return kFirst + int(i);
    }
    return std::nullopt;
}

} // namespace

std::optional<int> zvdbShapeNumber(std::string_view bytes, std::string_view name)
{
    constexpr std::size_t kLongestTitle = 64;
    return bytes.substr(0, kLongestTitle).find('\x1A') != std::string_view::npos ? inCompiled(bytes, name)
                                                                                 : inSource(bytes, name);
}

std::optional<int> zvdbShapeNumber(const std::string &folder, const std::string &fileName, std::string_view name)
{
    const std::string path = folder + '/' + fileName;
    zvdxf::LoadResult result;
    zvdxf::Buffer buffer;
    if (!buffer.read(path, result) && !buffer.read(path.substr(0, path.rfind('.')) + ".shp", result))
        return inUsualFile(fileName, name);
    return zvdbShapeNumber(buffer.view(), name);
}
