// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_name.h"

namespace mirelund {

std::string_view fileName(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

std::string endingOf(std::string_view path) {
  const std::string_view name = fileName(path);
  const auto point = name.rfind('.');
  if (point == std::string_view::npos || point == 0) return {};
  std::string ending(name.substr(point));
  for (char& letter : ending)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  return ending;
}

std::string withEnding(std::string path, std::string_view ending) {
  if (endingOf(path).empty()) path += ending;
  return path;
}

}  // namespace mirelund
