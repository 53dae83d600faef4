#include "toolkit/media/AudioOutput.h"

#include "toolkit/media/detail/PluggedFactory.h"

namespace {

PluggedFactory<AudioOutput>& plugged()
{
    static PluggedFactory<AudioOutput> factory;
    return factory;
}

} // namespace

void AudioOutput::setFactory(Factory factory)
{
    plugged().set(std::move(factory));
}

std::unique_ptr<AudioOutput> AudioOutput::create()
{
    return plugged().create();
}
