// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/xlsx_module.h"

#include <sys/mman.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <span>
#include <string_view>

#include "base/text.h"
#include "export/cell_text.h"

namespace mirelund {

namespace {

constexpr std::size_t kMostCharacters = 32'767;
constexpr Date kFirstDay = *Date::of(1900, 3, 1);

// The library prints numbers in the language of the process.
class PlainNumbers {
 public:
  PlainNumbers() : plain_(newlocale(LC_NUMERIC_MASK, "C", duplocale(uselocale({})))) {
    if (plain_ != nullptr) before_ = uselocale(plain_);
  }
  ~PlainNumbers() {
    if (plain_ == nullptr) return;
    uselocale(before_);
    freelocale(plain_);
  }
  PlainNumbers(const PlainNumbers&) = delete;
  PlainNumbers& operator=(const PlainNumbers&) = delete;

  bool good() const { return plain_ != nullptr; }

 private:
  locale_t plain_;
  locale_t before_{};
};

// A file that lies in memory and has a path for as long as it lives: of the library's
// versions the older ones write to a path alone.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("workbook", MFD_CLOEXEC)) {}
  ~MemoryFile() {
    if (good()) close(descriptor_);
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  bool good() const { return descriptor_ >= 0; }
  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  bool read(std::string& bytes) const {
    const off_t size = lseek(descriptor_, 0, SEEK_END);
    if (size < 0) return false;
    bytes.resize(static_cast<std::size_t>(size));
    return pread(descriptor_, bytes.data(), bytes.size(), 0) == size;
  }

 private:
  int descriptor_;
};

// Where the library's own files go. It does not tell when one could not be written, so
// that there has to be room beforehand; null where there is not.
char* workFolder() {
  constexpr unsigned long long kRoom = 32ULL << 20U;
  static std::array<char, 9> memory{"/dev/shm"};
  static std::array<char, 9> temporary{"/var/tmp"};
  static std::array<char, 5> usual{"/tmp"};
  for (char* folder : {memory.data(), usual.data(), temporary.data()}) {
    struct statvfs disk {};
    if (access(folder, W_OK | X_OK) == 0 && statvfs(folder, &disk) == 0 &&
        static_cast<unsigned long long>(disk.f_bavail) * disk.f_frsize >= kRoom)
      return folder;
  }
  return nullptr;
}

// A text that reads "_x0041_" is no character written by its number: its first
// underscore is written so.
std::string cellText(std::string_view text) {
  const auto isHex = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
  constexpr std::size_t kLength = 7;
  const std::string_view whole = firstCharacters(text, kMostCharacters);
  std::string out;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    const std::string_view next = whole.substr(i, kLength);
    if (next.size() == kLength && next.starts_with("_x") && next.back() == '_' &&
        std::all_of(next.begin() + 2, next.end() - 1, isHex))
      out += "_x005F";
    out += whole[i];
  }
  return std::string(firstCharacters(out, kMostCharacters));
}

class Workbook {
 public:
  Workbook(const std::string& path, char* folder) {
    lxw_workbook_options options{};
    options.tmpdir = folder;
    book_ = workbook_new_opt(path.c_str(), &options);
    if (book_ == nullptr) return;
    // The day that the parts of the archive bear too.
    lxw_doc_properties properties{};
    constexpr time_t kDay = 315'532'800;  // 1980-01-01
    properties.created = kDay;
    good_ = workbook_set_properties(book_, &properties) == LXW_NO_ERROR;
    bold_ = format();
    if (bold_ != nullptr) format_set_bold(bold_);
    day_ = numberFormat("yyyy-mm-dd");
    whole_ = numberFormat("0");
    constexpr std::array kAmounts{"0", "0.0", "0.00", "0.000", "0.0000"};
    for (std::size_t i = 0; i < kAmounts.size(); ++i) amounts_[i] = numberFormat(kAmounts[i]);
  }
  ~Workbook() { finish(); }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  void add(const Sheet& sheet) {
    page_ = book_ == nullptr ? nullptr : workbook_add_worksheet(book_, sheet.name.c_str());
    good_ = good_ && page_ != nullptr;
    if (!good_) return;
    std::vector<std::size_t> widths;
    lxw_col_t column = 0;
    for (const SheetColumn& each : sheet.columns) {
      check(worksheet_write_string(page_, 0, column++, cellText(each.heading).c_str(), bold_));
      widths.push_back(characterCount(each.heading));
    }
    worksheet_freeze_panes(page_, 1, 0);
    row_ = 0;
    for (const std::vector<Cell>& row : sheet.rows) {
      ++row_;
      for (std::size_t i = 0; i < row.size(); ++i) {
        column_ = static_cast<lxw_col_t>(i);
        decimals_ = sheet.columns.at(i).decimals;
        widths[i] = std::max(
            widths[i], std::visit([this](const auto& value) { return this->put(value); }, row[i]));
      }
    }
    constexpr std::size_t kMostWidth = 60;
    constexpr double kBesideText = 1.5;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const auto place = static_cast<lxw_col_t>(i);
      check(worksheet_set_column(page_, place, place,
                                 static_cast<double>(std::min(widths[i], kMostWidth)) + kBesideText,
                                 nullptr));
    }
  }

