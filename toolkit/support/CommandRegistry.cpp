#include "toolkit/support/CommandRegistry.h"

#include <algorithm>
#include <mutex>

struct CommandRegistry::State {
    struct Entry {
        Handle handle;
        CommandInfo info;
        ContextFunction function;
    };

    mutable std::mutex mutex;
    std::vector<Entry> entries; // registration order
    Handle lastHandle = 0;

    auto findName(const LightweightString<char>& name) const
    {
        return std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.info.name == name; });
    }
};

CommandRegistry& CommandRegistry::instance()
{
    static auto* registry = new CommandRegistry;
    return *registry;
}

CommandRegistry::CommandRegistry()
    : m_state(std::make_unique<State>())
{
}

CommandRegistry::~CommandRegistry() = default;

CommandRegistry::Handle CommandRegistry::add(CommandInfo info, ContextFunction function)
{
    if (info.name.empty() || !function)
        return 0;
    std::lock_guard lock(m_state->mutex);
    if (m_state->findName(info.name) != m_state->entries.end())
        return 0;
    const Handle handle = ++m_state->lastHandle;
    m_state->entries.push_back({ handle, std::move(info), std::move(function) });
    return handle;
}

bool CommandRegistry::remove(Handle handle)
{
    if (handle == 0)
        return false;
    ContextFunction released;
    {
        std::lock_guard lock(m_state->mutex);
        auto& entries = m_state->entries;
        const auto found
            = std::find_if(entries.begin(), entries.end(), [&](const State::Entry& e) { return e.handle == handle; });
        if (found == entries.end())
            return false;
        // Whatever the function holds is released after unlocking: its destructor may use the registry.
        released = std::move(found->function);
        entries.erase(found);
    }
    return true;
}

bool CommandRegistry::contains(const LightweightString<char>& name) const
{
    std::lock_guard lock(m_state->mutex);
    return m_state->findName(name) != m_state->entries.end();
}

std::optional<CommandInfo> CommandRegistry::find(const LightweightString<char>& name) const
{
    std::lock_guard lock(m_state->mutex);
    const auto found = m_state->findName(name);
    if (found == m_state->entries.end())
        return std::nullopt;
    return found->info;
}

bool CommandRegistry::run(const LightweightString<char>& name, const Cmd::Context& context)
{
    ContextFunction function;
    {
        std::lock_guard lock(m_state->mutex);
        const auto found = m_state->findName(name);
        if (found == m_state->entries.end())
            return false;
        function = found->function;
    }
    if (context.getCommandName().empty())
        function(Cmd::Context(name, context.getArgument()));
    else
        function(context);
    return true;
}

std::vector<LightweightString<char>> CommandRegistry::getNames() const
{
    std::lock_guard lock(m_state->mutex);
    std::vector<LightweightString<char>> names;
    names.reserve(m_state->entries.size());
    for (const State::Entry& entry : m_state->entries)
        names.push_back(entry.info.name);
    return names;
}

size_t CommandRegistry::size() const
{
    std::lock_guard lock(m_state->mutex);
    return m_state->entries.size();
}

CommandRegistrar::CommandRegistrar(const char* name, CommandRegistry::Function function, UIString label, UIString help,
    eCmdScope scope, MapItem mapItem)
    : CommandRegistrar(name,
        function ? CommandRegistry::ContextFunction([call = std::move(function)](const Cmd::Context&) { call(); })
                 : CommandRegistry::ContextFunction(),
        std::move(label), std::move(help), scope, mapItem)
{
}

CommandRegistrar::CommandRegistrar(const char* name, CommandRegistry::ContextFunction function, UIString label,
    UIString help, eCmdScope scope, MapItem mapItem)
    : m_handle(CommandRegistry::instance().add(
        CommandInfo { LightweightString<char>(name), std::move(label), std::move(help), scope, mapItem },
        std::move(function)))
{
}

CommandRegistrar::~CommandRegistrar()
{
    CommandRegistry::instance().remove(m_handle);
}
