// The main of every test program: the built-in model kinds are registered
// with the calculation pass, as the programs do at start, then the tests run.
// They run on one calculation thread, point by point as the tests of Stop and
// progress count them; the tests of the threads set their own count, and a
// run on more than one thread spreads however short it is.

#include <gtest/gtest.h>

#include <cstdlib>

#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    bm::registerBuiltInKinds();
    bm::setCalculationThreads(1);
    bm::setSerialRunBelow(0.0);
    ::setenv("BRENMOOR_SERIAL_BELOW", "0", 1);  // and so do the programs the tests start
    return RUN_ALL_TESTS();
}
