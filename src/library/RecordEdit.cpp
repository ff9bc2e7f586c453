#include "library/RecordEdit.h"

#include "library/AlbumDocument.h"
#include "app/Language.h"
#include "app/Degrees.h"
#include "library/PhotoRecord.h"
#include "app/WallClock.h"

#include <cmath>

namespace {

struct EditableName {
    const char *alias;
    const QString &key;
};

const EditableName EditableNames[] = {
    {"note", PhotoRecord::Description}, {"keywords", PhotoRecord::Keywords}, {"date", PhotoRecord::CaptureDate},
    {"lat", PhotoRecord::Latitude},     {"lon", PhotoRecord::Longitude},     {"ele", PhotoRecord::Elevation},
    {"star", PhotoRecord::Star},
};

Result NumberIn(const QString &text, double limit, int decimals, QString &formatted)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value) || std::abs(value) > limit)
        return Result::Failure(QStringLiteral("\"%1\" is not a number from -%2 to %2.").arg(text).arg(limit));
    formatted = QString::number(value, 'f', decimals);
    return Result::Success();
}

Result Formatted(const QString &key, const QString &text, QString &value)
{
    using namespace PhotoRecord;
    if (key == Latitude || key == Longitude || key == Elevation) {
        if (text.trimmed().isEmpty()) {
            value.clear();
            return Result::Success();
        }
        if (key == Elevation)
            return NumberIn(text, 100000.0, 1, value);
        const DegreesAxis axis = key == Latitude ? DegreesAxis::Latitude : DegreesAxis::Longitude;
        const std::optional<double> degrees = ReadDegrees(text, axis);
        if (!degrees)
            return Result::Failure(DegreesProblem(text, axis));
        value = QString::number(*degrees, 'f', 6);
        return Result::Success();
    }
    if (key == CaptureDate) {
        const QString trimmed = text.trimmed();
        const std::optional<QDateTime> date = trimmed.size() == 19 ? ReadWallClock(trimmed) : std::nullopt;
        if (!date)
            return Result::Failure(QStringLiteral("\"%1\" is not a date of the form yyyy-mm-dd hh:mm:ss.").arg(text));
        value = WallClockText(*date);
        return Result::Success();
    }
    if (key == Star) {
        if (text != QLatin1String("0") && text != QLatin1String("1"))
            return Result::Failure(QStringLiteral("A star is 1 or 0."));
    }
    value = text;
    return Result::Success();
}

} // namespace

QString EditableKey(const QString &name)
{
    for (const EditableName &editable : EditableNames) {
        if (name.compare(QLatin1String(editable.alias), Qt::CaseInsensitive) == 0 || name == editable.key)
            return editable.key;
    }
    return {};
}

Result SetRecordValue(AlbumDocument &document, int index, const QString &key, const QString &text)
{
    if (EditableKey(key) != key) {
        QString message = GetLocalizedString(QStringLiteral("MessageItemIsReadOnly"), QStringLiteral("OrvDocument"));
        return Result::Failure(message.replace(QStringLiteral("%1"), GetLocalizedString(key, QStringLiteral("InfoList"))));
    }
    QString value;
    if (Result formatted = Formatted(key, text, value); !formatted)
        return formatted;
    document.SetRecordValue(index, key, value);
    return Result::Success();
}
