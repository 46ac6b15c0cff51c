// SPDX-License-Identifier: MIT
#pragma once

#include "dxf_tag.h"
#include "dxf_text.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zvdxf {

/*! Called about once per MiB with bytes done and bytes in all, and once at the end; returning false cancels. */
using Progress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

/*! How many bytes pass between two calls. */
constexpr std::uint64_t progressStep = std::uint64_t(1024) * 1024;

/*! Why a file could not be read. */
enum class LoadStatus : std::uint8_t {
    Ok,
    Cancelled, //!< the progress call said so
    CannotRead, //!< no such file, no rights, a folder, a read error
    TooLarge, //!< 4 GiB or more
    Empty, //!< no bytes, or nothing but blanks
    IsDwg, //!< a binary drawing of the other kind ("AC10nn" in front)
    NotDxf //!< anything else in which no section begins
};

/*! What was wrong with a file that could be read nevertheless. */
enum class WarningKind : std::uint8_t {
    OutOfStep, //!< a line stood where a group code belongs and was passed over
    BadNumber, //!< a number could not be read and counts as 0
    BadText, //!< text held bytes that its encoding does not have
    TruncatedValue, //!< the file ends within a tag, which is passed over
    TruncatedRecord, //!< the file ends within a record, which the visitor is not told of, as it may lack any part
    MissingEndOfSection, //!< a section begins, or the file ends, within another
    MissingEndOfFile, //!< no `0 EOF`: the file was cut off
    UnknownSection, //!< a section of an unknown name; kept, not interpreted
    OutsideSection, //!< records outside of all sections; kept, not interpreted
    AfterEndOfFile, //!< something stands after `0 EOF`; kept, not interpreted
    BadHeader, //!< a tag in the HEADER section that belongs to no variable
    Count_ //!< how many kinds there are
};

/*! A short sentence in English, such as "the file is cut off: its end mark is missing". */
const char *warningText(WarningKind kind);

struct Warning
{
    std::uint64_t count = 0; //!< 0: nothing of this kind happened
    std::uint64_t firstOffset = 0; //!< byte in the file where it happened first
    std::uint64_t firstLine = 0; //!< the same as a line, counted from 1; 0 in binary files
};

/*! What came of loading. */
struct LoadResult
{
    LoadStatus status = LoadStatus::Ok;
    /*! What failed and where, for people: "cannot open plan.dxf: Permission denied". Empty when status is Ok. */
    std::string error;
    std::array<Warning, std::size_t(WarningKind::Count_)> warnings{};

    explicit operator bool() const { return status == LoadStatus::Ok; }
    const Warning &warning(WarningKind kind) const { return warnings[std::size_t(kind)]; }
    bool hasWarnings() const;
    /*! Counts something that was wrong at that byte of the file. */
    void count(WarningKind kind, std::uint64_t offset);
    /*! One line per kind that happened: "3 x a line stood where ... (first at line 512)"; empty without warnings. */
    std::string warningReport() const;
};

/*! A file's bytes, read whole into memory. Not mapped: another program may cut the file while it is open here. */
class Buffer
{
public:
    static constexpr std::uint64_t maxSize
        = 0xFFFFFFFEu; //!< bytes; offsets are 32-bit and the last one is OwnedTag::noSource

    Buffer() = default;
    /*! Copies \a bytes, of which there are at most maxSize. */
    explicit Buffer(std::string_view bytes);

    /*! Replaces the content by the file's. Only regular files are read. On failure the buffer is empty, \a result has a
        status other than Ok and a text. \a progress hears of the reading as the first half of the work. */
    bool read(const std::string &path, LoadResult &result, const Progress &progress = {});

    const char *data() const { return m_data.get(); }
    std::uint32_t size() const { return m_size; }
    std::string_view view() const { return {m_data.get(), m_size}; }
    std::string_view view(std::uint32_t offset, std::uint32_t length) const { return {m_data.get() + offset, length}; }

private:
    std::unique_ptr<char[]> m_data; //!< one zero byte behind the content, which scanners stop at
    std::uint32_t m_size = 0;
};

