#include "library/OrvAlbumImporter.h"

#include "library/AlbumDocument.h"
#include "imaging/ImageTags.h"
#include "library/ImportedPhoto.h"
#include "app/Language.h"
#include "imaging/ParallelWork.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Settings.h"
#include "imaging/Thumbnail.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
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

QString DropFolder(const QString &album)
{
    return QDir::cleanPath(album) + u'/' + AlbumFormat::DropFolderName;
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
std::vector<OrvAlbumImporter::Job> OrvAlbumImporter::Plan(const QStringList &paths, ImportReport &report) const
{
    const QString drop = DropFolder(document->Path());
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();
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
    const QString album = document->Path();
    const QString photos = GetPhotoFilesPath(album);
    const QString thumbnails = AlbumFormat::ThumbnailFolder(album);
    const QString drop = DropFolder(album);
    QDir().mkpath(thumbnails);

    using PhotoRecord::FoldedName;
    Names names;
    const QStringList inFolder = QDir(photos).entryList(QDir::Files | QDir::Hidden | QDir::System);
    const QStringList records = document->RecordFiles();
    for (const QStringList *list : {&inFolder, &records}) {
        for (const QString &name : *list)
            names.photos.insert(FoldedName(name));
    }
    for (const QString &name : QDir(thumbnails).entryList(QDir::Files | QDir::Hidden | QDir::System))
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

    std::vector<Job> jobs = Plan(paths, report);
    progress.Begin(GetLocalizedString(QStringLiteral("Importing"), QStringLiteral("General")), static_cast<int>(jobs.size()));
    std::size_t next = 0;
    bool cancelled = false;
    while (next < jobs.size() && !cancelled) {
        std::vector<Job> batch;
        for (; next < jobs.size() && batch.size() < static_cast<std::size_t>(BatchSize()); ++next) {
            Job job = jobs[next];
            const QString name = QFileInfo(job.source).fileName();
            job.inPlace = LiesIn(job.source, photos) && !names.recorded.contains(name) && !names.claimed.contains(name);
            job.move = !job.inPlace && LiesIn(job.source, drop);
            job.name = job.inPlace ? name : freeName(name);
            if (job.inPlace)
                names.claimed.insert(name);
            batch.push_back(std::move(job));
        }
        ProcessBatch(batch);
        for (const Job &job : batch) {
            if (!job.photo.placed) {
                report.notImported << FileProblem{job.source, job.photo.placed.message};
                continue;
            }
            const PhotoInfo info = static_cast<std::size_t>(job.sourceIndex) < infos.size() ? infos[static_cast<std::size_t>(job.sourceIndex)] : PhotoInfo();
            const int index = document->AppendRecord();
            FillRecord(index, job, info);
            report.imported << index;
            report.sources << job.source;
            if (!job.photo.warning.isEmpty())
                report.warnings << FileProblem{job.source, job.photo.warning};
        }
        progress.Advance(static_cast<int>(next));
        cancelled = progress.Cancelled();
    }
    for (; next < jobs.size(); ++next)
        report.notImported << FileProblem{jobs[next].source, QStringLiteral("not imported: the import was stopped first")};
    if (!cancelled && std::any_of(paths.begin(), paths.end(), [&](const QString &p) { return SamePath(p, drop); }))
        ClearDropFolder(report);
    progress.End();
    if (!report.imported.isEmpty())
        document->DocumentWasModified();
    return report;
}

void OrvAlbumImporter::ProcessBatch(std::vector<Job> &batch) const
{
    const QString photos = GetPhotoFilesPath(document->Path());
    const QString thumbnails = AlbumFormat::ThumbnailFolder(document->Path());
    const ThumbnailSource source = fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo;
    const PhotosSharedOverCores shared;
    RunInParallel(static_cast<qsizetype>(batch.size()), [&](qsizetype i) {
        Job &job = batch[static_cast<std::size_t>(i)];
        const QString destination = photos + u'/' + job.name;
        const PlacedHow how = job.inPlace ? PlacedHow::AlreadyThere : job.move ? PlacedHow::Move : PlacedHow::Copy;
        job.photo = PlaceAndReadPhoto(job.source, destination, how, thumbnails + u'/' + PhotoRecord::ThumbnailName(job.name), source);
    });
}

// The record's keys in their documented order; the information given with the file goes last,
// over what the tags said.
void OrvAlbumImporter::FillRecord(int index, const Job &job, const PhotoInfo &info)
{
    DataList &list = document->List();
    const ImportedPhoto &photo = job.photo;
    const ImageTags &tags = photo.tags;
    using namespace PhotoRecord;
    const QString archived = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const std::pair<const QString &, QString> values[] = {
        {File, job.name}, {Size, QString::number(photo.facts.size)}, {Modified, photo.facts.modified},
        {Created, photo.created}, {Archived, archived}, {Width, QString::number(photo.facts.width)},
        {Height, QString::number(photo.facts.height)},
    };
    for (const auto &[key, value] : values)
        list.SetItemProperty(key, value, index);
    for (const auto &[key, value] : tags.RecordValues())
        list.SetItemProperty(key, key == CaptureDate && value.isEmpty() ? photo.facts.modified : value, index);
    for (auto it = info.begin(); it != info.end(); ++it) {
        if (!it.value().isEmpty())
            list.SetItemProperty(it.key(), it.value(), index);
    }
}

// What the drop folder still holds directly is not a photo of this album: it is kept beside the
// album under a free name. The drop folder then goes only when nothing is left in it: a folder
// inside it (a card's DCIM) and what it holds stay where they are, and were reported.
void OrvAlbumImporter::ClearDropFolder(ImportReport &report)
{
    const QString drop = DropFolder(document->Path());
    const QString kept = QDir::cleanPath(document->Path()) + u'/' + AlbumFormat::NonPhotoFolderName;
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

bool OrvAlbumImporter::ReloadFile(int index)
{
    const QString path = document ? document->PhotoFilePath(index) : QString();
    if (path.isEmpty() || !QFileInfo::exists(path))
        return false;
    const ImportedPhoto photo = PlaceAndReadPhoto(path, path, PlacedHow::AlreadyThere, document->ThumbnailFilePath(index),
                                                  fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo);
    if (!photo.placed)
        return false;
    DataList &list = document->List();
    list.SetItemProperty(PhotoRecord::Size, QString::number(photo.facts.size), index);
    list.SetItemProperty(PhotoRecord::Modified, photo.facts.modified, index);
    list.SetItemProperty(PhotoRecord::Height, QString::number(photo.facts.height), index);
    list.SetItemProperty(PhotoRecord::Width, QString::number(photo.facts.width), index);
    document->DocumentWasModified();
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
bool OrvAlbumImporter::ReimportCurrentFile()
{
    const int index = document ? document->CurrentIndex() : 0;
    const QString path = document ? document->PhotoFilePath(index) : QString();
    if (path.isEmpty() || !QFileInfo::exists(path) || !PhotoRecord::IsPhotoFile(path, PhotoRecord::AllowNonJpeg()))
        return false;
    Job job{path, 0, QFileInfo(path).fileName(), false, true, {}};
    job.photo = PlaceAndReadPhoto(path, path, PlacedHow::AlreadyThere, document->ThumbnailFilePath(index),
                                  fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo);
    if (!job.photo.placed)
        return false;
    using namespace PhotoRecord;
    const ImageTags &tags = job.photo.tags;
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
    document->List().ClearItem(index);
    FillRecord(index, job, kept);
    document->DocumentWasModified();
    return true;
}
