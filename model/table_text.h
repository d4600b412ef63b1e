#pragma once
// The text of a table of numbers (the grid of an output or plot file), written
// through a block on the stack: each number is written in place in the
// results' number format (model/number_format.h) and the string grows by
// whole blocks, not by a call for every field.

#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "model/number_format.h"

namespace bm {

class TableText {
public:
    explicit TableText(std::string& out) : out_(out), unwinding_(std::uncaught_exceptions()) {}
    TableText(const TableText&) = delete;
    TableText& operator=(const TableText&) = delete;
    // What the block still holds goes to the string (not while an exception
    // unwinds the writer: that text is being given up).
    ~TableText() noexcept(false) {
        if (std::uncaught_exceptions() == unwinding_) flush();
    }

    // A number, or ", " and a number (a field after a row's first).
    template <class Real>
    void number(Real value) {
        makeRoom(kNumberTextRoom);
        end_ = writeNumber(end_, value);
    }
    template <class Real>
    void field(Real value) {
        makeRoom(kNumberTextRoom + 2);
        *end_++ = ',';
        *end_++ = ' ';
        end_ = writeNumber(end_, value);
    }
    void text(std::string_view words) {
        if (words.size() > kBlock / 2) {
            flush();
            out_.append(words);
            return;
        }
        makeRoom(words.size());
        std::memcpy(end_, words.data(), words.size());
        end_ += words.size();
    }
    void flush() {
        out_.append(block_, end_);
        end_ = block_;
    }

private:
    static constexpr std::size_t kBlock = 4096;
    void makeRoom(std::size_t size) {
        if (static_cast<std::size_t>(block_ + kBlock - end_) < size) flush();
    }

    std::string& out_;
    int unwinding_;
    char block_[kBlock];
    char* end_ = block_;
};

// About the most bytes a table's row of `fields` numbers takes: texts of the
// results' format are rarely longer than 12 characters, and ", " between them.
inline std::size_t tableRowBytes(int fields) { return static_cast<std::size_t>(fields < 0 ? 0 : fields) * 14 + 32; }

// A list of numbers, one a line: value(1) .. value(count), each ended by CR LF.
template <class Value>
void appendNumberLines(std::string& out, int count, Value value) {
    if (count <= 0) return;
    out.reserve(out.size() + static_cast<std::size_t>(count) * 16);
    TableText text(out);
    for (int i = 1; i <= count; ++i) {
        text.number(value(i));
        text.text("\r\n");
    }
}

}  // namespace bm
