// SPDX-License-Identifier: MIT
#include "db/zvdblinetypes.h"
#include "db/zvdbsymboltable.h"
#include "dxf_store.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace {

typedef ZvDbLinetypeDefinition::Element Element;

constexpr double kPi = 3.14159265358979323846;
constexpr std::size_t kMostBytes = std::size_t(16) << 20; // a file of patterns has some thousand

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

void appendUtf8(std::string &to, char32_t c)
{
    if (c < 0x80) {
        to += char(c);
        return;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    to += char(kLead[more] | (c >> (6 * more)));
    for (int i = more - 1; i >= 0; --i)
        to += char(0x80 | ((c >> (6 * i)) & 0x3F));
}

std::string utf16ToUtf8(std::string_view bytes, bool bigEndian)
{
    const auto unit = [&](std::size_t i) {
        const auto first = std::uint8_t(bytes[i]);
        const auto second = std::uint8_t(bytes[i + 1]);
        return char32_t(bigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unit(i);
        if (c >= 0xD800 && c < 0xDC00 && i + 3 < bytes.size() && unit(i + 2) >= 0xDC00 && unit(i + 2) < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
            i += 2;
        } else if (c >= 0xD800 && c < 0xE000) {
            c = 0xFFFD;
        }
        appendUtf8(text, c);
    }
    return text;
}

bool isUtf8(std::string_view bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto c = std::uint8_t(bytes[i]);
        const std::size_t more = c < 0x80 ? 0
            : c >= 0xC2 && c < 0xE0       ? 1
            : (c & 0xF0) == 0xE0          ? 2
            : c >= 0xF0 && c < 0xF5       ? 3
                                          : 4;
        if (more == 4 || i + more >= bytes.size())
            return false;
        for (std::size_t k = 1; k <= more; ++k) {
            if ((std::uint8_t(bytes[i + k]) & 0xC0) != 0x80)
                return false;
        }
        i += more;
    }
    return true;
}

std::string toUtf8(std::string_view bytes, const ZvString &codePage)
{
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF")
        return std::string(bytes.substr(3));
    if (bytes.substr(0, 2) == "\xFF\xFE")
        return utf16ToUtf8(bytes.substr(2), false);
    if (bytes.substr(0, 2) == "\xFE\xFF")
        return utf16ToUtf8(bytes.substr(2), true);
    if (isUtf8(bytes))
        return std::string(bytes);
    // Line by line: the codec takes what ends a line for a value of its own.
    const zvdxf::TextCodec codec("AC1015", codePage.toStdString());
    std::string text;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        text += codec.decode(bytes.substr(0, end));
        text += '\n';
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return text;
}

/// A whole number text, with a point for the fraction. False for anything else.
bool readNumber(std::string_view text, double &value)
{
    text = trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && std::isfinite(value);
}

/// What stands between the commas of a pattern, with brackets and quotes kept whole.
class PatternReader
{
public:
    explicit PatternReader(std::string_view text) : m_text(text) { }

    bool atEnd() const { return trimmed(m_text).empty() || trimmed(m_text).front() == ';'; }
    /// False: \a why tells what was opened and not closed.
    bool next(std::string_view &field, std::string &why)
    {
        bool isInText = false;
        int depth = 0;
        std::size_t i = 0;
        for (; i < m_text.size(); ++i) {
            const char c = m_text[i];
            if (c == '"')
                isInText = !isInText;
            else if (!isInText && c == '[')
                ++depth;
            else if (!isInText && c == ']')
                --depth;
            else if (!isInText && depth == 0 && (c == ',' || c == ';'))
                break;
        }
        if (isInText || depth != 0) {
            why = isInText  ? "a text has no closing quote"
                : depth > 0 ? "a \"[\" has no \"]\""
                            : "a \"]\" has no \"[\"";
            return false;
        }
        field = trimmed(m_text.substr(0, i));
        m_text.remove_prefix(i < m_text.size() && m_text[i] == ',' ? i + 1 : i);
        return true;
    }

private:
    std::string_view m_text;
};

bool readAngle(std::string_view text, double &radians)
{
    double unit = kPi / 180.0;
    if (!text.empty()) {
        const char last = text.back();
        if (last == 'r' || last == 'R')
            unit = 1.0;
        else if (last == 'g' || last == 'G')
            unit = kPi / 200.0;
        if (last == 'r' || last == 'R' || last == 'g' || last == 'G' || last == 'd' || last == 'D')
            text.remove_suffix(1);
    }
    if (!readNumber(text, radians))
        return false;
    radians *= unit;
    return true;
}

/// One "S=2.5" of a bracket.
bool readOption(std::string_view field, Element &element, std::string &why)
{
    const std::size_t sign = field.find('=');
    const std::string_view key = trimmed(field.substr(0, sign));
    const std::string_view value
        = sign == std::string_view::npos ? std::string_view() : trimmed(field.substr(sign + 1));
    const char letter = key.size() == 1 ? char(key[0] & ~0x20) : '\0';
    bool isRead = false;
    switch (letter) {
    case 'S':
        isRead = readNumber(value, element.scale) && element.scale != 0.0;
        break;
    case 'R':
    case 'U':
    case 'A':
        isRead = readAngle(value, element.rotation);
        element.isAbsolute = letter == 'A';
        break;
    case 'X':
        isRead = readNumber(value, element.offsetX);
        break;
    case 'Y':
        isRead = readNumber(value, element.offsetY);
        break;
    default:
        why = quoted(field) + " is none of S=, R=, A=, U=, X=, Y=";
        return false;
    }
    if (!isRead)
        why = "there is no usable number in " + quoted(field);
    return isRead;
}

/// What stands in brackets, without them.
bool readInset(std::string_view inside, Element &element, std::string &why)
{
    PatternReader fields(inside);
    std::string_view content;
    std::string_view style;
    if (!fields.next(content, why) || !fields.next(style, why))
        return false;
    element.kind = Element::kShape;
    if (content.size() >= 2 && content.front() == '"') {
        element.kind = Element::kText;
        content = content.substr(1, content.size() - 2);
    }
    if (content.empty() || style.empty()) {
        why = "in [" + std::string(inside) + "] the text or shape, or its style, is missing";
        return false;
    }
    element.content = ZvString(content);
    element.style = ZvString(style);
    while (!fields.atEnd()) {
        std::string_view option;
        if (!fields.next(option, why) || !readOption(option, element, why))
            return false;
    }
    return true;
}

bool readElements(std::string_view pattern, std::vector<Element> &elements, std::string &why)
{
    PatternReader fields(pattern);
    std::string_view field;
    if (!fields.next(field, why))
        return false;
    if (field.size() != 1 || (field[0] != 'A' && field[0] != 'a')) {
        why = "the alignment is " + quoted(field) + " and not \"A\"";
        return false;
    }
    bool mayHoldInset = false; // behind a length
    while (!fields.atEnd()) {
        if (!fields.next(field, why))
            return false;
        if (!field.empty() && field.front() == '[') {
            if (!mayHoldInset || field.back() != ']') {
                why = field.back() != ']' ? "there is something behind a \"]\""
                                          : "there is no length before " + std::string(field);
                return false;
            }
            mayHoldInset = false;
            if (!readInset(field.substr(1, field.size() - 2), elements.back(), why))
                return false;
            continue;
        }
        Element element;
        if (!readNumber(field, element.length)) {
            why = quoted(field) + " is not a number";
            return false;
        }
        elements.push_back(element);
        mayHoldInset = true;
    }
    double total = 0.0;
    for (const Element &element : elements)
        total += std::fabs(element.length);
    if (total > 0.0 && std::isfinite(total))
        return true;
    why = "the pattern has no length";
    return false;
}

} // namespace

