#include "imaging/ImageTags.h"

#include "imaging/ParallelWork.h"
#include "imaging/TagReader.h"
#include "imaging/TagRules.h"
#include "imaging/TagTable.h"

namespace {

QString RecordForm(RecordRule rule, const QString &text)
{
    switch (rule) {
    case RecordRule::DateTaken:
        return DateTakenText(text);
    case RecordRule::FlashState:
        return FlashState(text);
    case RecordRule::Keywords:
        return KeywordsText(text);
    case RecordRule::AsRead:
    case RecordRule::Degrees:
    case RecordRule::Reference:
    case RecordRule::Altitude:
    case RecordRule::WrittenOnly:
        break;
    }
    return text;
}

bool ReadsOnItsOwn(RecordRule rule)
{
    return rule == RecordRule::AsRead || rule == RecordRule::DateTaken || rule == RecordRule::FlashState
        || rule == RecordRule::Keywords;
}

QString Read(const TagReader &reader, const TagRow &row)
{
    return reader.Text(row.family, QLatin1String(row.name));
}

// One coordinate of the position: its value row and the reference row of the same key.
QString Coordinate(const TagReader &reader, const char *recordKey, GpsAxis axis)
{
    const TagRow *value = FindTagRow(recordKey, RecordRule::Degrees);
    const TagRow *reference = FindTagRow(recordKey, RecordRule::Reference);
    return SignedDegreesText({Read(reader, *reference), Read(reader, *value)}, axis);
}

} // namespace

void ImageTags::LoadExifTags(const QString &photoPath)
{
    LoadExifTags(TagReader::FromFile(photoPath));
}

void ImageTags::LoadExifTags(const TagReader &reader)
{
    for (const TagRow &row : TagTable()) {
        if (row.field)
            (this->*row.field).clear();
    }
    // The rows of a key are in order of preference: the first that gives a value wins.
    for (const TagRow &row : TagTable()) {
        if (row.field && ReadsOnItsOwn(row.rule) && (this->*row.field).isEmpty())
            this->*row.field = RecordForm(row.rule, Read(reader, row));
    }
    // A position needs its latitude reference, and both coordinates whole.
    if (Read(reader, *FindTagRow("Latitude", RecordRule::Reference)).isEmpty())
        return;
    const QString latitudeText = Coordinate(reader, "Latitude", GpsAxis::Latitude);
    const QString longitudeText = Coordinate(reader, "Longitude", GpsAxis::Longitude);
    if (latitudeText.isEmpty() || longitudeText.isEmpty())
        return;
    latitude = latitudeText;
    longitude = longitudeText;
}

QList<std::pair<QString, QString>> ImageTags::RecordValues() const
{
    QList<std::pair<QString, QString>> values;
    for (const TagRow &row : TagTable()) {
        if (!row.field || (!values.isEmpty() && values.last().first == QLatin1String(row.recordKey)))
            continue;
        const QString &value = this->*row.field;
        if (row.presence == Presence::Always || !value.isEmpty())
            values.append({QLatin1String(row.recordKey), value});
    }
    return values;
}

QList<ImageTags> LoadExifTagsOfFiles(const QStringList &photoPaths)
{
    QList<ImageTags> tags(photoPaths.size());
    ImageTags *const photo = tags.data();
    RunInParallel(photoPaths.size(), [&](qsizetype index) { photo[index].LoadExifTags(photoPaths[index]); });
    return tags;
}
