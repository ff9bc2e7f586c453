#include "cli/CliAlbumSupport.h"
#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "library/AlbumFormat.h"

#include <QDir>

namespace {

int Convert(const CliArguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("convert takes FOLDER"));
    UseUserSettings();
    const QString folder = QDir::cleanPath(QDir::current().absoluteFilePath(args.positional[0]));
    const ConvertResult converted = ConvertDoc(folder);
    switch (converted.status) {
    case ConvertStatus::Converted:
        break;
    case ConvertStatus::NonPhotoContained:
        return Fail(Message("MessageNon-photoContained", "OrvDocument"));
    case ConvertStatus::AlreadyAlbum:
        return Fail(Message("MessageAlreadyBeAlbum", "OrvDocument"));
    case ConvertStatus::Missing:
        return Fail(QStringLiteral("%1 is not a folder").arg(folder));
    case ConvertStatus::TargetExists:
        return Fail(QStringLiteral("%1.album exists already").arg(folder));
    case ConvertStatus::MoveFailed:
        return Fail(QStringLiteral("%1 could not be moved").arg(folder));
    }
    // Opened once, as the windows do after converting, so the folder is an album from now on (a
    // package imports its photos from its drop folder).
    ImportReport opening;
    if (!OpenAlbumForCli(converted.albumPath, &opening))
        return ExitFailed;
    PrintOut(converted.albumPath);
    return opening.Clean() ? ExitDone : ExitFailed;
}

} // namespace

const CliGroup &ConvertCommand()
{
    static const CliGroup group{
        "convert",
        "turn a plain folder of photos into an album",
        {{"", "FOLDER", "Turns a plain folder of photos into an album named FOLDER.album.", {}, Convert}},
    };
    return group;
}
