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
        resolved, and so are the control codes (decodeControls). What cannot be read becomes U+FFFD each, and \a bad,
       when given, is set to true (never to false). A text that a file spreads over several tags is joined before it is
       decoded, since characters and escapes may be cut in two. */
    std::string decode(std::string_view bytes, bool *bad = nullptr) const;

    /*! The bytes to put into a file, all on one line: the way back of decode(). Control characters and carets are
       written as control codes (encodeControls), characters the code page does not have as `\U+XXXX` (two of them
       beyond U+FFFF). */
    std::string encode(std::string_view utf8) const;

    /*! The same in pieces of at most \a maxBytes (at least 16), for texts that a file spreads over several tags. No
       piece ends within a character or an escape. At least one piece, which is empty for an empty text. */
    std::vector<std::string> encodePieces(std::string_view utf8, std::size_t maxBytes) const;

    /*! Whether encode() writes UTF-8 and so never needs `\U+XXXX`. */
    bool isUtf8() const;

    /*! The declared code page in the spelling of the file format, "ANSI_1252" where none was usable. */
    const std::string &codePage() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/*! Whether the bytes above 0x7F in \a bytes are UTF-8, but for a few in a hundred, and at least one sequence is
   unlikely to be anything else: for a single-byte \a codePage any, for a double-byte one (932, 936, 949, 950, 1361) one
   of three or four bytes, since two bytes are too often a character there. */
bool looksLikeUtf8(std::string_view bytes, std::string_view codePage);

/*! `^I`, `^J`, `^M` to tab, line feed and carriage return, `^ ` (caret, blank) to a caret; a caret before anything else
    stays. For UTF-8: in some code pages a caret may be half of a character. */
std::string decodeControls(std::string_view text);

/*! The way back. Other control characters become `\U+XXXX`, a zero byte is left out. */
std::string encodeControls(std::string_view text);

/*! A piece of text drawn in one way. */
struct TextRun
{
    std::string text; //!< UTF-8
    bool underline = false;
    bool overline = false;
    bool strike = false;
};

/*! Resolves the codes of single-line text in UTF-8: `%%c` diameter sign (U+00D8, which every font has), `%%d` degree
   sign, `%%p` plus-minus sign,
   `%%u`
    `%%o` `%%k` underline, overline and strike-through on or off, `%%nnn` the character of that decimal number, `%%%` a
   per cent sign. Letters of either case. Anything else after `%%` stays as it is. Neighbouring runs differ in their
   flags; an empty text gives no run. Display only: the drawing keeps the codes. */
std::vector<TextRun> decodeTextCodes(std::string_view utf8);

/*! The texts of decodeTextCodes() joined. */
std::string plainText(std::string_view utf8);

} // namespace zvdxf
