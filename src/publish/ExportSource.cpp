#include "publish/ExportSource.h"

#include "library/AlbumDocument.h"
#include "library/PhotoRecord.h"

#include <QSet>

namespace {

bool IsPosition(const QString &key)
{
    return key == PhotoRecord::Longitude || key == PhotoRecord::Latitude || key == PhotoRecord::Elevation;
}

} // namespace

QString ExportPhoto::Value(const QString &key) const
{
    for (const auto &[name, value] : values) {
        if (name == key)
            return value;
    }
    return QString();
}

const QStringList &ExportedItemKeys()
{
    static const QStringList Keys = {
        QStringLiteral("File"),         QStringLiteral("OriginalFile"), QStringLiteral("Size"),
        QStringLiteral("Width"),        QStringLiteral("Height"),       QStringLiteral("Created"),
        QStringLiteral("Modified"),     QStringLiteral("Archived"),     QStringLiteral("CameraMaker"),
        QStringLiteral("CameraModel"),  QStringLiteral("Aperture"),     QStringLiteral("FocalLength"),
        QStringLiteral("FocusDistance"), QStringLiteral("ShutterSpeed"), QStringLiteral("ISOSpeed"),
        QStringLiteral("Flash"),        QStringLiteral("CaptureDate"),  QStringLiteral("Longitude"),
        QStringLiteral("Latitude"),     QStringLiteral("Elevation"),    QStringLiteral("Description"),
        QStringLiteral("Keywords"),
    };
    return Keys;
}

ExportSource TakeExportSource(const AlbumDocument &document, const AlbumExportArguments &arguments,
                              const QList<int> &selected)
{
    ExportSource source;
    source.albumPath = document.Path();
    const DataList &list = document.List();
    for (const char *key : {"Language", "Title", "Identification", "Description", "Keywords"}) {
        const QString name = QLatin1String(key);
        source.albumTexts.append({name, list.GetDocumentProperty(name)});
    }
    source.identification = list.GetDocumentProperty(QStringLiteral("Identification"));
    source.title = list.GetDocumentProperty(QStringLiteral("Title"));

    const QSet<int> chosen(selected.cbegin(), selected.cend());
    for (int index = 1; index <= document.RecordCount(); ++index) {
        if (arguments.OnlySelected && !chosen.contains(index))
            continue;
        if (arguments.OnlyNoted && document.Record(PhotoRecord::Description, index).trimmed().isEmpty())
            continue;
        const QString file = document.Record(PhotoRecord::File, index);
        if (!PhotoRecord::IsBareFileName(file)) {
            source.unsafe.append(file);
            continue;
        }
        ExportPhoto photo{file, document.PhotoFilePath(index), document.ThumbnailFilePath(index), {}};
        for (const QString &key : ExportedItemKeys()) {
            if (!(arguments.LeavePositionsOut && IsPosition(key)))
                photo.values.append({key, document.Record(key, index)});
        }
        source.photos.append(std::move(photo));
    }
    return source;
}
