#pragma once

#include <QMap>
#include <QString>
#include <vector>

class AlbumDocument;

// The list that copy writes and paste reads: each copied photo's full path with the record values
// that travel with it (note, keywords, date, position, star).
struct ExchangedPhoto {
    QString file;
    QMap<QString, QString> values;
};

QString InfoExchangePath(); // in the user-data folder
const QStringList &ExchangedKeys();
bool WriteInfoExchange(const QString &path, const AlbumDocument &document, const QList<int> &indices);
// Empty when the list is missing or unreadable.
std::vector<ExchangedPhoto> ReadInfoExchange(const QString &path);
