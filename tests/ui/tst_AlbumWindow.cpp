#include "library/AlbumDocument.h"
#include "library/OrvAlbumImporter.h"
#include "app/ProgressSink.h"
#include "ui/album/AlbumWindow.h"
#include "ui/common/FileChooser.h"
#include "ui/common/ProgressWindow.h"
#include "ui/import/CameraImportWindow.h"
#include "TestEnvironment.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>

// The album window's bindings on a real album of corpus photos: a command reaches its library
// operation and the views show what it did.
class AlbumWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void bindings_data();
    void bindings();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
    QByteArray dataHome;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QStringList Photos = {"drewnoakes-Canon_PowerShot_S330.jpg", "exif-samples-DSCN0010.jpg", "drewnoakes-Nikon_D5000.jpg"};

std::unique_ptr<AlbumDocument> AlbumOfPhotos(const QString &folder)
{
    QDir().mkpath(folder);
    std::unique_ptr<AlbumDocument> album = AlbumDocument::Open(folder).document;
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    NoProgress quiet;
    QStringList paths;
    for (const QString &photo : Photos)
        paths << Corpus + photo;
    importer.ImportFiles(paths, quiet);
    album->SaveDocumentToFile();
    return album;
}

// Presses the button on the next message box, or types the text into the next line asked for,
// as the user would.
void Answer(QMessageBox::StandardButton button, const QString &text, QWidget *window)
{
    auto *poll = new QTimer(window);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, button, text] {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            poll->deleteLater();
            if (QAbstractButton *pressed = box->button(button))
                pressed->click();
            else
                box->reject();
        } else if (auto *line = qobject_cast<QInputDialog *>(modal)) {
            poll->deleteLater();
            line->setTextValue(text);
            line->accept();
        }
    });
    poll->start(10);
}

// The user's choice in the import pickers.
class ScriptedChooser : public FileChooser {
public:
    explicit ScriptedChooser(QStringList chosen) : paths(std::move(chosen)) {}
    QStringList ChooseFiles(QWidget *, const QString &, const QString &) override { return paths; }
    QString ChooseFolder(QWidget *, const QString &, const QString &) override { return paths.value(0); }
    QString ChooseNewFolder(QWidget *, const QString &, const QString &, const QString &) override { return {}; }

private:
    QStringList paths;
};

void DropFiles(QListView *grid, const QStringList &paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls << QUrl::fromLocalFile(path);
    data.setUrls(urls);
    const QPointF at = grid->viewport()->rect().center();
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(grid->viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(grid->viewport(), &drop);
}

// "yes" when the album as saved gives every photo file in its folder a record, and opening it
// again finds none to bring in.
QString EveryPhotoRecorded(const QString &folder)
{
    const AlbumDocument::OpenResult reopened = AlbumDocument::Open(folder);
    if (!reopened.document || !reopened.imported.imported.isEmpty())
        return QStringLiteral("files without records");
    QStringList files = QDir(reopened.document->PhotoFilesFolder())
                            .entryList({"*.jpg", "*.jpeg", "*.tif", "*.tiff", "*.png"}, QDir::Files);
    QStringList records = reopened.document->RecordFiles();
    files.sort();
    records.sort();
    return files == records && records.size() > Photos.size() ? QStringLiteral("yes") : records.join(u',');
}

void ClickRow(QListView *grid, int row)
{
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(row, 0)).center());
}

} // namespace

void AlbumWindowTest::init()
{
    environment = std::make_unique<ScopedTestEnvironment>();
    dataHome = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(environment->Root() + QStringLiteral("/data-home")));
}

void AlbumWindowTest::cleanup()
{
    if (dataHome.isNull())
        qunsetenv("XDG_DATA_HOME");
    else
        qputenv("XDG_DATA_HOME", dataHome);
    environment.reset();
}

