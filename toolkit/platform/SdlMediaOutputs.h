#pragma once
// The media layer's sound output and preview window, made real with SDL2. Loading the toolkit hands their
// makers to AudioOutput::setFactory and VideoFrameSink::setFactory, so nothing needs to call this header;
// it exists for tests and hosts that want the driver names.
//
// Sound: SDL's usual driver for the desktop; where that finds no device (a server, a container) the silent
// "dummy" driver is opened instead, which consumes samples at the real rate, so playback timing still holds.
// Pictures: an SDL window of the frame size; under SDL_VIDEODRIVER=offscreen it lives in memory only.

#include <string>

namespace SdlMediaOutputs {

// The audio driver SDL chose, or empty before any output was opened.
std::string currentAudioDriver();

} // namespace SdlMediaOutputs
