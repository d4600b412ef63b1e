#pragma once
// The one seam through which core code reaches the user: message boxes, file
// dialogs, the busy pointer, progress (which lets pending events, and so a Stop
// click, through) and the start of other programs. The workbench implements it
// with Qt, the batch calculator writes messages to standard error, and tests
// use a scripted implementation that records every call.

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace bm {

enum class MessageIcon { None, Critical, Question, Exclamation, Information };
enum class MessageButtons { Ok, OkCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class MessageAnswer { Ok, Cancel, Abort, Retry, Ignore, Yes, No };

struct MessageRequest {
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    int defaultButton = 0;  // 0 first, 1 second, 2 third button
    std::string title;
    std::string text;  // line breaks as "\r", "\n" or "\r\n", as the program builds them
};

// The answer a box gives when its default button is pressed.
MessageAnswer defaultAnswer(const MessageRequest& request);

struct FileDialogRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    std::string title;
    std::string filter;  // "Caption (*.one)|*.one|All Files (*.*)|*.*"
    int filterIndex = 1;
    std::string initialDirectory;
    std::string initialFileName;
    std::string defaultExtension;  // without the point
};

// Where a progress bar belongs (the run's owner screen).
enum class ProgressOwner { InputForm, MultiChemicalForm, UnsaturatedForm, MultiUnsaturatedForm, TimeVaryingForm, MonteCarloForm };

class UserInterface {
public:
    virtual ~UserInterface() = default;

    virtual MessageAnswer showMessage(const MessageRequest& request) = 0;
    // The chosen path, or nothing when cancelled.
    virtual std::optional<std::string> askFile(const FileDialogRequest& request) = 0;
    virtual void setBusy(bool busy) = 0;
    // One step of a run: paints the bar (done of total) and lets pending events run.
    virtual void reportProgress(ProgressOwner owner, double total, double done) = 0;
    // Lets pending events run once (painting, a Stop click).
    virtual void processEvents() = 0;
    // Starts a program without waiting; false when it could not be started.
    virtual bool startProgram(const std::string& program, const std::vector<std::string>& arguments) = 0;
    // A run-time error that the error handler passes over without a box (a
    // bounds error, the closing of files): a screen shows nothing; a log may
    // still record it. `description` is the runtime's own ("Subscript out of range").
    virtual void errorPassedOver(int /*number*/, const std::string& /*description*/) {}

    // Convenience wrapper of showMessage.
    MessageAnswer message(MessageIcon icon, MessageButtons buttons, const std::string& title, const std::string& text,
                          int defaultButton = 0);
};

// A user interface that answers every box with its default, writes each message
// as "TITLE: TEXT" on a line of its own to a stream (line breaks inside the text
// become blanks), cancels file dialogs, and starts no programs. An error that a
// screen passes over in silence gets its line too ("Run-time error 9: Subscript
// out of range"), since a log without it would hide why a run did not finish.
class StreamUserInterface : public UserInterface {
public:
    explicit StreamUserInterface(std::FILE* stream);
    MessageAnswer showMessage(const MessageRequest& request) override;
    std::optional<std::string> askFile(const FileDialogRequest& request) override;
    void setBusy(bool) override {}
    void reportProgress(ProgressOwner, double, double) override {}
    void processEvents() override {}
    bool startProgram(const std::string&, const std::vector<std::string>&) override { return false; }
    void errorPassedOver(int number, const std::string& description) override;
    int messageCount() const { return messages_; }
    // Lines that tell of a failure: every message but a notice (the
    // information icon), and every error passed over.
    int troubleCount() const { return troubles_; }

private:
    std::FILE* stream_;
    int messages_ = 0;
    int troubles_ = 0;
};

// The process-wide user interface (the workbench installs its own at start).
UserInterface& ui();
void setUserInterface(UserInterface* userInterface);

// One line of a message text for a log: line breaks as blanks, runs kept.
std::string flattenMessageText(const std::string& text);

}  // namespace bm