enum class LineEnd : std::uint8_t { Lf, CrLf, Cr };

/*! How a file is written: what a writer needs to go on in the same hand. */
struct FileStyle
{
    bool binary = false;
    bool wideCodes = true; //!< binary only: group codes of two bytes (since AC1012) rather than one
    LineEnd lineEnd = LineEnd::Lf; //!< ASCII only
    int codeWidth = 3; //!< ASCII only: group codes are padded with blanks in front to this width; 0 none
};

/*! A record: a `0` tag and all tags before the next one. Bytes, code lines included. Whatever was passed over to get
   back in step belongs to the record before it, so records follow each other without a gap. */
struct Record
{
    std::uint32_t offset; //!< of the first byte of the `0` tag's code
    std::uint32_t length; //!< in bytes
};

struct Section
{
    SectionKind kind = SectionKind::Other;
    std::string name; //!< as in the file: "ENTITIES"; empty when its `2` tag is missing
    std::uint32_t first = 0; //!< record `0 SECTION`
    std::uint32_t last = 0; //!< one past its `0 ENDSEC`, or past its last record where that is missing
    bool closed = false; //!< has its ENDSEC
};

/*! A variable of the HEADER section: `9 $NAME` and its one to three tags. */
struct HeaderVariable
{
    std::string_view name; //!< "$ACADVER"; points into the buffer
    std::uint32_t offset; //!< of the first byte of the `9` tag's code
    std::uint32_t length; //!< in bytes, to the next variable
    std::uint32_t firstTag; //!< index into Store::headerTags()
    std::uint32_t tagCount; //!< without the `9` tag
};

class Store;

/*! A record's tags and the means to read them. Cheap to copy; valid while the store and the tags it was made from are.
   The first tag is the `0` tag itself, for HEADER variables the `9` tag is not among them.

    The readers never fail: what cannot be read is 0 or an empty text, and is counted as a warning when the view was
   handed out by Store::load. They fit any code: real() of a whole number converts, text() of a number is its decimal
   form. */
class RecordView
{
public:
    RecordView(const Store &store, const Tag *tags, std::size_t count, std::uint32_t index,
               LoadResult *diagnostics = nullptr);

    std::uint32_t index() const { return m_index; } //!< of the record in the store
    const Store &store() const { return *m_store; }
    std::string_view
    type() const; //!< value of the `0` tag without blanks around it: "LINE"; empty for HEADER variables

    std::size_t size() const { return m_count; }
    const Tag *begin() const { return m_tags; }
    const Tag *end() const { return m_tags + m_count; }
    const Tag &operator[](std::size_t i) const { return m_tags[i]; }

    double real(const Tag &tag) const;
    std::int64_t integer(const Tag &tag) const;
    std::uint64_t handle(const Tag &tag) const;
    std::string
    text(const Tag &tag) const; //!< UTF-8, `^` codes resolved; trailing blanks kept, as they may matter in texts
    std::string name(const Tag &tag) const; //!< like text(), without blanks around it: names, file names, keywords
    std::string chunk(const Tag &tag) const; //!< bytes of a Chunk value
    std::string_view raw(const Tag &tag) const; //!< bytes as they stand in the file

private:
    void warn(WarningKind kind, const Tag &tag) const;

    const Store *m_store;
    const Tag *m_tags;
    std::size_t m_count;
    std::uint32_t m_index;
    LoadResult *m_diagnostics;
};

/*! Hears what a file holds, in file order, while it is read. Nothing handed out may be kept beyond the call except the
    store itself, indexes and offsets. */
