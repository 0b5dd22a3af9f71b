// SPDX-License-Identifier: GPL-3.0-or-later
// The names of files: bytes, as the system has them.
#pragma once

#include <string>
#include <string_view>

namespace mirelund {

/// What stands behind the last slash of a path.
std::string_view fileName(std::string_view path);

/// The ending of a path's file name, with its point and in small letters (".csv");
/// empty where it has none, as a name that begins with its only point.
std::string endingOf(std::string_view path);

/// The path with `ending` (".PQD") behind it where its file name has none. A name
/// that begins with its only point has none.
std::string withEnding(std::string path, std::string_view ending);

}  // namespace mirelund
