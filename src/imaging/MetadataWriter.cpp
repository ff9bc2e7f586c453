#include "imaging/MetadataWriter.h"

#include "imaging/StayOpenExifTool.h"
#include "imaging/ImageTags.h"
#include "app/LenientNumber.h"
#include "imaging/ShellAndWait.h"
#include "imaging/TagReader.h"
#include "imaging/TagRules.h"
#include "imaging/TagTable.h"

#include <cmath>

namespace {

// Positions are written with six decimals and ExifTool stores them as rationals; a thousandth
// of a second of arc is well below both.
constexpr double DegreesTolerance = 1e-6;
constexpr double MetresTolerance = 1e-3;

QString WithoutTrailingBlanks(QString text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

Result Mismatch(const QString &photoPath, const char *what, const QString &found)
{
    return Result::Failure(QStringLiteral("%1: %2 reads back as \"%3\"").arg(photoPath, QLatin1String(what), found));
}

MetadataWriteReport Report(const QString &photoPath, const PhotoMetadata &values, const ProcessRun &run)
{
    MetadataWriteReport report;
    report.attempted = true;
    if (!run.finished)
        report.result = Result::Failure(QStringLiteral("%1: %2").arg(photoPath, run.message));
    else if (const Result outcome = ExifToolOutcome(run.exitCode, QString::fromUtf8(run.output + '\n' + run.errors)); !outcome)
        report.result = Result::Failure(QStringLiteral("%1: %2").arg(photoPath, outcome.message));
    else
        report.result = VerifyWrittenMetadata(photoPath, values);
    report.facts = ReadPhotoFileFacts(photoPath);
    return report;
}

MetadataWriteReport NothingToWrite(const QString &photoPath)
{
    MetadataWriteReport report;
    report.facts = ReadPhotoFileFacts(photoPath);
    return report;
}

// One photo of a batch, through the batch's ExifTool process, which is started when first
// needed and again after it went away.
MetadataWriteReport WriteThroughRunningExifTool(const MetadataWriteJob &job, std::unique_ptr<StayOpenExifTool> &exifTool)
{
    const QStringList arguments = ExifToolArguments(job.values, job.photoPath);
    if (arguments.isEmpty())
        return NothingToWrite(job.photoPath);
    if (!StayOpenExifTool::CanCarry(arguments))
        return Report(job.photoPath, job.values, RunProgram(ExifToolProgram(), arguments, ExifToolTimeoutMs));
    if (!exifTool)
        exifTool = std::make_unique<StayOpenExifTool>(ExifToolProgram());
    const ProcessRun run = exifTool->Execute(arguments);
    if (!run.finished)
        exifTool.reset();
    return Report(job.photoPath, job.values, run);
}

} // namespace

MetadataWriteReport WriteMetadata(const QString &photoPath, const PhotoMetadata &values)
{
    const QStringList arguments = ExifToolArguments(values, photoPath);
    if (arguments.isEmpty())
        return NothingToWrite(photoPath);
    return Report(photoPath, values, RunProgram(ExifToolProgram(), arguments, ExifToolTimeoutMs));
}

QList<MetadataWriteReport> WriteMetadataBatch(const QList<MetadataWriteJob> &jobs, const WriteProgress &progress)
{
    QList<MetadataWriteReport> reports;
    std::unique_ptr<StayOpenExifTool> exifTool;
    for (const MetadataWriteJob &job : jobs) {
        if (progress && !progress(reports.size(), job.photoPath))
            break;
        reports << WriteThroughRunningExifTool(job, exifTool);
    }
    return reports;
}

bool WriteMetadataWithExifTool(const QString &photoPath, const QString &description, const QString &keywords,
                               double longitude, double latitude, double elevation)
{
    return WriteMetadata(photoPath, {description, keywords, longitude, latitude, elevation}).attempted;
}

Result VerifyWrittenMetadata(const QString &photoPath, const PhotoMetadata &values)
{
    const TagReader reader = TagReader::FromFile(photoPath, XmpParsing::Always);
    const QString keywords = values.keywords.split(u';', Qt::SkipEmptyParts).join(u',');
    for (const TagRow &row : TagTable()) {
        if (!row.exifToolTag)
            continue;
        const QLatin1String key(row.recordKey);
        const QString found = reader.Text(row.family, QLatin1String(row.name));
        if (key == QLatin1String("Description") && !values.description.isEmpty()
            && WithoutTrailingBlanks(found) != WithoutTrailingBlanks(values.description))
            return Mismatch(photoPath, row.name, found);
        if (key == QLatin1String("Keywords") && !keywords.isEmpty() && found != keywords)
            return Mismatch(photoPath, row.name, found);
    }
    if (!values.HasPosition())
        return Result::Success();
    ImageTags tags;
    tags.LoadExifTags(reader);
    if (std::abs(LenientNumber(tags.latitude) - LenientNumber(UpToSixDecimals(values.latitude))) > DegreesTolerance || tags.latitude.isEmpty())
        return Mismatch(photoPath, "the latitude", tags.latitude);
    if (std::abs(LenientNumber(tags.longitude) - LenientNumber(UpToSixDecimals(values.longitude))) > DegreesTolerance)
        return Mismatch(photoPath, "the longitude", tags.longitude);
    const std::optional<double> altitude = reader.GpsAltitude();
    if (!altitude || std::abs(*altitude - LenientNumber(OneDecimal(values.elevation))) > MetresTolerance)
        return Mismatch(photoPath, "the altitude", altitude ? QString::number(*altitude) : QString());
    return Result::Success();
}
