#pragma once

#include "datalist/DataListStream.h"

#include <functional>

// Gathers streamed items into lists of their own, a batch at a time, for a list that is read on
// one thread and taken in on another as it comes (DataList::TakeItemsOf). The first batch is
// small, so that what is shown first comes at once; the later ones are larger, so that handing
// them over costs little.
class DataListBatches : public DataListItemVisitor {
public:
    // `deliver` gets each full batch, and must take its items; it returns false when no more are
    // wanted. `restart` is called when the items come again from the first.
    DataListBatches(int firstBatch, int laterBatches, std::function<bool(DataList &)> deliver, std::function<void()> restart);

    void Item(StreamedItem entries) override;
    void Restart() override;
    bool WantsMore() const override { return wanted; }
    // Hands over the items of a batch that is not yet full.
    void Flush();

private:
    DataList::KeyId KeyOf(QByteArrayView name);

    const int laterBatches;
    int batchSize;
    std::function<bool(DataList &)> deliver;
    bool wanted = true;
    std::function<void()> restart;
    DataList batch;
    // The keys met so far, in the batch's numbering: a list has a few dozen, so a short search
    // over the raw bytes beats making a text of every key of every item.
    std::vector<QByteArray> keys;
};
