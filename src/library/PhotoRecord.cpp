#include "library/PhotoRecord.h"

#include "app/Settings.h"

#include <QHash>
#include <QSet>

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

QString FoldedName(const QString &name)
{
    return name.toCaseFolded();
}

QList<int> MatchNames(const QStringList &left, const QStringList &right)
{
    QHash<QString, int> exact;              // right name -> its first index
    QHash<QString, QSet<QString>> spellings; // folded -> the distinct right names of that form
    for (int i = 0; i < right.size(); ++i) {
        exact.insert(right[i], exact.value(right[i], i));
        spellings[FoldedName(right[i])].insert(right[i]);
    }
    QHash<QString, QSet<QString>> leftSpellings;
    for (const QString &name : left)
        leftSpellings[FoldedName(name)].insert(name);
    QList<int> matches;
    matches.reserve(left.size());
    for (const QString &name : left) {
        if (const auto hit = exact.constFind(name); hit != exact.cend()) {
            matches << hit.value();
            continue;
        }
        const QString folded = FoldedName(name);
        const QSet<QString> others = spellings.value(folded);
        matches << (others.size() == 1 && leftSpellings.value(folded).size() == 1 ? exact.value(*others.begin()) : -1);
    }
    return matches;
}

int MatchName(const QString &name, const QStringList &right)
{
    return MatchNames({name}, right).front();
}

QString FreeName(const QString &name, const std::function<bool(const QString &)> &taken)
{
    if (!taken(name))
        return name;
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString base = dot < 0 ? name : name.left(dot);
    const QString extension = dot < 0 ? QString() : name.mid(dot);
    for (int n = 1;; ++n) {
        QString candidate = base + u'(' + QString::number(n) + u')' + extension;
        if (!taken(candidate))
            return candidate;
    }
}

} // namespace PhotoRecord
