// SPDX-License-Identifier: MIT
#include "gi_text.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <cwctype>

// Multiline text: a reader turns the contents with their codes into characters with formats, line by line, and the
// layout breaks them at the width and places them.

namespace {

constexpr double kNaturalSpacing = 5.0 / 3.0; ///< From base line to base line, of the height.
constexpr double kStackScale = 0.7; ///< Height of the parts of a fraction, of the height around it.
constexpr double kTabStop = 4.0; ///< Of the height.
constexpr double kBarThickness = 0.06;
constexpr int kMaxNesting = 64;

struct Format
{
    const GiFont *font = nullptr;
    double height = 1.0;
    double widthFactor = 1.0;
    double oblique = 0.0; // radians
    double tracking = 1.0;
    int vertical = 0; // 0 on the base line, 1 in the middle, 2 at the top of the line
    bool underline = false;
    bool overline = false;
    bool strike = false;
    bool hasColor = false;
    ZvCmColor color;
    // Of the font in words, since bold and italic change one by one.
    ZvString family;
    bool bold = false;
    bool italic = false;
};

struct Item
{
    enum Kind { kCharacter, kStack, kTab };
    Kind kind = kCharacter;
    char32_t character = 0;
    std::size_t format = 0; ///< Number in the table of formats.
    double advance = 0.0; ///< Drawing units.
    bool mayBreakAfter = false;
    bool isBlank = false;
    // of a fraction
    std::vector<char32_t> upper;
    std::vector<char32_t> lower;
    wchar_t bar = 0; ///< '/' a line, '#' a slanted one, '^' none.
};

struct Paragraph
{
    std::vector<Item> items;
    int alignment = 0; ///< 0 as the block, 1 left, 2 centre, 3 right.
    double indent = 0.0; ///< Of the first line, drawing units, from the left margin.
    double left = 0.0;
    double emptyHeight = 0.0; ///< Height of its line when it has no character.
};

double charactersWidth(const std::vector<char32_t> &characters, const Format &format, double height)
{
    double width = 0.0;
    for (char32_t character : characters)
        width += giAdvance(format.font, character);
    return width * height * format.widthFactor;
}

class Reader
{
public:
    Reader(const ZvGiMText &text, const GiTextStyle &style) : m_next(text.contents.wstr()), m_blockHeight(text.height)
    {
        Format format;
        format.height = text.height;
        format.widthFactor = style.widthFactor;
        format.oblique = style.oblique;
        format.family = style.typeface;
        format.bold = style.bold;
        format.italic = style.italic;
        m_fonts = GiFonts::instance();
        format.font = m_fonts ? m_fonts->fontFor(style) : nullptr;
        m_current = format;
    }

    void read()
    {
        startParagraph();
        while (*m_next)
            readOne();
    }

    std::vector<Format> formats;
    std::vector<Paragraph> paragraphs;

private:
    void startParagraph()
    {
        Paragraph paragraph;
        if (!paragraphs.empty()) {
            const Paragraph &before = paragraphs.back();
            paragraph.alignment = before.alignment;
            paragraph.indent = before.indent;
            paragraph.left = before.left;
        }
        paragraph.emptyHeight = m_current.height;
        paragraphs.push_back(std::move(paragraph));
    }

    std::size_t formatNumber()
    {
        if (m_changed || formats.empty()) {
            formats.push_back(m_current);
            m_changed = false;
        }
        return formats.size() - 1;
    }

    void addCharacter(char32_t character, bool mayBreak = true)
    {
        Item item;
        item.character = character;
        item.format = formatNumber();
        item.advance
            = giAdvance(m_current.font, character) * m_current.height * m_current.widthFactor * m_current.tracking;
        item.isBlank = character == U' ' && mayBreak;
        item.mayBreakAfter = item.isBlank || giIsIdeograph(character);
        std::vector<Item> &items = paragraphs.back().items;
        if (giIsIdeograph(character) && !items.empty() && !isClosingMark(character))
            items.back().mayBreakAfter = true;
        else if (isClosingMark(character) && !items.empty())
            items.back().mayBreakAfter = items.back().isBlank;
        items.push_back(std::move(item));
    }

