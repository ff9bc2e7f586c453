#pragma once

#include "datalist/DataList.h"

class QXmlStreamWriter;

// The XML form of values, shared by saving and by the reader when it keeps values it does not use.
namespace DataListXml {

using KeyNames = std::vector<QString>;

void WriteEntry(QXmlStreamWriter &writer, const DataList::Entry &entry, const KeyNames &keys);
void WriteItem(QXmlStreamWriter &writer, const DataList::Item &item, const KeyNames &keys);

} // namespace DataListXml
