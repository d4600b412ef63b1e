#include "files/file_workflow.h"

#include <exception>
#include <functional>

#include "files/data_file.h"
#include "files/file_filters.h"
#include "model/app_state.h"
#include "model/number_text.h"
#include "shell/base/common_services.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {

constexpr const char* kErrorContext = "File Error";

// Reports an error through the handler and marks the tag. A bounds error is
// passed over without a box, as everywhere; the tag still keeps the half-read
// model from opening in a screen.
void reportFileError(const RuntimeError& error, const std::string& path, UserInterface& ui, std::string& statusTag) {
    handleError(error, kErrorContext, path, ui);
    statusTag = kFileErrorTag;
}

// Runs a read or a write of `path` under the busy pointer. False when it
// raised an error, which is then reported and tagged.
bool reportedRun(const std::function<void()>& work, const std::string& path, UserInterface& ui,
                 std::string& statusTag) {
    bool done = false;
    ui.setBusy(true);
    try {
        work();
        done = true;
    } catch (const RuntimeError& error) {
        reportFileError(error, path, ui, statusTag);
    } catch (const std::exception&) {
        reportFileError(RuntimeError(err::OutOfMemory), path, ui, statusTag);
    }
    ui.setBusy(false);
    return done;
}

}  // namespace

bool saveDataFilePrompt(DataSet& data, UserInterface& ui, std::string& statusTag) {
    const std::string modelType = data.modelType;
    if (data.dataState == kNeedsSaving) {
        const MessageAnswer answer =
            ui.message(MessageIcon::Question, MessageButtons::YesNoCancel, "Data Not Saved",
                       modelType + " Model parameters and results has been changed. \r\rWould you like to save changes now?");
        if (answer == MessageAnswer::Yes) {
            if (!saveDataFile(data, ui, "Save", modelType, statusTag)) return false;
            data.dataState = kDataUnchanged;
            return true;
        }
        return answer == MessageAnswer::No;
    }
    if (data.dataState == kParametersChanged) {
        const MessageAnswer answer = ui.message(
            MessageIcon::Question, MessageButtons::YesNo, "Data Changed",
            modelType + " Model parameters has been changed, but you don't do Calculation.\r\rWould you like to select Calculate first?");
        return answer == MessageAnswer::No;
    }
    return true;
}

std::string chooseDataFile(DataSet& data, UserInterface& ui, const std::string& title, const std::string& kind,
                           int dialogPurpose, const std::string& modelType, std::string& statusTag) {
    std::string result = kDontDoAnything;
    const bool open = kind == "Open";
    const bool multi = data.multiChemical;

    FileDialogRequest request;
    request.kind = open ? FileDialogRequest::Kind::Open : FileDialogRequest::Kind::Save;
    request.title = title;
    request.filter = dataFileFilter(dialogPurpose, modelType);
    request.filterIndex = dataFileFilterIndex(dialogPurpose, modelType, multi);
    std::string directory, name;
    if (const std::string current = trim(data.currentFileName); fileExists(current)) splitPath(current, directory, name);
    else directory = theAppState().groundwaterDataPath;
    request.initialDirectory = directory;
    const std::string extension = defaultDataExtension(modelType, multi);
    request.defaultExtension = extension.empty() ? std::string() : extension.substr(1);
    request.initialFileName = name.empty() ? defaultDataPattern(dialogPurpose, modelType, multi) : name;

    std::string path;
    try {
        const std::optional<std::string> chosen = ui.askFile(request);
        if (chosen) {  // a cancel is not reported
            path = *chosen;
            // A "." anywhere, in a folder's name too, keeps the text as the user wrote it.
            if (!open && path.find('.') == std::string::npos) path += extension;
            if (open) {
                if (!fileExists(path)) raiseError(err::FileNotFound);
                result = path;
            } else if (!fileExists(path) ||
                       handleError(err::FileAlreadyExists, kErrorContext, path, ui) == kResume) {
                result = path;
            } else {
                statusTag = kFileErrorTag;  // No to "Overwrite File"
            }
        }
    } catch (const RuntimeError& error) {
        reportFileError(error, path, ui, statusTag);
    }
    ui.setBusy(false);
    return result;
}

bool openModelFile(DataSet& data, UserInterface& ui, const std::string& title, int dialogPurpose,
                   const std::string& modelType, std::string& statusTag) {
    const std::string path = chooseDataFile(data, ui, title, "Open", dialogPurpose, modelType, statusTag);
    if (path == kDontDoAnything) return false;
    return reportedRun(
        [&] {
            readDataFile(data, path);
            data.currentFileName = path;
            setMcPointChanged(data, data.modelType, false);
            data.needsDisplayRefresh = true;
            data.dataState = kDataUnchanged;
        },
        path, ui, statusTag);
}

bool saveDataFile(DataSet& data, UserInterface& ui, const std::string& kind, const std::string& modelType,
                  std::string& statusTag) {
    std::string path = trim(data.currentFileName);
    if (kind == "Save As" || !fileExists(path)) {
        path = chooseDataFile(data, ui, "Save Data File As", "Save", 0, modelType, statusTag);
        if (path == kDontDoAnything) return false;
    }
    return reportedRun(
        [&] {
            writeDataFile(data, path);
            data.currentFileName = path;
            setMcPointChanged(data, modelType, false);
            data.dataState = kDataUnchanged;
        },
        path, ui, statusTag);
}

bool closeModelFile(DataSet& data, UserInterface& ui, std::string& statusTag) {
    if (!saveDataFilePrompt(data, ui, statusTag)) return false;
    closeModel(data, "Complete");
    return true;
}

std::string fileNameCaption(const DataSet& data) { return "Filename: " + data.currentFileName; }

}  // namespace bm
