#include "library/AlbumDocument.h"
#include "library/OrvAlbumImporter.h"
#include "app/ProgressSink.h"
#include "ui/album/AlbumWindow.h"
#include "TestEnvironment.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
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

// Presses the button on the next message box, as the user would.
void Answer(QMessageBox::StandardButton button)
{
    auto *poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, button] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            poll->deleteLater();
            box->button(button)->click();
        }
    });
    poll->start(10);
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
    QTest::addColumn<QString>("drive");    // command, search, note or keys
    QTest::addColumn<QString>("argument"); // command name, text typed, or keys pressed
    QTest::addColumn<int>("answer");       // the button pressed on the question, if one comes
    QTest::addColumn<QString>("probe");    // what the window shows afterwards
    QTest::addColumn<QString>("expected");

    const int none = QMessageBox::NoButton;
    QTest::newRow("arrange by name reorders the grid") << "command" << "mnuByFileDesc" << int(QMessageBox::Yes) << "first" << Photos[1];
    QTest::newRow("arrange refused keeps the order") << "command" << "mnuByFileDesc" << int(QMessageBox::No) << "first" << Photos[0];
    QTest::newRow("arrange by time, newest first") << "command" << "mnuByTimeDesc" << int(QMessageBox::Yes) << "first" << Photos[2];
    QTest::newRow("delete confirmed removes the row") << "command" << "mnuMoveToTrash" << int(QMessageBox::Yes) << "rows" << "2";
    QTest::newRow("delete refused keeps the row") << "command" << "mnuMoveToTrash" << int(QMessageBox::No) << "rows" << "3";
    QTest::newRow("star reaches the selected record") << "command" << "mnuStarOn" << none << "Star" << "1";
    QTest::newRow("a changed album says so in its caption") << "command" << "mnuStarOn" << none << "caption" << "Trip*";
    QTest::newRow("search shows the count") << "search" << "nikon" << none << "label" << "1 Items Found";
    QTest::newRow("search that finds nothing") << "search" << "no such photo" << none << "label" << "0 Item Found";
    QTest::newRow("empty search changes nothing") << "search" << "" << none << "label" << "Photos: 3";
    QTest::newRow("note typed in the side panel") << "note" << "At the lake" << none << "Description" << "At the lake";
    QTest::newRow("Enter shows the detail view") << "keys" << "Return" << none << "view" << "OrvDetailView";
    QTest::newRow("Escape goes back to the grid") << "keys" << "Return,Escape" << none << "view" << "OrvThumbnailView";
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

    if (drive == QLatin1String("command")) {
        if (answer != QMessageBox::NoButton)
            Answer(QMessageBox::StandardButton(answer));
        QVERIFY(window.RunCommand(argument));
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
    else if (probe == QLatin1String("view"))
        shown = window.findChild<QStackedWidget *>()->currentWidget()->objectName();
    else
        shown = window.Document().Record(probe, 1);
    QCOMPARE(shown, expected);
}

QTEST_MAIN(AlbumWindowTest)
#include "tst_AlbumWindow.moc"
