#include "library/AlbumOpening.h"

#include "app/AppState.h"
#include "app/Language.h"
#include "library/OrvAlbumImporter.h"
#include "library/OutsideChanges.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "datalist/DataListBatches.h"
#include "datalist/DataListScanner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <utility>

namespace {

QString Localized(const char *key, const char *section)
{
    return GetLocalizedString(QLatin1String(key), QLatin1String(section));
}

bool CheckCalledFor(const AlbumDocument &document, bool listMade, const OpenRequest &request)
{
    if (listMade || request.arrangeByTime)
        return true;
    return IsAlbum(document.Path()) ? AppState().checkModifiedWhenOpenAlbum : AppState().checkModifiedWhenOpenFolder;
}

} // namespace

AlbumDocument::OpenResult PrepareAlbumDocument(const QString &path, ProgressSink &progress)
{
    AlbumDocument::OpenResult prepared = AlbumDocument::Prepare(path);
    if (!prepared.document)
        return prepared;
    // The document lives on the thread its changes are applied on, the interface thread when the
    // opening runs on a worker: it was made here and no one else knows it yet, so it can go there.
    QThread *owner = nullptr;
    progress.Apply([&] { owner = QThread::currentThread(); });
    if (owner != prepared.document->thread())
        prepared.document->moveToThread(owner);
    return prepared;
}

bool OpeningMakesList(const QString &path)
{
    return !path.isEmpty() && !QFileInfo::exists(AlbumFormat::StudioPlistPath(path));
}

AlbumDocument::OpenResult OpenAlbumDocument(const QString &path, const OpenRequest &request, Prompter &prompter,
                                            ProgressSink &progress)
{
    const bool listMade = OpeningMakesList(path);
    AlbumDocument::OpenResult opened = PrepareAlbumDocument(path, progress);
    if (!opened.document)
        return opened;
    AlbumDocument &document = *opened.document;
    opened.load = StreamAlbumRecords(document, progress);
    if (opened.load && !progress.Cancelled())
        opened.imported = CompleteOpening(document, listMade, request, prompter, progress);
    return opened;
}

DataList::LoadResult StreamAlbumRecords(AlbumDocument &document, ProgressSink &progress)
{
    // A first screen holds a few dozen cells; later batches are big enough that handing them
    // over costs nothing against reading them.
    constexpr int FirstBatch = 200;
    constexpr int LaterBatches = 5000;
    const QString path = AlbumFormat::StudioPlistPath(document.Path());
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {DataList::LoadStatus::Unreadable, QStringLiteral("Cannot read %1: %2").arg(path, file.errorString())};
    if (file.size() == 0)
        return {DataList::LoadStatus::Unreadable, QStringLiteral("%1 is empty.").arg(path)};

    bool delivered = false;
    DataListBatches batches(
        FirstBatch, LaterBatches,
        [&](DataList &batch) {
            if (progress.Cancelled())
                return false;
            progress.Apply([&] { document.TakeLoadedRecords(batch); });
            delivered = true;
            return true;
        },
        [&] {
            if (std::exchange(delivered, false))
                progress.Apply([&] { document.ForgetLoadedRecords(); });
        });
    DataList properties;
    const DataListScanner::Outcome outcome = DataListScanner(file, properties, batches).Run();
    if (outcome == DataListScanner::Outcome::Stopped)
        return {};
    if (outcome == DataListScanner::Outcome::Scanned) {
        batches.Flush();
        if (!progress.Cancelled())
            progress.Apply([&] { document.FinishLoading(properties); });
        return {};
    }
    // Not in the program's own form (values of other types, comments), or damaged: DataList's own
    // reader keeps what the scan would not, or names the fault.
    batches.Restart();
    if (progress.Cancelled())
        return {};
    DataList whole;
    DataList::LoadResult loaded = whole.Load(path);
    if (loaded)
        progress.Apply([&] { document.FinishLoading(std::move(whole)); });
    return loaded;
}

ImportReport CompleteOpening(AlbumDocument &document, bool listMade, const OpenRequest &request, Prompter &prompter,
                             ProgressSink &progress)
{
    ImportReport imported;
    const QString &path = document.Path();
    const QString drop = AlbumFormat::DropFolderPath(path);
    if (QFileInfo(drop).isDir()) {
        OrvAlbumImporter importer;
        importer.SetDocument(&document);
        imported = importer.ImportFiles({drop}, progress);
    }
    // A fresh list totals 0 bytes: this is how a plain folder gets its photos the first time.
    bool check = false;
    qint64 listed = 0;
    QString folder;
    progress.Apply([&] {
        check = CheckCalledFor(document, listMade, request);
        listed = document.GetTotalBytesByDatalist();
        folder = document.PhotoFilesFolder();
    });
    if (check && listed != AlbumDocument::TotalPhotoBytesIn(folder))
        imported.Add(ActionCheckModified(document, prompter, progress));
    progress.Apply([&] {
        if (request.arrangeByTime && document.RecordCount() > 0)
            document.ArrangePhotos(PhotoRecord::CaptureDate, true, false, nullptr);
        if (document.IsModified()) {
            if (const Result saved = document.SaveDocumentToFile(); !saved)
                imported.warnings << FileProblem{AlbumFormat::StudioPlistPath(path), saved.message};
        }
    });
    return imported;
}

// The records are read in one Apply, the folder is looked at outside it; each changed record is
// read again outside and written inside. The records' indices stay true throughout: imports only
// append, and removals come last, highest first.
ImportReport ActionCheckModified(AlbumDocument &document, Prompter &prompter, ProgressSink &progress)
{
    OrvAlbumImporter importer;
    importer.SetDocument(&document);
    std::vector<RecordedFile> records;
    QString folder;
    progress.Apply([&] {
        records = RecordedFiles(document);
        folder = document.PhotoFilesFolder();
    });
    const OutsideChanges changes = FindOutsideChanges(folder, records, PhotoRecord::AllowNonJpeg());
    for (const int index : changes.changed)
        importer.ReloadFile(index, progress);
    ImportReport report;
    if (!changes.added.isEmpty())
        report = importer.ImportFiles(changes.added, progress);
    if (changes.missing.isEmpty())
        return report;
    const QString count = QString::number(changes.missing.size());
    const QString text = Localized("MessageRemovePhotosNotExist", "OrvDocument").replace(QStringLiteral("%1"), count);
    if (!prompter.AskYesNo(Localized("RemovePhotosNotExist", "OrvDocument"), text))
        return report;
    progress.Apply([&] { document.RemoveRecords(changes.missing); });
    return report;
}

int ActionCheckExistingPhotoFiles(AlbumDocument &document, Prompter &prompter, ProgressSink &progress)
{
    std::vector<RecordedFile> records;
    QString folder;
    progress.Apply([&] {
        records = RecordedFiles(document);
        folder = document.PhotoFilesFolder();
    });
    progress.Begin(Localized("Processing", "General"), static_cast<int>(records.size()));
    const QList<int> changed = FindChangedFiles(folder, records);
    progress.End();
    if (changed.isEmpty())
        return 0;
    const QString text = changed.size() == 1
        ? Localized("MessageCheckUpdatedFile", "OrvDocument")
        : Localized("MessageCheckUpdatedFiles", "OrvDocument").replace(QStringLiteral("%1"), QString::number(changed.size()));
    prompter.Inform(Localized("CheckUpdatedFiles", "OrvDocument"), text);
    OrvAlbumImporter importer;
    importer.SetDocument(&document);
    for (const int index : changed)
        importer.ReloadFile(index, progress);
    return static_cast<int>(changed.size());
}
