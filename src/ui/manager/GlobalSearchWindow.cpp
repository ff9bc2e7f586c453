#include "ui/manager/GlobalSearchWindow.h"

#include "ui/common/FileChooser.h"
#include "ui/common/TaskRunner.h"

#include "app/Language.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "library/SearchDomains.h"

#include <QButtonGroup>
#include <algorithm>
#include <QCheckBox>
#include <QDateEdit>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString Section = QStringLiteral("GlobalSearch");
const QString AutoOpenKey = QStringLiteral("AutoOpenMatchedAlbums");
constexpr int PathRole = Qt::UserRole + 1;

QString SearchWindowText(const char *key, const QString &section = QStringLiteral("Form"))
{
    return GetLocalizedString(QString::fromLatin1(key), section);
}

QTreeWidget *Table(const QStringList &columns, const QString &name)
{
    auto *table = new QTreeWidget;
    table->setObjectName(name);
    table->setRootIsDecorated(false);
    table->setHeaderLabels(columns);
    table->setUniformRowHeights(true);
    return table;
}

} // namespace

GlobalSearchWindow::GlobalSearchWindow(Prompter &asker, FileChooser &picker, OpenAlbum opener, QWidget *parent)
    : QWidget(parent), prompter(asker), chooser(picker), open(std::move(opener)), runner(std::make_unique<TaskRunner>(this)),
      domains(Table({SearchWindowText("DomainName", Section), SearchWindowText("DomainPath", Section)}, QStringLiteral("Domains"))),
      results(Table({SearchWindowText("AlbumTitle", Section), SearchWindowText("Photos", Section), SearchWindowText("Matched", Section), SearchWindowText("AlbumLocation", Section)},
                    QStringLiteral("Results"))),
      text(new QLineEdit), modes(new QButtonGroup(this)), ranged(new QCheckBox(SearchWindowText("DateRange"))), from(new QDateEdit),
      to(new QDateEdit), autoOpen(new QCheckBox(SearchWindowText("AutoOpenMatchedAlbums")))
{
    setObjectName(QStringLiteral("frmGlobalSearch"));
    setWindowTitle(SearchWindowText("GlobalSearch"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("edit-find")));

    auto *add = new QPushButton(SearchWindowText("AddDomain", Section));
    auto *remove = new QPushButton(SearchWindowText("RemoveDomain", Section));
    auto *domainButtons = new QHBoxLayout;
    domainButtons->addWidget(add);
    domainButtons->addWidget(remove);
    domainButtons->addStretch(1);

    text->setObjectName(QStringLiteral("SearchText"));
    auto *search = new QPushButton(SearchWindowText("Search"));
    search->setDefault(true);
    auto *modeRow = new QHBoxLayout;
    const char *modeKeys[] = {"SearchInFileNames", "SearchInNotes", "SearchInKeywords", "SearchByDateOnly"};
    for (int mode = 0; mode < 4; ++mode) {
        auto *button = new QRadioButton(SearchWindowText(modeKeys[mode]));
        modes->addButton(button, mode);
        modeRow->addWidget(button);
    }
    modes->button(0)->setChecked(true);
    modeRow->addStretch(1);
    for (QDateEdit *edit : {from, to}) {
        edit->setCalendarPopup(true);
        edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
        edit->setDate(QDate::currentDate());
        edit->setEnabled(false);
    }
    from->setDate(QDate::currentDate().addYears(-1));
    auto *rangeRow = new QHBoxLayout;
    rangeRow->addWidget(ranged);
    rangeRow->addWidget(from);
    rangeRow->addWidget(to);
    rangeRow->addStretch(1);
    rangeRow->addWidget(autoOpen);
    auto *searchRow = new QHBoxLayout;
    searchRow->addWidget(text, 1);
    searchRow->addWidget(search);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(domains, 1);
    layout->addLayout(domainButtons);
    layout->addLayout(searchRow);
    layout->addLayout(modeRow);
    layout->addLayout(rangeRow);
    layout->addWidget(results, 2);

    autoOpen->setChecked(SettingInteger(ReadSetting(Section, AutoOpenKey)) != 0);
    connect(autoOpen, &QCheckBox::toggled, this, [](bool on) { WriteSetting(Section, AutoOpenKey, on ? QStringLiteral("1") : QStringLiteral("0")); });
    connect(ranged, &QCheckBox::toggled, from, &QWidget::setEnabled);
    connect(ranged, &QCheckBox::toggled, to, &QWidget::setEnabled);
    // Searching by date alone needs the range.
    connect(modes, &QButtonGroup::idToggled, this, [this](int mode, bool on) {
        text->setEnabled(!(on && mode == int(SearchMode::DateOnly)));
        if (on && mode == int(SearchMode::DateOnly))
            ranged->setChecked(true);
    });
    connect(search, &QPushButton::clicked, this, &GlobalSearchWindow::StartSearch);
    connect(text, &QLineEdit::returnPressed, this, &GlobalSearchWindow::StartSearch);
    connect(add, &QPushButton::clicked, this, &GlobalSearchWindow::AddDomain);
    connect(remove, &QPushButton::clicked, this, &GlobalSearchWindow::RemoveDomain);
    connect(domains, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem *item) {
        if (!filling)
            CheckSearchDomain(item->data(0, PathRole).toString(), item->checkState(0) == Qt::Checked);
    });
    connect(results, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) {
        open(item->data(0, PathRole).toString(), [] {});
    });
    FillDomains();
    if (const std::optional<SearchQuery> last = RememberedQuery()) {
        SetQuery(*last);
        QTimer::singleShot(0, this, &GlobalSearchWindow::StartSearch);
    }
}

