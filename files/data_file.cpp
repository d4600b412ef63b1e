// The skeleton of a data file, the version gate and the current reader.

#include "files/data_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <sstream>
#include <sys/stat.h>

#include "files/block_parts.h"
#include "files/code_page.h"
#include "files/data_file_blocks.h"
#include "files/safe_save.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "shell/base/runtime_error.h"

namespace bm {

using namespace blockparts;

namespace {

// No data file comes near this; anything larger is refused before it is loaded.
constexpr long long kLargestFile = 1LL << 31;

std::string loadFile(const std::string& path) {
    struct stat st {};
    if (path.empty() || ::stat(path.c_str(), &st) != 0) raiseError(err::FileNotFound);
    // A folder, a device or a pipe holds no data file (and /dev/zero would never end).
    if (S_ISDIR(st.st_mode))
        raiseError(err::PathFileAccessError, "Path/File access error: " + path + " is a folder, not a data file");
    if (!S_ISREG(st.st_mode))
        raiseError(err::PathFileAccessError,
                   "Path/File access error: " + path + " is a device or a pipe, not a data file");
    if (st.st_size > kLargestFile) raiseError(err::OutOfMemory);
    std::ifstream in(path, std::ios::binary);
    if (!in) raiseError(err::PathFileAccessError, "Path/File access error: " + path + " cannot be read (" +
                                                      std::strerror(errno) + ")");
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The title and comments lines: the field, then while the line in hand is not
// the end marker, each further line but the marker joined with a blank.
void readContinued(FieldInput& in, std::string& field, std::string_view endMarker) {
    std::string line = in.lineInput();
    field = textAfter(line, ":");
    while (!contains(line, endMarker)) {
        line = in.lineInput();
        if (!contains(line, endMarker)) field += " " + line;
    }
}

void readCurrentFormat(DataSet& d, FieldInput& in, const std::string& path, ExtensionRule rule) {
    in.lineInput();  // "Version 9.1"
    in.lineInput();  // "[Begin Input Data]"
    d.author = labelField(in);
    in.lineInput();  // empty line
    in.lineInput();  // "[Begin Title]"
    readContinued(in, d.title, "[End Title]");
    in.lineInput();  // empty line
    in.lineInput();  // "[Begin Comments]"
    readContinued(in, d.comments, "[End Comments]");
    in.lineInput();  // empty line
    d.modelType = labelField(in);
    d.aquiferType = labelField(in);
    d.contaminantType = labelField(in);
    in.lineInput();  // empty line
    in.lineInput();  // "Units"
    d.lengthUnit = labelField(in);
    d.timeUnit = labelField(in);
    d.concentrationUnit = labelField(in);
    in.lineInput();  // empty line

    const bool multi = extensionSelectsMultiChemical(path, d.modelType, rule);
    readModelBlock(d, in, multi);
    readMonteCarloBlock(d, in);
    d.multiChemical = multi;
    copyMonteCarloStore(d, false);  // into the store of the model that was read
    in.lineInput();                 // "[End File]"
}

}  // namespace

std::string fileNameExtension(const std::string& path) {
    const auto slash = path.find_last_of('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const auto dot = name.find_last_of('.');
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

bool extensionSelectsMultiChemical(const std::string& path, const std::string& modelType, ExtensionRule rule) {
    // The extension of the word's multi-chemical files ("MC1", "MCU") marks them.
    const ModelKindInfo* kind = modelKindInfo(modelType, true);
    if (!kind || !kind->extensionMarksChemicals) return false;
    const std::string extension = rule == ExtensionRule::FileNameOwn ? fileNameExtension(path) : textAfter(path, ".");
    return toUpper(extension) == toUpper(kind->extension.substr(1));
}

std::string composeDataFile(DataSet& d) {
    PrintOutput out;
    out.printLine("Version 9.1");
    out.printLine("[Begin Input Data]");
    out.printLine("Author: " + d.author);
    out.printLine();
    out.printLine("[Begin Title]");
    out.printLine("Title: " + d.title);
    out.printLine("[End Title]");
    out.printLine();
    out.printLine("[Begin Comments]");
    out.printLine("Comments: " + d.comments);
    out.printLine("[End Comments]");
    out.printLine();
    out.printLine("Model: " + d.modelType);
    out.printLine("Aquifer: " + d.aquiferType);
    out.printLine("Contaminant: " + d.contaminantType);
    out.printLine();
    out.printLine("Units");
    out.printLine("Length: " + d.lengthUnit);
    out.printLine("Time: " + d.timeUnit);
    out.printLine("Concentration: " + d.concentrationUnit);
    out.printLine();
    writeModelBlock(d, out);
    writeMonteCarloBlock(d, out);
    out.printLine("[End File]");
    return out.text();
}

void writeDataFile(DataSet& d, const std::string& path) {
    std::string bytes;
    try {
        bytes = utf8ToWindows1252(composeDataFile(d));
    } catch (const std::bad_alloc&) {
        raiseError(err::OutOfMemory);
    }
    replaceFileContents(path, bytes);
}

bool parseDataFile(DataSet& d, const std::string& text, const std::string& path, ExtensionRule rule) {
    FieldInput in(text);
    const std::string firstLine = FieldInput(text.substr(0, text.find('\n'))).lineInput();
    if (contains(toLower(firstLine), "version")) readCurrentFormat(d, in, path, rule);
    else readOldFormat(d, in);
    return true;
}

bool readDataFile(DataSet& d, const std::string& path, ExtensionRule rule) {
    try {
        const std::string text = windows1252ToUtf8(loadFile(path));
        parseDataFile(d, text, path, rule);
    } catch (const std::bad_alloc&) {
        raiseError(err::OutOfMemory);
    }
    d.currentFileName = path;
    return true;
}

}  // namespace bm
