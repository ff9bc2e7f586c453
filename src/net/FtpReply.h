#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

// Reply rules of the control connection, kept apart from sockets so that they can be tested and
// fuzzed on plain bytes.

// The code of the complete reply at the end of `buffer`, or 0 when none is complete yet. A reply
// is complete when the buffer ends in CR LF and its last line starts with a code of 100 or more
// followed by a blank, so continuation lines ("220-...") and partial lines are waited through.
int ParseReplyCode(QByteArrayView buffer);

// Collects the bytes of one reply as they arrive and answers ParseReplyCode for them in constant
// memory: however long a hostile server keeps talking, only the first TextLimit bytes are kept as
// text and the code is tracked incrementally.
class FtpReplyReader {
public:
    static constexpr qsizetype TextLimit = 256 * 1024;

    void Append(QByteArrayView bytes);
    void Clear();
    int Code() const;
    // The reply as received, cut at TextLimit bytes.
    const QByteArray &Text() const { return text; }

private:
    QByteArray text;
    QByteArray lineHead;      // first four bytes of the line being received
    QByteArray lastLineHead;  // first four bytes of the last line ended by CR LF
    qsizetype lineLength = 0;
    bool afterCarriageReturn = false;
    bool endsWithLineEnd = false;
};

// Where a PASV reply says the data connection waits. The port may lie outside 0..65535 when the
// server sends nonsense; connecting then fails.
struct PassiveAddress {
    QString host;
    qint64 port = 0;
};

// Reads the address out of a 227 reply: the text between the first "(" and the first ")" after
// it must hold exactly six comma-separated fields; the first four, trimmed, are the address and
// field 5 x 256 + field 6 the port.
std::optional<PassiveAddress> ParsePassiveAddress(const QString &reply);

// The leading number of a text as the original's Val() read it: blanks skipped, an optional
// sign, then digits; anything else ends the number, and no digits read as 0.
qint64 LeadingNumber(QStringView text);
