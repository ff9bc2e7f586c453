#include "ImagingTestSupport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

QString CorpusPath(const QString &relative)
{
    return QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/") + relative;
}

QString CopyOfCorpusPhoto(const QString &name, const QString &folder)
{
    QString copy = folder + u'/' + name;
    QFile::remove(copy);
    QFile::copy(CorpusPath(QStringLiteral("photos/") + name), copy);
    QFile::setPermissions(copy, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return copy;
}

QJsonObject ReadWithExifTool(const QString &path, const QStringList &tags, bool numbers)
{
    QStringList arguments = {QStringLiteral("-j"), QStringLiteral("-G1")};
    if (numbers)
        arguments << QStringLiteral("-n");
    for (const QString &tag : tags)
        arguments << u'-' + tag;
    QProcess exiftool;
    exiftool.start(QStringLiteral("exiftool"), arguments << path);
    exiftool.waitForFinished(30000);
    QJsonObject read = QJsonDocument::fromJson(exiftool.readAllStandardOutput()).array().at(0).toObject();
    read.remove(QStringLiteral("SourceFile"));
    return read;
}
