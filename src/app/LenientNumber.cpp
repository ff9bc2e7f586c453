#include "app/LenientNumber.h"

#include <QString>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

qsizetype SkipDigits(QStringView text, qsizetype i)
{
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9')
        ++i;
    return i;
}

} // namespace

double LenientNumber(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    const qsizetype digitsStart = i;
    i = SkipDigits(text, i);
    bool anyDigit = i > digitsStart;
    if (i < text.size() && text[i] == u'.') {
        const qsizetype fraction = i + 1;
        i = SkipDigits(text, fraction);
        anyDigit = anyDigit || i > fraction;
    }
    if (!anyDigit)
        return 0.0;
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype exponent = i + 1;
        if (exponent < text.size() && (text[exponent] == u'+' || text[exponent] == u'-'))
            ++exponent;
        const qsizetype exponentEnd = SkipDigits(text, exponent);
        if (exponentEnd > exponent)
            i = exponentEnd;
    }
    // from_chars takes no leading '+'.
    const QStringView number = text.sliced(start, i - start).sliced(text[start] == u'+' ? 1 : 0);
    std::array<char, 64> ascii{};
    if (number.size() > qsizetype(ascii.size())) {
        const double value = number.toString().toDouble();
        return std::isfinite(value) ? value : 0.0;
    }
    std::transform(number.begin(), number.end(), ascii.begin(), [](QChar c) { return static_cast<char>(c.unicode()); });
    double value = 0.0;
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + number.size(), value);
    (void)end;
    return error == std::errc() && std::isfinite(value) ? value : 0.0;
}
