#include "BenchScenes.h"

#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/TextParam.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <string>

UIBuilder::ParamList mixedPanelParameters(int count)
{
    using namespace GenericParam;
    UIBuilder::ParamList params;
    for (int i = 0; i < count; ++i) {
        const LightweightString<char> name = LightweightString<char>("p") + std::to_string(i).c_str();
        const LightweightString<wchar_t> legend =
            LightweightString<wchar_t>(L"Parameter ") + std::to_wstring(i).c_str();
        switch (i % 5) {
        case 0:
            params.push_back(Cv::make<BoolParam>(legend, name, ResId(), true));
            break;
        case 1:
            params.push_back(Cv::make<IntParam>(legend, name, ResId(), 5, 0, 10, true));
            break;
        case 2:
            params.push_back(Cv::make<DoubleParam>(legend, name, ResId(), 0.5, 0.0, 1.0, true));
            break;
        case 3:
            params.push_back(Cv::make<ChoiceParam>(legend, name, ResId(), 1,
                                                   std::vector<ChoiceParam::Choice>{{L"One", 1}, {L"Two", 2}}));
            break;
        default:
            params.push_back(Cv::make<TextParam>(legend, name, ResId(), L"Some text"));
            break;
        }
    }
    return params;
}

int scrollTableByPages(benchmark::State& state, iTableAdaptor& rows, uint16_t width)
{
    Screen screen(1280, 800);
    auto* table = new TableWidget(TableWidget::InitArgs(&rows, width, 600));
    table->setPos(100, 100);
    GlobManager::realize(table);
    // The first look at the whole height measures every row once; the table benchmarks time that apart.
    screen.flush();
    const int64_t end = table->getMaxScroll();
    for (auto _ : state) {
        if (table->getScrollOffset() >= end)
            table->scrollTo(0);
        else
            table->scrollBy(table->getViewHeight());
        screen.flush();
    }
    const int painted = static_cast<int>(screen.getLastPaintCount());
    Glob::destroy(table);
    return painted;
}
