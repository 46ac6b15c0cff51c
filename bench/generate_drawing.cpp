// SPDX-License-Identifier: MIT
// Writes a drawing of any size for measurements, the same bytes for the same arguments on every machine.
//
//     generate_drawing FILE [--entities N | --size-mb M] [--plain | --typed | --layers L] [--metres]
//
// 60 % lines, 30 % circles, 10 % polylines of eight points, at random places of a square that grows with the count, so
// that the drawing stays equally dense.
//   --entities N  so many entities (default 1000)
//   --size-mb M   as many entities as it takes to fill M million bytes
//   --plain       ten layers, all continuous (the default)
//   --typed       six layers with a line type each, and every fifth entity with a line type of its own
//   --layers L    L layers, all continuous, used in turn
//   --metres      the drawing unit is the metre, not the millimetre; some programs then draw patterns 1000 times finer
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct LineType
{
    const char *name;
    const char *description;
    std::vector<double> dashes; // lengths in drawing units: positive a dash, negative a gap, 0 a dot
};

const std::array<LineType, 6> lineTypes = {{
    {"CENTER", "Center ____ _ ____", {1.25, -0.25, 0.25, -0.25}},
    {"DASHED", "Dashed __ __ __", {0.5, -0.25}},
    {"HIDDEN", "Hidden _ _ _ _", {0.25, -0.125}},
    {"DASHDOT", "Dash dot __ . __", {0.5, -0.25, 0.0, -0.25}},
    {"PHANTOM", "Phantom _____ _ _", {1.25, -0.25, 0.25, -0.25, 0.25, -0.25}},
    {"DOT", "Dot . . . .", {0.0, -0.25}},
}};

// The order of the numbers must not depend on the standard library, so its distributions are not used.
class Random
{
public:
    double upTo(double limit) { return static_cast<double>(next() >> 11) * 0x1.0p-53 * limit; }
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>((next() >> 32) % limit); }

private:
    // SplitMix64
    std::uint64_t next()
    {
        state += 0x9e3779b97f4a7c15u;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    std::uint64_t state = 1;
};

// Gathers group codes and values, and writes them in large pieces.
class TagFile
{
public:
    explicit TagFile(const char *path) : file(std::fopen(path, "wb")) { }
    TagFile(const TagFile &) = delete;
    TagFile &operator=(const TagFile &) = delete;
    ~TagFile() { close(); }

    bool isOpen() const { return file != nullptr; }
    std::uint64_t size() const { return flushed + text.size(); }

    void tag(int code, std::string_view value)
    {
        const std::string digits = std::to_string(code);
        text.append(digits.size() < 3 ? 3 - digits.size() : 0, ' ');
        text.append(digits).append("\n").append(value).append("\n");
        if (text.size() > 1u << 20)
            flush();
    }
    void tag(int code, const char *value) { tag(code, std::string_view(value)); }
    void tag(int code, long value) { tag(code, std::string_view(std::to_string(value))); }
    void tag(int code, int value) { tag(code, static_cast<long>(value)); }
    void tag(int code, double value)
    {
        std::array<char, 64> buffer;
        const auto end
            = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6).ptr;
        tag(code, std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())));
    }
    void handle(int code, std::uint64_t value)
    {
        std::array<char, 32> buffer;
        std::snprintf(buffer.data(), buffer.size(), "%llX", static_cast<unsigned long long>(value));
        tag(code, buffer.data());
    }
    void point(int code, double x, double y)
    {
        tag(code, x);
        tag(code + 10, y);
    }

    // False when anything could not be written.
    bool close()
    {
        if (!file)
            return false;
        flush();
        const bool ok = !failed && std::fclose(file) == 0;
        file = nullptr;
        return ok;
    }

private:
    void flush()
    {
        failed = std::fwrite(text.data(), 1, text.size(), file) != text.size() || failed;
        flushed += text.size();
        text.clear();
    }

    std::FILE *file;
    std::string text;
    std::uint64_t flushed = 0;
    bool failed = false;
};

struct Options
{
    const char *path = nullptr;
    long entities = 1000;
    double megabytes = 0.0; // 0: the count decides
    long layers = 10;
    bool typed = false;
    bool metres = false;
};

// Handles given out in advance; entities count on from firstFree.
enum Handle : std::uint64_t {
    RootDictionary = 0x0C,
    GroupDictionary = 0x0D,
    ModelSpaceRecord = 0x1F,
    PaperSpaceRecord = 0x1B,
    ModelSpaceBlock = 0x20,
    ModelSpaceEnd = 0x21,
    PaperSpaceBlock = 0x1C,
    PaperSpaceEnd = 0x1D,
    firstFree = 0x100,
};

class Generator
{
public:
    Generator(TagFile &out, const Options &options) : out(out), options(options)
    {
        // In these shares an entity takes some 170 bytes.
        const double count
            = options.megabytes > 0 ? options.megabytes * 1e6 / 170 : static_cast<double>(options.entities);
        side = 50.0 * std::sqrt(count < 1 ? 1 : count);
        if (options.typed)
            layerCount = static_cast<long>(lineTypes.size());
        else
            layerCount = options.layers;
        for (long layer = 0; layer < layerCount; ++layer)
            layerNames.push_back("LAYER-" + std::to_string(layer));
    }

