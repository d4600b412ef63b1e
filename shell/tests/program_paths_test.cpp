#include <gtest/gtest.h>

#include "shell/base/program_paths.h"
#include "shell/base/runtime_error.h"

using namespace bm;

TEST(ProgramPaths, SuiteRootIsWhatStandsInFrontOfTheProgramFolder) {
    EXPECT_EQ(suiteRootOf("/opt/orva/brenmoor"), "/opt/orva");
    EXPECT_EQ(suiteRootOf("/opt/ORVA/BrenMoor"), "/opt/ORVA");  // found in lower case, kept as it is
    // A clone of the sources named like the program folder: the program's own folder counts.
    EXPECT_EQ(suiteRootOf("/src/brenmoor/build/suite/brenmoor"), "/src/brenmoor/build/suite");
}

TEST(ProgramPaths, APathWithoutTheFolderWordIsTheInvalidCall) {
    try {
        suiteRootOf("/usr/local/bin");
        FAIL() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 5);
    }
    EXPECT_THROW(suiteRootOf("brenmoor"), RuntimeError);  // nothing in front: a negative cut as well
    EXPECT_EQ(suiteRootOrEmpty("/usr/local/bin"), "");
}

TEST(ProgramPaths, PlotUtilityRootIsInFrontOfTheFirstSuiteFolderWord) {
    EXPECT_EQ(plotUtilityRootOf("/opt/orva/brenmoor"), "/opt/orva");
    EXPECT_EQ(plotUtilityRootOf("/opt/orva/air"), "/opt/orva");
    EXPECT_EQ(plotUtilityRootOf("/home/claire/orva/surface"), "/home/claire/orva");  // "air" inside a name is no folder word
    EXPECT_EQ(plotUtilityRootOf("/x/surface/y/brenmoor"), "/x");
}

TEST(ProgramPaths, JoinAndDisplay) {
    EXPECT_EQ(joinPath("/a/", "/b"), "/a/b");
    EXPECT_EQ(joinPath("", "b"), "b");
    EXPECT_EQ(withoutTrailingSeparator("/a//"), "/a");
    EXPECT_EQ(withoutTrailingSeparator("/"), "/");
    EXPECT_EQ(displayPath("/tmp/Trazel/b.plt"), "/TMP/TRAZEL/B.PLT");
}
