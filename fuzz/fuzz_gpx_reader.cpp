// Any bytes as a GPX file: reading never crashes, the handler is called in a sound order, and
// every elevation comes out with one decimal.
#include "gps/GpxReader.h"

#include <QBuffer>
#include <QRegularExpression>
#include <cstdint>
#include <cstdlib>

namespace {

class OrderChecker : public GpxHandler {
public:
    void TrackStarted() override
    {
        Check(!inTrack);
        inTrack = true;
    }
    void TrackPoint(const GpxTrackPoint &point) override
    {
        Check(inTrack);
        Check(OneDecimal(point.ele));
    }
    void TrackEnded(const QString &) override
    {
        Check(inTrack);
        inTrack = false;
    }
    void WaypointRead(const Waypoint &waypoint) override
    {
        Check(!inTrack);
        Check(OneDecimal(waypoint.ele));
    }

private:
    static void Check(bool holds)
    {
        if (!holds)
            std::abort();
    }
    static bool OneDecimal(QStringView text)
    {
        static const QRegularExpression decimal(QStringLiteral(R"(^-?\d+\.\d$)"));
        return decimal.match(text.toString()).hasMatch();
    }
    bool inTrack = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    OrderChecker checker;
    ReadGpx(buffer, checker);
    return 0;
}
