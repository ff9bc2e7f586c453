#pragma once

#include <QDialog>

class MainWindow;
class QListWidget;
class QStackedWidget;

// The window over the main window on a plain start: the recent albums, one click away, and the
// ways to start an album.
class WelcomeWindow : public QDialog {
    Q_OBJECT
public:
    explicit WelcomeWindow(MainWindow &main);
    // Fills the list from the recent documents, newest first.
    void ShowRecentDocs();

private:
    MainWindow &main;
    QListWidget *recent;
    QStackedWidget *recentPane;
};
