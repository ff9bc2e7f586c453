#pragma once

#include <QImage>
#include <QObject>
#include <QStringList>

// The thumbnails of a card's photos, decoded from the previews the camera embedded in each file,
// turned as the photo's orientation says. Decoding runs on the global thread pool; each picture
// arrives on the interface thread through PreviewReady, in no set order.
class CardPreviews : public QObject {
    Q_OBJECT
public:
    explicit CardPreviews(QObject *parent = nullptr);

    // Asks for the previews of these photos; those asked for before and not yet come are dropped.
    void Request(const QStringList &paths, int size);

    // The preview of one file, fitted into size x size; a null image when the file holds none.
    static QImage Decode(const QString &path, int size);

signals:
    void PreviewReady(int index, const QImage &picture);

private:
    int generation = 0;
};
