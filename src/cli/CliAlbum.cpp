#include "CliAlbumVerbs.h"
#include "CliOutput.h"

#include "AlbumFormat.h"
#include "Paths.h"
#include "PhotoRecord.h"
#include "RecordEdit.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

const QString AlbumUsage = QStringLiteral(
    "orvana-cli album create FOLDER\n"
    "       orvana-cli album info ALBUM [--json]\n"
    "       orvana-cli album describe ALBUM [--title T] [--id I] [--description D]   only those given change\n"
    "       orvana-cli album list ALBUM [--json]\n"
    "       orvana-cli album arrange ALBUM time|file [--desc]\n"
    "       orvana-cli album find-date ALBUM DATE        DATE: yyyy-mm-dd or \"yyyy-mm-dd hh\"\n"
    "       orvana-cli album set ALBUM FILE KEY VALUE    KEY: note, keywords, date, lat, lon, ele, star\n"
    "       orvana-cli album star ALBUM [--off] FILE...\n"
    "       orvana-cli album import ALBUM PATH...          prints each new photo's name\n"
    "       orvana-cli album check ALBUM [--remove-missing]\n"
    "       orvana-cli album search ALBUM TEXT\n"
    "       orvana-cli album set-note ALBUM TEXT FILE...\n"
    "       orvana-cli album delete ALBUM FILE...          photo files go to the trash\n"
    "       orvana-cli album copy|cut ALBUM FILE...\n"
    "       orvana-cli album paste ALBUM\n"
    "       orvana-cli album keywords-copy ALBUM FILE\n"
    "       orvana-cli album keywords-paste ALBUM FILE...  adds the copied keywords\n"
    "       orvana-cli album rotate ALBUM left|right FILE...\n"
    "       orvana-cli album edit ALBUM bw|sepia|enhance FILE...\n"
    "       orvana-cli album adjust ALBUM CONTRAST RED GREEN BLUE FILE...   slider positions\n"
    "       orvana-cli album crop ALBUM LEFT TOP RIGHT BOTTOM FILE\n"
    "       orvana-cli album write-metadata ALBUM [FILE...]");

