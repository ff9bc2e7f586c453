#pragma once

#include "ui/album/AlbumRoles.h"

#include <QAbstractListModel>
#include <QList>
#include <QStringList>
#include <vector>

class AlbumDocument;

// One row per photo record of an album document (row = record index - 1), with the roles of
// AlbumRoles.h and the file name as Qt::DisplayRole. The model follows the document's change
// signals row by row (inserts, removals, changes of the roles a key feeds, reorders with the
// persistent indexes carried along), never with a reset. It holds its view's highlights. data()
// reads only the document's list and its resolved folder layout: no disk, no settings.
// The document must outlive the model.
class AlbumModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit AlbumModel(AlbumDocument &document, QObject *parent = nullptr);

    AlbumDocument &Document() const { return document; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    // This view's highlights, as record indices (from 1); they stay with their records when
    // records come, go or are arranged.
    void SetHighlighted(const QList<int> &indices);
    QList<int> Highlighted() const;

    // The roles whose values come from these record keys.
    static QList<int> RolesOfKeys(const QStringList &keys);

private:
    // The document announces a change once it is made, while the rows must change between
    // begin and end: in that window a row is mapped to the record it showed before.
    struct Pending {
        enum class Kind { None, Insert, Remove, Reorder } kind = Kind::None;
        int first = 0;              // record index
        int count = 0;
        std::vector<int> newOfOld;  // reorder: old record index -> new, from 1
    };
    int RecordOfRow(int row) const;

    void OnInserted(int first, int count);
    void OnRemoved(int first, int count);
    void OnChanged(const QList<int> &indices, const QStringList &keys);
    void OnReordered(const QList<int> &oldIndexOfNew);
    void EmitChanged(QList<int> rows, const QList<int> &roles);

    AlbumDocument &document;
    int rows = 0;
    std::vector<bool> highlighted; // by row
    Pending pending;
};
