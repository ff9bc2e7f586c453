#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "imaging/ImageTags.h"
#include "imaging/MetadataWriter.h"
#include "imaging/PhotoEdits.h"
#include "library/PhotoRecord.h"
#include "imaging/Thumbnail.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <optional>

namespace {

// The values under the record keys a photo's record takes from its tags, in the record's order.
QJsonObject TagsObject(const QString &path, const ImageTags &tags)
{
    QJsonObject fields = {{QStringLiteral("File"), path}};
    for (const auto &[key, value] : tags.RecordValues())
        fields.insert(key, value);
    return fields;
}

int Tags(const CliArguments &args)
{
    const QStringList &arguments = args.positional;
    const bool json = args.Has("--json");
    if (arguments.isEmpty())
        return args.UsageError(QStringLiteral("image tags needs a FILE"));
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

ThumbnailSource SourceOption(const CliArguments &args)
{
    return args.Has("--fast") ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo;
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

int Thumbnails(const CliArguments &args, bool many)
{
    QStringList arguments = args.positional;
    const ThumbnailSource source = SourceOption(args);
    if (arguments.size() < 2 || (!many && arguments.size() != 2))
        return args.UsageError(QStringLiteral("thumbnails need the photo and where to put the thumbnail"));
    if (!many)
        return ReportAll({MakeThumbnail(arguments[0], arguments[1], source)});
    const QString folder = arguments.takeFirst();
    QList<ThumbnailJob> jobs;
    for (const QString &photo : arguments)
        jobs.append({photo, folder + u'/' + PhotoRecord::ThumbnailName(QFileInfo(photo).fileName())});
    return ReportAll(MakeThumbnails(jobs, source));
}

int Thumbnail(const CliArguments &args)
{
    return Thumbnails(args, false);
}

int ThumbnailsInFolder(const CliArguments &args)
{
    return Thumbnails(args, true);
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

int Rotate(const CliArguments &args)
{
    const QStringList &arguments = args.positional;
    const QString direction = arguments.value(0);
    if ((direction != QLatin1String("left") && direction != QLatin1String("right")) || arguments.size() < 2)
        return args.UsageError(QStringLiteral("image rotate takes left or right and a FILE"));
    const Turn turn = direction == QLatin1String("left") ? Turn::Left : Turn::Right;
    return ReportEdits(arguments.mid(1), [turn](const QString &file) { return RotatePhotoFile(file, turn); });
}

int Edit(const CliArguments &args)
{
    const QStringList &arguments = args.positional;
    const QString name = arguments.value(0);
    const std::map<QString, PhotoEffect> effects = {
        {QStringLiteral("bw"), PhotoEffect::BlackAndWhite},
        {QStringLiteral("sepia"), PhotoEffect::Sepia},
        {QStringLiteral("enhance"), PhotoEffect::Enhance},
    };
    const auto effect = effects.find(name);
    if (effect == effects.end() || arguments.size() < 2)
        return args.UsageError(QStringLiteral("image edit takes bw, sepia or enhance and a FILE"));
    return ReportEdits(arguments.mid(1), [effect](const QString &file) { return ApplyEffectToPhotoFile(file, effect->second); });
}

int Adjust(const CliArguments &args)
{
    const QStringList &arguments = args.positional;
    QList<int> sliders;
    if (arguments.size() < 5 || !ToIntegers(arguments.mid(0, 4), sliders))
        return args.UsageError(QStringLiteral("image adjust takes four slider positions and a FILE"));
    const ColourTables tables = BuildColourTables({sliders[0], sliders[1], sliders[2], sliders[3]});
    return ReportEdits(arguments.mid(4), [&tables](const QString &file) { return AdjustPhotoFile(file, tables); });
}

int Crop(const CliArguments &args)
{
    const QStringList &arguments = args.positional;
    QList<int> edges;
    if (arguments.size() != 5 || !ToIntegers(arguments.mid(0, 4), edges))
        return args.UsageError(QStringLiteral("image crop takes LEFT TOP RIGHT BOTTOM and one FILE"));
    const CropRectangle rectangle{edges[0], edges[1], edges[2], edges[3]};
    return ReportEdits(arguments.mid(4), [&rectangle](const QString &file) { return CropPhotoFile(file, rectangle); });
}

// "LON,LAT,ELE" in degrees and metres.
std::optional<std::array<double, 3>> Position(const QString &text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 3)
        return std::nullopt;
    std::array<double, 3> numbers{};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        bool ok = false;
        numbers[static_cast<std::size_t>(i)] = parts[i].toDouble(&ok);
        if (!ok)
            return std::nullopt;
    }
    return numbers;
}

int WriteMetadataOfFiles(const CliArguments &args)
{
    PhotoMetadata values;
    const QStringList &files = args.positional;
    if (args.Has("--description"))
        values.description = args.Value("--description");
    if (args.Has("--keywords"))
        values.keywords = args.Value("--keywords");
    if (args.Has("--position")) {
        const auto position = Position(args.Value("--position"));
        if (!position)
            return args.UsageError(QStringLiteral("--position takes three numbers: LON,LAT,ELE"));
        values.longitude = (*position)[0];
        values.latitude = (*position)[1];
        values.elevation = (*position)[2];
    }
    if (files.isEmpty())
        return args.UsageError(QStringLiteral("image write-metadata needs a FILE"));
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

const CliGroup &ImageCommands()
{
    static const CliGroup group{
        "image",
        "one photo file's tags, thumbnail and edits",
        {
            {"tags", "FILE...", "the tags the program reads, under the names of the record keys", {JsonOption}, Tags},
            {"thumbnail", "FILE OUT", "one thumbnail into OUT", {{"--fast", nullptr, "the preview the camera embedded where there is one"}}, Thumbnail},
            {"thumbnails", "FOLDER FILE...", "thumbnails named as an album names them, into FOLDER",
             {{"--fast", nullptr, "the preview the camera embedded where there is one"}}, ThumbnailsInFolder},
            {"rotate", "left|right FILE...", "turns photos a quarter", {}, Rotate},
            {"edit", "bw|sepia|enhance FILE...", "one effect on photos", {}, Edit},
            {"adjust", "CONTRAST RED GREEN BLUE FILE...", "the adjust window's slider positions (contrast 100 and colours 150 are neutral)", {}, Adjust},
            {"crop", "LEFT TOP RIGHT BOTTOM FILE", "RIGHT and BOTTOM are the first column and row left out", {}, Crop},
            {"write-metadata", "FILE...", "writes the given values into the files",
             {{"--description", "TEXT", "the caption"}, {"--keywords", "A;B;", "the keywords"}, {"--position", "LON,LAT,ELE", "the position"}},
             WriteMetadataOfFiles},
        },
        "Works on plain photo files.",
    };
    return group;
}
