#pragma once

#include <benchmark/benchmark.h>

/// Moves something a little further, again and again from 0 to 1, and paints what follows.
template <typename Move, typename Paint>
void moveAndPaint(benchmark::State& state, double step, const Move& move, const Paint& paint)
{
    paint();
    double position = 0;
    for (auto _ : state) {
        position = position >= 1 ? 0 : position + step;
        move(position);
        paint();
    }
}
