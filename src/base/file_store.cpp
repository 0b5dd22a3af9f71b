// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_store.h"

namespace mirelund {

std::string_view failureText(FileFailure failure) {
  switch (failure) {
    case FileFailure::NoPermission:
      return "You have no permission to write there.";
    case FileFailure::ReadOnly:
      return "The disk is read-only.";
    case FileFailure::NoSpace:
      return "There is not enough space on the disk.";
    case FileFailure::Changed:
      return "The file has been changed meanwhile.";
    default:
      return {};
  }
}

}  // namespace mirelund
