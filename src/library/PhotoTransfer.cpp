#include "library/PhotoTransfer.h"

#include "library/AlbumDocument.h"
#include "datalist/DataList.h"
#include "library/InfoExchange.h"
#include "library/OrvAlbumImporter.h"
#include "app/ProgressSink.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const QString CutFromKey = QStringLiteral("CutFrom");

bool WriteExchange(const AlbumDocument &document, const QList<int> &indices, bool cut)
{
    if (!WriteInfoExchange(InfoExchangePath(), document, indices))
        return false;
    if (!cut)
        return true;
    DataList list;
    if (!list.Load(InfoExchangePath()))
        return false;
    list.SetDocumentProperty(CutFromKey, document.Path());
    return list.Save(InfoExchangePath());
}

// The cut photos leave their first album once they are safely in the new one. A photo that cannot
// go to the trash stays there too, and is reported.
void RemoveFromSource(const QString &sourceAlbum, const QStringList &files, ImportReport &report)
{
    AlbumDocument::OpenResult source = AlbumDocument::Open(sourceAlbum);
    if (!source.document || !source.load)
        return;
    QStringList names;
    for (const QString &file : files)
        names << QFileInfo(file).fileName();
    QList<int> indices;
    const QList<int> found = source.document->FindRecords(names);
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (found[i] > 0 && QDir::cleanPath(source.document->PhotoFilePath(found[i])) == QDir::cleanPath(files[i]))
            indices << found[i];
    }
    const AlbumDocument::DeleteReport deleted = source.document->DeleteItems(indices);
    for (const FileProblem &failure : deleted.failures)
        report.warnings << FileProblem{failure.path, QStringLiteral("pasted, but it stays in the album it was cut from: ") + failure.reason};
    if (const Result saved = source.document->SaveDocumentToFile(); !saved)
        report.warnings << FileProblem{sourceAlbum, saved.message};
}

} // namespace

bool ActionCopy(const AlbumDocument &document, const QList<int> &indices)
{
    return WriteExchange(document, indices, false);
}

bool ActionCut(const AlbumDocument &document, const QList<int> &indices)
{
    return WriteExchange(document, indices, true);
}

ImportReport ActionPaste(AlbumDocument &document, ProgressSink &progress)
{
    DataList list;
    ImportReport report;
    if (!list.Load(InfoExchangePath()))
        return report;
    const QString cutFrom = list.GetDocumentProperty(CutFromKey);
    QString album;
    progress.Apply([&] { album = document.Path(); });
    if (!cutFrom.isEmpty() && QDir::cleanPath(cutFrom) == album)
        return report;
    QStringList files;
    std::vector<PhotoInfo> infos;
    for (const ExchangedPhoto &photo : ReadInfoExchange(InfoExchangePath())) {
        if (!QFileInfo(photo.file).isFile()) {
            report.notImported << FileProblem{photo.file, QStringLiteral("no longer exists")};
            continue;
        }
        files << photo.file;
        infos.push_back(photo.values);
    }
    OrvAlbumImporter importer;
    importer.SetDocument(&document);
    const ImportReport imported = importer.ImportFilesWithInfo(files, infos, progress);
    report.Add(imported);
    if (!cutFrom.isEmpty() && !imported.imported.isEmpty()) {
        // The photos are recorded here before they leave there; when this album cannot be
        // written (a damaged list, a full disk) they stay where they were.
        Result saved;
        progress.Apply([&] { saved = document.SaveDocumentToFile(); });
        if (!saved) {
            report.warnings << FileProblem{album, saved.message + QStringLiteral("; the cut photos stay in ") + cutFrom};
            return report;
        }
        RemoveFromSource(cutFrom, imported.sources, report);
        if (imported.sources.size() == files.size())
            QFile::remove(InfoExchangePath());
    }
    return report;
}
