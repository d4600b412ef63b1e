// Main's File commands go to the data-file workflow of files/.

#include "model/data_set.h"
#include "shell/file_commands.h"
#include "shell/user_interface.h"

#if __has_include("files/file_workflow.h")
#include "files/file_workflow.h"
#define BM_HAVE_FILE_WORKFLOW 1
#endif

namespace bm {

namespace {

#ifdef BM_HAVE_FILE_WORKFLOW
class WorkflowFileCommands : public FileCommands {
public:
    bool saveDataFilePrompt(DataSet& data) override {
        std::string tag;
        return bm::saveDataFilePrompt(data, ui(), tag);
    }
    bool openModelFile(DataSet& data, const std::string& title, int dialogPurpose) override {
        // A cancel and a reported error both leave Main without a screen to open.
        std::string tag;
        return bm::openModelFile(data, ui(), title, dialogPurpose, data.modelType, tag);
    }
};
#else
// A build without the data-file workflow: nothing can be read.
class WorkflowFileCommands : public FileCommands {
public:
    bool saveDataFilePrompt(DataSet& data) override { return data.dataState == kDataUnchanged; }
    bool openModelFile(DataSet&, const std::string& title, int) override {
        ui().message(MessageIcon::Exclamation, MessageButtons::Ok, title, "Data files cannot be read in this build.");
        return false;
    }
};
#endif

}  // namespace

FileCommands& defaultFileCommands() {
    static WorkflowFileCommands instance;
    return instance;
}

}  // namespace bm
