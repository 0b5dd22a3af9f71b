// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_name.h"

namespace mirelund {

std::string_view fileName(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

std::string withEnding(std::string path, std::string_view ending) {
  const auto point = fileName(path).rfind('.');
  if (point == std::string_view::npos || point == 0) path += ending;
  return path;
}

}  // namespace mirelund
