// SPDX-License-Identifier: MIT
#include "dxf_text.h"

#include "dxf_number.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iconv.h>
#include <utility>

namespace zvdxf {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;
constexpr char32_t wonSign = 0x20A9;

unsigned char byteOf(char c)
{
    return static_cast<unsigned char>(c);
}

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
}

/*! Position of the first byte above 0x7F at or after \a from, or the size. */
std::size_t findNonAscii(std::string_view bytes, std::size_t from)
{
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::size_t i = from;
    for (; i + 32 <= bytes.size(); i += 32) {
        std::uint64_t words[4];
        std::memcpy(words, bytes.data() + i, sizeof words);
        if ((words[0] | words[1] | words[2] | words[3]) & highBits)
            break;
    }
    while (i < bytes.size() && byteOf(bytes[i]) < 0x80)
        ++i;
    return i;
}

/*! Length of the valid UTF-8 sequence at \a at (1..4), or 0. Overlong forms, surrogates and values beyond U+10FFFF are
    invalid. */
std::size_t sequenceLength(std::string_view bytes, std::size_t at)
{
    const unsigned char lead = byteOf(bytes[at]);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF ? 2
        : (lead & 0xF0) == 0xE0                             ? 3
        : lead >= 0xF0 && lead <= 0xF4                      ? 4
                                                            : 0;
    if (length == 0 || at + length > bytes.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteOf(bytes[at + i]) & 0xC0) != 0x80)
            return 0;
    }
    const unsigned char second = byteOf(bytes[at + 1]);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) || (lead == 0xF0 && second < 0x90)
        || (lead == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

bool isValidUtf8(std::string_view bytes)
{
    for (std::size_t i = findNonAscii(bytes, 0); i < bytes.size(); i = findNonAscii(bytes, i)) {
        const std::size_t length = sequenceLength(bytes, i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

void appendUtf8(std::string &text, char32_t c)
{
    if (c < 0x80) {
        text += char(c);
    } else if (c < 0x800) {
        text += char(0xC0 | (c >> 6));
        text += char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        text += char(0xE0 | (c >> 12));
        text += char(0x80 | ((c >> 6) & 0x3F));
        text += char(0x80 | (c & 0x3F));
    } else {
        text += char(0xF0 | (c >> 18));
        text += char(0x80 | ((c >> 12) & 0x3F));
        text += char(0x80 | ((c >> 6) & 0x3F));
        text += char(0x80 | (c & 0x3F));
    }
}

/*! The character of a valid sequence. */
char32_t characterAt(std::string_view bytes, std::size_t at, std::size_t length)
{
    const unsigned char lead = byteOf(bytes[at]);
    if (length == 1)
        return lead;
    char32_t c = lead & (0xFF >> (length + 1));
    for (std::size_t i = 1; i < length; ++i)
        c = (c << 6) | (byteOf(bytes[at + i]) & 0x3F);
    return c;
}

/*! Copies valid UTF-8 and puts U+FFFD for each byte that is none. */
std::string repairedUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = sequenceLength(bytes, i);
        if (length == 0) {
            appendUtf8(text, replacementCharacter);
            ++i;
            continue;
        }
        text.append(bytes, i, length);
        i += length;
    }
    return text;
}

void replaceAll(std::string &text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string asUtf8(char32_t c)
{
    std::string text;
    appendUtf8(text, c);
    return text;
}

/*! One direction of iconv, opened when first used. */
class Converter
{
public:
    Converter(std::string to, std::string from) : m_to(std::move(to)), m_from(std::move(from)) { }
    ~Converter()
    {
        if (isOpen())
            iconv_close(m_handle);
    }
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    bool open()
    {
        if (!isOpen())
            m_handle = iconv_open(m_to.c_str(), m_from.c_str());
        return isOpen();
    }

    /*! Appends the converted bytes to \a output; returns how many bytes of \a input were taken, all of them on success.
     */
    std::size_t convert(std::string_view input, std::string &output)
    {
        if (!open())
            return 0;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        char *in = const_cast<char *>(input.data()); // iconv writes nothing there
        std::size_t inLeft = input.size();
        char block[512];
        while (inLeft > 0) {
            char *out = block;
            std::size_t outLeft = sizeof block;
            const std::size_t result = iconv(m_handle, &in, &inLeft, &out, &outLeft);
            const bool isFull = result == std::size_t(-1) && errno == E2BIG;
            output.append(block, sizeof block - outLeft);
            if (result == std::size_t(-1) && !isFull)
                break;
        }
        // Pages that compose characters hold the last one back.
        char *out = block;
        std::size_t outLeft = sizeof block;
        iconv(m_handle, nullptr, nullptr, &out, &outLeft);
        output.append(block, sizeof block - outLeft);
        return input.size() - inLeft;
    }

private:
    bool isOpen() const { return m_handle != iconv_t(-1); }

    std::string m_to;
    std::string m_from;
    iconv_t m_handle = iconv_t(-1);
};

struct CodePage
{
    std::string_view name; //!< what remains of the declared name without "ANSI_", "DOS" and the like
    const char *reading; //!< for iconv
    const char *writing; //!< differs where the reader accepts more than other programs would understand
    bool doubleByte;
};

constexpr CodePage codePages[] = {
    {"932", "CP932", "CP932", true}, // not iconv's SHIFT_JIS, which has a yen sign where paths have a backslash
    {"SHIFT_JIS", "CP932", "CP932", true},
    {"936", "GB18030", "GBK", true},
    {"GB2312", "GB18030", "GBK", true},
    {"GBK", "GB18030", "GBK", true},
    {"949", "UHC", "UHC", true},
    {"KSC5601", "UHC", "UHC", true},
    {"950", "BIG5", "BIG5", true},
    {"BIG5", "BIG5", "BIG5", true},
    {"1361", "JOHAB", "JOHAB", true},
    {"JOHAB", "JOHAB", "JOHAB", true},
    {"MAC-ROMAN", "MACINTOSH", "MACINTOSH", false},
};

struct PageEncoding
{
    std::string reading;
    std::string writing;
    bool doubleByte = false;
    bool isKnown = false;
};

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

PageEncoding pageEncoding(std::string_view declared)
{
    std::string name;
    for (const char c : declared) {
        if (c != ' ')
            name += upper(c);
    }
    std::string_view rest = name;
    for (const std::string_view prefix : {"ANSI_", "ANSI", "DOS", "WINDOWS-", "CP"}) {
        if (startsWith(rest, prefix)) {
            rest.remove_prefix(prefix.size());
            break;
        }
    }
    for (const CodePage &page : codePages) {
        if (page.name == rest)
            return {page.reading, page.writing, page.doubleByte, true};
    }
    std::string encoding;
    if (startsWith(rest, "ISO8859-"))
        encoding = "ISO-8859-" + std::string(rest.substr(8));
    else if (!rest.empty() && rest.find_first_not_of("0123456789") == std::string_view::npos)
        encoding = "CP" + std::string(rest);
    if (!encoding.empty() && Converter("UTF-8", encoding).open())
        return {encoding, encoding, false, true};
    return {"CP1252", "CP1252", false, false};
}

/*! Reads exactly four hexadecimal digits at \a at. */
bool fourDigits(std::string_view text, std::size_t at, unsigned &value)
{
    if (at + 4 > text.size())
        return false;
    const char *const end = text.data() + at + 4;
    const auto [stop, error] = std::from_chars(text.data() + at, end, value, 16);
    return error == std::errc() && stop == end;
}

bool isHighSurrogate(unsigned c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}

bool isLowSurrogate(unsigned c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

/*! The pages of `\M+1` to `\M+5`. */
const char *multiByteEncoding(char number)
{
    static constexpr const char *encodings[] = {"CP932", "BIG5", "UHC", "JOHAB", "GB18030"};
    return number >= '1' && number <= '5' ? encodings[number - '1'] : nullptr;
}

/*! Resolves `\U+XXXX` and `\M+nXXXX`. */
std::string decodeEscapes(std::string_view text, bool *bad)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t backslash = text.find('\\', i);
        result.append(text, i, backslash - i);
        if (backslash == std::string_view::npos)
            break;
        i = backslash;
        unsigned code = 0;
        if (startsWith(text.substr(i), "\\U+") && fourDigits(text, i + 3, code) && code != 0) {
            i += 7;
            unsigned low = 0;
            char32_t character = code;
            if (isHighSurrogate(code) && startsWith(text.substr(i), "\\U+") && fourDigits(text, i + 3, low)
                && isLowSurrogate(low)) {
                character = 0x10000 + ((char32_t(code) - 0xD800) << 10) + (low - 0xDC00);
                i += 7;
            } else if (isHighSurrogate(code) || isLowSurrogate(code)) {
                character = replacementCharacter;
                if (bad)
                    *bad = true;
            }
            appendUtf8(result, character);
            continue;
        }
        if (startsWith(text.substr(i), "\\M+") && fourDigits(text, i + 4, code)) {
            const char *const encoding = multiByteEncoding(text[i + 3]);
            const char bytes[2] = {char(code >> 8), char(code & 0xFF)};
            const std::string_view character = bytes[0] ? std::string_view(bytes, 2) : std::string_view(bytes + 1, 1);
            std::string decoded;
            if (encoding && code != 0 && Converter("UTF-8", encoding).convert(character, decoded) == character.size()) {
                result += decoded;
                i += 8;
                continue;
            }
        }
        result += '\\';
        ++i;
    }
    return result;
}

/*! Appends `\U+XXXX`, twice beyond U+FFFF. */
void appendEscape(std::string &bytes, char32_t c)
{
    if (c > 0xFFFF) {
        appendEscape(bytes, 0xD800 + ((c - 0x10000) >> 10));
        appendEscape(bytes, 0xDC00 + ((c - 0x10000) & 0x3FF));
        return;
    }
    const char unit[2] = {char(c >> 8), char(c & 0xFF)};
    bytes += "\\U+";
    bytes += formatChunk(std::string_view(unit, 2));
}

/*! The text in ASCII, everything else as `\U+XXXX`. */
std::string escaped(std::string_view utf8)
{
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t length = sequenceLength(utf8, i);
        if (length == 1)
            bytes += utf8[i];
        else
            appendEscape(bytes, length == 0 ? replacementCharacter : characterAt(utf8, i, length));
        i += std::max<std::size_t>(length, 1);
    }
    return bytes;
}

bool isControl(char c)
{
    return byteOf(c) < 0x20;
}

// What stands after a caret, and what it means. No more than these, since other programs write a caret of the text
// itself without the blank that belongs after it, as in a tolerance "H7^G6".
constexpr std::string_view controlCodes = "IJM ";
constexpr std::string_view controlCharacters = "\t\n\r^";

bool hasControls(std::string_view text)
{
    for (const char c : text) {
        if (isControl(c) || c == '^')
            return true;
    }
    return false;
}

} // namespace

