#include "net/OrvHTTPEngine.h"
#include "ScriptedServers.h"
#include "ServerThread.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

// The HTTP engine against a scripted server for malformed responses, silence and cancels; a real
// server is fetched from through orvana-cli (tst_CliNet).

namespace {

const QByteArray Ok = "HTTP/1.0 200 OK\r\nServer: scripted\r\n\r\n";
const QString OkHeader = QStringLiteral("HTTP/1.0 200 OK\r\nServer: scripted");
const QString Invalid = QStringLiteral("The HTTP response is invalid.");
// With "HTTP/1.0 200 OK\r\nX: " before it, the header's end starts right after byte 16,383.
const QByteArray Padding(16383 - 20, 'h');

// One scripted fetch into the file "page" of a fresh folder that also holds "folder/inside".
struct Fetch {
    Chunks response{};
    QByteArray body{};  // of "page" afterwards
    QString lastResponse{};
    QString lastError{};  // "" when the fetch succeeds
    bool holdOpen = false;
    bool listening = true;
    QString target = QStringLiteral("page");
    int cancelAfterMs = -1;
};

} // namespace

Q_DECLARE_METATYPE(Fetch)

class HttpEngine : public QObject {
    Q_OBJECT
private slots:
    void fetches_data();
    void fetches();
    void textResponse();
};

void HttpEngine::fetches_data()
{
    QTest::addColumn<Fetch>("fetch");
    const QByteArray old = "old content";

    QTest::newRow("split across reads") << Fetch{.response = {"HTTP/1.0 200 OK\r\nSer", "ver: scripted\r\n\r", "\nfirst ", "second"}, .body = "first second", .lastResponse = OkHeader};
    QTest::newRow("empty body") << Fetch{.response = {Ok}, .body = "", .lastResponse = OkHeader};
    QTest::newRow("status never examined") << Fetch{.response = {"HTTP/1.1 500 Broken\r\n\r\noops"}, .body = "oops", .lastResponse = "HTTP/1.1 500 Broken"};
    QTest::newRow("header bytes as characters") << Fetch{.response = {"HTTP/1.0 200 OK\r\nX: \xe9t\xe9\r\n\r\n."}, .body = ".", .lastResponse = QString::fromLatin1("HTTP/1.0 200 OK\r\nX: \xe9t\xe9")};
    QTest::newRow("header end at byte 16,384") << Fetch{.response = {"HTTP/1.0 200 OK\r\nX: " + Padding + "\r\n\r\nbody"}, .body = "body", .lastResponse = QString::fromLatin1("HTTP/1.0 200 OK\r\nX: " + Padding)};
    QTest::newRow("header end at byte 16,385") << Fetch{.response = {"HTTP/1.0 200 OK\r\nX: " + Padding + "h\r\n\r\nbody"}, .body = old, .lastError = Invalid};
    QTest::newRow("HTML instead of HTTP") << Fetch{.response = {"HTML/1.0 200 OK\r\n\r\nbody"}, .body = old, .lastError = Invalid};
    QTest::newRow("header never ends") << Fetch{.response = {"HTTP/1.0 200 OK\r\nX: y\r\n"}, .body = old, .lastError = Invalid};
    QTest::newRow("nothing at all") << Fetch{.response = {}, .body = old, .lastError = Invalid};
    QTest::newRow("nothing listening") << Fetch{.body = old, .lastError = "Could't connect to the specified HTTP server.", .listening = false};
    QTest::newRow("silent after the header") << Fetch{.response = {Ok + "part"}, .body = old, .lastError = "Time out when getting remote file.", .holdOpen = true};
    QTest::newRow("cancelled after the header") << Fetch{.response = {Ok + "part"}, .body = "part", .lastResponse = OkHeader, .holdOpen = true, .cancelAfterMs = 150};
    QTest::newRow("cancelled within the header") << Fetch{.response = {"HTTP/1.0 200 OK\r\n"}, .body = old, .lastError = Invalid, .holdOpen = true, .cancelAfterMs = 150};
    QTest::newRow("folder of the target missing") << Fetch{.response = {Ok}, .body = old, .lastError = "Could't save file to the specified location.", .target = "no/such/page"};
    QTest::newRow("target is a folder with files") << Fetch{.response = {Ok + "x"}, .body = old, .lastResponse = OkHeader, .lastError = Invalid, .target = "folder"};
}

void HttpEngine::fetches()
{
    QFETCH(Fetch, fetch);
    ServerThread<ScriptedHttpServer> server;
    const quint16 listening = server.Run([&fetch](ScriptedHttpServer &s) {
        s.response = fetch.response;
        s.holdOpen = fetch.holdOpen;
        return s.Port();
    });
    QTemporaryDir local;
    QDir(local.path()).mkdir(QStringLiteral("folder"));
    WriteAll(local.filePath(QStringLiteral("folder/inside")), "x");
    WriteAll(local.filePath(QStringLiteral("page")), "old content");
    OrvHTTPEngine engine;
    engine.SetTimeouts({2000, 400});
    // The cancel comes from another thread, as a progress window's does.
    if (fetch.cancelAfterMs >= 0)
        server.Run([&](ScriptedHttpServer &) { QTimer::singleShot(fetch.cancelAfterMs, [&engine] { engine.SetCancel(true); }); });

    const quint16 port = fetch.listening ? listening : ClosedPort();
    QCOMPARE(engine.HTTPGet(QStringLiteral("127.0.0.1"), port, QStringLiteral("/"), local.filePath(fetch.target)), fetch.lastError.isEmpty());
    QCOMPARE(engine.LastError(), fetch.lastError);
    QCOMPARE(engine.LastResponse(), fetch.lastResponse);
    QCOMPARE(ReadAll(local.filePath(QStringLiteral("page"))), fetch.body);
    QVERIFY(!QFileInfo::exists(local.filePath(fetch.target) + QStringLiteral(".http")));
    QCOMPARE(engine.TcpDataStatus(), 0);
}

// A text response comes back whole, status line and all; the request is sent as servers of the
// program's expect it, path and host as given.
void HttpEngine::textResponse()
{
    ServerThread<ScriptedHttpServer> server;
    const quint16 port = server.Run([](ScriptedHttpServer &s) {
        s.response = {"HTTP/1.0 200 OK\r\n\r\n<?xml version=\"1.0\"?>", "<plist/>"};
        return s.Port();
    });
    OrvHTTPEngine engine;
    QString text;
    // The engine blocks its thread: nothing of the caller's runs inside its calls.
    bool reentered = false;
    QTimer::singleShot(0, [&reentered] { reentered = true; });
    QVERIFY(engine.HTTPGetText(QStringLiteral("localhost"), port, QStringLiteral("/websync/a.php?x=1%202"), text));
    QCOMPARE(server.Run([](ScriptedHttpServer &s) { return s.request; }), QByteArray("GET /websync/a.php?x=1%202 HTTP/1.0\r\nHost: localhost\r\nUser-Agent: Orvana-Win-V2\r\n"
                                        "Connection: Close\r\n\r\n"));
    QCOMPARE(text, QStringLiteral("HTTP/1.0 200 OK\r\n\r\n<?xml version=\"1.0\"?><plist/>"));
    QCOMPARE(engine.LastResponse(), QString());
    QVERIFY(!reentered);
}

QTEST_GUILESS_MAIN(HttpEngine)
#include "tst_HttpEngine.moc"
