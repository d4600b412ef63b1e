#include "shell/help_file.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "model/number_text.h"

namespace bm {

const HelpTopic* HelpFile::find(int context) const {
    for (const auto& t : topics)
        if (t.context == context) return &t;
    return nullptr;
}

std::vector<std::pair<std::string, int>> HelpFile::indexEntries() const {
    std::vector<std::pair<std::string, int>> out;
    for (const auto& t : topics) {
        out.emplace_back(t.title, t.context);
        for (const auto& k : t.keywords) out.emplace_back(k, t.context);
    }
    std::stable_sort(out.begin(), out.end(), [](const auto& a, const auto& b) {
        return toLower(a.first) < toLower(b.first);
    });
    out.erase(std::unique(out.begin(), out.end()), out.end());
    return out;
}

std::vector<int> HelpFile::children(int parent) const {
    std::vector<int> out;
    for (const auto& t : topics)
        if (t.parent == parent && t.context != parent) out.push_back(t.context);
    return out;
}

namespace {

bool fail(std::string* error, const std::string& why) {
    if (error) *error = why;
    return false;
}

// A whole decimal number in the int range.
bool parseNumber(const std::string& text, int& value) {
    const std::string t = trim(text);
    if (t.empty() || t.size() > 9) return false;
    for (char c : t)
        if (c < '0' || c > '9') return false;
    value = std::stoi(t);
    return true;
}

bool parseLines(std::istream& in, HelpFile& file, std::string* error) {
    std::string line;
    int lineNumber = 0;
    auto next = [&]() {
        if (!std::getline(in, line)) return false;
        ++lineNumber;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return true;
    };
    if (!next() || trim(line) != kHelpFileHeader) return fail(error, "the first line is not \"ORVA HELP 1\"");
    HelpTopic* open = nullptr;
    while (next()) {
        const std::string where = " (line " + std::to_string(lineNumber) + ")";
        if (!open) {
            const std::string t = trim(line);
            if (t.empty() || t[0] == '#') continue;
            if (t.rfind("@topic", 0) != 0) return fail(error, "text outside a topic" + where);
            int context = 0;
            if (!parseNumber(t.substr(6), context)) return fail(error, "a topic without a number" + where);
            if (file.find(context)) return fail(error, "topic " + std::to_string(context) + " twice" + where);
            file.topics.push_back({});
            open = &file.topics.back();
            open->context = context;
            continue;
        }
        if (line.rfind("@end", 0) == 0) {
            if (open->title.empty()) return fail(error, "a topic without a title" + where);
            open = nullptr;
        } else if (line.rfind("@title", 0) == 0) {
            open->title = trim(line.substr(6));
        } else if (line.rfind("@parent", 0) == 0) {
            if (!parseNumber(line.substr(7), open->parent)) return fail(error, "a bad parent" + where);
        } else if (line.rfind("@keywords", 0) == 0) {
            std::stringstream words(line.substr(9));
            std::string word;
            while (std::getline(words, word, ';'))
                if (!trim(word).empty()) open->keywords.push_back(trim(word));
        } else if (line.rfind("@topic", 0) == 0) {
            return fail(error, "a topic inside a topic" + where);
        } else {
            open->body += line;
            open->body += '\n';
        }
    }
    if (open) return fail(error, "the last topic has no @end");
    if (file.topics.empty()) return fail(error, "no topics");
    return true;
}

}  // namespace

std::optional<HelpFile> parseHelpFile(const std::string& text, std::string* error) {
    std::istringstream in(text);
    HelpFile file;
    if (!parseLines(in, file, error)) return std::nullopt;
    return file;
}

std::optional<HelpFile> loadHelpFile(const std::string& path, std::string* error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        if (error) *error = "the file cannot be read";
        return std::nullopt;
    }
    HelpFile file;
    if (!parseLines(in, file, error)) return std::nullopt;
    return file;
}

}  // namespace bm
