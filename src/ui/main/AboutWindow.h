#pragma once

#include <QDialog>
#include <QWidget>

// The program's name, picture and version, as the about window and the splash show them.
class AboutPanel : public QWidget {
    Q_OBJECT
public:
    explicit AboutPanel(QWidget *parent = nullptr);
};

class AboutWindow : public QDialog {
    Q_OBJECT
public:
    explicit AboutWindow(QWidget *parent = nullptr);
};
