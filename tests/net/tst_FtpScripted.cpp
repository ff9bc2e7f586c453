#include "net/OrvFTPEngine.h"
#include "ScriptedServers.h"
#include "ServerThread.h"
#include "TestEnvironment.h"

#include <QTest>
#include <QTimer>

// The FTP engine against a scripted server: replies split and continued, refusals, odd PASV
// replies, silence and floods that real servers do not send on demand.

// Runs on an engine logged in as "u" with password "p"; `folder` is a local temporary folder.
using FtpServerThread = ServerThread<ScriptedFtpServer>;
using Call = std::function<bool(OrvFTPEngine &, FtpServerThread &, const QString &folder)>;
using Script = std::function<void(ScriptedFtpServer &)>;
Q_DECLARE_METATYPE(Call)
Q_DECLARE_METATYPE(Script)

namespace {

constexpr qint64 ShortWaitMs = 400;

Call ListGives(const QString &listing)
{
    return [listing](OrvFTPEngine &engine, auto &, auto &) { return engine.List(QString()) == listing; };
}

Script Reply(const QByteArray &keyword, const Chunks &chunks)
{
    return [keyword, chunks](ScriptedFtpServer &server) { server.replies.insert(keyword, chunks); };
}

Script Passive(const QByteArray &fields)
{
    return Reply("PASV", {"227 Entering Passive Mode (" + fields + ")\r\n"});
}

} // namespace

class FtpScripted : public QObject {
    Q_OBJECT
private slots:
    void replies_data();
    void replies();
};

