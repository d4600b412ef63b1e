// The main of every test program: the built-in model kinds are registered
// with the calculation pass, as the programs do at start, then the tests run.
// They run on one calculation thread, point by point as the tests of Stop and
// progress count them; the tests of the threads set their own count.

#include <gtest/gtest.h>

#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    bm::registerBuiltInKinds();
    bm::setCalculationThreads(1);
    return RUN_ALL_TESTS();
}
