// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/*! Text of drawing files: from the file's bytes to UTF-8 and back, and the codes inside of text. */
namespace zvdxf {

/*! Turns the bytes of one file's texts to UTF-8 and back. Pure ASCII without escapes, nearly all of most files, is
   copied as it is. One codec serves one thread at a time; a copy is independent of its original. */
class TextCodec
{
public:
    /*! UTF-8, as in drawings since version AC1021. */
    TextCodec();

    /*! \a version is $ACADVER ("AC1015"; empty as in files without one counts as the oldest), \a codePage is
       $DWGCODEPAGE
        ("ANSI_936", "dos850"; empty, "ASCII", "UNDEFINED" and names nobody knows count as ANSI_1252).
        From AC1021 on text is UTF-8, and the code page serves only bytes that are no UTF-8. Before, text is in the code
       page. \a looksUtf8 says that the file's bytes are valid multi-byte UTF-8 throughout (see looksLikeUtf8), which
       then wins over what is declared. */
    TextCodec(std::string_view version, std::string_view codePage, bool looksUtf8 = false);
    TextCodec(const TextCodec &other);
    TextCodec(TextCodec &&other) noexcept;
    TextCodec &operator=(const TextCodec &other);
    TextCodec &operator=(TextCodec &&other) noexcept;
    ~TextCodec();

    /*! The text in UTF-8, always valid. The escapes `\U+XXXX` (a surrogate pair gives one character) and `\M+nXXXX` are
        resolved. What cannot be read becomes U+FFFD each, and \a bad, when given, is set to true (never to false). */
    std::string decode(std::string_view bytes, bool *bad = nullptr) const;

    /*! The bytes to put into a file. Characters the code page does not have become `\U+XXXX` (two of them beyond
       U+FFFF). Line ends and other control characters are written `^J`, `^M`, `^I` ..., since a value is one line; a
       `^` of the text itself is left alone, as decode() leaves it (see encodeControls). */
    std::string encode(std::string_view utf8) const;

    /*! Whether encode() writes UTF-8 and so never needs `\U+XXXX`. */
    bool isUtf8() const;

    /*! The declared code page in the spelling of the file format, "ANSI_1252" where none was usable. */
    const std::string &codePage() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/*! Whether all bytes above 0x7F in \a bytes form valid UTF-8 sequences and there is at least one that is unlikely to be
    anything else: for a single-byte \a codePage any sequence, for a double-byte one (932, 936, 949, 950, 1361) a
   sequence of three or four bytes, since two bytes are too often a character there. */
bool looksLikeUtf8(std::string_view bytes, std::string_view codePage);

/*! `^J`, `^M`, `^I` and so on to the control characters, `^ ` (caret, blank) to a caret. Works on UTF-8 and on file
   bytes of any code page whose second bytes are no carets. */
std::string decodeControls(std::string_view text);

/*! The way back: control characters become `^` and a letter, a caret becomes `^ `. */
std::string encodeControls(std::string_view text);

/*! A piece of text drawn in one way. */
struct TextRun
{
    std::string text; //!< UTF-8
    bool underline = false;
    bool overline = false;
    bool strike = false;
};

/*! Resolves the codes of single-line text in UTF-8: `%%c` diameter sign, `%%d` degree sign, `%%p` plus-minus sign,
   `%%u`
    `%%o` `%%k` underline, overline and strike-through on or off, `%%nnn` the character of that decimal number, `%%%` a
   per cent sign. Letters of either case. Anything else after `%%` stays as it is. Neighbouring runs differ in their
   flags; an empty text gives no run. Display only: the drawing keeps the codes. */
std::vector<TextRun> decodeTextCodes(std::string_view utf8);

/*! The texts of decodeTextCodes() joined. */
std::string plainText(std::string_view utf8);

} // namespace zvdxf
