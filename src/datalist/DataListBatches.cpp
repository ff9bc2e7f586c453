#include "datalist/DataListBatches.h"

DataListBatches::DataListBatches(int firstBatch, int later, std::function<bool(DataList &)> deliverBatch,
                                 std::function<void()> restartFromFirst)
    : laterBatches(later)
    , batchSize(firstBatch)
    , deliver(std::move(deliverBatch))
    , restart(std::move(restartFromFirst))
{
}

DataList::KeyId DataListBatches::KeyOf(QByteArrayView name)
{
    for (std::size_t k = 0; k < keys.size(); ++k) {
        if (keys[k] == name)
            return static_cast<DataList::KeyId>(k);
    }
    keys.emplace_back(name.toByteArray());
    return batch.InternKey(QString::fromUtf8(name));
}

void DataListBatches::Item(StreamedItem entries)
{
    DataList::Item item;
    item.reserve(entries.size());
    for (const StreamedEntry &entry : entries)
        item.push_back({QString::fromUtf8(entry.value), KeyOf(entry.key), DataList::Kind::String});
    batch.items.push_back(std::move(item));
    if (batch.ItemCount() >= batchSize) {
        Flush();
        batchSize = laterBatches;
    }
}

void DataListBatches::Flush()
{
    if (batch.ItemCount() > 0 && wanted)
        wanted = deliver(batch);
    batch.items.clear();
}

void DataListBatches::Restart()
{
    batch.items.clear();
    restart();
}
