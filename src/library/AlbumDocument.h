#pragma once

#include "library/AlbumFormat.h"
#include "datalist/DataList.h"
#include "library/ImportReport.h"
#include "app/Result.h"

#include <QDateTime>
#include <QList>
#include <memory>
#include <optional>
#include <vector>

class Prompter;

// One open album: its list of photo records, the current record, the per-record selection and
// highlight flags of its views, and whether it has unsaved changes. The windows show it; every
// operation on it is here.
class AlbumDocument {
public:
    enum class View { Thumbnails, Detail };

    struct OpenResult {
        std::unique_ptr<AlbumDocument> document; // null when the folder was refused
        OpenAlbumStatus status = OpenAlbumStatus::Nothing;
        DataList::LoadResult load;               // a failed load opens in the no-save state
        ImportReport imported;                   // what opening imported from the drop folder, or found outside
    };
    // Applies the opening rules, then loads the list.
    static OpenResult Open(const QString &path);

    const QString &Path() const { return path; }
    DataList &List() { return list; }
    const DataList &List() const { return list; }
    int RecordCount() const { return list.ItemCount(); }
    QString Record(const QString &key, int index) const { return list.GetItemProperty(key, index); }
    // Index of the record whose "File" names that file by PhotoRecord::MatchNames, 0 when none.
    int FindRecord(const QString &name) const;
    QList<int> FindRecords(const QStringList &names) const;
    // Every record's "File", in album order.
    QStringList RecordFiles() const;

    // The photo's path, or "" when its record names no bare file and must be left alone.
    QString PhotoFilePath(int index) const;
    QString ThumbnailFilePath(int index) const;
    QList<int> UnsafeRecords() const;

    bool IsModified() const { return modified; }
    bool IsNoSave() const { return noSave; }
    void DocumentWasModified();
    // Writes the list and clears the modified flag. In the no-save state (the list on disk could
    // not be read) nothing is ever written: with changes waiting that fails, saying why.
    Result SaveDocumentToFile();

    // The album's own texts: document properties "Title", "Identification", "Description".
    struct AlbumTexts {
        std::optional<QString> title, identification, description; // only those given change
    };
    // An identification names the album's folder on publishing servers: it must be a usable
    // folder name (not empty, no "/" or "\\", not "." or "..").
    Result SetAlbumTexts(const AlbumTexts &texts);

    View CurrentView() const { return view; }
    void SetView(View shown) { view = shown; }
    int CurrentIndex() const { return current; }
    void SetCurrentIndex(int index);
    bool IsSelected(int index) const;
    void SetSelected(int index, bool selected);
    QList<int> SelectedIndices() const;
    bool IsHighlighted(int index) const;
    void SetHighlightItems(const QList<int> &indices);

    bool ArrangePhotos(const QString &key, bool ascending, bool confirm, Prompter *prompter);
    bool ActionArrangeByTime(Prompter &prompter);
    bool ActionArrangeByTimeDesc(Prompter &prompter);
    bool ActionArrangeByFile(Prompter &prompter);
    bool ActionArrangeByFileDesc(Prompter &prompter);
    // format "yyyy-mm-dd" (a day) or "yyyy-mm-dd hh" (an hour); returns the number selected. The
    // date is a wall-clock value (ReadWallClock): only its fields count, never a zone.
    int FindItemsWithDate(const QDateTime &date, const QString &format);
    void ActionStar(bool on);
    void ActionSelectHighlightPhotos();
    void ActionSelectStarPhotos();
    void ActionSelectAllPhotos();
    void ActionInverseSelection();

    qint64 GetTotalBytesByDatalist() const;
    qint64 GetTotalBytesByFileSystem() const;

    // Records come and go through these, so the view flags stay with their records.
    int AppendRecord();
    void RemoveRecord(int index);

    // Highlights the records whose note, keywords or file name hold the text, in any letter
    // case; returns how many, or -1 for an empty text, which changes nothing.
    int ActionSearch(const QString &text);
    int ActionHighlightNotedPhotos();
    // "0 Item Found", "3 Items Found".
    static QString FoundLabel(int count);

    void SetNoteForPhotos(const QList<int> &indices, const QString &note);
    bool ActionSetNoteForSelectedPhotos(Prompter &prompter);
    // The current photo's keywords, for pasting onto others.
    QString ActionKeywordsCopy() const;
    // Adds the keywords to each selected photo's own (the current one in the detail view).
    void ActionKeywordsPaste(const QString &keywords);

    struct DeleteReport {
        QList<int> leftAlone;         // records naming no bare file, untouched
        QList<FileProblem> failures;  // photos the trash refused: they and their records stay
    };
    // Sends each photo file to the trash and removes its record and thumbnail; a file already
    // gone is simply not sent. A photo that cannot go to the trash keeps its record.
    DeleteReport DeleteItems(QList<int> indices);
    bool ActionDelete(Prompter &prompter);
    // The photos the selection (or, in the detail view, the current photo) stands for.
    QList<int> TargetIndices() const;

private:
    explicit AlbumDocument(const QString &folder);
    void ResetViewFlags();

    QString path;
    DataList list;
    bool modified = false;
    bool noSave = false;
    View view = View::Thumbnails;
    int current = 0;
    std::vector<bool> selected;    // by record, from index 1
    std::vector<bool> highlighted;
};
