#include "apps/trazel/line_reader.h"

#include <algorithm>
#include <cstring>

namespace bm::trazel {

namespace {

constexpr std::size_t kChunk = 1 << 20;
constexpr std::uint64_t kReportEvery = 4 << 20;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
    return s;
}

}  // namespace

LineReader::LineReader(std::string_view text) : memory_(true), data_(text), size_(text.size()), atEnd_(true) {
    if (data_.substr(0, 3) == "\xEF\xBB\xBF") {
        data_.remove_prefix(3);
        consumed_ = 3;
    }
}

LineReader::LineReader(const std::string& path, std::uint64_t offset, long long firstNumber)
    : file_(path, std::ios::binary), nextNumber_(firstNumber) {
    if (!file_) return;
    file_.seekg(0, std::ios::end);
    size_ = static_cast<std::uint64_t>(file_.tellg());
    file_.seekg(static_cast<std::streamoff>(offset));
    consumed_ = offset;
    reported_ = offset;
    if (!file_) {
        failed_ = true;
        return;
    }
    fill();
    if (offset == 0 && data_.substr(0, 3) == "\xEF\xBB\xBF") {
        data_.remove_prefix(3);
        consumed_ = 3;
    }
}

bool LineReader::fill() {
    if (memory_ || atEnd_) return false;
    // Keep the unread rest and append the next chunk behind it.
    std::string rest(data_);
    buffer_.swap(rest);
    const std::size_t kept = buffer_.size();
    buffer_.resize(kept + kChunk);
    file_.read(buffer_.data() + kept, static_cast<std::streamsize>(kChunk));
    const auto got = static_cast<std::size_t>(file_.gcount());
    buffer_.resize(kept + got);
    if (got < kChunk) {
        atEnd_ = true;
        if (file_.bad()) failed_ = true;
    }
    data_ = buffer_;
    return got > 0;
}

void LineReader::report(bool force) {
    if (!progress_) return;
    if (!force && consumed_ - reported_ < kReportEvery) return;
    reported_ = consumed_;
    if (!progress_(consumed_, size_)) throw ReadCancelled{};
}

bool LineReader::next(Line& line) {
    if (again_) {
        again_ = false;
        line = last_;
        return true;
    }
    std::size_t end = data_.find('\n');
    while (end == std::string_view::npos && fill()) end = data_.find('\n');
    if (data_.empty() && end == std::string_view::npos) {
        report(true);
        return false;
    }
    const std::size_t length = end == std::string_view::npos ? data_.size() : end;
    last_.text = trimmed(data_.substr(0, length));
    last_.number = nextNumber_++;
    last_.offset = consumed_;
    const std::size_t step = std::min(data_.size(), length + 1);
    data_.remove_prefix(step);
    consumed_ += step;
    report(false);
    line = last_;
    return true;
}

}  // namespace bm::trazel
