#pragma once
// Opening the editor's log window: a log panel centred on the screen. The command that runs it receives
// the command's context.

#include "toolkit/support/CommandRegistry.h"

class Logger;

// Answers the panel shown, or null when there is no screen.
Logger* openLogWindow(const Cmd::Context& context);
