#pragma once

#include "library/AlbumFormat.h"
#include "datalist/DataList.h"
#include "library/ImportReport.h"
#include "app/Result.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <memory>
#include <optional>
#include <utility>

class Prompter;

// Values for one record, in the order they are written.
using RecordValues = QList<std::pair<QString, QString>>;

// One open album: its list of photo records and whether it has unsaved changes. Every change to
// the records goes through the methods here, and each is announced by a signal once it is done,
// so that any number of views follow the list without rereading it. Selection, the current photo
// and highlights belong to each view: the operations take the photos they work on as indices
// (from 1, as in the list), and the finders return indices for the view to hold.
class AlbumDocument : public QObject {
    Q_OBJECT
public:
    // Which view a command came from: it chooses the texts of some confirmations.
    enum class View { Thumbnails, Detail };

    struct OpenResult {
        std::unique_ptr<AlbumDocument> document; // null when the folder was refused
        OpenAlbumStatus status = OpenAlbumStatus::Nothing;
        DataList::LoadResult load;               // a failed load opens in the no-save state
        ImportReport imported;                   // what opening imported from the drop folder, or found outside
    };
    // Applies the opening rules, resolves the folder layout, then loads the list.
    static OpenResult Open(const QString &path);
    // The same without the list: the document starts empty and in the no-save state, and its
    // records come in through the loading calls below (StreamAlbumRecords), so that a window can
    // show the first of a big album while the rest is read.
    static OpenResult Prepare(const QString &path);

    // The loading calls, each announced as any change is, none marking the document modified.
    // Records read from the list, appended in file order; `batch` keeps no items.
    void TakeLoadedRecords(DataList &batch);
    // The list's document properties, once its last record is in: the document may be saved.
    void FinishLoading(const DataList &properties);
    // The whole list, read at once, in place of what came before: the document may be saved.
    void FinishLoading(DataList &&whole);
    // Forgets the records read so far: the list is read again from its start.
    void ForgetLoadedRecords();

    const QString &Path() const { return path; }
    const DataList &List() const { return list; }
    int RecordCount() const { return list.ItemCount(); }
    QString Record(const QString &key, int index) const { return list.GetItemProperty(key, index); }
    // Index of the record whose "File" names that file by PhotoRecord::MatchNames, 0 when none.
    int FindRecord(const QString &name) const;
    QList<int> FindRecords(const QStringList &names) const;
    // Every record's "File", in album order.
    QStringList RecordFiles() const;

    // The folder layout, resolved once when the album opens: a package keeps its photos in
    // "studio.data/size_full", a folder album in the folder itself.
    bool IsPackage() const { return package; }
    const QString &PhotoFilesFolder() const { return photoFolder; }
    const QString &ThumbnailsFolder() const { return thumbnailFolder; }
    // The photo's path, or "" when its record names no bare file and must be left alone. No disk
    // access: the paths come from the resolved layout.
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
    // Other document properties of the album (its export options), set in the order given.
    void SetDocumentProperties(const RecordValues &properties);

    // Changes to records. Each marks the document modified when something changed.
    // A new record holding the values, appended at the end; returns its index.
    int AppendRecord(const RecordValues &values = {});
    void RemoveRecord(int index);
    // Removes the records, each once, whatever the order given.
    void RemoveRecords(QList<int> indices);
    void SetRecordValue(int index, const QString &key, const QString &value);
    void SetRecordValues(int index, const RecordValues &values);
    void SetRecordValues(int index, const QMap<QString, QString> &values);
    // One value for many records, announced at once.
    void SetValueOfRecords(const QList<int> &indices, const QString &key, const QString &value);
    // The record holds only the values given, in their order.
    void ReplaceRecord(int index, const RecordValues &values);

    bool ArrangePhotos(const QString &key, bool ascending, bool confirm, Prompter *prompter);
    bool ActionArrangeByTime(Prompter &prompter);
    bool ActionArrangeByTimeDesc(Prompter &prompter);
    bool ActionArrangeByFile(Prompter &prompter);
    bool ActionArrangeByFileDesc(Prompter &prompter);
    // format "yyyy-mm-dd" (a day) or "yyyy-mm-dd hh" (an hour); returns the records captured then,
    // for the view to select (the first becomes its current photo). The date is a wall-clock
    // value (ReadWallClock): only its fields count, never a zone.
    QList<int> FindItemsWithDate(const QDateTime &date, const QString &format) const;
    void ActionStar(const QList<int> &indices, bool on);
    // Selections for a view to hold.
    QList<int> ActionSelectHighlightPhotos(const QList<int> &highlighted) const;
    QList<int> ActionSelectStarPhotos() const;
    QList<int> ActionSelectAllPhotos() const;
    QList<int> ActionInverseSelection(const QList<int> &selected) const;

    qint64 GetTotalBytesByDatalist() const;
    qint64 GetTotalBytesByFileSystem() const;
    // The same total for a photo files folder, without the document: long work counts it away
    // from the document's thread.
    static qint64 TotalPhotoBytesIn(const QString &photoFolder);

    // The records whose note, keywords or file name hold the text, in any letter case, for the
    // view to highlight; nothing for an empty text, which changes nothing.
    std::optional<QList<int>> ActionSearch(const QString &text) const;
    QList<int> ActionHighlightNotedPhotos() const;
    // "0 Item Found", "3 Items Found".
    static QString FoundLabel(int count);

    void SetNoteForPhotos(const QList<int> &indices, const QString &note);
    // Asks for the note, prefilled with the first photo's.
    bool ActionSetNoteForSelectedPhotos(const QList<int> &indices, Prompter &prompter);
    // One photo's keywords, for pasting onto others.
    QString ActionKeywordsCopy(int index) const;
    // Adds the keywords to each photo's own.
    void ActionKeywordsPaste(const QList<int> &indices, const QString &keywords);

    struct DeleteReport {
        QList<int> leftAlone;         // records naming no bare file, untouched
        QList<FileProblem> failures;  // photos the trash refused: they and their records stay
    };
    // Sends each photo file to the trash and removes its record and thumbnail; a file already
    // gone is simply not sent. A photo that cannot go to the trash keeps its record.
    DeleteReport DeleteItems(QList<int> indices);
    // Asks first, with the text of the view the photos were chosen in.
    bool ActionDelete(const QList<int> &indices, View shownIn, Prompter &prompter);

signals:
    void RecordsInserted(int first, int count);
    // A removal of scattered records is announced one contiguous run at a time, highest first.
    void RecordsRemoved(int first, int count);
    void RecordsChanged(const QList<int> &indices, const QStringList &keys);
    // New position i (from 1) holds the record that was at oldIndexOfNew[i - 1].
    void RecordsReordered(const QList<int> &oldIndexOfNew);
    void ModifiedChanged(bool modified);
    void AlbumTextsChanged();

private:
    explicit AlbumDocument(const QString &folder);
    void SetModified(bool on);
    bool Valid(int index) const { return index >= 1 && index <= RecordCount(); }

    QString path;
    bool package = false;
    QString photoFolder;
    QString thumbnailFolder;
    DataList list;
    bool modified = false;
    bool noSave = false;
};
