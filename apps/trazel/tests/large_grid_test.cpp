// Large and partial grids: the overview keeps every k-th node (and the last)
// within its limits, the plane shown comes back in full, a plot opens where
// the plume is, and a stopped run's file says so. Small limits stand in for a
// large file; every value is checked against the plume's closed form.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "apps/trazel/plot_file.h"
#include "apps/trazel/plot_scene.h"
#include "apps/trazel/tests/plume_file.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

using testing::asPrinted;
using testing::evenly;
using testing::nodeValue;
using testing::PlumeGrid;

std::string text(const PlumeGrid& g) {
    std::ostringstream out;
    testing::writePlume(out, g);
    return out.str();
}

PlumeGrid plane() {
    PlumeGrid g;
    g.x = evenly(0, 2.5, 41);
    g.y = evenly(-15, 1, 31);
    g.t = {5, 10, 15, 20, 25};
    return g;
}

PlumeGrid volume() {
    PlumeGrid g;
    g.x = evenly(0, 5, 13);
    g.y = evenly(-10, 2.5, 9);
    g.z = evenly(0, 2.5, 5);  // the plume is centred on z = 5, the third plane
    g.t = {4, 8, 12};
    return g;
}

ReadLimits small() {
    ReadLimits l;
    l.axisNodes = 8;
    l.zNodes = 3;
    l.displayValues = 400;
    l.sliceValues = 300;
    return l;
}

std::size_t indexOf(const std::vector<double>& axis, double v) {
    return static_cast<std::size_t>(std::find(axis.begin(), axis.end(), v) - axis.begin());
}

// Every node of a plane holds the plume's value there.
void expectPlumeValues(const Slice& plane, const PlumeGrid& g, double z, std::size_t it) {
    ASSERT_EQ(plane.c.size(), plane.x.size() * plane.y.size());
    for (std::size_t ix = 0; ix < plane.x.size(); ++ix)
        for (std::size_t iy = 0; iy < plane.y.size(); ++iy)
            EXPECT_TRUE(asPrinted(plane.c[ix * plane.y.size() + iy], nodeValue(g, plane.x[ix], plane.y[iy], z, it)))
                << "x = " << plane.x[ix] << ", y = " << plane.y[iy];
}

// Kept nodes are nodes of the file, evenly strided, and include both ends.
void expectStrided(const std::vector<double>& kept, const std::vector<double>& all, std::size_t most) {
    ASSERT_GE(kept.size(), 2u);
    EXPECT_LE(kept.size(), most);
    EXPECT_EQ(kept.front(), all.front());
    EXPECT_EQ(kept.back(), all.back());
    const std::size_t stride = indexOf(all, kept[1]);
    for (std::size_t k = 0; k + 1 < kept.size(); ++k) EXPECT_EQ(indexOf(all, kept[k]), k * stride) << k;
}

TEST(LargeGrid, TheOverviewKeepsEveryKthNodeWithItsValue) {
    const PlumeGrid g = plane();
    const ReadResult r = parsePlotText(text(g), small());
    ASSERT_TRUE(r.ok) << r.error;
    const PlotFile& f = r.file;
    EXPECT_TRUE(f.reduced);
    EXPECT_EQ(f.axes.x, g.x);
    EXPECT_EQ(f.axes.y, g.y);
    expectStrided(f.grid.x, g.x, 8);
    expectStrided(f.grid.y, g.y, 8);
    EXPECT_LE(f.grid.c.size(), 400u);
    for (std::size_t it = 0; it < g.t.size(); ++it)
        for (std::size_t ix = 0; ix < f.grid.nx(); ++ix)
            for (std::size_t iy = 0; iy < f.grid.ny(); ++iy)
                EXPECT_TRUE(asPrinted(f.grid.at(ix, iy, 0, it), nodeValue(g, f.grid.x[ix], f.grid.y[iy], 0, it)))
                    << ix << " " << iy << " " << it;
}

