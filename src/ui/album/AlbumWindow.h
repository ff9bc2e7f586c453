#pragma once

#include <QWidget>
#include <memory>

class AlbumDocument;

// frmDocument: one open album in the main window's document area. The main window routes the
// album commands of its menus here by their command names ("mnuByTime", "mnuRotateRight", ...).
class AlbumWindow : public QWidget {
    Q_OBJECT
public:
    AlbumWindow(std::unique_ptr<AlbumDocument> document, QWidget *parent = nullptr);
    ~AlbumWindow() override;

    // The album folder, by which the main window finds an album that is already open.
    QString Path() const;
    AlbumDocument &Document();

    // The commands this window carries out; the main window enables its album commands by them.
    bool HasCommand(const QString &name) const;
    // Carries out one command; false when this window has no such command.
    bool RunCommand(const QString &name);

    // Saves a modified album and lets long work stop at the photo in hand; false keeps the
    // window open (the user cancelled, or saving failed and the user chose to stay).
    bool CloseAlbum();

signals:
    // The folder name, with "*" while there are unsaved changes.
    void CaptionChanged(const QString &caption);

private:
    std::unique_ptr<AlbumDocument> document;
};
