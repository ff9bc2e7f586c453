#pragma once

#include <array>
#include <cstdint>

// The three lookup tables of the adjust command: entry i of a channel is what a value i of that
// channel becomes.
struct ColourTables {
    using Table = std::array<std::uint8_t, 256>;
    Table red{};
    Table green{};
    Table blue{};

    static ColourTables Identity();
};

// The slider positions of the adjust window. 100 is the neutral contrast, 150 the neutral
// colour offset.
struct AdjustSliders {
    int contrast = 100;
    int red = 150;
    int green = 150;
    int blue = 150;
};

// Tables for the given slider positions: with factor = contrast offset / 100 + 1 held as a
// 32-bit float, entry i = round-half-even(factor x (i + offset - 128)) + 128, clamped to 0..255.
ColourTables BuildColourTables(const AdjustSliders &sliders);
