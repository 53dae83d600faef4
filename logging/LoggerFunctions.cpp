#include "logging/LoggerFunctions.h"

#include "logging/Logger.h"
#include "logging/detail/LiveLoggers.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"

#include <cstdarg>
#include <cstdio>

namespace {

void writeFormatted(Logger* logger, LoggerBase::eOutputType kind, const char* format, va_list args)
{
    if (!format)
        return;
    char buffer[1024];
    std::vsnprintf(buffer, sizeof buffer, format, args);
    // ASCII: each byte is one character.
    std::wstring text;
    for (const char* p = buffer; *p; ++p)
        text += static_cast<wchar_t>(static_cast<unsigned char>(*p));
    loggerWrite(logger, LightweightString<wchar_t>(std::move(text)), kind);
}

// Runs a change of the panel itself on the user-interface thread: at once there, else deferred, checking
// again that the panel still lives when it runs.
void onUiThread(Logger* handle, std::function<void(Logger&)> action)
{
    if (isMainThread()) {
        LiveLoggers::with(handle, action);
        return;
    }
    LiveLoggers::with(handle, [&action](Logger& logger) {
        defer([watch = GlobWatch(&logger), action = std::move(action)] {
            if (auto* live = dynamic_cast<Logger*>(watch.get()))
                LiveLoggers::with(live, action);
        });
    });
}

} // namespace

Logger* make_logger(const LightweightString<wchar_t>& title, bool firstFlag, const LightweightString<wchar_t>& name,
                    bool showGauge, int rows, int width, int x, int y)
{
    if (!Screen::current())
        return nullptr;
    Logger::InitArgs args(static_cast<uint16_t>(std::clamp(rows, 0, 65535)),
                          static_cast<uint16_t>(std::clamp(width, 0, 65535)),
                          (firstFlag ? Logger::FirstFlag : 0u) | (showGauge ? Logger::ShowGauge : 0u));
    args.title = UIString(title);
    args.logFileName = name;
    auto* logger = new Logger(args);
    logger->setupRootPos(x < 0 ? Glob::Centre() : Glob::BottomLeft(x, y));
    if (!GlobManager::realize(logger)) {
        Glob::destroy(logger);
        return nullptr;
    }
    return logger;
}

void loggerWrite(Logger* logger, const LightweightString<wchar_t>& text, LoggerBase::eOutputType kind)
{
    LiveLoggers::with(logger, [&](Logger& live) { live.write(text, kind); });
}

#define TESSEL_LOGGER_FORMATTED(function, kind)                                                               \
    void function(Logger* logger, const char* format, ...)                                                    \
    {                                                                                                         \
        va_list args;                                                                                         \
        va_start(args, format);                                                                               \
        writeFormatted(logger, kind, format, args);                                                           \
        va_end(args);                                                                                         \
    }

TESSEL_LOGGER_FORMATTED(logger_write, LoggerBase::eOutputType::Normal)
TESSEL_LOGGER_FORMATTED(logger_warning, LoggerBase::eOutputType::Warning)
TESSEL_LOGGER_FORMATTED(logger_error, LoggerBase::eOutputType::Error)
TESSEL_LOGGER_FORMATTED(logger_status_line, LoggerBase::eOutputType::StatusLine)

#undef TESSEL_LOGGER_FORMATTED

void logger_display_progress(Logger* logger, double fraction)
{
    // Through the task log, which hands progress from other threads to the user-interface thread.
    LiveLoggers::with(logger, [fraction](Logger& live) {
        if (isMainThread())
            live.progress(fraction);
        else
            live.getTaskLog().setProgress(fraction);
    });
}

void logger_setFont(Logger* logger, const char* fontName, const Colour&)
{
    const LightweightString<char> family(fontName ? fontName : "");
    onUiThread(logger, [family](Logger& live) { live.setFont(Pictor::FontDesc(family, getDefaultFontSize())); });
}

void logger_set_new_title(Logger* logger, const LightweightString<wchar_t>& title)
{
    onUiThread(logger, [title](Logger& live) { live.set_new_title(title); });
}
