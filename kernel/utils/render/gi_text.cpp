// SPDX-License-Identifier: MIT
#include "gi_text.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QLineF>

#include <cmath>
#include <cstring>
#include <cwchar>
#include <cwctype>

namespace {

// Outlines are taken at this size, where hinting and rounding no longer show.
constexpr int kOutlinePixels = 256;
constexpr double kBlankAdvance = 0.8;
constexpr double kBarThickness = 0.06; ///< Of the height.
constexpr double kUnderlineDrop = 0.2;
constexpr double kOverlineRise = 1.2;
constexpr double kStrikeRise = 0.45;
constexpr double kDescent = 1.0 / 3.0;

const char *const kSans = "DejaVu Sans";
const char *const kSerif = "DejaVu Serif";
const char *const kMono = "DejaVu Sans Mono";
const char *const kIdeographs = "Noto Sans CJK SC";

/// What stands in for fonts that a machine may lack: by how their names begin, in lower case. The replacements run
/// wider than the originals, which the factor makes good.
struct Replacement
{
    const char *prefix;
    const char *family;
    double widthFactor;
};
const Replacement kReplacements[] = {
    {"arial narrow", kSans, 0.72}, {"arialn", kSans, 0.72},   {"arial", kSans, 0.88},
    {"helvetica", kSans, 0.88},    {"calibri", kSans, 0.84},  {"tahoma", kSans, 0.9},
    {"verdana", kSans, 1.0},       {"segoe", kSans, 0.88},    {"times", kSerif, 0.85},
    {"georgia", kSerif, 0.95},     {"cambria", kSerif, 0.88}, {"garamond", kSerif, 0.82},
    {"cour", kMono, 1.0},          {"consola", kMono, 0.92},  {"lucida console", kMono, 1.0},
};

/// Stroke fonts: no machine has these as outlines. The factors give the widths that drawings reckon with.
const Replacement kStrokeFonts[] = {
    {"monotxt", kMono, 1.0},  {"romanc", kSerif, 0.92}, {"romand", kSans, 0.88},  {"romant", kSerif, 0.92},
    {"romans", kSans, 0.88},  {"italic", kSerif, 0.92}, {"script", kSerif, 0.92}, {"goth", kSerif, 0.92},
    {"simplex", kSans, 0.88}, {"isocp", kSans, 0.8},    {"txt", kSans, 0.95},
};

/// File names of TrueType fonts that do not tell the family.
struct FileFamily
{
    const char *file;
    const char *family;
};
const FileFamily kFileFamilies[] = {
    {"arial", "Arial"},
    {"arialbd", "Arial"},
    {"ariali", "Arial"},
    {"times", "Times New Roman"},
    {"timesbd", "Times New Roman"},
    {"timesi", "Times New Roman"},
    {"cour", "Courier New"},
    {"courbd", "Courier New"},
    {"calibri", "Calibri"},
    {"tahoma", "Tahoma"},
    {"verdana", "Verdana"},
    {"simsun", "SimSun"},
    {"simhei", "SimHei"},
    {"simkai", "KaiTi"},
    {"simfang", "FangSong"},
    {"msyh", "Microsoft YaHei"},
};

QString toQString(const ZvString &text)
{
    return QString::fromWCharArray(text.wstr(), text.length());
}

bool isInstalled(const QString &family)
{
    static const QStringList families = QFontDatabase().families();
    return families.contains(family, Qt::CaseInsensitive);
}

const Replacement *findReplacement(const Replacement *first, const Replacement *end, const QString &name)
{
    for (; first != end; ++first) {
        if (name.startsWith(QLatin1String(first->prefix)))
            return first;
    }
    return nullptr;
}

GiFonts *g_fonts = nullptr;

void forgetFonts()
{
    delete g_fonts; // fonts must be gone before what made them is
    g_fonts = nullptr;
}

} // namespace

bool giIsIdeograph(char32_t c)
{
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF)
        || (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFFEF) || (c >= 0x20000 && c <= 0x3FFFF);
}

