// The album window's edits that ask first: the adjust and crop windows, each on the current photo.

#include "ui/album/AlbumWindow.h"

#include "ui/album/AlbumCommands.h"
#include "ui/edit/AdjustImageWindow.h"
#include "ui/edit/CropImageWindow.h"

#include "app/Language.h"
#include "app/ProgressSink.h"

template <typename Window>
void AlbumWindow::EditCurrentPhoto(const QString &name, PhotoEdit (*editOf)(const Window &))
{
    const CommandTarget target = Target();
    const QString path = commands->PhotoPath(target.current);
    if (path.isEmpty())
        return;
    auto *window = new Window(this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->InitWithImageFile(path);
    // The photo may move in the list while the window is up (arranged, deleted): the edit goes to
    // the record that was current only if it still names the same file.
    connect(window, &QDialog::accepted, this, [this, window, name, target, path, editOf] {
        if (IsWorking() || commands->PhotoPath(target.current) != path)
            return;
        // Read here: the window is gone by the time the worker runs.
        const PhotoEdit edit = editOf(*window);
        const int countBefore = commands->RecordCount();
        StartWork(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")),
                  [this, edit, target](ProgressSink &progress) { edit(*commands, target.current, progress); },
                  [this, name, target, countBefore] { AfterLibraryCommand(name, target.current, countBefore); });
    });
    window->open();
}

void AlbumWindow::AdjustCurrentPhoto()
{
    EditCurrentPhoto<AdjustImageWindow>(QStringLiteral("mnuAdjustImage"), [](const AdjustImageWindow &window) -> PhotoEdit {
        return [sliders = window.Sliders()](AlbumCommands &run, int index, ProgressSink &progress) { run.Adjust(index, sliders, progress); };
    });
}

void AlbumWindow::CropCurrentPhoto()
{
    EditCurrentPhoto<CropImageWindow>(QStringLiteral("mnuCropImage"), [](const CropImageWindow &window) -> PhotoEdit {
        return [rectangle = window.Rectangle()](AlbumCommands &run, int index, ProgressSink &progress) { run.Crop(index, rectangle, progress); };
    });
}
