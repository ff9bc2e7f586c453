#pragma once

#include "app/Result.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class ProgressSink;

// The search over many albums at once.
enum class SearchMode { File, Description, Keywords, DateOnly };

struct SearchQuery {
    QString text;
    SearchMode mode = SearchMode::File;
    // The date range, when switched on: both ends are taken, as whole days.
    std::optional<QDate> from, to;
};

// One album that holds matches.
struct AlbumMatch {
    QString path;
    QString title;   // its "Title", else its folder name less ".album"
    int photos = 0;
    int matched = 0;
};

// A range with an end missing or its begin after its end fails with the text of
// "WrongDateDomain"; so does the date mode without a range, which would have nothing to test.
Result CheckSearchQuery(const SearchQuery &query);

// Whether one record matches. The text is found anywhere inside the record's value, in any
// letter case, as the album's own search finds it: a user who types "beach" expects
// "Beach-2019.jpg" and "on the beach". An empty text matches every record, so that a range alone
// picks photos. With a range, a record matches only when its capture day lies within it.
bool RecordMatches(const SearchQuery &query, const QString &value, const QString &captureDate);

// Searches the albums, two or more at a time (one per core), and gives the albums holding at
// least one match, in the order given: an album without matches has nothing to open, so it gets
// no row. A list that cannot be read is left out. Stops early when the progress is cancelled.
QList<AlbumMatch> SearchAlbums(const SearchQuery &query, const QStringList &albums, ProgressSink &progress);

// The albums of the checked domains, each once.
QStringList AlbumsOfCheckedDomains();
