#include "net/FtpListing.h"
#include "net/FtpReply.h"

#include <QTest>

// The FTP parsers on plain bytes: reply codes (whole and as they arrive) and listing lines of
// the styles servers send. PASV replies and HTTP headers are tested through the engines.
class NetParsers : public QObject {
    Q_OBJECT
private slots:
    void replyCodes_data();
    void replyCodes();
    void listings_data();
    void listings();
};

void NetParsers::replyCodes_data()
{
    QTest::addColumn<QByteArray>("buffer");
    QTest::addColumn<int>("code");

    QTest::newRow("one line") << QByteArray("220 Ready\r\n") << 220;
    QTest::newRow("no line end yet") << QByteArray("220 Ready") << 0;
    QTest::newRow("half a line end") << QByteArray("220 Ready\r") << 0;
    QTest::newRow("continuation line only") << QByteArray("220-Welcome\r\n") << 0;
    QTest::newRow("continued then final") << QByteArray("220-Welcome\r\nfree text\r\n220 Ready\r\n") << 220;
    QTest::newRow("final line not yet ended") << QByteArray("220-Welcome\r\n220 Rea") << 0;
    QTest::newRow("last of two replies") << QByteArray("150 Opening\r\n226 Done\r\n") << 226;
    QTest::newRow("code without a blank") << QByteArray("257\r\n") << 0;
    QTest::newRow("code below 100") << QByteArray("099 odd\r\n") << 0;
    QTest::newRow("digits then a letter") << QByteArray("22x ok\r\n") << 0;
    QTest::newRow("CR inside the line") << QByteArray("220\r\r\n") << 0;
    QTest::newRow("empty") << QByteArray() << 0;
}

void NetParsers::replyCodes()
{
    QFETCH(QByteArray, buffer);
    QFETCH(int, code);
    QCOMPARE(ParseReplyCode(buffer), code);
    // The same bytes arriving one at a time give the same code.
    FtpReplyReader reader;
    for (const char byte : buffer)
        reader.Append(QByteArrayView(&byte, 1));
    QCOMPARE(reader.Code(), code);
    QCOMPARE(reader.Text(), buffer);
}

void NetParsers::listings_data()
{
    QTest::addColumn<QString>("listing");
    QTest::addColumn<QStringList>("names"); // a folder without entries lists as one empty name

    QTest::newRow("unix file, time") << "-rw-r--r--   1 owner    group        1234 Mar  7 09:15 IMG_0001.JPG" << QStringList{"IMG_0001.JPG"};
    QTest::newRow("unix folder, year") << "drwxr-xr-x   2 owner    group        4096 Dec 31  2019 2019 Trip" << QStringList{"2019 Trip"};
    QTest::newRow("blanks inside and at the end") << "-rw-r--r-- 1 o g 5 Jan 1 2020 my  photo .jpg " << QStringList{"my  photo .jpg "};
    QTest::newRow("numeric owners") << "-rw-rw-r--   1 1000     1000          17 Nov 22 07:46 notes.txt" << QStringList{"notes.txt"};
    QTest::newRow("no group column") << "-rw-r--r--   1 ftp          42 Feb 29 2024 leap.txt" << QStringList{"leap.txt"};
    QTest::newRow("owner named like a month") << "-rw-r--r-- 1 jan 7 99 Apr 2 10:00 a.txt" << QStringList{"a.txt"};
    QTest::newRow("symbolic link") << "lrwxrwxrwx   1 root root 7 Jan 10 2021 latest -> 2021/a b" << QStringList{"latest"};
    QTest::newRow("device file") << "crw-rw-rw-   1 root     root       1,   3 Nov 22 07:00 null" << QStringList{"null"};
    QTest::newRow("ISO date") << "-rw-r--r-- 1 o g 10 2024-03-07 09:15 iso name.txt" << QStringList{"iso name.txt"};
    QTest::newRow("date-like text in the name") << "-rw-r--r-- 1 o g 3 Jan 1 2020 Jan 2 2021 copy" << QStringList{"Jan 2 2021 copy"};
    QTest::newRow("UTF-8 name") << QString::fromUtf8("-rw-r--r-- 1 o g 3 Jan 1 2020 \xe7\x85\xa7\xe7\x89\x87.jpg") << QStringList{QString::fromUtf8("\xe7\x85\xa7\xe7\x89\x87.jpg")};
    QTest::newRow("line end left on") << "-rw-r--r-- 1 o g 3 Jan 1 2020 a.txt\r" << QStringList{"a.txt"};
    QTest::newRow("dot folder") << "drwxr-xr-x 2 o g 4096 Jan 1 2020 ." << QStringList{""};
    QTest::newRow("total header") << "total 48" << QStringList{""};
    QTest::newRow("IIS folder") << "03-07-24  09:15AM       <DIR>          Summer 2024" << QStringList{"Summer 2024"};
    QTest::newRow("IIS file, 24 hour clock") << "12-31-2023  23:59            1,048,576 big photo.jpg" << QStringList{"big photo.jpg"};
    QTest::newRow("EPLF") << "+i8388621.29609,m824255902,r,s612,\tREADME" << QStringList{"README"};
    QTest::newRow("error text") << "ls: cannot open directory: Permission denied" << QStringList{""};
    QTest::newRow("mode without a date") << "-rw-r--r-- 1 o g 3 yesterday a.txt" << QStringList{""};
    QTest::newRow("CR LF lines with a total") << "total 8\r\n-rw-r--r-- 1 o g 1 Jan 1 2020 a\r\ndrwxr-xr-x 2 o g 1 Jan 1 2020 b c\r\n"
                                              << QStringList{"a", "b c"};
    QTest::newRow("LF and CR lines") << "-rw-r--r-- 1 o g 1 Jan 1 2020 a\n-rw-r--r-- 1 o g 1 Jan 1 2020 b\r-rw-r--r-- 1 o g 1 Jan 1 2020 c"
                                     << QStringList{"a", "b", "c"};
}

// A one-line listing names what its line names.
void NetParsers::listings()
{
    QFETCH(QString, listing);
    QFETCH(QStringList, names);
    QCOMPARE(NamesFromListing(listing), names);
    if (!listing.chopped(1).contains(u'\n') && !listing.chopped(1).contains(u'\r'))
        QCOMPARE(NameFromListingLine(listing), names.constFirst());
}

QTEST_GUILESS_MAIN(NetParsers)
#include "tst_NetParsers.moc"