// ---- TextCodec
// --------------------------------------------------------------------------------------------------------

struct TextCodec::Private
{
    Private(bool utf8, PageEncoding page, std::string name)
        : isUtf8(utf8), encoding(std::move(page)), codePage(std::move(name)), reader("UTF-8", encoding.reading),
          writer(encoding.writing, "UTF-8")
    {
    }

    // Text of a single-byte page that happens to be valid UTF-8 is next to impossible, UTF-8 in files that declare such
    // a page is not. In double-byte pages many a character is a valid sequence.
    bool prefersUtf8() const { return isUtf8 || !encoding.doubleByte; }

    // In this page iconv knows no backslash but a won sign in its place.
    bool hasWonForBackslash() const { return encoding.reading == "JOHAB"; }

    bool decodePage(std::string_view bytes, std::string &text)
    {
        if (reader.convert(bytes, text) != bytes.size())
            return false;
        if (hasWonForBackslash())
            replaceAll(text, asUtf8(wonSign), "\\");
        return true;
    }

    std::string encodePage(std::string_view utf8)
    {
        std::string input(utf8);
        if (hasWonForBackslash())
            replaceAll(input, "\\", asUtf8(wonSign));
        std::string_view rest = input;
        std::string bytes;
        while (!rest.empty()) {
            rest.remove_prefix(writer.convert(rest, bytes));
            if (rest.empty())
                break;
            const std::size_t length = sequenceLength(rest, 0);
            appendEscape(bytes, length == 0 ? replacementCharacter : characterAt(rest, 0, length));
            rest.remove_prefix(length == 0 ? 1 : length);
        }
        if (prefersUtf8() && isValidUtf8(bytes))
            return escaped(utf8); // would be read back as something else
        return bytes;
    }

