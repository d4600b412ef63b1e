#pragma once
// The little text handling that paths need below the model layer: blanks and
// tabs cut off a typed path, and the case folding of paths for showing and
// comparing them (never for opening a file).

#include <string>
#include <string_view>

namespace bm {

std::string trimmedPath(std::string_view path);
std::string lowerCasePath(std::string_view path);
std::string upperCasePath(std::string_view path);

}  // namespace bm
