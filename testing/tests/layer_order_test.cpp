// Every include of the tree keeps the layer order of build/layers.txt; and
// the check finds an upward include, an include of test code and a folder
// that no layer claims when they are there.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "testing/include_layers.h"
#include "testing/test_paths.h"

namespace bm::testkit {
namespace {

namespace fs = std::filesystem;

std::string listed(const std::vector<IncludeFault>& faults) {
    std::ostringstream s;
    for (const IncludeFault& f : faults) s << "\n  " << f.file << ":" << f.line << " \"" << f.include << "\": " << f.reason;
    return s.str();
}

void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

TEST(LayerOrder, EveryIncludeOfTheTreeKeepsTheLayerOrder) {
    const LayerMap map = readLayerMap(binaryDir() / "layers.txt");
    ASSERT_GE(map.layers.size(), 12u);
    const std::vector<IncludeFault> faults = checkIncludes(sourceDir(), map);
    EXPECT_TRUE(faults.empty()) << listed(faults);
    EXPECT_GT(filesChecked(), 300);
}

TEST(LayerOrder, TheLayersSeeWhatTheyLinkAndNothingAbove) {
    const LayerMap map = readLayerMap(binaryDir() / "layers.txt");
    const auto visible = [&](const std::string& from, const std::string& to) {
        for (const Layer& l : map.layers)
            if (l.name == from) return l.visible.count(to) == 1;
        ADD_FAILURE() << "no layer " << from;
        return false;
    };
    EXPECT_TRUE(visible("bm_model", "bm_base"));
    EXPECT_FALSE(visible("bm_base", "bm_model"));
    EXPECT_FALSE(visible("bm_kernels", "bm_model"));
    EXPECT_TRUE(visible("bm_pass", "bm_kernels"));
    EXPECT_FALSE(visible("bm_saturated", "bm_unsaturated"));
    EXPECT_FALSE(visible("bm_unsaturated", "bm_saturated"));
    EXPECT_TRUE(visible("bm_forms", "bm_timevarying"));
    EXPECT_FALSE(visible("bm_forms", "bm_shell"));
    EXPECT_EQ(layerOf(map, "saturated/widgets/input_form.cpp"), std::optional<std::string>("gui"));
    EXPECT_EQ(layerOf(map, "shell/base/checked_math.h"), std::optional<std::string>("bm_base"));
    EXPECT_EQ(layerOf(map, "shell/main_form.h"), std::optional<std::string>("bm_shell"));
    EXPECT_EQ(layerOf(map, "saturated/tests/input_form_test_models.h"), std::optional<std::string>(""));
}

// A small tree: "low" in a/, "high" in b/ above it, "side" in c/ beside it.
class SmallTree : public ::testing::Test {
protected:
    SmallTree() {
        write(dir_.path() / "layers.txt", "low a,\nhigh b, low\nside c, low\n");
        map_ = readLayerMap(dir_.path() / "layers.txt");
        write(dir_.path() / "a/x.h", "#pragma once\n#include <vector>\n");
        write(dir_.path() / "b/y.cpp", "#include \"a/x.h\"\n#include \"y.h\"\n");
        write(dir_.path() / "b/y.h", "#pragma once\n");
    }
    std::vector<IncludeFault> faults() const { return checkIncludes(dir_.path(), map_); }
    TempDir dir_;
    LayerMap map_;
};

TEST_F(SmallTree, DownwardIncludesPass) { EXPECT_TRUE(faults().empty()) << listed(faults()); }

TEST_F(SmallTree, AnUpwardIncludeIsFound) {
    write(dir_.path() / "a/x.cpp", "#include \"a/x.h\"\n\n  #include \"b/y.h\"\n");
    const auto found = faults();
    ASSERT_EQ(found.size(), 1u) << listed(found);
    EXPECT_EQ(found[0].file, "a/x.cpp");
    EXPECT_EQ(found[0].line, 3);
    EXPECT_EQ(found[0].include, "b/y.h");
    EXPECT_EQ(found[0].reason, "low may not include high");
}

TEST_F(SmallTree, AnIncludeAcrossBranchesIsFound) {
    write(dir_.path() / "c/z.cpp", "#include \"b/y.h\"\n");
    const auto found = faults();
    ASSERT_EQ(found.size(), 1u) << listed(found);
    EXPECT_EQ(found[0].reason, "side may not include high");
}

TEST_F(SmallTree, LayerCodeIncludingTestCodeIsFound) {
    write(dir_.path() / "a/tests/helper.h", "#pragma once\n");
    write(dir_.path() / "a/x.cpp", "#include \"a/tests/helper.h\"\n");
    write(dir_.path() / "a/tests/x_test.cpp", "#include \"b/y.h\"\n");  // tests may include anything
    const auto found = faults();
    ASSERT_EQ(found.size(), 1u) << listed(found);
    EXPECT_EQ(found[0].reason, "a layer includes test or program code");
}

TEST_F(SmallTree, ACodeFileOfAFolderNoLayerClaimsIsFound) {
    write(dir_.path() / "d/w.cpp", "int w;\n");
    write(dir_.path() / "d/fixtures/ignored.cpp", "#include \"b/y.h\"\n");
    const auto found = faults();
    ASSERT_EQ(found.size(), 1u) << listed(found);
    EXPECT_EQ(found[0].file, "d/w.cpp");
    EXPECT_EQ(found[0].reason, "no layer claims its folder");
}

}  // namespace
}  // namespace bm::testkit
