#pragma once

#include "library/CameraImport.h"

#include <QDialog>
#include <QList>
#include <QPointer>
#include <functional>
#include <memory>

class AlbumWindow;
class CardPreviews;
class FileChooser;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class TaskRunner;

// Opens the album at that folder in the main window (or finds it open) and hands its window to
// `opened` once it is open, which may be after the album was read on a worker thread; null when
// it could not be opened.
using OpenAlbumWindow = std::function<void(const QString &albumPath, std::function<void(AlbumWindow *)> opened)>;

// Shows the camera import window over `parent`: the photos of a camera, card or phone (`device`,
// or the cards found mounted when it is ""), to be copied into an album. The import itself runs
// in the target album's window, which shows it.
void ShowCameraImport(QWidget *parent, const QString &device, const QList<AlbumWindow *> &openAlbums,
                      OpenAlbumWindow openAlbum);

// The window itself: the card's photos as a grid of checkable thumbnails, those the target album
// already holds marked and left unchecked, and the target album.
class CameraImportWindow : public QDialog {
    Q_OBJECT
public:
    CameraImportWindow(const QString &device, const QList<AlbumWindow *> &openAlbums, OpenAlbumWindow openAlbum,
                       QWidget *parent = nullptr);
    ~CameraImportWindow() override;

    // The photos listed for the card in hand, once listed; checked ones are imported.
    const QList<CardPhoto> &Photos() const { return photos; }
    bool IsListing() const;
    void ImportChecked();

private:
    void AddTarget(AlbumWindow *album);
    void TargetChosen(int index);
    void TargetOpened(AlbumWindow *album);
    void ListCard();
    void ShowPhotos();
    AlbumWindow *Target() const;

    OpenAlbumWindow openAlbum;
    std::unique_ptr<TaskRunner> runner;
    std::unique_ptr<FileChooser> chooser;
    CardPreviews *previews;
    QComboBox *cards;
    QComboBox *targets;
    QListWidget *grid;
    QLabel *status;
    QPushButton *import;
    QList<CardPhoto> photos;
    int lastTarget = -1;
};
