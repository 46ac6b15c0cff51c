// SPDX-License-Identifier: MIT
#include "gi_shapes.h"

#include "base/zvconfig.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr std::size_t kLongestTitle = 64;
constexpr qint64 kLargestFile = 16 << 20; // bytes
constexpr std::size_t kMostFiles = 64;
constexpr int kDeepest = 8; // shapes within shapes
constexpr std::size_t kDeepestStack = 16;
constexpr int kMostSteps = 20000; // of one shape, those within it counted in
constexpr double kChord = kPi / 32; // of arcs
constexpr double kLargest = 1e6; // coordinates beyond are nobody's intention

std::size_t byteAt(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? std::uint8_t(bytes[at]) : 0;
}

std::size_t wordAt(std::string_view bytes, std::size_t at)
{
    return byteAt(bytes, at) | byteAt(bytes, at + 1) << 8;
}

std::string_view part(std::string_view bytes, std::size_t at, std::size_t length)
{
    return at <= bytes.size() ? bytes.substr(at, length) : std::string_view();
}

QString toQString(const ZvString &text)
{
    return QString::fromWCharArray(text.wstr(), text.length());
}

/// Without its folder, which is one of the machine that the drawing was made on.
QString bareName(const ZvString &fileName)
{
    const QString name = toQString(fileName);
    return name.mid(std::max(name.lastIndexOf(QLatin1Char('/')), name.lastIndexOf(QLatin1Char('\\'))) + 1);
}

void finish(GiShape &shape)
{
    double left = 0.0, right = 0.0, bottom = 0.0, top = 0.0;
    bool isFirst = true;
    for (const auto &stroke : shape.strokes) {
        for (const QPointF &p : stroke) {
            left = isFirst ? p.x() : std::min(left, p.x());
            right = isFirst ? p.x() : std::max(right, p.x());
            bottom = isFirst ? p.y() : std::min(bottom, p.y());
            top = isFirst ? p.y() : std::max(top, p.y());
            isFirst = false;
        }
    }
    shape.box = QRectF(QPointF(left, bottom), QPointF(right, top));
}

} // namespace

// ---- what a shape's code draws

/// Goes through the codes of a shape with a pen.
class GiShapeReader
{
public:
    GiShapeReader(const GiShapeFile &file, GiShape &shape) : m_file(file), m_shape(shape) { }

    void run(int number)
    {
        const auto found = m_file.m_codes.find(number);
        if (found == m_file.m_codes.end() || m_depth >= kDeepest)
            return;
        ++m_depth;
        const std::string_view callers = m_codes;
        const std::size_t back = m_at;
        m_codes = found->second;
        m_at = 0;
        while (m_at < m_codes.size() && step()) { }
        m_codes = callers;
        m_at = back;
        --m_depth;
    }
    void dropDots()
    {
        m_shape.strokes.erase(std::remove_if(m_shape.strokes.begin(), m_shape.strokes.end(),
                                             [](const auto &stroke) { return stroke.size() < 2; }),
                              m_shape.strokes.end());
    }

private:
    enum Code {
        kEnd,
        kPenDown,
        kPenUp,
        kDivide,
        kMultiply,
        kPush,
        kPop,
        kSubshape,
        kMove,
        kMoves,
        kOctantArc,
        kFractionalArc,
        kBulgeArc,
        kBulgeArcs,
        kIfVertical,
        kFirstVector = 16 // length above, direction below
    };

    /// False at the end of the shape.
    bool step()
    {
        if (++m_steps > kMostSteps)
            return false;
        const int code = next();
        // For texts that run downwards, which line types have none of: the code after it is passed over.
        if (code == kIfVertical && !m_isSkipping) {
            m_isSkipping = true;
            const bool goesOn = step();
            m_isSkipping = false;
            return goesOn;
        }
        return code >= kFirstVector ? (vector(code), true) : special(code);
    }
    bool special(int code)
    {
        switch (code) {
        case kEnd:
            return m_isSkipping;
        case kPenDown:
        case kPenUp:
            if (!m_isSkipping)
                m_isDown = code == kPenDown;
            m_isBroken = true;
            return true;
        case kDivide:
        case kMultiply:
            scale(code, next());
            return true;
        case kPush:
        case kPop:
            stack(code);
            return true;
        case kSubshape:
            subshape();
            return true;
        case kMove: {
            const double x = nextSigned();
            lineTo(x, nextSigned());
            return true;
        }
        case kMoves:
            return each([this](double x, double y) { lineTo(x, y); });
        case kOctantArc: {
            const double radius = next();
            octants(radius, 0.0, 0.0, nextSigned());
            return true;
        }
        case kFractionalArc: {
            const double start = next();
            const double end = next();
            const double radius = nextWord();
            octants(radius, start, end, nextSigned());
            return true;
        }
        case kBulgeArc: {
            const double x = nextSigned();
            const double y = nextSigned();
            bulge(x, y, nextSigned());
            return true;
        }
        case kBulgeArcs:
            return each([this](double x, double y) { bulge(x, y, nextSigned()); });
        default: // none of the codes has another number
            return true;
        }
    }

