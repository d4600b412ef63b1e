#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "shell/help_context.h"
#include "shell/help_file.h"
#include "testing/test_paths.h"

using namespace bm;

TEST(HelpFile, ParsesTopicsKeywordsAndParents) {
    const std::string text =
        "ORVA HELP 1\n# a comment\n\n@topic 10\n@title Top\n@keywords b word; A word ;\n<p>one</p>\n@end\n"
        "@topic 20\n@title Child\n@parent 10\nbody line 1\nbody line 2\n@end\n";
    std::string error;
    const auto file = parseHelpFile(text, &error);
    ASSERT_TRUE(file) << error;
    ASSERT_EQ(file->topics.size(), 2u);
    EXPECT_EQ(file->find(10)->keywords, (std::vector<std::string>{"b word", "A word"}));
    EXPECT_EQ(file->find(20)->body, "body line 1\nbody line 2\n");
    EXPECT_EQ(file->children(0), std::vector<int>{10});
    EXPECT_EQ(file->children(10), std::vector<int>{20});
    const auto index = file->indexEntries();
    ASSERT_EQ(index.size(), 4u);
    EXPECT_EQ(index[0].first, "A word");
    EXPECT_EQ(index[1].first, "b word");
    EXPECT_EQ(index[2].first, "Child");
    EXPECT_EQ(index[3].first, "Top");
    EXPECT_EQ(file->find(30), nullptr);
}

TEST(HelpFile, RefusesWhatIsNotAHelpFile) {
    for (const char* bad : {"", "not help\n", "ORVA HELP 1\n", "ORVA HELP 1\nstray text\n",
                            "ORVA HELP 1\n@topic x\n@title T\n@end\n", "ORVA HELP 1\n@topic 1\n@title T\n",
                            "ORVA HELP 1\n@topic 1\n@end\n", "ORVA HELP 1\n@topic 1\n@title A\n@end\n@topic 1\n@title B\n@end\n",
                            "ORVA HELP 1\n@topic 99999999999\n@title T\n@end\n"}) {
        std::string error;
        EXPECT_FALSE(parseHelpFile(bad, &error)) << bad;
        EXPECT_FALSE(error.empty());
    }
    EXPECT_FALSE(loadHelpFile("/no/such/orvahelp.hlp"));
}

TEST(HelpFile, TheShippedFileHasATopicForEveryHelpContext) {
    std::string error;
    const auto file = loadHelpFile((testkit::sourceDir() / "data" / "orvahelp.hlp").string(), &error);
    ASSERT_TRUE(file) << error;
    for (int context : {3100, 3120, 3122, 3124, 3126, 3130, 3132, 3134, 3136, 3200, 3300, help::Contents,
                        help::RangeSyntax, help::Units, help::NewModel, help::Preferences, help::StartUp,
                        help::DataFiles, help::MonteCarlo, help::MultipleSpecies, help::Results, help::References})
        EXPECT_NE(file->find(context), nullptr) << context;
    // Every link leads to a topic, and every topic is in the contents tree.
    const std::regex link("topic:([0-9]+)");
    std::set<int> inTree;
    std::vector<int> open = file->children(0);
    while (!open.empty()) {
        const int c = open.back();
        open.pop_back();
        if (!inTree.insert(c).second) continue;
        for (int child : file->children(c)) open.push_back(child);
    }
    for (const auto& t : file->topics) {
        EXPECT_TRUE(inTree.count(t.context)) << t.context;
        for (auto it = std::sregex_iterator(t.body.begin(), t.body.end(), link); it != std::sregex_iterator(); ++it)
            EXPECT_NE(file->find(std::stoi((*it)[1])), nullptr) << t.context << " links to " << (*it)[1];
    }
    // The range syntax topic explains both forms.
    EXPECT_NE(file->find(help::RangeSyntax)->body.find("0:100:1:50"), std::string::npos);
    EXPECT_NE(file->find(help::RangeSyntax)->body.find("0:100:1<"), std::string::npos);
}
