#include "app/Language.h"
#include "ui/Localize.h"
#include "TestEnvironment.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

class LocalizeFormTest : public QObject {
    Q_OBJECT
private slots:
    void controls_data();
    void controls();
};

namespace {

const QByteArray EnglishFile =
    "[OrvDocument]\nLanguageName=English\n"
    "[Form]\nTitle=Albums\nCaption=Caption in English\nTip=Tip in English\nOnlyEnglish=From English\n"
    "[Menu]\nmnuFileExit=E&xit\n";
const QByteArray ChineseFile =
    "[OrvDocument]\nLanguageName=zh_CN\n"
    "[System]\nFontName=Test Sans\nFontSize=13\n"
    "[Form]\nTitle=\xE7\x9B\xB8\xE5\x86\x8C\nCaption=\xE6\xA0\x87\xE9\xA2\x98\nTip=\xE6\x8F\x90\xE7\xA4\xBA\n"
    "[Menu]\nmnuFileExit=\xE9\x80\x80\xE5\x87\xBA\n";

// A window with one control of every kind, captions and tips all placeholders.
std::unique_ptr<QWidget> MakeWindow()
{
    auto window = std::make_unique<QWidget>();
    window->setWindowTitle(QStringLiteral("@Title"));
    auto *layout = new QVBoxLayout(window.get());
    auto add = [&](QWidget *control, const char *name, const char *tip = "@Tip") {
        control->setObjectName(QLatin1String(name));
        control->setToolTip(QLatin1String(tip));
        layout->addWidget(control);
    };
    add(new QLabel(QStringLiteral("@Caption")), "label");
    add(new QLabel(QStringLiteral("Plain words")), "plain");
    add(new QLabel(QStringLiteral("@OnlyEnglish")), "fallback");
    add(new QLabel(QStringLiteral("@Unknown")), "unknown");
    add(new QCheckBox(QStringLiteral("@Caption")), "check");
    add(new QRadioButton(QStringLiteral("@Caption")), "radio");
    add(new QGroupBox(QStringLiteral("@Caption")), "group");
    add(new QPushButton(QStringLiteral("@Caption")), "push");
    auto *tool = new QToolButton;
    tool->setText(QStringLiteral("@Caption"));
    add(tool, "tool");
    add(new QLineEdit(QStringLiteral("@Caption")), "line");
    add(new QTextEdit(QStringLiteral("@Caption")), "text");
    auto *menuBar = new QMenuBar(window.get());
    QMenu *menu = menuBar->addMenu(QStringLiteral("@mnuFileExit"));
    menu->setObjectName(QStringLiteral("menu"));
    menu->addAction(QStringLiteral("@mnuFileExit"))->setObjectName(QStringLiteral("exit"));
    return window;
}

} // namespace

void LocalizeFormTest::controls_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QByteArray>("property"); // where the control keeps its caption
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("tip");
    QTest::addColumn<bool>("font");           // takes the language's font

    const QString title = QString::fromUtf8("\xE6\xA0\x87\xE9\xA2\x98");
    const QString tip = QString::fromUtf8("\xE6\x8F\x90\xE7\xA4\xBA");
    const QString exit = QString::fromUtf8("\xE9\x80\x80\xE5\x87\xBA");
    QTest::newRow("label") << "label" << QByteArray("text") << title << tip << true;
    QTest::newRow("caption without @ unchanged") << "plain" << QByteArray("text") << "Plain words" << tip << true;
    QTest::newRow("English when the language lacks it") << "fallback" << QByteArray("text") << "From English" << tip << true;
    QTest::newRow("unknown key shows the key") << "unknown" << QByteArray("text") << "Unknown" << tip << true;
    QTest::newRow("check box: its tip untouched") << "check" << QByteArray("text") << title << "@Tip" << true;
    QTest::newRow("group box") << "group" << QByteArray("title") << title << "@Tip" << true;
    QTest::newRow("push button") << "push" << QByteArray("text") << title << tip << true;
    QTest::newRow("tool button") << "tool" << QByteArray("text") << title << tip << true;
    QTest::newRow("line edit") << "line" << QByteArray("text") << title << tip << true;
    QTest::newRow("text edit") << "text" << QByteArray("plainText") << title << tip << true;
    QTest::newRow("menu: Menu section, designed font") << "menu" << QByteArray("title") << exit << "" << false;
    QTest::newRow("menu entry") << "exit" << QByteArray("text") << exit << "" << false;
}

void LocalizeFormTest::controls()
{
    QFETCH(QString, control);
    QFETCH(QByteArray, property);
    QFETCH(QString, caption);
    QFETCH(QString, tip);
    QFETCH(bool, font);
    ScopedTestEnvironment environment;
    environment.UseLanguageFiles({{QStringLiteral("English"), EnglishFile}, {QStringLiteral("zh_CN"), ChineseFile}});
    SetCurrentLanguage(QStringLiteral("zh_CN"));
    const auto window = MakeWindow();
    LocalizeForm(window.get());
    QCOMPARE(window->windowTitle(), QString::fromUtf8("\xE7\x9B\xB8\xE5\x86\x8C"));
    QObject *object = window->findChild<QObject *>(control);
    QVERIFY(object);
    QCOMPARE(object->property(property.constData()).toString(), caption);
    if (auto *widget = qobject_cast<QWidget *>(object)) {
        QCOMPARE(widget->toolTip(), tip);
        QCOMPARE(widget->font().family() == QLatin1String("Test Sans"), font);
        QCOMPARE(widget->font().pointSizeF() == 13, font);
    }

    // English names no font: the designed one stays.
    SetCurrentLanguage(QStringLiteral("English"));
    const auto english = MakeWindow();
    LocalizeForm(english.get());
    QCOMPARE(english->findChild<QLabel *>(QStringLiteral("label"))->font().family(), QApplication::font().family());
}

QTEST_MAIN(LocalizeFormTest)
#include "tst_LocalizeForm.moc"
