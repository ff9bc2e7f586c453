#include "CliRunner.h"
#include "net/OrvFTPEngine.h"
#include "ScriptedServers.h"
#include "ServerProcess.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <csignal>
#include <sys/stat.h>

// FTP and HTTP against real servers on loopback (pyftpdlib, python's http.server): orvana-cli's
// ftp and http groups as a user runs them, and the engine calls that only the publishing uses.

// Runs against a logged-in engine; `root` is the server's folder on disk.
using Steps = std::function<bool(OrvFTPEngine &, const QString &root)>;
Q_DECLARE_METATYPE(Steps)

namespace {

bool HasMode755(const QString &path)
{
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 && (status.st_mode & 0777) == 0755;
}

QByteArray Bytes(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = static_cast<char>((i * 131) ^ (i >> 9));
    return bytes;
}

} // namespace

class CliNet : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void roundTrips_data();
    void roundTrips();
    void everyVerb();
    void refusals_data();
    void refusals();
    void engineCalls_data();
    void engineCalls();
    void uploadProgress();
    void httpGet();
    void interruptCancelsATransfer();

private:
    CliRun Cli(const QStringList &arguments, const QString &password = QString::fromLatin1(ServerProcess::Password));
    QString Address(const QString &path) const;
    QString Root() const { return ftp->Root(); }
    bool LogIn(OrvFTPEngine &engine) const;

    std::unique_ptr<ServerProcess> ftp;
    std::unique_ptr<QTemporaryDir> work;
};

void CliNet::initTestCase()
{
    ftp = std::make_unique<ServerProcess>(ServerProcess::Ftp);
    QVERIFY2(ftp->Started(), "pyftpdlib did not start (scripts/install-deps installs python3-pyftpdlib)");
}

void CliNet::init()
{
    for (const QFileInfo &entry : QDir(Root()).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
        entry.isDir() ? QDir(entry.filePath()).removeRecursively() : QFile::remove(entry.filePath());
    work = std::make_unique<QTemporaryDir>();
}

CliRun CliNet::Cli(const QStringList &arguments, const QString &password)
{
    return RunCli(work->path(), arguments, {{QStringLiteral("ORVANA_FTP_PASSWORD"), password}});
}

QString CliNet::Address(const QString &path) const
{
    return QStringLiteral("ftp://%1@127.0.0.1:%2%3").arg(QLatin1String(ServerProcess::User)).arg(ftp->Port()).arg(path);
}

bool CliNet::LogIn(OrvFTPEngine &engine) const
{
    return engine.ConnectToServer(QStringLiteral("127.0.0.1"), ftp->Port(), QString::fromLatin1(ServerProcess::User), QString::fromLatin1(ServerProcess::Password));
}

// Files go up and come back byte for byte, around the engine's 2048-byte blocks too, and are
// left with mode 755 on the server.
void CliNet::roundTrips_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qsizetype>("size");
    QTest::newRow("empty") << "empty.jpg" << qsizetype(0);
    QTest::newRow("a block less one") << "2047.jpg" << qsizetype(2047);
    QTest::newRow("one block") << "2048.jpg" << qsizetype(2048);
    QTest::newRow("a block and one") << "2049.jpg" << qsizetype(2049);
    QTest::newRow("UTF-8 name") << QString::fromUtf8("\xe7\x85\xa7\xe7\x89\x87 1.jpg") << qsizetype(5000);
    QTest::newRow("several megabytes") << "big.tif" << qsizetype(6 * 1024 * 1024 + 3);
}

void CliNet::roundTrips()
{
    QFETCH(QString, name);
    QFETCH(qsizetype, size);
    const QByteArray content = Bytes(size);
    WriteAll(work->filePath(name), content);
    QCOMPARE(Cli({"ftp", "put", Address(u'/' + name), name}).err, QString());
    QCOMPARE(ReadAll(Root() + u'/' + name), content);
    QVERIFY(HasMode755(Root() + u'/' + name));
    QCOMPARE(Cli({"ftp", "ls", Address("/")}).out, name + u'\n');
    QCOMPARE(Cli({"ftp", "get", Address(u'/' + name), "back"}).exitCode, 0);
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("back"))), content);
}

