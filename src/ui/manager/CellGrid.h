#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

class OrvAlbumCell;

// The album cells of the shown folder, laid out in rows as wide as the view. Folders dropped on
// it are handed on by FoldersDropped.
class CellGrid : public QWidget {
    Q_OBJECT
public:
    explicit CellGrid(QWidget *parent = nullptr);

    // Replaces the cells by one per album, in order; they get their photos later.
    QList<OrvAlbumCell *> Reset(const QStringList &albums);
    const QList<OrvAlbumCell *> &Cells() const { return cells; }
    OrvAlbumCell *Find(const QString &album) const;
    OrvAlbumCell *Selected() const;
    void Select(OrvAlbumCell *cell);

signals:
    void SelectionChanged(OrvAlbumCell *cell);
    void FoldersDropped(const QStringList &folders);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Arrange();

    QList<OrvAlbumCell *> cells;
};
