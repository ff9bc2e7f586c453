#include "library/InfoExchange.h"

#include "library/AlbumDocument.h"
#include "datalist/DataList.h"
#include "app/Paths.h"
#include "library/PhotoRecord.h"

QString InfoExchangePath()
{
    return GetUserDataFolder() + QStringLiteral("/InfoExchange.plist");
}

QString KeywordsExchangePath()
{
    return GetUserDataFolder() + QStringLiteral("/KeywordsExchange.plist");
}

bool WriteKeywordsExchange(const QString &keywords, QString *error)
{
    DataList exchange;
    exchange.SetDocumentProperty(PhotoRecord::Keywords, keywords);
    return exchange.Save(KeywordsExchangePath(), error);
}

std::optional<QString> ReadKeywordsExchange()
{
    DataList exchange;
    if (!exchange.Load(KeywordsExchangePath()))
        return std::nullopt;
    return exchange.GetDocumentProperty(PhotoRecord::Keywords);
}

const QStringList &ExchangedKeys()
{
    using namespace PhotoRecord;
    static const QStringList keys = {Description, Keywords, CaptureDate, Longitude, Latitude, Elevation, Star};
    return keys;
}

bool WriteInfoExchange(const QString &path, const AlbumDocument &document, const QList<int> &indices)
{
    DataList list;
    list.SetDocumentProperty(QStringLiteral("Format"), QStringLiteral("com.veltrix.orvana.infoexchange.datalist"));
    list.SetDocumentProperty(QStringLiteral("Version"), QStringLiteral("1.0"));
    list.SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Orvana Media Information Exchange"));
    for (const int index : indices) {
        const QString file = document.PhotoFilePath(index);
        if (file.isEmpty())
            continue;
        list.AddItem(list.ItemCount() + 1);
        const int item = list.ItemCount();
        list.SetItemProperty(PhotoRecord::File, file, item);
        for (const QString &key : ExchangedKeys())
            list.SetItemProperty(key, document.Record(key, index), item);
    }
    return list.Save(path);
}

std::vector<ExchangedPhoto> ReadInfoExchange(const QString &path)
{
    DataList list;
    if (!list.Load(path))
        return {};
    std::vector<ExchangedPhoto> photos;
    for (int i = 1; i <= list.ItemCount(); ++i) {
        ExchangedPhoto photo{list.GetItemProperty(PhotoRecord::File, i), {}};
        for (const QString &key : ExchangedKeys())
            photo.values.insert(key, list.GetItemProperty(key, i));
        photos.push_back(std::move(photo));
    }
    return photos;
}
