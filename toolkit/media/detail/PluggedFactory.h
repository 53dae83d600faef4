#pragma once
// The maker of an output that the platform layer plugs in at load time (sound, video frames): kept behind a
// mutex because a device thread may ask for an output while the platform is still registering its maker.

#include <functional>
#include <memory>
#include <mutex>

template <typename Output>
class PluggedFactory {
public:
    using Factory = std::function<std::unique_ptr<Output>()>;

    void set(Factory factory)
    {
        const std::scoped_lock lock(m_mutex);
        m_factory = std::move(factory);
    }
    // Null when nothing is plugged in.
    std::unique_ptr<Output> create()
    {
        Factory factory;
        {
            const std::scoped_lock lock(m_mutex);
            factory = m_factory;
        }
        return factory ? factory() : nullptr;
    }

private:
    std::mutex m_mutex;
    Factory m_factory;
};
