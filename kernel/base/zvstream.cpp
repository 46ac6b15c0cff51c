// SPDX-License-Identifier: MIT
#include "base/zvstream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

ZVRX_DEFINE_MEMBERS(ZvStreamBuf, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvFlatMemStream, ZvStreamBuf)
ZVRX_DEFINE_MEMBERS(ZvSystemServices, ZvRxObject)

static std::uint32_t readLittleEndian(ZvStreamBuf &stream, std::size_t count, bool *ok)
{
    unsigned char bytes[4] = {};
    const bool complete = stream.read(bytes, count) == count;
    if (ok)
        *ok = complete;
    if (!complete)
        return 0;
    return bytes[0] | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16 | std::uint32_t(bytes[3]) << 24;
}

std::uint8_t ZvStreamBuf::readUInt8(bool *ok)
{
    return std::uint8_t(readLittleEndian(*this, 1, ok));
}

std::uint16_t ZvStreamBuf::readUInt16(bool *ok)
{
    return std::uint16_t(readLittleEndian(*this, 2, ok));
}

std::uint32_t ZvStreamBuf::readUInt32(bool *ok)
{
    return readLittleEndian(*this, 4, ok);
}

ZvFlatMemStream::ZvFlatMemStream(const void *memory, std::size_t size)
    : m_memory(static_cast<const unsigned char *>(memory)), m_size(memory ? size : 0)
{
}

namespace {
/// Opens the protected constructor to the counting mixin.
class MemoryStream : public ZvFlatMemStream
{
public:
    MemoryStream(const void *memory, std::size_t size) : ZvFlatMemStream(memory, size) { }
};

class FileStream : public ZvStreamBuf
{
public:
    explicit FileStream(std::FILE *file, std::uint64_t length) : m_file(file), m_length(length) { }
    ~FileStream() override { std::fclose(m_file); }
    std::uint64_t length() const override { return m_length; }
    std::uint64_t tell() const override { return std::uint64_t(std::ftell(m_file)); }
    bool seek(std::uint64_t position) override
    {
        return position <= m_length && std::fseek(m_file, long(position), SEEK_SET) == 0;
    }
    std::size_t read(void *to, std::size_t count) override { return std::fread(to, 1, count, m_file); }

private:
    std::FILE *m_file;
    std::uint64_t m_length;
};

class SystemServices : public ZvSystemServices
{
public:
    ZvStreamBufPtr openFile(const ZvString &fileName, unsigned access, int, int creation) override
    {
        if (access != kRead || creation != kOpenExisting)
            return nullptr;
        // Without blocking: the opening of a pipe would wait for somebody who writes to it.
        const int descriptor = open(fileName.toUtf8().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (descriptor < 0)
            return nullptr;
        struct stat info = {};
        const bool isFile = fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode);
        std::FILE *file = isFile ? fdopen(descriptor, "rb") : nullptr;
        if (!file) {
            close(descriptor);
            return nullptr;
        }
        return ZvStreamBufPtr::adopt(new ZvRxObjectImpl<FileStream>(file, std::uint64_t(info.st_size)));
    }
};

ZvSystemServices *&currentServices()
{
    static ZvSystemServices *services = new ZvStaticRxObject<SystemServices>;
    return services;
}
}

ZvStreamBufPtr ZvFlatMemStream::createNew(void *memory, std::size_t size, int)
{
    return ZvStreamBufPtr::adopt(new ZvRxObjectImpl<MemoryStream>(memory, size));
}

bool ZvFlatMemStream::seek(std::uint64_t position)
{
    if (position > m_size)
        return false;
    m_position = position;
    return true;
}

std::size_t ZvFlatMemStream::read(void *to, std::size_t count)
{
    const auto available = std::size_t(std::min<std::uint64_t>(count, m_size - m_position));
    if (available > 0)
        std::memcpy(to, m_memory + m_position, available);
    m_position += available;
    return available;
}

ZvSystemServices *zvrxSystemServices()
{
    return currentServices();
}

void zvrxSetSystemServices(ZvSystemServices *services)
{
    currentServices() = services;
}
