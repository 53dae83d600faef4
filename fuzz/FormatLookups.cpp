// Arbitrary bytes as the texts the format catalogues look up: a frame rate's display string (read back from
// a menu or a saved setting), a file extension (from a file name), a mount table (from the kernel, with
// escapes) and a custom raster's saved parameters. Each lookup either finds an entry whose own text leads
// back to it, or answers its defined "nothing" value.
#include "FuzzChecks.h"
#include "toolkit/media/CvExport.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/media/DiskManager.h"
#include "toolkit/media/FrameRate.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const LightweightString<wchar_t> text = fromUTF8(bytes);

    const Cv::FrameRate rate = Cv::getFrameRateFromDisplayString(text);
    if (rate != Cv::FrameRate::Unknown)
        check(Cv::getDisplayString(rate) == text, "a frame rate found shows another text");

    const LightweightString<char> id = CvExport::getFormatIDForExtension(text);
    if (!id.empty()) {
        const LightweightString<wchar_t> extension = CvExport::getExtensionForFormatID(id);
        check(!extension.empty(), "a format found has no extension");
        check(CvExport::getFormatIDForExtension(extension) == id, "an extension leads to another format");
    }
    // The bytes as a format ID: a known one has an extension that leads back to it.
    const LightweightString<char> asID(bytes);
    if (const LightweightString<wchar_t> extension = CvExport::getExtensionForFormatID(asID); !extension.empty())
        check(CvExport::getFormatIDForExtension(extension) == asID, "a format's own extension leads elsewhere");

    for (const DiskManager::MountEntry& entry : DiskManager::parseMountTable(bytes))
        check(!entry.device.empty() && !entry.mountPoint.empty() && !entry.fileSystem.empty(),
              "a mount entry has an empty field");

    // The same bytes as a custom raster's saved width; whatever they say, the raster stays within range.
    Cv::DigitalVideoFormats::ScopedCatalogue scratch({});
    configb saved;
    saved.set("width", bytes);
    saved.set("name", bytes);
    const auto raster = Cv::DigitalVideoFormats::findByUID(Cv::DigitalVideoFormats::DigitalVideoFormatInfo::setParams(saved));
    check(raster.isValid() && raster.getWidth() >= 16 && raster.getWidth() <= 16384 && !raster.getName().empty(),
          "a custom raster read is unusable");
    return 0;
}
