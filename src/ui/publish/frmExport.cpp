#include "ui/publish/frmExport.h"

#include "ui/publish/PublishWork.h"
#include "ui/publish/frmFTPLoginManager.h"
#include "ui/common/FileChooser.h"
#include "ui/Localize.h"
#include "publish/ServerTest.h"
#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"
#include "app/Language.h"
#include "app/Settings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <memory>

namespace {

QString ExportDialogText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("PublishAction"));
}

void ShowMessage(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    auto *box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

QString System(const char *key)
{
    return ReadSetting(QStringLiteral("System"), QLatin1String(key));
}

bool SharedAccountConfigured()
{
    return !System("SharedServer").isEmpty();
}

} // namespace

frmExport::frmExport(FileChooser &fileChooser, QWidget *parent)
    : QDialog(parent), chooser(fileChooser), favourites(new frmFTPLoginManager(this))
{
    setObjectName(QStringLiteral("frmExport"));
    Build();
    favourites->setFTPForm(this);
    LocalizeForm(this);
}

void frmExport::Build()
{
    setWindowTitle(QStringLiteral("@ExportWebAlbum"));
    // Options on the left, the server on the right: the dialog stays low enough for small screens.
    auto *layout = new QVBoxLayout(this);
    auto *columns = new QHBoxLayout;
    auto *left = new QVBoxLayout;
    columns->addLayout(left);
    layout->addLayout(columns);
    const auto check = [&](const char *name, QWidget *owner) {
        auto *box = new QCheckBox(QStringLiteral("@") + QLatin1String(name), owner);
        box->setObjectName(QLatin1String(name));
        return box;
    };
    // Every persisted option with a control gets its control here, by the option table.
    for (const ExportOption &option : ExportOptions()) {
        const QString control = QLatin1String(option.control);
        if (control.startsWith(QLatin1String("Check")))
            checks.insert(QLatin1String(option.name), check(option.control, this));
        else if (control.startsWith(QLatin1String("Text"))) {
            auto *text = new QLineEdit(this);
            text->setObjectName(control);
            texts.insert(QLatin1String(option.name), text);
        }
    }
    texts.value(QStringLiteral("FTPPassword"))->setEchoMode(QLineEdit::Password);

    auto *sizes = new QGroupBox(this);
    auto *sizeLayout = new QVBoxLayout(sizes);
    LabelResizeNote = new QLabel(sizes);
    LabelResizeNote->setWordWrap(true);
    sizeLayout->addWidget(LabelResizeNote);
    sizeLayout->addWidget(checks.value(QStringLiteral("NeedExportThumbnail")));
    sizeLayout->addWidget(checks.value(QStringLiteral("NeedExportPreview")));
    auto *standardRow = new QHBoxLayout;
    standardRow->addWidget(checks.value(QStringLiteral("NeedExportStandard")));
    for (const char *name : {"StandardWidth", "StandardHeight"}) {
        standardRow->addWidget(new QLabel(QStringLiteral("@") + QLatin1String(name), sizes));
        texts.value(QLatin1String(name))->setMaximumWidth(80);
        standardRow->addWidget(texts.value(QLatin1String(name)));
    }
    standardRow->addStretch();
    sizeLayout->addLayout(standardRow);
    sizeLayout->addWidget(checks.value(QStringLiteral("NeedExportFull")));
    CheckExportSelected = check("CheckExportSelected", sizes);
    CheckExportNoted = check("CheckExportNoted", sizes);
    sizeLayout->addWidget(CheckExportSelected);
    sizeLayout->addWidget(CheckExportNoted);
    sizeLayout->addWidget(checks.value(QStringLiteral("LeavePositionsOut")));
    left->addWidget(sizes);

    auto *mark = new QGroupBox(QStringLiteral("@Watermark"), this);
    auto *markLayout = new QHBoxLayout(mark);
    auto *picture = new QVBoxLayout;
    PictureWatermark = new QLabel(mark);
    PictureWatermark->setObjectName(QStringLiteral("PictureWatermark"));
    PictureWatermark->setFixedSize(96, 96);
    PictureWatermark->setAlignment(Qt::AlignCenter);
    PictureWatermark->setFrameShape(QFrame::StyledPanel);
    ButtonWatermark = new QPushButton(mark);
    ButtonWatermark->setObjectName(QStringLiteral("ButtonWatermark"));
    connect(ButtonWatermark, &QPushButton::clicked, this, &frmExport::ButtonWatermark_Click);
    picture->addWidget(PictureWatermark);
    picture->addWidget(ButtonWatermark);
    markLayout->addLayout(picture);
    auto *places = new QGridLayout;
    places->addWidget(checks.value(QStringLiteral("NeedAddWatermark")), 0, 0, 1, 2);
    places->addWidget(checks.value(QStringLiteral("PlaceWatermarkAtLeftTop")), 1, 0);
    places->addWidget(checks.value(QStringLiteral("PlaceWatermarkAtRightTop")), 1, 1);
    places->addWidget(checks.value(QStringLiteral("PlaceWatermarkAtCenter")), 2, 0, 1, 2, Qt::AlignHCenter);
    places->addWidget(checks.value(QStringLiteral("PlaceWatermarkAtLeftBottom")), 3, 0);
    places->addWidget(checks.value(QStringLiteral("PlaceWatermarkAtRightBottom")), 3, 1);
    markLayout->addLayout(places, 1);
    left->addWidget(mark);

    FrameServer = new QGroupBox(this);
    auto *server = new QVBoxLayout(FrameServer);
    OptionStandaloneServer = new QRadioButton(QStringLiteral("@OptionStandaloneServer"), FrameServer);
    OptionStandaloneServer->setObjectName(QStringLiteral("OptionStandaloneServer"));
    OptionSharedServer = new QRadioButton(QStringLiteral("@OptionSharedServer"), FrameServer);
    OptionSharedServer->setObjectName(QStringLiteral("OptionSharedServer"));
    server->addWidget(OptionStandaloneServer);
    auto *own = new QFormLayout;
    for (const auto &[label, name] : {std::pair("@ServerAddress", "FTPServerAddress"), std::pair("@LoginName", "FTPLoginName"),
                                      std::pair("@Password", "FTPPassword"), std::pair("@Directory", "FTPDirectory")})
        own->addRow(QLatin1String(label), texts.value(QLatin1String(name)));
    server->addLayout(own);
    auto *buttons = new QHBoxLayout;
    ButtonTest = new QPushButton(QStringLiteral("@ButtonTest"), FrameServer);
    ButtonTest->setObjectName(QStringLiteral("ButtonTest"));
    auto *save = new QPushButton(QStringLiteral("@ButtonSaveAsFavorite"), FrameServer);
    save->setObjectName(QStringLiteral("ButtonSaveAsFavorite"));
    ButtonFavorites = new QPushButton(QStringLiteral("@FavoriteServers"), FrameServer);
    ButtonFavorites->setObjectName(QStringLiteral("ButtonFavorites"));
    ButtonFavorites->setMenu(favourites->mnuItems());
    connect(ButtonTest, &QPushButton::clicked, this, &frmExport::ButtonTest_Click);
    connect(save, &QPushButton::clicked, this, &frmExport::ButtonSaveAsFavorite_Click);
    buttons->addWidget(ButtonTest);
    buttons->addWidget(save);
    buttons->addWidget(ButtonFavorites);
    buttons->addStretch();
    server->addLayout(buttons);
    server->addWidget(OptionSharedServer);
    auto *shared = new QFormLayout;
    TextSharedServerLoginName = new QLineEdit(FrameServer);
    TextSharedServerLoginName->setObjectName(QStringLiteral("TextSharedServerLoginName"));
    TextSharedServerPassword = new QLineEdit(FrameServer);
    TextSharedServerPassword->setObjectName(QStringLiteral("TextSharedServerPassword"));
    TextSharedServerPassword->setEchoMode(QLineEdit::Password);
    shared->addRow(QStringLiteral("@LoginName"), TextSharedServerLoginName);
    shared->addRow(QStringLiteral("@Password"), TextSharedServerPassword);
    server->addLayout(shared);
    CheckForceUpdateAll = check("CheckForceUpdateAll", FrameServer);
    server->addWidget(CheckForceUpdateAll);
    server->addStretch();
    columns->addWidget(FrameServer);

    auto *box = new QDialogButtonBox(this);
    ButtonContinue = box->addButton(QString(), QDialogButtonBox::AcceptRole);
    ButtonContinue->setObjectName(QStringLiteral("ButtonContinue"));
    box->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole);
    connect(box, &QDialogButtonBox::accepted, this, &frmExport::ButtonContinue_Click);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(box);
}

