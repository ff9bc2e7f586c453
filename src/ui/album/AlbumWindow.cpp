#include "ui/album/AlbumWindow.h"

#include "ui/album/AlbumCommands.h"
#include "ui/album/AlbumModel.h"
#include "ui/album/AlbumRoles.h"
#include "ui/album/DetailView.h"
#include "ui/album/ExtraPanel.h"
#include "ui/common/FileChooser.h"
#include "ui/album/ThumbnailCache.h"
#include "ui/album/ThumbnailView.h"
#include "ui/common/DialogPrompter.h"
#include "ui/common/TaskRunner.h"

#include "app/Language.h"
#include "app/Settings.h"
#include "library/AlbumDocument.h"
#include "library/PhotoRecord.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

QString FormText(const char *key, const char *section = "Form")
{
    return GetLocalizedString(QString::fromLatin1(key), QString::fromLatin1(section));
}

} // namespace

AlbumWindow::AlbumWindow(std::unique_ptr<AlbumDocument> opened, QWidget *parent)
    : QWidget(parent), document(std::move(opened)), runner(std::make_unique<TaskRunner>(this)),
      prompter(std::make_unique<DialogPrompter>(this, runner->Calls())), chooser(std::make_unique<DialogFileChooser>()),
      commands(std::make_unique<AlbumCommands>(*document, *prompter)), rows(new AlbumModel(*document, this)),
      thumbnails(new ThumbnailCache(qint64(64) * 1024 * 1024, this))
{
    setObjectName(QStringLiteral("frmDocument"));
    // Read once: the grid's painting never reads the settings file.
    const bool showFileNames = SettingInteger(ReadSetting(QStringLiteral("Layout"), QStringLiteral("ShowFileNameInThumbnail"))) != 0;
    BuildLayout(showFileNames);
    BuildCommands();
    BuildPhotoMenu();
    SetUIByDataList();
    RefreshNumberLabel();
    if (rows->rowCount() > 0)
        grid->SetCurrentRecord(1);
    RefreshCaption();
    connect(runner.get(), &TaskRunner::Finished, this, &AlbumWindow::WorkFinished);
}

AlbumWindow::~AlbumWindow()
{
    // Work still running is stopped while the views and the document are all there: its last
    // changes and questions are answered on the way.
    runner.reset();
    // The views go first and quietly: one that loses its rows while going may still report a
    // current photo, or hand on a note typed into the side panel.
    grid->selectionModel()->disconnect(this);
    detail->disconnect(this);
    panel->disconnect(this);
    delete views;
    delete panel;
}

void AlbumWindow::BuildLayout(bool showFileNames)
{
    title = new QLineEdit(this);
    identification = new QLineEdit(this);
    description = new QLineEdit(this);
    search = new QLineEdit(this);
    number = new QLabel(this);
    title->setObjectName(QStringLiteral("Title"));
    identification->setObjectName(QStringLiteral("Identification"));
    description->setObjectName(QStringLiteral("Description"));
    search->setObjectName(QStringLiteral("Search"));
    number->setObjectName(QStringLiteral("LabelNumber"));
    search->setPlaceholderText(FormText("Search"));
    search->setClearButtonEnabled(true);

    auto *fields = new QGridLayout;
    const auto addField = [&](int column, const QString &caption, QLineEdit *field, int stretch) {
        auto *label = new QLabel(caption, this);
        label->setBuddy(field);
        fields->addWidget(label, 0, column * 2);
        fields->addWidget(field, 0, column * 2 + 1);
        fields->setColumnStretch(column * 2 + 1, stretch);
    };
    addField(0, FormText("Title"), title, 2);
    addField(1, FormText("Identification"), identification, 2);
    // A new album's identification is a UUID: it is shown whole.
    identification->setMinimumWidth(identification->fontMetrics().horizontalAdvance(QStringLiteral("0").repeated(38)));
    addField(2, FormText("Description"), description, 3);
    fields->addWidget(number, 1, 0, 1, 4);
    fields->addWidget(search, 1, 4, 1, 2);
    for (QLineEdit *field : {title, identification, description})
        connect(field, &QLineEdit::editingFinished, this, &AlbumWindow::SetDataListByUI);
    connect(search, &QLineEdit::returnPressed, this, &AlbumWindow::Search);

    grid = new OrvThumbnailView(*thumbnails, showFileNames, this);
    grid->setModel(rows);
    detail = new OrvDetailView(this);
    detail->SetModel(rows);
    views = new QStackedWidget(this);
    views->addWidget(grid);
    views->addWidget(detail);
    panel = new OrvExtraPanel(this);

    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(views);
    splitter->addWidget(panel);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setSizes({800, 260});
    splitter->setChildrenCollapsible(false);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(splitter, 1);

    connect(grid, &OrvThumbnailView::FilesDropped, this, [this](const QStringList &paths) {
        if (!IsWorking())
            ImportPaths(paths);
    });
    connect(grid, &OrvThumbnailView::OpenRequested, this, [this](const QModelIndex &index) { ShowDetail(index.row()); });
    connect(grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &index) { CurrentRowChanged(index.row()); });
    connect(detail, &OrvDetailView::CurrentRowChanged, this, &AlbumWindow::CurrentRowChanged);
    connect(detail, &OrvDetailView::BackRequested, this, &AlbumWindow::ShowGrid);
    connect(panel, &OrvExtraPanel::ValueEdited, this, [this](int record, const QString &key, const QString &text) {
        if (const Result written = commands->SetRecordValue(record, key, text); !written)
            prompter->Error(GetLocalizedString(key, QStringLiteral("InfoList")), written.message);
    });
    // The views follow the model, which follows the document; what sits beside them follows here.
    connect(rows, &QAbstractItemModel::dataChanged, panel, &OrvExtraPanel::RowsChanged);
    connect(rows, &QAbstractItemModel::rowsInserted, this, [this] {
        RefreshNumberLabel();
        FirstRecordsIn();
    });
    connect(rows, &QAbstractItemModel::rowsRemoved, this, [this] { RefreshNumberLabel(); });
    connect(document.get(), &AlbumDocument::ModifiedChanged, this, &AlbumWindow::RefreshCaption);
    // The calendars mark capture times: every change of the records may move a mark.
    panel->SetDataList(&document->List());
    const auto refreshCalendars = [this] { panel->RefreshCalendarHighlight(); };
    connect(document.get(), &AlbumDocument::RecordsInserted, panel, refreshCalendars);
    connect(document.get(), &AlbumDocument::RecordsRemoved, panel, refreshCalendars);
    connect(document.get(), &AlbumDocument::RecordsReordered, panel, refreshCalendars);
    connect(document.get(), &AlbumDocument::RecordsChanged, panel, [this](const QList<int> &, const QStringList &keys) {
        if (keys.isEmpty() || keys.contains(PhotoRecord::CaptureDate))
            panel->RefreshCalendarHighlight();
    });
    connect(panel, &OrvExtraPanel::CalendarPicked, this, [this](const QDateTime &date, const QString &format) {
        const QList<int> found = document->FindItemsWithDate(date, format);
        if (views->currentWidget() != grid)
            ShowGrid();
        grid->SelectRecords(found);
        if (!found.isEmpty())
            grid->SetCurrentRecord(found.front());
    });
    connect(document.get(), &AlbumDocument::AlbumTextsChanged, this, &AlbumWindow::SetUIByDataList);
}

