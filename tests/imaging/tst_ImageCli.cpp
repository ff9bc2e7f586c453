#include "CliRunner.h"
#include "ImagingTestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

// The 'image' group of orvana-cli, run as its own process on plain files.
class ImageCli : public QObject {
    Q_OBJECT
private slots:
    void commands_data();
    void commands();
    void tagsAsJson();
};

void ImageCli::commands_data()
{
    QTest::addColumn<QStringList>("arguments");  // "@" stands for a fresh copy of exiftool-GPS.jpg
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("part");  // of what it printed, on either stream
    QTest::newRow("no verb") << QStringList{} << 2 << "image needs a verb";
    QTest::newRow("crop without enough edges") << QStringList{"crop", "1", "2", "3", "@"} << 2 << "LEFT TOP RIGHT BOTTOM";
    QTest::newRow("adjust with a word") << QStringList{"adjust", "100", "x", "150", "150", "@"} << 2 << "slider positions";
    QTest::newRow("nothing to write") << QStringList{"write-metadata", "@"} << 1 << "nothing to write";
    QTest::newRow("missing photo") << QStringList{"thumbnail", "/no/such.jpg", "/tmp/t.jpg"} << 1 << "/no/such.jpg";
    QTest::newRow("rotate") << QStringList{"rotate", "right", "@"} << 0 << "80x120";
}

void ImageCli::commands()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, part);
    QTemporaryDir folder;
    arguments.replaceInStrings(QStringLiteral("@"), CopyOfCorpusPhoto(QStringLiteral("exiftool-GPS.jpg"), folder.path()));
    const CliRun run = RunCli(folder.path(), QStringList{QStringLiteral("image")} << arguments);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2((run.out + run.err).contains(part), qPrintable(run.out + run.err));
}

void ImageCli::tagsAsJson()
{
    const QTemporaryDir home;
    const CliRun run = RunCli(home.path(), {QStringLiteral("image"), QStringLiteral("tags"), QStringLiteral("--json"), CorpusPath(QStringLiteral("photos/exif-samples-Kodak_CX7530.jpg"))});
    QCOMPARE(run.exitCode, 0);
    const QJsonObject photo = QJsonDocument::fromJson(run.out.toUtf8()).array().at(0).toObject();
    QCOMPARE(photo.value(QStringLiteral("CameraMaker")).toString(), QStringLiteral("EASTMAN KODAK COMPANY"));
    QCOMPARE(photo.value(QStringLiteral("CaptureDate")).toString(), QStringLiteral("2005-08-13 09:47:23"));
    QCOMPARE(photo.value(QStringLiteral("Latitude")).toString(), QStringLiteral("-0.371300"));
    QCOMPARE(photo.value(QStringLiteral("Longitude")).toString(), QStringLiteral("36.056417"));
    QCOMPARE(photo.value(QStringLiteral("Flash")).toString(), QStringLiteral("OFF"));
}

QTEST_GUILESS_MAIN(ImageCli)
#include "tst_ImageCli.moc"
