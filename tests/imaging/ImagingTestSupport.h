#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

// The shared corpus of real photos beside the checkout.
QString CorpusPath(const QString &relative);

// A corpus photo copied into the folder, for tests that change it.
QString CopyOfCorpusPhoto(const QString &name, const QString &folder);

// What the real ExifTool reads from the file: one object of "-j -G1" output without SourceFile,
// with "-n" numbers when asked for.
QJsonObject ReadWithExifTool(const QString &path, const QStringList &tags, bool numbers = false);