void AlbumWindowTest::bindings_data()
{
    QTest::addColumn<QString>("drive");    // command, menu (the photo menu), search, note, keys, drop, cancel, close or camera
    QTest::addColumn<QString>("argument"); // command name, text typed, or keys pressed
    QTest::addColumn<int>("answer");       // the button pressed on the question, if one comes
    QTest::addColumn<QString>("probe");    // what the window shows afterwards
    QTest::addColumn<QString>("expected");

    const int ok = QMessageBox::Ok; // no question comes, or only a message
    QTest::newRow("arrange by name reorders the grid") << "command" << "mnuByFileDesc" << int(QMessageBox::Yes) << "first" << Photos[1];
    QTest::newRow("arrange refused keeps the order") << "command" << "mnuByFileDesc" << int(QMessageBox::No) << "first" << Photos[0];
    QTest::newRow("arrange by time, newest first") << "command" << "mnuByTimeDesc" << int(QMessageBox::Yes) << "first" << Photos[2];
    QTest::newRow("delete confirmed removes the row") << "command" << "mnuMoveToTrash" << int(QMessageBox::Yes) << "rows" << "2";
    QTest::newRow("delete refused keeps the row") << "command" << "mnuMoveToTrash" << int(QMessageBox::No) << "rows" << "3";
    QTest::newRow("note asked for the selected photo") << "command" << "mnuSetNotesForMultiselection" << int(QMessageBox::Ok) << "Description" << "By the sea";
    QTest::newRow("the photo menu's note") << "menu" << "mnuSetNotesForMultiselection" << int(QMessageBox::Ok) << "Description" << "By the sea";
    QTest::newRow("files chosen to import") << "command" << "mnuFileImport" << ok << "rows" << "5";
    QTest::newRow("folder chosen to import") << "command" << "mnuFolderImport" << ok << "rows" << "5";
    QTest::newRow("files dropped onto the grid") << "drop" << "" << ok << "rows" << "5";
    QTest::newRow("Cancel during an import keeps what came in") << "cancel" << "" << ok << "kept" << "yes";
    QTest::newRow("closing during an import loses nothing") << "close" << "" << ok << "kept" << "yes";
    QTest::newRow("camera import leaves out what the album holds") << "camera" << "" << ok << "rows" << "4";
    QTest::newRow("star reaches the selected record") << "command" << "mnuStarOn" << ok << "Star" << "1";
    QTest::newRow("a changed album says so in its caption") << "command" << "mnuStarOn" << ok << "caption" << "Trip*";
    QTest::newRow("search shows the count") << "search" << "nikon" << ok << "label" << "1 Items Found";
    QTest::newRow("search that finds nothing") << "search" << "no such photo" << ok << "label" << "0 Item Found";
    QTest::newRow("empty search changes nothing") << "search" << "" << ok << "label" << "Photos: 3";
    QTest::newRow("note typed in the side panel") << "note" << "At the lake" << ok << "Description" << "At the lake";
    QTest::newRow("Enter shows the detail view") << "keys" << "Return" << ok << "view" << "OrvDetailView";
    QTest::newRow("Escape goes back to the grid") << "keys" << "Return,Escape" << ok << "view" << "OrvThumbnailView";
}