GlobalSearchWindow::~GlobalSearchWindow() = default;

void GlobalSearchWindow::RememberQuery(const SearchQuery &query) const
{
    WriteSetting(Section, QStringLiteral("SearchText"), query.text);
    WriteSetting(Section, QStringLiteral("SearchMode"), QString::number(int(query.mode)));
    WriteSetting(Section, QStringLiteral("SearchFrom"), query.from ? query.from->toString(Qt::ISODate) : QString());
    WriteSetting(Section, QStringLiteral("SearchTo"), query.to ? query.to->toString(Qt::ISODate) : QString());
}

std::optional<SearchQuery> GlobalSearchWindow::RememberedQuery() const
{
    const QString mode = ReadSetting(Section, QStringLiteral("SearchMode"));
    if (mode.isEmpty())
        return std::nullopt;
    SearchQuery query{ReadSetting(Section, QStringLiteral("SearchText")),
                      static_cast<SearchMode>(std::clamp(SettingInteger(mode), 0, 3)), {}, {}};
    const QDate begin = QDate::fromString(ReadSetting(Section, QStringLiteral("SearchFrom")), Qt::ISODate);
    const QDate end = QDate::fromString(ReadSetting(Section, QStringLiteral("SearchTo")), Qt::ISODate);
    if (begin.isValid() && end.isValid()) {
        query.from = begin;
        query.to = end;
    }
    return query;
}

void GlobalSearchWindow::FillDomains()
{
    filling = true;
    domains->clear();
    for (const SearchDomain &domain : LoadSearchDomains()) {
        auto *item = new QTreeWidgetItem(domains, {QFileInfo(domain.path).fileName(), QDir::toNativeSeparators(domain.path)});
        item->setData(0, PathRole, domain.path);
        item->setCheckState(0, domain.checked ? Qt::Checked : Qt::Unchecked);
    }
    domains->resizeColumnToContents(0);
    filling = false;
}

void GlobalSearchWindow::AddDomain()
{
    const QString folder = chooser.ChooseFolder(this, SearchWindowText("AddDomain", Section), QDir::homePath());
    if (folder.isEmpty())
        return;
    // A folder listed already stays as it is.
    AddSearchDomain(QDir::cleanPath(folder));
    FillDomains();
}

void GlobalSearchWindow::RemoveDomain()
{
    if (QTreeWidgetItem *item = domains->currentItem()) {
        RemoveSearchDomain(item->data(0, PathRole).toString());
        FillDomains();
    }
}

void GlobalSearchWindow::SetQuery(const SearchQuery &query)
{
    text->setText(query.text);
    modes->button(int(query.mode))->setChecked(true);
    ranged->setChecked(query.from.has_value());
    if (query.from) {
        from->setDate(*query.from);
        to->setDate(query.to.value_or(*query.from));
    }
}

SearchQuery GlobalSearchWindow::Query() const
{
    SearchQuery query{text->text(), static_cast<SearchMode>(modes->checkedId()), {}, {}};
    if (ranged->isChecked()) {
        query.from = from->date();
        query.to = to->date();
    }
    return query;
}

bool GlobalSearchWindow::StartSearch()
{
    const SearchQuery query = Query();
    if (const Result valid = CheckSearchQuery(query); !valid) {
        prompter.Inform(windowTitle(), valid.message);
        return false;
    }
    RememberQuery(query);
    auto found = std::make_shared<QList<AlbumMatch>>();
    const bool started = runner->Start(windowTitle(), [query, found](ProgressSink &progress) {
        *found = SearchAlbums(query, AlbumsOfCheckedDomains(), progress);
    });
    if (!started)
        return false;
    results->clear();
    // One connection per search, gone with it.
    auto *once = new QObject(this);
    connect(runner.get(), &TaskRunner::Finished, once, [this, found, once](bool cancelled) {
        once->deleteLater();
        if (!cancelled)
            ShowResults(*found);
        emit SearchEnded(cancelled);
    });
    return true;
}

void GlobalSearchWindow::ShowResults(const QList<AlbumMatch> &matches)
{
    QStringList albums;
    for (const AlbumMatch &match : matches) {
        auto *item = new QTreeWidgetItem(results, {match.title, QString::number(match.photos), QString::number(match.matched),
                                                   QDir::toNativeSeparators(match.path)});
        item->setData(0, PathRole, match.path);
        item->setTextAlignment(1, Qt::AlignRight);
        item->setTextAlignment(2, Qt::AlignRight);
        albums << match.path;
    }
    for (int column = 0; column < 3; ++column)
        results->resizeColumnToContents(column);
    if (autoOpen->isChecked())
        OpenInTurn(albums);
}

// The main window opens one album at a time: each opens once the one before has.
void GlobalSearchWindow::OpenInTurn(QStringList albums)
{
    if (albums.isEmpty())
        return;
    const QString first = albums.takeFirst();
    open(first, [guard = QPointer<GlobalSearchWindow>(this), albums] {
        if (guard)
            guard->OpenInTurn(albums);
    });
}
