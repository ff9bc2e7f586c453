#pragma once

#include <QMdiSubWindow>

class AlbumWindow;

// The frame of one album window in the main window: its title follows the album's caption, and
// closing it closes the album, which may refuse.
class AlbumSubWindow : public QMdiSubWindow {
    Q_OBJECT
public:
    explicit AlbumSubWindow(AlbumWindow *album, QWidget *parent = nullptr);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    AlbumWindow *album;
};
