#include "toolkit/support/CookieJar.h"

#include <gtest/gtest.h>

#include <mutex>
#include <set>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

bool isFileNameSafe(const std::string& text)
{
    for (const char c : text)
        if (!((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'))
            return false;
    return !text.empty();
}

} // namespace

TEST(CookieJar, CookiesAreUniqueAcrossThreads)
{
    constexpr int perThread = 2000;
    std::mutex mutex;
    std::set<std::string> seen;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            std::vector<std::string> mine;
            for (int i = 0; i < perThread; ++i)
                mine.push_back(CookieJar::instance().makeCookie(84, 0, 0).asString().str());
            std::lock_guard lock(mutex);
            seen.insert(mine.begin(), mine.end());
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(seen.size(), 4u * perThread);
    for (const auto& text : seen)
        ASSERT_TRUE(isFileNameSafe(text)) << text;
}

TEST(CookieJar, AForkedProcessDoesNotRepeatItsParent)
{
    // The child starts with a copy of the parent's jar, counter included: only the process part keeps the
    // next cookies of the two apart.
    int pipeEnds[2];
    ASSERT_EQ(::pipe(pipeEnds), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::close(pipeEnds[0]);
        for (int i = 0; i < 100; ++i) {
            const std::string text = CookieJar::instance().makeCookie(84, 0, 0).asString().str() + "\n";
            if (::write(pipeEnds[1], text.data(), text.size()) != static_cast<ssize_t>(text.size()))
                ::_exit(1);
        }
        ::_exit(0);
    }
    ::close(pipeEnds[1]);
    std::set<std::string> parent;
    for (int i = 0; i < 100; ++i)
        parent.insert(CookieJar::instance().makeCookie(84, 0, 0).asString().str());

    std::string fromChild;
    char buffer[4096];
    for (ssize_t n; (n = ::read(pipeEnds[0], buffer, sizeof buffer)) > 0;)
        fromChild.append(buffer, static_cast<size_t>(n));
    ::close(pipeEnds[0]);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);

    size_t childCount = 0;
    for (size_t start = 0, end; (end = fromChild.find('\n', start)) != std::string::npos; start = end + 1) {
        ++childCount;
        EXPECT_EQ(parent.count(fromChild.substr(start, end - start)), 0u);
    }
    EXPECT_EQ(childCount, 100u);
}

TEST(CookieJar, TextCarriesTheCallersFieldsAndTheNullCookieIsEmpty)
{
    const Cookie a = CookieJar::instance().makeCookie(84, 2, 7);
    EXPECT_FALSE(a.isNull());
    EXPECT_EQ(a.asString().substr(0, 10), "t54-v2-a7-");
    EXPECT_EQ(a.asWString(), fromUTF8(a.asString().view()));

    // Negative fields still give a safe name.
    const Cookie negative = CookieJar::instance().makeCookie(-1, -2, -3);
    EXPECT_TRUE(isFileNameSafe(negative.asString().str())) << negative.asString().c_str();

    const Cookie b = CookieJar::instance().makeCookie(84, 2, 7);
    EXPECT_FALSE(a == b);
    EXPECT_NE(a.asWString(), b.asWString());

    EXPECT_TRUE(Cookie().isNull());
    EXPECT_TRUE(Cookie().asWString().empty());
}
