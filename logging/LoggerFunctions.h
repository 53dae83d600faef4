#pragma once
// The log panel for callers that hold only a handle: C-style functions that any thread may call. Each first
// checks that the handle is a live log panel and does nothing otherwise, so a task may keep writing after
// the user closed its log.
//
// The formatting functions format printf-style into a buffer of 1024 bytes (longer output is cut there) and
// take the result as ASCII.

#include "logging/LoggerBase.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/LightweightString.h"

class Logger;

// A log panel shown on the screen: centred when x is negative, else with its bottom-left corner at (x, y).
// `name` is the file the log is written to when the panel closes (empty for none). Null without a screen.
Logger* make_logger(const LightweightString<wchar_t>& title, bool firstFlag, const LightweightString<wchar_t>& name,
                    bool showGauge, int rows, int width, int x, int y);

void loggerWrite(Logger* logger, const LightweightString<wchar_t>& text,
                 LoggerBase::eOutputType kind = LoggerBase::eOutputType::Normal);
void logger_write(Logger* logger, const char* format, ...) __attribute__((format(printf, 2, 3)));
void logger_warning(Logger* logger, const char* format, ...) __attribute__((format(printf, 2, 3)));
void logger_error(Logger* logger, const char* format, ...) __attribute__((format(printf, 2, 3)));
void logger_status_line(Logger* logger, const char* format, ...) __attribute__((format(printf, 2, 3)));
void logger_display_progress(Logger* logger, double fraction);
// The colour is accepted for older callers and ignored: each kind of line has its own colour.
void logger_setFont(Logger* logger, const char* fontName, const Colour& colour);
void logger_set_new_title(Logger* logger, const LightweightString<wchar_t>& title);
