// SPDX-License-Identifier: MIT
#include "dxf_store.h"

#include "dxf_number.h"
#include "dxf_scanner.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zvdxf {

namespace {

constexpr const char *warningTexts[std::size_t(WarningKind::Count_)] = {
    "a line stood where a group code belongs and was passed over",
    "a number could not be read and counts as 0",
    "text holds bytes that its encoding does not have",
    "the file ends within a value, which is passed over",
    "the file ends within a record, which is passed over",
    "a section has no end",
    "the file is cut off: its end mark is missing",
    "a section of an unknown name is kept but not understood",
    "records outside of all sections are kept but not understood",
    "something after the end mark is kept but not understood",
    "a value in the HEADER section belongs to no variable",
};

// Blanks, line ends, and the end-of-file character of old systems.
bool isFiller(std::string_view bytes)
{
    return bytes.find_first_not_of(std::string_view(" \t\r\n\x1A\0", 6)) == std::string_view::npos;
}

// "AC1027", "AC1.50", "AC2.10": the first six bytes of the other kind of drawing file.
bool isDwg(std::string_view bytes)
{
    return bytes.size() >= 6 && bytes.substr(0, 2) == "AC"
        && bytes.substr(2, 4).find_first_not_of("0123456789.") == std::string_view::npos;
}

template <class Number> Number littleEndian(const char *bytes)
{
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

bool isNumberKind(ValueKind kind)
{
    return kind != ValueKind::Text && kind != ValueKind::Handle && kind != ValueKind::Chunk;
}

double binaryReal(ValueKind kind, std::string_view bytes);

std::int64_t binaryInteger(ValueKind kind, std::string_view bytes)
{
    switch (kind) {
    case ValueKind::Int16:
        return littleEndian<std::int16_t>(bytes.data());
    case ValueKind::Int32:
        return littleEndian<std::int32_t>(bytes.data());
    case ValueKind::Int64:
        return littleEndian<std::int64_t>(bytes.data());
    case ValueKind::Byte:
        return static_cast<unsigned char>(bytes.front());
    default:
        break;
    }
    const double real = binaryReal(kind, bytes);
    return real > -9.2e18 && real < 9.2e18 ? std::int64_t(real) : 0;
}

double binaryReal(ValueKind kind, std::string_view bytes)
{
    return kind == ValueKind::Real ? littleEndian<double>(bytes.data()) : double(binaryInteger(kind, bytes));
}

} // namespace

const char *warningText(WarningKind kind)
{
    return warningTexts[std::size_t(kind)];
}

// ---- LoadResult
// -------------------------------------------------------------------------------------------------------

bool LoadResult::hasWarnings() const
{
    return std::any_of(warnings.begin(), warnings.end(), [](const Warning &warning) { return warning.count > 0; });
}

void LoadResult::count(WarningKind kind, std::uint64_t offset)
{
    Warning &warning = warnings[std::size_t(kind)];
    if (warning.count++ == 0)
        warning.firstOffset = offset;
}

std::string LoadResult::warningReport() const
{
    std::string report;
    for (std::size_t kind = 0; kind < warnings.size(); ++kind) {
        const Warning &warning = warnings[kind];
        if (warning.count == 0)
            continue;
        report += std::to_string(warning.count) + " x " + warningTexts[kind] + " (first at ";
        report += warning.firstLine > 0 ? "line " + std::to_string(warning.firstLine)
                                        : "byte " + std::to_string(warning.firstOffset);
        report += ")\n";
    }
    return report;
}

// ---- Buffer
// -----------------------------------------------------------------------------------------------------------

Buffer::Buffer(std::string_view bytes) : m_size(std::uint32_t(std::min<std::uint64_t>(bytes.size(), maxSize)))
{
    m_data.reset(new char[std::size_t(m_size) + 1]);
    std::copy_n(bytes.begin(), m_size, m_data.get());
    m_data[m_size] = '\0';
}

bool Buffer::read(const std::string &path, LoadResult &result, const Progress &progress)
{
    *this = Buffer();
    const auto fail = [this, &result](LoadStatus status, std::string text) {
        *this = Buffer();
        result.status = status;
        result.error = std::move(text);
        return false;
    };

    // Not blocking: opening a pipe would otherwise wait for somebody to write to it.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return fail(LoadStatus::CannotRead, "cannot open " + path + ": " + std::strerror(errno));
    struct Closer
    {
        int file;
        ~Closer() { ::close(file); }
    } closer{file};

    struct stat info;
    if (::fstat(file, &info) != 0)
        return fail(LoadStatus::CannotRead, "cannot read " + path + ": " + std::strerror(errno));
    if (!S_ISREG(info.st_mode))
        return fail(LoadStatus::CannotRead, "cannot read " + path + ": it is not a regular file");
    const std::uint64_t size = std::uint64_t(info.st_size);
    if (size > maxSize)
        return fail(LoadStatus::TooLarge, path + " is too large: files of 4 GiB and more cannot be read");

    m_data.reset(new char[size + 1]);
    while (m_size < size) {
        const std::size_t wanted = std::size_t(std::min<std::uint64_t>(size - m_size, progressStep));
        const ssize_t got = ::read(file, m_data.get() + m_size, wanted);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return fail(LoadStatus::CannotRead, "cannot read " + path + ": " + std::strerror(errno));
        if (got == 0)
            break; // somebody cut the file meanwhile; what is missing shows as in any file cut off
        m_size += std::uint32_t(got);
        if (progress && !progress(m_size, size * 2))
            return fail(LoadStatus::Cancelled, "cancelled");
    }
    m_data[m_size] = '\0';
    return true;
}

// ---- Visitor
// ----------------------------------------------------------------------------------------------------------

void Visitor::beginSection(SectionKind, std::string_view) { }

void Visitor::endSection(SectionKind) { }

void Visitor::headerVariable(std::string_view, const RecordView &) { }

// ---- RecordView
// -------------------------------------------------------------------------------------------------------

RecordView::RecordView(const Store &store, const Tag *tags, std::size_t count, std::uint32_t index,
                       LoadResult *diagnostics)
    : m_store(&store), m_tags(tags), m_count(count), m_index(index), m_diagnostics(diagnostics)
{
}

void RecordView::warn(WarningKind kind, const Tag &tag) const
{
    if (m_diagnostics)
        m_diagnostics->count(kind, tag.offset);
}

std::string_view RecordView::type() const
{
    return m_count > 0 && m_tags[0].code == 0 ? trimmed(raw(m_tags[0])) : std::string_view();
}

std::string_view RecordView::raw(const Tag &tag) const
{
    return m_store->buffer().view(tag.offset, tag.length);
}

double RecordView::real(const Tag &tag) const
{
    if (m_store->style().binary && isNumberKind(valueKind(tag.code))) {
        const double value = binaryReal(valueKind(tag.code), raw(tag));
        if (std::isfinite(value))
            return value;
        warn(WarningKind::BadNumber, tag);
        return 0; // what is no number in a text file is none here either
    }
    double value = 0;
    if (!parseReal(raw(tag), value))
        warn(WarningKind::BadNumber, tag);
    return value;
}

std::int64_t RecordView::integer(const Tag &tag) const
{
    if (m_store->style().binary && isNumberKind(valueKind(tag.code)))
        return binaryInteger(valueKind(tag.code), raw(tag));
    std::int64_t value = 0;
    if (!parseInteger(raw(tag), value))
        warn(WarningKind::BadNumber, tag);
    return value;
}

std::uint64_t RecordView::handle(const Tag &tag) const
{
    if (m_store->style().binary && isNumberKind(valueKind(tag.code)))
        return std::uint64_t(binaryInteger(valueKind(tag.code), raw(tag)));
    std::uint64_t value = 0;
    if (!parseHandle(raw(tag), value))
        warn(WarningKind::BadNumber, tag);
    return value;
}

std::string RecordView::text(const Tag &tag) const
{
    if (m_store->style().binary && valueKind(tag.code) != ValueKind::Text)
        return m_store->asciiValue(tag);
    bool bad = false;
    std::string text = m_store->codec().decode(raw(tag), &bad);
    if (bad)
        warn(WarningKind::BadText, tag);
    return text;
}

std::string RecordView::name(const Tag &tag) const
{
    std::string text = this->text(tag);
    const std::string_view inner = trimmed(text);
    return inner.size() == text.size() ? text : std::string(inner);
}

std::string RecordView::chunk(const Tag &tag) const
{
    if (m_store->style().binary && valueKind(tag.code) == ValueKind::Chunk)
        return std::string(raw(tag));
    std::string bytes;
    if (!parseChunk(raw(tag), bytes))
        warn(WarningKind::BadNumber, tag);
    return bytes;
}

// ---- Loader
// -----------------------------------------------------------------------------------------------------------

/*! One load: drives the scanner over the file, cuts the tags into records, and tells the visitor. */
class Loader
{
public:
    Loader(Store &store, Visitor *visitor, const Progress &progress, std::uint64_t progressBase)
        : m_store(store), m_visitor(visitor), m_progress(progress), m_progressBase(progressBase)
    {
    }

