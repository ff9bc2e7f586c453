// Any bytes as a list file: the streamed reading agrees with DataList's own, in outcome, error
// text, items and document properties; and so do the items gathered in batches (as an album's
// window takes them in) once the batches are put together.
#include "datalist/DataList.h"
#include "datalist/DataListBatches.h"
#include "datalist/DataListStream.h"

#include <QBuffer>
#include <cstdint>
#include <cstdlib>

namespace {

class Collector : public DataListItemVisitor {
public:
    void Item(StreamedItem entries) override
    {
        QStringList item;
        for (const StreamedEntry &entry : entries)
            item << QString::fromUtf8(entry.key) << QString::fromUtf8(entry.value);
        items << item;
    }
    void Restart() override { items.clear(); }
    QList<QStringList> items;
};

QStringList PlainEntries(const DataList &list, int index)
{
    QStringList item;
    for (const DataList::Entry &entry : list.ItemAt(index)) {
        if (entry.kind != DataList::Kind::Nested)
            item << list.KeyName(entry.key) << entry.value;
    }
    return item;
}

// The items read again in batches of one, then two, put together in one list.
DataList Batched(QByteArray &bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    DataList together;
    DataListBatches batches(
        1, 2, [&](DataList &batch) {
            together.TakeItemsOf(batch);
            return true;
        },
        [&] { together = DataList(); });
    DataList properties;
    StreamDataListItems(buffer, properties, batches);
    batches.Flush();
    return together;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    DataList whole;
    const DataList::LoadResult expected = whole.LoadFromBytes(bytes);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    DataList properties;
    Collector collector;
    const DataList::LoadResult streamed = StreamDataListItems(buffer, properties, collector);
    if (size == 0)
        return 0; // the stream reader is handed files, never empty ones
    if (streamed.status != expected.status || streamed.message != expected.message)
        std::abort();
    if (!expected)
        return 0;
    const DataList batched = Batched(bytes);
    if (collector.items.size() != whole.ItemCount() || batched.ItemCount() != whole.ItemCount())
        std::abort();
    for (int i = 1; i <= whole.ItemCount(); ++i) {
        const QStringList item = PlainEntries(whole, i);
        if (item != collector.items[i - 1] || item != PlainEntries(batched, i))
            std::abort();
    }
    for (const QString &key : whole.DocumentKeys()) {
        if (properties.GetDocumentProperty(key) != whole.GetDocumentProperty(key))
            std::abort();
    }
    return 0;
}
