// A photo file of arbitrary bytes through everything the program does with a file it imports:
// its tags, its picture, its picture fitted to a box, its thumbnail (with the embedded preview
// first). Nothing may crash, hang or take unbounded memory; a file that cannot be read simply
// has no tags or thumbnail.
#include "imaging/ImageTags.h"
#include "imaging/JpegScaledDecode.h"
#include "imaging/Picture.h"
#include "imaging/TagReader.h"
#include "imaging/Thumbnail.h"

#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

using namespace std::literals;

// Inputs are named by their first bytes, so each reaches the decoder of its kind as a photo of
// that kind would.
constexpr std::array<std::pair<std::string_view, const char *>, 7> Signatures = {{
    {"\xFF\xD8"sv, "jpg"}, {"\x89PNG"sv, "png"}, {"II*\0"sv, "tif"}, {"MM\0*"sv, "tif"},
    {"GIF8"sv, "gif"}, {"BM"sv, "bmp"}, {"8BPS"sv, "psd"},
}};

QString ExtensionOf(const QByteArray &bytes)
{
    for (const auto &[start, extension] : Signatures) {
        if (bytes.startsWith(QByteArrayView(start.data(), qsizetype(start.size()))))
            return QLatin1String(extension);
    }
    return QStringLiteral("jpg");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static QTemporaryDir folder;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString extension = ExtensionOf(bytes);

    ImageTags tags;
    tags.LoadExifTags(TagReader::FromMemory(bytes));
    if (!tags.dateTaken.isEmpty() && tags.dateTaken.size() != 19)
        std::abort();

    const Picture picture = Picture::LoadFromMemory(bytes, FormatOfFile(QStringLiteral("x.") + extension));
    (void)picture.ResizedToFit(ThumbnailBox, ThumbnailBox).Encode(ImageFormat::Jpeg);
    // The scaled JPEG decoder, which the exporter and the views go to first.
    const Picture fitted = DecodeJpegToFit(bytes, 640, 480);
    if (!fitted.IsNull() && (fitted.Width() > 640 || fitted.Height() > 480))
        std::abort();

    const QString photo = folder.filePath(QStringLiteral("photo.") + extension);
    QFile file(photo);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        std::abort();
    file.close();
    const QString thumbnail = folder.filePath(QStringLiteral("thumbnail.jpg"));
    QFile::remove(thumbnail);
    if (MakeThumbnail(photo, thumbnail, ThumbnailSource::EmbeddedPreviewFirst).ok != QFile::exists(thumbnail))
        std::abort();
    QFile::remove(photo);
    return 0;
}
