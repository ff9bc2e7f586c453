#pragma once

#include "imaging/ColourTables.h"
#include "imaging/ImageFormat.h"
#include "app/Result.h"

#include <QByteArray>
#include <QFlags>
#include <QSize>
#include <QString>
#include <memory>

// Quarter turns, named by the way the top of the picture goes.
enum class Turn { Right = 90, HalfTurn = 180, Left = 270 };

// A rectangle in pixels of the picture; right and bottom are the first column and row outside it.
struct CropRectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

enum class WatermarkPlace {
    LeftTop = 0x1,
    LeftBottom = 0x2,
    RightTop = 0x4,
    RightBottom = 0x8,
    Centre = 0x10,
};
Q_DECLARE_FLAGS(WatermarkPlaces, WatermarkPlace)
Q_DECLARE_OPERATORS_FOR_FLAGS(WatermarkPlaces)

// Whether an encoded picture carries the tags and colour profile its source was decoded with.
enum class EmbeddedTags { Dropped, Kept };

// The quality of the "good quality" JPEG flag, used for thumbnails and exported copies.
constexpr int GoodJpegQuality = 75;

struct PictureData;

// The picture's size in pixels from its file's header, decoding no pixels; on failure size is
// left empty and the reason given.
Result ReadPictureSize(const QString &path, QSize &size);

// A decoded picture. Pictures are values: every operation returns a new picture and leaves its
// source as it was. A null picture stands for a load that failed; operations on it give null.
class Picture {
public:
    Picture();

    // Loads with the decoder of the extension's format. Null when the file cannot be decoded or
    // claims more pixels than the program will ever hold.
    static Picture Load(const QString &path);
    static Picture LoadFromMemory(const QByteArray &bytes, ImageFormat format);

    bool IsNull() const;
    int Width() const;
    int Height() const;
    int BitsPerPixel() const;
    // The pixels as 8-bit RGB on white, row after row, three bytes each: what a view draws.
    QByteArray RgbPixels() const;

    // Fits the picture into the box keeping its aspect ratio; a picture that already fits is
    // left at its size.
    Picture ResizedToFit(int maxWidth, int maxHeight) const;
    Picture Rotated(Turn turn) const;
    // Null when the rectangle holds no pixel of the picture; else cut to the picture's bounds.
    Picture Copied(const CropRectangle &rectangle) const;

    Picture Adjusted(const ColourTables &tables) const;
    Picture AutoContrasted() const;
    Picture BlackAndWhite() const;
    Picture Sepia() const;
    // Stamps the mark, with its transparency, at each of the places.
    Picture WithWatermark(const Picture &mark, WatermarkPlaces places) const;

    // The picture in the format; JPEG at the quality given. Empty on failure.
    QByteArray Encode(ImageFormat format, int jpegQuality = GoodJpegQuality,
                      EmbeddedTags tags = EmbeddedTags::Dropped) const;
    // Writes a JPEG file, whole or not at all.
    Result SaveJpeg(const QString &path, int quality = GoodJpegQuality) const;

private:
    explicit Picture(std::shared_ptr<const PictureData> data);
    friend struct PictureData;

// The picture's size in pixels from its file's header, decoding no pixels; on failure size is
// left empty and the reason given.
Result ReadPictureSize(const QString &path, QSize &size);
    std::shared_ptr<const PictureData> data;
};