    LoadResult run()
    {
        if (recognise()) {
            if (m_store.m_style.binary)
                scan(BinaryScanner(m_store.m_buffer, m_store.m_style));
            else
                scan(AsciiScanner(m_store.m_buffer, m_store.m_style));
        }
        for (Warning &warning : m_result.warnings) {
            if (warning.count > 0)
                warning.firstLine = m_store.lineAt(warning.firstOffset);
        }
        return std::move(m_result);
    }

private:
    bool fail(LoadStatus status, std::string text)
    {
        m_result.status = status;
        m_result.error = std::move(text);
        return false;
    }

    bool recognise()
    {
        const std::string_view bytes = m_store.m_buffer.view();
        if (isFiller(bytes.substr(0, 4096)) && isFiller(bytes))
            return fail(LoadStatus::Empty, "the file is empty");
        if (isDwg(bytes))
            return fail(LoadStatus::IsDwg,
                        "the file is a DWG drawing (" + std::string(bytes.substr(0, 6)) + "), not a DXF file");
        m_store.m_style = detectStyle(m_store.m_buffer);
        return true;
    }

    template <class Scanner> void scan(Scanner scanner)
    {
        const std::uint64_t size = m_store.m_buffer.size();
        std::uint64_t nextProgress = progressStep;
        ScannedTag scanned;
        while (scanner.next(scanned, &m_result)) {
            if (scanned.start >= nextProgress) {
                nextProgress = scanned.start + progressStep;
                if (!reportProgress(scanned.start))
                    return;
            }
            if (scanned.tag.code == 0) {
                finishRecord(scanned.start);
                m_recordStart = scanned.start;
                m_isInRecord = true;
                m_tags.clear();
                if (trimmed(m_store.m_buffer.view(scanned.tag.offset, scanned.tag.length)) == "EOF") {
                    finishFile(scanner.position());
                    return;
                }
            }
            if (m_isInRecord)
                m_tags.push_back(scanned.tag);
        }
        finishCutOff(std::uint32_t(size));
    }

