#pragma once

#include <QString>

class DataList;

// An album's web-export choices, kept in its list as the seventeen "_Exporter." properties.
struct ExportSettings {
    bool needExportThumbnail = true;
    bool needExportPreview = true;
    bool needExportStandard = true;
    bool needExportFull = false;
    int standardWidth = 640;
    int standardHeight = 640;
    bool needAddWatermark = false;
    bool placeWatermarkAtLeftTop = false;
    bool placeWatermarkAtLeftBottom = false;
    bool placeWatermarkAtRightTop = true;
    bool placeWatermarkAtRightBottom = false;
    bool placeWatermarkAtCenter = false;
    bool isSharedServer = false;
    QString ftpServerAddress;
    QString ftpLoginName;
    QString ftpPassword;
    QString ftpDirectory;
};

// All seventeen keys, in their order.
void WriteExportSettings(DataList &list, const ExportSettings &settings);
// A missing key reads as false, 0 or "".
ExportSettings ReadExportSettings(const DataList &list);