TEST(LargeGrid, AFileWithinTheLimitsIsKeptWhole) {
    const PlumeGrid g = plane();
    const ReadResult r = parsePlotText(text(g));
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_FALSE(r.file.reduced);
    EXPECT_EQ(r.file.grid.x, g.x);
    EXPECT_EQ(r.file.grid.y, g.y);
    EXPECT_TRUE(asPrinted(r.file.grid.at(17, 15, 0, 4), nodeValue(g, g.x[17], 0, 0, 4)));
}

TEST(LargeGrid, TheLastTimeOfATwoDimensionalTableComesInFull) {
    const PlumeGrid g = plane();
    const ReadResult r = parsePlotText(text(g), small());
    ASSERT_TRUE(r.ok) << r.error;
    ASSERT_TRUE(r.file.focus);
    const Slice& s = *r.file.focus;
    EXPECT_EQ(s.time, 4);
    EXPECT_EQ(s.plane, 0);
    EXPECT_LE(s.c.size(), 300u);
    EXPECT_GT(s.c.size(), r.file.grid.nx() * r.file.grid.ny());
    expectPlumeValues(s, g, 0, 4);
    ViewState view;
    view.time = 4;
    view.plane = 0;
    EXPECT_TRUE(planeInFull(r.file, view));
    view.time = 2;
    EXPECT_FALSE(planeInFull(r.file, view));
}

TEST(LargeGrid, AnotherTimeIsReadAgainInFull) {
    const PlumeGrid g = plane();
    const std::string all = text(g);
    ReadLimits everyNode = small();
    everyNode.sliceValues = 100000;
    const ReadResult r = parsePlotText(all, everyNode);
    ASSERT_TRUE(r.ok) << r.error;
    const SliceResult s = sliceOfText(all, r.file, 1, 0, everyNode);
    ASSERT_TRUE(s.slice) << s.error;
    EXPECT_EQ(s.slice->x, g.x);
    EXPECT_EQ(s.slice->y, g.y);
    expectPlumeValues(*s.slice, g, 0, 1);
}

TEST(LargeGrid, APlaneOfAThreeDimensionalBlockIsReadAloneInFull) {
    const PlumeGrid g = volume();
    const std::string all = text(g);
    ReadLimits limits = small();
    limits.sliceValues = 100000;
    const ReadResult r = parsePlotText(all, limits);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_TRUE(r.file.reduced);
    ASSERT_EQ(r.file.blockStarts.size(), 3u);
    EXPECT_EQ(all.compare(r.file.blockStarts[1], 9, "Time is 8"), 0);
    for (int plane : {0, 3}) {
        const SliceResult s = sliceOfText(all, r.file, 1, plane, limits);
        ASSERT_TRUE(s.slice) << s.error;
        EXPECT_EQ(s.slice->x, g.x);
        EXPECT_EQ(s.slice->y, g.y);
        expectPlumeValues(*s.slice, g, g.z[static_cast<std::size_t>(plane)], 1);
    }
}

TEST(LargeGrid, APlotOpensAtTheLastTimeInThePlaneOfTheLargestValue) {
    const PlumeGrid g = volume();
    const ReadResult r = parsePlotText(text(g), small());
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(openingTime(r.file), 2);
    EXPECT_EQ(openingPlane(r.file, 2), 2);  // z = 5, where the plume is centred
    const ViewState view = clampedView(r.file, {});
    EXPECT_EQ(view.time, 2);
    EXPECT_EQ(view.plane, 2);
    // The sections pass through the largest value of that plane (the kept node nearest the centre x = 34, y = 0).
    EXPECT_EQ(r.file.axes.y[static_cast<std::size_t>(view.sectionY)], 0);
    EXPECT_NEAR(r.file.axes.x[static_cast<std::size_t>(view.sectionX)], 34, 5);
}

TEST(LargeGrid, AStoppedRunOpensAtTheLastTimeItReachedAndSaysSo) {
    PlumeGrid g = plane();
    g.stopped = true;
    g.lastTimeWithValues = 1;
    testkit::TempDir dir;
    const std::string path = dir.file("stopped.plt");
    testing::writePlumeFile(path, g);
    const ReadResult r = readPlotFile(path);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.file.incomplete, "the run was stopped");
    EXPECT_EQ(openingTime(r.file), 1);
    const Scene s = buildScene(r.file, {});
    EXPECT_NE(s.title.find("incomplete: the run was stopped"), std::string::npos) << s.title;
    EXPECT_NE(s.subtitle.find("t = 10 day"), std::string::npos) << s.subtitle;
}

