#include "shell/base/error_handler.h"

#include "shell/base/user_interface.h"

namespace bm {

namespace {
const char* const kBreak = "\r\n";

void exclaim(UserInterface& ui, const std::string& title, const std::string& text) {
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, title, text);
}
}  // namespace

std::int16_t handleError(const RuntimeError& error, const std::string& context, const std::string& callersExtra,
                         UserInterface& ui) {
    const std::string& extra = callersExtra.empty() ? error.subject() : callersExtra;
    try {
        switch (error.number()) {
        case 9:
            ui.errorPassedOver(error.number(), defaultErrorDescription(error.number()));
            ui.setBusy(true);
            return kResume;
        case 6:
            exclaim(ui, "Overflow",
                    "The input data has resulted in an overflow during analytical computations. Please check the "
                    "data and try again.");
            return kLeave;
        case 7:
            exclaim(ui, "Out Of Memory",
                    std::string("Insufficient memory! ") + kBreak +
                        "Please reduce the number of chemicals selected and/or number of montecarlo terms.");
            return kLeave;
        case 11:
            exclaim(ui, "Division by zero",
                    "The input data has resulted in an division by zero during analytical computations. Please "
                    "check the data and try again.");
            return kLeave;
        case 5:
            exclaim(ui, "Illegal Function Call",
                    "The input data has resulted in an illegal function call during analytical computations. "
                    "Possible reasons could be taking a square root or a lograthim of a negative number etc. Please "
                    "check the data and try again.");
            return kLeave;
        case 13:
            exclaim(ui, "Type Mismatch Error",
                    "The input data has resulted in a type mis-match error during analytical computations. Possible "
                    "reasons could be improper input e.g. an alphabet or blank instead of a number etc. Please check "
                    "the data and try again.");
            return kLeave;
        case 53:
            exclaim(ui, extra + " not found!",
                    std::string("File not found.") + kBreak + "The selected file: " + extra +
                        " is not found. Please check filename and path.");
            return kLeave;
        case 58: {
            const auto answer = ui.message(MessageIcon::Exclamation, MessageButtons::YesNo, "Overwrite File",
                                           extra + " already exists. " + kBreak + " Replace existing file?");
            return answer == MessageAnswer::Yes ? kResume : kLeave;
        }
        case 61:
            exclaim(ui, "Save Vipripro's File Error",
                    std::string("No space left on the device.") + kBreak + extra +
                        " cannot be saved. Please make sure there is enough free space on the disk before saving "
                        "this file.");
            return kLeave;
        case 62:
        case 64:
            exclaim(ui, "Improper File Name",
                    extra + " is not in one of the recognized formats. " + kBreak + " Please open another file.");
            return kLeave;
        case 68:
            exclaim(ui, context.empty() ? std::string("brenmoor") : context, "The requested device is not available.");
            return kLeave;
        case 71:
            exclaim(ui, "Disk Not ready", std::string("Disk not ready!") + kBreak + "Please check the disk and try again.");
            return kLeave;
        case 776:
            ui.errorPassedOver(error.number(), defaultErrorDescription(error.number()));
            return kLeave;
        case 444:
            exclaim(ui, "Cannot Delete", "Please finish adding the new chemical before making any deletions.");
            return kLeave;
        case 32755:
        case 438:
        case 3020:
            ui.errorPassedOver(error.number(), defaultErrorDescription(error.number()));
            return kLeave;
        case 3022:
            exclaim(ui, "Duplicate Chemical Name",
                    "Chemical: " + extra + " already exists." + kBreak + "All chemicals must have distinct chemical names.");
            return kLeave;
        case 3049:
            exclaim(ui, "Invalid Database",
                    "'" + extra + "' is corrupted or isn't a Microsoft Access database." + kBreak +
                        "Please choose a valid database.");
            return kLeave;
        case 3050:
            exclaim(ui, "Cannot open database",
                    std::string("Couldn't lock file; SHARE.EXE hasn't been loaded.") + kBreak +
                        "Please exit to the operating system, load SHARE.EXE and try again.");
            return kLeave;
        case 3058:
            exclaim(ui, "Invalid Chemical Name",
                    std::string("No Chemical Name has been given.") + kBreak +
                        "You must give a distinct chemical name in order to save its data.");
            return kLeave;
        case 3078:
            exclaim(ui, "Invalid Database Format",
                    "'" + extra + "' is not in one of the recognized formats of this software." + kBreak +
                        "Please choose a valid database.");
            return kLeave;
        default:
            exclaim(ui, "Error",
                    "Error # " + std::to_string(error.number()) + " was generated by " + error.source() +
                        " with the following description: " + error.description() + ".");
            return kLeave;
        }
    } catch (...) {
        return kLeave;  // the handler never raises an error itself
    }
}

std::int16_t handleError(int number, const std::string& context, const std::string& extra, UserInterface& ui) {
    return handleError(RuntimeError(number), context, extra, ui);
}

}  // namespace bm
