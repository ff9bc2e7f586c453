#include "ui/import/CardPreviews.h"

#include "imaging/TagReader.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>
#include <QTransform>

namespace {

// The EXIF orientation values 2 to 8 as turns and mirrors of the stored picture.
QImage Oriented(const QImage &picture, int orientation)
{
    QTransform turn;
    switch (orientation) {
    case 3: case 4: turn.rotate(180); break;
    case 5: case 6: turn.rotate(90); break;
    case 7: case 8: turn.rotate(270); break;
    default: break;
    }
    QImage turned = turn.isIdentity() ? picture : picture.transformed(turn);
    const bool mirrored = orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
    return mirrored ? turned.mirrored(true, false) : turned;
}

} // namespace

CardPreviews::CardPreviews(QObject *parent) : QObject(parent) {}

QImage CardPreviews::Decode(const QString &path, int size)
{
    const TagReader tags = TagReader::FromFile(path);
    const QImage preview = QImage::fromData(tags.EmbeddedPreview());
    if (preview.isNull())
        return preview;
    return Oriented(preview, tags.Orientation()).scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

void CardPreviews::Request(const QStringList &paths, int size)
{
    const int asked = ++generation;
    const QPointer<CardPreviews> self(this);
    for (int index = 0; index < paths.size(); ++index) {
        QThreadPool::globalInstance()->start([self, asked, index, path = paths[index], size] {
            const QImage picture = Decode(path, size);
            // Back on the interface thread, where `self` may be checked: the window may be gone.
            QMetaObject::invokeMethod(QCoreApplication::instance(), [self, asked, index, picture] {
                if (self && self->generation == asked)
                    emit self->PreviewReady(index, picture);
            }, Qt::QueuedConnection);
        });
    }
}