QString AlbumWindow::Path() const
{
    return document->Path();
}

AlbumDocument &AlbumWindow::Document()
{
    return *document;
}

void AlbumWindow::ShowDetail(int row)
{
    if (row < 0 || row >= rows->rowCount())
        return;
    views->setCurrentWidget(detail);
    detail->ShowRow(row);
    detail->setFocus();
}

void AlbumWindow::ShowGrid()
{
    const int row = detail->CurrentRow();
    views->setCurrentWidget(grid);
    if (row >= 0)
        grid->SetCurrentRecord(row + 1);
    grid->setFocus();
}

void AlbumWindow::CurrentRowChanged(int row)
{
    const QModelIndex index = rows->index(row, 0);
    panel->SetCurrent(index);
    if (views->currentWidget() == detail && index.isValid())
        grid->SetCurrentRecord(row + 1);
}

void AlbumWindow::Search()
{
    panel->Commit();
    if (const std::optional<QList<int>> found = commands->Search(search->text()))
        ShowHighlights(*found);
}

void AlbumWindow::ShowHighlights(const QList<int> &found)
{
    rows->SetHighlighted(found);
    RefreshNumberLabel(AlbumCommands::FoundLabel(int(found.size())));
}

// While the list is read its texts are not known yet: what the user typed would be overwritten.
void AlbumWindow::SetAlbumFieldsEnabled(bool enabled)
{
    for (QLineEdit *field : {title, identification, description})
        field->setEnabled(enabled);
}

void AlbumWindow::SetUIByDataList()
{
    const AlbumCommands::Texts texts = commands->AlbumTexts();
    title->setText(texts.title);
    identification->setText(texts.identification);
    description->setText(texts.description);
}

void AlbumWindow::SetDataListByUI()
{
    const Result stored = commands->SetAlbumTexts({title->text(), identification->text(), description->text()});
    if (!stored) {
        // A refused identification goes back to the one the album has.
        SetUIByDataList();
        prompter->Error(FormText("Identification"), stored.message);
    }
    RefreshCaption();
}

void AlbumWindow::RefreshNumberLabel(const QString &found)
{
    number->setText(found.isEmpty() ? FormText("LabelNumber") + u' ' + QString::number(rows->rowCount()) : found);
}

void AlbumWindow::RefreshCaption()
{
    const QString now = QFileInfo(document->Path()).fileName() + (commands->IsModified() ? QStringLiteral("*") : QString());
    setWindowTitle(now);
    if (now != caption) {
        caption = now;
        emit CaptionChanged(caption);
    }
}

QString AlbumWindow::CurrentPhotoPath() const
{
    return commands->PhotoPath(Target().current);
}
