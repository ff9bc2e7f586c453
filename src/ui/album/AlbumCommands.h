#pragma once

#include "app/Result.h"
#include "imaging/Picture.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class AlbumDocument;
class ProgressSink;
class Prompter;

// The photos a command works on, as the view that gives it sees them: record indices from 1.
struct CommandTarget {
    QList<int> selected; // the grid's selection, in album order
    int current = 0;     // the photo in the detail view, or the grid's current cell
    bool detail = false; // the detail view is up: the current photo alone is meant
};

// Every call the album window makes into the album library goes through here, so the window and
// its views know the library only as command names, index lists and the model's roles.
class AlbumCommands {
public:
    AlbumCommands(AlbumDocument &document, Prompter &prompter);

    // The commands carried out by library operations ("mnuByTime", "mnuRotateRight", ...).
    static const QStringList &Names();
    // Rewrites of many photo files or whole-folder checks: work for the task runner.
    static bool IsLong(const QString &name);
    // Carries out the command; false when the album is left as it was (refused, cancelled, or a
    // name this class does not know). A long command may run on a worker thread: it then touches
    // the document only through `progress` and asks its questions through a prompter that may be
    // called from there.
    bool Run(const QString &name, const CommandTarget &target, ProgressSink &progress);

    // The edits whose settings come from a window: one photo each. Long work, as Run's.
    bool Adjust(int index, const AdjustSliders &sliders, ProgressSink &progress);
    bool Crop(int index, const CropRectangle &rectangle, ProgressSink &progress);

    QString Path() const;
    bool IsModified() const;
    int RecordCount() const;
    // The photo's file, "" when the record names no bare file; the album's folder of other files.
    QString PhotoPath(int index) const;
    QString NonPhotoFolder() const;

    struct Texts {
        QString title, identification, description;
    };
    Texts AlbumTexts() const;
    Result SetAlbumTexts(const Texts &texts);

    // The records the text finds, for the view to highlight; nothing for an empty text.
    std::optional<QList<int>> Search(const QString &text) const;
    QList<int> NotedPhotos() const;
    static QString FoundLabel(int count);
    // A value typed into a record ("Description", "Keywords").
    Result SetRecordValue(int index, const QString &key, const QString &text);

private:
    AlbumDocument &document;
    Prompter &prompter;
};
