#include "library/AlbumOpening.h"

#include "app/AppState.h"
#include "app/Language.h"
#include "library/OrvAlbumImporter.h"
#include "library/OutsideChanges.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

namespace {

QString Localized(const char *key, const char *section)
{
    return GetLocalizedString(QLatin1String(key), QLatin1String(section));
}

bool CheckCalledFor(const AlbumDocument &document, bool packageCreated, const OpenRequest &request)
{
    if (packageCreated || request.arrangeByTime)
        return true;
    return IsAlbum(document.Path()) ? AppState().checkModifiedWhenOpenAlbum : AppState().checkModifiedWhenOpenFolder;
}

} // namespace

AlbumDocument::OpenResult OpenAlbumDocument(const QString &path, const OpenRequest &request, Prompter &prompter,
                                            ProgressSink &progress)
{
    const bool packageCreated = !path.isEmpty() && !QFileInfo::exists(AlbumFormat::StudioPlistPath(path));
    AlbumDocument::OpenResult opened = AlbumDocument::Open(path);
    if (!opened.document || !opened.load)
        return opened;
    AlbumDocument &document = *opened.document;
    // The document lives on the thread its changes are applied on, the interface thread when the
    // opening runs on a worker: it was made here and no one else knows it yet, so it can go there.
    QThread *owner = nullptr;
    progress.Apply([&] { owner = QThread::currentThread(); });
    if (owner != document.thread())
        document.moveToThread(owner);

    const QString drop = AlbumFormat::DropFolderPath(path);
    if (QFileInfo(drop).isDir()) {
        OrvAlbumImporter importer;
        importer.SetDocument(&document);
        opened.imported = importer.ImportFiles({drop}, progress);
    }
    // A fresh list totals 0 bytes: this is how a plain folder gets its photos the first time.
    bool check = false;
    qint64 listed = 0;
    QString folder;
    progress.Apply([&] {
        check = CheckCalledFor(document, packageCreated, request);
        listed = document.GetTotalBytesByDatalist();
        folder = document.PhotoFilesFolder();
    });
    if (check && listed != AlbumDocument::TotalPhotoBytesIn(folder))
        opened.imported.Add(ActionCheckModified(document, prompter, progress));
    progress.Apply([&] {
        if (request.arrangeByTime && document.RecordCount() > 0)
            document.ArrangePhotos(PhotoRecord::CaptureDate, true, false, nullptr);
        if (document.IsModified()) {
            if (const Result saved = document.SaveDocumentToFile(); !saved)
                opened.imported.warnings << FileProblem{AlbumFormat::StudioPlistPath(path), saved.message};
        }
    });
    return opened;
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
