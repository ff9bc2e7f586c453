#include "CliRunner.h"
#include "ScriptedServers.h"
#include "ServerProcess.h"
#include "TestEnvironment.h"

#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <csignal>

// orvana-cli's ftp and http groups as a user runs them: a real process against real servers.
class CliNet : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void filesRoundTrip();
    void refusals_data();
    void refusals();
    void httpGet();
    void interruptCancelsATransfer();

private:
    CliRun Cli(const QStringList &arguments, const QString &password = QString::fromLatin1(ServerProcess::Password));
    QString Address(const QString &path) const;

    std::unique_ptr<ServerProcess> ftp;
    std::unique_ptr<QTemporaryDir> work;
};

void CliNet::initTestCase()
{
    ftp = std::make_unique<ServerProcess>(ServerProcess::Ftp);
    QVERIFY2(ftp->Started(), "pyftpdlib did not start");
}

void CliNet::init()
{
    work = std::make_unique<QTemporaryDir>();
}

CliRun CliNet::Cli(const QStringList &arguments, const QString &password)
{
    // The child takes this process's environment.
    if (password.isNull())
        qunsetenv("ORVANA_FTP_PASSWORD");
    else
        qputenv("ORVANA_FTP_PASSWORD", password.toUtf8());
    return RunCli(work->path(), arguments);
}

QString CliNet::Address(const QString &path) const
{
    return QStringLiteral("ftp://%1@127.0.0.1:%2%3").arg(QLatin1String(ServerProcess::User)).arg(ftp->Port()).arg(path);
}

// Every verb once, in the order a user publishing an album would use them; files come back byte
// for byte.
void CliNet::filesRoundTrip()
{
    QByteArray photo(1024 * 1024 + 17, Qt::Uninitialized);
    for (qsizetype i = 0; i < photo.size(); ++i)
        photo[i] = static_cast<char>((i * 131) ^ (i >> 9));
    WriteAll(work->filePath(QStringLiteral("Beach 01.jpg")), photo);

    const auto succeeds = [this](const QStringList &arguments) {
        const CliRun run = Cli(arguments);
        if (run.exitCode != 0)
            qWarning() << arguments << run.err;
        return run.exitCode == 0 ? run.out : QStringLiteral("failed");
    };
    QCOMPARE(succeeds({"ftp", "mkdir", Address("/Summer 2024")}), QString());
    QCOMPARE(succeeds({"ftp", "put", Address("/Summer 2024/"), "Beach 01.jpg"}), QString());
    QCOMPARE(ReadAll(ftp->Root() + QStringLiteral("/Summer 2024/Beach 01.jpg")), photo);
    QCOMPARE(succeeds({"ftp", "ls", Address("/")}), QStringLiteral("Summer 2024\n"));
    QCOMPARE(succeeds({"ftp", "rename", Address("/Summer 2024/Beach 01.jpg"), "Beach.jpg"}), QString());
    QCOMPARE(succeeds({"ftp", "ls", Address("/Summer%202024")}), QStringLiteral("Beach.jpg\n"));
    QVERIFY(succeeds({"ftp", "ls", Address("/Summer 2024"), "--long"}).contains(QLatin1String(" Beach.jpg\r\n")));
    QCOMPARE(succeeds({"ftp", "get", Address("/Summer 2024/Beach.jpg")}), QString());
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("Beach.jpg"))), photo);
    QCOMPARE(succeeds({"ftp", "get", Address("/Summer 2024/Beach.jpg"), "copy.jpg"}), QString());
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("copy.jpg"))), photo);
    QCOMPARE(succeeds({"ftp", "rm", Address("/Summer 2024/Beach.jpg")}), QString());
    QCOMPARE(succeeds({"ftp", "rmdir", Address("/Summer 2024")}), QString());
    QCOMPARE(succeeds({"ftp", "ls", Address("/")}), QString());
}

void CliNet::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("password");  // null: none in the environment
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("err");

    const QString password = QString::fromLatin1(ServerProcess::Password);
    const QString user = QString::fromLatin1(ServerProcess::User);
    QTest::newRow("no password and no terminal") << QStringList{"ftp", "ls", "ADDRESS/"} << QString() << 1 << "ORVANA_FTP_PASSWORD";
    QTest::newRow("password in the address") << QStringList{"ftp", "ls", "ftp://" + user + ":pw@127.0.0.1/"} << password << 2
                                             << "ORVANA_FTP_PASSWORD";
    QTest::newRow("wrong password") << QStringList{"ftp", "ls", "ADDRESS/"} << "wrong" << 1 << "Invalid user or password. (server: 530";
    QTest::newRow("missing remote file") << QStringList{"ftp", "get", "ADDRESS/none.jpg"} << password << 1
                                         << "Could't get data of remote file. (server: 550";
    QTest::newRow("unknown verb") << QStringList{"ftp", "list", "ADDRESS/"} << password << 2 << "unknown verb";
    QTest::newRow("not an ftp address") << QStringList{"ftp", "ls", "http://127.0.0.1/"} << password << 2 << "not an ftp://";
    QTest::newRow("get without a path") << QStringList{"ftp", "get", "ADDRESS/"} << password << 2 << "needs a PATH";
    QTest::newRow("ftp help") << QStringList{"ftp", "--help"} << password << 0 << "";
    QTest::newRow("http without OUT") << QStringList{"http", "get", "http://127.0.0.1/"} << password << 2 << "usage:";
    QTest::newRow("http nothing listening") << QStringList{"http", "get", "http://127.0.0.1:CLOSED/", "out"} << password << 1
                                            << "Could't connect to the specified HTTP server.";
}

void CliNet::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, password);
    QFETCH(int, exitCode);
    QFETCH(QString, err);
    arguments.replaceInStrings(QStringLiteral("ADDRESS"), Address(QString()));
    arguments.replaceInStrings(QStringLiteral("CLOSED"), QString::number(ClosedPort()));
    const CliRun run = Cli(arguments, password);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.err.contains(err), qPrintable(run.err));
}

void CliNet::httpGet()
{
    ServerProcess http(ServerProcess::Http);
    QVERIFY(http.Started());
    const QByteArray page = "<html>Album</html>\n";
    WriteAll(http.Root() + QStringLiteral("/index.html"), page);
    const QString address = QStringLiteral("http://127.0.0.1:%1/index.html").arg(http.Port());
    const CliRun run = Cli({"http", "get", address, "page.html", "--headers"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.out.startsWith(QLatin1String("HTTP/1.0 200 OK\r\n")), qPrintable(run.out));
    QCOMPARE(ReadAll(work->filePath(QStringLiteral("page.html"))), page);
}

// Ctrl-C during a stalled download stops it at once: the part that arrived stays, and the
// command says it was cancelled.
void CliNet::interruptCancelsATransfer()
{
    ScriptedFtpServer server;
    server.download = "part";
    server.holdDataOpen = true;
    QProcess process;
    process.setWorkingDirectory(work->path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ORVANA_FTP_PASSWORD"), QStringLiteral("p"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ORVANA_BIN_DIR "/orvana-cli"),
                  {"ftp", "get", QStringLiteral("ftp://u@127.0.0.1:%1/a.jpg").arg(server.Port())});
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
