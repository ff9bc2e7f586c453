#pragma once

#include <QMap>
#include <QString>
#include <optional>
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

// Copied keywords wait in a list of their own in the user-data folder, so that a paste in a later
// run of the program finds them.
QString KeywordsExchangePath();
bool WriteKeywordsExchange(const QString &keywords, QString *error);
// Nothing when no keywords were copied.
std::optional<QString> ReadKeywordsExchange();
