#include "PhotoTransfer.h"

#include "AlbumDocument.h"
#include "DataList.h"
#include "InfoExchange.h"
#include "OrvAlbumImporter.h"

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

// The cut photos leave their first album once they are safely in the new one.
void RemoveFromSource(const QString &sourceAlbum, const QStringList &files)
{
    AlbumDocument::OpenResult source = AlbumDocument::Open(sourceAlbum);
    if (!source.document || !source.load)
        return;
    QList<int> indices;
    for (const QString &file : files) {
        const int index = source.document->FindRecord(QFileInfo(file).fileName());
        if (index > 0 && QDir::cleanPath(source.document->PhotoFilePath(index)) == QDir::cleanPath(file))
            indices << index;
    }
    source.document->DeleteItems(indices);
    source.document->SaveDocumentToFile();
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

QList<int> ActionPaste(AlbumDocument &document, ProgressSink &progress)
{
    DataList list;
    if (!list.Load(InfoExchangePath()))
        return {};
    const QString cutFrom = list.GetDocumentProperty(CutFromKey);
    if (!cutFrom.isEmpty() && QDir::cleanPath(cutFrom) == document.Path())
        return {};
    QStringList files;
    std::vector<PhotoInfo> infos;
    for (const ExchangedPhoto &photo : ReadInfoExchange(InfoExchangePath())) {
        if (!QFileInfo(photo.file).isFile())
            continue;
        files << photo.file;
        infos.push_back(photo.values);
    }
    OrvAlbumImporter importer;
    importer.SetDocument(&document);
    QList<int> added = importer.ImportFilesWithInfo(files, infos, progress);
    if (!cutFrom.isEmpty() && !added.isEmpty()) {
        document.SaveDocumentToFile(); // the photos are recorded here before they leave there
        RemoveFromSource(cutFrom, importer.ImportedSources());
        if (importer.ImportedSources().size() == files.size())
            QFile::remove(InfoExchangePath());
    }
    return added;
}
