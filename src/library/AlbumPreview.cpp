#include "library/AlbumPreview.h"

#include "library/AlbumFormat.h"
#include "library/PhotoRecord.h"
#include "app/Settings.h"
#include "app/WallClock.h"
#include "datalist/DataListStream.h"

namespace {

// Only the two values the preview needs are turned into text.
class PreviewVisitor : public DataListItemVisitor {
public:
    explicit PreviewVisitor(AlbumPreview &target) : preview(target) {}

    void Item(StreamedItem entries) override
    {
        ++preview.photos;
        for (const StreamedEntry &entry : entries) {
            if (entry.key == "Size") {
                preview.totalSize += static_cast<qint64>(SettingNumber(QString::fromUtf8(entry.value)));
            } else if (entry.key == "CaptureDate" && !entry.value.isEmpty()) {
                const std::optional<QDateTime> moment = ReadWallClock(QString::fromUtf8(entry.value));
                if (!moment)
                    continue;
                if (!preview.firstCapture.isValid() || *moment < preview.firstCapture)
                    preview.firstCapture = *moment;
                if (!preview.lastCapture.isValid() || *moment > preview.lastCapture)
                    preview.lastCapture = *moment;
            }
        }
    }

    void Restart() override
    {
        preview.photos = 0;
        preview.totalSize = 0;
        preview.firstCapture = preview.lastCapture = QDateTime();
    }

private:
    AlbumPreview &preview;
};

} // namespace

Result ReadAlbumPreview(const QString &album, AlbumPreview &preview)
{
    preview = AlbumPreview();
    preview.path = album;
    preview.name = AlbumTitleFromPath(album);
    DataList properties;
    PreviewVisitor visitor(preview);
    const DataList::LoadResult loaded = StreamDataListItems(AlbumFormat::StudioPlistPath(album), properties, visitor);
    if (!loaded)
        return Result::Failure(loaded.message);
    preview.title = properties.GetDocumentProperty(QStringLiteral("Title"));
    preview.identification = properties.GetDocumentProperty(QStringLiteral("Identification"));
    return Result::Success();
}

QString PreviewDateText(const QDateTime &moment)
{
    if (!moment.isValid())
        return {};
    const int hour = moment.time().hour();
    const int twelve = hour % 12 == 0 ? 12 : hour % 12;
    return moment.date().toString(QStringLiteral("yyyy-MM-dd")) + u' '
           + QStringLiteral("%1:%2 %3").arg(twelve, 2, 10, QLatin1Char('0')).arg(moment.time().minute(), 2, 10, QLatin1Char('0'))
                 .arg(hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM"));
}

QString GroupedNumber(qint64 number)
{
    QString digits = QString::number(number < 0 ? -number : number);
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, u',');
    return number < 0 ? u'-' + digits : digits;
}
