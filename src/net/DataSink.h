#pragma once

#include <QByteArray>
#include <QFile>

// Where the bytes of a data connection go: into the open download file when there is one,
// otherwise into a text buffer that stops growing at its limit (a listing or a text response of
// gigabytes must not take the memory with it; the excess is dropped and the overflow remembered).
class DataSink {
public:
    explicit DataSink(qsizetype bufferLimit) : limit(bufferLimit) {}

    // Empty buffer, no file, nothing taken.
    void Reset();
    void SetFile(QFile *target) { file = target; }

    void Take(const QByteArray &bytes);

    const QByteArray &Buffer() const { return buffer; }
    bool Overflowed() const { return overflowed; }
    bool WriteFailed() const { return writeFailed; }
    qint64 BytesTaken() const { return taken; }

private:
    qsizetype limit;
    QFile *file = nullptr;
    QByteArray buffer;
    qint64 taken = 0;
    bool overflowed = false;
    bool writeFailed = false;
};
