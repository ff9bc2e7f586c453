#include "library/PluginAnswer.h"

#include "library/PhotoRecord.h"

#include <QFileInfo>
#include <algorithm>
#include <cctype>

PluginRun ReadPluginAnswer(const QByteArray &answer, bool allowNonJpeg)
{
    PluginRun run;
    QStringList refused;
    for (const QByteArray &line : answer.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.isEmpty())
            continue;
        const qsizetype equals = trimmed.indexOf('=');
        const auto wordCharacter = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
        if (equals <= 0 || !std::all_of(trimmed.begin(), trimmed.begin() + equals, wordCharacter)) {
            run.result = Result::Failure(QStringLiteral("The plug-in's answer is not made of Key=Value lines."));
            return run;
        }
        if (trimmed.left(equals) != "ImportedFiles")
            continue;
        const QString path = QString::fromUtf8(trimmed.mid(equals + 1));
        const QFileInfo file(path);
        if (!file.isAbsolute() || !file.isFile() || !PhotoRecord::IsPhotoFile(file.fileName(), allowNonJpeg))
            refused << path;
        else
            run.importedFiles << file.absoluteFilePath();
    }
    if (!refused.isEmpty()) {
        run.importedFiles.clear();
        run.result = Result::Failure(QStringLiteral("The plug-in named files that are not photos on this computer, so none was imported:\n") +
                                     refused.join(u'\n'));
    }
    return run;
}

