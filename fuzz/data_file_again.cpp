// SPDX-License-Identifier: GPL-3.0-or-later
// What opens is written, opened again and written to the same bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "manager/database/data_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelund;
  const auto database = parseDatabase(std::string(data, data + size));
  if (!database) return 0;
  const std::string written = writeDatabase(*database);
  const auto again = parseDatabase(written);
  if (!again || !(*again == *database) || writeDatabase(*again) != written) std::abort();
  return 0;
}
