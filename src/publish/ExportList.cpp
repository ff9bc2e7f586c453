#include "publish/ExportList.h"

#include "publish/PhotoRenderer.h"
#include "imaging/Thumbnail.h"

DataList MakeExportList(const ExportSource &source, const AlbumExportArguments &arguments)
{
    DataList list;
    const QList<std::pair<QString, QString>> canvas = {
        {QStringLiteral("Format"), QStringLiteral("com.veltrix.orvana.album.datalist")},
        {QStringLiteral("Version"), QStringLiteral("1.2")},
        {QStringLiteral("CanvasWidth0"), QString::number(ThumbnailBox)},
        {QStringLiteral("CanvasHeight0"), QString::number(ThumbnailBox)},
        {QStringLiteral("CanvasWidth1"), QString::number(PreviewBox)},
        {QStringLiteral("CanvasHeight1"), QString::number(PreviewBox)},
        {QStringLiteral("CanvasWidth2"), QString::number(arguments.StandardWidth)},
        {QStringLiteral("CanvasHeight2"), QString::number(arguments.StandardHeight)},
    };
    for (const auto &[key, value] : canvas + source.albumTexts)
        list.SetDocumentProperty(key, value);
    for (const ExportPhoto &photo : source.photos) {
        const int index = list.ItemCount() + 1;
        list.AddItem(index);
        for (const auto &[key, value] : photo.values)
            list.SetItemProperty(key, value, index);
    }
    list.SetDocumentProperty(QStringLiteral("ItemCount"), QString::number(list.ItemCount()));
    return list;
}
