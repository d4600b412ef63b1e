#include "shell/file_commands.h"

#include "model/data_set.h"

namespace bm {

namespace {
FileCommands* installed = nullptr;
}  // namespace

FileCommands& defaultFileCommands();

FileCommands& fileCommands() { return installed ? *installed : defaultFileCommands(); }
void setFileCommands(FileCommands* commands) { installed = commands; }

}  // namespace bm
