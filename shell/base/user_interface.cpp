#include "shell/base/user_interface.h"

#include <cstdio>

namespace bm {

MessageAnswer defaultAnswer(const MessageRequest& request) {
    static constexpr MessageAnswer table[][3] = {
        {MessageAnswer::Ok, MessageAnswer::Ok, MessageAnswer::Ok},
        {MessageAnswer::Ok, MessageAnswer::Cancel, MessageAnswer::Cancel},
        {MessageAnswer::Abort, MessageAnswer::Retry, MessageAnswer::Ignore},
        {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel},
        {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::No},
        {MessageAnswer::Retry, MessageAnswer::Cancel, MessageAnswer::Cancel},
    };
    const int b = request.defaultButton < 0 || request.defaultButton > 2 ? 0 : request.defaultButton;
    return table[static_cast<int>(request.buttons)][b];
}

MessageAnswer UserInterface::message(MessageIcon icon, MessageButtons buttons, const std::string& title,
                                     const std::string& text, int defaultButton) {
    MessageRequest r;
    r.icon = icon;
    r.buttons = buttons;
    r.defaultButton = defaultButton;
    r.title = title;
    r.text = text;
    return showMessage(r);
}

std::string flattenMessageText(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;  // CR LF is one break
        out += (c == '\r' || c == '\n') ? ' ' : c;
    }
    return out;
}

StreamUserInterface::StreamUserInterface(std::FILE* stream) : stream_(stream) {}

MessageAnswer StreamUserInterface::showMessage(const MessageRequest& request) {
    ++messages_;
    if (request.icon != MessageIcon::Information) ++troubles_;
    if (stream_) {
        std::fprintf(stream_, "%s: %s\n", request.title.c_str(), flattenMessageText(request.text).c_str());
        std::fflush(stream_);
    }
    return defaultAnswer(request);
}

void StreamUserInterface::errorPassedOver(int number, const std::string& description) {
    ++troubles_;
    if (stream_) {
        std::fprintf(stream_, "Run-time error %d: %s\n", number, flattenMessageText(description).c_str());
        std::fflush(stream_);
    }
}

std::optional<std::string> StreamUserInterface::askFile(const FileDialogRequest&) { return std::nullopt; }

namespace {
StreamUserInterface& fallbackInterface() {
    static StreamUserInterface instance(stderr);
    return instance;
}
UserInterface* current = nullptr;
}  // namespace

UserInterface& ui() { return current ? *current : fallbackInterface(); }
void setUserInterface(UserInterface* userInterface) { current = userInterface; }

}  // namespace bm
