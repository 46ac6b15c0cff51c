// SPDX-License-Identifier: MIT
#include "zvdbstub_p.h"

#include <cstdlib>
#include <cstring>
#include <new>

bool ZvDbEntityProperties::operator==(const ZvDbEntityProperties &o) const
{
    return layer == o.layer && color == o.color && linetype == o.linetype && lineWeight == o.lineWeight
        && material == o.material && plotStyle == o.plotStyle && plotStyleType == o.plotStyleType
        && linetypeScale == o.linetypeScale && transparency == o.transparency && visibility == o.visibility;
}

std::size_t ZvDbEntityProperties::hash() const
{
    std::uint64_t scaleBits = 0;
    std::memcpy(&scaleBits, &linetypeScale, sizeof(scaleBits));
    std::uint64_t result = 0;
    const std::uint64_t parts[] = {
        color.color(),
        layer.asInt64(),
        linetype.asInt64(),
        material.asInt64(),
        plotStyle.asInt64(),
        std::uint64_t(plotStyleType),
        std::uint64_t(lineWeight),
        scaleBits,
        std::uint64_t(transparency.method()) << 8 | transparency.alpha(),
        std::uint64_t(visibility),
    };
    for (std::uint64_t part : parts) {
        result = (result ^ part) * 0x9E3779B97F4A7C15ull;
        result ^= result >> 29;
    }
    return std::size_t(result);
}

// ---- ZvDbStubTable

ZvDbStubTable::~ZvDbStubTable()
{
    clear();
}

std::uint32_t ZvDbStubTable::add()
{
    const std::uint32_t index = m_end % kChunkSize == 0 ? m_end + 1 : m_end;
    if (index / kChunkSize >= m_chunks.size()) {
        void *memory = std::aligned_alloc(kChunkBytes, kChunkBytes);
        if (!memory)
            throw std::bad_alloc();
        Chunk *chunk = new (memory) Chunk;
        chunk->head = {m_database, std::uint32_t(m_chunks.size())};
        m_chunks.push_back(chunk);
    }
    new (&(*this)[index]) ZvDbStub;
    m_end = index + 1;
    return index;
}

void ZvDbStubTable::clear()
{
    for (Chunk *chunk : m_chunks)
        std::free(chunk);
    m_chunks.clear();
    m_end = 1;
}

// ---- ZvDbPropertiesTable

std::uint32_t ZvDbPropertiesTable::intern(const ZvDbEntityProperties &properties)
{
    const std::size_t hash = properties.hash();
    const auto range = m_numbers.equal_range(hash);
    for (auto it = range.first; it != range.second; ++it) {
        if (m_properties[it->second] == properties)
            return it->second;
    }
    const std::uint32_t number = end();
    m_properties.push_back(properties);
    m_numbers.emplace(hash, number);
    return number;
}

void ZvDbPropertiesTable::clear()
{
    m_properties.assign(1, ZvDbEntityProperties());
    m_numbers.clear();
}

// ---- ZvDbHandleTable

std::uint32_t ZvDbHandleTable::find(std::uint64_t handle) const
{
    const auto it = m_pages.find(handle / 64);
    return it == m_pages.end() ? 0 : it->second.index[handle % 64];
}

void ZvDbHandleTable::insert(std::uint64_t handle, std::uint32_t index)
{
    m_pages[handle / 64].index[handle % 64] = index;
}

// ---- ZvDbClassTable

ZvDbClassTable &ZvDbClassTable::instance()
{
    static ZvDbClassTable table;
    return table;
}

ZvDbClassTable::ZvDbClassTable()
{
    std::deque<ZvDbClass> classes;
    zvdbListObjectClasses(classes);
    zvdbListEntityClasses(classes);
    m_classes.assign(classes.begin(), classes.end());
    for (std::uint16_t i = 0; i < size(); ++i) {
        m_numbers.emplace(m_classes[i].descriptor, i);
        if (m_classes[i].fileName)
            m_fileNames.emplace(m_classes[i].fileName, i);
    }
}

std::uint16_t ZvDbClassTable::numberOf(const ZvRxClass *descriptor) const
{
    for (; descriptor; descriptor = descriptor->parent()) {
        const auto it = m_numbers.find(descriptor);
        if (it != m_numbers.end())
            return it->second;
    }
    return 0;
}

std::uint16_t ZvDbClassTable::numberOfFileName(std::string_view fileName, std::uint16_t fallback) const
{
    const auto it = m_fileNames.find(fileName);
    return it == m_fileNames.end() ? fallback : it->second;
}
