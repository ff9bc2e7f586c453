#include "gps/GpsNumbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

qsizetype SkipBlanks(QStringView text, qsizetype i)
{
    while (i < text.size() && (text[i] == u' ' || text[i] == u'\t'))
        ++i;
    return i;
}

qsizetype SkipDigits(QStringView text, qsizetype i)
{
    while (i < text.size() && IsDigit(text[i]))
        ++i;
    return i;
}

// Adds one unit in the last place of decimal digits whose first digit is a spare '0'.
void Increment(char *digits, std::size_t count)
{
    for (std::size_t i = count; i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
}

} // namespace

QString RoundedElevation(QStringView text)
{
    // Plain decimals are rounded on their digits, so 1.45 is 1.5 as written, not 1.4 as the
    // nearest double would have it.
    qsizetype i = SkipBlanks(text, 0);
    const bool negative = i < text.size() && text[i] == u'-';
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    const qsizetype wholeStart = i;
    const qsizetype wholeEnd = SkipDigits(text, i);
    qsizetype fractionStart = wholeEnd;
    qsizetype fractionEnd = wholeEnd;
    if (wholeEnd < text.size() && text[wholeEnd] == u'.') {
        fractionStart = wholeEnd + 1;
        fractionEnd = SkipDigits(text, fractionStart);
    }
    const bool plainDecimal = (wholeEnd > wholeStart || fractionEnd > fractionStart) && SkipBlanks(text, fractionEnd) == text.size();
    std::array<char, 48> digits{}; // the value in tenths, with room for a carry in front
    if (!plainDecimal || wholeEnd - wholeStart > qsizetype(digits.size()) - 4) {
        const QString rounded = QString::number(LenientNumber(text), 'f', 1);
        return rounded == QLatin1String("-0.0") ? QStringLiteral("0.0") : rounded;
    }
    std::size_t count = 1; // digits[0] is kept for a carry
    for (qsizetype k = wholeStart; k < wholeEnd; ++k)
        digits[count++] = static_cast<char>(text[k].unicode());
    if (count == 1)
        digits[count++] = '0';
    digits[count++] = fractionEnd > fractionStart ? static_cast<char>(text[fractionStart].unicode()) : '0';
    digits[0] = '0';
    if (fractionEnd - fractionStart > 1 && text[fractionStart + 1] >= u'5')
        Increment(digits.data(), count);
    std::size_t first = 0;
    while (first + 2 < count && digits[first] == '0')
        ++first;
    const bool zero = std::all_of(digits.begin() + static_cast<std::ptrdiff_t>(first), digits.begin() + static_cast<std::ptrdiff_t>(count),
                                  [](char c) { return c == '0'; });
    QString rounded;
    rounded.reserve(static_cast<qsizetype>(count - first) + 2);
    if (negative && !zero)
        rounded += u'-';
    rounded += QLatin1String(digits.data() + first, static_cast<qsizetype>(count - first - 1));
    rounded += u'.';
    rounded += QLatin1Char(digits[count - 1]);
    return rounded;
}
