#pragma once

#include <QDialog>
#include <QList>
#include <functional>

class FileChooser;

// The settings a user chooses, read from the settings file when the window opens and written
// back, every one it shows, when the user accepts.
class OptionsWindow : public QDialog {
    Q_OBJECT
public:
    OptionsWindow(FileChooser &chooser, QWidget *parent = nullptr);

    void accept() override;

private:
    void AddRows();
    // One function per shown key: its current value in the window.
    struct Field {
        QString section, key;
        std::function<QString()> value;
    };
    QList<Field> fields;
    FileChooser &chooser;
};
