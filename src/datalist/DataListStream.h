#pragma once

#include "datalist/DataList.h"

#include <QByteArray>
#include <QByteArrayView>
#include <span>

class QIODevice;

// Lists too big to hold in memory at once (a track of a million points) are written and read
// one item at a time, in the same file form DataList loads and saves. Texts are UTF-8 here, so
// that a million values need not become a million QStrings.

// One plain value of an item: key and text, as views that last only for the call they are
// handed to.
struct StreamedEntry {
    QByteArrayView key;
    QByteArrayView value;
};
using StreamedItem = std::span<const StreamedEntry>;

class DataListItemVisitor {
public:
    virtual ~DataListItemVisitor() = default;
    // One item, its plain values in file order.
    virtual void Item(StreamedItem entries) = 0;
    // Everything handed over so far is to be forgotten: the items come again from the first.
    virtual void Restart() = 0;
    // False once the reader should stop: the rest of the list is not wanted.
    virtual bool WantsMore() const { return true; }
};

// Reads a list file: its plain document properties into properties (which gets no items), and
// each item to the visitor. Files in the form the program writes are scanned directly; anything
// else (other value types, entity declarations, comments) goes through DataList's own reader,
// with the same outcome and the same error texts.
DataList::LoadResult StreamDataListItems(const QString &path, DataList &properties, DataListItemVisitor &visitor);
DataList::LoadResult StreamDataListItems(QIODevice &device, DataList &properties, DataListItemVisitor &visitor);

// Writes a list file item by item: the item array first, the document properties after it
// (they are often known only at the end). The bytes are those DataList::Save would write for
// the same list.
class DataListStreamWriter {
public:
    explicit DataListStreamWriter(QIODevice &device);
    DataListStreamWriter(const DataListStreamWriter &) = delete;
    DataListStreamWriter &operator=(const DataListStreamWriter &) = delete;

    void BeginItems(QByteArrayView itemsKey);
    void WriteItem(StreamedItem entries);
    void EndItems();
    void WriteProperty(QByteArrayView key, QByteArrayView value);
    // Closes the list and flushes it; false when anything could not be written.
    bool Finish();

private:
    void WriteEntry(QByteArrayView indent, const StreamedEntry &entry);
    void WriteEscaped(QByteArrayView text);
    void Put(QByteArrayView bytes);
    void Put(char byte);
    void Flush();

    QIODevice &device;
    QByteArray buffer; // a reused block; the first `used` bytes wait to be written
    qsizetype used = 0;
    bool arrayPending = false; // "<array>" is written with the first item: an empty one is "<array/>"
    bool failed = false;
};