void AlbumWindowTest::bindings()
{
    QFETCH(QString, drive);
    QFETCH(QString, argument);
    QFETCH(int, answer);
    QFETCH(QString, probe);
    QFETCH(QString, expected);

    AlbumWindow window(AlbumOfPhotos(environment->Root() + QStringLiteral("/Trip")));
    QString caption;
    connect(&window, &AlbumWindow::CaptionChanged, &window, [&caption](const QString &now) { caption = now; });
    window.resize(1000, 700);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto *grid = window.findChild<QListView *>(QStringLiteral("OrvThumbnailView"));
    QCOMPARE(grid->model()->rowCount(), 3);
    ClickRow(grid, 0);

    // Two photos, as files or in a folder of their own.
    const QString folder = environment->Root() + QStringLiteral("/Card");
    QDir().mkpath(folder);
    for (const QString &photo : {Photos[0], Photos[1]})
        QFile::copy(Corpus + photo, folder + u'/' + photo);
    const QStringList chosen = argument == QLatin1String("mnuFolderImport") ? QStringList{folder}
                                                                            : QStringList{Corpus + Photos[0], Corpus + Photos[1]};
    window.SetFileChooser(std::make_unique<ScriptedChooser>(chosen));
    // The import report, when a run brings one.
    Answer(QMessageBox::StandardButton(answer), expected, &window);
    if (drive == QLatin1String("command")) {
        QVERIFY(window.RunCommand(argument));
        QTRY_VERIFY_WITH_TIMEOUT(!window.IsWorking(), 60000);
    } else if (drive == QLatin1String("menu")) {
        // Every command of the photo menu is one the window carries out.
        QAction *chosen = nullptr;
        for (QAction *action : window.findChild<QMenu *>()->actions()) {
            if (!action->objectName().isEmpty())
                QVERIFY2(window.HasCommand(action->objectName()), qPrintable(action->objectName()));
            if (action->objectName() == argument)
                chosen = action;
        }
        QVERIFY(chosen);
        chosen->trigger();
    } else if (drive == QLatin1String("drop")) {
        DropFiles(grid, chosen);
        QTRY_VERIFY_WITH_TIMEOUT(!window.IsWorking(), 60000);
    } else if (drive == QLatin1String("camera")) {
        // A card with one photo the album holds and one it does not.
        const QString card = environment->Root() + QStringLiteral("/Card2");
        QDir().mkpath(card + QStringLiteral("/DCIM/100CANON"));
        for (const QString &photo : {Photos[0], QStringLiteral("exif-samples-DSCN0021.jpg")})
            QFile::copy(Corpus + photo, card + QStringLiteral("/DCIM/100CANON/") + photo);
        CameraImportWindow camera(card, {&window}, [&window](const QString &, const std::function<void(AlbumWindow *)> &opened) { opened(&window); });
        QTRY_VERIFY_WITH_TIMEOUT(!camera.IsListing() && camera.Photos().size() == 2, 20000);
        camera.findChild<QPushButton *>(QStringLiteral("Import"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(!window.IsWorking(), 20000);
    } else if (drive == QLatin1String("cancel") || drive == QLatin1String("close")) {
        // The corpus four times over (links, each under a name of its own): long enough that the
        // progress window comes up before the import ends.
        const QString many = environment->Root() + QStringLiteral("/Many");
        QDir().mkpath(many);
        for (const QString &photo : QDir(Corpus).entryList(QDir::Files)) {
            for (int copy = 0; copy < 4; ++copy)
                QFile::link(Corpus + photo, many + QStringLiteral("/%1-").arg(copy) + photo);
        }
        window.ImportPaths({many});
        // Stopped once the progress window is up and some photos are in.
        QTRY_VERIFY_WITH_TIMEOUT(window.findChild<ProgressWindow *>() && window.findChild<ProgressWindow *>()->isVisible(), 20000);
        QTRY_VERIFY_WITH_TIMEOUT(grid->model()->rowCount() > Photos.size(), 20000);
        if (drive == QLatin1String("cancel")) {
            window.findChild<ProgressWindow *>()->CancelButton()->click();
            QTRY_VERIFY_WITH_TIMEOUT(!window.IsWorking(), 20000);
        } else {
            QVERIFY(!window.CloseAlbum());
            QTRY_VERIFY_WITH_TIMEOUT(!window.isVisible(), 20000);
        }
    } else if (drive == QLatin1String("search")) {
        auto *search = window.findChild<QLineEdit *>(QStringLiteral("Search"));
        QTest::keyClicks(search, argument);
        QTest::keyClick(search, Qt::Key_Return);
    } else if (drive == QLatin1String("note")) {
        QTest::keyClicks(window.findChild<QPlainTextEdit *>(QStringLiteral("Description")), argument);
        ClickRow(grid, 1);
    } else {
        for (const QString &key : argument.split(u','))
            QTest::keyClick(QApplication::focusWidget(), key == QLatin1String("Return") ? Qt::Key_Return : Qt::Key_Escape);
    }

    QString shown;
    if (probe == QLatin1String("first"))
        shown = grid->model()->index(0, 0).data().toString();
    else if (probe == QLatin1String("rows"))
        shown = QString::number(grid->model()->rowCount());
    else if (probe == QLatin1String("label"))
        shown = window.findChild<QLabel *>(QStringLiteral("LabelNumber"))->text();
    else if (probe == QLatin1String("caption"))
        shown = caption;
    else if (probe == QLatin1String("kept"))
        shown = EveryPhotoRecorded(window.Path());
    else if (probe == QLatin1String("view"))
        shown = window.findChild<QStackedWidget *>()->currentWidget()->objectName();
    else
        shown = window.Document().Record(probe, 1);
    QCOMPARE(shown, expected);
}

QTEST_MAIN(AlbumWindowTest)
#include "tst_AlbumWindow.moc"
