// SPDX-License-Identifier: MIT
#include "dxf_tag.h"

#include <array>

namespace zvdxf {

namespace {

struct CodeRange
{
    short first;
    short last;
    ValueKind kind;
};

// Codes in none of these are text.
constexpr CodeRange codeRanges[] = {
    {5, 5, ValueKind::Handle},       {10, 59, ValueKind::Real},     {60, 79, ValueKind::Int16},
    {90, 99, ValueKind::Int32},      {105, 105, ValueKind::Handle}, {110, 149, ValueKind::Real},
    {160, 169, ValueKind::Int64},    {170, 179, ValueKind::Int16},  {210, 239, ValueKind::Real},
    {270, 289, ValueKind::Int16},    {290, 299, ValueKind::Byte},   {310, 319, ValueKind::Chunk},
    {320, 369, ValueKind::Handle},   {370, 389, ValueKind::Int16},  {390, 399, ValueKind::Handle},
    {400, 409, ValueKind::Int16},    {420, 429, ValueKind::Int32},  {440, 459, ValueKind::Int32},
    {460, 469, ValueKind::Real},     {480, 481, ValueKind::Handle}, {1004, 1004, ValueKind::Chunk},
    {1005, 1005, ValueKind::Handle}, {1010, 1059, ValueKind::Real}, {1060, 1070, ValueKind::Int16},
    {1071, 1071, ValueKind::Int32},
};

constexpr int firstCode = -5;
constexpr int lastCode = 1071;
using KindTable = std::array<ValueKind, lastCode - firstCode + 1>;

constexpr KindTable makeKindTable()
{
    KindTable table{};
    for (const CodeRange &range : codeRanges) {
        for (int code = range.first; code <= range.last; ++code)
            table[std::size_t(code - firstCode)] = range.kind;
    }
    return table;
}

// Asked for every tag of a binary file, so looked up by one index.
constexpr KindTable kindTable = makeKindTable();

struct SectionName
{
    std::string_view name;
    SectionKind kind;
};

constexpr SectionName sectionNames[] = {
    {"HEADER", SectionKind::Header},
    {"CLASSES", SectionKind::Classes},
    {"TABLES", SectionKind::Tables},
    {"BLOCKS", SectionKind::Blocks},
    {"ENTITIES", SectionKind::Entities},
    {"OBJECTS", SectionKind::Objects},
    {"THUMBNAILIMAGE", SectionKind::Thumbnail},
    {"ACDSDATA", SectionKind::Data},
};

} // namespace

std::string_view trimmed(std::string_view value)
{
    constexpr std::string_view blanks = " \t\r";
    while (!value.empty() && blanks.find(value.front()) != std::string_view::npos)
        value.remove_prefix(1);
    while (!value.empty() && blanks.find(value.back()) != std::string_view::npos)
        value.remove_suffix(1);
    return value;
}

std::string oneLine(std::string_view value)
{
    std::string line;
    line.reserve(value.size());
    for (const char c : value) {
        if (c == '\n')
            line += "^J";
        else if (c == '\r')
            line += "^M";
        else
            line += c;
    }
    return line;
}

ValueKind valueKind(int code)
{
    return isGroupCode(code) ? kindTable[std::size_t(code - firstCode)] : ValueKind::Text;
}

SectionKind sectionKind(std::string_view name)
{
    for (const SectionName &section : sectionNames) {
        if (section.name == name)
            return section.kind;
    }
    return SectionKind::Other;
}

} // namespace zvdxf
