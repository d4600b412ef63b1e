#include "saturated/quadrature_points.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

#include "kernels/gauss_legendre.h"
#include "model/app_state.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

constexpr int kPoints = 256;
constexpr int kHeaderLines = 5;

// Reads the file as the runtime's sequential input does: whole lines for the
// header (ended by CR LF, CR or LF), then numbers separated by blanks, commas
// or line ends.
class PointsReader {
public:
    explicit PointsReader(std::string text) : text_(std::move(text)) {}

    void skipLine() {
        if (pos_ >= text_.size()) raiseError(err::InputPastEndOfFile);
        while (pos_ < text_.size() && text_[pos_] != '\r' && text_[pos_] != '\n') ++pos_;
        if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
        if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
    }

    double number() {
        while (pos_ < text_.size() && isSeparator(text_[pos_])) ++pos_;
        if (pos_ >= text_.size()) raiseError(err::InputPastEndOfFile);
        const std::size_t start = pos_;
        while (pos_ < text_.size() && !isSeparator(text_[pos_])) ++pos_;
        std::string_view token(text_.data() + start, pos_ - start);
        if (!token.empty() && token.front() == '+') token.remove_prefix(1);
        double value = 0.0;
        const auto [end, ec] = std::from_chars(token.data(), token.data() + token.size(), value);
        if (ec != std::errc() || end != token.data() + token.size()) raiseError(err::TypeMismatch);
        return value;
    }

private:
    static bool isSeparator(char c) { return c == ' ' || c == '\t' || c == ',' || c == '\r' || c == '\n'; }

    std::string text_;
    std::size_t pos_ = 0;
};

}  // namespace

bool readQuadraturePoints(const std::string& path, List<double>& nodes, List<double>& weights) {
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) raiseFileError(err::FileNotFound, path);
    std::ifstream in(path, std::ios::binary);
    if (!in) raiseFileError(err::FileNotFound, path);
    PointsReader reader{std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())};
    in.close();

    List<double> x(kPoints), w(kPoints);
    try {
        for (int i = 0; i < kHeaderLines; ++i) reader.skipLine();
        for (int i = 1; i < kPoints; i += 2) {
            x(i) = reader.number();
            x(i + 1) = -x(i);
        }
        for (int i = 1; i < kPoints; i += 2) {
            w(i) = reader.number();
            w(i + 1) = w(i);
        }
    } catch (RuntimeError& e) {
        e.about(path);  // a short or damaged file is named in the message
        throw;
    }
    nodes = std::move(x);
    weights = std::move(w);
    ruleArraysChanged();  // new arrays, perhaps where earlier ones were
    return true;
}

bool readQuadraturePoints(List<double>& nodes, List<double>& weights) {
    return readQuadraturePoints(theAppState().gaussPointsFile, nodes, weights);
}

}  // namespace bm
