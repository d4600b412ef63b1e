#pragma once
// Replacing a file without ever damaging it: the new contents go to a temporary
// file in the same folder, are flushed to the disk, and only then renamed over
// the old file. Until the rename the old file is untouched; a failure removes
// the temporary file and leaves the old one byte for byte as it was.
//
// Errors (RuntimeError): 61 no space left on the device (or the file grew past
// what the system allows), 71 the device failed or went away, 75 a folder or
// file that cannot be written (a read-only file or folder, no permission, a folder in the way),
// 76 a folder that does not exist. The description names the file and the cause.
// A symbolic link is followed: the file it points to is replaced, the link stays.

#include <functional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace bm {

void replaceFileContents(const std::string& path, std::string_view bytes);

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
