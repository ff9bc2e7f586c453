#include "ui/main/OptionsWindow.h"

#include "ui/common/FileChooser.h"
#include "ui/Localize.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"
#include "app/Settings.h"
#include "library/KeptOriginals.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString Options = QStringLiteral("Options");
const QString SystemSection = QStringLiteral("System");

enum class Kind { Check, Choice, Text, Password, Folder, Program };

struct Choice {
    QString value;
    QString caption;
};

struct Row {
    QString group; // caption key of the box it sits in
    QString section, key;
    QString caption;
    Kind kind;
    QList<Choice> choices;
};

QString Caption(const QString &key)
{
    return GetLocalizedString(key, Options);
}

// Every folder of Resources that holds a language file, shown by its folder name.
QList<Choice> Languages()
{
    QList<Choice> choices;
    const QDir resources(ResourcesFolder());
    for (const QString &folder : resources.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (QFileInfo::exists(LanguageFilePath(folder)))
            choices << Choice{folder, folder};
    }
    return choices;
}

// The three map servers are values of the installed configuration, not of the program. The
// first choice, an empty MapServer, is Orvana's own map pages served on this computer: nothing
// goes to a map host the user did not choose.
QList<Choice> MapServers()
{
    QList<Choice> choices{Choice{QString(), Caption(QStringLiteral("MapServerOwn"))}};
    for (int i = 1; i <= 3; ++i) {
        const QString host = ProfileFile::ReadString(ResourcesFolder() + QStringLiteral("/Services.ini"), QStringLiteral("MapServer"),
                                                     QStringLiteral("Host%1").arg(i));
        if (!host.isEmpty())
            choices << Choice{host, host};
    }
    return choices;
}

QList<Row> Rows()
{
    const QString general = QStringLiteral("GroupGeneral");
    const QString albums = QStringLiteral("GroupAlbums");
    const QString online = QStringLiteral("GroupOnline");
    return {
        {general, QStringLiteral("Language"), QStringLiteral("Current"), Caption(QStringLiteral("Language")), Kind::Choice, Languages()},
        {general, QStringLiteral("Library"), QStringLiteral("MainPath"), Caption(QStringLiteral("LibraryFolder")), Kind::Folder, {}},
        {general, QStringLiteral("Layout"), QStringLiteral("DocumentTabs"), Caption(QStringLiteral("DocumentTabs")), Kind::Check, {}},
        {general, SystemSection, QStringLiteral("UnitSystem"), Caption(QStringLiteral("UnitSystem")), Kind::Choice,
         {{QStringLiteral("M"), Caption(QStringLiteral("UnitMetric"))}, {QStringLiteral("E"), Caption(QStringLiteral("UnitEnglish"))}}},
        {general, QStringLiteral("GPS"), QStringLiteral("EarthAppPath"), Caption(QStringLiteral("EarthAppPath")), Kind::Program, {}},
        {albums, SystemSection, QStringLiteral("DefaultAlbumFormat"), Caption(QStringLiteral("AlbumFormat")), Kind::Choice,
         {{QStringLiteral("0"), Caption(QStringLiteral("AlbumFormatFolder"))}, {QStringLiteral("1"), Caption(QStringLiteral("AlbumFormatPackage"))}}},
        {albums, SystemSection, QStringLiteral("CheckModifiedWhenOpenAlbum"), Caption(QStringLiteral("CheckModifiedWhenOpenAlbum")), Kind::Check, {}},
        {albums, SystemSection, QStringLiteral("CheckModifiedWhenOpenFolder"), Caption(QStringLiteral("CheckModifiedWhenOpenFolder")), Kind::Check, {}},
        {albums, SystemSection, QStringLiteral("AllowNonJPEG"), Caption(QStringLiteral("AllowNonJPEG")), Kind::Check, {}},
        {online, SystemSection, QStringLiteral("MapServer"), Caption(QStringLiteral("MapServer")), Kind::Choice, MapServers()},
        {online, SystemSection, QStringLiteral("SharedServerLoginName"), Caption(QStringLiteral("SharedServerLoginName")), Kind::Text, {}},
        {online, SystemSection, QStringLiteral("SharedServerPassword"), Caption(QStringLiteral("SharedServerPassword")), Kind::Password, {}},
    };
}

// A stored value that only reads as a number ("7" for the album format) picks its choice by number.
int ChoiceIndex(const QList<Choice> &choices, const QString &stored)
{
    for (int i = 0; i < choices.size(); ++i) {
        if (choices[i].value.compare(stored, Qt::CaseInsensitive) == 0)
            return i;
    }
    return 0; // absent: the first choice is each key's default (metric, folder albums, ...)
}

} // namespace

OptionsWindow::OptionsWindow(FileChooser &folders, const QStringList &openAlbums, QWidget *parent)
    : QDialog(parent), chooser(folders), albums(openAlbums)
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("@Options"));
    AddRows();
    LocalizeForm(this);
}

