#pragma once

#include <QDialog>
#include <QList>
#include <QStringList>
#include <functional>

class FileChooser;

// The settings a user chooses, read from the settings file when the window opens and written
// back, every one it shows, when the user accepts.
class OptionsWindow : public QDialog {
    Q_OBJECT
public:
    // `albums`: the open albums, whose kept originals the window sizes and can let go.
    OptionsWindow(FileChooser &chooser, const QStringList &albums = {}, QWidget *parent = nullptr);

    void accept() override;

private:
    void AddRows();
    void AddOriginals(QLayout *layout);
    void ShowOriginalsRoom();
    // One function per shown key: its current value in the window.
    struct Field {
        QString section, key;
        std::function<QString()> value;
    };
    QList<Field> fields;
    FileChooser &chooser;
    QStringList albums;
    class QLabel *originalsRoom = nullptr;
};
