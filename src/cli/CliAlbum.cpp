#include "cli/CliAlbumVerbs.h"
#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "library/AlbumFormat.h"
#include "app/Paths.h"
#include "library/PhotoRecord.h"
#include "library/RecordEdit.h"
#include "app/WallClock.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using Arguments = CliArguments;

void PrintJson(const QJsonDocument &json)
{
    PrintOut(QString::fromUtf8(json.toJson(QJsonDocument::Indented)).trimmed());
}

int Create(const Arguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("album create takes FOLDER"));
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

int Describe(const Arguments &args, AlbumDocument &album)
{
    if (args.positional.size() != 1 || !(args.Has("--title") || args.Has("--id") || args.Has("--description")))
        return args.UsageError(QStringLiteral("album describe takes ALBUM and --title T, --id I or --description D"));
    const auto given = [&](const char *option) { return args.Has(option) ? std::optional<QString>(args.Value(option)) : std::nullopt; };
    const Result set = album.SetAlbumTexts({given("--title"), given("--id"), given("--description")});
    return set ? SaveAndFinish(album) : Fail(set.message);
}

int Info(const Arguments &args, AlbumDocument &album)
{
    const DataList &list = album.List();
    QJsonObject info{
        {QStringLiteral("path"), album.Path()},
        {QStringLiteral("title"), list.GetDocumentProperty(QStringLiteral("Title"))},
        {QStringLiteral("identification"), list.GetDocumentProperty(QStringLiteral("Identification"))},
        {QStringLiteral("description"), list.GetDocumentProperty(QStringLiteral("Description"))},
        {QStringLiteral("package"), IsAlbum(album.Path()) && album.IsPackage()},
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
        return args.UsageError(QStringLiteral("album arrange takes ALBUM and time or file"));
    album.ArrangePhotos(by == QLatin1String("time") ? PhotoRecord::CaptureDate : PhotoRecord::File, !args.Has("--desc"), false, nullptr);
    return SaveAndFinish(album);
}

int FindDate(const Arguments &args, AlbumDocument &album)
{
    const QString text = args.positional.value(1);
    const bool hour = text.size() == 13;
    const std::optional<QDateTime> date = text.size() == 10 || hour ? ReadWallClock(text) : std::nullopt;
    if (args.positional.size() != 2 || !date)
        return args.UsageError(QStringLiteral("album find-date takes ALBUM and a date yyyy-mm-dd or \"yyyy-mm-dd hh\""));
    for (const int index : album.FindItemsWithDate(*date, hour ? QStringLiteral("yyyy-mm-dd hh") : QStringLiteral("yyyy-mm-dd")))
        PrintOut(album.Record(PhotoRecord::File, index));
    return ExitDone;
}

int Set(const Arguments &args, AlbumDocument &album)
{
    if (args.positional.size() != 4)
        return args.UsageError(QStringLiteral("album set takes ALBUM, FILE, KEY and VALUE"));
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
        return args.UsageError(QStringLiteral("album star takes ALBUM and at least one FILE"));
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    album.ActionStar(*records, !args.Has("--off"));
    return SaveAndFinish(album);
}

// The verbs that work on an open album: ALBUM comes first, and is opened as a window would.
template <int (*Verb)(const Arguments &, AlbumDocument &)>
int OnAlbum(const Arguments &args)
{
    if (args.positional.isEmpty())
        return args.UsageError(QStringLiteral("album %1 needs ALBUM").arg(args.Verb()));
    ImportReport opening;
    const auto album = OpenAlbumForCli(args.positional[0], &opening);
    if (!album)
        return ExitFailed;
    const int code = Verb(args, *album);
    // What opening could not import (a drop folder's leftovers, say) is on stderr: it fails.
    return code == ExitDone && !opening.Clean() ? ExitFailed : code;
}

} // namespace

