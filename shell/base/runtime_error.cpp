#include "shell/base/runtime_error.h"

namespace bm {

std::string defaultErrorDescription(int number) {
    switch (number) {
    case 5: return "Invalid procedure call or argument";
    case 6: return "Overflow";
    case 7: return "Out of memory";
    case 9: return "Subscript out of range";
    case 11: return "Division by zero";
    case 13: return "Type mismatch";
    case 52: return "Bad file name or number";
    case 53: return "File not found";
    case 54: return "Bad file mode";
    case 55: return "File already open";
    case 57: return "Device I/O error";
    case 58: return "File already exists";
    case 61: return "Disk full";
    case 62: return "Input past end of file";
    case 64: return "Bad file name";
    case 67: return "Too many files";
    case 68: return "Device unavailable";
    case 70: return "Permission denied";
    case 71: return "Disk not ready";
    case 75: return "Path/File access error";
    case 76: return "Path not found";
    case 32755: return "Cancel was selected.";
    default: return "Application-defined or object-defined error";
    }
}

RuntimeError::RuntimeError(int number, std::string description, std::string source)
    : std::runtime_error("run-time error " + std::to_string(number)),
      number_(number),
      description_(description.empty() ? defaultErrorDescription(number) : std::move(description)),
      source_(std::move(source)) {}

void raiseError(int number, const std::string& description) { throw RuntimeError(number, description); }

void raiseFileError(int number, const std::string& path) { throw RuntimeError(number).about(path); }

}  // namespace bm
