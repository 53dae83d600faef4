#include "LoggerTestSupport.h"

#include "logging/LoggerFunctions.h"

#include <thread>

// Eight tasks write at once into one panel; the panel is touched only here, on the user-interface thread,
// which keeps draining while they write.
TEST_F(LoggerTest, EightThreadsWritingAtOnceLoseNoLineAndKeepEachThreadsOrder)
{
    constexpr int threads = 8;
    constexpr int linesEach = 10000;
    std::atomic<int> finished { 0 };
    std::vector<std::thread> writers;
    for (int t = 0; t < threads; ++t)
        writers.emplace_back([this, t, &finished] {
            for (int i = 0; i < linesEach; ++i)
                loggerWrite(log, std::to_wstring(t) + L" " + std::to_wstring(i));
            ++finished;
        });
    while (finished < threads)
        ui.step();
    for (std::thread& writer : writers)
        writer.join();
    ui.step();

    ASSERT_EQ(log->numQueuedLines(), 0u);
    ASSERT_EQ(log->getNumUsedRows(), static_cast<unsigned>(threads * linesEach));
    std::vector<int> next(threads, 0);
    for (unsigned row = 0; row < log->getNumUsedRows(); ++row) {
        int thread = -1, line = -1;
        ASSERT_EQ(std::sscanf(log->getRow(row).text.c_str(), "%d %d", &thread, &line), 2) << row;
        ASSERT_GE(thread, 0);
        ASSERT_LT(thread, threads);
        ASSERT_EQ(line, next[thread]) << "row " << row << " of thread " << thread;
        ++next[thread];
    }
    EXPECT_EQ(next, std::vector<int>(threads, linesEach));
    EXPECT_EQ(log->getTaskLog().size(), static_cast<size_t>(threads * linesEach));
}