// Every verb once, in the order a user publishing an album would use them.
void CliNet::everyVerb()
{
    const QByteArray photo = Bytes(70001);
    WriteAll(work->filePath(QStringLiteral("Beach 01.jpg")), photo);
    const auto succeeds = [this](const QStringList &arguments) {
        const CliRun run = Cli(arguments);
        return run.exitCode == 0 ? run.out : QStringLiteral("failed: ") + run.err;
    };
    QCOMPARE(succeeds({"ftp", "mkdir", Address("/Summer 2024")}), QString());
    QVERIFY(HasMode755(Root() + QStringLiteral("/Summer 2024")));
    QCOMPARE(succeeds({"ftp", "put", Address("/Summer 2024/"), "Beach 01.jpg"}), QString());
    QCOMPARE(succeeds({"ftp", "rename", Address("/Summer 2024/Beach 01.jpg"), "Beach.jpg"}), QString());
    QCOMPARE(succeeds({"ftp", "ls", Address("/Summer%202024")}), QStringLiteral("Beach.jpg\n"));
    QVERIFY(succeeds({"ftp", "ls", Address("/Summer 2024"), "--long"}).contains(QLatin1String(" Beach.jpg\r\n")));
    QCOMPARE(succeeds({"ftp", "get", Address("/Summer 2024/Beach.jpg")}), QString());
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("Beach.jpg"))), photo);
    QCOMPARE(succeeds({"ftp", "rm", Address("/Summer 2024/Beach.jpg")}), QString());
    QCOMPARE(succeeds({"ftp", "rmdir", Address("/Summer 2024")}), QString());
    QCOMPARE(succeeds({"ftp", "ls", Address("/")}), QString());
}

void CliNet::refusals_data()
{
    QTest::addColumn<QStringList>("arguments"); // the server holds a.jpg and full/f, the local folder a.jpg
    QTest::addColumn<QString>("password");      // null: none in the environment
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("err");

    const QString password = QString::fromLatin1(ServerProcess::Password);
    const QString user = QString::fromLatin1(ServerProcess::User);
    QTest::newRow("no password and no terminal") << QStringList{"ftp", "ls", "ADDRESS/"} << QString() << 1 << "ORVANA_FTP_PASSWORD";
    QTest::newRow("password in the address") << QStringList{"ftp", "ls", "ftp://" + user + ":pw@127.0.0.1/"} << password << 2 << "ORVANA_FTP_PASSWORD";
    QTest::newRow("wrong password") << QStringList{"ftp", "ls", "ADDRESS/"} << "wrong" << 1 << "Invalid user or password. (server: 530";
    QTest::newRow("nothing listening") << QStringList{"ftp", "ls", "ftp://u@127.0.0.1:CLOSED/"} << password << 1
                                       << "Unable to connect to specified server via TCP/IP.";
    QTest::newRow("missing remote file") << QStringList{"ftp", "get", "ADDRESS/none.jpg"} << password << 1 << "Could't get data of remote file. (server: 550";
    QTest::newRow("missing path listed") << QStringList{"ftp", "ls", "ADDRESS/none"} << password << 1 << "Could't list remote directory.";
    QTest::newRow("folder that holds a file") << QStringList{"ftp", "rmdir", "ADDRESS/full"} << password << 1
                                              << "Couldn't remove the directory. Make sure you have the right access.";
    QTest::newRow("missing file renamed") << QStringList{"ftp", "rename", "ADDRESS/none", "other"} << password << 1 << "Couldn't change file name. (RNFR)";
    QTest::newRow("renamed into a missing folder") << QStringList{"ftp", "rename", "ADDRESS/a.jpg", "no/b.jpg"} << password << 1
                                                   << "Couldn't change file name. (RNTO) (server: 550";
    QTest::newRow("stored into a missing folder") << QStringList{"ftp", "put", "ADDRESS/no/a.jpg", "a.jpg"} << password << 1
                                                  << "Could't put data of local file. (server: 550";
    QTest::newRow("local folder missing") << QStringList{"ftp", "get", "ADDRESS/a.jpg", "no/such/a.jpg"} << password << 1
                                          << "Could't save file to the specified location.";
    QTest::newRow("missing local file") << QStringList{"ftp", "put", "ADDRESS/none", "none"} << password << 1 << "Could't open the specified local file.";
    QTest::newRow("not an ftp address") << QStringList{"ftp", "ls", "http://127.0.0.1/"} << password << 2 << "not an ftp://";
    QTest::newRow("get without a path") << QStringList{"ftp", "get", "ADDRESS/"} << password << 2 << "needs a PATH";
    QTest::newRow("http nothing listening") << QStringList{"http", "get", "http://127.0.0.1:CLOSED/", "out"} << password << 1
                                            << "Could't connect to the specified HTTP server.";
}

void CliNet::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, password);
    QFETCH(int, exitCode);
    QFETCH(QString, err);
    WriteAll(Root() + QStringLiteral("/a.jpg"), "x");
    QDir(Root()).mkdir(QStringLiteral("full"));
    WriteAll(Root() + QStringLiteral("/full/f"), "x");
    WriteAll(work->filePath(QStringLiteral("a.jpg")), "x");
    arguments.replaceInStrings(QStringLiteral("ADDRESS"), Address(QString()));
    arguments.replaceInStrings(QStringLiteral("CLOSED"), QString::number(ClosedPort()));
    const CliRun run = Cli(arguments, password);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.err.contains(err), qPrintable(run.err));
}

