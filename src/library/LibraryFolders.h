#pragma once

#include <QString>
#include <optional>

class OpenAlbums;
class Prompter;

// The album manager's folder commands, each with its prompts and messages. Those that make or
// rename something give its new path; nothing when the user cancelled or it failed (the message
// has been shown).

enum class NameStatus { Done, Empty, Exists, Failed };
struct NameOutcome {
    NameStatus status;
    QString path; // the new folder, when done
};

// The plain steps, without questions. An album name gets ".album" when it does not end in it
// already, in any letter case.
QString AlbumFolderName(const QString &name);
NameOutcome MakeAlbumFolder(const QString &folder, const QString &name);
NameOutcome MakeFolder(const QString &folder, const QString &name);
// Renames a folder or an album within its parent folder; an album keeps its ".album".
NameOutcome RenameLibraryFolder(const QString &path, const QString &newName);

// New album in the shown folder, asked for with "NameNewAlbum".
std::optional<QString> ActionNewAlbum(const QString &folder, Prompter &prompter);
// New folder, asked for with "NameNewFolder" (or "NameNewCategory", for a category).
std::optional<QString> ActionNewFolder(const QString &folder, Prompter &prompter, bool category = false);
// Rename an album or a folder: its open documents are closed first, then the new name is asked
// for, prefilled with the present one (an album's less ".album").
std::optional<QString> ActionRenameAlbum(const QString &album, Prompter &prompter, OpenAlbums &open);
std::optional<QString> ActionRename(const QString &folder, Prompter &prompter, OpenAlbums &open);
// Move an album or a folder to the trash, after asking, its open documents closed first.
bool ActionMoveAlbumToTrash(const QString &album, Prompter &prompter, OpenAlbums &open);
bool ActionMoveToTrash(const QString &folder, Prompter &prompter, OpenAlbums &open);
// Asks with "MessageConvertFolderToAlbum1", then converts the folder; gives the album made.
std::optional<QString> ActionConvertFolderToAlbum(const QString &folder, Prompter &prompter);
