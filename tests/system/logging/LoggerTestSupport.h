#pragma once
// Shared set-up of the log panel tests: a panel in the harness, and the rows it holds as plain text.

#include "logging/Logger.h"
#include "toolkit/testing/UiHarness.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class LoggerTest : public ::testing::Test {
protected:
    using Kind = LoggerBase::eOutputType;

    Logger* makeLogger(unsigned flags = 0, uint16_t rows = 10, uint16_t width = 600)
    {
        return ui.make<Logger>(Logger::InitArgs(rows, width, flags), Glob::BottomLeft(20, 20));
    }
    // The used rows' texts.
    static std::vector<std::string> rows(const Logger& log)
    {
        std::vector<std::string> out;
        for (unsigned i = 0; i < log.getNumUsedRows(); ++i)
            out.push_back(log.getRow(i).text.str());
        return out;
    }

    UiHarness ui;
    Logger* log = makeLogger();
};