void CliNet::engineCalls_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QString>("lastError");
    QTest::newRow("into a folder and back") << Steps([](auto &e, auto &root) {
        QDir(root).mkpath(QStringLiteral("a/b"));
        return e.ChangeDirectory(QStringLiteral("/a/b")) && e.ChangeDirectory(QStringLiteral("..")) && e.ListFiles(QString()) == QStringList{"b"};
    }) << "";
    QTest::newRow("file exists") << Steps([](auto &e, auto &root) {
        WriteAll(root + QStringLiteral("/My Trip.jpg"), "x");
        return e.FileExists(QStringLiteral("/My Trip.jpg"));
    }) << "";
    QTest::newRow("empty folder: no names, not there") << Steps([](auto &e, auto &root) {
        QDir(root).mkdir(QStringLiteral("empty"));
        return e.ListFiles(QStringLiteral("/empty")) == QStringList{QString()} && !e.FileExists(QStringLiteral("/empty"));
    }) << "";
    // While connected, a second connect is refused and leaves the last error as it was.
    QTest::newRow("missing folder") << Steps([](auto &e, auto &) {
        return !e.ChangeDirectory(QStringLiteral("/none")) && !e.ConnectToServer(QStringLiteral("127.0.0.1"), 21, {}, {});
    }) << "Can't change directory. Path does not exist.";
    QTest::newRow("second data connection") << Steps([](auto &e, auto &) {
        return e.CreateDataConnection() && e.TcpDataStatus() == 1 && !e.CreateDataConnection();
    }) << "Data connection already exists.";
}

void CliNet::engineCalls()
{
    QFETCH(Steps, steps);
    QFETCH(QString, lastError);
    OrvFTPEngine engine;
    QVERIFY(LogIn(engine));
    QVERIFY(steps(engine, Root()));
    QCOMPARE(engine.LastError(), lastError);
    engine.Disconnect();
    QCOMPARE(engine.TcpCommandStatus(), 0);
}

// Uploads report each block; a cancel stops at the next block and leaves a partial file.
void CliNet::uploadProgress()
{
    OrvFTPEngine engine;
    QVERIFY(LogIn(engine));
    WriteAll(work->filePath(QStringLiteral("f")), Bytes(5 * 2048 + 100));
    QList<qint64> reported;
    engine.SetProgressHandler([&](qint64 done, qint64 total) { reported.append(total == 5 * 2048 + 100 ? done : -1); });
    QVERIFY(engine.PutFile(work->filePath(QStringLiteral("f")), QStringLiteral("f")));
    QCOMPARE(reported, (QList<qint64>{2048, 4096, 6144, 8192, 10240, 10340}));

    engine.SetProgressHandler([&engine](qint64 done, qint64) { engine.SetCancel(done >= 4096); });
    engine.SetNeedChangeModeTo755(false);
    QVERIFY(engine.PutFile(work->filePath(QStringLiteral("f")), QStringLiteral("g")));
    QTRY_COMPARE(QFileInfo(Root() + QStringLiteral("/g")).size(), qint64(4096));
}

// A page comes back whole, with the headers when asked; an error page is content like any other.
void CliNet::httpGet()
{
    ServerProcess http(ServerProcess::Http);
    QVERIFY(http.Started());
    const QByteArray page = Bytes(300000);
    WriteAll(http.Root() + QStringLiteral("/photo one.jpg"), page);
    const QString address = QStringLiteral("http://127.0.0.1:%1/").arg(http.Port());
    const CliRun run = Cli({"http", "get", address + "photo%20one.jpg", "page", "--headers"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.out.startsWith(QLatin1String("HTTP/1.0 200 OK\r\n")) && !run.out.endsWith(QLatin1String("\r\n\n")), qPrintable(run.out));
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("page"))), page);
    QCOMPARE(Cli({"http", "get", address + "missing", "page"}).exitCode, 0);
    QVERIFY(ReadAll(work->filePath(QStringLiteral("page"))).contains("404"));
}

// Ctrl-C during a stalled download stops it at once: the part that arrived stays, and the
// command says it was cancelled.
void CliNet::interruptCancelsATransfer()
{
    ScriptedFtpServer server;
    server.download = "part";
    server.holdDataOpen = true;
    QProcess process;
    StartCli(process, work->path(), {"ftp", "get", QStringLiteral("ftp://u@127.0.0.1:%1/a.jpg").arg(server.Port())},
             {{QStringLiteral("ORVANA_FTP_PASSWORD"), QStringLiteral("p")}});
    // The scripted server answers only while this thread serves events.
    QTRY_VERIFY_WITH_TIMEOUT(server.commands.contains("RETR /a.jpg"), 10000);
    QTRY_COMPARE(ReadAll(work->filePath(QStringLiteral("a.jpg"))), QByteArray("part"));
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    QTRY_COMPARE_WITH_TIMEOUT(process.state(), QProcess::NotRunning, 10000);
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("cancelled"));
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("a.jpg"))), QByteArray("part"));
}

QTEST_GUILESS_MAIN(CliNet)
#include "tst_CliNet.moc"
