#pragma once

#include <QPersistentModelIndex>
#include <QTimer>
#include <QWidget>

class DetailPictures;
class PictureCanvas;
class QAbstractItemModel;
class QFormLayout;
class QLabel;
class QScrollArea;

// OrvDetailView: one photo fitted to the view, or at 100% with scroll bars, and the facts of its
// record beside it. PgUp/PgDn and the arrow keys step through the album, Z or a double-click
// switches between fitted and 100%, Escape goes back to the grid.
class OrvDetailView : public QWidget {
    Q_OBJECT
public:
    explicit OrvDetailView(QWidget *parent = nullptr);

    void SetModel(QAbstractItemModel *model);
    void ShowRow(int row);
    int CurrentRow() const;
    bool IsActualSize() const { return actualSize; }
    void SetActualSize(bool on);
    // Photo files were rewritten: what was decoded from them goes.
    void ForgetPictures();

signals:
    void BackRequested();
    void CurrentRowChanged(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Step(int by);
    void Refresh();
    void ShowFacts();
    void PictureReady(const QString &path, const QSize &box);
    QSize Box() const;
    QString PathOfRow(int row) const;

    QAbstractItemModel *model = nullptr;
    QPersistentModelIndex current;
    bool actualSize = false;
    DetailPictures *pictures;
    QScrollArea *scroller;
    PictureCanvas *canvas;
    QLabel *fileName;
    QFormLayout *facts;
    QTimer resized;
};
