// SPDX-License-Identifier: MIT
#ifndef RECORD_CURSOR_H
#define RECORD_CURSOR_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

/// Finds the tags that belong to a field: those of the subclass block at hand that no earlier field has taken. Groups
/// of applications (102), extended data, and what stands before the first marker belong to no field.
///
/// \a Tags gives the record: size(), code(i) and value(i), the latter for text codes only.
template <class Tags> class RecordCursor
{
public:
    static constexpr std::size_t npos = std::size_t(-1);

    explicit RecordCursor(const Tags &tags) : m_tags(tags) { }

    /// To be called when the record is another one.
    void reset()
    {
        const std::size_t size = m_tags.size();
        m_taken.assign(size, 0);
        m_markers.clear();
        m_entered.clear();
        m_bodyEnd = size;
        for (std::size_t i = 0; i < size; ++i) {
            const int code = m_tags.code(i);
            if (code == 100 || code == 101) {
                m_markers.push_back(i);
            } else if (code == 102) {
                i = passGroup(i);
            } else if (code >= 1000) {
                m_bodyEnd = i;
                break;
            }
        }
        m_first = m_cursor = size > 0 ? 1 : 0;
        m_last = m_markers.empty() ? m_bodyEnd : m_markers.front();
        m_marker = nullptr;
    }

    bool hasMarker(std::string_view marker) const { return findMarker(marker, 0) != npos; }
    std::size_t bodyEnd() const { return m_bodyEnd; }
    /// The block at hand. Empty, at the end of the body, for a marker that the record lacks.
    std::size_t first() const { return m_first; }
    std::size_t last() const { return m_last; }
    /// Where a field that is missing goes.
    std::size_t position() const { return m_cursor; }
    /// The marker that has to be put in before the block's first field; null when it is there.
    const char *missingMarker() const { return m_marker; }

    void enter(const char *marker)
    {
        m_marker = nullptr;
        if (m_markers.empty())
            return; // one block, in which the fields go on
        std::size_t from = 0;
        std::pair<std::string_view, std::size_t> *before = nullptr;
        for (auto &entered : m_entered) {
            if (entered.first == marker) {
                before = &entered;
                from = entered.second + 1;
            }
        }
        const std::size_t found = findMarker(marker, from);
        if (found != npos) {
            if (before)
                before->second = found;
            else
                m_entered.emplace_back(marker, found);
            enterBlock(found);
        } else if (before) {
            enterBlock(before->second);
        } else if (!hasOwnMarkers()) {
            // Some programs write the marker of the base class only.
            enterBlock(m_markers.size() - 1);
        } else {
            m_first = m_cursor = m_last = m_bodyEnd;
            m_marker = marker;
        }
    }

    /// The next tag of the code, or npos. The tag is taken.
    std::size_t take(int code)
    {
        const std::size_t found = find(code);
        if (found != npos) {
            m_taken[found] = 1;
            m_cursor = found + 1;
        }
        return found;
    }
    std::size_t find(int code) const
    {
        for (std::size_t i = m_cursor; i < m_last; ++i) {
            if (m_tags.code(i) == code && !m_taken[i])
                return i;
        }
        for (std::size_t i = m_first; i < m_cursor && i < m_last; ++i) {
            if (m_tags.code(i) == code && !m_taken[i])
                return i;
        }
        return npos;
    }
    bool isTaken(std::size_t i) const { return m_taken[i] != 0; }
    void setPosition(std::size_t position) { m_cursor = position; }

    /// The writer puts in tags (taken at once) or takes some out; the position is set behind them.
    void inserted(std::size_t at, std::size_t count, bool isMarker = false)
    {
        m_taken.insert(m_taken.begin() + std::ptrdiff_t(at), count, 1);
        m_bodyEnd += count;
        m_last += count;
        for (std::size_t &marker : m_markers) {
            if (marker >= at)
                marker += count;
        }
        if (isMarker) {
            // It stands at the end of the body: the block begins behind it.
            m_markers.push_back(at);
            m_entered.emplace_back(m_marker, m_markers.size() - 1);
            m_first = at + 1;
            m_marker = nullptr;
        }
        m_cursor = at + count;
    }
    void removed(std::size_t at, std::size_t count)
    {
        m_taken.erase(m_taken.begin() + std::ptrdiff_t(at), m_taken.begin() + std::ptrdiff_t(at + count));
        m_bodyEnd -= count;
        m_last -= count;
        for (std::size_t &marker : m_markers) {
            if (marker > at)
                marker -= count;
        }
        m_cursor = at;
    }
    void setTaken(std::size_t from, std::size_t to)
    {
        for (std::size_t i = from; i < to; ++i)
            m_taken[i] = 1;
    }

private:
    std::size_t passGroup(std::size_t i)
    {
        if (m_tags.value(i).find('{') == std::string_view::npos)
            return i;
        m_taken[i] = 1;
        while (i + 1 < m_tags.size() && m_tags.code(i + 1) < 1000 && m_tags.code(i + 1) != 100) {
            m_taken[++i] = 1;
            if (m_tags.code(i) == 102)
                break;
        }
        return i;
    }
    /// Number of the marker from the \a from-th on.
    std::size_t findMarker(std::string_view marker, std::size_t from) const
    {
        for (std::size_t k = from; k < m_markers.size(); ++k) {
            if (nameOf(k) == marker)
                return k;
        }
        return npos;
    }
    std::string_view nameOf(std::size_t k) const
    {
        std::string_view name = m_tags.value(m_markers[k]);
        while (!name.empty() && (name.back() == ' ' || name.back() == '\r'))
            name.remove_suffix(1);
        while (!name.empty() && name.front() == ' ')
            name.remove_prefix(1);
        return name;
    }
    bool hasOwnMarkers() const
    {
        for (std::size_t k = 0; k < m_markers.size(); ++k) {
            if (nameOf(k) != "AcDbEntity" && nameOf(k) != "AcDbSymbolTableRecord")
                return true;
        }
        return false;
    }
    void enterBlock(std::size_t k)
    {
        m_first = m_cursor = m_markers[k] + 1;
        m_last = k + 1 < m_markers.size() ? m_markers[k + 1] : m_bodyEnd;
    }

    const Tags &m_tags;
    std::vector<std::uint8_t> m_taken;
    std::vector<std::size_t> m_markers;
    std::vector<std::pair<std::string_view, std::size_t>> m_entered; // number of the marker by name
    std::size_t m_bodyEnd = 0;
    std::size_t m_first = 0;
    std::size_t m_last = 0;
    std::size_t m_cursor = 0;
    const char *m_marker = nullptr;
};

#endif
