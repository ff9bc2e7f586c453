// Any bytes as a plug-in's answer file: read without a crash, and whatever is taken for import is
// an existing photo file named by an absolute path.
#include "library/PluginAnswer.h"

#include <QFileInfo>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray answer(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const PluginRun run = ReadPluginAnswer(answer, true);
    if (!run.result && !run.importedFiles.isEmpty())
        std::abort();
    for (const QString &path : run.importedFiles) {
        if (!QFileInfo(path).isAbsolute() || !QFileInfo(path).isFile())
            std::abort();
    }
    return 0;
}
