#pragma once
// The text of a table of numbers (the grid of an output or plot file), written
// through a block on the stack: each number is written in place in the
// results' number format (model/number_format.h) and the string grows by
// whole blocks, not by a call for every field.

#include <bit>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "model/number_format.h"

namespace bm {

// The texts of numbers written lately, by their bits: a grid's table repeats
// many values (points mirrored about a source's centre hold the same bits),
// and copying a kept text costs a fraction of writing it again.
class KeptNumberTexts {
public:
    // Writes the text of `value` at out (kNumberTextRoom free), the kept one
    // where there is one; returns its end.
    char* write(char* out, double value) {
        const std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
        Entry& kept = entries_[(bits * 0x9E3779B97F4A7C15ULL) >> (64 - kBits)];
        if (kept.length != 0 && kept.bits == bits) {
            std::memcpy(out, kept.text, sizeof kept.text);
            return out + kept.length;
        }
        char* end = writeNumber(out, value);
        const auto length = static_cast<std::size_t>(end - out);
        if (length <= sizeof kept.text) {
            kept.bits = bits;
            kept.length = static_cast<std::uint8_t>(length);
            std::memcpy(kept.text, out, length);
        }
        return end;
    }

private:
    static constexpr int kBits = 10;
    struct Entry {
        std::uint64_t bits = 0;
        std::uint8_t length = 0;  // 0: empty
        char text[23] = {};
    };
    static_assert(sizeof(Entry::text) <= kNumberTextRoom);
    Entry entries_[1 << kBits];
};

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
        end_ = write(end_, value);
    }
    template <class Real>
    void field(Real value) {
        makeRoom(kNumberTextRoom + 2);
        *end_++ = ',';
        *end_++ = ' ';
        end_ = write(end_, value);
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
    // Numbers written before texts are kept: a short table never pays for the store.
    static constexpr int kWrittenBeforeKeeping = 256;

    template <class Real>
    char* write(char* out, Real value) {
        if constexpr (std::is_same_v<Real, double>) {
            if (kept_ == nullptr && ++written_ > kWrittenBeforeKeeping) kept_ = std::make_unique<KeptNumberTexts>();
            if (kept_ != nullptr) return kept_->write(out, value);
        }
        return writeNumber(out, value);
    }
    void makeRoom(std::size_t size) {
        if (static_cast<std::size_t>(block_ + kBlock - end_) < size) flush();
    }

    std::string& out_;
    int unwinding_;
    int written_ = 0;
    std::unique_ptr<KeptNumberTexts> kept_;
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