void FtpScripted::replies_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<Call>("call"); // none: the log-in alone, which succeeds unless lastError is set
    QTest::addColumn<QString>("lastError");
    QTest::addColumn<QList<QByteArray>>("commands");

    using Commands = QList<QByteArray>;
    const Commands login{"USER u", "PASS p"};
    const Commands listed = login + Commands{"PASV", "LIST"};
    const Call logInOnly;
    const QString noError;
    const QString cannotConnect = QStringLiteral("Unable to connect to specified server.");

    QTest::newRow("greeting split across reads") << Script([](auto &s) { s.greeting = {"22", "0 rea", "dy\r", "\n"}; }) << logInOnly
                                                 << noError << login;
    QTest::newRow("continuation lines waited through")
        << Script([](auto &s) { s.greeting = {"220-Welcome\r\n", "220-more\r\n   indented\r\n220", " ready\r\n"}; }) << logInOnly
        << noError << login;
    QTest::newRow("final line without its line end") << Script([](auto &s) { s.greeting = {"220 ready"}; }) << logInOnly
                                                     << cannotConnect << Commands{};
    QTest::newRow("greeting other than 220") << Script([](auto &s) { s.greeting = {"421 Too many users\r\n"}; }) << logInOnly
                                             << cannotConnect << Commands{};
    QTest::newRow("230 right after USER") << Reply("USER", {"230 Welcome, no password needed.\r\n"}) << logInOnly
                                          << "Invalid user or password." << Commands{"USER u"};

    // An empty path lists with LIST alone.
    QTest::newRow("PASV fields with blanks") << Script([](auto &s) {
        s.download = "listing";
        const QByteArray port = QByteArray::number(s.DataPort() / 256) + " , " + QByteArray::number(s.DataPort() % 256);
        Passive(" 127 , 0,0 , 1 ,  " + port)(s);
    }) << ListGives(QStringLiteral("listing")) << noError << listed;
    QTest::newRow("PASV address used, not the server's") << Script([](auto &s) {
        s.ListenForDataOn(QHostAddress(QStringLiteral("127.0.0.2")));
        s.download = "from the other address";
    }) << ListGives(QStringLiteral("from the other address")) << noError << listed;
    const QString noAddress = QStringLiteral("Unable to obtain data connection address.");
    QTest::newRow("PASV with five fields") << Passive("127,0,0,1,4") << ListGives(QString()) << noAddress << login + Commands{"PASV"};
    QTest::newRow("PASV with seven fields") << Passive("127,0,0,1,4,1,9") << ListGives(QString()) << noAddress << login + Commands{"PASV"};
    QTest::newRow("PASV with a name for an address") << Passive("example,com,x,y,4,1") << ListGives(QString())
                                                     << "Unable to create data connection." << login + Commands{"PASV"};
    QTest::newRow("listing larger than the limit") << Script([](auto &s) { s.download = QByteArray(qsizetype{33} * 1024 * 1024, 'x'); })
                                                   << ListGives(QString()) << "Could't list remote directory." << listed;

    const Commands retrieved = login + Commands{"PASV", "TYPE I", "RETR /a.jpg"};
    QTest::newRow("150 and 226 in one read") << Script([](auto &s) {
        s.replies["RETR"] = {"150 Opening.\r\n226 Done.\r\n"};
        s.afterTransfer.clear();
        s.download = "photo bytes";
    }) << Call([](auto &engine, auto &, auto &folder) {
        const QString local = folder + QStringLiteral("/a");
        return engine.GetFile(QStringLiteral("/a.jpg"), local) && ReadAll(local) == "photo bytes";
    }) << noError << retrieved;
    QTest::newRow("download idle past its time-out") << Script([](auto &s) {
        s.download = "part";
        s.holdDataOpen = true;
    }) << Call([](auto &engine, auto &, auto &folder) {
        return !engine.GetFile(QStringLiteral("/a.jpg"), folder + QStringLiteral("/a")) && ReadAll(folder + QStringLiteral("/a")) == "part";
    }) << "Time out when downloading file." << retrieved;
    QTest::newRow("empty file: no block, mode change still tried") << Script([](auto &) {}) << Call([](auto &engine, auto &, auto &folder) {
        WriteAll(folder + QStringLiteral("/empty"), {});
        return engine.PutFile(folder + QStringLiteral("/empty"), QStringLiteral("/e"));
    }) << "Unable to change file mode." << login + Commands{"PASV", "TYPE I", "STOR /e", "SITE CHMOD 755 /e"};
    QTest::newRow("upload stalled past the block time-out") << Script([](auto &s) { s.ignoreUpload = true; })
                                                            << Call([](auto &engine, auto &, auto &folder) {
        WriteAll(folder + QStringLiteral("/big"), QByteArray(qsizetype{48} * 1024 * 1024, 'p'));
        return !engine.PutFile(folder + QStringLiteral("/big"), QStringLiteral("big"));
    }) << "Time out when uploading file." << login + Commands{"PASV", "TYPE I", "STOR big"};
    QTest::newRow("upload under back-pressure arrives whole") << Script([](auto &s) { s.readUploadSlowly = true; })
                                                              << Call([](auto &engine, auto &server, auto &folder) {
        const QByteArray photo(qsizetype{12} * 1024 * 1024 + 5, 'p');
        WriteAll(folder + QStringLiteral("/photo"), photo);
        engine.SetNeedChangeModeTo755(false);
        const auto uploaded = [&server] { return server.Run([](ScriptedFtpServer &s) { return s.uploaded; }); };
        return engine.PutFile(folder + QStringLiteral("/photo"), QStringLiteral("photo")) &&
               QTest::qWaitFor([&] { return uploaded().size() >= photo.size(); }, 10000) && uploaded() == photo;
    }) << noError << login + Commands{"PASV", "TYPE I", "STOR photo"};

    QTest::newRow("folder made without mode change, QUIT on disconnect")
        << Reply("MKD", {"257 \"/d\" created.\r\n"}) << Call([](auto &engine, auto &, auto &) {
        engine.SetNeedChangeModeTo755(false);
        const bool made = engine.MakeDirectory(QStringLiteral("d"));
        engine.Disconnect();
        return made && engine.TcpCommandStatus() == 0;
    }) << noError << login + Commands{"MKD d", "QUIT"};
    QTest::newRow("endless reply held in bounded memory")
        << Reply("CWD", Chunks(8, QByteArray(qsizetype{128} * 1024, '-') + "\r\n")) << Call([](auto &engine, auto &, auto &) {
        return !engine.ChangeDirectory(QStringLiteral("/")) && engine.LastResponse().size() == FtpReplyReader::TextLimit;
    }) << "Can't change directory. Path does not exist." << login + Commands{"CWD /"};
}

void FtpScripted::replies()
{
    QFETCH(Script, script);
    QFETCH(Call, call);
    QFETCH(QString, lastError);
    QFETCH(QList<QByteArray>, commands);

    FtpServerThread server;
    server.Run(script);
    OrvFTPEngine engine;
    // A listing keeps the program's own wait, so that only its end, however late under load, ends it.
    engine.SetTimeouts({2000, ShortWaitMs, FtpTimeouts{}.listingMs, ShortWaitMs, ShortWaitMs});
    QTemporaryDir folder;
    // The engine blocks its thread: nothing of the caller's runs inside its calls.
    bool reentered = false;
    QTimer::singleShot(0, [&reentered] { reentered = true; });
    const quint16 port = server.Run([](ScriptedFtpServer &s) { return s.Port(); });
    const bool loggedIn = engine.ConnectToServer(QStringLiteral("127.0.0.1"), port, QStringLiteral("u"), QStringLiteral("p"));
    QVERIFY(!reentered);
    if (call)
        QVERIFY(loggedIn && call(engine, server, folder.path()));
    else
        QCOMPARE(loggedIn, lastError.isEmpty());
    QCOMPARE(engine.LastError(), lastError);
    // The server may still be reading the last command when the engine has given up on its reply.
    QTRY_COMPARE(server.Run([](ScriptedFtpServer &s) { return s.commands; }), commands);
}

QTEST_GUILESS_MAIN(FtpScripted)
#include "tst_FtpScripted.moc"
