#pragma once
// Replacing a file without ever damaging it: the new contents go to a temporary
// file in the same folder (files/temporary_files.h), are flushed to the disk,
// and only then renamed over the old file. Until the rename the old file is
// untouched; a failure removes the temporary file and leaves the old one byte
// for byte as it was. Temporary files that a killed process left in the folder
// are removed by the next save into it.
//
// Errors (RuntimeError): 61 no space left on the device (or the file grew past
// what the system allows), 71 the device failed or went away, 75 a folder or
// file that cannot be written (a read-only file or folder, no permission, a folder in the way),
// 76 a folder that does not exist. The description names the file and the cause.
// A symbolic link is followed, a dangling one too: the file it points to is
// written, the link stays.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace bm {

void replaceFileContents(const std::string& path, std::string_view bytes);

// The file a save of `path` writes: the path with its symbolic links followed
// to their end (the last one may point to a file that does not exist yet).
// Raises 75 for a loop of links.
std::string saveTargetOf(const std::string& path);

// A replacement in two steps, so that several files can be replaced only once
// all of them are complete: the constructor writes the new contents to the
// temporary file and flushes it (raising as replaceFileContents does), commit()
// renames it over the target. Destroyed without a commit, it removes the
// temporary file and the target stays as it was. A device or a named pipe is
// written directly by commit().
class PreparedReplacement {
public:
    PreparedReplacement(const std::string& path, std::string_view bytes);
    ~PreparedReplacement();
    PreparedReplacement(PreparedReplacement&&) noexcept;
    PreparedReplacement& operator=(PreparedReplacement&&) noexcept;
    PreparedReplacement(const PreparedReplacement&) = delete;
    PreparedReplacement& operator=(const PreparedReplacement&) = delete;

    void commit();
    // The temporary file (empty for a device or a pipe, and after the commit).
    const std::string& temporaryPath() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// Test support: routes the low-level writes of replaceFileContents through
// `write` (with the signature of POSIX write) while the object lives, so that a
// test can make the disk fill up half way.
class ScopedWriteHook {
public:
    using WriteFunction = std::function<ssize_t(int fd, const void* data, std::size_t size)>;
    explicit ScopedWriteHook(WriteFunction write);
    ~ScopedWriteHook();
    ScopedWriteHook(const ScopedWriteHook&) = delete;
    ScopedWriteHook& operator=(const ScopedWriteHook&) = delete;
};

}  // namespace bm