void frmExport::InitWindowForDocument(AlbumDocument &album)
{
    Init(album, false);
}

void frmExport::InitWindowForWebSync(AlbumDocument &album)
{
    Init(album, true);
}

void frmExport::Init(AlbumDocument &album, bool forWebSync)
{
    document = &album;
    webSync = forWebSync;
    arguments = AlbumExportArguments();
    LoadExportArguments(album.List(), arguments);
    const bool sharedConfigured = SharedAccountConfigured();
    if (arguments.FTPServerAddress.isEmpty()) {
        if (sharedConfigured)
            arguments.IsSharedServer = true;
        const RecentFtpServer recent = ReadRecentFtpServer();
        arguments.FTPServerAddress = recent.address.isEmpty() ? QStringLiteral("127.0.0.1") : recent.address;
        arguments.FTPLoginName = recent.login.isEmpty() ? QStringLiteral("username") : recent.login;
        arguments.FTPPassword = recent.password;
        arguments.FTPDirectory = recent.directory.isEmpty() ? QStringLiteral("orvserver") : recent.directory;
    }
    for (const ExportOption &option : ExportOptions()) {
        const QString text = ExportOptionText(arguments, option);
        if (QCheckBox *box = checks.value(QLatin1String(option.name)))
            box->setChecked(text == QLatin1String("1"));
        else if (QLineEdit *edit = texts.value(QLatin1String(option.name)))
            edit->setText(text);
    }
    (!sharedConfigured || !arguments.IsSharedServer ? OptionStandaloneServer : OptionSharedServer)->setChecked(true);
    OptionSharedServer->setEnabled(sharedConfigured);
    TextSharedServerLoginName->setText(System("SharedServerLoginName"));
    TextSharedServerPassword->setText(System("SharedServerPassword"));

    LabelResizeNote->setText(ExportDialogText(forWebSync ? "ResizeNoteForWebSync" : "ResizeNoteForAlbumExport"));
    checks.value(QStringLiteral("NeedExportFull"))->setText(ExportDialogText(forWebSync ? "KeepOriginalForWebSync" : "KeepOriginalForAlbumExport"));
    CheckExportSelected->setText(ExportDialogText(forWebSync ? "OnlyUploadSelected" : "OnlyExportSelected"));
    CheckExportNoted->setText(ExportDialogText(forWebSync ? "OnlyUploadNoted" : "OnlyExportNoted"));
    ButtonContinue->setText(ExportDialogText(forWebSync ? "Synchronize!" : "Export!"));
    ButtonContinue->setToolTip(ExportDialogText(forWebSync ? "TipSynchronize!" : "TipExport!"));
    if (forWebSync)
        setWindowTitle(ExportDialogText("WebSync"));
    FrameServer->setVisible(forWebSync);
    ShowWatermark();
}

