// SPDX-License-Identifier: MIT
#ifndef ZVSTREAM_H
#define ZVSTREAM_H

#include "base/zvsmartptr.h"
#include "base/zvstring.h"

#include <cstdint>

/// Stream of bytes, read forward with seeking. Reads past the end give what there is.
class ZV_EXPORT ZvStreamBuf : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvStreamBuf)
public:
    /// Bytes in all.
    virtual std::uint64_t length() const = 0;
    virtual std::uint64_t tell() const = 0;
    /// From the start; a position past the end is refused and leaves the stream where it was.
    virtual bool seek(std::uint64_t position) = 0;
    /// Number of bytes read.
    virtual std::size_t read(void *to, std::size_t count) = 0;

    /// Little-endian fields; 0, and \a ok false, where the stream ends before.
    std::uint8_t readUInt8(bool *ok = nullptr);
    std::uint16_t readUInt16(bool *ok = nullptr);
    std::uint32_t readUInt32(bool *ok = nullptr);
};
typedef ZvSmartPtr<ZvStreamBuf> ZvStreamBufPtr;

/// Stream over a block of memory, which must outlive it; nothing is copied.
class ZV_EXPORT ZvFlatMemStream : public ZvStreamBuf
{
    ZVRX_DECLARE_MEMBERS(ZvFlatMemStream)
public:
    /// \a reserved is 0.
    static ZvStreamBufPtr createNew(void *memory, std::size_t size, int reserved);
    std::uint64_t length() const override { return m_size; }
    std::uint64_t tell() const override { return m_position; }
    bool seek(std::uint64_t position) override;
    std::size_t read(void *to, std::size_t count) override;

protected:
    ZvFlatMemStream(const void *memory, std::size_t size);

private:
    const unsigned char *m_memory;
    std::uint64_t m_size;
    std::uint64_t m_position = 0;
};

/// What the operating system offers to the kernel's users.
class ZV_EXPORT ZvSystemServices : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvSystemServices)
public:
    enum Access : unsigned { kRead = 0x80000000u };
    enum Share { kShareAll = 64 };
    enum Creation { kOpenExisting = 3 };
    /// Opens a file for reading. Null where there is no such file, or for any other access or creation code.
    virtual ZvStreamBufPtr openFile(const ZvString &fileName, unsigned access, int share, int creation) = 0;
};

/// Null is a state that callers survive; the reference kernel offers one unless zvrxSetSystemServices took it away.
ZV_EXPORT ZvSystemServices *zvrxSystemServices();
/// Not owned.
ZV_EXPORT void zvrxSetSystemServices(ZvSystemServices *services);

#endif
