#include "OrvHTTPEngine.h"
#include "ScriptedServers.h"
#include "ServerProcesses.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

// The HTTP engine against python's http.server and a scripted server for malformed responses.
class HttpEngine : public QObject {
    Q_OBJECT
private slots:
    void realServer();
    void responses_data();
    void responses();
    void requestAsSent();
    void textResponse();
    void refusals_data();
    void refusals();
};

namespace {

const QByteArray Ok = "HTTP/1.0 200 OK\r\nServer: scripted\r\n\r\n";

} // namespace

// Files come back byte for byte, and an error page is content like any other.
void HttpEngine::realServer()
{
    HttpServerProcess server;
    QVERIFY2(server.Started(), "python3 -m http.server did not start");
    QByteArray photo(300000, Qt::Uninitialized);
    for (qsizetype i = 0; i < photo.size(); ++i)
        photo[i] = static_cast<char>(i * 7 + i / 251);
    WriteAll(server.Root() + QStringLiteral("/photo one.jpg"), photo);
    QTemporaryDir local;
    const QString out = local.filePath(QStringLiteral("out.jpg"));

    OrvHTTPEngine engine;
    QVERIFY2(engine.HTTPGet(QStringLiteral("127.0.0.1"), server.Port(), QStringLiteral("/photo%20one.jpg"), out), qPrintable(engine.LastError()));
    QCOMPARE(ReadAll(out), photo);
    QVERIFY2(engine.LastResponse().startsWith(QLatin1String("HTTP/1.0 200 OK\r\n")), qPrintable(engine.LastResponse()));
    QVERIFY(!engine.LastResponse().endsWith(QLatin1String("\r\n")));
    QVERIFY(!QFileInfo::exists(out + QStringLiteral(".http")));

    QVERIFY(engine.HTTPGet(QStringLiteral("127.0.0.1"), server.Port(), QStringLiteral("/missing"), out));
    QVERIFY(engine.LastResponse().startsWith(QLatin1String("HTTP/1.0 404")));
    QVERIFY(ReadAll(out).contains("404"));
    QCOMPARE(engine.LastError(), QString());
}

void HttpEngine::responses_data()
{
    QTest::addColumn<Chunks>("response");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("lastResponse");

    const QString okHeader = QStringLiteral("HTTP/1.0 200 OK\r\nServer: scripted");
    const QByteArray padding(16383 - 20, 'h');  // "HTTP/1.0 200 OK\r\nX: " and these: 16,383 bytes
    const QString invalid = QStringLiteral("The HTTP response is invalid.");
    QTest::newRow("body split across reads") << Chunks{"HTTP/1.0 200 OK\r\nSer", "ver: scripted\r\n\r", "\nfirst ", "second"} << true
                                             << QByteArray("first second") << okHeader;
    QTest::newRow("empty body") << Chunks{Ok} << true << QByteArray() << okHeader;
    QTest::newRow("status never examined") << Chunks{"HTTP/1.1 500 Broken\r\n\r\noops"} << true << QByteArray("oops")
                                           << "HTTP/1.1 500 Broken";
    QTest::newRow("header end at byte 16,384") << Chunks{"HTTP/1.0 200 OK\r\nX: " + padding + "\r\n\r\nbody"} << true << QByteArray("body")
                                               << QString::fromLatin1("HTTP/1.0 200 OK\r\nX: " + padding);
    QTest::newRow("header end at byte 16,385") << Chunks{"HTTP/1.0 200 OK\r\nX: " + padding + "h\r\n\r\nbody"} << false << QByteArray()
                                               << QString();
    QTest::newRow("header bytes as characters") << Chunks{"HTTP/1.0 200 OK\r\nX: \xe9t\xe9\r\n\r\n."} << true << QByteArray(".")
                                                << QString::fromLatin1("HTTP/1.0 200 OK\r\nX: \xe9t\xe9");
    QTest::newRow("HTML instead of HTTP") << Chunks{"HTML/1.0 200 OK\r\n\r\nbody"} << false << QByteArray() << QString();
    QTest::newRow("header never ends") << Chunks{"HTTP/1.0 200 OK\r\nX: y\r\n"} << false << QByteArray() << QString();
    QTest::newRow("nothing at all") << Chunks{} << false << QByteArray() << QString();
}

