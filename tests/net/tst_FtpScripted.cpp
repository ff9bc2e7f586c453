#include "OrvFTPEngine.h"
#include "ScriptedServers.h"
#include "TestEnvironment.h"

#include <QTest>

// The FTP engine against a scripted server: replies split and continued, refusals, odd PASV
// replies, silence and floods that real servers do not send on demand.

using Call = std::function<bool(OrvFTPEngine &, ScriptedFtpServer &, const QString &folder)>;
using Script = std::function<void(ScriptedFtpServer &)>;
Q_DECLARE_METATYPE(Call)
Q_DECLARE_METATYPE(Script)

namespace {

constexpr qint64 ShortWaitMs = 400;

bool LogIn(OrvFTPEngine &engine, const ScriptedFtpServer &server)
{
    return engine.ConnectToServer(QStringLiteral("127.0.0.1"), server.Port(), QStringLiteral("u"), QStringLiteral("p"));
}

// Logs in, then runs `then` on the logged-in engine.
Call AfterLogIn(const std::function<bool(OrvFTPEngine &, const QString &folder)> &then)
{
    return [then](OrvFTPEngine &engine, ScriptedFtpServer &server, const QString &folder) {
        return LogIn(engine, server) && then(engine, folder);
    };
}

Call ListGives(const QString &path, const QString &listing)
{
    return AfterLogIn([path, listing](OrvFTPEngine &engine, const QString &) { return engine.List(path) == listing; });
}

Script Reply(const QByteArray &keyword, const Chunks &chunks)
{
    return [keyword, chunks](ScriptedFtpServer &server) { server.replies.insert(keyword, chunks); };
}

QByteArray PassiveReplyWith(const QByteArray &fields)
{
    return "227 Entering Passive Mode (" + fields + ")\r\n";
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
    QTest::addColumn<Call>("call");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<QString>("lastError");
    QTest::addColumn<QList<QByteArray>>("commands");

    const Call connect = [](auto &engine, auto &server, auto &) { return LogIn(engine, server); };
    const QList<QByteArray> login{"USER u", "PASS p"};
    const Script asIs = [](ScriptedFtpServer &) {};
    const QString noError;

    QTest::newRow("greeting split across reads")
        << Script([](auto &s) { s.greeting = {"22", "0 rea", "dy\r", "\n"}; }) << connect << true << noError << login;
    QTest::newRow("continuation lines waited through")
        << Script([](auto &s) { s.greeting = {"220-Welcome\r\n", "220-more\r\n   indented\r\n220", " ready\r\n"}; })
        << connect << true << noError << login;
    QTest::newRow("final line without its line end")
        << Script([](auto &s) { s.greeting = {"220 ready"}; }) << connect << false
        << "Unable to connect to specified server." << QList<QByteArray>{};
    QTest::newRow("greeting other than 220") << Script([](auto &s) { s.greeting = {"421 Too many users\r\n"}; })
                                             << connect << false << "Unable to connect to specified server." << QList<QByteArray>{};
    QTest::newRow("230 right after USER") << Reply("USER", {"230 Welcome, no password needed.\r\n"}) << connect << false
                                          << "Invalid user or password." << QList<QByteArray>{"USER u"};
    QTest::newRow("second connect refused, last error kept")
        << Reply("CWD", {"550 No such folder.\r\n"})
        << AfterLogIn([](auto &engine, auto &) {
               return !engine.ChangeDirectory(QStringLiteral("/x")) && !engine.ConnectToServer(QStringLiteral("127.0.0.1"), 21, {}, {});
           })
        << true << "Can't change directory. Path does not exist." << login + QList<QByteArray>{"CWD /x"};

    QTest::newRow("LIST alone for an empty path") << Script([](auto &s) { s.download = "-rw-r--r-- 1 a b 1 Jan 1 2020 f\r\n"; })
                                                  << ListGives(QString(), "-rw-r--r-- 1 a b 1 Jan 1 2020 f\r\n") << true << noError
                                                  << login + QList<QByteArray>{"PASV", "LIST"};
    QTest::newRow("path sent as it is") << asIs << ListGives(QStringLiteral("/My Photos"), QString()) << true << noError
                                        << login + QList<QByteArray>{"PASV", "LIST /My Photos"};
    QTest::newRow("PASV fields with blanks")
        << Script([](auto &s) {
               s.download = "listing";
               s.replies["PASV"] = {PassiveReplyWith(" 127 , 0,0 , 1 ,  " + QByteArray::number(s.DataPort() / 256) + " , " + QByteArray::number(s.DataPort() % 256))};
           })
        << ListGives(QString(), QStringLiteral("listing")) << true << noError << login + QList<QByteArray>{"PASV", "LIST"};
    QTest::newRow("PASV address used, not the server's")
        << Script([](auto &s) {
               s.ListenForDataOn(QHostAddress(QStringLiteral("127.0.0.2")));
               s.download = "from the other address";
           })
        << ListGives(QString(), QStringLiteral("from the other address")) << true << noError << login + QList<QByteArray>{"PASV", "LIST"};
    QTest::newRow("PASV with five fields") << Reply("PASV", {PassiveReplyWith("127,0,0,1,4")}) << ListGives(QString(), QString()) << true
                                           << "Unable to obtain data connection address." << login + QList<QByteArray>{"PASV"};
    QTest::newRow("PASV with seven fields") << Reply("PASV", {PassiveReplyWith("127,0,0,1,4,1,9")}) << ListGives(QString(), QString())
                                            << true << "Unable to obtain data connection address." << login + QList<QByteArray>{"PASV"};
    QTest::newRow("PASV with a name for an address") << Reply("PASV", {PassiveReplyWith("example,com,x,y,4,1")})
                                                     << ListGives(QString(), QString()) << true << "Unable to create data connection."
                                                     << login + QList<QByteArray>{"PASV"};
    QTest::newRow("listing larger than the limit")
        << Script([](auto &s) { s.download = QByteArray(qsizetype{33} * 1024 * 1024, 'x'); }) << ListGives(QString(), QString()) << true
        << "Could't list remote directory." << login + QList<QByteArray>{"PASV", "LIST"};

    QTest::newRow("150 and 226 in one read")
        << Script([](auto &s) {
               s.replies["RETR"] = {"150 Opening.\r\n226 Done.\r\n"};
               s.afterTransfer.clear();
               s.download = "photo bytes";
           })
        << AfterLogIn([](auto &engine, auto &folder) {
               return engine.GetFile(QStringLiteral("/a.jpg"), folder + QStringLiteral("/a.jpg")) && ReadAll(folder + QStringLiteral("/a.jpg")) == "photo bytes";
           })
        << true << noError << login + QList<QByteArray>{"PASV", "TYPE I", "RETR /a.jpg"};
    QTest::newRow("download idle past its time-out")
        << Script([](auto &s) {
               s.download = "part";
               s.holdDataOpen = true;
           })
        << AfterLogIn([](auto &engine, auto &folder) {
               return !engine.GetFile(QStringLiteral("a.jpg"), folder + QStringLiteral("/a.jpg")) && ReadAll(folder + QStringLiteral("/a.jpg")) == "part";
           })
        << true << "Time out when downloading file." << login + QList<QByteArray>{"PASV", "TYPE I", "RETR a.jpg"};
    QTest::newRow("empty file: no block, mode change still tried")
        << asIs
        << AfterLogIn([](auto &engine, auto &folder) {
               WriteAll(folder + QStringLiteral("/empty"), {});
               return engine.PutFile(folder + QStringLiteral("/empty"), QStringLiteral("/e"));
           })
        << true << "Unable to change file mode." << login + QList<QByteArray>{"PASV", "TYPE I", "STOR /e", "SITE CHMOD 755 /e"};
    QTest::newRow("upload stalled past the block time-out")
        << Script([](auto &s) { s.ignoreUpload = true; })
        << AfterLogIn([](auto &engine, auto &folder) {
               WriteAll(folder + QStringLiteral("/big"), QByteArray(qsizetype{48} * 1024 * 1024, 'p'));
               return !engine.PutFile(folder + QStringLiteral("/big"), QStringLiteral("big"));
           })
        << true << "Time out when uploading file." << login + QList<QByteArray>{"PASV", "TYPE I", "STOR big"};
    QTest::newRow("upload under back-pressure arrives whole")
        << Script([](auto &s) { s.readUploadSlowly = true; })
        << Call([](auto &engine, auto &server, auto &folder) {
               const QByteArray photo(qsizetype{12} * 1024 * 1024 + 5, 'p');
               WriteAll(folder + QStringLiteral("/photo"), photo);
               engine.SetNeedChangeModeTo755(false);
               return LogIn(engine, server) && engine.PutFile(folder + QStringLiteral("/photo"), QStringLiteral("photo")) &&
                      QTest::qWaitFor([&] { return server.uploaded.size() >= photo.size(); }, 10000) && server.uploaded == photo;
           })
        << true << noError << login + QList<QByteArray>{"PASV", "TYPE I", "STOR photo"};
    QTest::newRow("storing refused") << Reply("STOR", {"553 Not allowed.\r\n"})
                                     << AfterLogIn([](auto &engine, auto &folder) {
                                            WriteAll(folder + QStringLiteral("/f"), "x");
                                            return !engine.PutFile(folder + QStringLiteral("/f"), QStringLiteral("f"));
                                        })
                                     << true << "Could't put data of local file." << login + QList<QByteArray>{"PASV", "TYPE I", "STOR f"};

    QTest::newRow("RNFR refused, no RNTO") << Reply("RNFR", {"550 No such file.\r\n"})
                                           << AfterLogIn([](auto &engine, auto &) { return !engine.ChangeFileName("a", "b"); })
                                           << true << "Couldn't change file name. (RNFR)" << login + QList<QByteArray>{"RNFR a"};
    QTest::newRow("RNTO refused") << Reply("RNFR", {"350 Ready.\r\n"})
                                  << AfterLogIn([](auto &engine, auto &) { return !engine.ChangeFileName("a", "b c"); })
                                  << true << "Couldn't change file name. (RNTO)" << login + QList<QByteArray>{"RNFR a", "RNTO b c"};
    QTest::newRow("folder made without mode change")
        << Reply("MKD", {"257 \"/d\" created.\r\n"})
        << AfterLogIn([](auto &engine, auto &) {
               engine.SetNeedChangeModeTo755(false);
               return engine.MakeDirectory(QStringLiteral("d"));
           })
        << true << noError << login + QList<QByteArray>{"MKD d"};
    QTest::newRow("endless reply held in bounded memory")
        << Reply("CWD", Chunks(8, QByteArray(qsizetype{128} * 1024, '-') + "\r\n"))
        << AfterLogIn([](auto &engine, auto &) {
               return !engine.ChangeDirectory(QStringLiteral("/")) && engine.LastResponse().size() == FtpReplyReader::TextLimit;
           })
        << true << "Can't change directory. Path does not exist." << login + QList<QByteArray>{"CWD /"};
    QTest::newRow("QUIT on disconnect") << asIs
                                        << AfterLogIn([](auto &engine, auto &) {
                                               engine.Disconnect();
                                               return engine.TcpCommandStatus() == 0;
                                           })
                                        << true << noError << login + QList<QByteArray>{"QUIT"};
}

void FtpScripted::replies()
{
    QFETCH(Script, script);
    QFETCH(Call, call);
    QFETCH(bool, succeeds);
    QFETCH(QString, lastError);
    QFETCH(QList<QByteArray>, commands);

    ScriptedFtpServer server;
    script(server);
    OrvFTPEngine engine;
    engine.SetTimeouts({2000, ShortWaitMs, ShortWaitMs, ShortWaitMs, ShortWaitMs});
    QTemporaryDir folder;
    QCOMPARE(call(engine, server, folder.path()), succeeds);
    QCOMPARE(engine.LastError(), lastError);
    QTest::qWait(20);  // the server reads the last command while the engine waits for its reply
    QCOMPARE(server.commands, commands);
}

QTEST_GUILESS_MAIN(FtpScripted)
#include "tst_FtpScripted.moc"
