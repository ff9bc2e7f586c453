#include "imaging/FlashText.h"

#include <array>

namespace {

// Bits of the value: 0 fired; 1-2 return light; 3-4 mode; 5 no flash function; 6 red-eye.
constexpr long FiredBit = 0x01;
constexpr long NoFunctionBit = 0x20;
constexpr long RedEyeBit = 0x40;

constexpr std::array<const char *, 4> ModeWords = {
    "", ", compulsory flash mode", ", compulsory flash mode", ", auto mode"};
constexpr std::array<const char *, 4> ReturnLightWords = {
    "", "", ", return light not detected", ", return light detected"};

} // namespace

QString FlashWording(long value)
{
    const bool fired = (value & FiredBit) != 0;
    if (!fired && (value & NoFunctionBit) != 0)
        return QStringLiteral("No flash function");
    QString wording = fired ? QStringLiteral("Flash fired") : QStringLiteral("Flash did not fire");
    wording += QLatin1String(ModeWords[static_cast<std::size_t>((value >> 3) & 3)]);
    wording += QLatin1String(ReturnLightWords[static_cast<std::size_t>((value >> 1) & 3)]);
    if ((value & RedEyeBit) != 0)
        wording += QLatin1String(", red-eye reduction mode");
    return wording;
}
