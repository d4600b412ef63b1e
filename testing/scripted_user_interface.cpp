#include "testing/scripted_user_interface.h"

namespace bm::testkit {

MessageAnswer ScriptedUserInterface::showMessage(const MessageRequest& request) {
    messages.push_back(request);
    if (answers.empty()) return defaultAnswer(request);
    const MessageAnswer a = answers.front();
    answers.pop_front();
    return a;
}

std::optional<std::string> ScriptedUserInterface::askFile(const FileDialogRequest& request) {
    fileDialogs.push_back(request);
    if (fileAnswers.empty()) return std::nullopt;
    auto a = fileAnswers.front();
    fileAnswers.pop_front();
    return a;
}

void ScriptedUserInterface::errorPassedOver(int number, const std::string&) { errorsPassedOver.push_back(number); }

void ScriptedUserInterface::setBusy(bool b) {
    busy = b;
    busyCalls.push_back(b);
}

void ScriptedUserInterface::reportProgress(ProgressOwner owner, double total, double done) {
    progress.push_back({owner, total, done});
    ++eventPasses;
    if (onProgress) onProgress(progress.back());
}

void ScriptedUserInterface::processEvents() {
    ++eventPasses;
    if (onProcessEvents) onProcessEvents();
}

bool ScriptedUserInterface::startProgram(const std::string& program, const std::vector<std::string>& arguments) {
    programStarts.push_back({program, arguments});
    return startSucceeds;
}

std::string ScriptedUserInterface::lastTitle() const { return messages.empty() ? std::string() : messages.back().title; }
std::string ScriptedUserInterface::lastText() const { return messages.empty() ? std::string() : messages.back().text; }

ScopedUserInterface::ScopedUserInterface(UserInterface& ui) { setUserInterface(&ui); }
ScopedUserInterface::~ScopedUserInterface() { setUserInterface(nullptr); }

}  // namespace bm::testkit
