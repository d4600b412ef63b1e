#pragma once
// The File commands that Main hands to the data-file workflow: the question
// before data is lost, and Open (dialog and reader). Main reaches them through
// this interface so that its own tests can script them.

#include <string>

namespace bm {

struct DataSet;

class FileCommands {
public:
    virtual ~FileCommands() = default;
    // True: go on; false: stay.
    virtual bool saveDataFilePrompt(DataSet& data) = 0;
    // Shows the open dialog and reads the chosen file. True when a model was
    // read; false after a cancel or an error (the error already reported).
    virtual bool openModelFile(DataSet& data, const std::string& title, int dialogPurpose) = 0;
};

// The process-wide one: the data-file workflow unless a test installed its own.
FileCommands& fileCommands();
void setFileCommands(FileCommands* commands);

}  // namespace bm
