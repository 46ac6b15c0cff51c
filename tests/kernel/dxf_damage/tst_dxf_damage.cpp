// SPDX-License-Identifier: MIT
// Files cut off and files damaged at random: whatever comes, an error or a drawing with named warnings, and nothing
// half-read.
#include "dxf_testing.h"

#include <gtest/gtest.h>
#include <random>

using namespace zvdxf;
using namespace dxf_testing;

namespace {

constexpr int cuts = 500;
constexpr int mutations = 2000;

struct Sample
{
    std::string name;
    std::string bytes;
};

/*! Drawings of every style: a small one made here, and the samples that belong to the project. */
const std::vector<Sample> &samples()
{
    static const std::vector<Sample> all = [] {
        std::vector<Sample> list;
        const std::string plain = ascii(plainDrawing());
        Store store;
        load(store, plain);
        list.push_back({"plain", plain});
        list.push_back({"plain, CR LF", ascii(plainDrawing(), "\r\n")});
        list.push_back({"plain, binary", converted(store, binaryStyle(true))});
        list.push_back({"plain, old binary", converted(store, binaryStyle(false))});
        for (const std::string &path : drawingsIn(ZEVA_SAMPLES_DIR)) {
            list.push_back({path, fileContent(path)});
            load(store, list.back().bytes);
            list.push_back({path + ", binary", converted(store, binaryStyle(true))});
        }
        return list;
    }();
    return all;
}

/*! What must hold of any file that loads. */
void checkLoaded(const Store &store, const std::string &bytes, const ReadingVisitor &visitor)
{
    std::uint64_t position = store.preambleLength();
    for (const Record &record : store.records()) {
        ASSERT_EQ(record.offset, position);
        position += record.length;
    }
    ASSERT_EQ(position, bytes.size());
    ASSERT_EQ(rewritten(store), bytes);
    ASSERT_EQ(visitor.begun, visitor.ended);
    std::vector<Tag> tags;
    for (const ReadingVisitor::Told &told : visitor.records) {
        store.tags(told.index, tags);
        ASSERT_EQ(tags.size(), told.tags.size());
        for (std::size_t i = 0; i < tags.size(); ++i)
            ASSERT_EQ(Pair(tags[i].code, store.asciiValue(tags[i])), told.tags[i]);
    }
}

TEST(DxfDamage, aFileCutOffAnywhereIsRefusedOrWarnedOf)
{
    for (const Sample &sample : samples()) {
        SCOPED_TRACE(sample.name);
        Store whole;
        ReadingVisitor wholeVisitor;
        ASSERT_TRUE(load(whole, sample.bytes, &wholeVisitor));
        // Cutting off what may stand behind the end mark damages nothing.
        const std::size_t end = sample.bytes.rfind("EOF") + 2;
        std::mt19937 random(1);
        for (int i = 0; i < cuts; ++i) {
            const std::size_t length = i < cuts / 2 ? end * std::size_t(i) / (cuts / 2) : random() % end;
            SCOPED_TRACE(length);
            const std::string bytes = sample.bytes.substr(0, length);
            Store store;
            ReadingVisitor visitor;
            const LoadResult result = load(store, bytes, &visitor);
            if (!result) {
                ASSERT_FALSE(result.error.empty());
                ASSERT_TRUE(visitor.records.empty());
                continue;
            }
            ASSERT_EQ(result.warning(WarningKind::MissingEndOfFile).count, 1u) << result.warningReport();
            checkLoaded(store, bytes, visitor);
            // What was told is what the whole file tells: no record, variable or value is half of one.
            ASSERT_LE(visitor.records.size(), wholeVisitor.records.size());
            for (std::size_t r = 0; r < visitor.records.size(); ++r)
                ASSERT_EQ(visitor.records[r].tags, wholeVisitor.records[r].tags);
            ASSERT_LE(visitor.variables.size(), wholeVisitor.variables.size());
            for (std::size_t v = 0; v < visitor.variables.size(); ++v)
                ASSERT_EQ(visitor.variables[v], wholeVisitor.variables[v]);
        }
    }
}

std::string mutated(const std::string &original, std::mt19937 &random)
{
    std::string bytes = original;
    const int changes = 1 + int(random() % 4);
    for (int i = 0; i < changes && !bytes.empty(); ++i) {
        const std::size_t at = random() % bytes.size();
        const std::size_t length = std::min<std::size_t>(1 + random() % 200, bytes.size() - at);
        switch (random() % 8) {
        case 0:
            bytes[at] = char(random());
            break;
        case 1:
            bytes[at] = char(bytes[at] ^ (1 << (random() % 8)));
            break;
        case 2:
            bytes.erase(at, length);
            break;
        case 3:
            bytes.insert(at, bytes.substr(random() % bytes.size(), length));
            break;
        case 4: { // a line lost
            const std::size_t next = bytes.find('\n', at);
            bytes.erase(at, next == std::string::npos ? next : next + 1 - at);
            break;
        }
        case 5:
            bytes.insert(at, "\n");
            break;
        case 6:
            bytes.insert(at, "99999999999999999999999e999");
            break;
        case 7:
            std::fill_n(bytes.begin() + std::ptrdiff_t(at), length, char(random()));
            break;
        }
    }
    return bytes;
}

TEST(DxfDamage, aFileDamagedAtRandomIsReadOrRefused)
{
    std::mt19937 random(20240501);
    for (int i = 0; i < mutations; ++i) {
        const Sample &sample = samples()[std::size_t(i) % samples().size()];
        SCOPED_TRACE(sample.name + ", mutation " + std::to_string(i));
        const std::string bytes = mutated(sample.bytes, random);
        Store store;
        ReadingVisitor visitor;
        const LoadResult result = load(store, bytes, &visitor);
        if (!result) {
            ASSERT_FALSE(result.error.empty());
            ASSERT_TRUE(visitor.records.empty());
            continue;
        }
        ASSERT_EQ(result.hasWarnings(), !result.warningReport().empty());
        checkLoaded(store, bytes, visitor);

        // What was read is written in another style and read back without a fault.
        FileStyle style = binaryStyle(i % 2 == 0);
        style.binary = !store.style().binary;
        Store again;
        const LoadResult second = load(again, converted(store, style));
        ASSERT_TRUE(second) << second.error;
        ASSERT_EQ(again.sections().size(), store.sections().size());
    }
}

} // namespace
