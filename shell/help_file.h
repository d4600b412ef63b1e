#pragma once
// The online help file: topics keyed by help context numbers, each with a
// title, index keywords, an optional parent for the contents tree, and an HTML
// body. The file is plain text:
//
//   ORVA HELP 1
//   @topic 3100
//   @title One-Dimensional Saturated Model
//   @parent 3000
//   @keywords one dimensional; Dirichlet inlet; Cauchy inlet
//   <p>HTML body ...</p>
//   @end
//
// Lines starting with "#" outside a topic are comments. Links between topics
// are written <a href="topic:3010">.

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bm {

struct HelpTopic {
    int context = 0;
    std::string title;
    std::vector<std::string> keywords;
    int parent = 0;
    std::string body;
};

struct HelpFile {
    std::vector<HelpTopic> topics;  // in the file's order, which is the contents' order

    const HelpTopic* find(int context) const;
    // Keyword and topic pairs, sorted by keyword without regard to case; each
    // topic's title is an entry too.
    std::vector<std::pair<std::string, int>> indexEntries() const;
    // Topic numbers of the children of `parent` (0: the top level), in file order.
    std::vector<int> children(int parent) const;
};

inline constexpr const char* kHelpFileHeader = "ORVA HELP 1";

// Parses the text; nothing (and a reason in `error`) when it is not a help file.
std::optional<HelpFile> parseHelpFile(const std::string& text, std::string* error = nullptr);
std::optional<HelpFile> loadHelpFile(const std::string& path, std::string* error = nullptr);

}  // namespace bm
