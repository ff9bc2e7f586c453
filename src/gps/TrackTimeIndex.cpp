#include "gps/TrackTimeIndex.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 NoTime = std::numeric_limits<qint64>::min();

qint64 Distance(qint64 a, qint64 b)
{
    return a > b ? a - b : b - a;
}

} // namespace

TrackTimeIndex::TrackTimeIndex(const std::vector<qint64> &seconds)
{
    for (std::size_t i = 0; i < seconds.size(); ++i) {
        if (seconds[i] == NoTime)
            continue;
        if (!times.empty() && seconds[i] < times.back())
            ordered = false;
        times.push_back(seconds[i]);
        pointOf.push_back(static_cast<int>(i));
    }
    if (ordered)
        return;
    byTime.reserve(times.size());
    for (int position = 0; position < Size(); ++position)
        byTime.emplace_back(times[static_cast<std::size_t>(position)], position);
    std::sort(byTime.begin(), byTime.end());
    leaves = 1;
    while (leaves < Size())
        leaves *= 2;
    lowest.assign(2 * static_cast<std::size_t>(leaves), std::numeric_limits<qint64>::max());
    highest.assign(2 * static_cast<std::size_t>(leaves), std::numeric_limits<qint64>::min());
    for (int position = 0; position < Size(); ++position) {
        const std::size_t leaf = static_cast<std::size_t>(leaves) + static_cast<std::size_t>(position);
        lowest[leaf] = highest[leaf] = times[static_cast<std::size_t>(position)];
    }
    for (std::size_t node = static_cast<std::size_t>(leaves) - 1; node >= 1; --node) {
        lowest[node] = std::min(lowest[2 * node], lowest[2 * node + 1]);
        highest[node] = std::max(highest[2 * node], highest[2 * node + 1]);
    }
}

void TrackTimeIndex::Scan(qint64 t, int track, MatchState &state) const
{
    const auto take = [&](int position) {
        state.best = t - times[static_cast<std::size_t>(position)];
        state.found = true;
        state.track = track;
        state.point = pointOf[static_cast<std::size_t>(position)];
    };
    int position = 0;
    while (position < Size()) {
        if (state.best == 0) {
            // After an exact match the very next point decides: within reach it takes over,
            // else the walk stops.
            if (Distance(t, times[static_cast<std::size_t>(position)]) > MatchSeconds)
                return;
            take(position++);
            continue;
        }
        const qint64 reach = Distance(state.best, 0);
        const qint64 closer = std::min(MatchSeconds, reach - 1);
        const int stop = FirstOutside(t - reach, t + reach, position);
        const int better = FirstWithin(t - closer, t + closer, position);
        if (better >= stop)
            return;
        take(better);
        position = better + 1;
    }
}

int TrackTimeIndex::FirstWithin(qint64 low, qint64 high, int from) const
{
    if (ordered) {
        const auto found = std::lower_bound(times.begin() + from, times.end(), low);
        return found != times.end() && *found <= high ? static_cast<int>(found - times.begin()) : Size();
    }
    const auto begin = std::lower_bound(byTime.begin(), byTime.end(), std::make_pair(low, std::numeric_limits<int>::min()));
    const auto end = std::upper_bound(begin, byTime.end(), std::make_pair(high, std::numeric_limits<int>::max()));
    int first = Size();
    for (auto it = begin; it != end && first != from; ++it) {
        if (it->second >= from && it->second < first)
            first = it->second;
    }
    return first;
}

int TrackTimeIndex::FirstOutside(qint64 low, qint64 high, int from) const
{
    if (ordered) {
        if (from < Size() && times[static_cast<std::size_t>(from)] < low)
            return from;
        return static_cast<int>(std::upper_bound(times.begin() + from, times.end(), high) - times.begin());
    }
    return std::min(Size(), FirstOutsideBelow(1, 0, leaves, low, high, from));
}

int TrackTimeIndex::FirstOutsideBelow(std::size_t node, int nodeBegin, int nodeEnd, qint64 low, qint64 high, int from) const
{
    if (nodeEnd <= from || (lowest[node] >= low && highest[node] <= high))
        return Size();
    if (nodeEnd - nodeBegin == 1)
        return nodeBegin;
    const int middle = nodeBegin + (nodeEnd - nodeBegin) / 2;
    const int left = FirstOutsideBelow(2 * node, nodeBegin, middle, low, high, from);
    return left < Size() ? left : FirstOutsideBelow(2 * node + 1, middle, nodeEnd, low, high, from);
}
