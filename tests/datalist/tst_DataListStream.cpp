#include "datalist/DataList.h"
#include "datalist/DataListStream.h"
#include "TestEnvironment.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>

// Lists streamed item by item read and write exactly what DataList itself reads and writes. That
// the streamed reading agrees with DataList's on every file, odd ones included, fuzz_data_list_stream
// checks from its seeds (fuzz/seeds/trackfile) on every test run.
class DataListStreamTest : public QObject {
    Q_OBJECT
private slots:
    void writerWritesWhatSaveWrites_data();
    void writerWritesWhatSaveWrites();
    void longListsAcrossChunks();
};

namespace {

using Items = QList<QStringList>; // per item "key=value" in order

class Collector : public DataListItemVisitor {
public:
    void Item(StreamedItem entries) override
    {
        QStringList item;
        for (const StreamedEntry &entry : entries)
            item << QString::fromUtf8(entry.key) + u'=' + QString::fromUtf8(entry.value);
        items << item;
    }
    void Restart() override
    {
        items.clear();
        ++restarts;
    }
    Items items;
    int restarts = 0;
};

Items PlainItems(const DataList &list)
{
    Items items;
    for (int i = 1; i <= list.ItemCount(); ++i) {
        QStringList item;
        for (const DataList::Entry &entry : list.ItemAt(i)) {
            if (entry.kind != DataList::Kind::Nested)
                item << list.KeyName(entry.key) + u'=' + entry.value;
        }
        items << item;
    }
    return items;
}

} // namespace

void DataListStreamTest::writerWritesWhatSaveWrites_data()
{
    QTest::addColumn<Items>("items");
    QTest::addColumn<QStringList>("properties");
    QTest::newRow("points") << Items{{"TIME=2020-01-01T00:00:00Z", "LAT=46.5", "LON=-13.25", "ELE=0.0"}, {"TIME=", "LAT=1", "LON=2", "ELE=3.0"}}
                            << QStringList{"NAME=Ride", "BOUNDS=(1,2)-(46.5,-13.25)"};
    QTest::newRow("markup, line ends and control characters")
        << Items{{"A=<b>&amp;\"q\" 'x'", "B=line\r\nbreak\ttab", "C=bell\x07 gone", "D=ä€😀"}} << QStringList{"NAME=a\rb"};
    QTest::newRow("no items") << Items{} << QStringList{"NAME=empty"};
    QTest::newRow("an empty item") << Items{{}} << QStringList{};
}

void DataListStreamTest::writerWritesWhatSaveWrites()
{
    QFETCH(Items, items);
    QFETCH(QStringList, properties);
    QByteArray streamed;
    QBuffer buffer(&streamed);
    buffer.open(QIODevice::WriteOnly);
    DataListStreamWriter writer(buffer);
    writer.BeginItems("TRKPT");
    for (const QStringList &item : items) {
        std::vector<QByteArray> texts;
        for (const QString &pair : item) {
            texts.push_back(pair.section(u'=', 0, 0).toUtf8());
            texts.push_back(pair.section(u'=', 1).toUtf8());
        }
        std::vector<StreamedEntry> entries;
        for (std::size_t k = 0; k < texts.size(); k += 2)
            entries.push_back({texts[k], texts[k + 1]});
        writer.WriteItem(entries);
    }
    writer.EndItems();
    for (const QString &pair : properties)
        writer.WriteProperty(pair.section(u'=', 0, 0).toUtf8(), pair.section(u'=', 1).toUtf8());
    QVERIFY(writer.Finish());

    DataList loaded;
    QVERIFY(loaded.LoadFromBytes(streamed));
    QCOMPARE(loaded.ToBytes(), streamed);
    QCOMPARE(loaded.ItemCount(), items.size());
}

void DataListStreamTest::longListsAcrossChunks()
{
    QTemporaryDir folder;
    DataList list;
    list.SetDocumentProperty(QStringLiteral("NAME"), QStringLiteral("long"));
    for (int i = 1; i <= 60000; ++i) {
        list.AddItem(i);
        list.SetItemProperty(QStringLiteral("TIME"), QStringLiteral("2020-01-01T00:00:%1Z").arg(i % 60, 2, 10, QLatin1Char('0')), i);
        list.SetItemProperty(QStringLiteral("LAT"), QString::number(i * 0.001, 'f', 9) + (i % 1000 == 0 ? QStringLiteral(" &<>") : QString()), i);
    }
    const QString path = folder.filePath(QStringLiteral("long.plist"));
    QVERIFY(list.Save(path));
    QVERIFY(QFileInfo(path).size() > (1 << 22)); // more than one chunk of the reader
    DataList properties;
    Collector collector;
    QVERIFY(StreamDataListItems(path, properties, collector));
    QCOMPARE(collector.restarts, 0);
    QCOMPARE(collector.items, PlainItems(list));
    QCOMPARE(properties.GetDocumentProperty(QStringLiteral("NAME")), QStringLiteral("long"));
}

QTEST_GUILESS_MAIN(DataListStreamTest)
#include "tst_DataListStream.moc"
