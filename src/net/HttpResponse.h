#pragma once

#include "app/Result.h"

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <optional>

// The split of an HTTP/1.0 response into its header and body, kept apart from sockets so that it
// can be tested and fuzzed on plain bytes.
namespace HttpResponse {

// The header must end within this many bytes: its CR LF CR LF starts at one of the first
// HeaderLimit byte positions of the response.
constexpr qsizetype HeaderLimit = 16384;
// How much of a response's start has to be read to decide where its header ends.
constexpr qsizetype HeaderProbeSize = HeaderLimit + 3;

// Where the CR LF CR LF that ends the header starts, or nothing when the response is invalid: it
// does not begin with "HTTP", or its header does not end within HeaderLimit bytes.
std::optional<qsizetype> HeaderEnd(QByteArrayView start);

// Splits a response received into the closed file `response` (which it opens for reading): the
// body goes into a fresh file at `bodyPath`, copied in blocks of 2,048 bytes, and `header`
// receives the status and header lines (each byte one character). Fails when the response is
// invalid or the body file cannot be replaced.
Result SplitIntoFile(QFile &response, const QString &bodyPath, QString &header);

} // namespace HttpResponse
