#pragma once

#include <QWidget>

struct AlbumPreview;
class QLabel;

// The facts of the selected album beside the grid: title, identification, number of photos,
// their total size and the first and last capture times.
class PreviewPane : public QWidget {
    Q_OBJECT
public:
    explicit PreviewPane(QWidget *parent = nullptr);

    void Show(const AlbumPreview &preview);
    void Clear();
    QString ShownText() const; // what is shown, line by line

private:
    QLabel *title;
    QLabel *identification;
    QLabel *number;
    QLabel *size;
    QLabel *dates;
};
