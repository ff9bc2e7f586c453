#pragma once

#include <QMainWindow>

class QMdiArea;

// frmMain: the frame that holds the album windows and routes the menu commands.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    int MDIChildren() const;

private:
    void BuildMenus();
    QMdiArea *documents;
};
