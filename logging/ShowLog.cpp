#include "logging/ShowLog.h"

#include "frame/ToolPanels.h"
#include "logging/Logger.h"

Logger* openLogWindow(const Cmd::Context&)
{
    Logger::InitArgs args(20, 0, Logger::ShowGauge | Logger::StandardWidgetsSet1 | Logger::StandardWidgetsSet128);
    args.title = UIString(L"Log");
    return static_cast<Logger*>(openToolPanel(new Logger(args), ToolPlacement::Centred));
}