    long run()
    {
        header();
        tables();
        blocks();
        const long count = entities();
        objects();
        out.tag(0, "EOF");
        return count;
    }

private:
    void header()
    {
        begin("HEADER");
        out.tag(9, "$ACADVER");
        out.tag(1, "AC1027");
        out.tag(9, "$DWGCODEPAGE");
        out.tag(3, "ANSI_1252");
        // Higher than any handle a file of this program reaches, since the count is known only at its end.
        out.tag(9, "$HANDSEED");
        out.tag(5, "FFFFFFFF");
        out.tag(9, "$INSUNITS");
        out.tag(70, options.metres ? 6 : 4);
        out.tag(9, "$MEASUREMENT");
        out.tag(70, 1);
        out.tag(9, "$EXTMIN");
        out.point(10, 0, 0);
        out.tag(30, 0.0);
        out.tag(9, "$EXTMAX");
        out.point(10, side, side);
        out.tag(30, 0.0);
        end();
    }

    void tables()
    {
        begin("TABLES");
        beginTable("VPORT", 0x8, 1);
        record("VPORT", "AcDbViewportTableRecord", "*Active");
        out.point(10, 0, 0);
        out.point(11, 1, 1);
        out.point(12, side / 2, side / 2);
        out.tag(40, side);
        out.tag(41, 1.0);
        endTable();

        beginTable("LTYPE", 0x5, static_cast<long>(lineTypes.size()) + 3);
        for (const char *name : {"ByBlock", "ByLayer", "Continuous"}) {
            record("LTYPE", "AcDbLinetypeTableRecord", name);
            out.tag(3, "");
            out.tag(72, 65);
            out.tag(73, 0);
            out.tag(40, 0.0);
        }
        for (const LineType &type : lineTypes) {
            record("LTYPE", "AcDbLinetypeTableRecord", type.name);
            out.tag(3, type.description);
            out.tag(72, 65);
            out.tag(73, static_cast<long>(type.dashes.size()));
            double length = 0;
            for (double dash : type.dashes)
                length += std::fabs(dash);
            out.tag(40, length);
            for (double dash : type.dashes) {
                out.tag(49, dash);
                out.tag(74, 0);
            }
        }
        endTable();

        beginTable("LAYER", 0x2, layerCount + 1);
        layer("0", "Continuous", 7);
        for (long number = 0; number < layerCount; ++number) {
            const auto index = static_cast<std::size_t>(number);
            layer(layerNames[index].c_str(), options.typed ? lineTypes[index].name : "Continuous",
                  1 + static_cast<int>(number % 250));
        }
        endTable();

        beginTable("STYLE", 0x3, 1);
        record("STYLE", "AcDbTextStyleTableRecord", "Standard");
        out.tag(40, 0.0);
        out.tag(41, 1.0);
        out.tag(50, 0.0);
        out.tag(71, 0);
        out.tag(42, 2.5);
        out.tag(3, "txt");
        out.tag(4, "");
        endTable();

        beginTable("VIEW", 0x6, 0);
        endTable();
        beginTable("UCS", 0x7, 0);
        endTable();
        beginTable("APPID", 0x9, 1);
        record("APPID", "AcDbRegAppTableRecord", "ACAD");
        endTable();
        beginTable("DIMSTYLE", 0xA, 0);
        out.tag(100, "AcDbDimStyleTable");
        endTable();

        beginTable("BLOCK_RECORD", 0x1, 2);
        blockRecord("*Model_Space", ModelSpaceRecord);
        blockRecord("*Paper_Space", PaperSpaceRecord);
        endTable();
        end();
    }

    void blocks()
    {
        begin("BLOCKS");
        block("*Model_Space", ModelSpaceRecord, ModelSpaceBlock, ModelSpaceEnd);
        block("*Paper_Space", PaperSpaceRecord, PaperSpaceBlock, PaperSpaceEnd);
        end();
    }

    long entities()
    {
        begin("ENTITIES");
        long count = 0;
        const double limit = options.megabytes * 1e6;
        while (options.megabytes > 0 ? static_cast<double>(out.size()) < limit : count < options.entities) {
            entity(count);
            ++count;
        }
        end();
        return count;
    }

    void objects()
    {
        begin("OBJECTS");
        out.tag(0, "DICTIONARY");
        out.handle(5, RootDictionary);
        out.tag(330, "0");
        out.tag(100, "AcDbDictionary");
        out.tag(281, 1);
        out.tag(3, "ACAD_GROUP");
        out.handle(350, GroupDictionary);
        out.tag(0, "DICTIONARY");
        out.handle(5, GroupDictionary);
        out.handle(330, RootDictionary);
        out.tag(100, "AcDbDictionary");
        out.tag(281, 1);
        end();
    }

