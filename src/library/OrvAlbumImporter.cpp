#include "library/OrvAlbumImporter.h"

#include "library/AlbumDocument.h"
#include "imaging/ImageTags.h"
#include "library/ImportedPhoto.h"
#include "library/KeptOriginals.h"
#include "app/Language.h"
#include "imaging/ParallelWork.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Settings.h"
#include "imaging/Thumbnail.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QThread>

// The names a new file must not get: those of the album's photo files, thumbnails and records and
// those given earlier in the run, in any letter case (PhotoRecord::FoldedName); and which files
// of the photo files folder already have their record or were taken in place by this run.
struct OrvAlbumImporter::Names {
    QSet<QString> photos;
    QSet<QString> thumbnails;
    QSet<QString> recorded;
    QSet<QString> claimed;
};

// Where the run puts things, read from the document once.
struct OrvAlbumImporter::Layout {
    QString album;
    QString photos;
    QString thumbnails;
    QString drop;
};

struct OrvAlbumImporter::Job {
    QString source;
    int sourceIndex = 0;   // which requested path it came from
    QString name;          // in the album
    bool move = false;     // out of the drop folder
    bool inPlace = false;  // already in the photo files folder, only the record is missing
    ImportedPhoto photo;   // filled on a worker thread
};

namespace {

// Work goes to the cores a few files at a time: enough to keep them busy, few enough that
// memory stays flat, that Cancel answers quickly and that an interrupted run loses little.
int BatchSize()
{
    return std::max(16, QThread::idealThreadCount() * 16);
}

// Paths are compared as the system compares them: on Linux two folders whose names differ only in
// letter case are two folders.
bool SamePath(const QString &a, const QString &b)
{
    return QDir::cleanPath(a) == QDir::cleanPath(b);
}

bool LiesIn(const QString &path, const QString &folder)
{
    return SamePath(QFileInfo(path).absolutePath(), folder);
}

QString NotAPhoto(const QString &fileName)
{
    return PhotoRecord::IsPhotoFile(fileName, true)
        ? QStringLiteral("not a JPEG photo: other pictures are imported only when [System] AllowNonJPEG is 1")
        : QStringLiteral("not a photo: only .jpeg and .jpg files (with AllowNonJPEG also .tif, .tiff, .png, .bmp, .psd and .gif) are imported");
}

} // namespace

OrvAlbumImporter::OrvAlbumImporter()
    : fastThumbnails(SettingNumber(ReadSetting(QStringLiteral("Layout"), QStringLiteral("FastMakeThumbnail"))) != 0)
    , allowNonJpeg(PhotoRecord::AllowNonJpeg())
{
}

void OrvAlbumImporter::SetDocument(AlbumDocument *target)
{
    document = target;
}

ImportReport OrvAlbumImporter::ImportFiles(const QStringList &paths, ProgressSink &progress)
{
    return Import(paths, {}, progress);
}

ImportReport OrvAlbumImporter::ImportFilesWithInfo(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress)
{
    return Import(paths, infos, progress);
}

