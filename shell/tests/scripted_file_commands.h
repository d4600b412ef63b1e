#pragma once
// File commands for Main's tests: the save prompt answers from a queue (going
// on when it is empty), and Open "reads" whatever the test puts in `reader`.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "shell/file_commands.h"

namespace bm::testkit {

struct ScriptedFileCommands : FileCommands {
    std::deque<bool> promptAnswers;
    int prompts = 0;
    std::function<bool(DataSet&)> reader;  // null: the dialog was cancelled
    std::vector<std::string> openTitles;   // "title|purpose"
    bool saveDataFilePrompt(DataSet&) override {
        ++prompts;
        if (promptAnswers.empty()) return true;
        const bool a = promptAnswers.front();
        promptAnswers.pop_front();
        return a;
    }
    bool openModelFile(DataSet& d, const std::string& title, int purpose) override {
        openTitles.push_back(title + "|" + std::to_string(purpose));
        return reader ? reader(d) : false;
    }
};

}  // namespace bm::testkit