const GiGlyph &GiFont::glyph(char32_t character) const
{
    const auto [found, isNew] = m_glyphs.try_emplace(character);
    GiGlyph &glyph = found->second;
    if (!isNew)
        return glyph;
    const Face *face = &m_faces.front();
    for (const Face &candidate : m_faces) {
        if (candidate.font.supportsCharacter(uint(character))) {
            face = &candidate;
            break;
        }
    }
    const uint code = uint(character);
    const QVector<quint32> indexes = face->font.glyphIndexesForString(QString::fromUcs4(&code, 1));
    if (indexes.isEmpty())
        return glyph;
    const bool isSquare = giIsIdeograph(character);
    const double y = face->unit * (isSquare ? m_ideographScale : 1.0);
    const double x = isSquare ? y : y * face->widthFactor;
    const QVector<QPointF> advances = face->font.advancesForGlyphIndexes(indexes, QRawFont::SeparateAdvances);
    glyph.advance = advances.value(0).x() * x;
    if (!QChar::isSpace(uint(character)))
        glyph.path = QTransform::fromScale(x, -y).map(face->font.pathForGlyph(indexes.first()));
    return glyph;
}

GiFonts *GiFonts::instance()
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return nullptr;
    if (!g_fonts) {
        g_fonts = new GiFonts;
        qAddPostRoutine(forgetFonts);
    }
    return g_fonts;
}

const GiFont *GiFonts::font(const Wish &wish)
{
    const std::string key = wish.family.toStdString() + (wish.bold ? "|b" : "|") + (wish.italic ? "i|" : "|")
        + std::to_string(wish.widthFactor) + "|" + std::to_string(wish.ideographScale);
    std::unique_ptr<GiFont> &font = m_fonts[key];
    if (font)
        return font.get();
    font = std::make_unique<GiFont>();
    font->m_ideographScale = wish.ideographScale;
    const QString families[] = {wish.family, QLatin1String(kSans), QLatin1String(kIdeographs)};
    for (const QString &family : families) {
        QFont request(family);
        request.setPixelSize(kOutlinePixels);
        request.setBold(wish.bold);
        request.setItalic(wish.italic);
        request.setHintingPreference(QFont::PreferNoHinting);
        GiFont::Face face;
        face.font = QRawFont::fromFont(request);
        if (!face.font.isValid())
            continue;
        const double capitals = face.font.capHeight();
        face.unit = 1.0 / (capitals > 0.0 ? capitals : kOutlinePixels * 0.72);
        face.widthFactor = font->m_faces.empty() ? wish.widthFactor : 1.0;
        font->m_faces.push_back(face);
    }
    if (font->m_faces.empty())
        font->m_faces.emplace_back(); // answers every character with nothing
    return font.get();
}

GiFonts::Wish GiFonts::wishForFamily(const QString &family, bool bold, bool italic) const
{
    Wish wish;
    wish.bold = bold;
    wish.italic = italic;
    wish.family = family;
    if (isInstalled(family))
        return wish;
    wish.family = QLatin1String(kSans);
    if (const Replacement *other
        = findReplacement(std::begin(kReplacements), std::end(kReplacements), family.toLower())) {
        wish.family = QLatin1String(other->family);
        wish.widthFactor = other->widthFactor;
    }
    return wish;
}

