#include "ExifToolCommand.h"

#include "Paths.h"
#include "Windows1252.h"

#include <QFileInfo>
#include <QStandardPaths>
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
    if (!values.description.isEmpty()) {
        arguments << QStringLiteral("-Caption-Abstract=") + values.description;
        arguments << QStringLiteral("-ImageDescription=") + values.description;
    }
    for (const QString &keyword : Keywords(values.keywords))
        arguments << QStringLiteral("-keywords=") + keyword;
    if (values.HasPosition()) {
        arguments << QStringLiteral("-GPSMapDatum=WGS-84") << QStringLiteral("-gps:GPSMeasureMode=2");
        arguments << (values.longitude < 0 ? QStringLiteral("-gps:GPSLongitudeRef=W") : QStringLiteral("-gps:GPSLongitudeRef=E"));
        arguments << QStringLiteral("-gps:GPSLongitude=") + UpToSixDecimals(std::abs(values.longitude));
        arguments << (values.latitude < 0 ? QStringLiteral("-gps:GPSLatitudeRef=S") : QStringLiteral("-gps:GPSLatitudeRef=N"));
        arguments << QStringLiteral("-gps:GPSLatitude=") + UpToSixDecimals(std::abs(values.latitude));
        arguments << (values.elevation < 0 ? QStringLiteral("-gps:GPSAltitudeRef=Below Sea Level")
                                           : QStringLiteral("-gps:GPSAltitudeRef=Above Sea Level"));
        arguments << QStringLiteral("-gps:GPSAltitude=") + OneDecimal(std::abs(values.elevation));
    }
    // An absolute path never starts with "-", so ExifTool cannot take the file for an option.
    arguments << QFileInfo(photoPath).absoluteFilePath();
    return arguments;
}

QString ExifToolProgram()
{
    QString shipped = ResourcesFolder() + QStringLiteral("/exiftool");
    if (QFileInfo(shipped).isExecutable())
        return shipped;
    const QString onPath = QStandardPaths::findExecutable(QStringLiteral("exiftool"));
    return onPath.isEmpty() ? QStringLiteral("exiftool") : onPath;
}
