// SPDX-License-Identifier: GPL-3.0-or-later
// Characters in byte strings: counted as Unicode code points.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mirelund {

/// True when no byte is beyond 127: each is a character then.
bool isAscii(std::string_view text);

/// The number of code points in UTF-8 text. A byte that starts none counts as
/// part of the character before it.
std::size_t characterCount(std::string_view text);

/// The first `count` code points of `text`, or all of it.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// True for well-formed UTF-8: shortest forms, no surrogates, nothing beyond
/// U+10FFFF.
bool isUtf8(std::string_view bytes);

/// Bytes from a file as UTF-8 text to show: themselves where they are UTF-8, else
/// read as Windows-1252, its five unused bytes as U+FFFD.
std::string displayText(std::string_view bytes);

}  // namespace mirelund
