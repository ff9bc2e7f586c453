#pragma once

#include <QList>
#include <QString>
#include <utility>
#include <span>
#include <variant>

class DataList;

// The options of one web export or web sync of an album. The first fields are the choices of
// one run; the others are kept in the album's own list, so that every album keeps its own.
struct AlbumExportArguments {
    bool OnlySelected = false;
    bool OnlyNoted = false;
    // Web sync uploads every photo again, changed or not.
    bool ForceUpdateAll = false;

    bool NeedExportThumbnail = false;
    bool NeedExportPreview = false;
    bool NeedExportStandard = false;
    bool NeedExportFull = false;
    int StandardWidth = 0;
    int StandardHeight = 0;
    bool NeedAddWatermark = false;
    bool PlaceWatermarkAtLeftTop = false;
    bool PlaceWatermarkAtLeftBottom = false;
    bool PlaceWatermarkAtRightTop = false;
    bool PlaceWatermarkAtRightBottom = false;
    bool PlaceWatermarkAtCenter = false;
    bool IsSharedServer = false;
    QString FTPServerAddress;
    QString FTPLoginName;
    QString FTPPassword;
    QString FTPDirectory;
    // A web album is often sent to people who need not know where each photo was taken: with
    // this set, neither the exported images nor the exported list carry any position.
    bool LeavePositionsOut = false;
};

// One persisted option: its name (the property key less "_Exporter.", also the command line's
// key and the dialog control's caption key where it has one), the field, and the dialog control
// that edits it ("" when the dialog sets it another way).
struct ExportOption {
    using Field = std::variant<bool AlbumExportArguments::*, int AlbumExportArguments::*, QString AlbumExportArguments::*>;
    const char *name;
    Field field;
    const char *control;
};

// Every persisted option, in the order they are written.
std::span<const ExportOption> ExportOptions();
const ExportOption *FindExportOption(const QString &name);

// "_Exporter." + the option's name.
QString ExportPropertyKey(const ExportOption &option);

// The option's value as it is stored: "1"/"0", a decimal integer, or the text unchanged.
QString ExportOptionText(const AlbumExportArguments &arguments, const ExportOption &option);
// Reads a stored text by the loading rules: a flag is on when the text's number is not 0, a
// size is the number rounded, so "" reads as off and 0.
void SetExportOptionText(AlbumExportArguments &arguments, const ExportOption &option, const QString &text);

// The persisted options as the album's document properties, in the order they are written.
QList<std::pair<QString, QString>> ExportProperties(const AlbumExportArguments &arguments);
// The same written into a list.
void SaveExportArguments(DataList &list, const AlbumExportArguments &arguments);
// The persisted options from the list; the choices of one run are left as they are.
void LoadExportArguments(const DataList &list, AlbumExportArguments &arguments);

// The bounds of the standard size the export dialog accepts, in pixels.
constexpr int SmallestStandardSize = 128;
constexpr int LargestStandardSize = 20480;
// Whether the text is a whole number of pixels within those bounds.
bool IsValidStandardSize(const QString &text);

// The last server used, in the settings' [RecentFTP].
struct RecentFtpServer {
    QString address;
    QString login;
    QString password;
    QString directory;
};
RecentFtpServer ReadRecentFtpServer();
void WriteRecentFtpServer(const RecentFtpServer &server);
