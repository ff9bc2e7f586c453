#pragma once

#include "library/GlobalSearch.h"

#include <QWidget>
#include <functional>
#include <memory>

class FileChooser;
class Prompter;
class QCheckBox;
class QButtonGroup;
class QDateEdit;
class QLineEdit;
class QTreeWidget;
class TaskRunner;

// The search over every album of the checked domains: the domain list (its check boxes written
// to "GlobalSearch.plist" at once), the four modes, the date range and the albums found. The
// search runs on worker threads, with progress and Cancel; a result row opens its album through
// the main window (`open`, which calls back once the album is open or has failed to).
class GlobalSearchWindow : public QWidget {
    Q_OBJECT
public:
    using OpenAlbum = std::function<void(const QString &path, std::function<void()> done)>;

    GlobalSearchWindow(Prompter &prompter, FileChooser &chooser, OpenAlbum open, QWidget *parent = nullptr);
    ~GlobalSearchWindow() override;

    void SetQuery(const SearchQuery &query);
    // Starts the search; false when the query is refused (its message shown) or one runs.
    bool StartSearch();
    void AddDomain();
    void RemoveDomain();
    QTreeWidget *Domains() const { return domains; }
    QTreeWidget *Results() const { return results; }

signals:
    void SearchEnded(bool cancelled);

private:
    void FillDomains();
    // The last search is kept in [GlobalSearch] and run again when the window opens, so the
    // window comes back as the user left it, its results brought up to date.
    void RememberQuery(const SearchQuery &query) const;
    std::optional<SearchQuery> RememberedQuery() const;
    SearchQuery Query() const;
    void ShowResults(const QList<AlbumMatch> &matches);
    void OpenInTurn(QStringList albums);

    Prompter &prompter;
    FileChooser &chooser;
    OpenAlbum open;
    std::unique_ptr<TaskRunner> runner;
    QTreeWidget *domains;
    QTreeWidget *results;
    QLineEdit *text;
    QButtonGroup *modes;
    QCheckBox *ranged;
    QDateEdit *from;
    QDateEdit *to;
    QCheckBox *autoOpen;
    bool filling = false;
};
