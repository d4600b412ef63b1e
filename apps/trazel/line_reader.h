#pragma once
// Lines of a plot file, read in chunks so that a file of any size passes
// through a buffer of a few megabytes. Each line comes trimmed of blanks, tabs
// and its line end, with its number (from 1, as an editor counts) and the
// byte offset where it starts, so that a later read can seek back to it.
// Reading reports its progress and stops when told to.

#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

namespace bm::trazel {

// Called every few megabytes with the bytes read and the bytes in all; false stops the read.
using ReadProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

// Thrown out of a read whose progress function answered false.
struct ReadCancelled {};

struct Line {
    std::string_view text;  // valid until the next call of next()
    long long number = 0;
    std::uint64_t offset = 0;
};

class LineReader {
public:
    // Lines of a text in memory.
    explicit LineReader(std::string_view text);
    // Lines of a file from byte `offset` on; `firstNumber` is the number of the line there.
    LineReader(const std::string& path, std::uint64_t offset = 0, long long firstNumber = 1);

    bool isOpen() const { return memory_ || file_.is_open(); }
    bool failed() const { return failed_; }  // a read error, as opposed to the end
    std::uint64_t size() const { return size_; }
    void setProgress(ReadProgress progress) { progress_ = std::move(progress); }

    // The next line; false at the end.
    bool next(Line& line);
    // The line just read comes again from the next call of next().
    void unread() { again_ = true; }

private:
    bool fill();
    void report(bool force);

    bool memory_ = false;
    std::ifstream file_;
    std::string buffer_;
    std::string_view data_;  // the unread part of the buffer (or of the text in memory)
    std::uint64_t consumed_ = 0;  // bytes before data_
    std::uint64_t size_ = 0;
    std::uint64_t reported_ = 0;
    bool atEnd_ = false;
    bool failed_ = false;
    bool again_ = false;
    Line last_;
    long long nextNumber_ = 1;
    ReadProgress progress_;
};

}  // namespace bm::trazel
