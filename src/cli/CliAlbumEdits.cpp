// Album verbs that rewrite photo files: turns, effects, colour adjustment, crops and tags.
#include "cli/CliAlbumVerbs.h"
#include "cli/CliOutput.h"

#include "library/PhotoEditing.h"

namespace {

struct NamedEffect {
    const char *name;
    PhotoEffect effect;
};

constexpr NamedEffect Effects[] = {
    {"bw", PhotoEffect::BlackAndWhite}, {"sepia", PhotoEffect::Sepia}, {"enhance", PhotoEffect::Enhance}};

// Whole numbers from the command line; nothing when one is not.
std::optional<QList<int>> Numbers(const QStringList &texts)
{
    QList<int> numbers;
    for (const QString &text : texts) {
        bool ok = false;
        numbers << text.toInt(&ok);
        if (!ok)
            return std::nullopt;
    }
    return numbers;
}

int Finish(AlbumDocument &album, int done, qsizetype asked)
{
    const int saved = SaveAndFinish(album);
    if (done < asked)
        return Fail(QStringLiteral("%1 of %2 photos could not be changed").arg(asked - done).arg(asked));
    return saved;
}

} // namespace

int AlbumRotate(const CliArguments &args, AlbumDocument &album)
{
    const QString way = args.positional.value(1);
    if (args.positional.size() < 3 || (way != QLatin1String("left") && way != QLatin1String("right")))
        return args.UsageError(QStringLiteral("album rotate takes ALBUM, left or right, and FILE..."));
    const auto records = RecordsNamed(album, args.positional.mid(2));
    if (!records)
        return ExitFailed;
    CliProgressSink progress;
    const int done = RotatePhotos(album, *records, way == QLatin1String("left") ? Turn::Left : Turn::Right, progress);
    return Finish(album, done, records->size());
}

int AlbumEdit(const CliArguments &args, AlbumDocument &album)
{
    const QString name = args.positional.value(1);
    const auto effect = std::find_if(std::begin(Effects), std::end(Effects), [&](const NamedEffect &e) { return name == QLatin1String(e.name); });
    if (args.positional.size() < 3 || effect == std::end(Effects))
        return args.UsageError(QStringLiteral("album edit takes ALBUM, bw, sepia or enhance, and FILE..."));
    const auto records = RecordsNamed(album, args.positional.mid(2));
    if (!records)
        return ExitFailed;
    CliProgressSink progress;
    return Finish(album, ApplyEffectToPhotos(album, *records, effect->effect, progress), records->size());
}

int AlbumAdjust(const CliArguments &args, AlbumDocument &album)
{
    const auto sliders = Numbers(args.positional.mid(1, 4));
    if (args.positional.size() < 6 || !sliders)
        return args.UsageError(QStringLiteral("album adjust takes ALBUM, CONTRAST, RED, GREEN, BLUE and FILE..."));
    const auto records = RecordsNamed(album, args.positional.mid(5));
    if (!records)
        return ExitFailed;
    CliProgressSink progress;
    const AdjustSliders positions{(*sliders)[0], (*sliders)[1], (*sliders)[2], (*sliders)[3]};
    return Finish(album, AdjustPhotos(album, *records, positions, progress), records->size());
}

int AlbumCrop(const CliArguments &args, AlbumDocument &album)
{
    const auto edges = Numbers(args.positional.mid(1, 4));
    if (args.positional.size() != 6 || !edges)
        return args.UsageError(QStringLiteral("album crop takes ALBUM, LEFT, TOP, RIGHT, BOTTOM and FILE"));
    const auto records = RecordsNamed(album, {args.positional[5]});
    if (!records)
        return ExitFailed;
    return Finish(album, CropPhoto(album, records->front(), {(*edges)[0], (*edges)[1], (*edges)[2], (*edges)[3]}), 1);
}

int AlbumRevert(const CliArguments &args, AlbumDocument &album)
{
    if (args.positional.size() < 2)
        return args.UsageError(QStringLiteral("album revert takes ALBUM and FILE..."));
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    CliProgressSink progress;
    QStringList failures;
    const int done = RevertPhotos(album, *records, progress, &failures);
    for (const QString &failure : std::as_const(failures))
        Fail(failure);
    // A photo never edited has no original: asking for it is an error the user should hear of.
    return Finish(album, done, records->size());
}

int AlbumWriteMetadata(const CliArguments &args, AlbumDocument &album)
{
    QList<int> indices;
    if (args.positional.size() > 1) {
        const auto records = RecordsNamed(album, args.positional.mid(1));
        if (!records)
            return ExitFailed;
        indices = *records;
    } else {
        for (int i = 1; i <= album.RecordCount(); ++i)
            indices << i;
    }
    CliProgressSink progress;
    QStringList failures;
    WriteMetadataOfPhotos(album, indices, progress, &failures);
    const int saved = SaveAndFinish(album);
    for (const QString &failure : failures)
        Fail(failure);
    return failures.isEmpty() ? saved : ExitFailed;
}
