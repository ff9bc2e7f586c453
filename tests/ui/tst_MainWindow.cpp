#include "ui/main/CommandTable.h"
#include "ui/common/FileChooser.h"
#include "ui/main/MainWindow.h"
#include "ui/album/AlbumWindow.h"
#include "app/Language.h"
#include "app/Prompter.h"
#include "app/RecentDocs.h"
#include "app/Settings.h"
#include "app/Startup.h"
#include "app/Version.h"
#include "datalist/DataList.h"
#include "library/AlbumFormat.h"
#include "TestEnvironment.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

namespace {

// Answers the pickers from a list of folders, in order; "" is a cancelled picker.
class ScriptedChooser : public FileChooser {
public:
    explicit ScriptedChooser(QStringList answers) : answers(std::move(answers)) {}
    QString ChooseFolder(QWidget *, const QString &, const QString &) override { return Next(); }
    QString ChooseNewFolder(QWidget *, const QString &, const QString &, const QString &) override { return Next(); }
    QStringList ChooseFiles(QWidget *, const QString &, const QString &) override { return {}; }

private:
    QString Next() { return answers.isEmpty() ? QString() : answers.takeFirst(); }
    QStringList answers;
};

// Says yes to every question and keeps every message it is shown.
class RecordingPrompter : public Prompter {
public:
    explicit RecordingPrompter(QStringList &shown) : shown(shown) {}
    bool AskYesNo(const QString &, const QString &) override { return true; }
    void Inform(const QString &title, const QString &text) override { shown << title + u'|' + text; }
    void Error(const QString &title, const QString &text) override { shown << title + u'|' + text; }
    std::optional<QString> AskText(const QString &, const QString &, const QString &initial) override { return initial; }

private:
    QStringList &shown;
};

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");

// The folders the pickers can answer with, made afresh under the test's own Documents folder.
QString MakeFolder(const QString &documents, const QString &kind)
{
    const QString path = documents + u'/' + kind;
    if (kind == QLatin1String("album")) {
        if (!CreateNewAlbum(path))
            return {};
    } else if (kind == QLatin1String("damaged")) {
        QDir().mkpath(AlbumFormat::StudioDataPath(path));
        WriteAll(AlbumFormat::StudioPlistPath(path), "<?xml version=\"1.0\"?><plist><dict><key>Items</key>");
    } else if (kind == QLatin1String("damaged late")) {
        // Read in batches: the window shows with the first records before the fault is met.
        QDir().mkpath(AlbumFormat::StudioDataPath(path));
        DataList list;
        for (int i = 1; i <= 1000; ++i) {
            list.AddItem(i);
            list.SetItemProperty(QStringLiteral("File"), QStringLiteral("IMG_%1.JPG").arg(i), i);
        }
        WriteAll(AlbumFormat::StudioPlistPath(path), list.ToBytes().chopped(100));
    } else if (kind == QLatin1String("photos")) {
        QDir().mkpath(path);
        for (const char *name : {"drewnoakes-Canon_PowerShot_S330.jpg", "drewnoakes-HTC_Desire.jpg"})
            QFile::copy(Corpus + QLatin1String(name), path + u'/' + QLatin1String(name));
    } else if (kind == QLatin1String("newer first")) {
        // Names in the opposite order of the dates taken (2011, then 2002).
        QDir().mkpath(path);
        QFile::copy(Corpus + QStringLiteral("drewnoakes-HTC_Desire.jpg"), path + QStringLiteral("/a.jpg"));
        QFile::copy(Corpus + QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg"), path + QStringLiteral("/b.jpg"));
    } else if (kind != QLatin1String("missing") && kind != QLatin1String("new")) {
        QDir().mkpath(path);
        WriteAll(path + QStringLiteral("/notes.txt"), "not a photo");
    }
    return path;
}

QStringList Files(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next() + u' ' + QString::number(QFileInfo(it.filePath()).size());
    files.sort();
    return files;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
public slots:
    void OpenUrl(const QUrl &url) { opened << url; }

private slots:
    void commands_data();
    void commands();
    void options_data();
    void options();
    void quitDuringImport();

private:
    QList<QUrl> opened;
};

void MainWindowTest::commands_data()
{
    QTest::addColumn<QStringList>("recent");   // recent albums before the window opens
    QTest::addColumn<QStringList>("run");      // commands, in order
    QTest::addColumn<QStringList>("answers");  // the pickers' answers, in order
    QTest::addColumn<int>("windows");          // album windows open afterwards
    QTest::addColumn<int>("recentAfter");
    QTest::addColumn<int>("openedNumber");     // [System] OpenedAlbumsNumber
    QTest::addColumn<QString>("message");      // key in [OrvDocument] of the one message shown
    QTest::addColumn<QString>("shown");        // a window or file the command shows

    const QString fail = QStringLiteral("MessageFailToOpenAlbum");
    const QStringList none;
    QTest::newRow("open an album") << none << QStringList{"mnuFileOpen"} << QStringList{"album"} << 1 << 1 << 1 << "" << "";
    QTest::newRow("an open album is brought forward") << none << QStringList{"mnuFileOpen", "mnuFileOpen"} << QStringList{"album", "album"} << 1 << 1 << 2 << "" << "";
    QTest::newRow("cancelled picker") << none << QStringList{"mnuFileOpen"} << QStringList{""} << 0 << 0 << 0 << "" << "";
    QTest::newRow("plain folder is no album") << none << QStringList{"mnuFileOpen"} << QStringList{"plain"} << 0 << 0 << 0 << fail << "";
    QTest::newRow("damaged album") << none << QStringList{"mnuFileOpen"} << QStringList{"damaged"} << 0 << 0 << 0 << fail << "";
    QTest::newRow("damaged after its first screen") << none << QStringList{"mnuFileOpen"} << QStringList{"damaged late"} << 0 << 0 << 0 << fail << "";
    QTest::newRow("missing folder") << none << QStringList{"mnuFileOpen"} << QStringList{"missing"} << 0 << 0 << 0 << fail << "";
    QTest::newRow("folder opened as album") << none << QStringList{"mnuFileOpenFolder"} << QStringList{"plain"} << 1 << 1 << 1 << "" << "";
    QTest::newRow("new album") << none << QStringList{"mnuFileNew"} << QStringList{"new"} << 1 << 1 << 1 << "" << "";
    QTest::newRow("new album where a folder is") << none << QStringList{"mnuFileNew"} << QStringList{"plain"} << 0 << 0 << 0 << "MessageFailToCreateAlbum" << "";
    QTest::newRow("convert a folder of photos") << none << QStringList{"mnuFileConvert"} << QStringList{"photos"} << 1 << 1 << 1 << "" << "";
    QTest::newRow("arrange every open album by date taken") << none << QStringList{"mnuFileOpenFolder", "mnuFileOpenFolder", "mnuArrangeAllByTime"}
                                                            << QStringList{"newer first", "album"} << 2 << 2 << 2 << "" << "first b.jpg";
    QTest::newRow("open with: a photo into the album picked") << none << QStringList{"open with"} << QStringList{"album"} << 1 << 1 << 1 << ""
                                                             << "first drewnoakes-HTC_Desire.jpg";
    QTest::newRow("convert a folder with other files") << none << QStringList{"mnuFileConvert"} << QStringList{"plain"} << 0 << 0 << 0 << "MessageNon-photoContained" << "";
    QTest::newRow("close saves and closes") << none << QStringList{"mnuFileOpen", "mnuFileClose"} << QStringList{"album"} << 0 << 1 << 1 << "" << "";
    QTest::newRow("exit closes the albums") << none << QStringList{"mnuFileOpen", "mnuFileExit"} << QStringList{"album"} << 0 << 1 << 1 << "" << "";
    QTest::newRow("recent entry opens") << QStringList{"album"} << QStringList{"mnuRecentDoc1"} << none << 1 << 1 << 1 << "" << "";
    QTest::newRow("recent damaged album") << QStringList{"damaged"} << QStringList{"mnuRecentDoc1"} << none << 0 << 1 << 0 << fail << "";
    QTest::newRow("clear recent albums") << QStringList{"album", "plain"} << QStringList{"mnuClearRecentDocs"} << none << 0 << 0 << 0 << "" << "";
    QTest::newRow("welcome: one click opens") << QStringList{"album"} << QStringList{"welcome"} << none << 1 << 1 << 1 << "" << "";
    QTest::newRow("about shows the version") << none << QStringList{"mnuHelpAbout"} << none << 0 << 0 << 0 << "" << "frmAbout";
    QTest::newRow("options") << none << QStringList{"mnuOptions"} << none << 0 << 0 << 0 << "" << "frmOptions";
    QTest::newRow("user guide in the browser") << none << QStringList{"mnuHelpContents"} << none << 0 << 0 << 0 << "" << "guide/index.html";
}

void MainWindowTest::commands()
{
    QFETCH(QStringList, recent);
    QFETCH(QStringList, run);
    QFETCH(QStringList, answers);
    QFETCH(int, windows);
    QFETCH(int, recentAfter);
    QFETCH(int, openedNumber);
    QFETCH(QString, message);
    QFETCH(QString, shown);
    ScopedTestEnvironment environment;
    SettleUserDataAndLanguage();
    const QString documents = environment.Env().documents;
    for (int i = 0; i < recent.size(); ++i)
        WriteSetting(QStringLiteral("RecentDocs"), QStringLiteral("Doc%1").arg(i + 1), MakeFolder(documents, recent[i]));
    for (QString &answer : answers)
        answer = answer.isEmpty() ? answer : MakeFolder(documents, answer);
    const auto untouched = [&] {
        return Files(documents + QStringLiteral("/damaged")) + Files(documents + QStringLiteral("/damaged late")) +
               Files(documents + QStringLiteral("/plain"));
    };
    const QStringList before = untouched();
    opened.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "OpenUrl");

    QStringList messages;
    {
        MainWindow main;
        main.UseChooser(std::make_unique<ScriptedChooser>(answers));
        main.UsePrompter(std::make_unique<RecordingPrompter>(messages));
        main.show();
        for (const QString &command : run) {
            if (command == QLatin1String("open with")) {
                // A file manager's "Open with Orvana" on a photo in no album.
                const QString photo = documents + QStringLiteral("/drewnoakes-HTC_Desire.jpg");
                QFile::copy(Corpus + QStringLiteral("drewnoakes-HTC_Desire.jpg"), photo);
                main.ImportPhotosIntoAlbum({photo});
                QTRY_VERIFY(!main.IsOpening() && main.ActiveAlbum() && !main.ActiveAlbum()->IsWorking());
                continue;
            }
            if (command == QLatin1String("welcome")) {
                main.ShowWelcomeWindow();
                auto *list = main.findChild<QListWidget *>(QStringLiteral("RecentAlbums"));
                QVERIFY(list && list->count() == 1);
                QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
                QTRY_VERIFY(!main.IsOpening());
                continue;
            }
            QAction *action = main.Command(command);
            QVERIFY2(action && action->isVisible() && action->isEnabled(), qPrintable(command));
            action->trigger();
            QTRY_VERIFY(!main.IsOpening()); // albums are read on a worker thread
        }
        QVERIFY2(main.MDIChildren() == windows, qPrintable(messages.join(u'\n')));
        QCOMPARE(main.Command(QStringLiteral("mnuFileSave"))->isEnabled(), windows > 0);
        QCOMPARE(RecentDocs().Count(), recentAfter);
        const QMenu *recentMenu = main.findChild<QMenu *>(QStringLiteral("mnuRecentDocs"));
        const QList<QAction *> entries = recentMenu->actions();
        QCOMPARE(std::count_if(entries.begin(), entries.end(), [](const QAction *entry) { return entry->objectName().startsWith(QLatin1String("mnuRecentDoc")); }),
                 recentAfter);
        QCOMPARE(SettingInteger(ReadSetting(QStringLiteral("System"), QStringLiteral("OpenedAlbumsNumber"))), openedNumber);
        QCOMPARE(messages.size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QVERIFY2(messages[0].contains(GetLocalizedString(message, QStringLiteral("OrvDocument"))), qPrintable(messages[0]));
        if (shown.startsWith(QLatin1String("frm"))) {
            auto *window = main.findChild<QDialog *>(shown);
            QVERIFY(window && window->isVisible());
            if (shown == QLatin1String("frmAbout"))
                QVERIFY(window->findChild<QLabel *>(QStringLiteral("AboutVersion"))->text().contains(QLatin1String(OrvanaVersion)));
        } else if (shown.startsWith(QLatin1String("first "))) {
            const QList<AlbumWindow *> albums = main.AlbumWindows();
            QVERIFY(std::any_of(albums.begin(), albums.end(),
                                [&](AlbumWindow *album) { return album->Document().Record(QStringLiteral("File"), 1) == shown.mid(6); }));
        } else if (!shown.isEmpty()) {
            QCOMPARE(opened.size(), 1);
            QVERIFY(opened[0].toLocalFile().endsWith(shown) && QFileInfo::exists(opened[0].toLocalFile()));
        }

        // Every command on show has its caption, and an album command on show is one the album
        // window carries out.
        AlbumWindow *album = main.ActiveAlbum();
        QList<QAction *> onShow = main.menuBar()->actions();
        for (const QMenu *menu : main.menuBar()->findChildren<QMenu *>())
            onShow += menu->actions();
        for (const QAction *action : std::as_const(onShow)) {
            if (!action->isVisible() || action->isSeparator())
                continue;
            QVERIFY2(!action->text().isEmpty() && !action->text().startsWith(u'@') && action->text() != action->objectName(),
                     qPrintable(action->objectName() + u' ' + action->text()));
            if (const CommandRow *row = FindCommand(action->objectName()); row && row->route == Route::Album)
                QVERIFY(album && album->HasCommand(action->objectName()));
        }
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    // Refused folders are left exactly as they were.
    if (windows == 0 && !message.isEmpty() && message != QLatin1String("MessageNon-photoContained"))
        QCOMPARE(untouched(), before);
}

void MainWindowTest::options_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("stored"); // in the file before the window opens
    QTest::addColumn<QString>("chosen"); // what the user sets

    QTest::newRow("language") << "Language" << "Current" << "English" << "zh_CN";
    QTest::newRow("library folder") << "Library" << "MainPath" << "/photos/old" << "/photos/new";
    QTest::newRow("albums as windows") << "Layout" << "DocumentTabs" << "1" << "0";
    QTest::newRow("album format") << "System" << "DefaultAlbumFormat" << "0" << "1";
    QTest::newRow("check packages") << "System" << "CheckModifiedWhenOpenAlbum" << "0" << "1";
    QTest::newRow("check folders") << "System" << "CheckModifiedWhenOpenFolder" << "1" << "0";
    QTest::newRow("non-JPEG files") << "System" << "AllowNonJPEG" << "0" << "1";
    QTest::newRow("units") << "System" << "UnitSystem" << "M" << "E";
    QTest::newRow("globe viewer") << "GPS" << "EarthAppPath" << "/usr/bin/marble" << "/opt/google/earth/pro/google-earth-pro";
    QTest::newRow("map server") << "System" << "MapServer" << "maps.orvana.org" << "maps.orvana.cn";
    QTest::newRow("own map pages, no host") << "System" << "MapServer" << "" << "";
    QTest::newRow("login") << "System" << "SharedServerLoginName" << "ann" << "bob";
    QTest::newRow("password") << "System" << "SharedServerPassword" << "secret" << "s3cr3t";
}

void MainWindowTest::options()
{
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, stored);
    QFETCH(QString, chosen);
    ScopedTestEnvironment environment;
    SettleUserDataAndLanguage();
    WriteSetting(section, key, stored);
    MainWindow main;
    main.Command(QStringLiteral("mnuOptions"))->trigger();
    auto *window = main.findChild<QDialog *>(QStringLiteral("frmOptions"));
    QVERIFY(window && window->isVisible());
    QWidget *field = window->findChild<QWidget *>(key);
    QVERIFY(field);
    if (auto *check = qobject_cast<QCheckBox *>(field)) {
        QCOMPARE(check->isChecked(), stored == QLatin1String("1"));
        check->setChecked(chosen == QLatin1String("1"));
    } else if (auto *combo = qobject_cast<QComboBox *>(field)) {
        QCOMPARE(combo->currentData().toString(), stored);
        combo->setCurrentIndex(combo->findData(chosen));
    } else if (auto *line = qobject_cast<QLineEdit *>(field)) {
        QCOMPARE(QDir::fromNativeSeparators(line->text()), stored);
        line->setText(chosen);
    }
    window->accept();
    QCOMPARE(ReadSetting(section, key), chosen);
}

// Quitting while an album imports: the album waits for the photo in hand, saves and closes,
// and the program quits then, without being asked again. Every photo copied in has its record.
void MainWindowTest::quitDuringImport()
{
    ScopedTestEnvironment environment;
    SettleUserDataAndLanguage();
    const QString album = MakeFolder(environment.Env().documents, QStringLiteral("album"));
    MainWindow main;
    main.show();
    main.OpenDoc(album, false);
    QTRY_VERIFY(!main.IsOpening() && main.ActiveAlbum());
    main.ActiveAlbum()->ImportPaths({Corpus});
    QTRY_VERIFY_WITH_TIMEOUT(main.ActiveAlbum()->Document().RecordCount() > 2, 20000);
    QVERIFY(!main.close());
    QTRY_VERIFY_WITH_TIMEOUT(!main.isVisible(), 20000);
    QCOMPARE(main.MDIChildren(), 0);

    DataList saved;
    QVERIFY(saved.Load(AlbumFormat::StudioPlistPath(album)));
    QStringList records;
    for (int i = 1; i <= saved.ItemCount(); ++i)
        records << saved.GetItemProperty(QStringLiteral("File"), i);
    QStringList files = QDir(album).entryList(QDir::Files | QDir::NoDotAndDotDot);
    files.removeAll(QStringLiteral("Desktop.ini"));
    records.sort();
    files.sort();
    QVERIFY(records.size() > 2);
    QCOMPARE(records, files);
}

QTEST_MAIN(MainWindowTest)
#include "tst_MainWindow.moc"