    bool isUtf8;
    PageEncoding encoding;
    std::string codePage;
    Converter reader;
    Converter writer;
};

TextCodec::TextCodec() : TextCodec("AC1032", "ANSI_1252") { }

TextCodec::TextCodec(std::string_view version, std::string_view codePage, bool looksUtf8)
{
    PageEncoding encoding = pageEncoding(codePage);
    std::string name = encoding.isKnown ? std::string(codePage) : std::string("ANSI_1252");
    const bool isUnicodeVersion = version.size() == 6 && startsWith(version, "AC") && version >= "AC1021";
    d = std::make_unique<Private>(isUnicodeVersion || looksUtf8, std::move(encoding), std::move(name));
}

TextCodec::TextCodec(const TextCodec &other)
    : d(std::make_unique<Private>(other.d->isUtf8, other.d->encoding, other.d->codePage))
{
}

TextCodec::TextCodec(TextCodec &&other) noexcept = default;

TextCodec &TextCodec::operator=(const TextCodec &other)
{
    return *this = TextCodec(other);
}

TextCodec &TextCodec::operator=(TextCodec &&other) noexcept = default;

TextCodec::~TextCodec() = default;

std::string TextCodec::decode(std::string_view bytes, bool *bad) const
{
    std::string text;
    if (findNonAscii(bytes, 0) == bytes.size() || (d->prefersUtf8() && isValidUtf8(bytes))) {
        text = bytes;
    } else if (!d->decodePage(bytes, text)) {
        text = repairedUtf8(bytes);
        if (bad && !isValidUtf8(bytes))
            *bad = true;
    }
    // Escapes last: a page's character may have a backslash or a caret as its second byte.
    if (text.find('\\') != std::string::npos)
        text = decodeEscapes(text, bad);
    if (text.find('^') != std::string::npos)
        text = decodeControls(text);
    return text;
}

