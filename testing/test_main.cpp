// The main of every test program: the built-in model kinds are registered
// with the calculation pass, as the programs do at start, then the tests run.

#include <gtest/gtest.h>

#include "shell/screen/built_in_kinds.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    bm::registerBuiltInKinds();
    return RUN_ALL_TESTS();
}
