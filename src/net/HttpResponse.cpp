#include "net/HttpResponse.h"

#include <QFile>

namespace HttpResponse {

namespace {

constexpr qint64 CopyBlock = 2048;
const QByteArray HeaderTerminator = QByteArrayLiteral("\r\n\r\n");

} // namespace

std::optional<qsizetype> HeaderEnd(QByteArrayView start)
{
    if (!start.startsWith("HTTP"))
        return std::nullopt;
    const qsizetype end = start.first(std::min(start.size(), HeaderProbeSize)).indexOf(HeaderTerminator);
    if (end < 0 || end >= HeaderLimit)
        return std::nullopt;
    return end;
}

Result SplitIntoFile(QFile &response, const QString &bodyPath, QString &header)
{
    Result invalid = Result::Failure(QStringLiteral("The HTTP response is invalid."));
    if (!response.open(QIODevice::ReadOnly))
        return invalid;
    const std::optional<qsizetype> end = HeaderEnd(response.read(HeaderProbeSize));
    if (!end)
        return invalid;
    response.seek(0);
    header = QString::fromLatin1(response.read(*end));

    QFile::remove(bodyPath);
    QFile body(bodyPath);
    if (body.exists() || !body.open(QIODevice::WriteOnly))
        return invalid;
    response.seek(*end + HeaderTerminator.size());
    while (!response.atEnd()) {
        const QByteArray block = response.read(CopyBlock);
        if (block.isEmpty() || body.write(block) != block.size())
            return Result::Failure(QStringLiteral("Could't save file to the specified location."));
    }
    return Result::Success();
}

} // namespace HttpResponse
