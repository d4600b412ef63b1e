#pragma once
// The workbench's user interface: Qt message boxes and file dialogs, the wait
// cursor, progress that lets pending events through, and detached program starts.

#include <QString>
#include <QStringList>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "shell/base/user_interface.h"

class QWidget;

namespace bm {

// One entry of the program's "Caption (*.one)|*.one|..." filter lists.
struct FilterEntry {
    std::string caption;
    std::string patterns;  // "*.one;*.two"
};
std::vector<FilterEntry> parseFilterList(const std::string& filter);
// Qt's form of one entry: the caption's words as they stand, and the patterns
// in its trailing brackets separated by blanks ("*.*" matches every file).
QString qtNameFilter(const FilterEntry& entry);
QStringList qtNameFilters(const std::string& filter);

class QtUserInterface : public UserInterface {
public:
    QtUserInterface() = default;
    ~QtUserInterface() override;

    MessageAnswer showMessage(const MessageRequest& request) override;
    std::optional<std::string> askFile(const FileDialogRequest& request) override;
    void setBusy(bool busy) override;
    void reportProgress(ProgressOwner owner, double total, double done) override;
    void processEvents() override;
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override;

    // The window that owns the dialogs when no other is active.
    void setMainWindow(QWidget* window) { mainWindow_ = window; }
    // Where a screen paints its progress bar; an empty function removes it.
    void setProgressSink(ProgressOwner owner, std::function<void(double total, double done)> sink);
    // For unattended runs: every message is written as "TITLE: TEXT" to the
    // stream and answered with its default button; no box is shown.
    void logMessagesTo(std::FILE* stream) { log_ = stream; }
    bool busy() const { return busy_; }

private:
    QWidget* dialogParent() const;
    QWidget* mainWindow_ = nullptr;
    std::map<ProgressOwner, std::function<void(double, double)>> sinks_;
    std::FILE* log_ = nullptr;
    bool busy_ = false;
};

// The process-wide Qt interface, installed by the workbench at start.
QtUserInterface& qtUserInterface();

}  // namespace bm