bool ZvDbLinetypeFile::parsePattern(const ZvString &pattern, std::vector<Element> &elements, ZvString &why)
{
    std::vector<Element> read;
    std::string reason;
    if (!readElements(pattern.toStdString(), read, reason)) {
        why = ZvString(std::string_view(reason));
        return false;
    }
    elements = std::move(read);
    return true;
}

Zv::ErrorStatus ZvDbLinetypeFile::read(const ZvString &path, const ZvString &codePage)
{
    m_definitions.clear();
    m_problems.clear();
    zvdxf::Buffer buffer;
    zvdxf::LoadResult result;
    const bool isRead = buffer.read(path.toStdString(), result);
    if (isRead && buffer.size() <= kMostBytes)
        return parse(buffer.view(), codePage);
    const std::string reason = isRead ? path.toStdString() + " is too large for a file of line types" : result.error;
    m_problems.push_back({0, ZvString(std::string_view(reason))});
    return Zv::eFileAccess;
}

Zv::ErrorStatus ZvDbLinetypeFile::read(const ZvString &path, const ZvDbDatabase &database)
{
    ZvResBuf *codePage = zvutNewRb(ZvRes::kNone);
    database.getVariable(L"DWGCODEPAGE", *codePage);
    const Zv::ErrorStatus status = read(path, codePage->text());
    zvutRelRb(codePage);
    return status;
}

