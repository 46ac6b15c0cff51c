// SPDX-License-Identifier: MIT
// The tag store's writing for tests in other languages:
//   dxf_rewrite IN CONVERTED CHANGED    CONVERTED: IN as binary, or as ASCII if it is binary; CHANGED: IN with the
//   first
//                                       layer's colour 211 and $LTSCALE 2.5
//   dxf_rewrite --texts OUT PAGE TEXT.. a new drawing in that code page with these texts, given in UTF-8
#include "dxf_edit.h"
#include "dxf_testing.h"

#include <cstdio>
#include <cstring>

using namespace zvdxf;
using namespace dxf_testing;

namespace {

bool finish(Writer &writer, AtomicFile &file)
{
    if (writer.finish() && file.commit())
        return true;
    std::fprintf(stderr, "%s%s\n", writer.error().c_str(), file.error().c_str());
    return false;
}

bool convert(const Store &store, const char *path)
{
    FileStyle style = binaryStyle(store.version() >= "AC1012");
    style.binary = !store.style().binary;
    AtomicFile file;
    file.open(path);
    Writer writer(store, file, style);
    writer.keepAll();
    return finish(writer, file);
}

bool change(const Store &store, const char *path)
{
    const std::uint32_t count = std::uint32_t(store.records().size());
    std::uint32_t layer = 0;
    while (layer < count && store.type(layer) != "LAYER")
        ++layer;
    if (layer == count)
        return false;
    RecordEdit edit(store, layer);
    edit.setInteger("AcDbLayerTableRecord", 62, 211, {70});
    AtomicFile file;
    file.open(path);
    Writer writer(store, file);
    writer.setHeaderVariable("$LTSCALE", {{40, "2.5"}});
    writer.keepPreamble();
    writer.keep(0, layer);
    writer.record(edit.tags());
    writer.keep(layer + 1, count - layer - 1);
    return finish(writer, file);
}

bool writeTexts(const char *path, const char *codePage, char **texts)
{
    const TextCodec codec("AC1015", codePage);
    AtomicFile file;
    file.open(path);
    Writer writer(file, FileStyle());
    writer.record({{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1015"}, {9, "$DWGCODEPAGE"}, {3, codePage}});
    writer.record({{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
    for (; *texts; ++texts)
        writer.record({{0, "TEXT"}, {8, "0"}, {10, "0.0"}, {20, "0.0"}, {40, "2.5"}, {1, codec.encode(*texts)}});
    writer.end();
    return finish(writer, file);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc >= 4 && std::strcmp(argv[1], "--texts") == 0)
        return writeTexts(argv[2], argv[3], argv + 4) ? 0 : 1;
    Store store;
    if (argc != 4 || !store.load(argv[1]))
        return 1;
    return convert(store, argv[2]) && change(store, argv[3]) ? 0 : 1;
}