void HttpEngine::responses()
{
    QFETCH(Chunks, response);
    QFETCH(bool, succeeds);
    QFETCH(QByteArray, body);
    QFETCH(QString, lastResponse);

    ScriptedHttpServer server;
    server.response = response;
    QTemporaryDir local;
    const QString out = local.filePath(QStringLiteral("page"));
    WriteAll(out, "old content");
    OrvHTTPEngine engine;
    QCOMPARE(engine.HTTPGet(QStringLiteral("127.0.0.1"), server.Port(), QStringLiteral("/"), out), succeeds);
    QCOMPARE(engine.LastError(), succeeds ? QString() : QStringLiteral("The HTTP response is invalid."));
    QCOMPARE(engine.LastResponse(), lastResponse);
    QCOMPARE(ReadAll(out), succeeds ? body : QByteArray("old content"));
    QCOMPARE(QDir(local.path()).entryList(QDir::Files), QStringList{QStringLiteral("page")});
    QCOMPARE(engine.TcpDataStatus(), 0);
}

void HttpEngine::requestAsSent()
{
    ScriptedHttpServer server;
    server.response = {Ok};
    QTemporaryDir local;
    OrvHTTPEngine engine;
    QVERIFY(engine.HTTPGet(QStringLiteral("localhost"), server.Port(), QStringLiteral("/websync/a.php?x=1%202"), local.filePath(QStringLiteral("o"))));
    QCOMPARE(server.request, QByteArray("GET /websync/a.php?x=1%202 HTTP/1.0\r\nHost: localhost\r\nUser-Agent: Orvana-Win-V2\r\n"
                                        "Connection: Close\r\n\r\n"));
}

void HttpEngine::textResponse()
{
    ScriptedHttpServer server;
    server.response = {"HTTP/1.0 200 OK\r\n\r\n<?xml version=\"1.0\"?>", "<plist/>"};
    OrvHTTPEngine engine;
    QString text;
    QVERIFY(engine.HTTPGetText(QStringLiteral("127.0.0.1"), server.Port(), QStringLiteral("/"), text));
    QCOMPARE(text, QStringLiteral("HTTP/1.0 200 OK\r\n\r\n<?xml version=\"1.0\"?><plist/>"));
    QCOMPARE(engine.LastResponse(), QString());
}

// Failures, and a cancel that still keeps what arrived.
void HttpEngine::refusals_data()
{
    QTest::addColumn<Chunks>("response");
    QTest::addColumn<bool>("holdOpen");
    QTest::addColumn<bool>("listening");
    QTest::addColumn<QString>("target");  // inside the test's folder
    QTest::addColumn<int>("cancelAfterMs");  // -1: never
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<QString>("lastError");
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("nothing listening") << Chunks{} << false << false << "out" << -1 << false
                                       << "Could't connect to the specified HTTP server." << QByteArray();
    QTest::newRow("silent after the header") << Chunks{Ok + "part"} << true << true << "out" << -1 << false
                                             << "Time out when getting remote file." << QByteArray();
    QTest::newRow("cancelled after the header") << Chunks{Ok + "part"} << true << true << "out" << 150 << true << QString()
                                                << QByteArray("part");
    QTest::newRow("cancelled before the header ends") << Chunks{"HTTP/1.0 200 OK\r\n"} << true << true << "out" << 150 << false
                                                      << "The HTTP response is invalid." << QByteArray();
    QTest::newRow("folder of the target missing") << Chunks{Ok} << false << true << "no/such/out" << -1 << false
                                                  << "Could't save file to the specified location." << QByteArray();
    QTest::newRow("target is a folder with files") << Chunks{Ok + "x"} << false << true << "folder" << -1 << false
                                                   << "The HTTP response is invalid." << QByteArray();
}

void HttpEngine::refusals()
{
    QFETCH(Chunks, response);
    QFETCH(bool, holdOpen);
    QFETCH(bool, listening);
    QFETCH(QString, target);
    QFETCH(int, cancelAfterMs);
    QFETCH(bool, succeeds);
    QFETCH(QString, lastError);
    QFETCH(QByteArray, body);

    ScriptedHttpServer server;
    server.response = response;
    server.holdOpen = holdOpen;
    QTemporaryDir local;
    QDir(local.path()).mkdir(QStringLiteral("folder"));
    WriteAll(local.filePath(QStringLiteral("folder/inside")), "x");
    OrvHTTPEngine engine;
    engine.SetTimeouts({2000, 400});
    if (cancelAfterMs >= 0)
        QTimer::singleShot(cancelAfterMs, [&engine] { engine.SetCancel(true); });
    const quint16 port = listening ? server.Port() : ClosedPort();
    QCOMPARE(engine.HTTPGet(QStringLiteral("127.0.0.1"), port, QStringLiteral("/"), local.filePath(target)), succeeds);
    QCOMPARE(engine.LastError(), lastError);
    if (succeeds)
        QCOMPARE(ReadAll(local.filePath(target)), body);
    QVERIFY(!QFileInfo::exists(local.filePath(target) + QStringLiteral(".http")));
}

QTEST_GUILESS_MAIN(HttpEngine)
#include "tst_HttpEngine.moc"
