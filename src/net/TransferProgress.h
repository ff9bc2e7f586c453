#pragma once

#include <QtGlobal>
#include <functional>

// Told how a long transfer is going: bytes done so far and the total, or -1 when the total is not
// known (a download's size is whatever the server sends). Called on the engine's thread while it
// waits; keep it quick.
using TransferProgress = std::function<void(qint64 done, qint64 total)>;
