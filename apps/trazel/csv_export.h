#pragma once
// The numbers behind a view as comma-separated values, for spreadsheets:
// - profile over distance: x, then C at every time (one column per time);
//   over time: t, then C at every position;
// - contours: x, y and C at the time (and z plane) shown, one row per point;
// - histograms: each bin's edges, count, relative frequency and the
//   cumulative fraction at its upper edge.
// The first row names the columns with their units.

#include <string>

#include "apps/trazel/plot_file.h"
#include "apps/trazel/plot_scene.h"

namespace bm::trazel {

std::string csvText(const PlotFile& file, const ViewState& view);

}  // namespace bm::trazel
