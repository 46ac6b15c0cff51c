// SPDX-License-Identifier: MIT
#include "dxf_writer.h"

#include "dxf_edit.h"
#include "dxf_number.h"
#include "dxf_scanner.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace zvdxf {

namespace {

constexpr std::size_t blockSize = std::size_t(256) * 1024;
constexpr std::size_t longestChunk = 254; //!< bytes in one binary tag; its length is one byte

template <class Number> std::string_view bytesOf(const Number &number)
{
    return {reinterpret_cast<const char *>(&number), sizeof number};
}

bool isSameStyle(const FileStyle &a, const FileStyle &b)
{
    if (a.binary != b.binary)
        return false;
    return a.binary ? a.wideCodes == b.wideCodes : a.lineEnd == b.lineEnd && a.codeWidth == b.codeWidth;
}

std::string_view lineEndText(LineEnd lineEnd)
{
    switch (lineEnd) {
    case LineEnd::CrLf:
        return "\r\n";
    case LineEnd::Cr:
        return "\r";
    case LineEnd::Lf:
        break;
    }
    return "\n";
}

} // namespace

// ---- MemoryOutput
// -----------------------------------------------------------------------------------------------------

bool MemoryOutput::write(std::string_view bytes)
{
    m_bytes += bytes;
    return true;
}

// ---- Writer
// -----------------------------------------------------------------------------------------------------------

struct Writer::Private
{
    struct HeaderEdit
    {
        std::string name;
        std::vector<OwnedTag> values;
        bool isRemoval = false;
        bool isDone = false;
    };

    Private(const Store *sourceStore, Output &target, const FileStyle &fileStyle)
        : source(sourceStore), output(target), style(fileStyle), lineEnd(lineEndText(fileStyle.lineEnd)),
          copiesBytes(source && isSameStyle(source->style(), fileStyle)), total(source ? source->buffer().size() : 0)
    {
    }

    bool fail(std::string text)
    {
        if (error.empty())
            error = std::move(text);
        return false;
    }

    /*! Hands bytes on, small ones gathered. */
    bool put(std::string_view bytes)
    {
        if (!error.empty())
            return false;
        if (bytes.empty())
            return true;
        lastByte = bytes.back();
        while (!bytes.empty()) {
            // Whole blocks go out as they are, in steps small enough to be cancelled between.
            const bool isDirect = pending.empty() && bytes.size() >= blockSize;
            const std::string_view piece = bytes.substr(0, isDirect ? std::size_t(progressStep) : blockSize);
            if (isDirect ? !send(piece) : !gather(piece))
                return false;
            bytes.remove_prefix(piece.size());
        }
        return true;
    }

    bool gather(std::string_view bytes)
    {
        pending += bytes;
        return pending.size() < blockSize || flush();
    }

    bool flush()
    {
        const bool sent = pending.empty() || send(pending);
        pending.clear();
        return sent;
    }

    bool send(std::string_view bytes)
    {
        if (!output.write(bytes))
            return fail(output.error().empty() ? "cannot write" : output.error());
        written += bytes.size();
        if (written >= nextProgress) {
            nextProgress = written + progressStep;
            return report();
        }
        return true;
    }

    bool report()
    {
        if (!progress || progress(written, std::max(total, written)))
            return true;
        cancelled = true;
        return fail("cancelled");
    }

    /*! Before anything is put behind copied bytes, which may lack their last line end. */
    bool endLine()
    {
        const bool isOpen = !style.binary && isStarted && lastByte != lineEnd.back() && hasTags;
        return !isOpen || put(lineEnd);
    }

    bool start()
    {
        if (isStarted)
            return error.empty();
        isStarted = true;
        return !style.binary || put(binarySentinel());
    }

    bool putTag(int code, std::string_view value)
    {
        if (!start() || !endLine())
            return false;
        hasTags = true;
        if (code == 0)
            noteRecord(trimmed(value));
        return style.binary ? putBinary(code, value) : putAscii(code, value);
    }

    void noteRecord(std::string_view type)
    {
        isInSection = type == "SECTION" || (isInSection && type != "ENDSEC");
        isEnded = type == "EOF";
    }

    bool putAscii(int code, std::string_view value)
    {
        if (!error.empty())
            return false;
        char digits[12];
        const char *const end = std::to_chars(digits, digits + sizeof digits, code).ptr;
        const std::size_t length = std::size_t(end - digits);
        const std::size_t width = std::size_t(std::max(style.codeWidth, 0));
        pending.append(width > length ? width - length : 0, ' ');
        pending.append(digits, length);
        pending += lineEnd;
        // One value is one line, whatever it was given.
        if (value.find_first_of("\r\n") == std::string_view::npos)
            pending += value;
        else
            pending += oneLine(value);
        pending += lineEnd;
        lastByte = lineEnd.back();
        return pending.size() < blockSize || flush();
    }

    bool putBinaryCode(int code)
    {
        if (!style.wideCodes && code >= 0 && code < 255) {
            const char byte = char(code);
            return put(bytesOf(byte));
        }
        const std::int16_t wide = std::int16_t(code);
        return (style.wideCodes || put("\xFF")) && put(bytesOf(wide));
    }

