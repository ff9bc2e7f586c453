#include "net/DataSink.h"

void DataSink::Reset()
{
    file = nullptr;
    buffer.clear();
    taken = 0;
    overflowed = false;
    writeFailed = false;
}

void DataSink::Take(const QByteArray &bytes)
{
    taken += bytes.size();
    if (file) {
        if (file->write(bytes) != bytes.size())
            writeFailed = true;
        return;
    }
    if (buffer.size() + bytes.size() > limit) {
        overflowed = true;
        return;
    }
    buffer.append(bytes);
}
