#pragma once
// Fixed single-byte text fields of the kernels' packed records: the text cut
// to the field's length and blank-padded after it.

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace bm {

template <std::size_t N>
void setFixedText(char (&field)[N], std::string_view text) {
    const std::size_t n = text.size() < N ? text.size() : N;
    std::memcpy(field, text.data(), n);
    std::memset(field + n, ' ', N - n);
}

// All N characters of a fixed text field, padding included.
template <std::size_t N>
std::string fixedText(const char (&field)[N]) {
    return std::string(field, N);
}

}  // namespace bm