TEST(LargeGrid, SectionsOfAThreeDimensionalResult) {
    const PlumeGrid g = volume();
    const ReadResult r = parsePlotText(text(g));
    ASSERT_TRUE(r.ok) << r.error;
    ViewState view;
    view.time = 1;
    view.plane = 2;
    view.sectionY = 4;  // y = 0
    view.sectionX = 5;  // x = 25
    const Scene xz = buildSectionScene(r.file, view, Section::XZ);
    EXPECT_EQ(xz.kind, SceneKind::Contours);
    EXPECT_EQ(xz.xLabel, "x (m)");
    EXPECT_EQ(xz.yLabel, "z (m)");
    EXPECT_NE(xz.subtitle.find("y = 0 m"), std::string::npos) << xz.subtitle;
    ASSERT_TRUE(xz.field);
    EXPECT_EQ(xz.field->x, g.x);
    EXPECT_EQ(xz.field->y, g.z);
    for (std::size_t ix = 0; ix < g.x.size(); ++ix)
        for (std::size_t iz = 0; iz < g.z.size(); ++iz)
            EXPECT_TRUE(asPrinted(xz.field->at(ix, iz), nodeValue(g, g.x[ix], 0, g.z[iz], 1)));
    EXPECT_FALSE(xz.contours.polygons.empty());
    const Scene yz = buildSectionScene(r.file, view, Section::YZ);
    EXPECT_EQ(yz.xLabel, "y (m)");
    EXPECT_NE(yz.subtitle.find("x = 25 m"), std::string::npos) << yz.subtitle;
    ASSERT_TRUE(yz.field);
    EXPECT_TRUE(asPrinted(yz.field->at(4, 2), nodeValue(g, 25, 0, 5, 1)));
    // The x-y plane marks where the sections cut it.
    const Scene xy = buildScene(r.file, view);
    ASSERT_EQ(xy.guides.size(), 2u);
    EXPECT_EQ(xy.guides[0].at, 25);
    EXPECT_EQ(xy.guides[1].at, 0);
}

TEST(LargeGrid, ATwoDimensionalResultHasNoSections) {
    const ReadResult r = parsePlotText(text(plane()));
    ASSERT_TRUE(r.ok);
    EXPECT_FALSE(buildSectionScene(r.file, {}, Section::XZ).note.empty());
}

TEST(LargeGrid, ThePartOfAFileBeforeItWasCutIsPlotted) {
    std::string all = text(volume());
    all.resize(all.size() * 3 / 4);  // inside the last block
    const ReadResult r = parsePlotText(all);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.file.incomplete, "the file ends early");
    EXPECT_EQ(r.file.axes.t.size(), 3u);
    EXPECT_TRUE(std::isnan(r.file.grid.at(12, 8, 4, 2)));   // the last node was never written
    EXPECT_FALSE(std::isnan(r.file.grid.at(0, 0, 0, 2)));   // the first of the block was
}

TEST(LargeGrid, MemoryForTheOverviewDoesNotGrowWithTheFile) {
    PlumeGrid g;
    g.x = evenly(0, 1, 400);
    g.y = evenly(-100, 1, 201);
    g.t = {10, 20};
    ReadLimits limits;
    limits.displayValues = 20000;
    limits.axisNodes = 100;
    limits.sliceValues = 10000;
    const ReadResult r = parsePlotText(text(g), limits);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_LE(r.file.grid.c.size(), 20000u);
    ASSERT_TRUE(r.file.focus);
    EXPECT_LE(r.file.focus->c.size(), 10000u);
    EXPECT_EQ(r.file.axes.x.size(), 400u);
    // The colour scale and the peaks still see every value.
    double highest = 0;
    for (double x : g.x)
        for (double y : g.y) highest = std::max(highest, nodeValue(g, x, y, 0, 0));
    EXPECT_TRUE(asPrinted(r.file.highest, highest));
}

}  // namespace
}  // namespace bm::trazel
