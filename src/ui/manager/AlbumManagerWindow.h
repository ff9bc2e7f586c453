#pragma once

#include <QWidget>
#include <functional>

class BackgroundReads;
class CellGrid;
class LibraryTree;
class OpenAlbums;
class OrvAlbumCell;
class PreviewPane;
class Prompter;
class QLabel;

// frmAlbumManager: the library browser in the main window's document area. A folder tree with
// three roots, the album cells of the chosen folder, the selected album's preview, and the album
// and folder commands. Albums open through the main window (`open`); the main window also closes
// an album's documents before it is renamed or thrown away (`openAlbums`).
class AlbumManagerWindow : public QWidget {
    Q_OBJECT
public:
    AlbumManagerWindow(Prompter &prompter, OpenAlbums &openAlbums, std::function<void(const QString &)> open,
                       QWidget *parent = nullptr);
    ~AlbumManagerWindow() override;

    // Shows a folder and its albums; the cells come in as the folder is read (Loaded follows).
    void SetRootFolder(const QString &path);
    QString RootFolder() const { return shown; }
    // The selected cell's album, "" for none.
    QString SelectedAlbum() const;
    void SelectAlbum(const QString &album);
    QList<OrvAlbumCell *> Cells() const;
    QString PreviewText() const;

    void ActionRefresh();
    void ActionShowInShell();
    void ActionNewAlbum();
    void ActionNewFolder();
    void ActionConvertFolderToAlbum();
    void ActionRename();
    void ActionRenameAlbum();
    void ActionMoveToTrash();
    void ActionMoveAlbumToTrash();
    void ActionOpenAlbum();
    void RefreshAlbumPreview();

signals:
    // The shown folder's cells are all there, each with its photo list.
    void Loaded();
    void PreviewShown();
    void GlobalSearchWanted();

private:
    struct FolderContent;
    void ShowContent(const FolderContent &content);
    void AskImage(OrvAlbumCell *cell, const QString &file);
    void ShowCellMenu(OrvAlbumCell *cell, const QPoint &at);
    void ConvertDropped(const QStringList &folders);
    void AfterFolderChange(const QString &select = {});

    Prompter &prompter;
    OpenAlbums &openAlbums;
    std::function<void(const QString &)> open;
    BackgroundReads *reads;
    LibraryTree *tree;
    CellGrid *grid;
    PreviewPane *preview;
    QLabel *folderLabel;
    QString shown;
    QString selectAfterLoad;
    int generation = 0; // a folder read that answers late, after another was asked for, is dropped
};