    template <class Number> bool putBinaryInteger(std::string_view value)
    {
        std::int64_t parsed = 0;
        parseInteger(value, parsed);
        const Number number = Number(parsed); // keeps the bits of unsigned values
        return put(bytesOf(number));
    }

    bool putBinary(int code, std::string_view value)
    {
        const ValueKind kind = valueKind(code);
        if (kind == ValueKind::Chunk)
            return putBinaryChunk(code, value);
        if (!putBinaryCode(code))
            return false;
        switch (kind) {
        case ValueKind::Real: {
            double number = 0;
            parseReal(value, number);
            return put(bytesOf(number));
        }
        case ValueKind::Int16:
            return putBinaryInteger<std::int16_t>(value);
        case ValueKind::Int32:
            return putBinaryInteger<std::int32_t>(value);
        case ValueKind::Int64:
            return putBinaryInteger<std::int64_t>(value);
        case ValueKind::Byte:
            return putBinaryInteger<std::uint8_t>(value);
        default:
            break;
        }
        return put(value.substr(0, value.find('\0'))) && put(std::string_view("\0", 1));
    }

    bool putBinaryChunk(int code, std::string_view value)
    {
        std::string bytes;
        parseChunk(value, bytes);
        std::string_view rest = bytes;
        do {
            const std::string_view piece = rest.substr(0, longestChunk);
            const char length = char(piece.size());
            if (!putBinaryCode(code) || !put(bytesOf(length)) || !put(piece))
                return false;
            rest.remove_prefix(piece.size());
        } while (!rest.empty());
        return true;
    }

    bool copy(std::uint32_t offset, std::uint32_t length)
    {
        if (length == 0)
            return error.empty();
        if (!start() || !endLine())
            return false;
        hasTags = true;
        return put(source->buffer().view(offset, length));
    }

    /*! The tag with its code line and line end as in the source. */
    bool copyTag(int code, std::uint32_t offset)
    {
        const Tag known{offset, 0, std::int16_t(code)};
        const std::uint32_t first = tagStart(source->buffer(), source->style(), known);
        return copy(first, tagEnd(source->buffer(), source->style(), first) - first);
    }

    bool putOwned(const OwnedTag &tag)
    {
        if (!copiesBytes || tag.source == OwnedTag::noSource)
            return putTag(tag.code, tag.value);
        if (tag.code == 0)
            noteRecord(trimmed(tag.value));
        return copyTag(tag.code, tag.source);
    }

    /*! Source bytes [first, last), which hold whole tags. */
    bool keepBytes(std::uint32_t first, std::uint32_t last)
    {
        if (copiesBytes)
            return copy(first, last - first);
        readTags(source->buffer(), source->style(), first, last, tags);
        return putTags(tags);
    }

    bool putTags(const std::vector<Tag> &sourceTags)
    {
        return std::all_of(sourceTags.begin(), sourceTags.end(),
                           [this](const Tag &tag) { return putTag(tag.code, source->asciiValue(tag)); });
    }

    bool keepRecords(std::uint32_t first, std::uint32_t count)
    {
        if (count == 0)
            return error.empty();
        const std::vector<Record> &records = source->records();
        if (copiesBytes) {
            noteKept(first, count);
            const Record &last = records[first + count - 1];
            return copy(records[first].offset, last.offset + last.length - records[first].offset);
        }
        for (std::uint32_t i = first; i < first + count; ++i) {
            source->tags(i, tags);
            if (!putTags(tags))
                return false;
        }
        return error.empty();
    }

    /*! Within the range only its last SECTION or ENDSEC matters, and these are few. */
    void noteKept(std::uint32_t first, std::uint32_t count)
    {
        for (const Section &section : source->sections()) {
            if (section.first >= first && section.first < first + count)
                isInSection = true;
            if (section.closed && section.last - 1 >= first && section.last - 1 < first + count)
                isInSection = false;
        }
        isEnded = source->type(first + count - 1) == "EOF";
    }

    bool end()
    {
        if (isInSection && !putTag(0, "ENDSEC"))
            return false;
        return isEnded ? error.empty() : putTag(0, "EOF");
    }

    HeaderEdit *headerEdit(std::string_view name)
    {
        const auto found = std::find_if(headerEdits.begin(), headerEdits.end(),
                                        [name](const HeaderEdit &edit) { return edit.name == name; });
        return found == headerEdits.end() ? nullptr : &*found;
    }

    HeaderEdit &addHeaderEdit(std::string_view name)
    {
        if (HeaderEdit *const edit = headerEdit(name))
            return *edit;
        headerEdits.push_back({std::string(name), {}});
        return headerEdits.back();
    }

    bool putVariable(const HeaderVariable &variable)
    {
        HeaderEdit *const edit = headerEdit(variable.name);
        if (!edit)
            return keepBytes(variable.offset, variable.offset + variable.length);
        edit->isDone = true;
        if (edit->isRemoval)
            return error.empty();
        RecordEdit values(*source, variable);
        values.replace({0, values.tags().size()}, edit->values);
        if (!values.isChanged())
            return keepBytes(variable.offset, variable.offset + variable.length);
        return keepBytes(variable.offset, nameEnd(variable)) && putAll(values.tags());
    }

