#include "model/data_set.h"
#include "shell/file_commands.h"
#include "shell/user_interface.h"

namespace bm {

namespace {
// Main's File commands until the data-file workflow is linked in.
class PendingFileCommands : public FileCommands {
public:
    bool saveDataFilePrompt(DataSet& data) override { return data.dataState == kDataUnchanged; }
    bool openModelFile(DataSet&, const std::string& title, int) override {
        ui().message(MessageIcon::Exclamation, MessageButtons::Ok, title, "Data files cannot be read in this build.");
        return false;
    }
};
}  // namespace

FileCommands& defaultFileCommands() {
    static PendingFileCommands instance;
    return instance;
}

}  // namespace bm
