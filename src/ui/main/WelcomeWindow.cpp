#include "ui/main/WelcomeWindow.h"

#include "ui/main/CommandIcons.h"
#include "ui/main/MainWindow.h"
#include "ui/Localize.h"
#include "app/RecentDocs.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// The commands a new user starts with; the camera import shows once its window exists, as its
// action then becomes visible.
const char *const StartCommands[] = {"mnuFileOpen", "mnuFileNew", "mnuFileConvert", "mnuCameraImport"};

// The folder that holds an album, with the home folder written "~" as a Linux user reads it.
QString ShortFolderName(const QString &folder)
{
    const QString home = QDir::homePath();
    if (folder == home || folder.startsWith(home + u'/'))
        return u'~' + QDir::toNativeSeparators(folder.mid(home.size()));
    return QDir::toNativeSeparators(folder);
}

} // namespace

WelcomeWindow::WelcomeWindow(MainWindow &frame)
    : QDialog(&frame), main(frame), recent(new QListWidget(this)), recentPane(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("frmWelcome"));
    setWindowTitle(QStringLiteral("@Welcome"));
    auto *layout = new QVBoxLayout(this);
    auto *heading = new QLabel(QStringLiteral("@Welcome"), this);
    QFont big = heading->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    heading->setFont(big);
    layout->addWidget(heading);

    auto *columns = new QHBoxLayout;
    layout->addLayout(columns, 1);
    auto *left = new QVBoxLayout;
    left->addWidget(new QLabel(QStringLiteral("@RecentAlbums"), this));
    recent->setObjectName(QStringLiteral("RecentAlbums"));
    recent->setIconSize(QSize(32, 32));
    recent->setTextElideMode(Qt::ElideMiddle);
    recent->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    recent->setSpacing(2);
    recentPane->addWidget(recent);
    auto *none = new QLabel(QStringLiteral("@NoRecentAlbums"), this);
    none->setWordWrap(true);
    none->setAlignment(Qt::AlignCenter);
    recentPane->addWidget(none);
    left->addWidget(recentPane, 1);
    columns->addLayout(left, 3);

    auto *right = new QVBoxLayout;
    for (const char *name : StartCommands) {
        QAction *action = main.Command(QLatin1String(name));
        if (!action || !action->isVisible())
            continue;
        auto *button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setObjectName(QStringLiteral("Welcome_") + QLatin1String(name));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIconSize(QSize(32, 32));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setAutoRaise(true);
        right->addWidget(button);
    }
    right->addStretch(1);
    columns->addLayout(right, 2);

    // One click opens, as on a start page; Enter opens the current one. Not itemActivated: on
    // single-click desktops it comes with the click, and the album would open twice.
    connect(recent, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) {
        main.OpenDoc(item->data(Qt::UserRole).toString(), false);
    });
    auto *enter = new QAction(recent);
    enter->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    enter->setShortcutContext(Qt::WidgetShortcut);
    recent->addAction(enter);
    connect(enter, &QAction::triggered, this, [this] {
        if (QListWidgetItem *item = recent->currentItem())
            main.OpenDoc(item->data(Qt::UserRole).toString(), false);
    });
    LocalizeForm(this);
    ShowRecentDocs();
    resize(640, 400);
}

void WelcomeWindow::ShowRecentDocs()
{
    recent->clear();
    const RecentDocList &list = RecentDocs();
    const QIcon album = CommandIcon(QStringLiteral("folder-pictures"));
    for (int slot = list.Count(); slot >= 1; --slot) {
        const QString path = list.At(slot);
        const QFileInfo folder(path);
        auto *item = new QListWidgetItem(album, folder.fileName() + u'\n' + ShortFolderName(folder.path()), recent);
        item->setData(Qt::UserRole, path);
        item->setToolTip(QDir::toNativeSeparators(path));
    }
    recentPane->setCurrentIndex(list.Count() > 0 ? 0 : 1);
}
