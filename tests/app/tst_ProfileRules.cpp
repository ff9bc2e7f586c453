#include "app/ProfileFile.h"
#include "app/ProfileText.h"
#include "TestEnvironment.h"

#include <QFile>
#include <QProcess>
#include <QTest>

class ProfileRules : public QObject {
    Q_OBJECT
private slots:
    void rules_data();
    void rules();
    void fileWrites();
    void concurrentWriters();
};

// A row with an expected file is a write of value; without one, value is what the content reads.
void ProfileRules::rules_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("written");

    const QByteArray longValue(1100, 'x');
    QTest::newRow("first matching section wins") << QByteArray("[A]\nk=1\n[a]\nk=2\n") << "A" << "k" << "1" << QByteArray();
    QTest::newRow("first matching key wins") << QByteArray("[A]\nk=1\nK=2\n") << "A" << "k" << "1" << QByteArray();
    QTest::newRow("key of the first section only") << QByteArray("[A]\nx=1\n[a]\nk=2\n") << "A" << "k" << "" << QByteArray();
    QTest::newRow("double quotes dropped") << QByteArray("[A]\nk = \" padded \"\n") << "A" << "k" << " padded " << QByteArray();
    QTest::newRow("single quotes dropped") << QByteArray("[A]\nk='v'\n") << "A" << "k" << "v" << QByteArray();
    QTest::newRow("unmatched quotes kept") << QByteArray("[A]\nk=\"v'\n") << "A" << "k" << "\"v'" << QByteArray();
    QTest::newRow("lone quote kept") << QByteArray("[A]\nk=\"\n") << "A" << "k" << "\"" << QByteArray();
    QTest::newRow("1100 characters read as 1023") << "[A]\nk=" + longValue + "\n" << "A" << "k" << QString(1023, u'x') << QByteArray();
    QTest::newRow("cut at NUL") << QByteArray("[A]\nk=ab\0cd\n", 12) << "A" << "k" << "ab" << QByteArray();
    QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF[A]\r\nk=v\r\n") << "A" << "k" << "v" << QByteArray();
    QTest::newRow("comment lines and blanks") << QByteArray("; note\n\n[A]\n;k=no\n\n  k  =  yes  \n") << "A" << "k" << "yes" << QByteArray();
    QTest::newRow("value with equals signs") << QByteArray("[A]\nurl=a=b=c\n") << "A" << "url" << "a=b=c" << QByteArray();
    QTest::newRow("UTF-8 text") << QByteArray("[System]\nMyPhotoAlbums=\xE6\x88\x91\xE7\x9A\x84\n") << "System" << "MyPhotoAlbums"
                                << QString::fromUtf8("\xE6\x88\x91\xE7\x9A\x84") << QByteArray();
    QTest::newRow("key before any section") << QByteArray("k=v\n[A]\n") << "A" << "k" << "" << QByteArray();
    QTest::newRow("no final line end") << QByteArray("[A]\nk=v") << "A" << "k" << "v" << QByteArray();

    const QByteArray firstRun = "[Layout]\r\nBGColor = FFFFFF\r\n\r\n[RecentDocs]\r\n\r\n[GPS]\r\n\r\n";
    QTest::newRow("new key after the section's last line") << firstRun << "Layout" << "FastMakeThumbnail" << "0"
        << QByteArray("[Layout]\r\nBGColor = FFFFFF\r\nFastMakeThumbnail=0\r\n\r\n[RecentDocs]\r\n\r\n[GPS]\r\n\r\n");
    QTest::newRow("new key in an empty section") << firstRun << "RecentDocs" << "Doc1" << "/a" << QByteArray("[Layout]\r\nBGColor = FFFFFF\r\n\r\n[RecentDocs]\r\nDoc1=/a\r\n\r\n[GPS]\r\n\r\n");
    QTest::newRow("new section at the end") << QByteArray("[A]\r\nk=v\r\n") << "B" << "x" << "1" << QByteArray("[A]\r\nk=v\r\n\r\n[B]\r\nx=1\r\n");
    QTest::newRow("LF file stays LF") << QByteArray("[A]\nk=v\n") << "A" << "n" << "w" << QByteArray("[A]\nk=v\nn=w\n");
    QTest::newRow("comments and byte-order mark kept") << QByteArray("\xEF\xBB\xBF; mine\r\n[A]\r\n; about k\r\nk=1\r\n") << "a" << "k" << "2"
        << QByteArray("\xEF\xBB\xBF; mine\r\n[A]\r\n; about k\r\nk=2\r\n");
    QTest::newRow("mixed line ends kept") << QByteArray("[A]\r\nk=1\nz=2\r\n") << "A" << "k" << "3" << QByteArray("[A]\r\nk=3\nz=2\r\n");
    QTest::newRow("last line without its end") << QByteArray("[A]\r\nk=1") << "A" << "n" << "2" << QByteArray("[A]\r\nk=1\r\nn=2\r\n");
    QTest::newRow("empty value") << QByteArray("[A]\nk=v\n") << "A" << "k" << "" << QByteArray("[A]\nk=\n");
}