namespace {

const QString &Usage = AlbumUsage;

using Arguments = CliArguments;

void PrintJson(const QJsonDocument &json)
{
    PrintOut(QString::fromUtf8(json.toJson(QJsonDocument::Indented)).trimmed());
}

int Create(const Arguments &args)
{
    if (args.positional.size() != 1)
        return UsageError(QStringLiteral("album create takes FOLDER"), Usage);
    const QString folder = QDir::cleanPath(QDir::current().absoluteFilePath(args.positional[0]));
    if (QFileInfo::exists(AlbumFormat::StudioPlistPath(folder)))
        return Fail(Message("MessageAlreadyBeAlbum", "OrvDocument") + QStringLiteral(" (") + folder + u')');
    if (const Result created = CreateNewAlbum(folder); !created)
        return Fail(Message("MessageFailToCreateAlbum", "OrvDocument") + QStringLiteral(" (") + created.message + u')');
    if (!OpenAlbumForCli(folder))
        return ExitFailed;
    PrintOut(folder);
    return ExitDone;
}

int Info(const Arguments &args, AlbumDocument &album)
{
    const DataList &list = album.List();
    QJsonObject info{
        {QStringLiteral("path"), album.Path()},
        {QStringLiteral("title"), list.GetDocumentProperty(QStringLiteral("Title"))},
        {QStringLiteral("identification"), list.GetDocumentProperty(QStringLiteral("Identification"))},
        {QStringLiteral("description"), list.GetDocumentProperty(QStringLiteral("Description"))},
        {QStringLiteral("package"), IsAlbum(album.Path()) && GetPhotoFilesPath(album.Path()) != album.Path()},
        {QStringLiteral("photos"), album.RecordCount()},
        {QStringLiteral("bytesByList"), album.GetTotalBytesByDatalist()},
        {QStringLiteral("bytesOnDisk"), album.GetTotalBytesByFileSystem()},
        {QStringLiteral("unsafeRecords"), static_cast<int>(album.UnsafeRecords().size())},
    };
    if (args.Has("--json")) {
        PrintJson(QJsonDocument(info));
        return ExitDone;
    }
    for (auto it = info.constBegin(); it != info.constEnd(); ++it)
        PrintOut(it.key() + QStringLiteral(": ") + it.value().toVariant().toString());
    return ExitDone;
}

const QStringList DescribeOptions = {QStringLiteral("--title"), QStringLiteral("--id"), QStringLiteral("--description")};

int Describe(const Arguments &args, AlbumDocument &album)
{
    if (args.positional.size() != 1 || !args.flags.isEmpty())
        return UsageError(QStringLiteral("album describe takes ALBUM and --title T, --id I or --description D"), Usage);
    const auto given = [&](const QString &option) {
        return args.values.contains(option) ? std::optional<QString>(args.values.value(option)) : std::nullopt;
    };
    const Result set = album.SetAlbumTexts({given(DescribeOptions[0]), given(DescribeOptions[1]), given(DescribeOptions[2])});
    return set ? SaveAndFinish(album) : Fail(set.message);
}

int List(const Arguments &args, AlbumDocument &album)
{
    const DataList &list = album.List();
    if (!args.Has("--json")) {
        for (int i = 1; i <= album.RecordCount(); ++i)
            PrintOut(album.Record(PhotoRecord::File, i));
        return ExitDone;
    }
    QJsonArray records;
    for (int i = 1; i <= album.RecordCount(); ++i) {
        QJsonObject record;
        for (const DataList::Entry &entry : list.ItemAt(i)) {
            if (entry.kind != DataList::Kind::Nested)
                record.insert(list.KeyName(entry.key), entry.value);
        }
        records.append(record);
    }
    PrintJson(QJsonDocument(records));
    return ExitDone;
}

int Arrange(const Arguments &args, AlbumDocument &album)
{
    const QString by = args.positional.value(1);
    if (args.positional.size() != 2 || (by != QLatin1String("time") && by != QLatin1String("file")))
        return UsageError(QStringLiteral("album arrange takes ALBUM and time or file"), Usage);
    album.ArrangePhotos(by == QLatin1String("time") ? PhotoRecord::CaptureDate : PhotoRecord::File, !args.Has("--desc"), false, nullptr);
    return SaveAndFinish(album);
}

int FindDate(const Arguments &args, AlbumDocument &album)
{
    const QString text = args.positional.value(1);
    const bool hour = text.size() == 13;
    const QDateTime date = QDateTime::fromString(text, hour ? QStringLiteral("yyyy-MM-dd HH") : QStringLiteral("yyyy-MM-dd"));
    if (args.positional.size() != 2 || !date.isValid())
        return UsageError(QStringLiteral("album find-date takes ALBUM and a date yyyy-mm-dd or \"yyyy-mm-dd hh\""), Usage);
    album.FindItemsWithDate(date, hour ? QStringLiteral("yyyy-mm-dd hh") : QStringLiteral("yyyy-mm-dd"));
    for (const int index : album.SelectedIndices())
        PrintOut(album.Record(PhotoRecord::File, index));
    return ExitDone;
}

int Set(const Arguments &args, AlbumDocument &album)
{
    if (args.positional.size() != 4)
        return UsageError(QStringLiteral("album set takes ALBUM, FILE, KEY and VALUE"), Usage);
    const auto records = RecordsNamed(album, {args.positional[1]});
    if (!records)
        return ExitFailed;
    const QString key = EditableKey(args.positional[2]);
    const Result set = SetRecordValue(album, records->front(), key.isEmpty() ? args.positional[2] : key, args.positional[3]);
    return set ? SaveAndFinish(album) : Fail(set.message);
}

int Star(const Arguments &args, AlbumDocument &album)
{
    if (args.positional.size() < 2)
        return UsageError(QStringLiteral("album star takes ALBUM and at least one FILE"), Usage);
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    for (const int index : *records)
        album.SetSelected(index, true);
    album.ActionStar(!args.Has("--off"));
    return SaveAndFinish(album);
}

struct AlbumVerb {
    const char *name;
    int (*run)(const Arguments &, AlbumDocument &);
};

constexpr AlbumVerb Verbs[] = {
    {"info", Info}, {"describe", Describe}, {"list", List}, {"arrange", Arrange}, {"find-date", FindDate}, {"set", Set}, {"star", Star},
    {"import", AlbumImport}, {"check", AlbumCheck}, {"search", AlbumSearch}, {"set-note", AlbumSetNote},
    {"delete", AlbumDelete}, {"copy", AlbumCopy}, {"cut", AlbumCut}, {"paste", AlbumPaste},
    {"keywords-copy", AlbumKeywordsCopy}, {"keywords-paste", AlbumKeywordsPaste}, {"rotate", AlbumRotate},
    {"edit", AlbumEdit}, {"adjust", AlbumAdjust}, {"crop", AlbumCrop}, {"write-metadata", AlbumWriteMetadata},
};

} // namespace

int RunAlbum(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + Usage);
        return ExitDone;
    }
    UseUserSettings();
    const QString verb = arguments.value(0);
    const Arguments args = SplitArguments(arguments.mid(1), verb == QLatin1String("describe") ? DescribeOptions : QStringList());
    if (verb == QLatin1String("create"))
        return Create(args);
    for (const AlbumVerb &candidate : Verbs) {
        if (verb != QLatin1String(candidate.name))
            continue;
        if (args.positional.isEmpty())
            return UsageError(QStringLiteral("album %1 needs ALBUM").arg(verb), Usage);
        ImportReport opening;
        const auto album = OpenAlbumForCli(args.positional[0], &opening);
        if (!album)
            return ExitFailed;
        const int code = candidate.run(args, *album);
        // What opening could not import (a drop folder's leftovers, say) is on stderr: it fails.
        return code == ExitDone && !opening.Clean() ? ExitFailed : code;
    }
    return UsageError(verb.isEmpty() ? QStringLiteral("album needs a verb") : QStringLiteral("unknown verb \"%1\"").arg(verb), Usage);
}