  bool finish() {
    if (book_ != nullptr) check(workbook_close(book_));
    book_ = nullptr;
    return good_;
  }

 private:
  lxw_format* format() {
    lxw_format* made = workbook_add_format(book_);
    good_ = good_ && made != nullptr;
    return made;
  }
  lxw_format* numberFormat(const char* pattern) {
    lxw_format* made = format();
    if (made != nullptr) format_set_num_format(made, pattern);
    return made;
  }
  void check(lxw_error error) { good_ = good_ && error == LXW_NO_ERROR; }

  // Each returns the characters that it takes.
  static std::size_t put(std::monostate /*none*/) { return 0; }
  std::size_t put(const std::string& text) {
    check(worksheet_write_string(page_, row_, column_, cellText(text).c_str(), nullptr));
    return characterCount(text);
  }
  std::size_t put(std::int64_t number) {
    check(worksheet_write_number(page_, row_, column_, static_cast<double>(number), whole_));
    return std::to_string(number).size();
  }
  std::size_t put(Currency amount) {
    const std::string text = amountText(amount, decimals_);
    lxw_format* const shown = amounts_.at(static_cast<std::size_t>(decimals_));
    check(worksheet_write_number(page_, row_, column_, std::strtod(text.c_str(), nullptr), shown));
    return text.size();
  }
  std::size_t put(const std::vector<Currency>& amounts) {
    return put(amountsText(amounts, decimals_));
  }
  std::size_t put(Date date) {
    if (date < kFirstDay) return put(isoDate(date));
    lxw_datetime day{};
    day.year = date.year();
    day.month = date.month();
    day.day = date.day();
    check(worksheet_write_datetime(page_, row_, column_, &day, day_));
    return isoDate(date).size();
  }

  lxw_workbook* book_ = nullptr;
  bool good_ = false;
  lxw_format* bold_ = nullptr;
  lxw_format* day_ = nullptr;
  lxw_format* whole_ = nullptr;
  std::array<lxw_format*, 5> amounts_{};
  lxw_worksheet* page_ = nullptr;
  lxw_row_t row_ = 0;
  lxw_col_t column_ = 0;
  int decimals_ = 0;
};

}  // namespace

}  // namespace mirelund

bool mirelundMakeXlsx(const mirelund::Sheet* sheets, std::size_t count, std::string* bytes) {
  using namespace mirelund;
  const PlainNumbers numbers;
  const MemoryFile file;
  char* const folder = workFolder();
  if (!numbers.good() || !file.good() || folder == nullptr) return false;
  Workbook book(file.path(), folder);
  for (const Sheet& sheet : std::span(sheets, count)) book.add(sheet);
  return book.finish() && file.read(*bytes);
}