    int next() { return int(byteAt(m_codes, m_at++)); }
    /// The higher byte first.
    int nextWord()
    {
        const int high = next();
        return high << 8 | next();
    }
    int nextSigned() { return std::int8_t(next()); }

    /// Pairs up to one of zeros.
    template <class Act> bool each(Act act)
    {
        while (m_at < m_codes.size() && ++m_steps <= kMostSteps) {
            const double x = nextSigned();
            const double y = nextSigned();
            if (x == 0.0 && y == 0.0)
                return true;
            act(x, y);
        }
        return false;
    }

    void scale(int code, int factor)
    {
        if (m_isSkipping || factor == 0)
            return;
        const double wanted = code == kDivide ? m_scale / factor : m_scale * factor;
        if (wanted > 1.0 / kLargest && wanted < kLargest)
            m_scale = wanted;
    }

    void stack(int code)
    {
        if (m_isSkipping)
            return;
        if (code == kPush) {
            if (m_stack.size() < kDeepestStack)
                m_stack.push_back(m_place);
        } else if (!m_stack.empty()) {
            m_place = m_stack.back();
            m_stack.pop_back();
            m_isBroken = true;
        }
    }

    void subshape()
    {
        const bool isWide = m_file.m_kind == GiShapeFile::Kind::kUniFont;
        const int number = isWide ? nextWord() : next();
        if (m_file.m_kind == GiShapeFile::Kind::kBigFont && number == 0)
            placedSubshape();
        else if (!m_isSkipping)
            run(number);
    }
    /// Part of a character of a big font: within a box of its own.
    void placedSubshape()
    {
        const int number = nextWord();
        const double x = nextSigned();
        const double y = nextSigned();
        const double width = next();
        const double height = next();
        if (m_isSkipping || !(width > 0.0) || !(height > 0.0))
            return;
        const double unit = m_file.m_height > 0.0 ? m_file.m_height : height;
        const QPointF place = m_place;
        const double scaleX = m_scaleX;
        const double before = m_scale;
        m_place += QPointF(x * m_scale * m_scaleX, y * m_scale);
        m_scale *= height / unit;
        m_scaleX *= width / height;
        m_isBroken = true;
        run(number);
        m_scale = before;
        m_scaleX = scaleX;
        m_place = place;
        m_isBroken = true;
    }

    void vector(int code)
    {
        static const double kDirections[16][2] = {
            {1, 0},  {1, 0.5},   {1, 1},   {0.5, 1},   {0, 1},  {-0.5, 1}, {-1, 1}, {-1, 0.5},
            {-1, 0}, {-1, -0.5}, {-1, -1}, {-0.5, -1}, {0, -1}, {0.5, -1}, {1, -1}, {1, -0.5},
        };
        const double length = code >> 4;
        const double *direction = kDirections[code & 15];
        lineTo(length * direction[0], length * direction[1]);
    }

    void lineTo(double x, double y)
    {
        if (!m_isSkipping)
            go(m_place + QPointF(x * m_scale * m_scaleX, y * m_scale));
    }
    void go(const QPointF &to)
    {
        const QPointF from = m_place;
        m_place = QPointF(std::clamp(to.x(), -kLargest, kLargest), std::clamp(to.y(), -kLargest, kLargest));
        if (!m_isDown)
            return;
        if (m_isBroken || m_shape.strokes.empty())
            m_shape.strokes.push_back({from});
        m_isBroken = false;
        m_shape.strokes.back().push_back(m_place);
    }

