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
    /// Where the next byte is read, from the start.
    virtual std::uint64_t tell() const = 0;
    /// From the start; a position past the end is refused and leaves the stream where it was.
    virtual bool seek(std::uint64_t position) = 0;
    /// Number of bytes read.
    virtual std::size_t read(void *to, std::size_t count) = 0;

    /// Little-endian fields; 0, and \a ok false, where the stream ends before.
    std::uint8_t readUInt8(bool *ok = nullptr);
    /// The same, of two bytes.
    std::uint16_t readUInt16(bool *ok = nullptr);
    /// The same, of four bytes.
    std::uint32_t readUInt32(bool *ok = nullptr);
};
/// Counted pointer to a stream.
typedef ZvSmartPtr<ZvStreamBuf> ZvStreamBufPtr;

/// Stream over a block of memory, which must outlive it; nothing is copied.
class ZV_EXPORT ZvFlatMemStream : public ZvStreamBuf
{
    ZVRX_DECLARE_MEMBERS(ZvFlatMemStream)
public:
    /// \a reserved is 0.
    static ZvStreamBufPtr createNew(void *memory, std::size_t size, int reserved);
    std::uint64_t length() const override { return m_size; }
    /// Where the next byte is read.
    std::uint64_t tell() const override { return m_position; }
    bool seek(std::uint64_t position) override;
    std::size_t read(void *to, std::size_t count) override;

protected:
    /// Over \a size bytes at \a memory, which are not copied.
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
    /// The one kind of access that is offered.
    enum Access : unsigned { kRead = 0x80000000u };
    /// The one kind of sharing that is offered: nobody is kept out.
    enum Share { kShareAll = 64 };
    /// The one kind of creation that is offered: a file that is there.
    enum Creation { kOpenExisting = 3 };
    /// Opens a file for reading. Null where there is no such file, or for any other access or creation code.
    virtual ZvStreamBufPtr openFile(const ZvString &fileName, unsigned access, int share, int creation) = 0;
};

/// Null is a state that callers survive; the reference kernel offers one unless zvrxSetSystemServices took it away.
ZV_EXPORT ZvSystemServices *zvrxSystemServices();
/// Not owned.
ZV_EXPORT void zvrxSetSystemServices(ZvSystemServices *services);

#endif
