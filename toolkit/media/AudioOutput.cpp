#include "toolkit/media/AudioOutput.h"

#include <mutex>

namespace {

struct FactoryHolder {
    std::mutex mutex;
    AudioOutput::Factory factory;
};

FactoryHolder& holder()
{
    static FactoryHolder h;
    return h;
}

} // namespace

void AudioOutput::setFactory(Factory factory)
{
    FactoryHolder& h = holder();
    const std::scoped_lock lock(h.mutex);
    h.factory = std::move(factory);
}

std::unique_ptr<AudioOutput> AudioOutput::create()
{
    Factory factory;
    {
        FactoryHolder& h = holder();
        const std::scoped_lock lock(h.mutex);
        factory = h.factory;
    }
    return factory ? factory() : nullptr;
}
