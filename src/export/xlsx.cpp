// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/xlsx.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "export/xlsx_module.h"

namespace mirelund {

namespace {

using Make = decltype(&mirelundMakeXlsx);

// From the folder of the program: as installed and as built, and as the tests are built
// that stand a folder deeper.
constexpr const char* kModules[] = {"../lib/mirelund/modules/mirelund_xlsx.so",
                                    "../../lib/mirelund/modules/mirelund_xlsx.so"};

// The loader's own name for that folder is another library's where the sanitizers load.
std::filesystem::path programFolder() {
  std::error_code failed;
  return std::filesystem::read_symlink("/proc/self/exe", failed).parent_path();
}

Make load() {
  for (const char* module : kModules)
    if (void* const loaded = dlopen((programFolder() / module).c_str(), RTLD_NOW | RTLD_LOCAL))
      return reinterpret_cast<Make>(dlsym(loaded, "mirelundMakeXlsx"));
  return nullptr;
}

// Kept once it is there; looked for again until then.
Make made() {
  static Make make = nullptr;
  if (make == nullptr) make = load();
  return make;
}

}  // namespace

bool canMakeXlsx() {
  return made() != nullptr;
}

std::optional<std::string> xlsxBytes(std::span<const Sheet> sheets) {
  const Make make = made();
  std::string bytes;
  if (make == nullptr || !make(sheets.data(), sheets.size(), &bytes)) return std::nullopt;
  return bytes;
}

}  // namespace mirelund