GiFonts::Wish GiFonts::wishFor(const GiTextStyle &style) const
{
    if (!style.typeface.isEmpty())
        return wishForFamily(toQString(style.typeface), style.bold, style.italic);
    QString file = toQString(style.fontFile).toLower();
    file = file.mid(std::max(file.lastIndexOf(QLatin1Char('/')), file.lastIndexOf(QLatin1Char('\\'))) + 1);
    const bool isTrueType = file.endsWith(QLatin1String(".ttf")) || file.endsWith(QLatin1String(".ttc"))
        || file.endsWith(QLatin1String(".otf"));
    const int dot = file.lastIndexOf(QLatin1Char('.'));
    const QString base = dot > 0 ? file.left(dot) : file;
    if (isTrueType) {
        const bool bold = style.bold || base.endsWith(QLatin1String("bd"));
        for (const FileFamily &entry : kFileFamilies) {
            if (base == QLatin1String(entry.file))
                return wishForFamily(QLatin1String(entry.family), bold, style.italic);
        }
        return wishForFamily(base, bold, style.italic);
    }
    Wish wish;
    wish.family = QLatin1String(kSans);
    wish.widthFactor = 0.88;
    // The ideographs of stroke fonts are as high as the capitals, those of outline fonts higher.
    wish.ideographScale = 0.82;
    if (const Replacement *other = findReplacement(std::begin(kStrokeFonts), std::end(kStrokeFonts), base)) {
        wish.family = QLatin1String(other->family);
        wish.widthFactor = other->widthFactor;
    }
    return wish;
}

const GiFont *GiFonts::fontFor(const GiTextStyle &style)
{
    return font(wishFor(style));
}

const GiFont *GiFonts::fontFor(const ZvString &family, bool bold, bool italic)
{
    return font(wishForFamily(toQString(family), bold, italic));
}

char32_t giControlCode(const wchar_t *code, int &length)
{
    length = 1;
    switch (std::towlower(wint_t(code[0]))) {
    case L'c':
        return 0x00D8; // diameter: the letter is in every font, the sign in few
    case L'd':
        return 0x00B0;
    case L'p':
        return 0x00B1;
    case L'%':
        return U'%';
    }
    if (std::iswdigit(wint_t(code[0])) && std::iswdigit(wint_t(code[1])) && std::iswdigit(wint_t(code[2]))) {
        length = 3;
        return char32_t((code[0] - L'0') * 100 + (code[1] - L'0') * 10 + (code[2] - L'0'));
    }
    return 0;
}

void giResolveControlCodes(const ZvString &text, std::vector<GiTextCharacter> &characters)
{
    GiTextCharacter current;
    const wchar_t *next = text.wstr();
    while (*next) {
        if (next[0] == L'%' && next[1] == L'%' && next[2]) {
            int length = 0;
            const char32_t code = giControlCode(next + 2, length);
            bool isSwitch = false;
            if (!code) {
                const wint_t letter = std::towlower(wint_t(next[2]));
                isSwitch = letter == L'u' || letter == L'o' || letter == L'k';
                current.underline ^= letter == L'u';
                current.overline ^= letter == L'o';
                current.strike ^= letter == L'k';
            }
            if (code || isSwitch) {
                current.character = code;
                if (code)
                    characters.push_back(current);
                next += 2 + length;
                continue;
            }
        }
        current.character = char32_t(*next++);
        characters.push_back(current);
    }
}

double giAdvance(const GiFont *font, char32_t character)
{
    return font ? font->glyph(character).advance : kBlankAdvance;
}

namespace {

/// Bars along the parts of a line that have a mark.
void addBars(const std::vector<GiTextCharacter> &characters, const std::vector<double> &edges,
             bool GiTextCharacter::*mark, double y, double height, const QTransform &place, GiTextLayout &layout)
{
    for (std::size_t i = 0; i < characters.size();) {
        if (!(characters[i].*mark)) {
            ++i;
            continue;
        }
        const std::size_t first = i;
        while (i < characters.size() && characters[i].*mark)
            ++i;
        GiTextLayout::Bar bar;
        bar.from = place.map(QPointF(edges[first], y));
        bar.to = place.map(QPointF(edges[i], y));
        bar.thickness = kBarThickness * height;
        layout.bars.push_back(bar);
    }
}

/// Characters one below the other, each in the middle of the column.
void layoutVertical(const std::vector<GiTextCharacter> &characters, const GiFont *font, double height,
                    double widthFactor, GiTextLayout &layout)
{
    constexpr double kStep = 1.5;
    double y = 0.0;
    for (const GiTextCharacter &character : characters) {
        y -= height;
        const double width = giAdvance(font, character.character) * height * widthFactor;
        if (font) {
            GiTextLayout::Piece piece;
            piece.glyph = &font->glyph(character.character);
            piece.place = QTransform(height * widthFactor, 0, 0, height, -width / 2, y);
            layout.pieces.push_back(piece);
        }
        y -= height * (kStep - 1.0);
    }
    layout.lines.emplace_back(0.0, 0.0, 0.0, y);
    layout.box = QRectF(-height / 2, y, height, -y);
}

} // namespace

