#pragma once

#include <QtGlobal>
#include <utility>
#include <vector>

// The search for one photo's point, carried from track to track.
struct MatchState {
    // The best difference before any point is found (hexadecimal FFFFFFF).
    static constexpr qint64 NoMatch = 268435455;
    qint64 best = NoMatch; // photo time less point time, in seconds
    bool found = false;
    int track = -1;
    int point = -1;        // the point's index in its track, in stored order
};

// The greatest accepted difference between a photo and a point, inclusive.
constexpr qint64 MatchSeconds = 300;

// One track's point times, arranged so that the scan the matching rule describes is answered
// without walking the points one by one. The rule walks the points in stored order, skipping
// those without a time: a point within MatchSeconds that is closer than the best so far (or any
// such point while the best is an exact match) becomes the best; the walk stops at the first
// point farther than the best. The walk's outcome is the same as finding, from where it stands,
// the first point close enough to become the best and the first point far enough to stop it,
// and taking whichever comes first; those two searches are binary searches on a track in time
// order, and tree searches on any other.
class TrackTimeIndex {
public:
    // The UTC seconds of every point in stored order; NoTime (the minimum of qint64) for a point
    // to skip.
    explicit TrackTimeIndex(const std::vector<qint64> &seconds);

    // Walks the track for a photo whose time, in the track's time scale, is t.
    void Scan(qint64 t, int track, MatchState &state) const;

private:
    int Size() const { return static_cast<int>(times.size()); }
    // The first position from `from` on whose time is within [low, high]; Size() when none.
    int FirstWithin(qint64 low, qint64 high, int from) const;
    // The first position from `from` on whose time is outside [low, high]; Size() when none.
    int FirstOutside(qint64 low, qint64 high, int from) const;
    int FirstOutsideBelow(std::size_t node, int nodeBegin, int nodeEnd, qint64 low, qint64 high, int from) const;

    std::vector<qint64> times;  // the points with a time, in stored order
    std::vector<int> pointOf;   // their indices among all points
    bool ordered = true;        // times never decrease
    // Only for tracks out of time order:
    std::vector<std::pair<qint64, int>> byTime; // (time, position), sorted
    std::vector<qint64> lowest;  // segment tree over positions: least and greatest time per node
    std::vector<qint64> highest;
    int leaves = 0;
};
