#include "library/AlbumFormat.h"

#include "app/AppState.h"
#include "library/ExportSettings.h"
#include "library/HiddenFiles.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "library/PhotoRecord.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QUuid>

namespace {

constexpr int SuffixLength = 6; // ".album"

bool IsPackageFormat()
{
    return AppState().defaultAlbumFormat != 0;
}

QString Clean(const QString &path)
{
    return QDir::cleanPath(path);
}

} // namespace

namespace AlbumFormat {

QString StudioDataPath(const QString &album)
{
    return Clean(album) + u'/' + StudioData;
}

QString StudioPlistPath(const QString &album)
{
    return StudioDataPath(album) + u'/' + StudioPlist;
}

QString ThumbnailFolder(const QString &album)
{
    return StudioDataPath(album) + u'/' + ThumbnailFolderName;
}

QString DropFolderPath(const QString &album)
{
    return QDir::cleanPath(album) + u'/' + DropFolderName;
}

} // namespace AlbumFormat

bool IsAlbum(const QString &albumPath)
{
    return Clean(albumPath).right(SuffixLength).toLower() == QLatin1String(".album");
}

QString AlbumTitleFromPath(const QString &albumPath)
{
    const QString name = QFileInfo(Clean(albumPath)).fileName();
    return IsAlbum(albumPath) ? name.left(name.size() - SuffixLength) : name;
}

QString GetPhotoFilesPath(const QString &albumPath)
{
    const QString full = AlbumFormat::StudioDataPath(albumPath) + u'/' + AlbumFormat::FullFolderName;
    return FolderExists(full) ? full : Clean(albumPath);
}

QString GetPhotoFilesPathRelative(const QString &albumPath)
{
    const QString name = QFileInfo(Clean(albumPath)).fileName();
    const QString full = AlbumFormat::StudioDataPath(albumPath) + u'/' + AlbumFormat::FullFolderName;
    return FolderExists(full) ? name + u'/' + AlbumFormat::StudioData + u'/' + AlbumFormat::FullFolderName : name;
}

// A version 7 UUID (RFC 9562): the Unix time in milliseconds followed by 74 random bits.
QString NewAlbumIdentification()
{
    const auto millis = static_cast<quint64>(QDateTime::currentMSecsSinceEpoch());
    QRandomGenerator *random = QRandomGenerator::system();
    const quint64 randomA = random->generate64();
    const quint64 randomB = random->generate64();
    std::array<uchar, 16> bytes{};
    for (int i = 0; i < 6; ++i)
        bytes[static_cast<std::size_t>(i)] = static_cast<uchar>(millis >> (8 * (5 - i)));
    bytes[6] = static_cast<uchar>(0x70 | (randomA & 0x0F));
    bytes[7] = static_cast<uchar>(randomA >> 8);
    bytes[8] = static_cast<uchar>(0x80 | ((randomB >> 56) & 0x3F));
    for (int i = 9; i < 16; ++i)
        bytes[static_cast<std::size_t>(i)] = static_cast<uchar>(randomB >> (8 * (15 - i)));
    return QUuid::fromRfc4122(QByteArrayView(bytes.data(), 16)).toString(QUuid::WithoutBraces);
}

