#include "ui/publish/frmExport.h"
#include "ui/common/FileChooser.h"
#include "library/AlbumOpening.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "TestEnvironment.h"

#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

class NoChooser : public FileChooser {
public:
    QString ChooseFolder(QWidget *, const QString &, const QString &) override { return {}; }
    QString ChooseNewFolder(QWidget *, const QString &, const QString &, const QString &) override { return {}; }
    QStringList ChooseFiles(QWidget *, const QString &, const QString &) override { return {}; }
};

class Silent : public Prompter {
public:
    bool AskYesNo(const QString &, const QString &) override { return false; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return std::nullopt; }
};

} // namespace

// The export dialog's controls reach the album's options and the settings.
class ExportDialogTest : public QObject {
    Q_OBJECT
private slots:
    void continueButton_data();
    void continueButton();
};

void ExportDialogTest::continueButton_data()
{
    QTest::addColumn<bool>("standard");
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("the smallest and the largest size") << true << "128" << "20480" << true;
    QTest::newRow("one pixel too narrow") << true << "127" << "640" << false;
    QTest::newRow("one pixel too high") << true << "640" << "20481" << false;
    QTest::newRow("any text without the standard size") << false << "wide" << "" << true;
}

void ExportDialogTest::continueButton()
{
    ScopedTestEnvironment environment;
    QDir().mkpath(environment.UserData());
    const QString folder = environment.Root() + QStringLiteral("/Trip");
    QDir().mkpath(folder);
    Silent silent;
    NoProgress quiet;
    std::unique_ptr<AlbumDocument> album = OpenAlbumDocument(folder, {}, silent, quiet).document;
    QVERIFY(album);
    NoChooser chooser;
    frmExport dialog(chooser);
    dialog.InitWindowForWebSync(*album);
    // A first export with no recent server offers the defaults.
    const auto text = [&](const char *name) { return dialog.findChild<QLineEdit *>(QLatin1String(name)); };
    QCOMPARE(QStringList({text("TextServerAddress")->text(), text("TextLoginName")->text(), text("TextPassword")->text(),
                          text("TextDirectory")->text()}),
             QStringList({"127.0.0.1", "username", "", "orvserver"}));
    QCOMPARE(dialog.findChild<QPushButton *>(QStringLiteral("ButtonContinue"))->text(), QStringLiteral("Synchronize!"));

    QFETCH(bool, standard);
    dialog.findChild<QCheckBox *>(QStringLiteral("CheckSizeStandard"))->setChecked(standard);
    QFETCH(QString, width);
    QFETCH(QString, height);
    text("TextStdWidth")->setText(width);
    text("TextStdHeight")->setText(height);
    text("TextDirectory")->setText(QStringLiteral("web"));
    dialog.findChild<QCheckBox *>(QStringLiteral("CheckLeavePositionsOut"))->setChecked(true);
    QSignalSpy continued(&dialog, &frmExport::Continued);
    QFETCH(bool, accepted);
    QCOMPARE(dialog.ButtonContinue_Click(), accepted);
    QCOMPARE(continued.size(), accepted ? 1 : 0);
    QCOMPARE(dialog.findChild<QMessageBox *>() != nullptr, !accepted);
    QCOMPARE(album->List().GetDocumentProperty(QStringLiteral("_Exporter.LeavePositionsOut")), accepted ? "1" : "");
    QCOMPARE(ReadSetting(QStringLiteral("RecentFTP"), QStringLiteral("Directory")), accepted ? "web" : "");
}

QTEST_MAIN(ExportDialogTest)
#include "tst_Export.moc"
