#include "imaging/PhotoEdits.h"

#include "imaging/EditSafety.h"
#include "imaging/LosslessRotation.h"
#include "imaging/TagCopy.h"
#include "imaging/TagReader.h"
#include "imaging/Thumbnail.h"

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

// The file is rewritten by now: its record must follow it whatever becomes of the thumbnail.
EditOutcome Finish(const QString &photoPath, QSize size, const QString &thumbnailPath)
{
    EditOutcome outcome;
    if (!thumbnailPath.isEmpty())
        outcome.thumbnail = MakeThumbnail(photoPath, thumbnailPath);
    outcome.facts = ReadPhotoFileFacts(photoPath);
    outcome.facts.width = size.width();
    outcome.facts.height = size.height();
    return outcome;
}

EditOutcome Failed(const QString &photoPath, const QString &why)
{
    return {Result::Failure(QStringLiteral("%1: %2").arg(photoPath, why)), ReadPhotoFileFacts(photoPath), {}};
}

EditOutcome EditPhotoFile(const QString &photoPath, const Edit &edit, const QString &thumbnailPath)
{
    const ImageFormat format = FormatOfFile(photoPath);
    if (!CanSaveInPlace(format))
        return Failed(photoPath, QStringLiteral("photos of this format cannot be edited"));
    const QByteArray original = ReadFile(photoPath);
    // Nothing is written unless the new file keeps all the old one had (EditSafety.h).
    if (const Result editable = CheckEditable(original, format); !editable)
        return Failed(photoPath, editable.message);
    const Picture picture = Picture::LoadFromMemory(original, format);
    if (picture.IsNull())
        return Failed(photoPath, QStringLiteral("the photo cannot be decoded"));
    const Picture edited = edit(picture);
    if (edited.IsNull())
        return Failed(photoPath, QStringLiteral("the edit leaves no picture"));
    QByteArray encoded;
    if (const Result kept = EncodeLikeOriginal(original, format, edited, EditedJpegQuality, encoded); !kept)
        return Failed(photoPath, kept.message);
    if (const Result tagged = CopyTags(original, encoded, edited); !tagged)
        return Failed(photoPath, tagged.message);
    if (const Result written = WriteFile(photoPath, encoded); !written)
        return {written, ReadPhotoFileFacts(photoPath), {}};
    return Finish(photoPath, {edited.Width(), edited.Height()}, thumbnailPath);
}

} // namespace

EditOutcome RotatePhotoFile(const QString &photoPath, Turn turn, const QString &thumbnailPath)
{
    if (FormatOfFile(photoPath) == ImageFormat::Jpeg) {
        // A JPEG is never decoded and encoded again to turn it: turning by moving its blocks is
        // exact, and re-encoding loses a little more on every turn. When the blocks cannot move
        // exactly (a side that is not a whole number of blocks, which would have to be trimmed
        // off) or the photo is already shown turned by its orientation tag, the turn goes into
        // that tag instead: four turns give back the very file, and nothing is cut.
        QByteArray jpeg = ReadFile(photoPath);
        const int orientation = TagReader::FromMemory(jpeg).Orientation();
        QSize turnedSize;
        Result turned = Result::Failure(QString());
        if (orientation == 1)
            turned = TurnJpegLosslessly(jpeg, turn, turnedSize);
        if (!turned)
            turned = TurnJpegByOrientation(jpeg, turn, orientation, turnedSize);
        if (!turned)
            return Failed(photoPath, turned.message);
        if (const Result written = WriteFile(photoPath, jpeg); !written)
            return {written, ReadPhotoFileFacts(photoPath), {}};
        return Finish(photoPath, turnedSize, thumbnailPath);
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
