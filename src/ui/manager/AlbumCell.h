#pragma once

#include <QImage>
#include <QStringList>
#include <QWidget>

class QTimer;

// OrvAlbumCell: one album in the manager's grid: its name, a line of facts and a picture that
// steps through the album's thumbnails on a timer while the cell is in view. The pictures are
// decoded elsewhere: the cell asks for one with ImageWanted and is handed it with SetImage.
class OrvAlbumCell : public QWidget {
    Q_OBJECT
public:
    static constexpr int StepMs = 2500;
    static QSize CellSize() { return {176, 168}; }
    static QSize PictureSize() { return {160, 120}; }

    explicit OrvAlbumCell(QWidget *parent = nullptr);

    // The album shown; its photos are forgotten until AddPhotoFile hands them again.
    void SetAlbumPath(const QString &path);
    QString GetAlbumPath() const { return albumPath; }
    void AddPhotoFile(const QString &file);
    int PhotoCount() const { return static_cast<int>(photos.size()); }
    void SetAlbumInfo(const QString &info);
    void SelectCell(bool on);
    bool IsSelected() const { return selected; }
    // The picture of the photo asked for last.
    void SetImage(const QString &file, const QImage &image);
    bool HasImage() const { return !picture.isNull(); }

    QSize sizeHint() const override { return CellSize(); }

signals:
    void ImageWanted(OrvAlbumCell *cell, const QString &file);
    void Clicked(OrvAlbumCell *cell);
    void Activated(OrvAlbumCell *cell);
    void MenuWanted(OrvAlbumCell *cell, const QPoint &globalPosition);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void Step();

    QString albumPath;
    QString name;
    QString info;
    QStringList photos;
    qsizetype next = 0;
    QString asked;
    QImage picture;
    bool selected = false;
    QTimer *timer;
};
