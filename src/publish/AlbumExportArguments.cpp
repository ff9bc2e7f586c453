#include "publish/AlbumExportArguments.h"

#include "datalist/DataList.h"
#include "app/Settings.h"

#include <cmath>

namespace {

using Args = AlbumExportArguments;

const ExportOption Options[] = {
    {"NeedExportThumbnail", &Args::NeedExportThumbnail, "CheckSizeThumbnail"},
    {"NeedExportPreview", &Args::NeedExportPreview, "CheckSizePreview"},
    {"NeedExportStandard", &Args::NeedExportStandard, "CheckSizeStandard"},
    {"NeedExportFull", &Args::NeedExportFull, "CheckSizeFull"},
    {"StandardWidth", &Args::StandardWidth, "TextStdWidth"},
    {"StandardHeight", &Args::StandardHeight, "TextStdHeight"},
    {"NeedAddWatermark", &Args::NeedAddWatermark, "CheckAddWatermark"},
    {"PlaceWatermarkAtLeftTop", &Args::PlaceWatermarkAtLeftTop, "CheckPlaceWatermarkAtLeftTop"},
    {"PlaceWatermarkAtLeftBottom", &Args::PlaceWatermarkAtLeftBottom, "CheckPlaceWatermarkAtLeftBottom"},
    {"PlaceWatermarkAtRightTop", &Args::PlaceWatermarkAtRightTop, "CheckPlaceWatermarkAtRightTop"},
    {"PlaceWatermarkAtRightBottom", &Args::PlaceWatermarkAtRightBottom, "CheckPlaceWatermarkAtRightBottom"},
    {"PlaceWatermarkAtCenter", &Args::PlaceWatermarkAtCenter, "CheckPlaceWatermarkAtCenter"},
    {"IsSharedServer", &Args::IsSharedServer, ""},
    {"FTPServerAddress", &Args::FTPServerAddress, "TextServerAddress"},
    {"FTPLoginName", &Args::FTPLoginName, "TextLoginName"},
    {"FTPPassword", &Args::FTPPassword, "TextPassword"},
    {"FTPDirectory", &Args::FTPDirectory, "TextDirectory"},
    {"LeavePositionsOut", &Args::LeavePositionsOut, "CheckLeavePositionsOut"},
};

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

const QString RecentSection = QStringLiteral("RecentFTP");

} // namespace

std::span<const ExportOption> ExportOptions()
{
    return Options;
}

const ExportOption *FindExportOption(const QString &name)
{
    for (const ExportOption &option : Options) {
        if (name.compare(QLatin1String(option.name), Qt::CaseInsensitive) == 0 || name == ExportPropertyKey(option))
            return &option;
    }
    return nullptr;
}

QString ExportPropertyKey(const ExportOption &option)
{
    return QStringLiteral("_Exporter.") + QLatin1String(option.name);
}

QString ExportOptionText(const AlbumExportArguments &arguments, const ExportOption &option)
{
    return std::visit(Overloaded{
                          [&](bool Args::*flag) { return arguments.*flag ? QStringLiteral("1") : QStringLiteral("0"); },
                          [&](int Args::*number) { return QString::number(arguments.*number); },
                          [&](QString Args::*text) { return arguments.*text; },
                      },
                      option.field);
}

void SetExportOptionText(AlbumExportArguments &arguments, const ExportOption &option, const QString &text)
{
    std::visit(Overloaded{
                   [&](bool Args::*flag) { arguments.*flag = SettingNumber(text) != 0; },
                   // Halves go to the even neighbour, as the rounding of the system's own
                   // numbers does: "640.5" reads as 640, "641.5" as 642.
                   [&](int Args::*number) {
                       const double value = std::nearbyint(SettingNumber(text));
                       arguments.*number = std::isfinite(value) && std::fabs(value) < 2147483647.0 ? static_cast<int>(value) : 0;
                   },
                   [&](QString Args::*field) { arguments.*field = text; },
               },
               option.field);
}

QList<std::pair<QString, QString>> ExportProperties(const AlbumExportArguments &arguments)
{
    QList<std::pair<QString, QString>> properties;
    for (const ExportOption &option : Options) {
        properties.append({ExportPropertyKey(option), ExportOptionText(arguments, option)});
        // The full-size flag is written a second time, as it always was; the value is the same,
        // so the list ends as if it were written once.
        if (std::get_if<bool Args::*>(&option.field) && std::get<bool Args::*>(option.field) == &Args::NeedExportFull)
            properties.append(properties.constLast());
    }
    return properties;
}

void SaveExportArguments(DataList &list, const AlbumExportArguments &arguments)
{
    for (const auto &[key, value] : ExportProperties(arguments))
        list.SetDocumentProperty(key, value);
}

void LoadExportArguments(const DataList &list, AlbumExportArguments &arguments)
{
    for (const ExportOption &option : Options)
        SetExportOptionText(arguments, option, list.GetDocumentProperty(ExportPropertyKey(option)));
}

RecentFtpServer ReadRecentFtpServer()
{
    return {ReadSetting(RecentSection, QStringLiteral("ServerAddress")), ReadSetting(RecentSection, QStringLiteral("LoginName")),
            ReadSetting(RecentSection, QStringLiteral("Password")), ReadSetting(RecentSection, QStringLiteral("Directory"))};
}

void WriteRecentFtpServer(const RecentFtpServer &server)
{
    WriteSetting(RecentSection, QStringLiteral("ServerAddress"), server.address);
    WriteSetting(RecentSection, QStringLiteral("LoginName"), server.login);
    WriteSetting(RecentSection, QStringLiteral("Password"), server.password);
    WriteSetting(RecentSection, QStringLiteral("Directory"), server.directory);
}

bool IsValidStandardSize(const QString &text)
{
    bool number = false;
    const int size = text.trimmed().toInt(&number);
    return number && size >= SmallestStandardSize && size <= LargestStandardSize;
}