    /// Punctuation that starts no line.
    static bool isClosingMark(char32_t c)
    {
        return c == 0x3001 || c == 0x3002 || c == 0xFF0C || c == 0xFF0E || c == 0xFF1A || c == 0xFF1B || c == 0xFF01
            || c == 0xFF1F || c == 0x300D || c == 0x300F || c == 0xFF09 || c == 0x3011 || c == 0x300B;
    }

    void addTab()
    {
        Item item;
        item.kind = Item::kTab;
        item.format = formatNumber();
        item.isBlank = true;
        item.mayBreakAfter = true;
        paragraphs.back().items.push_back(std::move(item));
    }

    void readOne()
    {
        const wchar_t c = *m_next;
        if (c == L'\\') {
            ++m_next;
            readCode();
        } else if (c == L'{') {
            ++m_next;
            if (m_stack.size() < kMaxNesting)
                m_stack.push_back(m_current);
        } else if (c == L'}') {
            ++m_next;
            if (!m_stack.empty()) {
                m_current = m_stack.back();
                m_stack.pop_back();
                m_changed = true;
            }
        } else if (c == L'%' && m_next[1] == L'%' && m_next[2]) {
            readControlCode();
        } else if (c == L'^' && m_next[1]) {
            readCaret();
        } else if (c == L'\t') {
            ++m_next;
            addTab();
        } else if (c == L'\n') {
            ++m_next;
            startParagraph();
        } else if (c == L'\r') {
            ++m_next;
        } else {
            ++m_next;
            addCharacter(char32_t(c));
        }
    }

    void readControlCode()
    {
        int length = 0;
        if (const char32_t code = giControlCode(m_next + 2, length)) {
            addCharacter(code);
            m_next += 2 + length;
            return;
        }
        addCharacter(U'%');
        ++m_next;
    }

    void readCaret()
    {
        switch (m_next[1]) {
        case L'I':
            addTab();
            break;
        case L'J':
            startParagraph();
            break;
        case L'M':
            break;
        case L' ':
            addCharacter(U'^');
            break;
        default:
            addCharacter(U'^');
            ++m_next;
            return;
        }
        m_next += 2;
    }

    /// Text up to the semicolon, which is passed over; a missing one ends it with the contents.
    ZvString argument()
    {
        const wchar_t *first = m_next;
        while (*m_next && *m_next != L';')
            ++m_next;
        const ZvString text(first, int(m_next - first));
        if (*m_next)
            ++m_next;
        return text;
    }

    void readCode()
    {
        const wchar_t code = *m_next;
        if (!code)
            return;
        ++m_next;
        switch (code) {
        case L'P':
        case L'N':
        case L'X':
            startParagraph();
            return;
        case L'~':
            addCharacter(U' ', false);
            return;
        case L'L':
        case L'l':
            m_current.underline = code == L'L';
            break;
        case L'O':
        case L'o':
            m_current.overline = code == L'O';
            break;
        case L'K':
        case L'k':
            m_current.strike = code == L'K';
            break;
        case L'A':
            m_current.vertical = int(number(argument(), m_current.vertical));
            break;
        case L'C':
            m_current.hasColor = true;
            m_current.color.setColorIndex(std::uint16_t(std::clamp(number(argument(), 256.0), 0.0, 257.0)));
            break;
        case L'c': {
            const auto packed = std::uint32_t(number(argument(), 0.0));
            m_current.hasColor = true;
            m_current.color.setRGB(std::uint8_t(packed), std::uint8_t(packed >> 8), std::uint8_t(packed >> 16));
            break;
        }
        case L'H':
            readScaled(m_current.height);
            break;
        case L'W':
            readScaled(m_current.widthFactor);
            break;
        case L'T':
            m_current.tracking = std::clamp(number(argument(), 1.0), 0.1, 10.0);
            break;
        case L'Q':
            m_current.oblique = std::clamp(number(argument(), 0.0), -80.0, 80.0) * 3.14159265358979323846 / 180.0;
            break;
        case L'F':
        case L'f':
            readFont(argument());
            break;
        case L'S':
            readStack();
            return;
        case L'p':
            readParagraph(argument());
            return;
        case L'U':
            if (*m_next == L'+' && readUnicode())
                return;
            addCharacter(U'U');
            return;
        default:
            addCharacter(char32_t(code)); // "\\", "\{", "\}", and what is no code
            return;
        }
        m_changed = true;
    }

