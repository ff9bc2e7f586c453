#include "imaging/ColourTables.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int NeutralContrast = 100;
constexpr int NeutralColour = 150;

ColourTables::Table BuildTable(float factor, int offset)
{
    ColourTables::Table table{};
    for (int i = 0; i < 256; ++i) {
        // lrint rounds in the default mode: to the nearest integer, halves to even.
        const float scaled = factor * static_cast<float>(i + offset - 128);
        const long value = std::lrint(scaled) + 128;
        table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(std::clamp(value, 0L, 255L));
    }
    return table;
}

} // namespace

ColourTables ColourTables::Identity()
{
    return BuildColourTables(AdjustSliders{});
}

ColourTables BuildColourTables(const AdjustSliders &sliders)
{
    const auto factor = static_cast<float>((sliders.contrast - NeutralContrast) * 0.01 + 1.0);
    return {BuildTable(factor, sliders.red - NeutralColour),
            BuildTable(factor, sliders.green - NeutralColour),
            BuildTable(factor, sliders.blue - NeutralColour)};
}