Zv::ErrorStatus ZvDbLinetypeFile::parse(std::string_view bytes, const ZvString &codePage)
{
    m_definitions.clear();
    m_problems.clear();
    const auto complain = [this](int line, const std::string &text) {
        m_problems.push_back({line, ZvString(std::string_view(text))});
    };
    const std::string text = toUtf8(bytes, codePage);
    std::string_view rest = text;
    ZvDbLinetypeDefinition pending;
    bool isPending = false; // a name waits for its pattern
    const auto missPattern = [&] {
        if (isPending)
            complain(pending.line, quoted(pending.name.toStdString()) + " has no pattern");
        isPending = false;
    };
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = rest.find_first_of("\r\n");
        const std::string_view line = trimmed(rest.substr(0, end));
        const bool isPair = end != std::string_view::npos && rest.substr(end, 2) == "\r\n";
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + (isPair ? 2 : 1));
        if (line.empty() || line.front() == ';')
            continue;
        if (line.front() == '*') {
            missPattern();
            const std::size_t comma = line.find(',');
            pending = ZvDbLinetypeDefinition();
            pending.line = number;
            pending.name = ZvString(trimmed(line.substr(1, comma == std::string_view::npos ? comma : comma - 1)));
            if (comma != std::string_view::npos)
                pending.comments = ZvString(trimmed(line.substr(comma + 1)));
            isPending = true;
            continue;
        }
        if (!isPending) {
            complain(number, "there is no name before " + quoted(line));
            continue;
        }
        isPending = false;
        const std::string name = quoted(pending.name.toStdString());
        std::string why;
        if (!ZvDbSymbolTableRecord::isValidName(pending.name))
            complain(pending.line, name + " is not a valid name");
        else if (find(pending.name))
            complain(pending.line, name + " is there already; the first one counts");
        else if (!readElements(line, pending.elements, why))
            complain(number, name + ": " + why);
        else
            m_definitions.push_back(pending);
    }
    missPattern();
    if (!m_definitions.empty())
        return Zv::eOk;
    if (m_problems.empty())
        complain(1, "there is no line type in the file");
    return Zv::eFileDamaged;
}

const ZvDbLinetypeDefinition *ZvDbLinetypeFile::find(const ZvString &name) const
{
    for (const ZvDbLinetypeDefinition &definition : m_definitions) {
        if (definition.name.compareNoCase(name) == 0)
            return &definition;
    }
    return nullptr;
}

ZvString ZvDbLinetypeFile::problemText() const
{
    std::string text;
    for (const Problem &problem : m_problems) {
        if (!text.empty())
            text += '\n';
        if (problem.line > 0)
            text += "line " + std::to_string(problem.line) + ": ";
        text += problem.text.toStdString();
    }
    return ZvString(std::string_view(text));
}
