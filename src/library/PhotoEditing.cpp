#include "library/PhotoEditing.h"

#include "library/AlbumDocument.h"
#include "app/Language.h"
#include "app/LenientNumber.h"
#include "imaging/MetadataWriter.h"
#include "library/KeptOriginals.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "imaging/PhotoReading.h"

#include <QFile>

#include <functional>

namespace {

using Edit = std::function<EditOutcome(const QString &photo, const QString &thumbnail)>;

// Runs inside ProgressSink::Apply: it reads the record's sides to swap them.
void TakeFacts(AlbumDocument &document, int index, const PhotoFileFacts &facts, bool swapSides)
{
    RecordValues values{{PhotoRecord::Size, QString::number(facts.size)}, {PhotoRecord::Modified, facts.modified}};
    if (swapSides) {
        values.append({PhotoRecord::Width, document.Record(PhotoRecord::Height, index)});
        values.append({PhotoRecord::Height, document.Record(PhotoRecord::Width, index)});
    } else if (facts.width > 0 && facts.height > 0) {
        values.append({PhotoRecord::Width, QString::number(facts.width)});
        values.append({PhotoRecord::Height, QString::number(facts.height)});
    }
    document.SetRecordValues(index, values);
}

struct PhotoPaths {
    QString photo;
    QString thumbnail;
    QString original; // where the photo's file is kept before its first edit
};

std::vector<PhotoPaths> PathsOf(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress)
{
    std::vector<PhotoPaths> paths;
    progress.Apply([&] {
        for (const int index : indices) {
            const QString photo = document.PhotoFilePath(index);
            paths.push_back({photo, document.ThumbnailFilePath(index),
                             photo.isEmpty() ? QString() : KeptOriginals::PathOf(document.Path(), document.Record(PhotoRecord::File, index))});
        }
    });
    return paths;
}

// Every edit keeps the photo as it was first; a photo whose original cannot be kept is not
// edited, and an original kept for an edit that then failed is let go again.
EditOutcome EditKeepingOriginal(const PhotoPaths &path, const Edit &edit)
{
    bool madeNow = false;
    if (const Result kept = KeptOriginals::Keep(path.photo, path.original, &madeNow); !kept)
        return {kept, {}, {}};
    EditOutcome outcome = edit(path.photo, path.thumbnail);
    if (!outcome.result && madeNow)
        QFile::remove(path.original);
    return outcome;
}

// The paths are read from the document in one Apply; each file is edited outside it and its
// record takes the new facts in an Apply of its own, in list order.
int EditPhotos(AlbumDocument &document, const QList<int> &indices, const Edit &edit, bool swapSides, ProgressSink &progress)
{
    const std::vector<PhotoPaths> paths = PathsOf(document, indices, progress);
    progress.Begin(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")), static_cast<int>(indices.size()));
    int edited = 0;
    for (qsizetype i = 0; i < indices.size() && !progress.Cancelled(); ++i) {
        const PhotoPaths &path = paths[static_cast<std::size_t>(i)];
        if (!path.photo.isEmpty()) {
            const EditOutcome outcome = EditKeepingOriginal(path, edit);
            if (outcome.result) {
                progress.Apply([&] { TakeFacts(document, indices[i], outcome.facts, swapSides); });
                ++edited;
            }
        }
        progress.Advance(static_cast<int>(i + 1));
    }
    progress.End();
    return edited;
}

} // namespace

int RotatePhotos(AlbumDocument &document, const QList<int> &indices, Turn turn, ProgressSink &progress)
{
    const bool quarter = turn != Turn::HalfTurn;
    return EditPhotos(document, indices, [turn](const QString &photo, const QString &thumbnail) {
        return RotatePhotoFile(photo, turn, thumbnail);
    }, quarter, progress);
}

int ApplyEffectToPhotos(AlbumDocument &document, const QList<int> &indices, PhotoEffect effect, ProgressSink &progress)
{
    return EditPhotos(document, indices, [effect](const QString &photo, const QString &thumbnail) {
        return ApplyEffectToPhotoFile(photo, effect, thumbnail);
    }, false, progress);
}

int AdjustPhotos(AlbumDocument &document, const QList<int> &indices, const AdjustSliders &sliders, ProgressSink &progress)
{
    const ColourTables tables = BuildColourTables(sliders);
    return EditPhotos(document, indices, [&tables](const QString &photo, const QString &thumbnail) {
        return AdjustPhotoFile(photo, tables, thumbnail);
    }, false, progress);
}

int CropPhoto(AlbumDocument &document, int index, const CropRectangle &rectangle)
{
    NoProgress quiet;
    return CropPhoto(document, index, rectangle, quiet);
}

int CropPhoto(AlbumDocument &document, int index, const CropRectangle &rectangle, ProgressSink &progress)
{
    return EditPhotos(document, {index}, [&rectangle](const QString &photo, const QString &thumbnail) {
        return CropPhotoFile(photo, rectangle, thumbnail);
    }, false, progress);
}

int ActionRotateLeft(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress)
{
    return RotatePhotos(document, indices, Turn::Left, progress);
}

int ActionRotateRight(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress)
{
    return RotatePhotos(document, indices, Turn::Right, progress);
}

int RevertPhotos(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress, QStringList *failures)
{
    const std::vector<PhotoPaths> paths = PathsOf(document, indices, progress);
    progress.Begin(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")), static_cast<int>(indices.size()));
    int reverted = 0;
    for (qsizetype i = 0; i < indices.size() && !progress.Cancelled(); ++i) {
        const PhotoPaths &path = paths[static_cast<std::size_t>(i)];
        // A photo never edited has nothing to go back to: it is simply left as it is.
        if (!path.photo.isEmpty() && QFile::exists(path.original)) {
            if (const Result restored = KeptOriginals::Restore(path.original, path.photo); restored) {
                // Read as an import reads it, so the record takes back the values it had then.
                const PhotoReading reading = ReadPhoto(path.photo, path.thumbnail, ThumbnailSource::Photo);
                progress.Apply([&] { TakeFacts(document, indices[i], reading.facts, false); });
                ++reverted;
            } else if (failures) {
                *failures << restored.message;
            }
        }
        progress.Advance(static_cast<int>(i + 1));
    }
    progress.End();
    return reverted;
}

int WriteMetadataOfPhotos(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress, QStringList *failures)
{
    QList<MetadataWriteJob> jobs;
    QList<int> jobIndices;
    progress.Apply([&] {
        for (const int index : indices) {
            const QString photo = document.PhotoFilePath(index);
            if (photo.isEmpty())
                continue;
            PhotoMetadata values;
            values.description = document.Record(PhotoRecord::Description, index);
            values.keywords = document.Record(PhotoRecord::Keywords, index);
            values.longitude = LenientNumber(document.Record(PhotoRecord::Longitude, index));
            values.latitude = LenientNumber(document.Record(PhotoRecord::Latitude, index));
            values.elevation = LenientNumber(document.Record(PhotoRecord::Elevation, index));
            jobs << MetadataWriteJob{photo, values};
            jobIndices << index;
        }
    });
    progress.Begin(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")), static_cast<int>(jobs.size()));
    const QList<MetadataWriteReport> reports = WriteMetadataBatch(jobs, [&progress](qsizetype done, const QString &) {
        progress.Advance(static_cast<int>(done));
        return !progress.Cancelled();
    });
    progress.End();
    int written = 0;
    progress.Apply([&] {
        for (qsizetype i = 0; i < reports.size(); ++i) {
            const MetadataWriteReport &report = reports[i];
            if (report.attempted && report.facts.size >= 0)
                TakeFacts(document, jobIndices[i], report.facts, false);
        }
    });
    for (qsizetype i = 0; i < reports.size(); ++i) {
        const MetadataWriteReport &report = reports[i];
        if (report.attempted && report.result)
            ++written;
        else if (report.attempted && failures)
            *failures << jobs[i].photoPath + QStringLiteral(": ") + report.result.message;
    }
    return written;
}