    /// From an eighth of the circle on over some eighths, clockwise below 0. \a start and \a end are 256ths of an
    /// eighth by which the arc begins late and goes into its last one.
    void octants(double radius, double start, double end, int octants)
    {
        if (m_isSkipping || !(radius > 0.0))
            return;
        const double turn = octants < 0 ? -1.0 : 1.0;
        const int bits = std::abs(octants);
        const int first = bits >> 4 & 7;
        const int count = (bits & 7) == 0 ? 8 : bits & 7;
        constexpr double kOctant = kPi / 4;
        const double from = first * kOctant + turn * start / 256 * kOctant;
        const double last = end != 0.0 ? count - 1 + end / 256 : count;
        const double to = first * kOctant + turn * last * kOctant;
        arc(radius * m_scale, from, to - from);
    }
    void bulge(double x, double y, int bulge)
    {
        if (m_isSkipping)
            return;
        const double chord = std::hypot(x, y);
        if (bulge == 0 || chord == 0.0) {
            lineTo(x, y);
            return;
        }
        const double sweep = 4.0 * std::atan(bulge / 127.0);
        const double radius = chord / (2.0 * std::sin(std::abs(sweep) / 2.0));
        const double turn = sweep < 0.0 ? -1.0 : 1.0;
        const QPointF end = m_place + QPointF(x * m_scale * m_scaleX, y * m_scale);
        arc(radius * m_scale, std::atan2(y, x) - turn * kPi / 2 - sweep / 2, sweep);
        // Exactly there: shapes are made of many arcs.
        m_place = end;
        if (m_isDown && !m_shape.strokes.empty())
            m_shape.strokes.back().back() = end;
    }
    /// From the pen's place, which lies at angle \a from on the circle.
    void arc(double radius, double from, double sweep)
    {
        const auto at = [radius, this](double angle) {
            return QPointF(radius * std::cos(angle) * m_scaleX, radius * std::sin(angle));
        };
        const QPointF center = m_place - at(from);
        const int count = std::max(1, int(std::ceil(std::abs(sweep) / kChord - 1e-9)));
        m_steps += count;
        for (int i = 1; i <= count; ++i)
            go(center + at(from + sweep * i / count));
    }

    const GiShapeFile &m_file;
    GiShape &m_shape;
    std::string_view m_codes;
    std::size_t m_at = 0;
    int m_depth = 0;
    int m_steps = 0;
    bool m_isSkipping = false;
    bool m_isDown = true;
    bool m_isBroken = true; ///< What comes next begins a stroke.
    double m_scale = 1.0;
    double m_scaleX = 1.0; ///< On top of it.
    QPointF m_place;
    std::vector<QPointF> m_stack;
};

// ---- files

GiShapeFile::GiShapeFile(std::string_view bytes) : m_bytes(bytes)
{
    const std::string_view all = m_bytes;
    const std::size_t end = all.substr(0, kLongestTitle).find('\x1A');
    if (end == std::string_view::npos)
        return;
    const std::string_view title = all.substr(0, end);
    const auto says = [title](const char *word) { return title.find(word) != std::string_view::npos; };
    const std::string_view content = all.substr(end + 1);
    if (says("unifont"))
        readUniFont(content);
    else if (says("bigfont"))
        readBigFont(content);
    else if (says("shapes"))
        readShapes(content);
}

/// The lowest number, the highest, how many there are; for each its number and size; then the shapes.
void GiShapeFile::readShapes(std::string_view bytes)
{
    const std::size_t count = wordAt(bytes, 4);
    std::size_t entry = 6;
    std::size_t data = entry + count * 4;
    for (std::size_t i = 0; i < count && data < bytes.size(); ++i, entry += 4) {
        const std::size_t size = wordAt(bytes, entry + 2);
        add(wordAt(bytes, entry), part(bytes, data, size));
        data += size;
    }
}

/// How many there are; for each its number, size and what it is.
void GiShapeFile::readUniFont(std::string_view bytes)
{
    m_kind = Kind::kUniFont;
    const std::size_t count = wordAt(bytes, 0);
    std::size_t at = 2;
    for (std::size_t i = 0; i < count && at < bytes.size(); ++i) {
        const std::size_t size = wordAt(bytes, at + 2);
        add(wordAt(bytes, at), part(bytes, at + 4, size));
        at += 4 + size;
    }
}

/// The size of an entry, how many there are, the number of ranges and the ranges; for each shape its number, size and
/// place in the file.
void GiShapeFile::readBigFont(std::string_view bytes)
{
    m_kind = Kind::kBigFont;
    constexpr std::size_t kEntry = 8;
    const std::size_t count = wordAt(bytes, 2);
    std::size_t at = 6 + wordAt(bytes, 4) * 4;
    for (std::size_t i = 0; i < count && at + kEntry <= bytes.size(); ++i, at += kEntry) {
        const std::size_t number = wordAt(bytes, at);
        const std::size_t place = wordAt(bytes, at + 4) | wordAt(bytes, at + 6) << 16;
        const std::string_view data = part(m_bytes, place, wordAt(bytes, at + 2));
        if (number == 0)
            m_height = double(byteAt(data, data.find('\0') + 1));
        else
            add(number, data);
    }
}