const CliGroup &AlbumCommands()
{
    static const CliGroup group{
        "album",
        "photo albums: create, info, list, arrange, ...",
        {
            {"create", "FOLDER", "prepares a folder and makes its blank package", {}, Create},
            {"info", "ALBUM", "title, identification, description, counts, bytes", {JsonOption}, OnAlbum<Info>},
            {"describe", "ALBUM", "sets the album's title, identification and description; only those given change",
             {{"--title", "T", "the album's title"}, {"--id", "I", "its identification, which names its folder on publishing servers"},
              {"--description", "D", "its description"}},
             OnAlbum<Describe>},
            {"list", "ALBUM", "the records in album order; with --json each as an object", {JsonOption}, OnAlbum<List>},
            {"arrange", "ALBUM time|file", "arranges the photos by capture time or file name",
             {{"--desc", nullptr, "newest or last name first"}}, OnAlbum<Arrange>},
            {"find-date", "ALBUM DATE", "prints the photos taken that day, DATE yyyy-mm-dd, or that hour, \"yyyy-mm-dd hh\"", {}, OnAlbum<FindDate>},
            {"set", "ALBUM FILE KEY VALUE", "one record value; KEY: note, keywords, date, lat, lon, ele, star", {}, OnAlbum<Set>},
            {"star", "ALBUM FILE...", "stars photos", {{"--off", nullptr, "takes the star away"}}, OnAlbum<Star>},
            {"import", "ALBUM PATH...", "files and folders; prints each new photo's name", {}, OnAlbum<AlbumImport>},
            {"camera-import", "ALBUM [CARD]", "a camera's, card's or phone's photos that the album lacks (same name, size, capture time); prints the new names",
             {{"--all", nullptr, "also the photos the album has"}, {"--list", nullptr, "only lists the card's photos, marking those in the album"}},
             OnAlbum<AlbumCameraImport>},
            {"check", "ALBUM", "takes in outside changes: re-reads, imports, reports missing photos",
             {{"--remove-missing", nullptr, "removes the records of missing photos"}}, OnAlbum<AlbumCheck>},
            {"search", "ALBUM TEXT", "prints the photos found", {}, OnAlbum<AlbumSearch>},
            {"set-note", "ALBUM TEXT FILE...", "one note for many photos", {}, OnAlbum<AlbumSetNote>},
            {"delete", "ALBUM FILE...", "records go, photo files go to the trash", {}, OnAlbum<AlbumDelete>},
            {"copy", "ALBUM FILE...", "to the exchange list", {}, OnAlbum<AlbumCopy>},
            {"cut", "ALBUM FILE...", "to the exchange list, to leave the album when pasted", {}, OnAlbum<AlbumCut>},
            {"paste", "ALBUM", "from the exchange list; prints the new names", {}, OnAlbum<AlbumPaste>},
            {"keywords-copy", "ALBUM FILE", "remembers one photo's keywords", {}, OnAlbum<AlbumKeywordsCopy>},
            {"keywords-paste", "ALBUM FILE...", "adds the copied keywords", {}, OnAlbum<AlbumKeywordsPaste>},
            {"rotate", "ALBUM left|right FILE...", "turns photos a quarter", {}, OnAlbum<AlbumRotate>},
            {"edit", "ALBUM bw|sepia|enhance FILE...", "one effect on photos", {}, OnAlbum<AlbumEdit>},
            {"adjust", "ALBUM CONTRAST RED GREEN BLUE FILE...", "the adjust window's slider positions", {}, OnAlbum<AlbumAdjust>},
            {"crop", "ALBUM LEFT TOP RIGHT BOTTOM FILE", "RIGHT and BOTTOM are the first column and row left out", {}, OnAlbum<AlbumCrop>},
            {"revert", "ALBUM FILE...", "puts back each photo's original, kept at its first edit", {}, OnAlbum<AlbumRevert>},
            {"calendar", "ALBUM month YEAR | week FIRSTDAY", "the calendar marks: month row weekday, or weekday hour-slot (Sunday = 1)",
             {JsonOption}, OnAlbum<AlbumCalendar>},
            {"write-metadata", "ALBUM [FILE...]", "captions, keywords and positions into the files; no FILE: every photo", {}, OnAlbum<AlbumWriteMetadata>},
        },
        "",
        UseUserSettings,
    };
    return group;
}