    void entity(long number)
    {
        const std::uint32_t kind = random.below(10);
        const char *const name = kind < 6 ? "LINE" : kind < 9 ? "CIRCLE" : "LWPOLYLINE";
        out.tag(0, name);
        out.handle(5, nextHandle++);
        out.handle(330, ModelSpaceRecord);
        out.tag(100, "AcDbEntity");
        out.tag(8, layerNames[static_cast<std::size_t>(number % layerCount)]);
        if (options.typed && number % 5 == 0)
            out.tag(6, lineTypes[random.below(static_cast<std::uint32_t>(lineTypes.size()))].name);

        double x = random.upTo(side);
        double y = random.upTo(side);
        if (kind < 6) {
            const double angle = random.upTo(6.283185307179586);
            const double length = 20 + random.upTo(160);
            out.tag(100, "AcDbLine");
            out.point(10, x, y);
            out.tag(30, 0.0);
            out.point(11, x + length * std::cos(angle), y + length * std::sin(angle));
            out.tag(31, 0.0);
            return;
        }
        if (kind < 9) {
            out.tag(100, "AcDbCircle");
            out.point(10, x, y);
            out.tag(30, 0.0);
            out.tag(40, 2 + random.upTo(20));
            return;
        }
        out.tag(100, "AcDbPolyline");
        out.tag(90, 8);
        out.tag(70, 0);
        for (int vertex = 0; vertex < 8; ++vertex) {
            out.point(10, x, y);
            x += random.upTo(30) - 12;
            y += random.upTo(30) - 12;
        }
    }

    void begin(const char *section)
    {
        out.tag(0, "SECTION");
        out.tag(2, section);
    }
    void end() { out.tag(0, "ENDSEC"); }

    void beginTable(const char *name, std::uint64_t handle, long count)
    {
        table = handle;
        out.tag(0, "TABLE");
        out.tag(2, name);
        out.handle(5, handle);
        out.tag(330, "0");
        out.tag(100, "AcDbSymbolTable");
        out.tag(70, count);
    }
    void endTable() { out.tag(0, "ENDTAB"); }

    void record(const char *type, const char *marker, const char *name)
    {
        out.tag(0, type);
        out.handle(5, nextHandle++);
        out.handle(330, table);
        out.tag(100, "AcDbSymbolTableRecord");
        out.tag(100, marker);
        out.tag(2, name);
        out.tag(70, 0);
    }

    void layer(const char *name, const char *lineType, int color)
    {
        record("LAYER", "AcDbLayerTableRecord", name);
        out.tag(62, color);
        out.tag(6, lineType);
    }

    void blockRecord(const char *name, Handle handle)
    {
        out.tag(0, "BLOCK_RECORD");
        out.handle(5, handle);
        out.handle(330, table);
        out.tag(100, "AcDbSymbolTableRecord");
        out.tag(100, "AcDbBlockTableRecord");
        out.tag(2, name);
        out.tag(340, "0");
    }

    void block(const char *name, Handle record, Handle begin, Handle end)
    {
        out.tag(0, "BLOCK");
        out.handle(5, begin);
        out.handle(330, record);
        out.tag(100, "AcDbEntity");
        out.tag(8, "0");
        out.tag(100, "AcDbBlockBegin");
        out.tag(2, name);
        out.tag(70, 0);
        out.point(10, 0, 0);
        out.tag(30, 0.0);
        out.tag(3, name);
        out.tag(1, "");
        out.tag(0, "ENDBLK");
        out.handle(5, end);
        out.handle(330, record);
        out.tag(100, "AcDbEntity");
        out.tag(8, "0");
        out.tag(100, "AcDbBlockEnd");
    }

    TagFile &out;
    const Options &options;
    Random random;
    std::vector<std::string> layerNames;
    long layerCount = 0;
    double side = 0; // of the square, in drawing units
    std::uint64_t table = 0; // handle of the table being written
    std::uint64_t nextHandle = firstFree;
};

bool parse(int argc, char **argv, Options &options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        const bool takesNumber = word == "--entities" || word == "--size-mb" || word == "--layers";
        if (takesNumber && i + 1 == argc)
            return false;
        if (word == "--entities")
            options.entities = std::atol(argv[++i]);
        else if (word == "--size-mb")
            options.megabytes = std::atof(argv[++i]);
        else if (word == "--layers")
            options.layers = std::atol(argv[++i]);
        else if (word == "--typed")
            options.typed = true;
        else if (word == "--metres")
            options.metres = true;
        else if (word == "--plain")
            options.typed = false;
        else if (word.substr(0, 1) == "-" || options.path)
            return false;
        else
            options.path = argv[i];
    }
    return options.path && options.entities >= 0 && options.megabytes >= 0 && options.layers > 0;
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    if (!parse(argc, argv, options)) {
        std::fputs(
            "usage: generate_drawing FILE [--entities N | --size-mb M] [--plain | --typed | --layers L] [--metres]\n",
            stderr);
        return 2;
    }
    TagFile out(options.path);
    if (!out.isOpen()) {
        std::fprintf(stderr, "generate_drawing: cannot write %s\n", options.path);
        return 1;
    }
    const long count = Generator(out, options).run();
    if (!out.close()) {
        std::fprintf(stderr, "generate_drawing: writing %s failed\n", options.path);
        return 1;
    }
    std::printf("%ld entities\n", count);
    return 0;
}
