#include "library/GlobalSearch.h"

#include "library/AlbumDiscovery.h"
#include "library/AlbumFormat.h"
#include "library/SearchDomains.h"
#include "app/Language.h"
#include "app/ProgressSink.h"
#include "datalist/DataListStream.h"
#include "imaging/ParallelWork.h"

#include <QDir>
#include <QSet>
#include <atomic>
#include <mutex>
#include <vector>

namespace {

QByteArrayView KeyOf(SearchMode mode)
{
    switch (mode) {
    case SearchMode::File: return "File";
    case SearchMode::Description: return "Description";
    case SearchMode::Keywords: return "Keywords";
    case SearchMode::DateOnly: break;
    }
    return {};
}

// The capture day of a "yyyy-mm-dd ..." value, read without making a string of it.
std::optional<QDate> CaptureDay(QByteArrayView text)
{
    if (text.size() < 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    int fields[3] = {0, 0, 0};
    const int starts[3] = {0, 5, 8};
    const int lengths[3] = {4, 2, 2};
    for (int f = 0; f < 3; ++f) {
        for (int i = 0; i < lengths[f]; ++i) {
            const char c = text[starts[f] + i];
            if (c < '0' || c > '9')
                return std::nullopt;
            fields[f] = fields[f] * 10 + (c - '0');
        }
    }
    const QDate day(fields[0], fields[1], fields[2]);
    return day.isValid() ? std::optional<QDate>(day) : std::nullopt;
}

bool InRange(const SearchQuery &query, QByteArrayView captureDate)
{
    if (!query.from)
        return true;
    const std::optional<QDate> day = CaptureDay(captureDate);
    return day && *day >= *query.from && *day <= *query.to;
}

class SearchVisitor : public DataListItemVisitor {
public:
    explicit SearchVisitor(const SearchQuery &searched) : query(searched), key(KeyOf(searched.mode)) {}

    void Item(StreamedItem entries) override
    {
        ++photos;
        QByteArrayView value, captureDate;
        for (const StreamedEntry &entry : entries) {
            if (entry.key == key)
                value = entry.value;
            else if (entry.key == "CaptureDate")
                captureDate = entry.value;
        }
        if (!InRange(query, captureDate))
            return;
        if (query.mode == SearchMode::DateOnly || query.text.isEmpty()
            || QString::fromUtf8(value).contains(query.text, Qt::CaseInsensitive))
            ++matched;
    }
    void Restart() override { photos = matched = 0; }

    int photos = 0;
    int matched = 0;

private:
    const SearchQuery &query;
    QByteArrayView key;
};

std::optional<AlbumMatch> SearchOne(const SearchQuery &query, const QString &album)
{
    DataList properties;
    SearchVisitor visitor(query);
    if (!StreamDataListItems(AlbumFormat::StudioPlistPath(album), properties, visitor) || visitor.matched == 0)
        return std::nullopt;
    QString title = properties.GetDocumentProperty(QStringLiteral("Title"));
    if (title.isEmpty())
        title = AlbumTitleFromPath(album);
    return AlbumMatch{album, title, visitor.photos, visitor.matched};
}

} // namespace

Result CheckSearchQuery(const SearchQuery &query)
{
    const bool ranged = query.from || query.to;
    const bool valid = ranged ? query.from && query.to && query.from->isValid() && query.to->isValid() && *query.from <= *query.to
                              : query.mode != SearchMode::DateOnly;
    return valid ? Result::Success()
                 : Result::Failure(GetLocalizedString(QStringLiteral("WrongDateDomain"), QStringLiteral("GlobalSearch")));
}

bool RecordMatches(const SearchQuery &query, const QString &value, const QString &captureDate)
{
    const QByteArray date = captureDate.toUtf8();
    if (!InRange(query, date))
        return false;
    return query.mode == SearchMode::DateOnly || query.text.isEmpty() || value.contains(query.text, Qt::CaseInsensitive);
}

QList<AlbumMatch> SearchAlbums(const SearchQuery &query, const QStringList &albums, ProgressSink &progress)
{
    std::vector<std::optional<AlbumMatch>> found(static_cast<std::size_t>(albums.size()));
    std::atomic<int> done = 0;
    std::mutex reporting; // a sink is not bound to take calls from many threads at once
    progress.Begin(GetLocalizedString(QStringLiteral("GlobalSearch"), QStringLiteral("Form")), static_cast<int>(albums.size()));
    RunInParallel(albums.size(), [&](qsizetype index) {
        if (progress.Cancelled())
            return;
        found[static_cast<std::size_t>(index)] = SearchOne(query, albums[index]);
        const int finished = ++done;
        const std::lock_guard lock(reporting);
        progress.Advance(finished);
    });
    progress.End();
    QList<AlbumMatch> matches;
    for (std::optional<AlbumMatch> &match : found) {
        if (match)
            matches.append(std::move(*match));
    }
    return matches;
}

QStringList AlbumsOfCheckedDomains()
{
    QStringList albums;
    QSet<QString> seen;
    for (const SearchDomain &domain : LoadSearchDomains()) {
        if (!domain.checked)
            continue;
        for (const QString &album : FindSearchableAlbums(QDir::cleanPath(domain.path))) {
            if (!seen.contains(album)) {
                seen.insert(album);
                albums << album;
            }
        }
    }
    return albums;
}
