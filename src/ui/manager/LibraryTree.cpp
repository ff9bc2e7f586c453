#include "ui/manager/LibraryTree.h"

#include "app/AppEnvironment.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "library/AlbumDiscovery.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QStandardPaths>

namespace {

constexpr int FilledRole = Qt::UserRole + 2;
constexpr int NameRole = Qt::UserRole + 3; // the caption before its number of albums

QString FormText(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("Form"));
}

QString FolderName(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    return name.isEmpty() ? path : name;
}

} // namespace

LibraryTree::LibraryTree(QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("FolderTree"));
    setHeaderHidden(true);
    auto *computer = new QTreeWidgetItem(this, {FormText("MyComputer")});
    computer->setIcon(0, QIcon::fromTheme(QStringLiteral("computer")));
    computer->setData(0, FilledRole, true);
    QStringList volumes{QStringLiteral("/")};
    volumes << Environment().MountedVolumes();
    volumes.removeDuplicates();
    for (const QString &volume : volumes)
        AddFolder(computer, volume, FolderName(volume));
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    AddFolder(invisibleRootItem(), desktop, FormText("MyDesktop"))->setIcon(0, QIcon::fromTheme(QStringLiteral("user-desktop")));
    AddFolder(invisibleRootItem(), GetLibraryPath(), FormText("MyPhotoAlbums"))->setIcon(0, QIcon::fromTheme(QStringLiteral("folder-pictures")));
    connect(this, &QTreeWidget::itemExpanded, this, &LibraryTree::Fill);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem *item) {
        if (item && !item->data(0, PathRole).toString().isEmpty())
            emit FolderChosen(item->data(0, PathRole).toString());
    });
}

QTreeWidgetItem *LibraryTree::AddFolder(QTreeWidgetItem *parent, const QString &path, const QString &caption)
{
    auto *item = new QTreeWidgetItem(parent);
    item->setData(0, PathRole, QDir::cleanPath(path));
    item->setData(0, NameRole, caption);
    item->setText(0, TreeNodeCaption(caption, static_cast<int>(FindAlbums(path).size())));
    item->setIcon(0, QIcon::fromTheme(QStringLiteral("folder")));
    // Whether it has folders is learnt when it is opened.
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

void LibraryTree::Fill(QTreeWidgetItem *item)
{
    if (item->data(0, FilledRole).toBool())
        return;
    item->setData(0, FilledRole, true);
    const QString path = item->data(0, PathRole).toString();
    for (const QString &folder : FindPlainSubfolders(path))
        AddFolder(item, folder, FolderName(folder));
    item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

QString LibraryTree::ChosenFolder() const
{
    return currentItem() ? currentItem()->data(0, PathRole).toString() : QString();
}

void LibraryTree::ChooseFolder(const QString &given)
{
    const QString path = QDir::cleanPath(given);
    for (QTreeWidgetItem *root : {topLevelItem(2), topLevelItem(1)}) {
        QTreeWidgetItem *item = root;
        QString at = item->data(0, PathRole).toString();
        if (at.isEmpty() || (path != at && !path.startsWith(at + u'/')))
            continue;
        while (at != path) {
            Fill(item);
            QTreeWidgetItem *deeper = nullptr;
            for (int i = 0; i < item->childCount() && !deeper; ++i) {
                const QString child = item->child(i)->data(0, PathRole).toString();
                if (path == child || path.startsWith(child + u'/'))
                    deeper = item->child(i);
            }
            if (!deeper)
                break;
            item->setExpanded(true);
            item = deeper;
            at = item->data(0, PathRole).toString();
        }
        setCurrentItem(item);
        return;
    }
    emit FolderChosen(path); // a folder outside the roots is shown without a node
}

void LibraryTree::RefreshChosen()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->data(0, PathRole).toString().isEmpty())
        return;
    const bool open = item->isExpanded();
    qDeleteAll(item->takeChildren());
    item->setData(0, FilledRole, false);
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    item->setText(0, TreeNodeCaption(item->data(0, NameRole).toString(),
                                     static_cast<int>(FindAlbums(item->data(0, PathRole).toString()).size())));
    Fill(item);
    item->setExpanded(open);
}
