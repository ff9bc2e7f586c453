// Any text as a map page's URL, a search reply or a typed place: reading never crashes, a report
// that is refused leaves the view as it was, a found place is a real position, and a place built
// from a typed pair reads back as itself.
#include "gps/MapLocatorUrls.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

void Check(bool condition)
{
    if (!condition)
        std::abort();
}

bool Same(const MapState &a, const MapState &b)
{
    return a.longitude == b.longitude && a.latitude == b.latitude && a.level == b.level && a.mapType == b.mapType;
}

bool Real(const GeoPosition &position)
{
    return std::isfinite(position.latitude) && std::isfinite(position.longitude);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));

    MapState state;
    state.longitude = 5.5;
    state.latitude = 43.25;
    const MapState before = state;
    if (!GetLocatorData(text, state))
        Check(Same(state, before));

    if (const std::optional<GeoPosition> found = ParseGeoCode(text))
        Check(Real(*found));

    if (const std::optional<QString> local = LocalGeoCodeReply(text)) {
        const std::optional<GeoPosition> back = ParseGeoCode(*local);
        Check(back && Real(*back));
    }
    return 0;
}
