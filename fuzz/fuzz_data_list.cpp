// Any bytes as a property list: a load never crashes, and whatever loads saves and loads again
// with the same shape.
#include "datalist/DataList.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    DataList list;
    if (!list.LoadFromBytes(xml))
        return 0;
    DataList again;
    if (!again.LoadFromBytes(list.ToBytes()))
        std::abort();
    if (again.ItemCount() != list.ItemCount() || again.DocumentKeys() != list.DocumentKeys())
        std::abort();
    return 0;
}