    bool reportProgress(std::uint64_t done)
    {
        const std::uint64_t size = m_store.m_buffer.size();
        if (!m_progress || m_progress(m_progressBase + done, m_progressBase + size))
            return true;
        return fail(LoadStatus::Cancelled, "cancelled");
    }

    bool hasSections()
    {
        if (!m_store.m_sections.empty())
            return true;
        std::string text = "the file is not a DXF file: no section begins in it";
        const Warning &outOfStep = m_result.warning(WarningKind::OutOfStep);
        if (outOfStep.count > 0 && !m_store.m_style.binary)
            text += ", and line " + std::to_string(m_store.lineAt(outOfStep.firstOffset)) + " is no group code";
        return fail(LoadStatus::NotDxf, std::move(text));
    }

    /*! Takes the `0 EOF` record, which is open, and all that stands behind it. */
    void finishFile(std::uint32_t end)
    {
        const std::uint32_t size = m_store.m_buffer.size();
        if (!hasSections())
            return;
        m_store.m_records.push_back({m_recordStart, size - m_recordStart});
        m_store.m_wholeRecords = std::uint32_t(m_store.m_records.size());
        closeSection(m_recordStart);
        if (!isFiller(m_store.m_buffer.view(end, size - end)))
            m_result.count(WarningKind::AfterEndOfFile, end);
        reportProgress(size);
    }

