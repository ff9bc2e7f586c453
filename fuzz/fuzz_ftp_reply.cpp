// FTP replies on arbitrary bytes: the incremental reader agrees with the whole-buffer rule
// however the bytes are cut into reads, keeps bounded text, and PASV parsing never fails.
#include "net/FtpReply.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const int whole = ParseReplyCode(bytes);
    if (whole != 0 && (whole < 100 || whole > 999))
        std::abort();

    // The first byte decides where the input is cut into reads.
    const qsizetype step = size == 0 ? 1 : 1 + data[0] % 7;
    FtpReplyReader reader;
    for (qsizetype at = 0; at < bytes.size(); at += step)
        reader.Append(bytes.sliced(at, std::min(step, bytes.size() - at)));
    if (reader.Code() != whole || reader.Text().size() > FtpReplyReader::TextLimit)
        std::abort();

    const std::optional<PassiveAddress> address = ParsePassiveAddress(QString::fromUtf8(bytes));
    if (address && address->host.count(u'.') < 3)
        std::abort();
    return 0;
}
