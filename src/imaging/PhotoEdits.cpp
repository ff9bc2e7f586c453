#include "PhotoEdits.h"

#include "LosslessRotation.h"
#include "TagCopy.h"
#include "Thumbnail.h"

#include <QFile>
#include <QSaveFile>
#include <functional>

namespace {

using Edit = std::function<Picture(const Picture &)>;

QByteArray ReadFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Result WriteFile(const QString &path, const QByteArray &bytes)
{
    // QSaveFile keeps the permissions of the file it replaces.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return Result::Failure(QStringLiteral("%1: %2").arg(path, file.errorString()));
    return Result::Success();
}

EditOutcome Finish(const QString &photoPath, QSize size, const QString &thumbnailPath)
{
    EditOutcome outcome;
    if (!thumbnailPath.isEmpty())
        outcome.result = MakeThumbnail(photoPath, thumbnailPath);
    outcome.facts = ReadPhotoFileFacts(photoPath);
    outcome.facts.width = size.width();
    outcome.facts.height = size.height();
    return outcome;
}

EditOutcome Failed(const QString &photoPath, const QString &why)
{
    return {Result::Failure(QStringLiteral("%1: %2").arg(photoPath, why)), ReadPhotoFileFacts(photoPath)};
}

EditOutcome EditPhotoFile(const QString &photoPath, const Edit &edit, const QString &thumbnailPath)
{
    const ImageFormat format = FormatOfFile(photoPath);
    if (!CanSaveInPlace(format))
        return Failed(photoPath, QStringLiteral("photos of this format cannot be edited"));
    const QByteArray original = ReadFile(photoPath);
    const Picture picture = Picture::LoadFromMemory(original, format);
    if (picture.IsNull())
        return Failed(photoPath, QStringLiteral("the photo cannot be decoded"));
    const Picture edited = edit(picture);
    // The encoder carries the colour profile and the Photoshop resources; the tags are then put
    // back exactly by CopyTags. PNG text chunks are the exception: the encoder would mangle
    // their older encoding, so a PNG gets its tags from CopyTags alone.
    const EmbeddedTags carried = format == ImageFormat::Png ? EmbeddedTags::Dropped : EmbeddedTags::Kept;
    QByteArray encoded = edited.Encode(format, EditedJpegQuality, carried);
    if (encoded.isEmpty())
        return Failed(photoPath, QStringLiteral("the edited photo cannot be encoded"));
    if (const Result tagged = CopyTags(original, encoded, edited); !tagged)
        return Failed(photoPath, tagged.message);
    if (const Result written = WriteFile(photoPath, encoded); !written)
        return {written, ReadPhotoFileFacts(photoPath)};
    return Finish(photoPath, {edited.Width(), edited.Height()}, thumbnailPath);
}

} // namespace

EditOutcome RotatePhotoFile(const QString &photoPath, Turn turn, const QString &thumbnailPath)
{
    if (FormatOfFile(photoPath) == ImageFormat::Jpeg) {
        QByteArray jpeg = ReadFile(photoPath);
        QSize turnedSize;
        if (TurnJpegLosslessly(jpeg, turn, turnedSize)) {
            if (const Result written = WriteFile(photoPath, jpeg); !written)
                return {written, ReadPhotoFileFacts(photoPath)};
            return Finish(photoPath, turnedSize, thumbnailPath);
        }
    }
    return EditPhotoFile(photoPath, [turn](const Picture &picture) { return picture.Rotated(turn); }, thumbnailPath);
}

EditOutcome AdjustPhotoFile(const QString &photoPath, const ColourTables &tables, const QString &thumbnailPath)
{
    return EditPhotoFile(photoPath, [&tables](const Picture &picture) { return picture.Adjusted(tables); }, thumbnailPath);
}

EditOutcome ApplyEffectToPhotoFile(const QString &photoPath, PhotoEffect effect, const QString &thumbnailPath)
{
    return EditPhotoFile(
        photoPath,
        [effect](const Picture &picture) {
            switch (effect) {
            case PhotoEffect::Enhance:
                return picture.AutoContrasted();
            case PhotoEffect::BlackAndWhite:
                return picture.BlackAndWhite();
            case PhotoEffect::Sepia:
                return picture.Sepia();
            }
            return Picture();
        },
        thumbnailPath);
}

EditOutcome CropPhotoFile(const QString &photoPath, const CropRectangle &rectangle, const QString &thumbnailPath)
{
    return EditPhotoFile(photoPath, [&rectangle](const Picture &picture) { return picture.Copied(rectangle); }, thumbnailPath);
}
