// SPDX-License-Identifier: MIT
#pragma once

#include "dxf_store.h"
#include "dxf_writer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace dxf_testing {

using Pair = std::pair<int, std::string>;
using Pairs = std::vector<Pair>;

/*! The pairs as an ASCII file has them. */
inline std::string ascii(const Pairs &pairs, const std::string &lineEnd = "\n")
{
    std::string text;
    for (const Pair &pair : pairs) {
        const std::string code = std::to_string(pair.first);
        text += std::string(code.size() < 3 ? 3 - code.size() : 0, ' ') + code + lineEnd + pair.second + lineEnd;
    }
    return text;
}

inline Pairs operator+(Pairs a, const Pairs &b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline Pairs section(const char *name, const Pairs &content)
{
    return Pairs{{0, "SECTION"}, {2, name}} + content + Pairs{{0, "ENDSEC"}};
}

/*! A whole drawing: a header with version and code page (left out when empty), two layers, the entities. */
inline Pairs drawing(const std::string &version, const std::string &codePage, const Pairs &entities)
{
    Pairs header;
    if (!version.empty())
        header = header + Pairs{{9, "$ACADVER"}, {1, version}};
    if (!codePage.empty())
        header = header + Pairs{{9, "$DWGCODEPAGE"}, {3, codePage}};
    header = header + Pairs{{9, "$EXTMAX"}, {10, "1234567.891"}, {20, "9.5"}, {30, "0.0"}, {9, "$CLAYER"}, {8, "0"}};
    const Pairs layers{{0, "TABLE"},
                       {2, "LAYER"},
                       {5, "2"},
                       {70, "2"},
                       {0, "LAYER"},
                       {5, "10"},
                       {100, "AcDbSymbolTableRecord"},
                       {100, "AcDbLayerTableRecord"},
                       {2, "0"},
                       {70, "0"},
                       {62, "     7"},
                       {6, "CONTINUOUS"},
                       {0, "LAYER"},
                       {5, "11"},
                       {100, "AcDbSymbolTableRecord"},
                       {100, "AcDbLayerTableRecord"},
                       {2, "Walls"},
                       {70, "0"},
                       {62, "     3"},
                       {6, "CONTINUOUS"},
                       {0, "ENDTAB"}};
    return section("HEADER", header) + section("TABLES", layers) + section("ENTITIES", entities) + Pairs{{0, "EOF"}};
}

inline const Pairs &lineAndText()
{
    static const Pairs pairs{{0, "LINE"},        {5, "2A"},           {100, "AcDbEntity"}, {8, "Walls"},
                             {62, "     1"},     {100, "AcDbLine"},   {10, "1234567.891"}, {20, "-0.5"},
                             {30, "0.0"},        {11, "1e-20"},       {21, "2.0"},         {31, "0.0"},
                             {0, "TEXT"},        {5, "2B"},           {100, "AcDbEntity"}, {8, "0"},
                             {100, "AcDbText"},  {10, "0.0"},         {20, "0.0"},         {30, "0.0"},
                             {40, "2.5"},        {1, "Ground floor"}, {1001, "MINE"},      {1070, "     5"},
                             {1004, "00FF7F80"}, {1040, "0.1"}};
    return pairs;
}

inline Pairs plainDrawing()
{
    return drawing("AC1015", "ANSI_1252", lineAndText());
}

inline zvdxf::LoadResult load(zvdxf::Store &store, const std::string &bytes, zvdxf::Visitor *visitor = nullptr)
{
    return store.load(zvdxf::Buffer(bytes), visitor);
}

/*! All tags of a store, spelt as in an ASCII file. */
inline Pairs allTags(const zvdxf::Store &store)
{
    Pairs pairs;
    std::vector<zvdxf::Tag> tags;
    for (std::uint32_t i = 0; i < store.records().size(); ++i) {
        store.tags(i, tags);
        for (const zvdxf::Tag &tag : tags)
            pairs.emplace_back(tag.code, store.asciiValue(tag));
    }
    return pairs;
}

/*! Index of the first record of that type whose tag \a code is \a value. */
inline std::uint32_t findRecord(const zvdxf::Store &store, const std::string &type, int code, const std::string &value)
{
    std::vector<zvdxf::Tag> tags;
    for (std::uint32_t i = 0; i < store.records().size(); ++i) {
        if (store.type(i) != type)
            continue;
        const zvdxf::RecordView view = store.view(i, tags);
        for (const zvdxf::Tag &tag : view) {
            if (tag.code == code && view.raw(tag) == value)
                return i;
        }
    }
    return std::uint32_t(store.records().size());
}

/*! The store's file written again, in another style. */
inline std::string converted(const zvdxf::Store &store, const zvdxf::FileStyle &style)
{
    zvdxf::MemoryOutput output;
    zvdxf::Writer writer(store, output, style);
    writer.keepAll();
    writer.finish();
    return output.bytes();
}

inline std::string rewritten(const zvdxf::Store &store)
{
    zvdxf::MemoryOutput output;
    zvdxf::Writer writer(store, output);
    writer.keepAll();
    writer.finish();
    return output.bytes();
}

inline zvdxf::FileStyle binaryStyle(bool wideCodes)
{
    zvdxf::FileStyle style;
    style.binary = true;
    style.wideCodes = wideCodes;
    return style;
}

inline std::string fileContent(const std::string &path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline void writeFile(const std::string &path, const std::string &content)
{
    std::ofstream(path, std::ios::binary) << content;
}

/*! The drawing files in a folder, sorted; none where the folder is absent. */
inline std::vector<std::string> drawingsIn(const std::string &folder)
{
    std::vector<std::string> paths;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".dxf")
            paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

/*! Reads every value of every record by the kind of its code, as a database would, and keeps the tags told of. */
class ReadingVisitor : public zvdxf::Visitor
{
public:
    struct Told
    {
        std::uint32_t index;
        zvdxf::SectionKind section;
        Pairs tags;
    };

    void beginSection(zvdxf::SectionKind kind, std::string_view) override { begun.push_back(kind); }
    void endSection(zvdxf::SectionKind kind) override { ended.push_back(kind); }
    void headerVariable(std::string_view name, const zvdxf::RecordView &values) override
    {
        Pairs pairs{{9, std::string(name)}};
        read(values, pairs);
        variables.push_back(pairs);
    }
    void record(zvdxf::SectionKind section, const zvdxf::RecordView &record) override
    {
        records.push_back({record.index(), section, {}});
        read(record, records.back().tags);
    }

    std::vector<zvdxf::SectionKind> begun;
    std::vector<zvdxf::SectionKind> ended;
    std::vector<Pairs> variables;
    std::vector<Told> records;
    std::size_t textLength = 0;

private:
    void read(const zvdxf::RecordView &record, Pairs &pairs)
    {
        for (const zvdxf::Tag &tag : record) {
            pairs.emplace_back(tag.code, record.store().asciiValue(tag));
            switch (zvdxf::valueKind(tag.code)) {
            case zvdxf::ValueKind::Text:
                textLength += record.text(tag).size();
                break;
            case zvdxf::ValueKind::Real:
                record.real(tag);
                break;
            case zvdxf::ValueKind::Handle:
                record.handle(tag);
                break;
            case zvdxf::ValueKind::Chunk:
                textLength += record.chunk(tag).size();
                break;
            default:
                record.integer(tag);
                break;
            }
        }
    }
};

} // namespace dxf_testing