    static double number(const ZvString &text, double standard)
    {
        wchar_t *end = nullptr;
        const double value = std::wcstod(text.wstr(), &end);
        return end == text.wstr() || !std::isfinite(value) ? standard : value;
    }

    /// A value, or with "x" behind it a factor on what is in force.
    void readScaled(double &value)
    {
        const ZvString text = argument();
        const double read = number(text, 0.0);
        if (!(read > 0.0))
            return;
        const bool isFactor = text.find(L'x') >= 0 || text.find(L'X') >= 0;
        value = isFactor ? value * read : read;
    }

    void readFont(const ZvString &text)
    {
        int bar = text.find(L'|');
        ZvString name = bar < 0 ? text : text.left(bar);
        while (bar >= 0) {
            const wchar_t option = wchar_t(std::towlower(wint_t(text.at(bar + 1))));
            const bool on = option && text.at(bar + 2) == L'1';
            if (option == L'b')
                m_current.bold = on;
            else if (option == L'i')
                m_current.italic = on;
            bar = text.find(L'|', bar + 1);
        }
        if (!m_fonts || name.isEmpty())
            return;
        const int length = name.length();
        const bool isFile = length > 4 && name.at(length - 4) == L'.';
        GiTextStyle style;
        style.bold = m_current.bold;
        style.italic = m_current.italic;
        (isFile ? style.fontFile : style.typeface) = name;
        m_current.font = m_fonts->fontFor(style);
    }

    void readStack()
    {
        Item item;
        item.kind = Item::kStack;
        std::vector<char32_t> *part = &item.upper;
        while (*m_next && *m_next != L';') {
            const wchar_t c = *m_next++;
            if (c == L'\\' && *m_next) {
                part->push_back(char32_t(*m_next++));
            } else if (!item.bar && (c == L'/' || c == L'#' || c == L'^')) {
                item.bar = c;
                part = &item.lower;
                if (c == L'^' && *m_next == L' ')
                    ++m_next; // "^ " would be a caret elsewhere; here it only parts
            } else {
                part->push_back(char32_t(c));
            }
        }
        if (*m_next)
            ++m_next;
        item.format = formatNumber();
        const double height = m_current.height * kStackScale;
        const double upper = charactersWidth(item.upper, m_current, height);
        const double lower = charactersWidth(item.lower, m_current, height);
        item.advance = item.bar == L'#' ? upper + lower + height * 0.6 : std::max(upper, lower) + height * 0.2;
        paragraphs.back().items.push_back(std::move(item));
    }

    void readParagraph(const ZvString &text)
    {
        Paragraph &paragraph = paragraphs.back();
        for (int i = 0; i < text.length(); ++i) {
            const wchar_t key = text.at(i);
            wchar_t *end = nullptr;
            const double value = std::wcstod(text.wstr() + i + 1, &end);
            const bool hasValue = end != text.wstr() + i + 1 && std::isfinite(value);
            if (key == L'q') {
                const wchar_t side = text.at(i + 1);
                paragraph.alignment = side == L'c' ? 2 : side == L'r' ? 3 : 1;
            } else if (key == L'i' && hasValue) {
                paragraph.indent = value * m_blockHeight;
            } else if (key == L'l' && hasValue) {
                paragraph.left = value * m_blockHeight;
            }
        }
    }

    bool readUnicode()
    {
        char32_t character = 0;
        for (int i = 1; i <= 4; ++i) {
            if (!std::iswxdigit(wint_t(m_next[i])))
                return false;
            const wint_t digit = std::towlower(wint_t(m_next[i]));
            character = character * 16 + char32_t(std::iswdigit(digit) ? digit - L'0' : digit - L'a' + 10);
        }
        m_next += 5;
        addCharacter(character);
        return true;
    }

