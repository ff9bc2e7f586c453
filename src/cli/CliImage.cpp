#include "CliOutput.h"

#include "ImageTags.h"
#include "MetadataWriter.h"
#include "PhotoEdits.h"
#include "Thumbnail.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString Usage = QStringLiteral(
    "orvana-cli image tags FILE... [--json]\n"
    "       orvana-cli image thumbnail FILE OUT [--fast]\n"
    "       orvana-cli image thumbnails FOLDER FILE... [--fast]\n"
    "       orvana-cli image rotate left|right FILE...\n"
    "       orvana-cli image edit bw|sepia|enhance FILE...\n"
    "       orvana-cli image adjust CONTRAST RED GREEN BLUE FILE...\n"
    "       orvana-cli image crop LEFT TOP RIGHT BOTTOM FILE\n"
    "       orvana-cli image write-metadata [--description TEXT] [--keywords A;B;] [--position LON LAT ELE] FILE...\n"
    "Works on plain photo files. --fast takes the preview the camera embedded where there is one;\n"
    "adjust takes the adjust window's slider positions (contrast 100 and colours 150 are neutral);\n"
    "crop's RIGHT and BOTTOM are the first column and row left out.");

// The values under the record keys a photo's record takes from its tags, in the record's order.
QJsonObject TagsObject(const QString &path, const ImageTags &tags)
{
    QJsonObject fields = {{QStringLiteral("File"), path}};
    for (const auto &[key, value] : tags.RecordValues())
        fields.insert(key, value);
    return fields;
}

int Tags(QStringList arguments)
{
    const bool json = arguments.removeAll(QStringLiteral("--json")) > 0;
    if (arguments.isEmpty())
        return UsageError(QStringLiteral("image tags needs a FILE"), Usage);
    const QList<ImageTags> tags = LoadExifTagsOfFiles(arguments);
    QJsonArray photos;
    for (qsizetype i = 0; i < arguments.size(); ++i)
        photos.append(TagsObject(arguments[i], tags[i]));
    if (json) {
        PrintOut(QString::fromUtf8(QJsonDocument(photos).toJson(QJsonDocument::Indented)).trimmed());
        return ExitDone;
    }
    for (const auto &photo : photos) {
        const QJsonObject fields = photo.toObject();
        PrintOut(fields.value(QStringLiteral("File")).toString());
        for (auto field = fields.begin(); field != fields.end(); ++field) {
            if (field.key() != QLatin1String("File") && !field.value().toString().isEmpty())
                PrintOut(QStringLiteral("  %1: %2").arg(field.key(), field.value().toString()));
        }
    }
    return ExitDone;
}

ThumbnailSource SourceOption(QStringList &arguments)
{
    return arguments.removeAll(QStringLiteral("--fast")) > 0 ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo;
}

// An album names a JPEG's thumbnail after the photo and any other photo's with ".jpg" added.
QString ThumbnailName(const QString &photoPath)
{
    const QFileInfo photo(photoPath);
    return FormatOfFile(photoPath) == ImageFormat::Jpeg ? photo.fileName() : photo.fileName() + QStringLiteral(".jpg");
}

int ReportAll(const QList<Result> &results)
{
    int status = ExitDone;
    for (const Result &result : results) {
        if (!result)
            status = Fail(result.message);
    }
    return status;
}

int Thumbnails(QStringList arguments, bool many)
{
    const ThumbnailSource source = SourceOption(arguments);
    if (arguments.size() < 2 || (!many && arguments.size() != 2))
        return UsageError(QStringLiteral("thumbnails need the photo and where to put the thumbnail"), Usage);
    if (!many)
        return ReportAll({MakeThumbnail(arguments[0], arguments[1], source)});
    const QString folder = arguments.takeFirst();
    QList<ThumbnailJob> jobs;
    for (const QString &photo : arguments)
        jobs.append({photo, folder + u'/' + ThumbnailName(photo)});
    return ReportAll(MakeThumbnails(jobs, source));
}

int ReportEdits(const QStringList &files, const std::function<EditOutcome(const QString &)> &edit)
{
    int status = ExitDone;
    for (const QString &file : files) {
        const EditOutcome outcome = edit(file);
        if (!outcome.result)
            status = Fail(outcome.result.message);
        else
            PrintOut(QStringLiteral("%1: %2 bytes, %3, %4x%5").arg(file).arg(outcome.facts.size).arg(outcome.facts.modified)
                         .arg(outcome.facts.width).arg(outcome.facts.height));
    }
    return status;
}

bool ToIntegers(const QStringList &texts, QList<int> &numbers)
{
    for (const QString &text : texts) {
        bool ok = false;
        numbers << text.toInt(&ok);
        if (!ok)
            return false;
    }
    return true;
}

