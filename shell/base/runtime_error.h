#pragma once
// The one run-time error type. It carries the error numbers that the error
// handler's table is keyed on (bounds 9, overflow 6, division by zero 11, ...).

#include <stdexcept>
#include <string>

namespace bm {

namespace err {
inline constexpr int InvalidProcedureCall = 5;  // square root / logarithm of a negative, bad length
inline constexpr int Overflow = 6;
inline constexpr int OutOfMemory = 7;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int DivisionByZero = 11;
inline constexpr int TypeMismatch = 13;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAlreadyExists = 58;
inline constexpr int DiskFull = 61;
inline constexpr int InputPastEndOfFile = 62;
inline constexpr int BadFileName = 64;
inline constexpr int DeviceUnavailable = 68;
inline constexpr int DiskNotReady = 71;
inline constexpr int PathFileAccessError = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int CloseAllFiles = 776;
inline constexpr int DialogCancelled = 32755;
}  // namespace err

// The runtime's own description of an error number ("Overflow", "Subscript out of range").
std::string defaultErrorDescription(int number);

class RuntimeError : public std::runtime_error {
public:
    explicit RuntimeError(int number, std::string description = {}, std::string source = "brenmoor");
    int number() const noexcept { return number_; }
    const std::string& description() const noexcept { return description_; }
    const std::string& source() const noexcept { return source_; }
    // The file (or other thing) the error concerns, when the raiser knows it;
    // the handler names it where its caller has no name to give.
    const std::string& subject() const noexcept { return subject_; }
    RuntimeError& about(std::string subject) {
        subject_ = std::move(subject);
        return *this;
    }

private:
    int number_;
    std::string description_;
    std::string source_;
    std::string subject_;
};

[[noreturn]] void raiseError(int number, const std::string& description = {});
// An error about a file: the handler names `path` in its message.
[[noreturn]] void raiseFileError(int number, const std::string& path);

}  // namespace bm