    const wchar_t *m_next;
    double m_blockHeight;
    GiFonts *m_fonts = nullptr;
    Format m_current;
    std::vector<Format> m_stack;
    bool m_changed = true;
};

/// A line: a range of items of a paragraph.
struct Line
{
    const Paragraph *paragraph = nullptr;
    std::size_t first = 0;
    std::size_t end = 0;
    double width = 0.0; ///< Without the blanks at its end.
    double height = 0.0; ///< Of the highest capitals.
    double left = 0.0; ///< Indent.
};

double tabAdvance(double x, double height)
{
    const double stop = kTabStop * height;
    return (std::floor(x / stop + 1e-9) + 1.0) * stop - x;
}

class Layout
{
public:
    Layout(const ZvGiMText &text, const Reader &reader, GiTextLayout &layout)
        : m_text(text), m_reader(reader), m_layout(layout)
    {
    }

    void run()
    {
        for (const Paragraph &paragraph : m_reader.paragraphs)
            breakParagraph(paragraph);
        while (m_lines.size() > 1 && m_lines.back().first == m_lines.back().end)
            m_lines.pop_back(); // line ends behind the last character move nothing
        placeLines();
    }

private:
    const Format &formatOf(const Item &item) const { return m_reader.formats[item.format]; }

    double advanceAt(const Item &item, double x) const
    {
        return item.kind == Item::kTab ? tabAdvance(x, m_text.height) : item.advance;
    }

    void breakParagraph(const Paragraph &paragraph)
    {
        const std::vector<Item> &items = paragraph.items;
        const double tolerance = m_text.height * 1e-3;
        std::size_t first = 0;
        bool isFirstLine = true;
        do {
            const double left = isFirstLine ? std::max(0.0, paragraph.left + paragraph.indent) : paragraph.left;
            double x = left;
            std::size_t end = first;
            std::size_t lastBreak = first;
            while (end < items.size()) {
                const double advance = advanceAt(items[end], x);
                const bool overflows
                    = m_text.width > 0.0 && !items[end].isBlank && x + advance > m_text.width + tolerance;
                if (overflows && lastBreak > first) {
                    end = lastBreak;
                    break;
                }
                x += advance;
                ++end;
                if (items[end - 1].mayBreakAfter)
                    lastBreak = end;
            }
            addLine(paragraph, first, end, left);
            first = end;
            isFirstLine = false;
        } while (first < items.size());
    }

    void addLine(const Paragraph &paragraph, std::size_t first, std::size_t end, double left)
    {
        Line line;
        line.paragraph = &paragraph;
        line.first = first;
        line.end = end;
        line.left = left;
        double x = left;
        line.width = left;
        for (std::size_t i = first; i < end; ++i) {
            const Item &item = paragraph.items[i];
            x += advanceAt(item, x);
            if (!item.isBlank)
                line.width = x;
            line.height = std::max(line.height, formatOf(item).height);
        }
        if (first == end)
            line.height = paragraph.emptyHeight;
        m_lines.push_back(line);
    }