void ProfileRules::rules()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, written);
    if (!written.isEmpty()) {
        QCOMPARE(ProfileText::WithValue(content, section, key, value), written);
        content = written;
    }
    QCOMPARE(ProfileText::FindValue(content, section, key), value);
}

// The file itself: created owner-only, written whole, refused when read-only, unreadable or when
// a name would break its line (a value that would is refused end to end in tst_Cli).
void ProfileRules::fileWrites()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Orvana.ini"));

    QVERIFY(ProfileFile::WriteString(path, QStringLiteral("RecentFTP"), QStringLiteral("Password"), QStringLiteral("s3cret")).ok);
    QCOMPARE(QFile::permissions(path),
             QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser);
    QCOMPARE(ProfileFile::ReadString(path, QStringLiteral("recentftp"), QStringLiteral("password")), QStringLiteral("s3cret"));

    QVERIFY(!ProfileFile::WriteString(path, QStringLiteral("A"), QStringLiteral("k=x"), QStringLiteral("v")).ok);

    const QByteArray before = ReadAll(path);
    const QFileDevice::Permissions modes[] = {QFileDevice::ReadOwner, QFileDevice::WriteOwner, {}};
    for (const QFileDevice::Permissions mode : modes) {
        QFile::setPermissions(path, mode);
        QVERIFY(!ProfileFile::WriteString(path, QStringLiteral("RecentFTP"), QStringLiteral("Password"), QStringLiteral("other")).ok);
        QFile::setPermissions(path, QFileDevice::ReadOwner);
        QCOMPARE(ReadAll(path), before);
    }

    QVERIFY(!ProfileFile::WriteString(dir.filePath(QStringLiteral("missing/Orvana.ini")), QStringLiteral("A"),
                                      QStringLiteral("k"), QStringLiteral("v")).ok);
    QCOMPARE(ProfileFile::ReadString(dir.filePath(QStringLiteral("missing/Orvana.ini")), QStringLiteral("A"), QStringLiteral("k")), QString());
}

// Real orvana-cli processes writing keys at once, four at a time, from the very first run: each
// rereads the file under the lock, so no key written meanwhile is lost.
void ProfileRules::concurrentWriters()
{
    QTemporaryDir home;
    constexpr int Lanes = 4;
    constexpr int KeysPerLane = 8;
    std::vector<std::unique_ptr<QProcess>> lanes;
    for (int lane = 0; lane < Lanes; ++lane) {
        auto shell = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        environment.remove(QStringLiteral("XDG_DOCUMENTS_DIR"));
        environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
        shell->setProcessEnvironment(environment);
        shell->start(QStringLiteral("sh"), {QStringLiteral("-c"),
                                            QStringLiteral("for i in $(seq %1); do \"$0\" settings set Race lane%2_$i $i || exit 1; done").arg(KeysPerLane).arg(lane),
                                            QStringLiteral(ORVANA_BIN_DIR "/orvana-cli")});
        lanes.push_back(std::move(shell));
    }
    for (const auto &shell : lanes) {
        QVERIFY(shell->waitForFinished(120000));
        QCOMPARE(shell->exitCode(), 0);
    }
    const QString settings = home.path() + QStringLiteral("/Documents/Orvana User Data/Orvana.ini");
    QStringList lost;
    for (int lane = 0; lane < Lanes; ++lane) {
        for (int i = 1; i <= KeysPerLane; ++i) {
            if (ProfileFile::ReadString(settings, QStringLiteral("Race"), QStringLiteral("lane%1_%2").arg(lane).arg(i)) != QString::number(i))
                lost << QStringLiteral("lane%1_%2").arg(lane).arg(i);
        }
    }
    QVERIFY2(lost.isEmpty(), qPrintable(lost.join(u' ')));
    QCOMPARE(ProfileFile::ReadString(settings, QStringLiteral("Language"), QStringLiteral("Current")), QStringLiteral("English"));
}

QTEST_GUILESS_MAIN(ProfileRules)
#include "tst_ProfileRules.moc"
