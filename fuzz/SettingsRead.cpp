// Arbitrary bytes as the settings of a widget made by type name ("key=value" lines): every typed reader must
// answer a value that keeps its rule or nothing, and every widget's InitArgs must be made from them.
#include "FuzzChecks.h"
#include "toolkit/support/SettingsReader.h"
#include "toolkit/ui/GlobCreationInfo.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/NumericTextBox.h"
#include "toolkit/widgets/RadioSet.h"
#include "toolkit/widgets/Slider.h"
#include "toolkit/widgets/StatusMessage.h"
#include "toolkit/widgets/TextLabel.h"
#include "toolkit/widgets/TitleMenuButton.h"
#include "toolkit/widgets/TitleTextBox.h"

#include <cmath>
#include <cstdint>
#include <string_view>

namespace {

void readEveryWay(const SettingsReader& reader, std::string_view key)
{
    const auto integer = reader.integer(key);
    const auto number = reader.number(key);
    // Every integer text is also a number text, and reads as the same value.
    if (integer) {
        check(number.has_value(), "a whole number does not read as a number");
        check(*number == static_cast<double>(*integer), "a whole number reads as another number");
    }
    if (number)
        check(std::isfinite(*number), "a number read is not finite");
    if (const auto items = reader.list(key))
        for (const auto& item : *items)
            check(!item.empty(), "a list holds an empty item");
    reader.boolean(key);
    reader.text(key);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    GlobCreationInfo info(200, 24);
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        const size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            info.config.set(line.substr(0, equals), line.substr(equals + 1));
    }
    const SettingsReader reader(info.config);
    for (const auto& entry : info.config)
        readEveryWay(reader, entry.key.view());

    const Checkbox::InitArgs checkbox(info);
    const DropDownMenuButton::InitArgs dropDown(info);
    const NumericTextBox::InitArgs numberBox(info);
    const RadioSet::InitArgs radioSet(info);
    const Slider::InitArgs slider(info);
    const StatusMessage::InitArgs status(info);
    const TextLabel::InitArgs label(info);
    const TitleMenuButton::InitArgs titleMenu(info);
    const TitleTextBox::InitArgs titleText(info);
    check(titleText.entryWidth <= info.width, "a text box is wider than its row");
    check(numberBox.maxLength >= 0, "a number box allows a negative length");
    return 0;
}
