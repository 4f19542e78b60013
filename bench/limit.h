#pragma once

#include <benchmark/benchmark.h>

#include <string>

// Every benchmark states the limit a user would notice next to the figure it
// bounds, in the same unit, and scripts/bench sets the two side by side.
// Without `figure` the limit bounds the time per iteration, in the
// benchmark's time unit; with it, the counter of that name.
inline void setLimit(benchmark::State &state, double limit, const std::string &figure = {})
{
    state.counters[figure.empty() ? "limit" : figure + "_limit"] = limit;
}

// A route the program does not take, timed to show why: it carries the limit
// of the route taken, and being over it is no fault of the program.
inline void markComparison(benchmark::State &state)
{
    state.SetLabel("comparison");
}
