#include "library/ExportSettings.h"

#include "datalist/DataList.h"
#include "app/Settings.h"

#include <variant>

namespace {

using Field = std::variant<bool ExportSettings::*, int ExportSettings::*, QString ExportSettings::*>;

struct ExporterKey {
    const char *name;
    Field field;
};

const ExporterKey ExporterKeys[] = {
    {"_Exporter.NeedExportThumbnail", &ExportSettings::needExportThumbnail},
    {"_Exporter.NeedExportPreview", &ExportSettings::needExportPreview},
    {"_Exporter.NeedExportStandard", &ExportSettings::needExportStandard},
    {"_Exporter.NeedExportFull", &ExportSettings::needExportFull},
    {"_Exporter.StandardWidth", &ExportSettings::standardWidth},
    {"_Exporter.StandardHeight", &ExportSettings::standardHeight},
    {"_Exporter.NeedAddWatermark", &ExportSettings::needAddWatermark},
    {"_Exporter.PlaceWatermarkAtLeftTop", &ExportSettings::placeWatermarkAtLeftTop},
    {"_Exporter.PlaceWatermarkAtLeftBottom", &ExportSettings::placeWatermarkAtLeftBottom},
    {"_Exporter.PlaceWatermarkAtRightTop", &ExportSettings::placeWatermarkAtRightTop},
    {"_Exporter.PlaceWatermarkAtRightBottom", &ExportSettings::placeWatermarkAtRightBottom},
    {"_Exporter.PlaceWatermarkAtCenter", &ExportSettings::placeWatermarkAtCenter},
    {"_Exporter.IsSharedServer", &ExportSettings::isSharedServer},
    {"_Exporter.FTPServerAddress", &ExportSettings::ftpServerAddress},
    {"_Exporter.FTPLoginName", &ExportSettings::ftpLoginName},
    {"_Exporter.FTPPassword", &ExportSettings::ftpPassword},
    {"_Exporter.FTPDirectory", &ExportSettings::ftpDirectory},
};

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

} // namespace

void WriteExportSettings(DataList &list, const ExportSettings &settings)
{
    for (const ExporterKey &key : ExporterKeys) {
        const QString text = std::visit(
            Overloaded{
                [&](bool ExportSettings::*flag) { return settings.*flag ? QStringLiteral("1") : QStringLiteral("0"); },
                [&](int ExportSettings::*number) { return QString::number(settings.*number); },
                [&](QString ExportSettings::*text) { return settings.*text; },
            },
            key.field);
        list.SetDocumentProperty(QLatin1String(key.name), text);
    }
}

ExportSettings ReadExportSettings(const DataList &list)
{
    ExportSettings settings;
    for (const ExporterKey &key : ExporterKeys) {
        const QString text = list.GetDocumentProperty(QLatin1String(key.name));
        std::visit(Overloaded{
                       [&](bool ExportSettings::*flag) { settings.*flag = SettingNumber(text) != 0; },
                       [&](int ExportSettings::*number) { settings.*number = SettingInteger(text); },
                       [&](QString ExportSettings::*field) { settings.*field = text; },
                   },
                   key.field);
    }
    return settings;
}
