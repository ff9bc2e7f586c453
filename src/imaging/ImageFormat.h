#pragma once

#include <QString>

// The picture formats the program loads, chosen from the file name's extension.
enum class ImageFormat { Unknown, Jpeg, Png, Tiff, Bmp, Gif, Psd, Ico };

// From the upper-cased extension: "JPG"/"JPEG", "PNG", "TIF"/"TIFF", "BMP", "GIF", "PSD", "ICO".
ImageFormat FormatOfFile(const QString &path);

// Formats whose edited pixels can be written back into the same file with the file's tags.
bool CanSaveInPlace(ImageFormat format);
