#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QThreadPool>

// Photos decoded for the detail view at the size they are shown, on a worker thread: the
// decoder shrinks while it loads and turns the picture upright. The few last pictures are kept,
// so the photo before and after the shown one, decoded ahead, come up at once.
class DetailPictures : public QObject {
    Q_OBJECT
public:
    explicit DetailPictures(QObject *parent = nullptr);
    ~DetailPictures() override;

    // The picture when it is ready, else a null image and the decoding is started; Ready follows.
    QImage Picture(const QString &path, const QSize &box);
    void WaitForDone();
    // Forgets the pictures kept, after photo files were rewritten.
    void Clear() { pictures.clear(); }

    // A box no photo exceeds: the photo at its own size.
    static QSize FullSize() { return {1 << 16, 1 << 16}; }

signals:
    void Ready(const QString &path, const QSize &box);

private:
    static QString Key(const QString &path, const QSize &box);

    QCache<QString, QImage> pictures;
    QSet<QString> decoding;
    QThreadPool pool;
};
