#include "Language.h"
#include "Localize.h"
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
#include <functional>

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

using Probe = std::function<QString(QWidget *)>;

template <typename T>
Probe Text(const char *name, QString (T::*get)() const)
{
    return [name, get](QWidget *window) { return (window->findChild<T *>(QLatin1String(name))->*get)(); };
}

template <typename T>
Probe Family(const char *name)
{
    return [name](QWidget *window) { return window->findChild<T *>(QLatin1String(name))->font().family(); };
}

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
    QTest::addColumn<QString>("language");
    QTest::addColumn<Probe>("probe");
    QTest::addColumn<QString>("expected");

    const QString caption = QString::fromUtf8("\xE6\xA0\x87\xE9\xA2\x98");
    const QString tip = QString::fromUtf8("\xE6\x8F\x90\xE7\xA4\xBA");
    QTest::newRow("window caption") << "zh_CN" << Probe([](QWidget *w) { return w->windowTitle(); }) << QString::fromUtf8("\xE7\x9B\xB8\xE5\x86\x8C");
    QTest::newRow("label") << "zh_CN" << Text<QLabel>("label", &QLabel::text) << caption;
    QTest::newRow("label without @ unchanged") << "zh_CN" << Text<QLabel>("plain", &QLabel::text) << "Plain words";
    QTest::newRow("English when the language lacks it") << "zh_CN" << Text<QLabel>("fallback", &QLabel::text) << "From English";
    QTest::newRow("unknown key shows the key") << "zh_CN" << Text<QLabel>("unknown", &QLabel::text) << "Unknown";
    QTest::newRow("check box") << "zh_CN" << Text<QCheckBox>("check", &QCheckBox::text) << caption;
    QTest::newRow("radio button") << "zh_CN" << Text<QRadioButton>("radio", &QRadioButton::text) << caption;
    QTest::newRow("group box") << "zh_CN" << Text<QGroupBox>("group", &QGroupBox::title) << caption;
    QTest::newRow("push button") << "zh_CN" << Text<QPushButton>("push", &QPushButton::text) << caption;
    QTest::newRow("tool button") << "zh_CN" << Text<QToolButton>("tool", &QToolButton::text) << caption;
    QTest::newRow("line edit") << "zh_CN" << Text<QLineEdit>("line", &QLineEdit::text) << caption;
    QTest::newRow("text edit") << "zh_CN" << Text<QTextEdit>("text", &QTextEdit::toPlainText) << caption;
    QTest::newRow("menu title") << "zh_CN" << Text<QMenu>("menu", &QMenu::title) << QString::fromUtf8("\xE9\x80\x80\xE5\x87\xBA");
    QTest::newRow("menu entry") << "zh_CN" << Probe([](QWidget *w) { return w->findChild<QAction *>(QStringLiteral("exit"))->text(); }) << QString::fromUtf8("\xE9\x80\x80\xE5\x87\xBA");
    QTest::newRow("label tip") << "zh_CN" << Text<QLabel>("label", &QWidget::toolTip) << tip;
    QTest::newRow("push button tip") << "zh_CN" << Text<QPushButton>("push", &QWidget::toolTip) << tip;
    QTest::newRow("tool button tip") << "zh_CN" << Text<QToolButton>("tool", &QWidget::toolTip) << tip;
    QTest::newRow("line edit tip") << "zh_CN" << Text<QLineEdit>("line", &QWidget::toolTip) << tip;
    QTest::newRow("check box tip untouched") << "zh_CN" << Text<QCheckBox>("check", &QWidget::toolTip) << "@Tip";
    QTest::newRow("group box tip untouched") << "zh_CN" << Text<QGroupBox>("group", &QWidget::toolTip) << "@Tip";
    QTest::newRow("label font") << "zh_CN" << Family<QLabel>("label") << "Test Sans";
    QTest::newRow("check box font") << "zh_CN" << Family<QCheckBox>("check") << "Test Sans";
    QTest::newRow("line edit font") << "zh_CN" << Family<QLineEdit>("line") << "Test Sans";
    QTest::newRow("label font size") << "zh_CN" << Probe([](QWidget *w) { return QString::number(w->findChild<QLabel *>(QStringLiteral("label"))->font().pointSizeF()); }) << "13";
    QTest::newRow("English keeps the designed font") << "English" << Family<QLabel>("label") << QApplication::font().family();
    QTest::newRow("English caption") << "English" << Text<QLabel>("label", &QLabel::text) << "Caption in English";
}

void LocalizeFormTest::controls()
{
    QFETCH(QString, language);
    QFETCH(Probe, probe);
    QFETCH(QString, expected);
    ScopedTestEnvironment environment;
    environment.UseLanguageFiles({{QStringLiteral("English"), EnglishFile}, {QStringLiteral("zh_CN"), ChineseFile}});
    SetCurrentLanguage(language);
    const auto window = MakeWindow();
    LocalizeForm(window.get());
    QCOMPARE(probe(window.get()), expected);
}

QTEST_MAIN(LocalizeFormTest)
#include "tst_LocalizeForm.moc"
