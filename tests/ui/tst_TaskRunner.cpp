#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "ui/common/DialogPrompter.h"
#include "ui/common/FtpTransfers.h"
#include "ui/common/ProgressWindow.h"
#include "ui/common/TaskRunner.h"
#include "ServerProcess.h"
#include "TestEnvironment.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

// Work on a worker thread through the runner, its progress window and its dialogs, compared with
// the same work run on one thread.

namespace {

// Appends one number per item to `list` through Apply; each number depends on the list so far,
// so a change run out of order shows, and is -1 when the change runs off the interface thread.
// Asks first whether to use squares when `ask` is set.
void CountInto(ProgressSink &sink, Prompter &prompter, QList<int> &list, int items, bool ask)
{
    sink.Begin(QStringLiteral("Counting"), items);
    const bool squares = ask && prompter.AskYesNo(QStringLiteral("Counting"), QStringLiteral("Squares?"));
    for (int item = 0; item < items && !sink.Cancelled(); ++item) {
        QThread::msleep(10);
        sink.Apply([&list, item, squares] {
            const bool interfaceThread = QThread::currentThread() == QCoreApplication::instance()->thread();
            list.append(interfaceThread ? static_cast<int>(list.size()) + (squares ? item * item : item) : -1);
        });
        sink.Advance(item + 1);
    }
    sink.End();
}

class Answering : public Prompter {
public:
    explicit Answering(bool answer) : yes(answer) {}
    bool AskYesNo(const QString &, const QString &) override { return yes; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return std::nullopt; }

private:
    bool yes;
};

} // namespace

class TaskRunnerTest : public QObject {
    Q_OBJECT
private slots:
    void work_data();
    void work();
    void ftpTransfers_data();
    void ftpTransfers();
};

void TaskRunnerTest::work_data()
{
    QTest::addColumn<int>("items");
    QTest::addColumn<bool>("ask");
    QTest::addColumn<QMessageBox::StandardButton>("answer");  // clicked in the question's dialog
    QTest::addColumn<bool>("cancel");                         // Cancel clicked once the window shows

    QTest::newRow("changes applied in order") << 30 << false << QMessageBox::NoButton << false;
    QTest::newRow("question answered Yes") << 10 << true << QMessageBox::Yes << false;
    QTest::newRow("question answered No") << 10 << true << QMessageBox::No << false;
    QTest::newRow("Cancel stops at the item in hand") << 1000 << false << QMessageBox::NoButton << true;
}

void TaskRunnerTest::work()
{
    QFETCH(int, items);
    QFETCH(bool, ask);
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(bool, cancel);
    ScopedTestEnvironment environment;

    QWidget owner;
    owner.show();
    TaskRunner runner(&owner);
    DialogPrompter prompter(&owner, runner.Calls());
    QList<int> list;
    QSignalSpy finished(&runner, &TaskRunner::Finished);
    QTimer user;
    connect(&user, &QTimer::timeout, [&] {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (auto *box = qobject_cast<QMessageBox *>(window); box && box->isVisible())
                QTest::mouseClick(box->button(answer), Qt::LeftButton);
        if (cancel && runner.Window() && runner.Window()->isVisible() && runner.Window()->CancelButton()->isEnabled()) {
            QCOMPARE(runner.Window()->CancelButton()->text(), GetLocalizedString(QStringLiteral("ButtonCancel"), QStringLiteral("Form")));
            QTest::mouseClick(runner.Window()->CancelButton(), Qt::LeftButton);
        }
    });
    user.start(20);

    QVERIFY(runner.Start(QStringLiteral("Processing"), [&](ProgressSink &sink) { CountInto(sink, prompter, list, items, ask); }));
    QVERIFY(finished.wait(30000));
    QCOMPARE(finished.first().first().toBool(), cancel);
    QVERIFY(!list.isEmpty());
    QCOMPARE(list.size() < items, cancel);

    // The same work on one thread, as far as the threaded run went.
    QList<int> oneThread;
    NoProgress quiet;
    Answering answering(answer == QMessageBox::Yes);
    CountInto(quiet, answering, oneThread, static_cast<int>(list.size()), ask);
    QCOMPARE(list, oneThread);
    QVERIFY(!runner.Running());
}

// Files sent to a real FTP server and fetched back on the runner's worker.
void TaskRunnerTest::ftpTransfers_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("moved");
    QTest::addColumn<QString>("error");

    QTest::newRow("sent and fetched back") << QString::fromLatin1(ServerProcess::Password) << 3 << QString();
    QTest::newRow("log-in refused") << QStringLiteral("wrong") << 0 << QStringLiteral("Invalid user or password.");
}

void TaskRunnerTest::ftpTransfers()
{
    QFETCH(QString, password);
    QFETCH(int, moved);
    QFETCH(QString, error);
    ServerProcess server(ServerProcess::Ftp);
    QVERIFY(server.Started());
    QTemporaryDir local;
    const QByteArray photo(300 * 1024, 'j');
    WriteAll(local.filePath(QStringLiteral("a.jpg")), photo);
    WriteAll(local.filePath(QStringLiteral("b.jpg")), "b");

    QWidget owner;
    TaskRunner runner(&owner);
    std::optional<FtpTransfersOutcome> outcome;
    const FtpSite site{QStringLiteral("127.0.0.1"), server.Port(), QString::fromLatin1(ServerProcess::User), password};
    const QList<FtpTransfer> transfers{{local.filePath(QStringLiteral("a.jpg")), QStringLiteral("/a.jpg")},
                                       {local.filePath(QStringLiteral("b.jpg")), QStringLiteral("/b.jpg")},
                                       {local.filePath(QStringLiteral("back.jpg")), QStringLiteral("/a.jpg"), false}};
    QVERIFY(StartFtpTransfers(runner, QStringLiteral("Uploading"), site, transfers, [&](const FtpTransfersOutcome &ended) { outcome = ended; }));
    QTRY_VERIFY_WITH_TIMEOUT(outcome.has_value(), 30000);
    QCOMPARE(outcome->moved, moved);
    QCOMPARE(outcome->error, error);
    QCOMPARE(outcome->cancelled, false);
    if (moved == 3)
        QCOMPARE(ReadAll(local.filePath(QStringLiteral("back.jpg"))), photo);
}

QTEST_MAIN(TaskRunnerTest)
#include "tst_TaskRunner.moc"
