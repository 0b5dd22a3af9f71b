// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the sample database: make_sample DtaSampl.PQD
#include <cstdio>
#include <string_view>

#include "base/file_store.h"
#include "manager/database/data_file.h"
#include "sample_database.h"

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("usage: make_sample FILE\n", stderr);
    return 2;
  }
  const auto bytes = mirelund::writeDatabase(mirelund::sampleDatabase());
  if (mirelund::systemFiles().replace(words[1], bytes) != mirelund::FileFailure::None) {
    std::fprintf(stderr, "make_sample: cannot write %s\n", words[1]);
    return 1;
  }
  return 0;
}
