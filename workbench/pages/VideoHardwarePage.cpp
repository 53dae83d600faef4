// Gallery page: choosing the video hardware. Three configurations are registered: the software preview (a
// window showing frames at the project's output format), "No output", and an external monitor whose device
// is not connected, so switching to it fails: the choice stays where it was and nobody is told. The page
// lists them with the current one marked, switches on a click, and shows what the preview shows.
#include "toolkit/media/CvDeviceDriverManager.h"
#include "toolkit/media/SoftwareAudioMixer.h"
#include "toolkit/media/SoftwarePreviewOutput.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TextLabel.h"
#include "uistate/UIHWDeviceManager.h"
#include "uistate/UIStateManager.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <array>
#include <string>
#include <vector>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int pageWidth = 760;
constexpr int pageHeight = 420;
constexpr int margin = 16;
constexpr int listWidth = 300;

// A serial-digital output card reached through its device node. The node is absent on a machine without the
// card, so opening fails: the real outcome of choosing hardware that is not there.
class CardOutputDriver : public CvResourceTypeBase {
public:
    CardOutputDriver() : CvResourceTypeBase(L"SDI card", videoOutputType) {}
    bool open() override
    {
        m_fd = ::open("/dev/tessel-sdi0", O_WRONLY | O_CLOEXEC);
        return m_fd >= 0;
    }
    void close() override
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }
    void stop() override {}
    void setOutputImageFormat(const OutputFormat::Details&) override {}
    void start(const CvVideoResources&) override {}

private:
    int m_fd = -1;
};

SoftwarePreviewOutput& preview()
{
    static const Cv::Ptr<SoftwarePreviewOutput> output = [] {
        Cv::Ptr<SoftwarePreviewOutput> made(new SoftwarePreviewOutput(L"Software preview"));
        CvDeviceDriverManager::addDriver(made);
        CvDeviceDriverManager::addDriver(Cv::Ptr<CvResourceTypeBase>(new CardOutputDriver()));
        CvDeviceDriverManager::addDriver(Cv::Ptr<CvResourceTypeBase>(new SoftwareAudioMixer()));
        CvDeviceDriverManager::defineConfiguration(L"Software preview", { L"Software preview" });
        CvDeviceDriverManager::defineConfiguration(L"No output", {});
        CvDeviceDriverManager::defineConfiguration(L"External monitor", { L"SDI card" });
        RegisterHWDevices(Vector<LightweightString<wchar_t>> { L"Software preview", L"No output", L"External monitor" });
        return made;
    }();
    return *output;
}

// Colour bars, the picture a preview is checked with.
VideoFrame colourBars()
{
    constexpr std::array<uint32_t, 7> bars { 0xFFC0C0C0u, 0xFFC0C000u, 0xFF00C0C0u, 0xFF00C000u,
                                             0xFFC000C0u, 0xFFC00000u, 0xFF0000C0u };
    VideoFrame frame(70, 40);
    for (uint32_t y = 0; y < frame.height; ++y)
        for (uint32_t x = 0; x < frame.width; ++x)
            frame.pixels[y * frame.width + x] = bars[x / 10];
    return frame;
}

class VideoHardwarePage : public StandardPanel {
public:
    VideoHardwarePage() : StandardPanel(galleryPageArgs(L"Video hardware", pageWidth, pageHeight))
    {
        preview();
        UIHWDeviceManager& manager = UIHWDeviceManager::instance();
        const Vector<LightweightString<wchar_t>> names = manager.getHWDevicesAvailable();
        addLabel(this, L"Registered configurations (click to switch):", margin, margin, listWidth);
        const int gap = UifStd::getWidgetGap();
        for (size_t i = 0; i < names.size(); ++i) {
            auto* button = addWidget<Button>(Button::InitArgs(UIString(names[i]), listWidth, 0, getPalette()),
                                             Glob::UserTopLeft(margin, margin + 28 + int(i) * (UifStd::getButtonHeight() + gap)));
            const LightweightString<char> name = toUTF8(names[i].view());
            button->setCallback([this, name] { switchTo(name); });
        }
        const int statusTop = margin + 28 + int(names.size()) * (UifStd::getButtonHeight() + gap) + gap;
        m_current = addWidget<TextLabel>(TextLabel::InitArgs(UIString(), listWidth, 0, getPalette()),
                                         Glob::UserTopLeft(margin, statusTop));
        m_result = addWidget<TextLabel>(TextLabel::InitArgs(UIString(), listWidth, 70, getPalette()),
                                        Glob::UserTopLeft(margin, statusTop + UifStd::getButtonHeight()));
        m_result->setWordWrap(true);
        addLabel(this, L"Software preview (output format, scaled to fit):", margin * 2 + listWidth, margin,
                 pageWidth - listWidth - 3 * margin);
        addWidget<DrawingSurface>(DrawingSurface::InitArgs([](Pictor::Painter& p, const GlobBox& box,
                                                              const Palette& pal) { drawPreview(p, box, pal); },
                                                           384, 216, getPalette()),
                                  Glob::UserTopLeft(margin * 2 + listWidth, margin + 28));
        m_guard = manager.addListener(Cv::makeListener<NotifyMsg>([this](const NotifyMsg&) { ++m_notifications; }));
        showCurrent();
    }

