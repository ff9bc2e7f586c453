#include "library/LibraryFolders.h"

#include "library/AlbumFormat.h"
#include "library/OpenAlbums.h"
#include "library/Trash.h"
#include "app/Language.h"
#include "app/Prompter.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString DocumentSection = QStringLiteral("OrvDocument");

QString LibraryText(const char *key, const QString &section = DocumentSection)
{
    return GetLocalizedString(QString::fromLatin1(key), section);
}

QString Title()
{
    return LibraryText("AlbumManager", QStringLiteral("Form"));
}

// A name that would leave its folder, or name none, is refused as a failed creation would be.
bool UsableName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") && !name.contains(u'/');
}

NameOutcome MakeIn(const QString &folder, const QString &name)
{
    if (name.trimmed().isEmpty())
        return {NameStatus::Empty, {}};
    const QString path = QDir(folder).filePath(name);
    if (QFileInfo::exists(path))
        return {NameStatus::Exists, path};
    if (!UsableName(name) || !QDir().mkdir(path))
        return {NameStatus::Failed, path};
    return {NameStatus::Done, path};
}

std::optional<QString> Report(const NameOutcome &outcome, Prompter &prompter, const char *failure)
{
    switch (outcome.status) {
    case NameStatus::Done: return outcome.path;
    case NameStatus::Empty: break;
    case NameStatus::Exists: prompter.Inform(Title(), LibraryText("MessageNameExists")); break;
    case NameStatus::Failed: prompter.Error(Title(), LibraryText(failure)); break;
    }
    return std::nullopt;
}

std::optional<QString> Rename(const QString &path, Prompter &prompter, OpenAlbums &open)
{
    const QString clean = QDir::cleanPath(path);
    if (!open.CloseAlbumsUnder(clean))
        return std::nullopt;
    const std::optional<QString> name = prompter.AskText(Title(), LibraryText("EnterNewName"), AlbumTitleFromPath(clean));
    if (!name)
        return std::nullopt;
    return Report(RenameLibraryFolder(clean, *name), prompter, "MessageFailToCreateFolder");
}

bool Trash(const QString &path, Prompter &prompter, OpenAlbums &open)
{
    const QString clean = QDir::cleanPath(path);
    if (!prompter.AskYesNo(LibraryText("MoveToTrash", QStringLiteral("Form")),
                           LibraryText("MessageMoveFolderToTrash1").arg(QDir::toNativeSeparators(clean))))
        return false;
    if (!open.CloseAlbumsUnder(clean))
        return false;
    if (const Result moved = MoveToTrash(clean); !moved) {
        prompter.Error(Title(), moved.message);
        return false;
    }
    return true;
}

} // namespace

QString AlbumFolderName(const QString &name)
{
    return IsAlbum(name) ? name : name + QStringLiteral(".album");
}

NameOutcome MakeAlbumFolder(const QString &folder, const QString &name)
{
    if (name.trimmed().isEmpty())
        return {NameStatus::Empty, {}};
    NameOutcome made = MakeIn(folder, AlbumFolderName(name));
    if (made.status == NameStatus::Done && !CreateNewAlbum(made.path))
        made.status = NameStatus::Failed;
    return made;
}

NameOutcome MakeFolder(const QString &folder, const QString &name)
{
    return MakeIn(folder, name);
}

NameOutcome RenameLibraryFolder(const QString &path, const QString &newName)
{
    if (newName.trimmed().isEmpty())
        return {NameStatus::Empty, {}};
    const QFileInfo old(QDir::cleanPath(path));
    const QString name = IsAlbum(old.filePath()) ? AlbumFolderName(newName) : newName;
    const QString target = old.dir().filePath(name);
    if (name == old.fileName())
        return {NameStatus::Done, target};
    // A change of letter case alone is a rename, not a clash, on file systems that ignore case.
    if (QFileInfo::exists(target) && name.compare(old.fileName(), Qt::CaseInsensitive) != 0)
        return {NameStatus::Exists, target};
    if (!UsableName(name) || !old.exists() || !QDir().rename(old.filePath(), target))
        return {NameStatus::Failed, target};
    return {NameStatus::Done, target};
}

std::optional<QString> ActionNewAlbum(const QString &folder, Prompter &prompter)
{
    const std::optional<QString> name = prompter.AskText(Title(), LibraryText("NameNewAlbum"), QString());
    if (!name)
        return std::nullopt;
    return Report(MakeAlbumFolder(folder, *name), prompter, "MessageFailToCreateAlbum");
}

std::optional<QString> ActionNewFolder(const QString &folder, Prompter &prompter, bool category)
{
    const std::optional<QString> name = prompter.AskText(Title(), LibraryText(category ? "NameNewCategory" : "NameNewFolder"), QString());
    if (!name)
        return std::nullopt;
    return Report(MakeFolder(folder, *name), prompter, "MessageFailToCreateFolder");
}

std::optional<QString> ActionRenameAlbum(const QString &album, Prompter &prompter, OpenAlbums &open)
{
    return Rename(album, prompter, open);
}

std::optional<QString> ActionRename(const QString &folder, Prompter &prompter, OpenAlbums &open)
{
    return Rename(folder, prompter, open);
}

bool ActionMoveAlbumToTrash(const QString &album, Prompter &prompter, OpenAlbums &open)
{
    return Trash(album, prompter, open);
}

bool ActionMoveToTrash(const QString &folder, Prompter &prompter, OpenAlbums &open)
{
    return Trash(folder, prompter, open);
}

std::optional<QString> ActionConvertFolderToAlbum(const QString &folder, Prompter &prompter)
{
    const QString title = LibraryText("ConvertFolderToAlbumTitle");
    const QString clean = QDir::cleanPath(folder);
    if (!prompter.AskYesNo(title, LibraryText("MessageConvertFolderToAlbum1").arg(QFileInfo(clean).fileName())))
        return std::nullopt;
    const ConvertResult converted = ConvertDoc(clean);
    switch (converted.status) {
    case ConvertStatus::Converted: return converted.albumPath;
    case ConvertStatus::AlreadyAlbum: prompter.Inform(title, LibraryText("MessageAlreadyBeAlbum")); break;
    case ConvertStatus::NonPhotoContained: prompter.Inform(title, LibraryText("MessageNon-photoContained")); break;
    case ConvertStatus::Missing:
    case ConvertStatus::TargetExists:
    case ConvertStatus::MoveFailed: prompter.Error(title, LibraryText("MessageFailToCreateAlbum")); break;
    }
    return std::nullopt;
}
