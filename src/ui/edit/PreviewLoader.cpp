#include "ui/edit/PreviewLoader.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <QThreadPool>

QImage ImageOf(const Picture &picture)
{
    if (picture.IsNull())
        return {};
    const QByteArray rgb = picture.RgbPixels();
    const qsizetype line = qsizetype(picture.Width()) * 3;
    if (rgb.size() < line * picture.Height())
        return {};
    return QImage(reinterpret_cast<const uchar *>(rgb.constData()), picture.Width(), picture.Height(), line, QImage::Format_RGB888)
        .convertToFormat(QImage::Format_RGB32);
}

void LoadPreviewAway(QObject *receiver, std::function<LoadedPreview()> load, std::function<void(const LoadedPreview &)> done)
{
    QPointer<QObject> guard(receiver);
    QThreadPool::globalInstance()->start([guard, load = std::move(load), done = std::move(done)] {
        const LoadedPreview loaded = load();
        // The application object outlives every window: the call waits in its queue and is
        // dropped there if the window closed meanwhile.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [guard, done, loaded] {
                if (guard)
                    done(loaded);
            },
            Qt::QueuedConnection);
    });
}
