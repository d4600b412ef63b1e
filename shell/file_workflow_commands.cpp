// Main's File commands go to the data-file workflow of files/.

#include "files/file_workflow.h"
#include "model/data_set.h"
#include "shell/file_commands.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {

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

}  // namespace

FileCommands& defaultFileCommands() {
    static WorkflowFileCommands instance;
    return instance;
}

}  // namespace bm
