#include "ui/import/CameraImportWindow.h"

#include "ui/album/AlbumWindow.h"
#include "ui/common/FileChooser.h"
#include "ui/common/TaskRunner.h"
#include "ui/import/CardPreviews.h"

#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProgressSink.h"
#include "app/Settings.h"
#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QPointer>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int PreviewSize = 128;
// The entries after the albums in the target list.
constexpr int OtherAlbum = -1;
constexpr int NewAlbum = -2;

QString FormText(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("Form"));
}

QString Text(const char *key, const char *section)
{
    return GetLocalizedString(QString::fromLatin1(key), QString::fromLatin1(section));
}

} // namespace

void ShowCameraImport(QWidget *parent, const QString &device, const QList<AlbumWindow *> &openAlbums,
                      OpenAlbumWindow openAlbum)
{
    auto *window = new CameraImportWindow(device, openAlbums, std::move(openAlbum), parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

CameraImportWindow::CameraImportWindow(const QString &device, const QList<AlbumWindow *> &openAlbums,
                                       OpenAlbumWindow opener, QWidget *parent)
    : QDialog(parent), openAlbum(std::move(opener)), runner(std::make_unique<TaskRunner>(this)), chooser(std::make_unique<DialogFileChooser>()),
      previews(new CardPreviews(this)), cards(new QComboBox(this)), targets(new QComboBox(this)),
      grid(new QListWidget(this)), status(new QLabel(this))
{
    setObjectName(QStringLiteral("CameraImportWindow"));
    setWindowTitle(FormText("CameraImport"));
    cards->setObjectName(QStringLiteral("Cards"));
    targets->setObjectName(QStringLiteral("TargetAlbum"));
    grid->setObjectName(QStringLiteral("CardPhotos"));
    grid->setViewMode(QListView::IconMode);
    grid->setIconSize({PreviewSize, PreviewSize});
    // Room under the picture for a long name on two lines and the mark of a photo already in the album.
    grid->setGridSize({PreviewSize + 72, PreviewSize + 64});
    grid->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    grid->setResizeMode(QListView::Adjust);
    grid->setMovement(QListView::Static);
    grid->setUniformItemSizes(true);
    // Names are shortened here to one line, so that the mark under them always shows.
    grid->setWordWrap(false);
    grid->setTextElideMode(Qt::ElideNone);

    // A device named on the command line is the only card offered.
    const QStringList found = device.isEmpty() ? CameraVolumes() : QStringList{device};
    for (const QString &card : found)
        cards->addItem(QDir::toNativeSeparators(card), card);
    for (AlbumWindow *album : openAlbums)
        AddTarget(album);
    targets->addItem(FormText("CameraOtherAlbum"), OtherAlbum);
    targets->addItem(Text("mnuFileNew", "Menu"), NewAlbum);
    lastTarget = openAlbums.isEmpty() ? -1 : 0;
    targets->setCurrentIndex(lastTarget);

    auto *form = new QFormLayout;
    form->addRow(FormText("CameraCard"), cards);
    form->addRow(FormText("CameraTargetAlbum"), targets);
    auto *buttons = new QDialogButtonBox(this);
    import = buttons->addButton(FormText("CameraImportButton"), QDialogButtonBox::AcceptRole);
    import->setObjectName(QStringLiteral("Import"));
    buttons->addButton(FormText("ButtonCancel"), QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(grid, 1);
    layout->addWidget(status);
    layout->addWidget(buttons);
    resize(760, 560);

    connect(buttons, &QDialogButtonBox::accepted, this, &CameraImportWindow::ImportChecked);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(cards, &QComboBox::currentIndexChanged, this, &CameraImportWindow::ListCard);
    connect(targets, &QComboBox::activated, this, &CameraImportWindow::TargetChosen);
    connect(runner.get(), &TaskRunner::Finished, this, &CameraImportWindow::ShowPhotos);
    connect(previews, &CardPreviews::PreviewReady, this, [this](int index, const QImage &picture) {
        if (QListWidgetItem *item = grid->item(index); item && !picture.isNull())
            item->setIcon(QIcon(QPixmap::fromImage(picture)));
    });

    if (found.isEmpty())
        status->setText(FormText("CameraNoCard"));
    else
        ListCard();
}

CameraImportWindow::~CameraImportWindow() = default;

bool CameraImportWindow::IsListing() const
{
    return runner->Running();
}

AlbumWindow *CameraImportWindow::Target() const
{
    const QVariant data = targets->currentData();
    return data.canConvert<QObject *>() ? qobject_cast<AlbumWindow *>(data.value<QObject *>()) : nullptr;
}

void CameraImportWindow::AddTarget(AlbumWindow *album)
{
    if (!album)
        return;
    // Before the "other" and "new" entries, under the album's folder name.
    int at = 0;
    while (at < targets->count() && targets->itemData(at).canConvert<QObject *>())
        ++at;
    targets->insertItem(at, QFileInfo(album->Path()).fileName(), QVariant::fromValue<QObject *>(album));
    targets->setItemData(at, QDir::toNativeSeparators(album->Path()), Qt::ToolTipRole);
}

void CameraImportWindow::TargetChosen(int index)
{
    const QVariant data = targets->itemData(index);
    QString folder;
    if (data == QVariant(OtherAlbum)) {
        folder = chooser->ChooseFolder(this, FormText("CameraOtherAlbum"), GetLibraryPath());
    } else if (data == QVariant(NewAlbum)) {
        const QString parentFolder = chooser->ChooseFolder(this, FormText("NewAlbum"), GetLibraryPath());
        const QString name = parentFolder.isEmpty() ? QString()
                                                    : QInputDialog::getText(this, FormText("NewAlbum"), Text("NameNewAlbum", "OrvDocument"));
        if (!name.trimmed().isEmpty()) {
            folder = parentFolder + u'/' + name.trimmed();
            if (const Result made = CreateNewAlbum(folder); !made) {
                QMessageBox::warning(this, FormText("NewAlbum"), Text("MessageFailToCreateAlbum", "OrvDocument"));
                folder.clear();
            }
        }
    } else {
        lastTarget = index;
    }
    if (folder.isEmpty()) {
        TargetOpened(nullptr);
        return;
    }
    // Until the album is open the choice stays where it was.
    targets->setCurrentIndex(lastTarget);
    openAlbum(folder, [window = QPointer<CameraImportWindow>(this)](AlbumWindow *album) {
        if (window)
            window->TargetOpened(album);
    });
}

void CameraImportWindow::TargetOpened(AlbumWindow *chosen)
{
    if (chosen) {
        AddTarget(chosen);
        lastTarget = targets->findData(QVariant::fromValue<QObject *>(chosen));
    }
    targets->setCurrentIndex(lastTarget);
    // The marks follow the album now chosen.
    if (AlbumWindow *album = Target(); album && !IsListing()) {
        for (CardPhoto &photo : photos)
            photo.inAlbum = false;
        MarkPhotosInAlbum(photos, album->Document());
        ShowPhotos();
    }
}

void CameraImportWindow::ListCard()
{
    const QString card = cards->currentData().toString();
    if (card.isEmpty() || IsListing())
        return;
    grid->clear();
    photos.clear();
    const bool allowNonJpeg = SettingInteger(ReadSetting(QStringLiteral("System"), QStringLiteral("AllowNonJPEG"))) != 0;
    const QPointer<AlbumWindow> album = Target();
    // The listing reads every photo's tags: worker work. The marks read the album's records,
    // which belong to the interface thread.
    runner->Start(Text("Processing", "General"), [this, card, allowNonJpeg, album](ProgressSink &progress) {
        QList<CardPhoto> listed = ListCardPhotos(card, allowNonJpeg, progress);
        progress.Apply([&] {
            if (album)
                MarkPhotosInAlbum(listed, album->Document());
            photos = listed;
        });
    });
}

void CameraImportWindow::ShowPhotos()
{
    grid->clear();
    // No taller than a landscape preview, so the name and the mark under it keep their room.
    const QIcon placeholder(QIcon::fromTheme(QStringLiteral("image-x-generic"), style()->standardIcon(QStyle::SP_FileIcon))
                                .pixmap(PreviewSize * 3 / 4));
    QStringList paths;
    for (const CardPhoto &photo : photos) {
        const QString name = grid->fontMetrics().elidedText(QFileInfo(photo.path).fileName(), Qt::ElideMiddle,
                                                            grid->gridSize().width() - 32);
        auto *item = new QListWidgetItem(placeholder, name, grid);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(photo.inAlbum ? Qt::Unchecked : Qt::Checked);
        item->setToolTip(QDir::toNativeSeparators(photo.path));
        if (photo.inAlbum) {
            // Marked, yet the user may still check it.
            item->setText(item->text() + u'\n' + FormText("CameraAlreadyInAlbum"));
            item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
        }
        paths << photo.path;
    }
    grid->scrollToTop();
    status->setText(FormText("LabelNumber") + u' ' + QString::number(photos.size()));
    previews->Request(paths, PreviewSize);
}

void CameraImportWindow::ImportChecked()
{
    AlbumWindow *album = Target();
    if (!album || album->IsWorking() || IsListing())
        return;
    QStringList checked;
    for (int row = 0; row < grid->count() && row < photos.size(); ++row) {
        if (grid->item(row)->checkState() == Qt::Checked)
            checked << photos[row].path;
    }
    album->ImportCardPhotos(checked);
    accept();
}
