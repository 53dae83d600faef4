#pragma once
// Named commands of the editor. Libraries register theirs with static CommandRegistrar objects, which run during
// static initialisation (possibly before any other part of the toolkit is ready) and unregister when the
// library is unloaded. The host's command system (key bindings, menus, the command line) runs them by name.
//
// Names are unique: a second registration of a name that is taken is refused (its registrar reports
// isRegistered() false) and the first keeps the name. When the first is unregistered the name is free again.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/UIString.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Where a command applies. The host's command system gives the values their meaning; the toolkit stores them.
enum eCmdScope {
    cmdScopeApplication = 0,
    cmdScopeEditor = 1,
    cmdScopeTools = 2,
};

// A command's default key binding. The default binds no key.
struct MapItem {
    MapItem() = default;
    explicit MapItem(int keyCode, unsigned modifierMask = 0)
        : key(keyCode)
        , modifiers(modifierMask)
    {
    }
    bool isNone() const { return key == 0; }
    bool operator==(const MapItem&) const = default;

    int key = 0;
    unsigned modifiers = 0;
};

namespace Cmd {

// What a command is told when it runs: its own name and an optional argument from the caller.
class Context {
public:
    Context() = default;
    explicit Context(LightweightString<char> commandName, LightweightString<wchar_t> argument = {})
        : m_commandName(std::move(commandName))
        , m_argument(std::move(argument))
    {
    }

    const LightweightString<char>& getCommandName() const { return m_commandName; }
    const LightweightString<wchar_t>& getArgument() const { return m_argument; }

private:
    LightweightString<char> m_commandName;
    LightweightString<wchar_t> m_argument;
};

} // namespace Cmd

// A registered command as the registry describes it.
struct CommandInfo {
    LightweightString<char> name;
    UIString label;
    UIString help;
    eCmdScope scope = cmdScopeApplication;
    MapItem mapItem;
};

class CommandRegistry {
public:
    using Function = std::function<void()>;
    using ContextFunction = std::function<void(const Cmd::Context&)>;
    using Handle = uint64_t; // 0 is no registration

    // The process's registry, made on first use and never destroyed, so registrars of any library may use it
    // from their static initialisers and destructors.
    static CommandRegistry& instance();

    CommandRegistry();
    ~CommandRegistry();
    CommandRegistry(const CommandRegistry&) = delete;
    CommandRegistry& operator=(const CommandRegistry&) = delete;

    // Answers 0 (and registers nothing) for an empty name, a missing function or a name that is taken.
    Handle add(CommandInfo info, ContextFunction function);
    bool remove(Handle handle);

    bool contains(const LightweightString<char>& name) const;
    std::optional<CommandInfo> find(const LightweightString<char>& name) const;
    // Runs the command and answers whether one of that name existed. The command runs on the calling thread,
    // with the registry unlocked, so it may register, unregister or run other commands. When the context names
    // no command, the command is given its own name.
    bool run(const LightweightString<char>& name, const Cmd::Context& context = Cmd::Context());
    // Every registered name, in registration order.
    std::vector<LightweightString<char>> getNames() const;
    size_t size() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// Registers a command for as long as it lives; made as a static object of the library that owns the command.
class CommandRegistrar {
public:
    CommandRegistrar(const char* name, CommandRegistry::Function function, UIString label, UIString help,
        eCmdScope scope, MapItem mapItem = MapItem());
    CommandRegistrar(const char* name, CommandRegistry::ContextFunction function, UIString label, UIString help,
        eCmdScope scope, MapItem mapItem = MapItem());
    ~CommandRegistrar();
    CommandRegistrar(const CommandRegistrar&) = delete;
    CommandRegistrar& operator=(const CommandRegistrar&) = delete;

    bool isRegistered() const { return m_handle != 0; }

private:
    CommandRegistry::Handle m_handle = 0;
};
