// SPDX-License-Identifier: GPL-3.0-or-later
// Temporary folders and the files in them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace mirelund {

/// A folder that goes with the test.
class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "mirelund-test-XXXXXX").string();
    path_ = mkdtemp(name.data());
    std::filesystem::permissions(path_, std::filesystem::perms::all);
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string file(const std::string& name) const { return path_ + "/" + name; }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

inline std::string contents(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

/// So many bytes, which differ by their place and by `seed`.
inline std::string madeBytes(std::size_t size, unsigned seed) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i)
    bytes[i] = static_cast<char>((i * 2'654'435'761U + seed * 40'503U) >> 7);
  return bytes;
}

/// What is in a folder, sorted.
inline std::vector<std::string> names(const std::string& folder) {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    found.push_back(entry.path().filename());
  std::ranges::sort(found);
  return found;
}

}  // namespace mirelund
