#include "toolkit/support/CommandRegistry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// The process registry also holds the commands that libraries register at load, so tests look only at theirs.
std::vector<LightweightString<char>> namesStartingWith(const char* prefix)
{
    std::vector<LightweightString<char>> names = CommandRegistry::instance().getNames();
    std::erase_if(names, [&](const LightweightString<char>& name) { return !name.startsWith(prefix); });
    return names;
}

} // namespace

TEST(CommandRegistry, RegistrarRegistersForItsLifetime)
{
    int runs = 0;
    {
        CommandRegistrar registrar(
            "test.Open Panel", [&] { ++runs; }, UIString(), UIString(), cmdScopeTools);
        EXPECT_TRUE(registrar.isRegistered());
        const auto info = CommandRegistry::instance().find("test.Open Panel");
        ASSERT_TRUE(info.has_value());
        EXPECT_TRUE(CommandRegistry::instance().run("test.Open Panel"));
        EXPECT_EQ(runs, 1);
    }
    // Gone with its registrar, as when the library that owns it is unloaded.
    EXPECT_FALSE(CommandRegistry::instance().contains("test.Open Panel"));
    EXPECT_FALSE(CommandRegistry::instance().run("test.Open Panel"));
    EXPECT_EQ(runs, 1);
}

TEST(CommandRegistry, DuplicateNameIsRefusedUntilTheFirstGoes)
{
    int firstRuns = 0;
    int secondRuns = 0;
    auto first = std::make_unique<CommandRegistrar>(
        "test.Duplicate", [&] { ++firstRuns; }, UIString(), UIString(), cmdScopeTools);
    CommandRegistrar second(
        "test.Duplicate", [&] { ++secondRuns; }, UIString(), UIString(), cmdScopeApplication);
    EXPECT_TRUE(first->isRegistered());
    EXPECT_FALSE(second.isRegistered());
    CommandRegistry::instance().run("test.Duplicate");
    EXPECT_EQ(firstRuns, 1);
    EXPECT_EQ(secondRuns, 0);
    EXPECT_EQ(namesStartingWith("test.Duplicate").size(), 1u);

    // The refused registrar's destruction must not take the name from the first either.
    {
        CommandRegistrar third(
            "test.Duplicate", [] {}, UIString(), UIString(), cmdScopeTools);
    }
    EXPECT_TRUE(CommandRegistry::instance().contains("test.Duplicate"));

    first.reset();
    EXPECT_FALSE(CommandRegistry::instance().run("test.Duplicate"));
    CommandRegistrar again(
        "test.Duplicate", [&] { ++secondRuns; }, UIString(), UIString(), cmdScopeTools);
    EXPECT_TRUE(again.isRegistered());
    CommandRegistry::instance().run("test.Duplicate");
    EXPECT_EQ(secondRuns, 1);
}

TEST(CommandRegistry, ContextFormHearsItsNameAndTheArgument)
{
    LightweightString<char> heardName;
    LightweightString<wchar_t> heardArgument;
    CommandRegistrar registrar(
        "test.ShowLog",
        [&](const Cmd::Context& context) {
            heardName = context.getCommandName();
            heardArgument = context.getArgument();
        },
        UIString(), UIString(), cmdScopeApplication, MapItem(0x4C, 1));

    ASSERT_TRUE(CommandRegistry::instance().run("test.ShowLog", Cmd::Context({}, L"errors")));
    EXPECT_EQ(heardName, "test.ShowLog");
    EXPECT_EQ(heardArgument, L"errors");
}

TEST(CommandRegistry, NamesListInRegistrationOrder)
{
    CommandRegistrar c(
        "test.order.c", [] {}, UIString(), UIString(), cmdScopeTools);
    CommandRegistrar a(
        "test.order.a", [] {}, UIString(), UIString(), cmdScopeTools);
    auto b = std::make_unique<CommandRegistrar>(
        "test.order.b", [] {}, UIString(), UIString(), cmdScopeTools);
    EXPECT_EQ(namesStartingWith("test.order."),
        (std::vector<LightweightString<char>> { "test.order.c", "test.order.a", "test.order.b" }));
    b.reset();
    EXPECT_EQ(
        namesStartingWith("test.order."), (std::vector<LightweightString<char>> { "test.order.c", "test.order.a" }));
}

TEST(CommandRegistry, CommandMayUnregisterItselfWhileRunning)
{
    CommandRegistry registry;
    int runs = 0;
    CommandRegistry::Handle handle = 0;
    handle = registry.add(
        CommandInfo { "once", UIString(), UIString(), cmdScopeTools, MapItem() }, [&](const Cmd::Context&) {
            ++runs;
            registry.remove(handle);
            registry.run("once"); // already gone: must not recurse
        });
    EXPECT_TRUE(registry.run("once"));
    EXPECT_FALSE(registry.run("once"));
    EXPECT_EQ(runs, 1);
}
