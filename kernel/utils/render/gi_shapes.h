// SPDX-License-Identifier: MIT
#ifndef GI_SHAPES_H
#define GI_SHAPES_H

#include "base/zvstring.h"
#include "db/zvdbdatabase.h"

#include <QDateTime>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// What a shape draws, in the units of its file: x along the line, y up.
struct GiShape
{
    std::vector<std::vector<QPointF>> strokes;
    QRectF box; ///< y up: top() is the lower edge.
};

/// The shapes of a compiled shape file. Files are written by others: whatever is in the bytes, reading ends soon and
/// takes little memory.
class GiShapeFile
{
public:
    /// Without shapes where the bytes are no shape file; with those that are whole where they end early.
    explicit GiShapeFile(std::string_view bytes);
    GiShapeFile(const GiShapeFile &) = delete;
    GiShapeFile &operator=(const GiShapeFile &) = delete;
    /// Null where the file has no such shape or nothing is drawn for it.
    const GiShape *shape(int number) const;

private:
    enum class Kind { kShapes, kUniFont, kBigFont };
    friend class GiShapeReader;

    void readShapes(std::string_view bytes);
    void readUniFont(std::string_view bytes);
    void readBigFont(std::string_view bytes);
    void add(std::size_t number, std::string_view data);

    const std::string m_bytes;
    Kind m_kind = Kind::kShapes;
    double m_height = 0.0; ///< Of a big font's characters, 0 where it is not told.
    std::map<int, std::string_view> m_codes; ///< Without their names.
    mutable std::map<int, GiShape> m_shapes; ///< Those asked for so far.
};

/// A file as it is on the disk now; an empty path for none.
struct GiFoundShapeFile
{
    QString path;
    QDateTime written;
    qint64 size = 0;
};

/// Looked for beside the drawing, then in the folders of the settings ("paths/supportPaths"), in the spelling of the
/// name, in small and in capital letters.
GiFoundShapeFile giFindShapeFile(const ZvDbDatabase &database, const ZvString &fileName);

/// The shape files read last.
class GiShapeFiles
{
public:
    static GiShapeFiles &instance();
    /// Null where it cannot be read.
    std::shared_ptr<const GiShapeFile> read(const GiFoundShapeFile &found);

private:
    std::map<QString, std::pair<GiFoundShapeFile, std::shared_ptr<const GiShapeFile>>> m_files; // by path
};

/// A shape of our own for one of the usual five in the file that line types name most, by its number there: track, zig,
/// box, circle and bat. Null for another file or number.
const GiShape *giUsualShape(const ZvString &fileName, int number);

#endif
