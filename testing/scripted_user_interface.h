#pragma once
// A user interface for tests: records every message, dialog, progress step and
// program start, and answers from queues (the default button when a queue is empty).

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shell/base/user_interface.h"

namespace bm::testkit {

class ScriptedUserInterface : public UserInterface {
public:
    struct Progress {
        ProgressOwner owner;
        double total;
        double done;
    };
    struct ProgramStart {
        std::string program;
        std::vector<std::string> arguments;
    };

    MessageAnswer showMessage(const MessageRequest& request) override;
    std::optional<std::string> askFile(const FileDialogRequest& request) override;
    void setBusy(bool busy) override;
    void reportProgress(ProgressOwner owner, double total, double done) override;
    void processEvents() override;
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override;
    void errorPassedOver(int number, const std::string& description) override;

    // Queues
    std::deque<MessageAnswer> answers;
    std::deque<std::optional<std::string>> fileAnswers;  // nullopt = cancel
    bool startSucceeds = true;
    // Called at each progress step (e.g. to press Stop half way) and at each processEvents.
    std::function<void(const Progress&)> onProgress;
    std::function<void()> onProcessEvents;

    // Records
    std::vector<MessageRequest> messages;
    std::vector<FileDialogRequest> fileDialogs;
    std::vector<Progress> progress;
    std::vector<ProgramStart> programStarts;
    std::vector<bool> busyCalls;
    std::vector<int> errorsPassedOver;  // the numbers of the errors the handler showed no box for
    int eventPasses = 0;
    bool busy = false;

    // The last message's title and text; empty strings when there is none.
    std::string lastTitle() const;
    std::string lastText() const;
};

// Installs a scripted interface as the process-wide one for a test's scope.
class ScopedUserInterface {
public:
    explicit ScopedUserInterface(UserInterface& ui);
    ~ScopedUserInterface();
    ScopedUserInterface(const ScopedUserInterface&) = delete;
    ScopedUserInterface& operator=(const ScopedUserInterface&) = delete;
};

}  // namespace bm::testkit
