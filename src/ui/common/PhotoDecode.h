#pragma once

#include <QImage>
#include <QSize>
#include <QString>

// The photo decoded to fit the box (shrunk while it loads), as a QImage for painting; null when
// it cannot be read. It decodes: call it from a worker thread, never the interface thread.
QImage DecodePhotoToFit(const QString &path, const QSize &box);