    /*! Ends a file that has no end mark. */
    void finishCutOff(std::uint32_t end)
    {
        // Only the end of a section can be trusted to be whole; whatever else stands last may go on in what is missing.
        m_isLast = true;
        finishRecord(end);
        if (!hasSections())
            return;
        const bool endsWhole = !m_isInSection && m_store.m_sections.back().last == m_store.m_records.size();
        m_store.m_wholeRecords = std::uint32_t(m_store.m_records.size()) - (endsWhole ? 0 : 1);
        closeSection(end);
        m_result.count(WarningKind::MissingEndOfFile, end);
        reportProgress(end);
    }

    void finishRecord(std::uint32_t end)
    {
        if (!m_isInRecord)
            return;
        m_isInRecord = false;
        const std::uint32_t index = std::uint32_t(m_store.m_records.size());
        m_store.m_records.push_back({m_recordStart, end - m_recordStart});
        const std::string_view type = trimmed(m_store.m_buffer.view(m_tags[0].offset, m_tags[0].length));
        if (type == "SECTION")
            return openSection(index);
        if (type == "ENDSEC")
            return endSection(index);
        if (!m_isInSection) {
            m_result.count(WarningKind::OutsideSection, m_recordStart);
            return;
        }
        m_store.m_sections.back().last = index + 1;
        if (m_isLast) {
            m_result.count(WarningKind::TruncatedRecord, m_recordStart);
            return;
        }
        if (m_visitor)
            m_visitor->record(m_store.m_sections.back().kind,
                              RecordView(m_store, m_tags.data(), m_tags.size(), index, &m_result));
    }

    void openSection(std::uint32_t index)
    {
        closeSection(m_recordStart);
        m_isInSection = true;
        Section section;
        section.first = index;
        section.last = index + 1;
        std::size_t nameTag = 1;
        while (nameTag < m_tags.size() && m_tags[nameTag].code != 2)
            ++nameTag;
        if (nameTag < m_tags.size())
            section.name = trimmed(m_store.m_buffer.view(m_tags[nameTag].offset, m_tags[nameTag].length));
        section.kind = sectionKind(section.name);
        if (section.kind == SectionKind::Other)
            m_result.count(WarningKind::UnknownSection, m_recordStart);
        if (m_isLast)
            m_result.count(WarningKind::TruncatedRecord, m_recordStart);
        const SectionKind kind = section.kind;
        m_store.m_sections.push_back(std::move(section));

        const std::size_t firstVariable = m_store.m_headerVariables.size();
        if (kind == SectionKind::Header)
            readHeader(nameTag + 1);
        // Once more only for the first HEADER, should it not be the first section: choosing may look at the whole file.
        const bool isFirstHeader = kind == SectionKind::Header && !std::exchange(m_hasHeader, true);
        if (isFirstHeader || m_store.m_sections.size() == 1)
            chooseCodec();
        if (!m_visitor)
            return;
        m_visitor->beginSection(kind, m_store.m_sections.back().name);
        std::size_t whole = m_store.m_headerVariables.size();
        if (m_isLast && whole > firstVariable)
            --whole; // may lack a part
        for (std::size_t i = firstVariable; i < whole; ++i) {
            const HeaderVariable &variable = m_store.m_headerVariables[i];
            m_visitor->headerVariable(variable.name,
                                      RecordView(m_store, m_store.m_headerTags.data() + variable.firstTag,
                                                 variable.tagCount, index, &m_result));
        }
    }

