#include "toolkit/support/DiagnosticLog.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace {

std::mutex& sinkMutex()
{
    static std::mutex mutex;
    return mutex;
}

DiagnosticLog::Sink& currentSink()
{
    static DiagnosticLog::Sink sink;
    return sink;
}

} // namespace

void DiagnosticLog::write(LogTarget target, std::string_view line)
{
    Sink sink;
    {
        std::lock_guard lock(sinkMutex());
        sink = currentSink();
    }
    if (target & LogConsole)
        std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
    if (sink)
        sink(target, line);
}

DiagnosticLog::Sink DiagnosticLog::setSink(Sink sink)
{
    std::lock_guard lock(sinkMutex());
    return std::exchange(currentSink(), std::move(sink));
}