    LightweightString<char> idstring() const override { return "VideoHardwarePage"; }

    void switchTo(const LightweightString<char>& name)
    {
        const int heardBefore = m_notifications;
        const bool ok = UIHWDeviceManager::instance().setCurrentHW(name);
        if (ok && preview().isRunning())
            preview().showFrame(colourBars());
        const std::wstring wide(fromUTF8(name.view()).view());
        // The last few outcomes, newest last, so a failure stays readable after the next switch.
        m_history.push_back(ok ? wide + L": switched; listeners told " + std::to_wstring(m_notifications - heardBefore) + L"."
                               : wide + L": failed, device not there; choice kept, nobody told.");
        if (m_history.size() > 3)
            m_history.erase(m_history.begin());
        std::wstring text;
        for (const std::wstring& line : m_history)
            text += (text.empty() ? L"" : L"\n") + line;
        m_result->setString(UIString(text));
        showCurrent();
        redraw();
    }

private:
    static void drawPreview(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
    {
        p.fillRect(box, Colour::fromBytes(0, 0, 0));
        if (!preview().isRunning()) {
            p.drawTextInBox(L"no output", UifStd::defaultFont(), pal.text(), box, Pictor::TextAlign::Centre);
            return;
        }
        const VideoFrame shown = preview().getLastFrame();
        if (shown.width == 0 || shown.height == 0)
            return;
        const VideoFrame small = shown.scaledTo(static_cast<uint32_t>(box.width()), static_cast<uint32_t>(box.height()));
        Pictor::Image image(static_cast<int>(small.width), static_cast<int>(small.height));
        for (uint32_t y = 0; y < small.height; ++y)
            for (uint32_t x = 0; x < small.width; ++x)
                image.setPixel(static_cast<int>(x), static_cast<int>(y), small.at(x, y));
        p.drawImage(image, box);
        const OutputFormat::ImageSize size = preview().getFormat().imageSize();
        p.drawTextInBox(std::to_wstring(size.width) + L" x " + std::to_wstring(size.height), UifStd::defaultFont(),
                        Colour::fromBytes(255, 255, 255), GlobBox(box.left() + 4, box.bottom() + 2, box.right(), box.bottom() + 22));
    }

    void showCurrent()
    {
        UIHWDeviceManager& manager = UIHWDeviceManager::instance();
        const Vector<LightweightString<wchar_t>> names = manager.getHWDevicesAvailable();
        const int current = manager.getCurrentHW();
        const std::wstring name = current >= 0 && current < int(names.size()) ? std::wstring(names[size_t(current)].view()) : L"none";
        m_current->setString(UIString(L"Current: " + name + L" (index " + std::to_wstring(current) + L")"));
    }

    TextLabel* m_current = nullptr;
    TextLabel* m_result = nullptr;
    std::vector<std::wstring> m_history;
    Cv::Ptr<Cv::Guard> m_guard;
    int m_notifications = 0;
};

// Switches to no output, tries the monitor that is not there, then the preview, so the picture shows the
// failure's defined outcome and the preview running; a first-use hint about hardware shows beside it.
void switchAndFail(Glob* panel)
{
    auto* page = dynamic_cast<VideoHardwarePage*>(panel);
    if (!page)
        return;
    page->switchTo("No output");
    page->switchTo("External monitor");
    page->switchTo("Software preview");
    UIStateManager& hints = UIStateManager::instance();
    hints.setHintsEnabled(true, true);
    hints.recordAction(static_cast<eUIActionType>(3), panel->getScreenPos() + XY<int> { 16, 12 });
}

GalleryPageRegistrar page("Video hardware", [] { return new VideoHardwarePage(); }, switchAndFail);

} // namespace
