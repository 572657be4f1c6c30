// A line of the table: a figure, what it is measured against, and its target. Each becomes a benchmark whose
// counters `./bench/run` turns into the table.
#pragma once

#include <functional>
#include <string>

namespace tzbench {

struct Line {
    double ours;
    double floor;
    double measured;
};

// "ours" divided by "floor".
inline Line ratio(double ours, double floor) {
    return {ours, floor, ours / floor};
}

enum class Target { kAtMost, kAtLeast };

// Adds a figure; `measure` runs only when the figure is asked for. `unit` is that of ours and floor.
void addFigure(const std::string& name, const char* unit, Target target, double bound,
               const std::function<Line()>& measure);

}  // namespace tzbench
