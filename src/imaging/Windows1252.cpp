#include "imaging/Windows1252.h"

#include <QStringDecoder>
#include <array>

namespace {

// Bytes 0x80..0x9F; 0 marks the five bytes Windows-1252 leaves undefined (read as Latin-1).
constexpr std::array<char16_t, 32> HighControlRange = {
    0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0,
    0, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

char16_t FromWindows1252(unsigned char byte)
{
    if (byte >= 0x80 && byte <= 0x9F) {
        const char16_t mapped = HighControlRange[byte - 0x80];
        return mapped != 0 ? mapped : byte;
    }
    return byte;
}

bool HasWindows1252Byte(char16_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return true;
    for (const char16_t mapped : HighControlRange) {
        if (mapped != 0 && mapped == character)
            return true;
    }
    return false;
}

} // namespace

QString DecodeTagText(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    text.clear();
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += QChar(FromWindows1252(static_cast<unsigned char>(byte)));
    return text;
}

bool FitsWindows1252(const QString &text)
{
    for (const QChar character : text) {
        if (!HasWindows1252Byte(character.unicode()))
            return false;
    }
    return true;
}
