#include "OrvFTPEngine.h"
#include "ServerProcess.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTest>

// The FTP engine against a real server (pyftpdlib) on loopback: files round-trip byte for byte,
// folder and file commands change the server's disk, refusals give the engine's texts.

// Runs against a logged-in engine; `root` is the server's folder on disk, `local` a folder of the
// test's own.
using Steps = std::function<bool(OrvFTPEngine &, const QString &root, const QString &local)>;
Q_DECLARE_METATYPE(Steps)

namespace {

QByteArray RandomBytes(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(QRandomGenerator::global()->bounded(256));
    return bytes;
}

bool HasMode755(const QString &path)
{
    const QFileDevice::Permissions wanted = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                            QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                            QFileDevice::ExeOther;
    const QFileDevice::Permissions all = wanted | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    return (QFileInfo(path).permissions() & all) == wanted;
}

} // namespace

class FtpServer : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void roundTrips_data();
    void roundTrips();
    void operations_data();
    void operations();
    void progressOfAnUpload();

private:
    std::unique_ptr<ServerProcess> server;
    std::unique_ptr<OrvFTPEngine> engine;
    std::unique_ptr<QTemporaryDir> local;
};

void FtpServer::initTestCase()
{
    server = std::make_unique<ServerProcess>(ServerProcess::Ftp);
    QVERIFY2(server->Started(), "pyftpdlib did not start (scripts/install-deps installs python3-pyftpdlib)");
}

void FtpServer::init()
{
    QDir root(server->Root());
    for (const QFileInfo &entry : root.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
        entry.isDir() ? QDir(entry.filePath()).removeRecursively() : QFile::remove(entry.filePath());
    local = std::make_unique<QTemporaryDir>();
    engine = std::make_unique<OrvFTPEngine>();
    QVERIFY(engine->ConnectToServer(QStringLiteral("127.0.0.1"), server->Port(), QString::fromLatin1(ServerProcess::User),
                                    QString::fromLatin1(ServerProcess::Password)));
    QCOMPARE(engine->TcpCommandStatus(), 1);
}

void FtpServer::cleanup()
{
    engine->Disconnect();
    QCOMPARE(engine->TcpCommandStatus(), 0);
}

void FtpServer::roundTrips_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qsizetype>("size");

    QTest::newRow("empty") << "empty.jpg" << qsizetype(0);
    QTest::newRow("a block less one") << "2047.jpg" << qsizetype(2047);
    QTest::newRow("one block") << "2048.jpg" << qsizetype(2048);
    QTest::newRow("a block and one") << "2049.jpg" << qsizetype(2049);
    QTest::newRow("blanks in the name") << "My Trip 01.jpg" << qsizetype(70001);
    QTest::newRow("UTF-8 name") << QString::fromUtf8("\xe7\x85\xa7\xe7\x89\x87 1.jpg") << qsizetype(5000);
    QTest::newRow("several megabytes") << "big.tif" << qsizetype(6 * 1024 * 1024 + 3);
}

void FtpServer::roundTrips()
{
    QFETCH(QString, name);
    QFETCH(qsizetype, size);
    const QByteArray content = RandomBytes(size);
    const QString sent = local->filePath(QStringLiteral("sent"));
    const QString back = local->filePath(QStringLiteral("back"));
    WriteAll(sent, content);

    QVERIFY(engine->MakeDirectory(QStringLiteral("/album")));
    QVERIFY2(engine->PutFile(sent, QStringLiteral("/album/") + name), qPrintable(engine->LastError()));
    QCOMPARE(ReadAll(server->Root() + QStringLiteral("/album/") + name), content);
    QVERIFY(HasMode755(server->Root() + QStringLiteral("/album/") + name));
    QCOMPARE(engine->ListFiles(QStringLiteral("/album")), QStringList{name});
    QVERIFY(engine->FileExists(QStringLiteral("/album/") + name));

    QVERIFY2(engine->GetFile(QStringLiteral("/album/") + name, back), qPrintable(engine->LastError()));
    QCOMPARE(ReadAll(back), content);
    QCOMPARE(engine->TcpDataStatus(), 0);
    QCOMPARE(engine->LastError(), QString());
}

