#include "gps/TrackFileWriter.h"

#include "datalist/DataListStream.h"
#include "gps/GpsStore.h"
#include "gps/StoreFiles.h"

#include <QDir>

TrackFileWriter::TrackFileWriter() = default;
TrackFileWriter::~TrackFileWriter() = default;

Result TrackFileWriter::Open()
{
    QDir().mkpath(GpsStore::Folder());
    file.setFileTemplate(GpsStore::Folder() + QStringLiteral("/~track-XXXXXX.plist"));
    if (!file.open())
        return Result::Failure(QStringLiteral("Cannot write in %1: %2").arg(GpsStore::Folder(), file.errorString()));
    writer = std::make_unique<DataListStreamWriter>(file);
    writer->BeginItems(GpsKey::TrackPoints);
    return Result::Success();
}

void TrackFileWriter::Add(QByteArrayView time, QByteArrayView lat, QByteArrayView lon, QByteArrayView ele)
{
    const StreamedEntry point[] = {{"TIME", time}, {"LAT", lat}, {"LON", lon}, {"ELE", ele}};
    writer->WriteItem(point);
}

Result TrackFileWriter::Finish(const Track &track)
{
    writer->EndItems();
    const std::pair<const QString &, const QString &> values[] = {
        {GpsKey::Name, track.name}, {GpsKey::BeginTime, track.beginTime}, {GpsKey::EndTime, track.endTime}, {GpsKey::Bounds, track.bounds}};
    for (const auto &[key, value] : values)
        writer->WriteProperty(key.toUtf8(), value.toUtf8());
    const bool written = writer->Finish() && file.flush();
    writer.reset();
    if (!written)
        return Result::Failure(QStringLiteral("Cannot write %1: %2").arg(file.fileName(), file.errorString()));
    file.close();
    Result moved = StoreFiles::ReplaceWithBackup(file.fileName(), GpsStore::TrackFilePath(track));
    if (moved)
        file.setAutoRemove(false);
    return moved;
}
