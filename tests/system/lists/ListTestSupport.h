#pragma once
// Shared set-up of the list tests.

#include "toolkit/testing/UiHarness.h"

// The line pressed last is one record for every list in the process, so a press left by an earlier test
// must not pair with this test's first one. Each test's clock starts from real time; moving each test an
// hour further than the one before keeps every earlier press in the past and long gone.
inline void moveClockPastEarlierTests(UiHarness& ui)
{
    static int testsRun = 0;
    ui.advance(++testsRun * 3600.0 * 1000.0);
}
