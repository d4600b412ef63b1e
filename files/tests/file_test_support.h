#pragma once
// Small helpers shared by the tests of files/.

#include <string>

#include <gtest/gtest.h>

#include "sample_models.h"
#include "shell/base/runtime_error.h"
#include "shell/base/raised_error.h"

namespace bm::filetests {

using bm::raisedError;

// A test name from a golden file's name ("one_regular.one" gives "one_regular_one").
inline std::string goldenName(const ::testing::TestParamInfo<samples::Golden>& param) {
    std::string name = param.param.fixture;
    for (char& c : name)
        if (c == '.') c = '_';
    return name;
}

}  // namespace bm::filetests
