// The INI rules on arbitrary bytes: reading never fails, and a value written is the value read.
#include "app/ProfileText.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString section = QStringLiteral("System");
    const QString key = QStringLiteral("Current");

    (void)ProfileText::FindValue(content, section, key);
    (void)ProfileText::HasKey(content, QStringLiteral("Form"), QStringLiteral("ButtonOK"));

    const QByteArray written = ProfileText::WithValue(content, section, key, QStringLiteral("zh_TW"));
    if (ProfileText::FindValue(written, section, key) != QLatin1String("zh_TW"))
        std::abort();
    if (!ProfileText::HasKey(written, section, key))
        std::abort();
    return 0;
}
