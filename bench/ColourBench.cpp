// Colour tool benchmarks: sampling a full-HD screen area (average and range), repainting a 256-pixel wheel
// after a brightness change, and one step of a wheel drag from the mouse move to the published colour.
//
//     build/release/bin/tessel-bench --benchmark_filter=Colour

#include "colour/ColEyeDropBase.h"
#include "colour/HSColourWheel.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/testing/UiHarness.h"

#include <benchmark/benchmark.h>

#include <cstdint>

namespace {

// Noise over the whole screen: every pixel differs from its neighbours, and the range's bounds spread over
// nearly the whole colour cube, with many pixels on a bound's own fraction.
class NoiseGlob : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };
    explicit NoiseGlob(const InitArgs& args) : Glob(args), m_image(args.width, args.height)
    {
        uint32_t state = 12345;
        for (int row = 0; row < m_image.height(); ++row)
            for (int col = 0; col < m_image.width(); ++col) {
                state = state * 1664525u + 1013904223u;
                m_image.row(row)[col] = 0xff000000u | (state >> 8);
            }
    }
    void drawBackground() override { painter().drawImage(m_image, 0, 0); }

private:
    Pictor::Image m_image;
};

// A smooth picture over the whole screen, as a photograph or a graded frame shows: hue across, brightness up.
class GradientGlob : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };
    explicit GradientGlob(const InitArgs& args) : Glob(args), m_image(args.width, args.height)
    {
        for (int row = 0; row < m_image.height(); ++row)
            for (int col = 0; col < m_image.width(); ++col)
                m_image.row(row)[col] = Pictor::Image::premultiplied(Colour::fromHSV(
                    {360.0 * col / m_image.width(), 0.8, 1.0 - 0.9 * row / m_image.height()}));
    }
    void drawBackground() override { painter().drawImage(m_image, 0, 0); }

private:
    Pictor::Image m_image;
};

using Area = Cv::Box<double, Cv::BottomUpTraits>;

void BM_ColourAverageOfFullHdArea(benchmark::State& state)
{
    UiHarness ui(1920, 1080);
    ui.make<NoiseGlob>(NoiseGlob::InitArgs(1920, 1080));
    ui.flush();
    for (auto _ : state)
        benchmark::DoNotOptimize(ColEyeDropBase::getPixelColour(Area(0, 0, 1920, 1080)));
}
BENCHMARK(BM_ColourAverageOfFullHdArea)->Unit(benchmark::kMillisecond);

void BM_ColourRangeOfFullHdArea(benchmark::State& state)
{
    UiHarness ui(1920, 1080);
    ui.make<NoiseGlob>(NoiseGlob::InitArgs(1920, 1080));
    ui.flush();
    for (auto _ : state)
        benchmark::DoNotOptimize(ColEyeDropBase::getPixelRange(Area(0, 0, 1920, 1080)));
}
BENCHMARK(BM_ColourRangeOfFullHdArea)->Unit(benchmark::kMillisecond);

void BM_ColourRangeOfFullHdGradient(benchmark::State& state)
{
    UiHarness ui(1920, 1080);
    ui.make<GradientGlob>(GradientGlob::InitArgs(1920, 1080));
    ui.flush();
    for (auto _ : state)
        benchmark::DoNotOptimize(ColEyeDropBase::getPixelRange(Area(0, 0, 1920, 1080)));
}
BENCHMARK(BM_ColourRangeOfFullHdGradient)->Unit(benchmark::kMillisecond);

void BM_ColourWheelRepaintAfterBrightnessChange(benchmark::State& state)
{
    UiHarness ui(400, 400);
    auto* wheel = ui.make<HSColourWheel>(HSColourWheel::InitArgs(256, 1.0, 0), Glob::BottomLeft(10, 10));
    ui.flush();
    double v = 0.5;
    for (auto _ : state) {
        v = v == 0.5 ? 0.6 : 0.5;
        wheel->setDisplayV(v);
        ui.flush();
    }
}
BENCHMARK(BM_ColourWheelRepaintAfterBrightnessChange)->Unit(benchmark::kMicrosecond);

void BM_ColourWheelDragStep(benchmark::State& state)
{
    UiHarness ui(400, 400);
    auto* wheel = ui.make<HSColourWheel>(HSColourWheel::InitArgs(256, 1.0, 0), Glob::BottomLeft(10, 10));
    auto server = Cv::make<ValServer<ColourData>>();
    wheel->setDataAdaptor(makeServerAdaptor(server));
    const XY<int> centre = wheel->getScreenPos() + XY<int>(128, 128);
    ui.screen().mouseMove(centre);
    ui.screen().mouseButton(centre, Event::LeftButton, true);
    bool flip = false;
    for (auto _ : state) {
        flip = !flip;
        ui.screen().mouseMove(centre + (flip ? XY<int>(60, 20) : XY<int>(-30, 70)));
        benchmark::DoNotOptimize(server->getValue());
    }
    ui.screen().mouseButton(centre, Event::LeftButton, false);
}
BENCHMARK(BM_ColourWheelDragStep)->Unit(benchmark::kMicrosecond);

} // namespace
