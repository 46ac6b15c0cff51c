// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/*! The tag store: drawing files as they stand on disk. It knows group codes, values, records and sections, and nothing
   of what they mean to a drawing. Nothing is thrown away and nothing is interpreted before somebody asks, so that what
   the database above does not understand is written back as it was read. Standard library only. */
namespace zvdxf {

/*! A group code and where its value stands in the file. In an ASCII file the value is the value line without its line
   end (leading and trailing blanks included); in a binary one it is the payload: the bytes of the number, the text
   without its terminating zero, or the chunk without its length byte. Read the value through Store or RecordView, which
   know which. */
struct Tag
{
    std::uint32_t offset; //!< of the value's first byte in the store's buffer
    std::uint32_t length; //!< of the value in bytes
    std::int16_t code; //!< -5..1071
};

/*! A tag that is not, or no longer, the file's own. */
struct OwnedTag
{
    static constexpr std::uint32_t noSource = 0xFFFFFFFFu;

    int code = 0;
    /*! The value as an ASCII file has it, whatever the file: text in the file's encoding (TextCodec::encode), numbers
       in decimal (formatReal, formatInteger), handles and binary chunks in hexadecimal. Holds no line end. */
    std::string value;
    /*! Offset of the equal value in the source file where the tag stands unchanged there, so that the writer copies it
       with its blanks and line end; noSource otherwise. Whoever changes the value sets it to noSource. */
    std::uint32_t source = noSource;
};

/*! A value without the blanks and tabs (and carriage returns) around it. */
std::string_view trimmed(std::string_view value);

/*! A value with its line ends as `^J` and `^M`, which is how a value on one line holds them. */
std::string oneLine(std::string_view value);

/*! How a group code's value is written. */
enum class ValueKind : std::uint8_t {
    Text, //!< any line of text; names, strings
    Real, //!< double
    Int16,
    Int32,
    Int64,
    Byte, //!< 0 or 1 (codes 290-299)
    Handle, //!< hexadecimal number as text (5, 105, 320-369, 390-399, 480-481, 1005)
    Chunk //!< binary data: hexadecimal in ASCII, length byte and bytes in binary (310-319, 1004)
};

/*! The kind of a group code's value; Text for codes that are in no range. */
ValueKind valueKind(int code);

/*! Whether the code can stand in a drawing file: -5..1071. */
constexpr bool isGroupCode(long code)
{
    return code >= -5 && code <= 1071;
}

enum class SectionKind : std::uint8_t {
    None, //!< before the first section, between two, after the last
    Header,
    Classes,
    Tables,
    Blocks,
    Entities,
    Objects,
    Thumbnail, //!< THUMBNAILIMAGE
    Data, //!< ACDSDATA
    Other //!< a section of a name that is in no table; kept like all others
};

/*! The kind of a section by its name as in `2 HEADER`; Other when unknown. */
SectionKind sectionKind(std::string_view name);

} // namespace zvdxf