    /*! One past the `9` tag of a variable. */
    std::uint32_t nameEnd(const HeaderVariable &variable) const
    {
        const std::uint32_t end = variable.offset + variable.length;
        return variable.tagCount == 0
            ? end
            : tagStart(source->buffer(), source->style(), source->headerTags()[variable.firstTag]);
    }

    bool putAll(const std::vector<OwnedTag> &owned)
    {
        return std::all_of(owned.begin(), owned.end(), [this](const OwnedTag &tag) { return putOwned(tag); });
    }

    bool putNewVariables()
    {
        for (HeaderEdit &edit : headerEdits) {
            if (edit.isDone || edit.isRemoval)
                continue;
            edit.isDone = true;
            if (!putTag(9, edit.name) || !putAll(edit.values))
                return false;
        }
        return error.empty();
    }

    bool putHeaderSection(const Section &section)
    {
        isInSection = true;
        const Record &record = source->records()[section.first];
        const std::uint32_t recordEnd = record.offset + record.length;
        std::uint32_t position = record.offset;
        for (const HeaderVariable &variable : source->headerVariables()) {
            if (variable.offset < record.offset || variable.offset >= recordEnd)
                continue;
            if (!keepBytes(position, variable.offset) || !putVariable(variable))
                return false;
            position = variable.offset + variable.length;
        }
        return keepBytes(position, recordEnd) && putNewVariables();
    }

    bool putNewHeader()
    {
        const bool hasNew = std::any_of(headerEdits.begin(), headerEdits.end(),
                                        [](const HeaderEdit &edit) { return !edit.isDone && !edit.isRemoval; });
        if (!hasNew)
            return error.empty();
        return putTag(0, "SECTION") && putTag(2, "HEADER") && putNewVariables() && putTag(0, "ENDSEC");
    }

    bool keep(std::uint32_t first, std::uint32_t count)
    {
        if (count == 0)
            return error.empty();
        const Section *const header = source->section(SectionKind::Header);
        const std::uint32_t special = header ? header->first : source->sections().front().first;
        if (headerEdits.empty() || special < first || special >= first + count)
            return keepRecords(first, count);
        const std::uint32_t before = special - first;
        if (!keepRecords(first, before))
            return false;
        if (header)
            return putHeaderSection(*header) && keepRecords(special + 1, count - before - 1);
        return putNewHeader() && keepRecords(special, count - before);
    }

    const Store *source;
    Output &output;
    FileStyle style;
    std::string_view lineEnd;
    bool copiesBytes; //!< what is kept is copied rather than written anew
    std::vector<HeaderEdit> headerEdits;
    std::vector<Tag> tags; //!< scratch
    std::string pending;
    std::string error;
    Progress progress;
    std::uint64_t total;
    std::uint64_t written = 0;
    std::uint64_t nextProgress = progressStep;
    char lastByte = '\n';
    bool isStarted = false;
    bool hasTags = false;
    bool isInSection = false;
    bool isEnded = false;
    bool cancelled = false;
};

Writer::Writer(const Store &source, Output &output) : Writer(source, output, source.style()) { }

Writer::Writer(const Store &source, Output &output, const FileStyle &style)
    : d(std::make_unique<Private>(&source, output, style))
{
}

Writer::Writer(Output &output, const FileStyle &style) : d(std::make_unique<Private>(nullptr, output, style)) { }

Writer::~Writer() = default;

void Writer::setProgress(Progress progress, std::uint64_t total)
{
    d->progress = std::move(progress);
    d->total = std::max(d->total, total);
}

void Writer::setHeaderVariable(std::string_view name, std::vector<OwnedTag> values)
{
    Private::HeaderEdit &edit = d->addHeaderEdit(name);
    edit.values = std::move(values);
    edit.isRemoval = false;
}

void Writer::removeHeaderVariable(std::string_view name)
{
    d->addHeaderEdit(name).isRemoval = true;
}

bool Writer::keepPreamble()
{
    const std::uint32_t length = d->source->preambleLength();
    if (!d->copiesBytes)
        return d->keepBytes(0, length);
    d->isStarted = true; // the sentinel is part of it
    return d->put(d->source->buffer().view(0, length));
}

bool Writer::keep(std::uint32_t firstRecord, std::uint32_t count)
{
    return d->keep(firstRecord, count);
}

bool Writer::keepAll()
{
    return keepPreamble() && keep(0, std::uint32_t(d->source->records().size()));
}

bool Writer::record(const std::vector<OwnedTag> &tags)
{
    return d->putAll(tags);
}

bool Writer::tag(int code, std::string_view value)
{
    return d->putTag(code, value);
}

bool Writer::end()
{
    return d->end();
}

bool Writer::finish()
{
    return d->error.empty() && d->flush() && d->report();
}

bool Writer::isCancelled() const
{
    return d->cancelled;
}

const std::string &Writer::error() const
{
    return d->error;
}

} // namespace zvdxf
