#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// The pickers the album window opens to choose files and folders to import. Tests put a chooser
// of their own in its place, as the user's choice.
class FileChooser {
public:
    virtual ~FileChooser() = default;
    // Nothing when the user cancelled.
    virtual QStringList ChooseFiles(QWidget *parent, const QString &title);
    virtual QString ChooseFolder(QWidget *parent, const QString &title);
};