void OptionsWindow::AddRows()
{
    auto *layout = new QVBoxLayout(this);
    QFormLayout *form = nullptr;
    QString group;
    for (const Row &row : Rows()) {
        if (row.group != group) {
            group = row.group;
            auto *box = new QGroupBox(Caption(group), this);
            form = new QFormLayout(box);
            layout->addWidget(box);
        }
        const QString stored = ReadSetting(row.section, row.key);
        Field field{row.section, row.key, {}};
        switch (row.kind) {
        case Kind::Check: {
            auto *check = new QCheckBox(row.caption, this);
            // DocumentTabs is on unless written "0"; the others are off unless non-zero.
            check->setChecked(row.key == QLatin1String("DocumentTabs") ? stored != QLatin1String("0") : SettingInteger(stored) != 0);
            field.value = [check] { return check->isChecked() ? QStringLiteral("1") : QStringLiteral("0"); };
            check->setObjectName(row.key);
            form->addRow(check);
            break;
        }
        case Kind::Choice: {
            auto *combo = new QComboBox(this);
            for (const Choice &choice : row.choices)
                combo->addItem(choice.caption, choice.value);
            const QString numeric = row.key == QLatin1String("DefaultAlbumFormat") ? QString::number(SettingInteger(stored) != 0 ? 1 : 0) : stored;
            combo->setCurrentIndex(ChoiceIndex(row.choices, numeric));
            field.value = [combo] { return combo->currentData().toString(); };
            combo->setObjectName(row.key);
            form->addRow(row.caption, combo);
            break;
        }
        case Kind::Text:
        case Kind::Password: {
            auto *line = new QLineEdit(stored, this);
            if (row.kind == Kind::Password)
                line->setEchoMode(QLineEdit::Password);
            field.value = [line] { return line->text(); };
            line->setObjectName(row.key);
            form->addRow(row.caption, line);
            break;
        }
        case Kind::Folder:
        case Kind::Program: {
            auto *line = new QLineEdit(QDir::toNativeSeparators(stored), this);
            line->setObjectName(row.key);
            line->setMinimumWidth(320);
            auto *browse = new QToolButton(this);
            browse->setText(QStringLiteral("..."));
            connect(browse, &QToolButton::clicked, this, [this, line, caption = row.caption, program = row.kind == Kind::Program] {
                const QString start = QDir::fromNativeSeparators(line->text());
                const QString folder = start.isEmpty() ? QDir::homePath() : QFileInfo(start).absolutePath();
                const QString chosen = program ? chooser.ChooseFiles(this, caption, folder).value(0) : chooser.ChooseFolder(this, caption, start);
                if (!chosen.isEmpty())
                    line->setText(QDir::toNativeSeparators(chosen));
            });
            auto *pair = new QHBoxLayout;
            pair->addWidget(line, 1);
            pair->addWidget(browse);
            field.value = [line] { return QDir::fromNativeSeparators(line->text().trimmed()); };
            form->addRow(row.caption, pair);
            break;
        }
        }
        fields << field;
    }
    AddOriginals(layout);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("@ButtonOK"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

// Only the open albums: the window knows no others, and sizing every album of the library
// would mean walking the whole library folder.
void OptionsWindow::AddOriginals(QLayout *layout)
{
    auto *box = new QGroupBox(Caption(QStringLiteral("GroupOriginals")), this);
    auto *row = new QHBoxLayout(box);
    originalsRoom = new QLabel(this);
    originalsRoom->setObjectName(QStringLiteral("KeptOriginalsRoom"));
    auto *letGo = new QPushButton(Caption(QStringLiteral("LetOriginalsGo")), this);
    letGo->setObjectName(QStringLiteral("LetOriginalsGo"));
    row->addWidget(originalsRoom, 1);
    row->addWidget(letGo);
    layout->addWidget(box);
    ShowOriginalsRoom();
    connect(letGo, &QPushButton::clicked, this, [this] {
        auto *question = new QMessageBox(QMessageBox::Question, Caption(QStringLiteral("GroupOriginals")),
                                         Caption(QStringLiteral("MessageLetOriginalsGo")), QMessageBox::Yes | QMessageBox::No, this);
        question->setAttribute(Qt::WA_DeleteOnClose);
        connect(question, &QMessageBox::finished, this, [this](int answer) {
            if (answer != QMessageBox::Yes)
                return;
            for (const QString &album : std::as_const(albums))
                KeptOriginals::LetGo(album);
            ShowOriginalsRoom();
        });
        question->open();
    });
}

void OptionsWindow::ShowOriginalsRoom()
{
    qint64 bytes = 0;
    for (const QString &album : std::as_const(albums))
        bytes += KeptOriginals::RoomTaken(album);
    originalsRoom->setText(Caption(QStringLiteral("KeptOriginalsRoom")).arg(QLocale().formattedDataSize(bytes)));
}

void OptionsWindow::accept()
{
    for (const Field &field : std::as_const(fields))
        WriteSetting(field.section, field.key, field.value());
    QDialog::accept();
}
