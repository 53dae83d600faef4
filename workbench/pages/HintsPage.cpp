// Gallery page: first-use hints. Each button reports one action to the manager, as the editor would; the
// first report of an action (while hints are on) shows its hint in the hint window, whose check box switches
// hints off. A widget named "trash" sits on the page, so hints appear just above it. "Reset" forgets which
// hints were given. The line at the bottom shows what a listener hears.
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TextLabel.h"
#include "uistate/UIStateManager.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <string>

namespace {

constexpr int pageWidth = 720;
constexpr int pageHeight = 300;
constexpr int margin = 16;
constexpr int buttonWidth = 100;

// Actions whose hints differ in kind: plain texts, the device file check, key-bound texts, the LUT folder,
// the joined sentences of 24 and the screen console of 25.
constexpr int shownActions[] = { 0, 1, 2, 3, 7, 12, 16, 23, 24, 25, 27, 32 };

class HintsPage : public StandardPanel {
public:
    HintsPage() : StandardPanel(galleryPageArgs(L"First-use hints", pageWidth, pageHeight))
    {
        addLabel(this, L"Each button reports its action. A hint shows the first time, while hints are on.", margin,
                 margin, pageWidth - 2 * margin);
        const int gap = UifStd::getWidgetGap();
        const int rowHeight = UifStd::getButtonHeight() + gap;
        int i = 0;
        for (const int action : shownActions) {
            const int x = margin + (i % 6) * (buttonWidth + gap);
            const int y = margin + 30 + (i / 6) * rowHeight;
            auto* button = addWidget<Button>(Button::InitArgs(UIString(L"Action " + std::to_wstring(action)),
                                                              buttonWidth, 0, getPalette()),
                                             Glob::UserTopLeft(x, y));
            button->setCallback([action] { UIStateManager::instance().recordAction(static_cast<eUIActionType>(action)); });
            ++i;
        }
        const int controlsTop = margin + 30 + 2 * rowHeight + gap;
        auto* reset = addWidget<Button>(Button::InitArgs(UIString(L"Reset"), buttonWidth, 0, getPalette()),
                                        Glob::UserTopLeft(margin, controlsTop));
        reset->setCallback([] { UIStateManager::instance().setHintsEnabled(true, true); });
        auto* close = addWidget<Button>(Button::InitArgs(UIString(L"Close hints"), buttonWidth, 0, getPalette()),
                                        Glob::UserTopLeft(margin + buttonWidth + gap, controlsTop));
        close->setCallback([] { UIStateManager::instance().hideHints(); });

        auto* trash = addWidget<DrawingSurface>(
            DrawingSurface::InitArgs(
                [](Pictor::Painter& p, const GlobBox& box, const Palette& pal) {
                    p.fillRoundedRect(box.expanded(-2), 4, pal.window(1));
                    p.strokeRoundedRect(box.expanded(-2), 4, pal.text());
                    p.drawTextInBox(L"trash", UifStd::defaultFont(), pal.text(), box, Pictor::TextAlign::Centre);
                },
                80, 40, getPalette()),
            Glob::UserTopLeft(pageWidth - margin - 80, controlsTop));
        trash->setName("trash");

        m_heard = addWidget<TextLabel>(TextLabel::InitArgs(UIString(L"Listeners have heard nothing yet."),
                                                           pageWidth - 2 * margin, 0, getPalette()),
                                       Glob::UserTopLeft(margin, pageHeight - margin - UifStd::getButtonHeight()));
        GlobWatch label(m_heard);
        m_guard = UIStateManager::instance().addListener(
            Cv::makeListener<eUIActionType>([this, label](const eUIActionType& action) {
                ++m_count;
                if (label)
                    m_heard->setString(UIString(L"Listeners heard " + std::to_wstring(m_count)
                                                + L" actions; the last was action " + std::to_wstring(action) + L"."));
            }));
    }

    LightweightString<char> idstring() const override { return "HintsPage"; }

private:
    TextLabel* m_heard = nullptr;
    Cv::Ptr<Cv::Guard> m_guard;
    int m_count = 0;
};

// Starts from a clean slate so that the picture always shows a hint window holding two hints.
void showTwoHints(Glob*)
{
    UIStateManager& manager = UIStateManager::instance();
    manager.setHintsEnabled(true, true);
    manager.recordAction(static_cast<eUIActionType>(0));
    manager.recordAction(static_cast<eUIActionType>(24));
}

GalleryPageRegistrar page("Hints", [] { return new HintsPage(); }, showTwoHints);

} // namespace