void FtpServer::operations_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QString>("lastError");

    QTest::newRow("folder made with mode 755") << Steps([](auto &e, auto &root, auto &) {
        return e.MakeDirectory(QStringLiteral("New Folder")) && HasMode755(root + QStringLiteral("/New Folder"));
    }) << "";
    QTest::newRow("into a folder and back") << Steps([](auto &e, auto &root, auto &) {
        QDir(root).mkpath(QStringLiteral("a/b"));
        return e.ChangeDirectory(QStringLiteral("/a/b")) && e.ChangeDirectory(QStringLiteral("..")) && e.ListFiles(QString()) == QStringList{"b"};
    }) << "";
    QTest::newRow("empty folder: no names, not there") << Steps([](auto &e, auto &root, auto &) {
        QDir(root).mkdir(QStringLiteral("empty"));
        return e.ListFiles(QStringLiteral("/empty")) == QStringList{QString()} && !e.FileExists(QStringLiteral("/empty"));
    }) << "";
    QTest::newRow("missing folder") << Steps([](auto &e, auto &, auto &) { return !e.ChangeDirectory(QStringLiteral("/none")); })
                                    << "Can't change directory. Path does not exist.";
    QTest::newRow("folder that holds a file") << Steps([](auto &e, auto &root, auto &) {
        QDir(root).mkdir(QStringLiteral("full"));
        WriteAll(root + QStringLiteral("/full/f"), "x");
        return !e.RemoveDirectory(QStringLiteral("full"));
    }) << "Couldn't remove the directory. Make sure you have the right access.";
    QTest::newRow("missing file renamed") << Steps([](auto &e, auto &, auto &) { return !e.ChangeFileName("none", "other"); })
                                          << "Couldn't change file name. (RNFR)";
    QTest::newRow("missing path listed") << Steps([](auto &e, auto &, auto &) { return e.List("/none").isEmpty() && !e.FileExists("/none"); })
                                         << "Could't list remote directory.";
    QTest::newRow("local folder missing") << Steps([](auto &e, auto &root, auto &local) {
        WriteAll(root + QStringLiteral("/a.jpg"), "x");
        return !e.GetFile(QStringLiteral("a.jpg"), local + QStringLiteral("/no/such/a.jpg")) && e.TcpDataStatus() == 0;
    }) << "Could't save file to the specified location.";
    QTest::newRow("missing local file") << Steps([](auto &e, auto &, auto &local) { return !e.PutFile(local + "/none", "none"); })
                                        << "Could't open the specified local file.";
    QTest::newRow("second data connection") << Steps([](auto &e, auto &, auto &) {
        return e.CreateDataConnection() && e.TcpDataStatus() == 1 && !e.CreateDataConnection();
    }) << "Data connection already exists.";
}

void FtpServer::operations()
{
    QFETCH(Steps, steps);
    QFETCH(QString, lastError);
    QVERIFY(steps(*engine, server->Root(), local->path()));
    QCOMPARE(engine->LastError(), lastError);
}

// Uploads report each block; a Cancel stops at the next block and leaves a partial file.
void FtpServer::progressOfAnUpload()
{
    WriteAll(local->filePath(QStringLiteral("f")), RandomBytes(5 * 2048 + 100));
    QList<qint64> reported;
    engine->SetProgressHandler([&](qint64 done, qint64 total) {
        reported.append(done);
        QCOMPARE(total, 5 * 2048 + 100);
    });
    QVERIFY(engine->PutFile(local->filePath(QStringLiteral("f")), QStringLiteral("f")));
    QCOMPARE(reported, (QList<qint64>{2048, 4096, 6144, 8192, 10240, 10340}));

    engine->SetProgressHandler([this](qint64 done, qint64) { engine->SetCancel(done >= 4096); });
    engine->SetNeedChangeModeTo755(false);
    QVERIFY(engine->PutFile(local->filePath(QStringLiteral("f")), QStringLiteral("g")));
    QTRY_COMPARE(QFileInfo(server->Root() + QStringLiteral("/g")).size(), qint64(4096));
    engine->SetCancel(false);
}

QTEST_GUILESS_MAIN(FtpServer)
#include "tst_FtpServer.moc"