void giLayoutText(const ZvGiText &text, const GiTextStyle &style, GiTextLayout &layout)
{
    std::vector<GiTextCharacter> characters;
    giResolveControlCodes(text.text, characters);
    GiFonts *fonts = GiFonts::instance();
    const GiFont *font = fonts ? fonts->fontFor(style) : nullptr;
    double height = text.height;
    double widthFactor = text.widthFactor > 0.0 ? text.widthFactor : 1.0;
    if (style.vertical) {
        layoutVertical(characters, font, height, widthFactor, layout);
        return;
    }

    std::vector<double> edges{0.0};
    for (const GiTextCharacter &character : characters)
        edges.push_back(edges.back() + giAdvance(font, character.character));
    const double natural = edges.back();
    const double room = text.position.distanceTo(text.secondPosition);
    if (natural > 0.0 && room > 0.0) {
        if (text.horizontal == ZvGiText::kAligned)
            height = room / (natural * widthFactor);
        else if (text.horizontal == ZvGiText::kFit)
            widthFactor = room / (natural * height);
    }
    const double width = natural * height * widthFactor;

    double x = 0.0;
    double y = 0.0;
    switch (text.horizontal) {
    case ZvGiText::kCenter:
        x = -width / 2;
        break;
    case ZvGiText::kMiddle:
        x = -width / 2;
        y = -height / 2;
        break;
    case ZvGiText::kRight:
        x = -width;
        break;
    case ZvGiText::kLeft:
    case ZvGiText::kAligned:
    case ZvGiText::kFit:
        break;
    }
    if (text.horizontal != ZvGiText::kMiddle) {
        if (text.vertical == ZvGiText::kBottom)
            y = height * kDescent;
        else if (text.vertical == ZvGiText::kVMiddle)
            y = -height / 2;
        else if (text.vertical == ZvGiText::kTop)
            y = -height;
    }

    // From the line's own units (capitals are 1 high, it starts at 0) to drawing units around the position. A text that
    // runs backward or upside down is turned over within its own box.
    QTransform line(height * widthFactor, 0, 0, height, x, y);
    if (text.backward)
        line = QTransform(-1, 0, 0, 1, natural, 0) * line;
    if (text.upsideDown)
        line = QTransform(1, 0, 0, -1, 0, 1) * line;
    const double slant = std::clamp(text.oblique, -1.4, 1.4);
    const QTransform shear(1, 0, std::tan(slant) / widthFactor, 1, 0, 0);
    for (std::size_t i = 0; font && i < characters.size(); ++i) {
        const GiGlyph &glyph = font->glyph(characters[i].character);
        if (glyph.path.isEmpty())
            continue;
        GiTextLayout::Piece piece;
        piece.glyph = &glyph;
        piece.place = shear * QTransform::fromTranslate(edges[i], 0) * line;
        layout.pieces.push_back(piece);
    }
    addBars(characters, edges, &GiTextCharacter::underline, -kUnderlineDrop, height, line, layout);
    addBars(characters, edges, &GiTextCharacter::overline, kOverlineRise, height, line, layout);
    addBars(characters, edges, &GiTextCharacter::strike, kStrikeRise, height, line, layout);
    layout.lines.emplace_back(x, y + height / 2, x + width, y + height / 2);
    layout.box = QRectF(x, y - height * kDescent, width, height * (1.0 + kDescent));
}
