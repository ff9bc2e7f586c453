// HTTP header split on arbitrary bytes: an accepted header starts with "HTTP" and ends at the
// first CR LF CR LF, which starts within the limit.
#include "net/HttpResponse.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const std::optional<qsizetype> end = HttpResponse::HeaderEnd(bytes);
    if (!end)
        return 0;
    if (!bytes.startsWith("HTTP") || *end >= HttpResponse::HeaderLimit || bytes.sliced(*end, 4) != "\r\n\r\n" ||
        bytes.first(*end + 4).indexOf("\r\n\r\n") != *end)
        std::abort();
    return 0;
}
