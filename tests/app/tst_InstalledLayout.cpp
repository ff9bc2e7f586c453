#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The build tree installed into a scratch prefix, then used from there: the programs must find
// their resources in share/orvana/ with no build tree beside them, and the desktop files, manual
// pages and completion must be what the desktop's and Debian's tools accept.
class InstalledLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void installed_data();
    void installed();

private:
    QTemporaryDir scratch;
    QString prefix;
};

void InstalledLayoutTest::initTestCase()
{
    QVERIFY(scratch.isValid());
    prefix = scratch.path() + QStringLiteral("/usr");
    QProcess install;
    install.setProcessChannelMode(QProcess::MergedChannels);
    install.start(QStringLiteral(ORVANA_CMAKE), {QStringLiteral("--install"), QStringLiteral(ORVANA_BUILD_DIR), QStringLiteral("--prefix"), prefix});
    QVERIFY(install.waitForFinished(120000));
    QVERIFY2(install.exitCode() == 0, install.readAll().constData());
    QVERIFY(QDir(scratch.path()).mkpath(QStringLiteral("home/Documents")));
}

void InstalledLayoutTest::installed_data()
{
    QTest::addColumn<QString>("program"); // "<prefix>" is the scratch installation
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("output");  // what the standard output must contain

    const QString cli = QStringLiteral("<prefix>/bin/orvana-cli");
    QTest::newRow("version") << cli << QStringList{"--version"} << QStringLiteral("orvana-cli " ORVANA_VERSION);
    QTest::newRow("resources from share/orvana") << cli << QStringList{"text", "MyPhotoAlbums", "System"} << "My Photo Albums";
    QTest::newRow("album command") << cli << QStringList{"album", "create", "<prefix>/../home/Documents/Trip"} << "";
    QTest::newRow("GUI program") << "test" << QStringList{"-x", "<prefix>/bin/orvana"} << "";
    QTest::newRow("manual page from the tables") << "gzip" << QStringList{"-dc", "<prefix>/share/man/man1/orvana-cli.1.gz"}
                                                 << "orvana\\-cli gps waypoint add NAME LAT LON";
    QTest::newRow("program's manual page") << "gzip" << QStringList{"-dc", "<prefix>/share/man/man1/orvana.1.gz"} << "orvana /ImportPhotos CARD";
    QTest::newRow("completion of verbs") << "bash" << QStringList{"-c", "source <prefix>/share/bash-completion/completions/orvana-cli; "
                                                                  "COMP_WORDS=(orvana-cli gps waypoint ''); COMP_CWORD=3; _orvana_cli; echo ${COMPREPLY[*]}"}
                                         << "add remove";
    QTest::newRow("completion of verbs sharing a word") << "bash" << QStringList{"-c", "source <prefix>/share/bash-completion/completions/orvana-cli; "
                                                                                "COMP_WORDS=(orvana-cli gps ''); COMP_CWORD=2; _orvana_cli; echo ${COMPREPLY[*]}"}
                                                       << "track tracks waypoint waypoints";
    QTest::newRow("completion of options") << "bash" << QStringList{"-c", "source <prefix>/share/bash-completion/completions/orvana-cli; "
                                                                    "COMP_WORDS=(orvana-cli album list A --); COMP_CWORD=4; _orvana_cli; echo ${COMPREPLY[*]}"}
                                           << "--help --json";
    QTest::newRow("desktop entry") << "desktop-file-validate" << QStringList{"<prefix>/share/applications/orvana.desktop"} << "";
    QTest::newRow("camera-card entry") << "desktop-file-validate" << QStringList{"<prefix>/share/applications/orvana-import.desktop"} << "";
    QTest::newRow("AppStream metadata") << "appstreamcli" << QStringList{"validate", "--no-net", "<prefix>/share/metainfo/org.orvana.Orvana.metainfo.xml"}
                                        << "Validation was successful";
    QTest::newRow("scalable icon") << "test" << QStringList{"-s", "<prefix>/share/icons/hicolor/scalable/apps/orvana.svg"} << "";
    QTest::newRow("bitmap icons") << "bash" << QStringList{"-c", "cd <prefix>/share/icons/hicolor && ls */apps/orvana.png | wc -l"} << "9";
    QTest::newRow("user guide") << "test" << QStringList{"-s", "<prefix>/share/doc/orvana/guide/index.html"} << "";
}

void InstalledLayoutTest::installed()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(QString, output);
    program.replace(QStringLiteral("<prefix>"), prefix);
    arguments.replaceInStrings(QStringLiteral("<prefix>"), prefix);
    QProcess run;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), scratch.path() + QStringLiteral("/home"));
    run.setProcessEnvironment(environment);
    run.setWorkingDirectory(scratch.path() + QStringLiteral("/home"));
    run.start(program, arguments);
    QVERIFY(run.waitForFinished(60000));
    const QString out = QString::fromUtf8(run.readAllStandardOutput());
    QVERIFY2(run.exitStatus() == QProcess::NormalExit && run.exitCode() == 0, qPrintable(out + QString::fromUtf8(run.readAllStandardError())));
    QVERIFY2(out.contains(output), qPrintable(out));
}

QTEST_GUILESS_MAIN(InstalledLayoutTest)
#include "tst_InstalledLayout.moc"
