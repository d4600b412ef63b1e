#pragma once
// The help viewer: the help file's topics in a contents tree and a keyword
// index beside the page of the chosen topic.

#include <QDialog>
#include <optional>
#include <string>

#include "shell/help_file.h"
#include "shell/main_form.h"

class QLineEdit;
class QListWidget;
class QTabWidget;
class QTextBrowser;
class QTreeWidget;

namespace bm {

class HelpViewer : public QDialog {
    Q_OBJECT
public:
    explicit HelpViewer(QWidget* parent = nullptr);
    // Loads the file; false (and the viewer empty) when it is missing or not a help file.
    bool load(const std::string& path);
    bool showTopic(int context);
    void showContents();
    void showIndex();
    int currentTopic() const { return current_; }
    const HelpFile* file() const { return file_ ? &*file_ : nullptr; }

private:
    void fillContents();
    void fillIndex(const QString& start);
    std::optional<HelpFile> file_;
    int current_ = 0;
    QTabWidget* tabs_;
    QTreeWidget* contents_;
    QLineEdit* indexSearch_;
    QListWidget* index_;
    QTextBrowser* page_;
};

// The process-wide help: the file set at start, one viewer window.
void setHelpFilePath(const std::string& path);
const std::string& helpFilePath();
// Opens the viewer on the contents, the index or a topic. A missing or broken
// help file is reported and nothing opens; false then.
bool showHelp(HelpCommand command, int context, QWidget* parent = nullptr);
HelpViewer* helpViewer();  // the open viewer, or null
void closeHelp();

}  // namespace bm
