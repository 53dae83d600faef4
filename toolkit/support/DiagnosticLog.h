#pragma once
// DiagnosticLog: the editor's log of diagnostic lines (a tool that failed to start, a capture that could not be
// removed). Lines go to standard error and to the sink, when one is set; tests set a sink to read what was
// logged. Any thread may write; the sink runs on the writing thread.

#include <functional>
#include <string_view>

enum LogTarget : int {
    LogFile = 1,
    LogConsole = 2,
    LogBoth = LogFile | LogConsole,
};

class DiagnosticLog {
public:
    using Sink = std::function<void(LogTarget target, std::string_view line)>;

    static void write(LogTarget target, std::string_view line);
    // Replaces the sink and answers the previous one; an empty sink removes it.
    static Sink setSink(Sink sink);
};
