#include "imaging/PhotoFileFacts.h"

#include <QFileInfo>

PhotoFileFacts ReadPhotoFileFacts(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return {};
    PhotoFileFacts facts;
    facts.size = info.size();
    facts.modified = RecordDateTimeText(info.lastModified());
    return facts;
}

QString RecordDateTimeText(const QDateTime &moment)
{
    return moment.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}
