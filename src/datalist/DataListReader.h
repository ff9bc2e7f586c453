#pragma once

#include "datalist/DataList.h"

#include <QXmlStreamReader>
#include <array>

// Streams an XML property list into a DataList. A big album repeats a few dozen keys and many
// values (camera, sizes, flags, the import moment) in every item: keys become numbers, and a
// value equal to one of its key's recent values shares that value's text instead of a copy.
class DataListReader {
public:
    DataListReader(const QByteArray &xml, DataList &target);
    DataListReader(QIODevice *device, DataList &target);
    DataList::LoadResult Read();

private:
    static constexpr int RecentValues = 4;
    struct RecentTexts {
        std::array<QString, RecentValues> texts;
        int next = 0;
    };

    bool ReadTopLevel();
    bool ReadTopLevelArray(DataList::KeyId keyId);
    bool ReadItem(DataList::Item &item);
    bool ReadKey(DataList::KeyId &key);
    bool ReadValue(DataList::Entry &entry);
    bool ReadText(DataList::Entry &entry);
    QString Shared(DataList::KeyId key, QStringView text);
    QString CaptureElement();
    QString CaptureUntilParentEnd(QString xml);
    bool Fail(DataList::LoadStatus status, const QString &why);

    QXmlStreamReader reader;
    DataList &list;
    DataList::LoadResult result;
    int expectedKey = 0;
    std::vector<RecentTexts> recent; // by key
};