// The files to import, by the album's classification; every path or file that will not be
// imported is reported here with the reason.
std::vector<OrvAlbumImporter::Job> OrvAlbumImporter::Plan(const QStringList &paths, const Layout &layout, ImportReport &report) const
{
    const QString &drop = layout.drop;
    std::vector<Job> jobs;
    for (int i = 0; i < paths.size(); ++i) {
        const QFileInfo source(paths[i]);
        if (!source.exists()) {
            report.notImported << FileProblem{paths[i], QStringLiteral("does not exist")};
            continue;
        }
        QFileInfoList files;
        const bool dropFolder = source.isDir() && SamePath(source.absoluteFilePath(), drop);
        if (!source.isDir()) {
            files = {source};
        } else {
            for (const QFileInfo &entry : QDir(source.absoluteFilePath()).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
                if (!entry.isDir()) {
                    files << entry;
                } else if (dropFolder) {
                    QDirIterator inside(entry.absoluteFilePath(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
                    while (inside.hasNext()) {
                        report.notImported << FileProblem{inside.next(), QStringLiteral("lies in a subfolder of the drop folder \"%1\": only the files directly in it are imported; it stays where it is").arg(AlbumFormat::DropFolderName)};
                    }
                } else {
                    report.notImported << FileProblem{entry.absoluteFilePath(), QStringLiteral("is a folder: only the files directly in %1 are imported").arg(source.absoluteFilePath())};
                }
            }
        }
        const std::size_t before = jobs.size();
        for (const QFileInfo &file : files) {
            if (PhotoRecord::IsPhotoFile(file.fileName(), allowNonJpeg))
                jobs.push_back(Job{file.absoluteFilePath(), i, {}, false, false, {}});
            else
                report.notImported << FileProblem{file.absoluteFilePath(), NotAPhoto(file.fileName())};
        }
        if (source.isDir() && !dropFolder && jobs.size() == before)
            report.notImported << FileProblem{source.absoluteFilePath(), QStringLiteral("holds no photo to import")};
    }
    return jobs;
}

ImportReport OrvAlbumImporter::Import(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress)
{
    ImportReport report;
    if (!document)
        return report;
    Layout layout;
    QStringList records;
    progress.Apply([&] {
        layout = {document->Path(), document->PhotoFilesFolder(), document->ThumbnailsFolder(), AlbumFormat::DropFolderPath(document->Path())};
        records = document->RecordFiles();
    });
    QDir().mkpath(layout.thumbnails);

    using PhotoRecord::FoldedName;
    Names names;
    const QStringList inFolder = QDir(layout.photos).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QStringList *list : {&inFolder, static_cast<const QStringList *>(&records)}) {
        for (const QString &name : *list)
            names.photos.insert(FoldedName(name));
    }
    for (const QString &name : QDir(layout.thumbnails).entryList(QDir::Files | QDir::Hidden | QDir::System))
        names.thumbnails.insert(FoldedName(name));
    const QList<int> recordOf = PhotoRecord::MatchNames(inFolder, records);
    for (qsizetype i = 0; i < inFolder.size(); ++i) {
        if (recordOf[i] >= 0)
            names.recorded.insert(inFolder[i]);
    }
    const auto freeName = [&](const QString &name) {
        QString chosen = PhotoRecord::FreeName(name, [&](const QString &candidate) {
            return names.photos.contains(FoldedName(candidate)) || names.thumbnails.contains(FoldedName(PhotoRecord::ThumbnailName(candidate)));
        });
        names.photos.insert(FoldedName(chosen));
        return chosen;
    };

    std::vector<Job> jobs = Plan(paths, layout, report);
    progress.Begin(GetLocalizedString(QStringLiteral("Importing"), QStringLiteral("General")), static_cast<int>(jobs.size()));
    std::size_t next = 0;
    bool cancelled = false;
    while (next < jobs.size() && !cancelled) {
        std::vector<Job> batch;
        for (; next < jobs.size() && batch.size() < static_cast<std::size_t>(BatchSize()); ++next) {
            Job job = jobs[next];
            const QString name = QFileInfo(job.source).fileName();
            job.inPlace = LiesIn(job.source, layout.photos) && !names.recorded.contains(name) && !names.claimed.contains(name);
            job.move = !job.inPlace && LiesIn(job.source, layout.drop);
            job.name = job.inPlace ? name : freeName(name);
            if (job.inPlace)
                names.claimed.insert(name);
            batch.push_back(std::move(job));
        }
        ProcessBatch(batch, layout);
        std::vector<RecordValues> made;
        for (const Job &job : batch) {
            if (!job.photo.placed) {
                report.notImported << FileProblem{job.source, job.photo.placed.message};
                continue;
            }
            const PhotoInfo info = static_cast<std::size_t>(job.sourceIndex) < infos.size() ? infos[static_cast<std::size_t>(job.sourceIndex)] : PhotoInfo();
            // A photo just taken in was never edited here: an original kept under its name belongs
            // to a photo that left the album, and must never be put back in place of this one.
            QFile::remove(KeptOriginals::PathOf(layout.album, job.name));
            made.push_back(MakeRecord(job, info));
            report.sources << job.source;
            if (!job.photo.warning.isEmpty())
                report.warnings << FileProblem{job.source, job.photo.warning};
        }
        progress.Apply([&] {
            for (const RecordValues &values : made)
                report.imported << document->AppendRecord(values);
        });
        progress.Advance(static_cast<int>(next));
        cancelled = progress.Cancelled();
    }
    for (; next < jobs.size(); ++next)
        report.notImported << FileProblem{jobs[next].source, QStringLiteral("not imported: the import was stopped first")};
    if (!cancelled && std::any_of(paths.begin(), paths.end(), [&](const QString &p) { return SamePath(p, layout.drop); }))
        ClearDropFolder(layout, report);
    progress.End();
    return report;
}

void OrvAlbumImporter::ProcessBatch(std::vector<Job> &batch, const Layout &layout) const
{
    const ThumbnailSource source = fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo;
    const PhotosSharedOverCores shared;
    RunInParallel(static_cast<qsizetype>(batch.size()), [&](qsizetype i) {
        Job &job = batch[static_cast<std::size_t>(i)];
        const QString destination = layout.photos + u'/' + job.name;
        const PlacedHow how = job.inPlace ? PlacedHow::AlreadyThere : job.move ? PlacedHow::Move : PlacedHow::Copy;
        job.photo = PlaceAndReadPhoto(job.source, destination, how, layout.thumbnails + u'/' + PhotoRecord::ThumbnailName(job.name), source);
    });
}

// The record's keys in their documented order; the information given with the file goes last,
// over what the tags said.
RecordValues OrvAlbumImporter::MakeRecord(const Job &job, const PhotoInfo &info)
{
    const ImportedPhoto &photo = job.photo;
    const ImageTags &tags = photo.tags;
    using namespace PhotoRecord;
    const QString archived = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    RecordValues values = {
        {File, job.name}, {Size, QString::number(photo.facts.size)}, {Modified, photo.facts.modified},
        {Created, photo.created}, {Archived, archived}, {Width, QString::number(photo.facts.width)},
        {Height, QString::number(photo.facts.height)},
    };
    for (const auto &[key, value] : tags.RecordValues())
        values.append({key, key == CaptureDate && value.isEmpty() ? photo.facts.modified : value});
    for (auto it = info.begin(); it != info.end(); ++it) {
        if (it.value().isEmpty())
            continue;
        auto same = std::find_if(values.begin(), values.end(), [&](const auto &entry) { return entry.first == it.key(); });
        if (same != values.end())
            same->second = it.value();
        else
            values.append({it.key(), it.value()});
    }
    return values;
}

// What the drop folder still holds directly is not a photo of this album: it is kept beside the
// album under a free name. The drop folder then goes only when nothing is left in it: a folder
// inside it (a card's DCIM) and what it holds stay where they are, and were reported.
void OrvAlbumImporter::ClearDropFolder(const Layout &layout, ImportReport &report)
{
    const QString &drop = layout.drop;
    const QString kept = QDir::cleanPath(layout.album) + u'/' + AlbumFormat::NonPhotoFolderName;
    const QFileInfoList left = QDir(drop).entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
    if (!left.isEmpty())
        QDir().mkpath(kept);
    for (const QFileInfo &file : left) {
        const QString name = PhotoRecord::FreeName(file.fileName(), [&](const QString &candidate) { return QFileInfo::exists(kept + u'/' + candidate); });
        const bool moved = QFile::rename(file.absoluteFilePath(), kept + u'/' + name);
        const QString where = moved ? QStringLiteral("; kept in %1 as %2").arg(AlbumFormat::NonPhotoFolderName, name)
                                    : QStringLiteral("; it could not be moved to %1 and stays where it is").arg(AlbumFormat::NonPhotoFolderName);
        auto problem = std::find_if(report.notImported.begin(), report.notImported.end(),
                                    [&](const FileProblem &p) { return p.path == file.absoluteFilePath(); });
        if (problem != report.notImported.end())
            problem->reason += where;
        else
            report.notImported << FileProblem{file.absoluteFilePath(), QStringLiteral("not imported") + where};
    }
    QDir().rmdir(drop); // errors ignored: a plain removal, which leaves a folder that still holds anything
}

// The record's file read again, its thumbnail made again; the paths are read in Apply, the file
// outside it. A record naming no bare file, or a file gone, gives a failed result.
ImportedPhoto OrvAlbumImporter::ReadAgain(int index, ProgressSink &progress, QString *path) const
{
    QString photo;
    QString thumbnail;
    progress.Apply([&] {
        photo = document ? document->PhotoFilePath(index) : QString();
        thumbnail = document ? document->ThumbnailFilePath(index) : QString();
    });
    if (path)
        *path = photo;
    if (photo.isEmpty() || !QFileInfo::exists(photo)) {
        ImportedPhoto none;
        none.placed = Result::Failure(QStringLiteral("no photo file"));
        return none;
    }
    return PlaceAndReadPhoto(photo, photo, PlacedHow::AlreadyThere, thumbnail,
                             fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo);
}

bool OrvAlbumImporter::ReloadFile(int index, ProgressSink &progress)
{
    const ImportedPhoto photo = ReadAgain(index, progress);
    if (!photo.placed)
        return false;
    progress.Apply([&] {
        document->SetRecordValues(index, RecordValues{{PhotoRecord::Size, QString::number(photo.facts.size)},
                                                      {PhotoRecord::Modified, photo.facts.modified},
                                                      {PhotoRecord::Height, QString::number(photo.facts.height)},
                                                      {PhotoRecord::Width, QString::number(photo.facts.width)}});
    });
    return true;
}
// What the user gave is kept: the star, the elevation (never in the tags), a note or keywords the
// file does not hold, and the capture date and position when they are the user's. A value is
// taken as the user's when the record holds one other than what the file gives: a capture date
// other than the tags' date (or, for a photo without one, other than the last-modified time the
// record was filled from), a position other than the tags' position. So a date corrected by hand,
// by time correction or on another machine, and a position placed by hand or matched from a
// track survive; a value that was only read from the file is read again. The file's own tags stay
// in the file, so keeping the record's value loses nothing, while replacing it could.
bool OrvAlbumImporter::ReimportFile(int index, ProgressSink &progress)
{
    QString path;
    Job job;
    job.photo = ReadAgain(index, progress, &path);
    if (!job.photo.placed || !PhotoRecord::IsPhotoFile(path, allowNonJpeg))
        return false;
    job.source = path;
    job.name = QFileInfo(path).fileName();
    job.inPlace = true;
    using namespace PhotoRecord;
    const ImageTags &tags = job.photo.tags;
    bool done = false;
    progress.Apply([&] {
        if (document->PhotoFilePath(index) != path)
            return; // the record went elsewhere meanwhile
        const auto old = [&](const QString &key) { return document->Record(key, index); };
        PhotoInfo kept;
        for (const QString &key : {Star, Elevation, Description, Keywords})
            kept.insert(key, old(key));
        if (!tags.caption.isEmpty())
            kept.remove(Description);
        if (!tags.keywords.isEmpty())
            kept.remove(Keywords);
        const QString readDate = tags.dateTaken.isEmpty() ? job.photo.facts.modified : tags.dateTaken;
        if (old(CaptureDate) != readDate && old(CaptureDate) != old(Modified))
            kept.insert(CaptureDate, old(CaptureDate));
        if (old(Longitude) != tags.longitude || old(Latitude) != tags.latitude) {
            kept.insert(Longitude, old(Longitude));
            kept.insert(Latitude, old(Latitude));
        }
        document->ReplaceRecord(index, MakeRecord(job, kept));
        done = true;
    });
    return done;
}
