#include "imaging/JpegHeader.h"

namespace {

constexpr uchar MarkerStart = 0xFF;
constexpr uchar StartOfImage = 0xD8;
constexpr uchar StartOfScan = 0xDA;
constexpr uchar EndOfImage = 0xD9;
constexpr uchar ApplicationOne = 0xE1;
const QByteArray XmpSignature = QByteArrayLiteral("http://ns.adobe.com/xap/1.0/");

// Markers that stand alone, with no length after them.
bool StandsAlone(uchar marker)
{
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7);
}

} // namespace

QByteArray ReadJpegHeaderWithoutXmp(QIODevice &device, QByteArray *xmpPacket)
{
    QByteArray header = device.read(2);
    if (header.size() != 2 || uchar(header[0]) != MarkerStart || uchar(header[1]) != StartOfImage)
        return {};
    for (;;) {
        const QByteArray marker = device.read(2);
        if (marker.size() != 2 || uchar(marker[0]) != MarkerStart)
            break;
        const uchar kind = uchar(marker[1]);
        if (kind == MarkerStart) {
            // A fill byte: the marker proper follows.
            device.seek(device.pos() - 1);
            continue;
        }
        if (kind == StartOfScan || kind == EndOfImage)
            break;
        if (StandsAlone(kind))
            continue;
        const QByteArray length = device.read(2);
        if (length.size() != 2)
            break;
        const int payloadSize = (uchar(length[0]) << 8 | uchar(length[1])) - 2;
        if (payloadSize < 0)
            break;
        const QByteArray payload = device.read(payloadSize);
        if (payload.size() != payloadSize)
            break;
        if (kind == ApplicationOne && payload.startsWith(XmpSignature)) {
            // The signature is closed by a NUL; the packet follows it.
            if (xmpPacket && xmpPacket->isEmpty())
                *xmpPacket = payload.mid(XmpSignature.size() + 1);
            continue;
        }
        header += marker + length + payload;
    }
    return header + char(MarkerStart) + char(EndOfImage);
}