/// Number 0 tells of the whole file as a font, and is no shape.
void GiShapeFile::add(std::size_t number, std::string_view data)
{
    const std::size_t name = data.find('\0');
    if (number != 0 && name != std::string_view::npos)
        m_codes.emplace(int(number), data.substr(name + 1));
}

const GiShape *GiShapeFile::shape(int number) const
{
    if (m_codes.find(number) == m_codes.end())
        return nullptr;
    const auto [found, isNew] = m_shapes.try_emplace(number);
    GiShape &shape = found->second;
    if (isNew) {
        GiShapeReader reader(*this, shape);
        reader.run(number);
        reader.dropDots();
        finish(shape);
    }
    return shape.strokes.empty() ? nullptr : &shape;
}

GiShapeFiles &GiShapeFiles::instance()
{
    static GiShapeFiles files;
    return files;
}

GiFoundShapeFile giFindShapeFile(const ZvDbDatabase &database, const ZvString &fileName)
{
    QString name = bareName(fileName);
    if (name.isEmpty())
        return {};
    if (!name.contains(QLatin1Char('.')))
        name += QLatin1String(".shx");
    QStringList folders;
    if (!database.fileName().isEmpty())
        folders << QFileInfo(toQString(database.fileName())).path();
    ZvArray<ZvUtf8String> support;
    zvutEnumPaths(zv_runtime_config("paths/supportPaths"), support);
    for (const ZvUtf8String &folder : support)
        folders << QString::fromUtf8(folder.c_str());
    for (const QString &folder : qAsConst(folders)) {
        for (const QString &spelling : {name, name.toLower(), name.toUpper()}) {
            const QFileInfo info(folder + QLatin1Char('/') + spelling);
            if (info.isFile())
                return {info.filePath(), info.lastModified(), info.size()};
        }
    }
    return {};
}

std::shared_ptr<const GiShapeFile> GiShapeFiles::read(const GiFoundShapeFile &found)
{
    if (found.path.isEmpty() || found.size > kLargestFile)
        return nullptr;
    const auto kept = m_files.find(found.path);
    if (kept != m_files.end() && kept->second.first.written == found.written && kept->second.first.size == found.size)
        return kept->second.second;
    QFile file(found.path);
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    const QByteArray bytes = file.read(kLargestFile);
    if (m_files.size() >= kMostFiles)
        m_files.clear();
    const auto shapes
        = std::make_shared<const GiShapeFile>(std::string_view(bytes.constData(), std::size_t(bytes.size())));
    m_files[found.path] = {found, shapes};
    return shapes;
}

// ---- shapes of our own

namespace {

/// From \a first over a circle, counterclockwise, in degrees.
void addArc(std::vector<QPointF> &stroke, const QPointF &center, double radius, double first, double sweep)
{
    const int count = int(std::ceil(std::abs(sweep) * kPi / 180.0 / kChord));
    for (int i = 0; i <= count; ++i) {
        const double angle = (first + sweep * i / count) * kPi / 180.0;
        stroke.push_back(center + radius * QPointF(std::cos(angle), std::sin(angle)));
    }
}

GiShape makeUsual(int number)
{
    GiShape shape;
    std::vector<QPointF> stroke;
    switch (number) {
    case 130: // a sleeper across the track
        stroke = {{0, -1}, {0, 1}};
        break;
    case 131: // one tooth of a zigzag
        stroke = {{0, 0}, {1, 1}, {2, 0}};
        break;
    case 132: // a square
        stroke = {{0, -1}, {2, -1}, {2, 1}, {0, 1}, {0, -1}};
        break;
    case 133: // a circle
        addArc(stroke, {1, 0}, 1, 180, 360);
        break;
    case 134: // a loop of batting, with a narrow foot
        stroke.push_back({0, 0});
        addArc(stroke, {1, 1}, 1.2, 190, -200);
        stroke.push_back({2, 0});
        break;
    default:
        return shape;
    }
    shape.strokes.push_back(stroke);
    finish(shape);
    return shape;
}

} // namespace

const GiShape *giUsualShape(const ZvString &fileName, int number)
{
    constexpr int kFirst = 130;
    constexpr int kLast = 134;
    static const std::vector<GiShape> shapes = [] {
        std::vector<GiShape> made;
        for (int usual = kFirst; usual <= kLast; ++usual)
            made.push_back(makeUsual(usual));
        return made;
    }();
    const QString name = bareName(fileName);
    if (number < kFirst || number > kLast
        || name.section(QLatin1Char('.'), 0, 0).compare(QLatin1String("ltypeshp"), Qt::CaseInsensitive) != 0)
        return nullptr;
    return &shapes[std::size_t(number - kFirst)];
}