std::string TextCodec::encode(std::string_view utf8) const
{
    std::string text = hasControls(utf8) ? encodeControls(utf8) : std::string(utf8);
    if (findNonAscii(text, 0) == text.size())
        return text;
    if (d->isUtf8)
        return isValidUtf8(text) ? text : repairedUtf8(text);
    return d->encodePage(text);
}

std::vector<std::string> TextCodec::encodePieces(std::string_view utf8, std::size_t maxBytes) const
{
    std::vector<std::string> pieces(1);
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t length = std::max<std::size_t>(sequenceLength(utf8, i), 1);
        const std::string character = encode(utf8.substr(i, length));
        if (pieces.back().size() + character.size() > maxBytes)
            pieces.emplace_back();
        pieces.back() += character;
        i += length;
    }
    return pieces;
}

bool TextCodec::isUtf8() const
{
    return d->isUtf8;
}

const std::string &TextCodec::codePage() const
{
    return d->codePage;
}

bool looksLikeUtf8(std::string_view bytes, std::string_view codePage)
{
    // Some bytes may be none: a file is damaged, or a writer cut a long text within a character.
    constexpr std::size_t tolerance = 20;
    const std::size_t telling = pageEncoding(codePage).doubleByte ? 3 : 2;
    bool isTelling = false;
    std::size_t sequences = 0;
    std::size_t strayBytes = 0;
    for (std::size_t i = findNonAscii(bytes, 0); i < bytes.size(); i = findNonAscii(bytes, i)) {
        const std::size_t length = sequenceLength(bytes, i);
        isTelling = isTelling || length >= telling;
        ++(length == 0 ? strayBytes : sequences);
        i += std::max<std::size_t>(length, 1);
    }
    return isTelling && strayBytes * tolerance <= sequences;
}

