#pragma once

#include <QTreeWidget>

// The manager's folder tree with its three roots: the computer's mounted volumes, the desktop
// folder and the library folder. Folders are listed when their node is first opened; a node
// holding albums shows their number behind its name.
class LibraryTree : public QTreeWidget {
    Q_OBJECT
public:
    static constexpr int PathRole = Qt::UserRole + 1;

    explicit LibraryTree(QWidget *parent = nullptr);

    // The folder of the chosen node, "" for the computer's root.
    QString ChosenFolder() const;
    // Chooses the node of the folder, opening the nodes above it when it lies under a root.
    void ChooseFolder(const QString &path);
    // Lists the chosen node's folders again, after one was made, renamed or removed.
    void RefreshChosen();
    QTreeWidgetItem *LibraryRoot() const { return topLevelItem(2); }

signals:
    void FolderChosen(const QString &path);

private:
    QTreeWidgetItem *AddFolder(QTreeWidgetItem *parent, const QString &path, const QString &caption);
    void Fill(QTreeWidgetItem *item);
};
