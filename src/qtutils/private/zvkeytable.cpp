// SPDX-License-Identifier: MIT
#include "private/zvkeytable.h"

#include <array>
#include <cstdint>

namespace {

/// A range of Qt key codes, and where its first key stands in the table of numbers.
struct KeyBand
{
    int firstKey;
    int lastKey;
    int position;
};

// Tested in this order: the last band's range spans those of the second and third. Its own entries are the 64 before
// position 224; the keys behind them run on into the first band's entries and then past the end. Callers rely on the
// numbers that come of it.
constexpr KeyBand kBands[] = {
    {0x1000000, 0x100012F, 224},
    {0x1001250, 0x100129F, 0},
    {0x1010000, 0x101000E, 80},
    {0x1020001, 0x102000F, 96},
    {0x1100000, 0x110002F, 112},
    {0x1001103, 0x101003F, 160},
};
constexpr int kTableSize = 528;

/// Consecutive keys whose numbers rise by \a step from key to key, or stay the same.
struct KeyStretch
{
    int firstKey;
    int lastKey;
    int number;
    int step;
};

constexpr KeyStretch kStretches[] = {
    // keys without a character: editing, movement, modifiers, function keys, media
    {0x1000000, 0x100000B, 256, 1},
    {0x1000010, 0x1000017, 272, 1},
    {0x1000020, 0x1000026, 288, 1},
    {0x1000030, 0x1000059, 304, 1},
    {0x1000060, 0x1000064, 352, 1},
    {0x1000070, 0x1000077, 368, 1},
    {0x1000080, 0x1000086, 384, 1},
    {0x1000090, 0x1000094, 400, 1},
    {0x10000A0, 0x100011E, 416, 1},
    {0x1000120, 0x1000124, 544, 1},
    // dead keys
    {0x1001250, 0x100126F, 560, 1},
    {0x1001280, 0x1001281, 609, 0},
    {0x1001282, 0x1001283, 611, 0},
    {0x1001284, 0x1001285, 613, 0},
    {0x1001286, 0x1001287, 615, 0},
    {0x1001288, 0x1001288, 617, 0},
    {0x1001289, 0x100128C, 617, 1},
    {0x1001290, 0x1001293, 624, 1},
    // application keys
    {0x1010000, 0x1010002, 640, 1},
    {0x1020001, 0x1020005, 655, 1},
    {0x102000A, 0x102000A, 664, 0},
    // telephone and camera keys
    {0x1100000, 0x1100009, 670, 1},
    {0x1100020, 0x1100021, 702, 1},
    // input method keys
    {0x1001103, 0x1001103, 718, 0},
    {0x1001120, 0x100113F, 747, 1},
};

/// Position of \a key in the table, which may lie past its end; -1 for a key of no band.
int tablePosition(int key)
{
    for (const KeyBand &band : kBands) {
        if (key >= band.firstKey && key <= band.lastKey)
            return band.position + (key - band.firstKey);
    }
    return -1;
}

std::array<std::int16_t, kTableSize> makeTable()
{
    std::array<std::int16_t, kTableSize> table = {};
    for (const KeyStretch &stretch : kStretches) {
        for (int key = stretch.firstKey; key <= stretch.lastKey; ++key) {
            const int number = stretch.number + (key - stretch.firstKey) * stretch.step;
            table[std::size_t(tablePosition(key))] = std::int16_t(number);
        }
    }
    return table;
}

constexpr int kFirstPlainKey = 32;
constexpr int kLastPlainKey = 90;
constexpr int kNoNumber = 0;
constexpr int kUnknownKey = 65535;

} // namespace

int zvVirtualKeyNumber(int qtKey)
{
    if (qtKey >= kFirstPlainKey && qtKey <= kLastPlainKey)
        return qtKey;

    static const std::array<std::int16_t, kTableSize> table = makeTable();
    const int position = tablePosition(qtKey);
    if (position < 0)
        return kUnknownKey;
    return position < kTableSize ? table[std::size_t(position)] : kNoNumber;
}
