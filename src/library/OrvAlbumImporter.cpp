#include "OrvAlbumImporter.h"

#include "AlbumDocument.h"
#include "ImageTags.h"
#include "ImportedPhoto.h"
#include "Language.h"
#include "ParallelWork.h"
#include "PhotoRecord.h"
#include "ProgressSink.h"
#include "Settings.h"
#include "Thumbnail.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QThread>

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

bool LiesIn(const QString &path, const QString &folder)
{
    return QFileInfo(path).absolutePath().toLower() == QDir::cleanPath(folder).toLower();
}

QString FreeNameIn(const QString &name, const std::function<bool(const QString &)> &taken)
{
    if (!taken(name))
        return name;
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString base = dot < 0 ? name : name.left(dot);
    const QString extension = dot < 0 ? QString() : name.mid(dot);
    for (int n = 1;; ++n) {
        QString candidate = base + u'(' + QString::number(n) + u')' + extension;
        if (!taken(candidate))
            return candidate;
    }
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

QList<int> OrvAlbumImporter::ImportFiles(const QStringList &paths, ProgressSink &progress)
{
    return Import(paths, {}, progress);
}

QList<int> OrvAlbumImporter::ImportFilesWithInfo(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress)
{
    return Import(paths, infos, progress);
}

// Photos by the wide classification: the album's own decides later which become records.
std::vector<OrvAlbumImporter::Job> OrvAlbumImporter::Plan(const QStringList &paths) const
{
    std::vector<Job> jobs;
    for (int i = 0; i < paths.size(); ++i) {
        const QFileInfo source(paths[i]);
        QFileInfoList files;
        if (source.isDir())
            files = QDir(source.absoluteFilePath()).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
        else if (source.isFile())
            files = {source};
        for (const QFileInfo &file : files) {
            if (PhotoRecord::IsPhotoFile(file.fileName(), true))
                jobs.push_back(Job{file.absoluteFilePath(), i, {}, false, false, {}});
        }
    }
    return jobs;
}

// Free when neither the photo nor its thumbnail exists, nor is promised to an earlier file of the
// same run: a name whose thumbnail alone is left over is not reused.
QString OrvAlbumImporter::FreeName(const QString &name, const QSet<QString> &reserved) const
{
    const QString photos = GetPhotoFilesPath(document->Path());
    const QString thumbnails = AlbumFormat::ThumbnailFolder(document->Path());
    return FreeNameIn(name, [&](const QString &candidate) {
        return reserved.contains(candidate.toLower()) || QFileInfo::exists(photos + u'/' + candidate)
            || QFileInfo::exists(thumbnails + u'/' + PhotoRecord::ThumbnailName(candidate));
    });
}

QList<int> OrvAlbumImporter::Import(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress)
{
    QList<int> added;
    importedSources.clear();
    if (!document)
        return added;
    const QString album = document->Path();
    const QString photos = GetPhotoFilesPath(album);
    const QString drop = DropFolder(album);
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();
    QDir().mkpath(AlbumFormat::ThumbnailFolder(album));

    std::vector<Job> jobs = Plan(paths);
    progress.Begin(GetLocalizedString(QStringLiteral("Importing"), QStringLiteral("General")), static_cast<int>(jobs.size()));
    QSet<QString> reserved;
    int done = 0;
    bool cancelled = false;
    for (std::size_t start = 0; start < jobs.size() && !cancelled; start += static_cast<std::size_t>(BatchSize())) {
        std::vector<Job> batch;
        for (std::size_t i = start; i < std::min(jobs.size(), start + static_cast<std::size_t>(BatchSize())); ++i) {
            Job job = jobs[i];
            if (!PhotoRecord::IsPhotoFile(job.source, allowNonJpeg))
                continue;
            job.inPlace = LiesIn(job.source, photos);
            job.move = !job.inPlace && LiesIn(job.source, drop);
            job.name = job.inPlace ? QFileInfo(job.source).fileName() : FreeName(QFileInfo(job.source).fileName(), reserved);
            reserved.insert(job.name.toLower());
            batch.push_back(std::move(job));
        }
        ProcessBatch(batch);
        for (const Job &job : batch) {
            if (!job.photo.ok)
                continue;
            const PhotoInfo info = static_cast<std::size_t>(job.sourceIndex) < infos.size() ? infos[static_cast<std::size_t>(job.sourceIndex)] : PhotoInfo();
            const int index = document->AppendRecord();
            FillRecord(index, job, info);
            added << index;
            importedSources << job.source;
        }
        done = static_cast<int>(std::min(jobs.size(), start + static_cast<std::size_t>(BatchSize())));
        progress.Advance(done);
        cancelled = progress.Cancelled();
    }
    if (!cancelled && std::any_of(paths.begin(), paths.end(), [&](const QString &p) { return QDir::cleanPath(p).toLower() == drop.toLower(); }))
        ClearDropFolder();
    progress.End();
    if (!added.isEmpty())
        document->DocumentWasModified();
    return added;
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

// What the drop folder still holds is not a photo of this album: it is kept beside the album
// under a free name, and the drop folder goes.
void OrvAlbumImporter::ClearDropFolder()
{
    const QString drop = DropFolder(document->Path());
    const QString kept = QDir::cleanPath(document->Path()) + u'/' + AlbumFormat::NonPhotoFolderName;
    const QFileInfoList left = QDir(drop).entryInfoList(QDir::Files | QDir::Hidden);
    if (!left.isEmpty())
        QDir().mkpath(kept);
    for (const QFileInfo &file : left) {
        const QString name = FreeNameIn(file.fileName(), [&](const QString &candidate) { return QFileInfo::exists(kept + u'/' + candidate); });
        QFile::rename(file.absoluteFilePath(), kept + u'/' + name);
    }
    QDir(drop).removeRecursively();
}

bool OrvAlbumImporter::ReloadFile(int index)
{
    const QString path = document ? document->PhotoFilePath(index) : QString();
    if (path.isEmpty() || !QFileInfo::exists(path))
        return false;
    const ImportedPhoto photo = PlaceAndReadPhoto(path, path, PlacedHow::AlreadyThere, document->ThumbnailFilePath(index),
                                                  fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo);
    if (!photo.ok)
        return false;
    DataList &list = document->List();
    list.SetItemProperty(PhotoRecord::Size, QString::number(photo.facts.size), index);
    list.SetItemProperty(PhotoRecord::Modified, photo.facts.modified, index);
    list.SetItemProperty(PhotoRecord::Height, QString::number(photo.facts.height), index);
    list.SetItemProperty(PhotoRecord::Width, QString::number(photo.facts.width), index);
    document->DocumentWasModified();
    return true;
}

bool OrvAlbumImporter::ReimportCurrentFile()
{
    const int index = document ? document->CurrentIndex() : 0;
    const QString path = document ? document->PhotoFilePath(index) : QString();
    if (path.isEmpty() || !QFileInfo::exists(path) || !PhotoRecord::IsPhotoFile(path, PhotoRecord::AllowNonJpeg()))
        return false;
    Job job{path, 0, QFileInfo(path).fileName(), false, true, {}};
    job.photo = PlaceAndReadPhoto(path, path, PlacedHow::AlreadyThere, document->ThumbnailFilePath(index),
                                  fastThumbnails ? ThumbnailSource::EmbeddedPreviewFirst : ThumbnailSource::Photo);
    if (!job.photo.ok)
        return false;
    PhotoInfo kept;
    for (const QString &key : {PhotoRecord::Star, PhotoRecord::Elevation, PhotoRecord::Description, PhotoRecord::Keywords})
        kept.insert(key, document->Record(key, index));
    if (!job.photo.tags.caption.isEmpty())
        kept.remove(PhotoRecord::Description);
    if (!job.photo.tags.keywords.isEmpty())
        kept.remove(PhotoRecord::Keywords);
    document->List().ClearItem(index);
    FillRecord(index, job, kept);
    document->DocumentWasModified();
    return true;
}