QString frmExport::WatermarkPath() const
{
    return document ? AlbumFormat::StudioDataPath(document->Path()) + QStringLiteral("/watermark.png") : QString();
}

void frmExport::ShowWatermark()
{
    const QPixmap picture(WatermarkPath());
    PictureWatermark->setPixmap(picture.isNull() ? QPixmap() : picture.scaled(PictureWatermark->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    ButtonWatermark->setText(picture.isNull() ? ExportDialogText("BrowseWaterMark") + QStringLiteral("...") : ExportDialogText("RemoveWaterMark"));
}

void frmExport::ButtonWatermark_Click()
{
    if (QFile::exists(WatermarkPath())) {
        QFile::remove(WatermarkPath());
    } else {
        const QStringList chosen = chooser.ChooseFiles(this, ExportDialogText("BrowseWaterMark"), QString());
        // Any picture the desktop reads is kept as the album's PNG mark.
        if (!chosen.isEmpty())
            QPixmap(chosen.constFirst()).save(WatermarkPath(), "PNG");
    }
    ShowWatermark();
}

void frmExport::SetServerFields(const QString &address, const QString &login, const QString &password, const QString &directory)
{
    texts.value(QStringLiteral("FTPServerAddress"))->setText(address);
    texts.value(QStringLiteral("FTPLoginName"))->setText(login);
    texts.value(QStringLiteral("FTPPassword"))->setText(password);
    texts.value(QStringLiteral("FTPDirectory"))->setText(directory);
}

AlbumExportArguments frmExport::ArgumentsFromControls() const
{
    AlbumExportArguments chosen = arguments;
    for (const ExportOption &option : ExportOptions()) {
        if (const QCheckBox *box = checks.value(QLatin1String(option.name)))
            SetExportOptionText(chosen, option, box->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
        else if (const QLineEdit *edit = texts.value(QLatin1String(option.name)))
            SetExportOptionText(chosen, option, edit->text());
    }
    chosen.OnlySelected = CheckExportSelected->isChecked();
    chosen.OnlyNoted = CheckExportNoted->isChecked();
    chosen.IsSharedServer = OptionSharedServer->isChecked();
    chosen.ForceUpdateAll = webSync && CheckForceUpdateAll->isChecked();
    return chosen;
}

bool frmExport::ButtonContinue_Click()
{
    if (checks.value(QStringLiteral("NeedExportStandard"))->isChecked()
        && !(IsValidStandardSize(texts.value(QStringLiteral("StandardWidth"))->text())
             && IsValidStandardSize(texts.value(QStringLiteral("StandardHeight"))->text()))) {
        ShowMessage(this, QMessageBox::Warning, windowTitle(), ExportDialogText("MessageSizeIsInvalid"));
        return false;
    }
    arguments = ArgumentsFromControls();
    if (arguments.IsSharedServer) {
        WriteSetting(QStringLiteral("System"), QStringLiteral("SharedServerLoginName"), TextSharedServerLoginName->text());
        WriteSetting(QStringLiteral("System"), QStringLiteral("SharedServerPassword"), TextSharedServerPassword->text());
    }
    if (document)
        document->SetDocumentProperties(ExportProperties(arguments));
    WriteRecentFtpServer({arguments.FTPServerAddress, arguments.FTPLoginName, arguments.FTPPassword, arguments.FTPDirectory});
    accept();
    emit Continued(arguments);
    return true;
}

void frmExport::ButtonTest_Click()
{
    const AlbumExportArguments entered = ArgumentsFromControls();
    const QString identification = document ? document->List().GetDocumentProperty(QStringLiteral("Identification")) : QString();
    auto report = std::make_shared<ServerTestReport>();
    ButtonTest->setEnabled(false);
    StartPublishWork(
        this, GetLocalizedString(QStringLiteral("Connecting"), QStringLiteral("General")),
        [entered, identification, report](ProgressSink &, Prompter &) {
            *report = TestPublishingServer(entered.FTPServerAddress, entered.FTPLoginName, entered.FTPPassword,
                                           entered.FTPDirectory, identification);
        },
        [this, report] {
            ButtonTest->setEnabled(true);
            const bool ready = report->readiness == ServerReadiness::Ready || report->readiness == ServerReadiness::AlbumExists;
            ShowMessage(this, ready ? QMessageBox::Information : QMessageBox::Warning, windowTitle(), ServerTestMessage(*report));
        });
}

void frmExport::ButtonSaveAsFavorite_Click()
{
    const AlbumExportArguments entered = ArgumentsFromControls();
    favourites->addFavoriteServer(entered.FTPServerAddress, entered.FTPLoginName, entered.FTPPassword, entered.FTPDirectory);
    favourites->ListFavoriteName();
    favourites->SaveFavoriteServerList();
    ShowMessage(this, QMessageBox::Information, windowTitle(), GetLocalizedString(QStringLiteral("MessageFavoriteServerIsSaved"), QStringLiteral("Website")));
}
