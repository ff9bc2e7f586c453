#include "ui/album/FileChooser.h"

#include <QDir>
#include <QFileDialog>

QStringList FileChooser::ChooseFiles(QWidget *parent, const QString &title)
{
    // No filter: the importer itself leaves out what is not a photo, and says so.
    return QFileDialog::getOpenFileNames(parent, title, QDir::homePath());
}

QString FileChooser::ChooseFolder(QWidget *parent, const QString &title)
{
    return QFileDialog::getExistingDirectory(parent, title, QDir::homePath());
}
