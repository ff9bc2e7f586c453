#include "PhotoRecord.h"

#include "Settings.h"

namespace {

const QStringList JpegExtensions = {QStringLiteral("jpeg"), QStringLiteral("jpg")};
const QStringList AllPhotoExtensions = {QStringLiteral("jpeg"), QStringLiteral("jpg"), QStringLiteral("tif"),
                                        QStringLiteral("tiff"), QStringLiteral("png"), QStringLiteral("bmp"),
                                        QStringLiteral("psd"), QStringLiteral("gif")};

QString Extension(const QString &fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    return dot < 0 ? QString() : fileName.mid(dot + 1).toLower();
}

} // namespace

namespace PhotoRecord {

const QStringList &AllKeys()
{
    static const QStringList keys = {File, Size, Modified, Created, Archived, Width, Height, CameraMaker,
                                     CameraModel, CaptureDate, Aperture, FocalLength, FocusDistance,
                                     ShutterSpeed, Flash, ISOSpeed, CPU, Longitude, Latitude, Elevation,
                                     Description, Keywords, Star};
    return keys;
}

bool IsPhotoFile(const QString &fileName, bool allowNonJpeg)
{
    return (allowNonJpeg ? AllPhotoExtensions : JpegExtensions).contains(Extension(fileName));
}

bool IsJpegFile(const QString &fileName)
{
    return JpegExtensions.contains(Extension(fileName));
}

bool AllowNonJpeg()
{
    return SettingNumber(ReadSetting(QStringLiteral("System"), QStringLiteral("AllowNonJPEG"))) != 0;
}

QString ThumbnailName(const QString &fileName)
{
    return IsJpegFile(fileName) ? fileName : fileName + QStringLiteral(".jpg");
}

bool IsBareFileName(const QString &fileName)
{
    return !fileName.isEmpty() && fileName != QLatin1String(".") && fileName != QLatin1String("..")
        && !fileName.contains(u'/') && !fileName.contains(u'\\') && !fileName.contains(QChar(0));
}

} // namespace PhotoRecord
