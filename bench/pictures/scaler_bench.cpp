// The scaler and turner on a camera-sized picture and a small one, opaque and with alpha: the
// part of VFile_Convert between the decoder and the encoder (run.sh times the whole).
// Run (optimised, no sanitizers):
//   cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF
//   cmake --build build/bench --target scaler_bench && build/bench/bin/scaler_bench
#include <benchmark/benchmark.h>

#include "picture/raster_resize.h"
#include "picture/raster_turn.h"

namespace {

slib::Raster Noise(uint32_t width, uint32_t height, bool hasAlpha) {
    slib::Raster raster;
    raster.width = width;
    raster.height = height;
    raster.hasAlpha = hasAlpha;
    raster.rgba.resize(raster.stride() * height);
    uint32_t state = 7;
    for (size_t i = 0; i < raster.rgba.size(); ++i) {
        state = state * 1664525u + 1013904223u;
        raster.rgba[i] = (i % 4 == 3 && !hasAlpha) ? 255 : static_cast<uint8_t>(state >> 24);
    }
    return raster;
}

// Arguments: source width, height, target width, height, alpha.
void Resize(benchmark::State& state) {
    const slib::Raster source = Noise(static_cast<uint32_t>(state.range(0)),
                                      static_cast<uint32_t>(state.range(1)), state.range(4) != 0);
    for (auto _ : state) {
        slib::Raster scaled = slib::ResizeRaster(source, static_cast<uint32_t>(state.range(2)),
                                                 static_cast<uint32_t>(state.range(3)));
        benchmark::DoNotOptimize(scaled.rgba.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}
BENCHMARK(Resize)
    ->Args({4000, 3000, 1600, 1200, 0})
    ->Args({4000, 3000, 1600, 1200, 1})
    ->Args({640, 480, 200, 150, 0})
    ->Args({400, 300, 1600, 1200, 0})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void Turn(benchmark::State& state) {
    const slib::Raster source = Noise(1600, 1200, false);
    for (auto _ : state) {
        slib::Raster upright =
            slib::TurnRaster(source, slib::UprightTurnFor(static_cast<uint16_t>(state.range(0))));
        benchmark::DoNotOptimize(upright.rgba.data());
    }
}
BENCHMARK(Turn)->Arg(3)->Arg(6)->Arg(7)->Unit(benchmark::kMillisecond);

}  // namespace
