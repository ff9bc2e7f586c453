#pragma once

#include <QString>

#include <functional>

class QObject;

// The desktop's file manager and program chooser, asked over D-Bus without waiting for their
// answer; where a desktop offers neither, the file or its folder is opened by xdg-open.
namespace DesktopShell {
// Shows the file selected in its folder (FileManager1.ShowItems), else opens the folder.
void ShowFile(const QString &path, QObject *context);
void OpenFolder(const QString &path);
// Opens the file with the program its type is associated with.
void OpenWithDefault(const QString &path);
// Lets the user pick the program (the portal's OpenFile with "ask"), else opens with the default.
void OpenWithChosen(const QString &path, QObject *context);
// Asks the desktop portal to make the photo the wallpaper (it shows its own preview first);
// `failed` runs when no portal answers or it refuses.
void SetWallpaper(const QString &path, QObject *context, const std::function<void()> &failed);
} // namespace DesktopShell
