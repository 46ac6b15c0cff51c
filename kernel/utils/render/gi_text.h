// SPDX-License-Identifier: MIT
#ifndef GI_TEXT_H
#define GI_TEXT_H

#include "base/zvstring.h"
#include "db/zvgiworlddraw.h"
#include "gi_styles.h"

#include <QPainterPath>
#include <QRawFont>
#include <QTransform>

#include <memory>
#include <unordered_map>
#include <vector>

/// Outline and advance of a character; the unit is the height of the capitals.
struct GiGlyph
{
    QPainterPath path; ///< y up, the base line at 0.
    double advance = 0.0;
};

/// A font for texts: a first choice, and others for the characters that it lacks.
class GiFont
{
public:
    const GiGlyph &glyph(char32_t character) const;

private:
    friend class GiFonts;
    struct Face
    {
        QRawFont font;
        double unit = 1.0; ///< From the font's units to capital heights.
        double widthFactor = 1.0;
    };
    std::vector<Face> m_faces;
    double m_ideographScale = 1.0;
    mutable std::unordered_map<char32_t, GiGlyph> m_glyphs;
};

/// All fonts in use, kept for the life of the application object.
class GiFonts
{
public:
    /// Null without a graphical application object: there are no fonts then.
    static GiFonts *instance();
    /// The font that stands for a style. Never null.
    const GiFont *fontFor(const GiTextStyle &style);
    /// The font that stands for a TrueType family. Never null.
    const GiFont *fontFor(const ZvString &family, bool bold, bool italic);

private:
    struct Wish
    {
        QString family;
        bool bold = false;
        bool italic = false;
        double widthFactor = 1.0;
        double ideographScale = 1.0;
    };
    const GiFont *font(const Wish &wish);
    Wish wishFor(const GiTextStyle &style) const;
    Wish wishForFamily(const QString &family, bool bold, bool italic) const;

    std::unordered_map<std::string, std::unique_ptr<GiFont>> m_fonts;
};

/// What layout makes of a text: outlines and bars, in the units of the drawing, with the text's position at the origin,
/// x along the base line and y up.
struct GiTextLayout
{
    struct Piece
    {
        const GiGlyph *glyph = nullptr;
        QTransform place; ///< From the glyph's units.
        bool hasColor = false;
        ZvCmColor color;
    };
    struct Bar
    {
        QPointF from;
        QPointF to;
        double thickness = 0.0;
        bool hasColor = false;
        ZvCmColor color;
    };
    std::vector<Piece> pieces;
    std::vector<Bar> bars;
    /// For a text that is too small to be read: a line for each line of text.
    std::vector<QLineF> lines;
    QRectF box; ///< y up: top() is the lower edge.
};

/// Lays out one line. Without fonts every character is a blank of ordinary width. The layout's x axis is the text's
/// direction; for kAligned and kFit the distance to the second position is respected.
void giLayoutText(const ZvGiText &text, const GiTextStyle &style, GiTextLayout &layout);
/// Lays out a block of formatted text.
void giLayoutMText(const ZvGiMText &text, const GiTextStyle &style, GiTextLayout &layout);

/// A character of a text with its control codes resolved.
struct GiTextCharacter
{
    char32_t character = 0;
    bool underline = false;
    bool overline = false;
    bool strike = false;
};
/// Resolves %%c, %%d, %%p, %%u, %%o, %%k, %%% and %%nnn.
void giResolveControlCodes(const ZvString &text, std::vector<GiTextCharacter> &characters);
/// The character that a code after "%%" stands for, 0 for none; \a length is how many characters the code has.
char32_t giControlCode(const wchar_t *code, int &length);

/// Advance of a character, also without fonts.
double giAdvance(const GiFont *font, char32_t character);
/// Ideographs, their punctuation and full-width forms: lines may break before and after.
bool giIsIdeograph(char32_t character);

#endif
