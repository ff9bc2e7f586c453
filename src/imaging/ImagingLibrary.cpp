#include "imaging/ImagingLibrary.h"

#include <exiv2/exiv2.hpp>
#include <vips/vips8>

#include <mutex>

namespace {

std::once_flag pixelsStarted;
std::once_flag tagsStarted;
std::mutex xmpToolkit;

// The XMP toolkit keeps state of its own while it parses; imports read tags on every core.
void LockXmpToolkit(void *, bool lock)
{
    if (lock)
        xmpToolkit.lock();
    else
        xmpToolkit.unlock();
}

void StartPixels()
{
    if (VIPS_INIT("orvana") != 0)
        vips_error_clear();
    // Photos are edited in place: an operation cache would hand back the picture a file held
    // before its last edit.
    vips_cache_set_max(0);
    // Damaged files are expected input; their complaints are not the user's business.
    g_log_set_handler("VIPS", G_LOG_LEVEL_WARNING, [](const gchar *, GLogLevelFlags, const gchar *, gpointer) {}, nullptr);
}

void StartTags()
{
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    // The XMP toolkit must be set up before several threads read tags at once.
    Exiv2::XmpParser::initialize(LockXmpToolkit, nullptr);
}

} // namespace

void InitialisePixelLibrary()
{
    std::call_once(pixelsStarted, StartPixels);
}

void InitialiseTagLibrary()
{
    std::call_once(tagsStarted, StartTags);
}

void InitialiseImaging()
{
    InitialisePixelLibrary();
    InitialiseTagLibrary();
}

void DeInitialiseImaging()
{
    Exiv2::XmpParser::terminate();
    vips_shutdown();
}
