// Listing lines on arbitrary text: a name is always a piece of its own line, and a whole listing
// gives names from its lines only.
#include "net/FtpListing.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString listing = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString name = NameFromListingLine(listing);
    if (!listing.contains(name) || name == QLatin1String(".") || name == QLatin1String(".."))
        std::abort();
    const QStringList names = NamesFromListing(listing);
    if (names.isEmpty())
        std::abort();
    for (const QString &each : names) {
        if (!listing.contains(each) || each.contains(u'\r') || each.contains(u'\n'))
            std::abort();
    }
    return 0;
}