int Rotate(const QStringList &arguments)
{
    const QString direction = arguments.value(0);
    if ((direction != QLatin1String("left") && direction != QLatin1String("right")) || arguments.size() < 2)
        return UsageError(QStringLiteral("image rotate takes left or right and a FILE"), Usage);
    const Turn turn = direction == QLatin1String("left") ? Turn::Left : Turn::Right;
    return ReportEdits(arguments.mid(1), [turn](const QString &file) { return RotatePhotoFile(file, turn); });
}

int Edit(const QStringList &arguments)
{
    const QString name = arguments.value(0);
    const std::map<QString, PhotoEffect> effects = {
        {QStringLiteral("bw"), PhotoEffect::BlackAndWhite},
        {QStringLiteral("sepia"), PhotoEffect::Sepia},
        {QStringLiteral("enhance"), PhotoEffect::Enhance},
    };
    const auto effect = effects.find(name);
    if (effect == effects.end() || arguments.size() < 2)
        return UsageError(QStringLiteral("image edit takes bw, sepia or enhance and a FILE"), Usage);
    return ReportEdits(arguments.mid(1), [effect](const QString &file) { return ApplyEffectToPhotoFile(file, effect->second); });
}

int Adjust(const QStringList &arguments)
{
    QList<int> sliders;
    if (arguments.size() < 5 || !ToIntegers(arguments.mid(0, 4), sliders))
        return UsageError(QStringLiteral("image adjust takes four slider positions and a FILE"), Usage);
    const ColourTables tables = BuildColourTables({sliders[0], sliders[1], sliders[2], sliders[3]});
    return ReportEdits(arguments.mid(4), [&tables](const QString &file) { return AdjustPhotoFile(file, tables); });
}

int Crop(const QStringList &arguments)
{
    QList<int> edges;
    if (arguments.size() != 5 || !ToIntegers(arguments.mid(0, 4), edges))
        return UsageError(QStringLiteral("image crop takes LEFT TOP RIGHT BOTTOM and one FILE"), Usage);
    const CropRectangle rectangle{edges[0], edges[1], edges[2], edges[3]};
    return ReportEdits(arguments.mid(4), [&rectangle](const QString &file) { return CropPhotoFile(file, rectangle); });
}

int WriteMetadataOfFiles(QStringList arguments)
{
    PhotoMetadata values;
    QStringList files;
    while (!arguments.isEmpty()) {
        const QString argument = arguments.takeFirst();
        if (argument == QLatin1String("--description") && !arguments.isEmpty()) {
            values.description = arguments.takeFirst();
        } else if (argument == QLatin1String("--keywords") && !arguments.isEmpty()) {
            values.keywords = arguments.takeFirst();
        } else if (argument == QLatin1String("--position") && arguments.size() >= 3) {
            bool ok[3] = {};
            values.longitude = arguments.takeFirst().toDouble(&ok[0]);
            values.latitude = arguments.takeFirst().toDouble(&ok[1]);
            values.elevation = arguments.takeFirst().toDouble(&ok[2]);
            if (!ok[0] || !ok[1] || !ok[2])
                return UsageError(QStringLiteral("--position takes three numbers"), Usage);
        } else if (argument.startsWith(QLatin1String("--"))) {
            return UsageError(QStringLiteral("unknown option \"%1\"").arg(argument), Usage);
        } else {
            files << argument;
        }
    }
    if (files.isEmpty())
        return UsageError(QStringLiteral("image write-metadata needs a FILE"), Usage);
    QList<MetadataWriteJob> jobs;
    for (const QString &file : files)
        jobs.append({file, values});
    int status = ExitDone;
    for (const MetadataWriteReport &report : WriteMetadataBatch(jobs)) {
        if (!report.attempted)
            return Fail(QStringLiteral("nothing to write: give a description, keywords or a position"));
        if (!report.result)
            status = Fail(report.result.message);
    }
    return status;
}

} // namespace

int RunImage(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + Usage);
        return ExitDone;
    }
    const QString verb = arguments.value(0);
    const QStringList rest = arguments.mid(1);
    if (verb == QLatin1String("tags"))
        return Tags(rest);
    if (verb == QLatin1String("thumbnail") || verb == QLatin1String("thumbnails"))
        return Thumbnails(rest, verb == QLatin1String("thumbnails"));
    if (verb == QLatin1String("rotate"))
        return Rotate(rest);
    if (verb == QLatin1String("edit"))
        return Edit(rest);
    if (verb == QLatin1String("adjust"))
        return Adjust(rest);
    if (verb == QLatin1String("crop"))
        return Crop(rest);
    if (verb == QLatin1String("write-metadata"))
        return WriteMetadataOfFiles(rest);
    return UsageError(verb.isEmpty() ? QStringLiteral("image needs a verb") : QStringLiteral("unknown verb \"%1\"").arg(verb),
                      Usage);
}
