#include "imaging/ExifToolCommand.h"

#include "app/HelperProgram.h"
#include "imaging/TagTable.h"
#include "imaging/Windows1252.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

namespace {

// At least one decimal and at most the given number, halves rounded away from zero.
QString Decimals(double value, int maximum)
{
    const double scale = std::pow(10.0, maximum);
    QString text = QString::number(std::round(value * scale) / scale, 'f', maximum);
    while (text.endsWith(u'0') && !text.endsWith(QLatin1String(".0")))
        text.chop(1);
    return text;
}

QStringList Keywords(const QString &keywords)
{
    return keywords.split(u';', Qt::SkipEmptyParts);
}

// ExifTool writes IPTC in Windows-1252 unless the record declares UTF-8, and declaring it does
// not convert the values already there: they are copied over first, through the new encoding.
// The keywords are left out of the copy when new ones replace them.
QStringList SwitchToUtf8(const PhotoMetadata &values)
{
    QStringList arguments = {QStringLiteral("-tagsFromFile"), QStringLiteral("@"), QStringLiteral("-IPTC:all")};
    if (!Keywords(values.keywords).isEmpty())
        arguments << QStringLiteral("--IPTC:Keywords");
    arguments << QStringLiteral("-IPTC:CodedCharacterSet=UTF8");
    return arguments;
}

// "-TAG=value" for every tag the table writes the record key's value into.
QStringList Assignments(QLatin1String recordKey, const QString &value)
{
    QStringList arguments;
    for (const TagRow &row : TagTable()) {
        if (row.exifToolTag && recordKey == QLatin1String(row.recordKey) && row.rule != RecordRule::Reference)
            arguments << u'-' + QLatin1String(row.exifToolTag) + u'=' + value;
    }
    return arguments;
}

QString Assignment(const char *recordKey, RecordRule rule, const QString &value)
{
    return u'-' + QLatin1String(FindTagRow(recordKey, rule)->exifToolTag) + u'=' + value;
}

// The summary ExifTool prints last: "    1 image files updated", "    1 image files unchanged".
int SummaryCount(const QString &output, const char *what)
{
    static const QRegularExpression summary(QStringLiteral("^\\s*(\\d+) (?:image )?files? (updated|unchanged)\\s*$"),
                                            QRegularExpression::MultilineOption);
    int count = 0;
    for (auto match = summary.globalMatch(output); match.hasNext();) {
        const QRegularExpressionMatch line = match.next();
        if (line.captured(2) == QLatin1String(what))
            count += line.captured(1).toInt();
    }
    return count;
}

} // namespace

bool PhotoMetadata::HasText() const
{
    return !description.isEmpty() || !keywords.isEmpty();
}

bool PhotoMetadata::HasPosition() const
{
    return !(longitude == 0 && latitude == 0);
}

QString UpToSixDecimals(double value)
{
    return Decimals(value, 6);
}

QString OneDecimal(double value)
{
    return Decimals(value, 1);
}

QStringList ExifToolArguments(const PhotoMetadata &values, const QString &photoPath)
{
    if (!values.HasText() && !values.HasPosition())
        return {};
    QStringList arguments = {QStringLiteral("-overwrite_original")};
    if (!FitsWindows1252(values.description + values.keywords))
        arguments << SwitchToUtf8(values);
    if (!values.description.isEmpty())
        arguments << Assignments(QLatin1String("Description"), values.description);
    // Each tag's list of keywords is written whole: the first assignment replaces the old list.
    for (const TagRow &row : TagTable()) {
        if (row.exifToolTag && row.rule == RecordRule::Keywords) {
            for (const QString &keyword : Keywords(values.keywords))
                arguments << u'-' + QLatin1String(row.exifToolTag) + u'=' + keyword;
        }
    }
    if (values.HasPosition()) {
        arguments << QStringLiteral("-GPSMapDatum=WGS-84") << QStringLiteral("-gps:GPSMeasureMode=2");
        arguments << Assignment("Longitude", RecordRule::Reference, values.longitude < 0 ? QStringLiteral("W") : QStringLiteral("E"));
        arguments << Assignment("Longitude", RecordRule::Degrees, UpToSixDecimals(std::abs(values.longitude)));
        arguments << Assignment("Latitude", RecordRule::Reference, values.latitude < 0 ? QStringLiteral("S") : QStringLiteral("N"));
        arguments << Assignment("Latitude", RecordRule::Degrees, UpToSixDecimals(std::abs(values.latitude)));
        arguments << Assignment("Elevation", RecordRule::Reference,
                                values.elevation < 0 ? QStringLiteral("Below Sea Level") : QStringLiteral("Above Sea Level"));
        arguments << Assignment("Elevation", RecordRule::Altitude, OneDecimal(std::abs(values.elevation)));
    }
    // An absolute path never starts with "-", so ExifTool cannot take the file for an option.
    arguments << QFileInfo(photoPath).absoluteFilePath();
    return arguments;
}

QString ExifToolProgram()
{
    return HelperProgram(QStringLiteral("exiftool"));
}

Result ExifToolOutcome(int exitStatus, const QString &output)
{
    QStringList errors;
    for (const QString &line : output.split(u'\n')) {
        if (line.startsWith(QLatin1String("Error")) || line.startsWith(QLatin1String("Warning")))
            errors << line.trimmed();
    }
    const QString said = errors.isEmpty() ? QString() : QStringLiteral(": ") + errors.join(QStringLiteral("; "));
    if (exitStatus != 0)
        return Result::Failure(QStringLiteral("ExifTool ended with status %1%2").arg(exitStatus).arg(said));
    if (SummaryCount(output, "updated") == 0) {
        const bool unchanged = SummaryCount(output, "unchanged") > 0;
        return Result::Failure((unchanged ? QStringLiteral("ExifTool left the file unchanged") : QStringLiteral("ExifTool updated no file")) + said);
    }
    return Result::Success();
}
