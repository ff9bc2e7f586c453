#include "gps/KmzWriter.h"

#include <QFile>
#include <zip.h>

namespace {

QString ZipError(zip_t *archive)
{
    return QString::fromUtf8(zip_strerror(archive));
}

} // namespace

Result WriteKmz(const QString &path, const QByteArray &document, const QList<KmzImage> &images)
{
    QFile::remove(path);
    int error = 0;
    zip_t *archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_EXCL, &error);
    if (!archive) {
        zip_error_t reason;
        zip_error_init_with_code(&reason, error);
        Result failure = Result::Failure(QStringLiteral("Cannot make %1: %2").arg(path, QString::fromUtf8(zip_error_strerror(&reason))));
        zip_error_fini(&reason);
        return failure;
    }
    // libzip reads the buffer when the archive is closed.
    zip_source_t *doc = zip_source_buffer(archive, document.constData(), static_cast<zip_uint64_t>(document.size()), 0);
    if (!doc || zip_file_add(archive, "doc.kml", doc, ZIP_FL_ENC_UTF_8) < 0) {
        zip_source_free(doc);
        Result failure = Result::Failure(ZipError(archive));
        zip_discard(archive);
        return failure;
    }
    for (const KmzImage &image : images) {
        zip_source_t *source = zip_source_file(archive, QFile::encodeName(image.source).constData(), 0, -1);
        const QByteArray name = (QStringLiteral("files/") + image.name).toUtf8();
        const zip_int64_t added = source ? zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE) : -1;
        if (added < 0) {
            zip_source_free(source);
            Result failure = Result::Failure(QStringLiteral("%1: %2").arg(image.source, ZipError(archive)));
            zip_discard(archive);
            return failure;
        }
        // Images are compressed already.
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(added), ZIP_CM_STORE, 0);
    }
    if (zip_close(archive) < 0) {
        Result failure = Result::Failure(QStringLiteral("Cannot write %1: %2").arg(path, ZipError(archive)));
        zip_discard(archive);
        return failure;
    }
    return Result::Success();
}
