#include "ui/MainWindow.h"

#include "ui/Localize.h"
#include "app/RecentDocs.h"

#include <QApplication>
#include <QMdiArea>
#include <QMenuBar>

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent), documents(new QMdiArea(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("@frmMain"));
    setCentralWidget(documents);
    BuildMenus();
    LocalizeForm(this);
    resize(1024, 720);
    LoadRecentDocs();
}

MainWindow::~MainWindow()
{
    // The recent list reaches the file only when the program closes normally.
    SaveRecentDocs();
}

int MainWindow::MDIChildren() const
{
    return static_cast<int>(documents->subWindowList().size());
}

void MainWindow::BuildMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("@mnuFile"));
    QAction *exit = file->addAction(QStringLiteral("@mnuFileExit"));
    exit->setObjectName(QStringLiteral("mnuFileExit"));
    connect(exit, &QAction::triggered, this, &QWidget::close);

    QMenu *window = menuBar()->addMenu(QStringLiteral("@mnuWindow"));
    QAction *cascade = window->addAction(QStringLiteral("@mnuWindowCascade"));
    connect(cascade, &QAction::triggered, documents, &QMdiArea::cascadeSubWindows);
    QAction *tile = window->addAction(QStringLiteral("@mnuWindowTileHorizontal"));
    connect(tile, &QAction::triggered, documents, &QMdiArea::tileSubWindows);
}
