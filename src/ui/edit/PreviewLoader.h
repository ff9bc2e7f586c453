#pragma once

#include "imaging/Picture.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>

#include <functional>

// What an editing window shows of a photo: a small picture of it and the photo's own size.
struct LoadedPreview {
    Picture picture;  // null when the photo could not be decoded
    QSize photoSize;  // pixels of the photo the edit will work on
};

// The picture as 32-bit RGB for painting.
QImage ImageOf(const Picture &picture);

// Runs `load` on a worker thread, so that the interface thread never decodes a photo, and hands
// its result to `done` on the receiver's thread; nothing is handed over once the receiver is gone.
void LoadPreviewAway(QObject *receiver, std::function<LoadedPreview()> load,
                     std::function<void(const LoadedPreview &)> done);