    void readHeader(std::size_t firstTag)
    {
        std::vector<HeaderVariable> &variables = m_store.m_headerVariables;
        const std::size_t before = variables.size();
        const Record &record = m_store.m_records.back();
        for (std::size_t i = firstTag; i < m_tags.size(); ++i) {
            const Tag &tag = m_tags[i];
            const std::string_view value = m_store.m_buffer.view(tag.offset, tag.length);
            if (tag.code == 9) {
                const std::uint32_t start = tagStart(m_store.m_buffer, m_store.m_style, tag);
                if (variables.size() > before)
                    variables.back().length = start - variables.back().offset;
                variables.push_back({trimmed(value), start, record.offset + record.length - start,
                                     std::uint32_t(m_store.m_headerTags.size()), 0});
            } else if (tag.code == 999) {
                continue;
            } else if (variables.size() > before) {
                m_store.m_headerTags.push_back(tag);
                ++variables.back().tagCount;
            } else {
                m_result.count(WarningKind::BadHeader, tag.offset);
            }
        }
    }

    void chooseCodec()
    {
        m_store.m_version = headerText("$ACADVER");
        const std::string codePage = headerText("$DWGCODEPAGE");
        TextCodec codec(m_store.m_version, codePage);
        if (!codec.isUtf8() && looksLikeUtf8(textBytes(), codePage))
            codec = TextCodec(m_store.m_version, codePage, true);
        m_store.m_codec = std::move(codec);
    }

    /*! The bytes that tell an encoding. Binary files hold numbers between the texts, which say nothing. */
    std::string_view textBytes() const { return m_store.m_style.binary ? std::string_view() : m_store.m_buffer.view(); }

    std::string headerText(std::string_view name) const
    {
        const HeaderVariable *variable = m_store.headerVariable(name);
        if (!variable || variable->tagCount == 0)
            return {};
        const Tag &tag = m_store.m_headerTags[variable->firstTag];
        return std::string(trimmed(m_store.m_buffer.view(tag.offset, tag.length)));
    }

    void endSection(std::uint32_t index)
    {
        if (!m_isInSection) {
            m_result.count(WarningKind::OutsideSection, m_recordStart);
            return;
        }
        m_store.m_sections.back().closed = true;
        m_store.m_sections.back().last = index + 1;
        closeSection(m_recordStart);
    }

    /*! Leaves the section that is open, if any. */
    void closeSection(std::uint32_t at)
    {
        if (!m_isInSection)
            return;
        m_isInSection = false;
        const Section &section = m_store.m_sections.back();
        if (!section.closed)
            m_result.count(WarningKind::MissingEndOfSection, at);
        if (m_visitor)
            m_visitor->endSection(section.kind);
    }

