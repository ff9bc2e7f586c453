#include "net/FtpReply.h"

#include <QStringList>

namespace {

const QByteArray LineEnd = QByteArrayLiteral("\r\n");

// The code a reply line stands for: its first three characters as a number (leading digits
// only), valid when at least 100 and followed by a blank.
int CodeOfFinalLine(QByteArrayView line)
{
    if (line.size() < 4 || line.at(3) != ' ')
        return 0;
    int code = 0;
    for (qsizetype i = 0; i < 3 && line.at(i) >= '0' && line.at(i) <= '9'; ++i)
        code = code * 10 + (line.at(i) - '0');
    return code >= 100 ? code : 0;
}

} // namespace

int ParseReplyCode(QByteArrayView buffer)
{
    if (!buffer.endsWith(LineEnd))
        return 0;
    const QByteArrayView withoutEnd = buffer.first(buffer.size() - 2);
    const qsizetype previousEnd = withoutEnd.lastIndexOf(LineEnd);
    const qsizetype lineStart = previousEnd < 0 ? 0 : previousEnd + 2;
    return CodeOfFinalLine(withoutEnd.sliced(lineStart));
}

void FtpReplyReader::Append(QByteArrayView bytes)
{
    if (text.size() < TextLimit)
        text.append(bytes.first(std::min(bytes.size(), TextLimit - text.size())));
    for (const char byte : bytes) {
        if (afterCarriageReturn && byte == '\n') {
            // The CR belongs to the line end, not to the line.
            if (lineLength <= lineHead.size())
                lineHead.chop(1);
            lastLineHead = lineHead;
            lineHead.clear();
            lineLength = 0;
            afterCarriageReturn = false;
            endsWithLineEnd = true;
            continue;
        }
        if (lineHead.size() < 4)
            lineHead.append(byte);
        ++lineLength;
        afterCarriageReturn = byte == '\r';
        endsWithLineEnd = false;
    }
}

void FtpReplyReader::Clear()
{
    *this = FtpReplyReader();
}

int FtpReplyReader::Code() const
{
    return endsWithLineEnd ? CodeOfFinalLine(lastLineHead) : 0;
}

qint64 LeadingNumber(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && (text.at(i) == u' ' || text.at(i) == u'\t'))
        ++i;
    bool negative = false;
    if (i < text.size() && (text.at(i) == u'-' || text.at(i) == u'+'))
        negative = text.at(i++) == u'-';
    qint64 value = 0;
    // Past a billion the value is nonsense anyway; stopping there keeps it from overflowing.
    for (; i < text.size() && text.at(i).isDigit() && text.at(i).unicode() < 128; ++i) {
        if (value < 1000000000)
            value = value * 10 + (text.at(i).unicode() - u'0');
    }
    return negative ? -value : value;
}

std::optional<PassiveAddress> ParsePassiveAddress(const QString &reply)
{
    const qsizetype open = reply.indexOf(u'(');
    if (open < 0)
        return std::nullopt;
    const qsizetype close = reply.indexOf(u')', open + 1);
    if (close < 0)
        return std::nullopt;
    const QStringList fields = reply.mid(open + 1, close - open - 1).split(u',');
    if (fields.size() != 6)
        return std::nullopt;
    PassiveAddress address;
    address.host = QStringList{fields.at(0).trimmed(), fields.at(1).trimmed(), fields.at(2).trimmed(), fields.at(3).trimmed()}
                       .join(u'.');
    address.port = LeadingNumber(fields.at(4)) * 256 + LeadingNumber(fields.at(5));
    return address;
}
