// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes are a database within its limits, or none.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "manager/database/data_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelund;
  const auto database = parseDatabase(std::string(data, data + size));
  if (!database) return 0;
  if (database->RecordCount < 0 || database->RecordCount > kMostRecords ||
      database->FundCount < 0 || database->FundCount > kMostFunds || size > kMostFileBytes)
    std::abort();
  for (const Record& record : database->records())
    if (transactionType(record.type) == nullptr ||
        !Date::of(record.date.year(), record.date.month(), record.date.day()))
      std::abort();
  return 0;
}