    void placeLines()
    {
        // Base lines from the top of the first line's capitals down.
        std::vector<double> baselines;
        double y = 0.0;
        double width = 0.0;
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            const double height = m_text.exactSpacing && i > 0 ? m_text.height : m_lines[i].height;
            y -= i == 0 ? m_lines[i].height : height * kNaturalSpacing * m_text.lineSpacing;
            baselines.push_back(y);
            width = std::max(width, m_lines[i].width);
        }
        const double height = -y;
        const int row = (std::clamp(m_text.attachment, 1, 9) - 1) / 3;
        const int column = (std::clamp(m_text.attachment, 1, 9) - 1) % 3;
        const double up = row == 0 ? 0.0 : row == 1 ? height / 2 : height;
        // Lines stand in a box of the given width, or of the widest line.
        const double boxWidth = m_text.width > 0.0 ? m_text.width : width;
        const double boxLeft = column == 0 ? 0.0 : column == 1 ? -boxWidth / 2 : -boxWidth;
        double leftmost = 1e300;
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            const Line &line = m_lines[i];
            const int alignment = line.paragraph->alignment ? line.paragraph->alignment - 1 : column;
            const double slack = boxWidth - line.width;
            const double x = boxLeft + (alignment == 0 ? 0.0 : alignment == 1 ? slack / 2 : slack);
            leftmost = std::min(leftmost, x);
            placeLine(line, x, baselines[i] + up);
        }
        m_layout.box = QRectF(leftmost, up - height, width, height);
    }

    void placeLine(const Line &line, double left, double baseline)
    {
        double x = line.left;
        for (std::size_t i = line.first; i < line.end; ++i) {
            const Item &item = line.paragraph->items[i];
            const Format &format = formatOf(item);
            const double advance = advanceAt(item, x);
            const double rise = format.vertical == 1 ? (line.height - format.height) / 2
                : format.vertical == 2               ? line.height - format.height
                                                     : 0.0;
            const QPointF at(left + x, baseline + rise);
            if (item.kind == Item::kStack)
                placeStack(item, format, at);
            else if (item.kind == Item::kCharacter)
                addGlyph(item.character, format, format.height, at);
            const bool isMarked = format.underline || format.overline || format.strike;
            if (isMarked && at.x() + advance <= left + line.width + 1e-9)
                addMarks(format, at, advance);
            x += advance;
        }
        if (line.width > line.left)
            m_layout.lines.emplace_back(left + line.left, baseline + line.height / 2, left + line.width,
                                        baseline + line.height / 2);
    }

    void addGlyph(char32_t character, const Format &format, double height, const QPointF &at)
    {
        if (!format.font)
            return;
        const GiGlyph &glyph = format.font->glyph(character);
        if (glyph.path.isEmpty())
            return;
        GiTextLayout::Piece piece;
        piece.glyph = &glyph;
        piece.place
            = QTransform(height * format.widthFactor, 0, std::tan(format.oblique) * height, height, at.x(), at.y());
        piece.hasColor = format.hasColor;
        piece.color = format.color;
        m_layout.pieces.push_back(piece);
    }

    void addBar(const QPointF &from, const QPointF &to, const Format &format)
    {
        GiTextLayout::Bar bar;
        bar.thickness = kBarThickness * format.height;
        bar.hasColor = format.hasColor;
        bar.color = format.color;
        bar.from = from;
        bar.to = to;
        m_layout.bars.push_back(bar);
    }

    void addMarks(const Format &format, const QPointF &at, double advance)
    {
        const auto mark = [&](double rise) {
            const QPointF from = at + QPointF(0.0, rise * format.height);
            addBar(from, from + QPointF(advance, 0.0), format);
        };
        if (format.underline)
            mark(-0.2);
        if (format.overline)
            mark(1.2);
        if (format.strike)
            mark(0.45);
    }

    void addRun(const std::vector<char32_t> &characters, const Format &format, double height, QPointF at)
    {
        for (char32_t character : characters) {
            addGlyph(character, format, height, at);
            at.rx() += giAdvance(format.font, character) * height * format.widthFactor;
        }
    }

    void placeStack(const Item &item, const Format &format, const QPointF &at)
    {
        const double height = format.height * kStackScale;
        const double upper = charactersWidth(item.upper, format, height);
        const double lower = charactersWidth(item.lower, format, height);
        if (item.bar == L'#') {
            addRun(item.upper, format, height, at + QPointF(0.0, format.height - height));
            addBar(at + QPointF(upper, -0.1 * format.height), at + QPointF(upper + height * 0.6, 1.1 * format.height),
                   format);
            addRun(item.lower, format, height, at + QPointF(upper + height * 0.6, -0.1 * format.height));
            return;
        }
        const double width = std::max(upper, lower);
        const bool hasBar = item.bar == L'/';
        const double middle = format.height / 2;
        const double gap = format.height * 0.15;
        // Parts of a fraction stand in the middle over each other, tolerances begin at one line.
        const double upperLeft = hasBar ? (width - upper) / 2 : 0.0;
        const double lowerLeft = hasBar ? (width - lower) / 2 : 0.0;
        addRun(item.upper, format, height, at + QPointF(upperLeft, middle + gap));
        addRun(item.lower, format, height, at + QPointF(lowerLeft, middle - gap - height));
        if (hasBar)
            addBar(at + QPointF(0.0, middle), at + QPointF(width, middle), format);
    }

    const ZvGiMText &m_text;
    const Reader &m_reader;
    GiTextLayout &m_layout;
    std::vector<Line> m_lines;
};

} // namespace

void giLayoutMText(const ZvGiMText &text, const GiTextStyle &style, GiTextLayout &layout)
{
    Reader reader(text, style);
    reader.read();
    if (reader.formats.empty())
        return; // no character at all
    Layout(text, reader, layout).run();
}