class Visitor
{
public:
    virtual ~Visitor() = default;
    /*! The HEADER section is always told of by headerVariable(), the others by record(). */
    virtual void beginSection(SectionKind kind, std::string_view name);
    virtual void endSection(SectionKind kind); //!< also called where the ENDSEC is missing
    /*! Version, code page and text encoding are known from the first of these calls on. */
    virtual void headerVariable(std::string_view name, const RecordView &values);
    /*! Every record within a section but ENDSEC; TABLE and ENDTAB are records. */
    virtual void record(SectionKind section, const RecordView &record) = 0;
};

/*! A drawing file in memory: its bytes and an index of its records. Tags are not kept; they are read from the bytes
   again when asked for, always in the same way, so an index of the loading pass fits later. Not to be changed from the
   outside: what an application changes it hands to the Writer. */
class Store
{
public:
    Store();
    Store(Store &&) noexcept;
    Store &operator=(Store &&) noexcept;
    ~Store();

    /*! Reads a file in one pass and tells \a visitor, when given, what it holds. A failed or cancelled load leaves the
       store empty; what the visitor made of the part it saw is the caller's to throw away. */
    LoadResult load(const std::string &path, Visitor *visitor = nullptr, const Progress &progress = {});
    LoadResult load(Buffer buffer, Visitor *visitor = nullptr, const Progress &progress = {});

    const Buffer &buffer() const { return m_buffer; }
    const FileStyle &style() const { return m_style; }
    const std::string &version() const { return m_version; } //!< $ACADVER, "AC1027"; empty where the file has none
    /*! Serves one thread at a time, and with it all reading of text; another thread takes a copy. */
    const TextCodec &codec() const { return m_codec; }

    /*! All records in file order, `0 SECTION`, `0 ENDSEC` and `0 EOF` among them. What stands before the first
       (comments) is the preamble. */
    const std::vector<Record> &records() const { return m_records; }
    std::uint32_t preambleLength() const;
    /*! How many records, counted from the first, are whole: all, or all but the last where the file was cut off within
       it. Whoever completes a cut file keeps these and calls Writer::end(). */
    std::uint32_t wholeRecords() const { return m_wholeRecords; }
    const std::vector<Section> &sections() const { return m_sections; }
    /*! The first section of that kind, or null. */
    const Section *section(SectionKind kind) const;

    const std::vector<HeaderVariable> &headerVariables() const { return m_headerVariables; }
    const std::vector<Tag> &headerTags() const { return m_headerTags; }
    /*! By name with its `$`; null when the file has none. The last of several counts. */
    const HeaderVariable *headerVariable(std::string_view name) const;
    RecordView headerValues(const HeaderVariable &variable) const;

    /*! Reads the record's tags into \a tags, which is overwritten; nothing is counted as a warning. */
    void tags(std::uint32_t record, std::vector<Tag> &tags) const;
    /*! The same as a view, which lives as long as \a tags is left alone. */
    RecordView view(std::uint32_t record, std::vector<Tag> &tags) const;
    /*! Value of the record's `0` tag without blanks. */
    std::string_view type(std::uint32_t record) const;

    /*! The tag's value as OwnedTag has it: unchanged from an ASCII file, spelt out from a binary one. */
    std::string asciiValue(const Tag &tag) const;
    OwnedTag owned(const Tag &tag) const;

    /*! Line of a byte, counted from 1; 0 in binary files. Counts the lines before it, so not for use in loops. */
    std::uint64_t lineAt(std::uint64_t offset) const;

private:
    friend class Loader;
    LoadResult load(Buffer buffer, Visitor *visitor, const Progress &progress, std::uint64_t progressBase);

    Buffer m_buffer;
    FileStyle m_style;
    std::string m_version;
    TextCodec m_codec;
    std::vector<Record> m_records;
    std::uint32_t m_wholeRecords = 0;
    std::vector<Section> m_sections;
    std::vector<HeaderVariable> m_headerVariables;
    std::vector<Tag> m_headerTags;
};

} // namespace zvdxf