// ---- Codes inside of text
// ---------------------------------------------------------------------------------------------

std::string decodeControls(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '^' && i + 1 < text.size()) {
            const std::size_t code = controlCodes.find(text[i + 1]);
            if (code != std::string_view::npos) {
                result += controlCharacters[code];
                ++i;
                continue;
            }
        }
        result += text[i];
    }
    return result;
}

std::string encodeControls(std::string_view text)
{
    std::string result;
    result.reserve(text.size() + 8);
    for (const char c : text) {
        if (c == '\0')
            continue; // ends a text in a binary file and has no code
        const std::size_t code = controlCharacters.find(c);
        if (code != std::string_view::npos) {
            result += '^';
            result += controlCodes[code];
        } else if (isControl(c)) {
            appendEscape(result, char32_t(c));
        } else {
            result += c;
        }
    }
    return result;
}

std::vector<TextRun> decodeTextCodes(std::string_view utf8)
{
    std::vector<TextRun> runs;
    TextRun run;
    const auto switchFlag = [&runs, &run](bool TextRun::*flag) {
        if (!run.text.empty())
            runs.push_back(run);
        run.text.clear();
        run.*flag = !(run.*flag);
    };
    const auto isDigit = [&utf8](std::size_t at) { return at < utf8.size() && utf8[at] >= '0' && utf8[at] <= '9'; };

    for (std::size_t i = 0; i < utf8.size();) {
        if (utf8.compare(i, 2, "%%") != 0 || i + 2 >= utf8.size()) {
            run.text += utf8[i++];
            continue;
        }
        const std::size_t at = i + 2;
        i += 3;
        switch (upper(utf8[at])) {
        case 'C':
            appendUtf8(run.text, 0xD8);
            continue;
        case 'D':
            appendUtf8(run.text, 0xB0);
            continue;
        case 'P':
            appendUtf8(run.text, 0xB1);
            continue;
        case '%':
            run.text += '%';
            continue;
        case 'U':
            switchFlag(&TextRun::underline);
            continue;
        case 'O':
            switchFlag(&TextRun::overline);
            continue;
        case 'K':
            switchFlag(&TextRun::strike);
            continue;
        default:
            break;
        }
        if (isDigit(at) && isDigit(at + 1) && isDigit(at + 2)) {
            const int code = (utf8[at] - '0') * 100 + (utf8[at + 1] - '0') * 10 + (utf8[at + 2] - '0');
            if (code >= 0x20)
                appendUtf8(run.text, char32_t(code));
            i = at + 3;
            continue;
        }
        run.text += "%%";
        i = at;
    }
    if (!run.text.empty())
        runs.push_back(run);

    // A flag switched twice with nothing between leaves neighbours alike.
    std::vector<TextRun> joined;
    for (TextRun &piece : runs) {
        if (!joined.empty() && joined.back().underline == piece.underline && joined.back().overline == piece.overline
            && joined.back().strike == piece.strike)
            joined.back().text += piece.text;
        else
            joined.push_back(std::move(piece));
    }
    return joined;
}

std::string plainText(std::string_view utf8)
{
    std::string text;
    for (const TextRun &run : decodeTextCodes(utf8))
        text += run.text;
    return text;
}

} // namespace zvdxf