Result CreateBlankStudioPackage(const QString &albumPath)
{
    QDir().mkpath(AlbumFormat::ThumbnailFolder(albumPath));
    if (IsAlbum(albumPath) && IsPackageFormat())
        QDir().mkpath(AlbumFormat::StudioDataPath(albumPath) + u'/' + AlbumFormat::FullFolderName);

    DataList list;
    list.SetDocumentProperty(QStringLiteral("Format"), AlbumFormat::StudioFormat);
    list.SetDocumentProperty(QStringLiteral("Version"), QStringLiteral("1.0"));
    list.SetDocumentProperty(QStringLiteral("Language"), GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")));
    list.SetDocumentProperty(QStringLiteral("Title"), AlbumTitleFromPath(albumPath));
    list.SetDocumentProperty(QStringLiteral("Identification"), NewAlbumIdentification());
    list.SetDocumentProperty(QStringLiteral("Category"), QString());
    list.SetDocumentProperty(QStringLiteral("Description"), QString());
    WriteExportSettings(list, ExportSettings());

    QString error;
    if (!list.Save(AlbumFormat::StudioPlistPath(albumPath), &error))
        return Result::Failure(error);
    return Result::Success();
}

void WriteDesktopIni(const QString &albumPath)
{
    const QString lines[] = {
        QStringLiteral("[.ShellClassInfo]"),
        QStringLiteral("InfoTip = ") + GetLocalizedString(QStringLiteral("TipOrvanaAlbum"), QStringLiteral("System")),
        QStringLiteral("IconFile = %SystemRoot%\\system32\\mydocs.dll"),
        QStringLiteral("IconIndex = -101"),
    };
    QByteArray content;
    for (const QString &line : lines)
        content += line.toUtf8() + "\r\n";
    const QString path = Clean(albumPath) + QStringLiteral("/Desktop.ini");
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
        file.commit();
    }
    // The read-only mark Windows needs to honour the file would stop the program writing into
    // the album here; the file is kept for albums shared with Windows.
    SetHidden(path);
}

void FormatNewDoc(const QString &path)
{
    const QString data = AlbumFormat::StudioDataPath(path);
    if (!FolderExists(data))
        QDir().mkdir(data);
    if (!IsAlbum(path) || !IsPackageFormat())
        SetHidden(data);
    if (IsAlbum(path))
        WriteDesktopIni(path);
}

Result CreateNewAlbum(const QString &path)
{
    if (!QDir().mkpath(path))
        return Result::Failure(QStringLiteral("%1 could not be made").arg(path));
    FormatNewDoc(path);
    if (!FolderExists(AlbumFormat::StudioDataPath(path)))
        return Result::Failure(QStringLiteral("%1 could not be made").arg(AlbumFormat::StudioDataPath(path)));
    return Result::Success();
}

OpenAlbumStatus PrepareAlbumForOpening(const QString &path)
{
    if (path.isEmpty())
        return OpenAlbumStatus::Nothing;
    if (!FolderExists(path))
        return OpenAlbumStatus::Refused;
    const QString data = AlbumFormat::StudioDataPath(path);
    if (!FolderExists(data)) {
        if (!IsAlbum(path) || !IsPackageFormat())
            FormatNewDoc(path);
        if (!FolderExists(data) || (IsAlbum(path) && IsPackageFormat()))
            return OpenAlbumStatus::Refused;
    }
    if (!QFileInfo::exists(AlbumFormat::StudioPlistPath(path)) && !CreateBlankStudioPackage(path))
        return OpenAlbumStatus::Refused;
    return OpenAlbumStatus::Ready;
}

ConvertResult ConvertDoc(const QString &path)
{
    const QString folder = Clean(path);
    if (!FolderExists(folder))
        return {ConvertStatus::Missing, {}};
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (IsHidden(entry.filePath()))
            continue;
        if (entry.isDir() || !PhotoRecord::IsPhotoFile(entry.fileName(), allowNonJpeg))
            return {ConvertStatus::NonPhotoContained, {}};
    }
    if (IsAlbum(folder) && FolderExists(AlbumFormat::StudioDataPath(folder)))
        return {ConvertStatus::AlreadyAlbum, {}};

    const QString target = folder + QStringLiteral(".album");
    if (QFileInfo::exists(target))
        return {ConvertStatus::TargetExists, {}};
    if (!IsPackageFormat())
        return QDir().rename(folder, target) ? ConvertResult{ConvertStatus::Converted, target}
                                              : ConvertResult{ConvertStatus::MoveFailed, {}};
    if (!QDir().mkdir(target))
        return {ConvertStatus::MoveFailed, {}};
    if (!QDir().rename(folder, target + u'/' + AlbumFormat::DropFolderName)) {
        QDir().rmdir(target);
        return {ConvertStatus::MoveFailed, {}};
    }
    // The package is made at once: a package without its data folder is refused at opening.
    (void)CreateNewAlbum(target);
    return {ConvertStatus::Converted, target};
}