    Store &m_store;
    Visitor *m_visitor;
    const Progress &m_progress;
    std::uint64_t m_progressBase;
    LoadResult m_result;
    std::vector<Tag> m_tags; //!< of the record being read
    std::uint32_t m_recordStart = 0;
    bool m_isInRecord = false;
    bool m_isInSection = false;
    bool m_isLast = false; //!< the record being finished is the last one of a file that is cut off
    bool m_hasHeader = false;
};

// ---- Store
// ------------------------------------------------------------------------------------------------------------

Store::Store() = default;
Store::Store(Store &&) noexcept = default;
Store &Store::operator=(Store &&) noexcept = default;
Store::~Store() = default;

LoadResult Store::load(const std::string &path, Visitor *visitor, const Progress &progress)
{
    *this = Store();
    LoadResult result;
    Buffer buffer;
    if (!buffer.read(path, result, progress))
        return result;
    const std::uint64_t base = buffer.size();
    return load(std::move(buffer), visitor, progress, base);
}

LoadResult Store::load(Buffer buffer, Visitor *visitor, const Progress &progress)
{
    return load(std::move(buffer), visitor, progress, 0);
}

LoadResult Store::load(Buffer buffer, Visitor *visitor, const Progress &progress, std::uint64_t progressBase)
{
    *this = Store();
    m_buffer = std::move(buffer);
    LoadResult result = Loader(*this, visitor, progress, progressBase).run();
    if (!result)
        *this = Store();
    return result;
}

std::uint32_t Store::preambleLength() const
{
    return m_records.empty() ? m_buffer.size() : m_records.front().offset;
}

const Section *Store::section(SectionKind kind) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [kind](const Section &section) { return section.kind == kind; });
    return found == m_sections.end() ? nullptr : &*found;
}

const HeaderVariable *Store::headerVariable(std::string_view name) const
{
    const auto found = std::find_if(m_headerVariables.rbegin(), m_headerVariables.rend(),
                                    [name](const HeaderVariable &variable) { return variable.name == name; });
    return found == m_headerVariables.rend() ? nullptr : &*found;
}

RecordView Store::headerValues(const HeaderVariable &variable) const
{
    const Section *const header = section(SectionKind::Header);
    return RecordView(*this, m_headerTags.data() + variable.firstTag, variable.tagCount, header ? header->first : 0);
}

void Store::tags(std::uint32_t record, std::vector<Tag> &tags) const
{
    const Record &range = m_records[record];
    readTags(m_buffer, m_style, range.offset, range.offset + range.length, tags);
    // Behind the end mark stands nothing of the drawing.
    if (record + 1 == m_records.size() && type(record) == "EOF")
        tags.resize(1);
}

RecordView Store::view(std::uint32_t record, std::vector<Tag> &tags) const
{
    this->tags(record, tags);
    return RecordView(*this, tags.data(), tags.size(), record);
}

std::string_view Store::type(std::uint32_t record) const
{
    const Tag tag = readTag(m_buffer, m_style, m_records[record].offset);
    return trimmed(m_buffer.view(tag.offset, tag.length));
}

std::string Store::asciiValue(const Tag &tag) const
{
    const std::string_view bytes = m_buffer.view(tag.offset, tag.length);
    if (!m_style.binary)
        return std::string(bytes);
    const ValueKind kind = valueKind(tag.code);
    switch (kind) {
    case ValueKind::Text:
    case ValueKind::Handle: {
        // Words are read without the ends of lines around them, which would be others' letters as "^M".
        std::string_view text = bytes;
        while (!text.empty() && text.front() == '\r')
            text.remove_prefix(1);
        while (!text.empty() && text.back() == '\r')
            text.remove_suffix(1);
        return oneLine(text);
    }
    case ValueKind::Chunk:
        return formatChunk(bytes);
    case ValueKind::Real:
        return formatReal(binaryReal(kind, bytes));
    default:
        return formatInteger(binaryInteger(kind, bytes));
    }
}

OwnedTag Store::owned(const Tag &tag) const
{
    return {tag.code, asciiValue(tag), tag.offset};
}

std::uint64_t Store::lineAt(std::uint64_t offset) const
{
    if (m_style.binary)
        return 0;
    const char lineEnd = m_style.lineEnd == LineEnd::Cr ? '\r' : '\n';
    const std::string_view before = m_buffer.view().substr(0, std::size_t(offset));
    return 1 + std::uint64_t(std::count(before.begin(), before.end(), lineEnd));
}

} // namespace zvdxf
