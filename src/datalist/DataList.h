#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <vector>

class QIODevice;

// The in-memory property list every store of the program is kept in: text-valued document
// properties and an ordered array of item dictionaries addressed from 1, all values text.
//
// Files are standard XML property lists. Values of other types read as their text and, until
// changed, are written back with their own type; values that are not plain (nested arrays and
// dictionaries) and top-level keys the program does not know survive a load and a save
// untouched. The item array is the top-level array of dictionaries, whatever its key.
class DataList {
public:
    enum class LoadStatus {
        Loaded = 0,
        Unreadable,   // missing, unreadable or empty file
        Malformed,    // not well-formed XML, truncated
        NotPropertyList,
        EntitiesDeclared, // documents that declare entities are refused, never expanded
    };
    struct LoadResult {
        LoadStatus status = LoadStatus::Loaded;
        QString message;
        explicit operator bool() const { return status == LoadStatus::Loaded; }
    };

    // Kinds a value had in its file; Plain values written by the program are strings.
    enum class Kind : quint8 { String, Integer, Real, True, False, Date, Data, Nested };

    // Keys are numbered per list: a big album holds a million entries but a few dozen keys.
    using KeyId = quint16;
    struct Entry {
        QString value; // the text, or for Nested the element's XML as read
        KeyId key = 0;
        Kind kind = Kind::String;
    };
    using Item = std::vector<Entry>;

    static inline const QString ItemsKey = QStringLiteral("Items");

    // On failure the list is left as it was.
    LoadResult Load(const QString &path);
    LoadResult LoadFromBytes(const QByteArray &xml);
    LoadResult LoadFromDevice(QIODevice *device);
    // Written to a temporary file and renamed over the old one.
    bool Save(const QString &path, QString *error = nullptr) const;
    QByteArray ToBytes() const;

    QString GetDocumentProperty(const QString &key) const;
    void SetDocumentProperty(const QString &key, const QString &value);

    int ItemCount() const { return static_cast<int>(items.size()); }
    // index from 1; "" when the key or the index is absent.
    QString GetItemProperty(const QString &key, int index) const;
    void SetItemProperty(const QString &key, const QString &value, int index);
    // Inserts an empty item at index (1 .. count + 1); out-of-range indices append.
    void AddItem(int index);
    void RemoveItem(int index);
    // Empties an item, keeping its place.
    void ClearItem(int index);
    // Moves the items of another list to the end of this one, in their order; their keys are
    // matched by name. `from` keeps its document properties and no items.
    void TakeItemsOf(DataList &from);
    // Order 1 ascending, 0 descending, by the key's text; items with equal text keep their order.
    void SortItems(const QString &key, int order);
    // The same with another order of the texts: less(a, b) is true when a comes before b.
    void SortItems(const QString &key, int order, const std::function<bool(const QString &, const QString &)> &less);

    const Item &ItemAt(int index) const { return items.at(static_cast<std::size_t>(index - 1)); }
    // The keys of document properties in file order (plain values only).
    QStringList DocumentKeys() const;
    const QString &KeyName(KeyId key) const { return keyNames.at(key); }

private:
    friend class DataListReader;
    friend class DataListBatches;
    KeyId InternKey(QStringView name);
    int FindKey(const QString &name) const; // -1 when no entry uses it

    std::vector<QString> keyNames;
    QHash<QString, KeyId> keyIds;
    std::vector<Entry> document;  // top level, in file order; the item array is not in it
    std::vector<Item> items;
    QString itemsKey = ItemsKey;
    int itemsPosition = -1;       // where the array sits among the top-level entries; -1: at the end
};
