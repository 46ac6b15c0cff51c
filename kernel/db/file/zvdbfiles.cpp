// SPDX-License-Identifier: MIT
#include "db/zvdbdatabase.h"
#include "drawing_file.h"

Zv::ErrorStatus ZvDbDatabase::readFile(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress)
{
    const Zv::ErrorStatus status = zvdbLoadDrawing(*d, nullptr, path.toStdString(), report, progress);
    d->fileName = status == Zv::eOk ? path : ZvString();
    return status;
}

Zv::ErrorStatus ZvDbDatabase::readStream(const void *bytes, std::size_t size, ZvDbFileReport &report,
                                         ZvDbProgress *progress)
{
    if (size > zvdxf::Buffer::maxSize) {
        report = ZvDbFileReport();
        report.status = Zv::eFileAccess;
        report.message = L"the drawing is too large: files of 4 GiB and more cannot be read";
        d->clear();
        return report.status;
    }
    zvdxf::Buffer buffer(std::string_view(static_cast<const char *>(bytes), size));
    return zvdbLoadDrawing(*d, &buffer, std::string(), report, progress);
}

Zv::ErrorStatus ZvDbDatabase::saveAs(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress)
{
    const Zv::ErrorStatus status = zvdbSaveDrawing(*d, path.toStdString(), report, progress);
    if (status == Zv::eOk) {
        setModified(false);
        d->fileName = path;
    }
    return status;
}

ZvString ZvDbDatabase::fileName() const
{
    return d->fileName;
}

Zv::ErrorStatus ZvDbDatabase::writeCopy(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress)
{
    return zvdbSaveDrawing(*d, path.toStdString(), report, progress);
}
