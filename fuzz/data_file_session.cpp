// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever file is opened and whatever is done to it: the tables stay within their
// limits and in order, reports show numbers, and what is saved opens again.
//
// The input is a file's bytes and, behind a NUL, which no file holds, what is done:
// two bytes a step. Without steps every kind of step is taken once.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "base/text.h"
#include "manager/database/data_file.h"
#include "manager/manager.h"

namespace mirelund {
namespace {

constexpr char kPath[] = "Fuzz.PQD";

void expect(bool holds) {
  if (!holds) std::abort();
}

class MemoryFiles : public FileStore {
 public:
  FileRead read(const std::string& path, std::size_t most) override {
    if (files[path].size() > most) return {FileFailure::TooLarge, {}};
    return {FileFailure::None, files[path]};
  }
  FileFailure replace(const std::string& path, std::string_view bytes,
                      const std::optional<std::string>&) override {
    files[path] = std::string(bytes);
    return FileFailure::None;
  }
  std::string resolved(const std::string& path) override { return path; }

  std::map<std::string, std::string> files;
};

void expectFigures(std::string_view report) {
  expect(report.find("nan") == std::string_view::npos &&
         report.find("inf") == std::string_view::npos);
}

constexpr std::array<const char*, 8> kNumbers = {
    "1", "0", "12.5", ".0001", "922337203685477.5", "99999999999999999999", "1000000", "0.00005"};
constexpr std::array<const char*, 6> kDates = {"1/2/2003",  "12/31/9999", "1/1/100",
                                               "2/29/2004", "7/7/77",     "13/1/2000"};
constexpr std::array<const char*, 4> kNames = {"nan inf", "Zürich", "zzzzzzzzzzzzzzzz", "a\xE9"};

class Session {
 public:
  explicit Session(std::string bytes) {
    files_.files[kPath] = std::move(bytes);
    manager_.DiscardDatabase();
  }

  bool open() {
    if (manager_.OpenDatabase(kPath) != Message::None) return false;
    // A file's records keep its order until one of them changes.
    sorted_ = std::ranges::is_sorted(database().records(), {}, &Record::date);
    check();
    return true;
  }

  void step(unsigned char kind, unsigned char detail) {
    const std::string active = manager_.fundName(manager_.state().ActiveFundRow);
    const std::string number = std::to_string(detail % 8);
    switch (kind % 10) {
      case 0:
        if (database().FundCount > 0)
          manager_.chooseFund(static_cast<std::int16_t>(1 + detail % database().FundCount));
        break;
      case 1:
        if (manager_.correctRecord(active, number) == Message::None) {
          expect(!manager_.correctingDateText().empty());
          add(active, manager_.correctingDateText());
        }
        break;
      case 2:
        if (manager_.askDelete(active).message == Message::None)
          changed(manager_.deleteRecord(number));
        break;
      case 3:
        if (manager_.chooseType(detail % 6) == Message::None) {
          type(detail);
          add(active, kDates[detail / 6U % kDates.size()]);
        }
        break;
      case 4:
        manager_.addFund(kNames[detail % kNames.size()]);
        break;
      case 5:
        if (manager_.askDelete(active).wholeFund) expect(manager_.deleteFund() == Message::None);
        break;
      case 6:
        report();
        break;
      case 7:
        value(detail);
        break;
      case 8:
        saveAndOpen();
        break;
      default:
        manager_.leaveEntryPage();
    }
    check();
  }

 private:
  const Database& database() const { return manager_.database(); }

  void changed(const Outcome& outcome) {
    expectFigures(outcome.results);
    // Deleted, though a total may be out of range.
    if (outcome.message == Message::None || outcome.showResults) sorted_ = true;
  }

  void type(unsigned char detail) {
    for (const EntryBox box :
         {EntryBox::Price, EntryBox::Shares, EntryBox::Fees, EntryBox::Dividend}) {
      if (manager_.state().entry.type->need(box) == Need::None) continue;
      global_.boxes.BoxEdited = 1;
      manager_.leaveValueBox(box, kNumbers[detail % kNumbers.size()]);
      detail /= 2;
    }
  }

  void add(const std::string& fund, const std::string& date) {
    const Outcome outcome = manager_.addRecord(date, fund);
    if (outcome.message == Message::None) changed(outcome);
  }

  void report() {
    for (std::int16_t row = 1; row <= database().FundCount; ++row)
      expectFigures(manager_.showFund(row).report.text);
    expectFigures(manager_.showAllFunds().report.text);
    expectFigures(manager_.showRecordList().results);
  }

  void value(unsigned char detail) {
    for (std::int16_t row = 1; row <= database().FundCount; ++row) {
      global_.boxes.BoxEdited = 1;
      manager_.leavePriceBox(
          row, kNumbers[(detail + static_cast<unsigned>(row) / 8U) % kNumbers.size()]);
    }
    std::string table = manager_.calculateCurrentValue().results;
    std::string_view left = table;
    while (!left.empty()) {
      const std::string_view line = left.substr(0, left.find('\n') + 1);
      // Behind a fund's name, of ten characters at most.
      expectFigures(line.substr(firstCharacters(line, 10).size()));
      left.remove_prefix(line.size());
    }
  }

  void saveAndOpen() {
    const Database saved = database();
    const Message message = manager_.SaveDatabase(kPath).message;
    expect(message == (saved.RecordCount == 0 ? Message::NoRecords : Message::None));
    if (message != Message::None) return;
    const std::string bytes = files_.files[kPath];
    expect(manager_.OpenDatabase(kPath) == Message::None);
    expect(database() == saved);
    expect(manager_.SaveDatabase(kPath).message == Message::None && files_.files[kPath] == bytes);
  }

  void check() const {
    const Database& tables = database();
    expect(tables.FundCount >= 0 && tables.FundCount <= kMostFunds);
    expect(tables.RecordCount >= 0 && tables.RecordCount <= kMostRecords);
    expect(std::ranges::is_sorted(tables.funds(), {}, &Fund::name));
    expect(!sorted_ || std::ranges::is_sorted(tables.records(), {}, &Record::date));
    std::int16_t number = 0;
    for (const Record& record : tables.records()) expect(record.number == ++number);
  }

  MemoryFiles files_;
  Global global_;
  Manager manager_{global_.boxes, global_.reports, global_.chart, files_};
  bool sorted_ = true;
};

}  // namespace
}  // namespace mirelund

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\0'), size);
  constexpr std::string_view kEveryStep("\0\1\3\2\1\1\2\1\4\1\3\7\6\0\7\0\10\0\5\0\11\0", 22);
  const std::string_view steps = end + 1 < size ? input.substr(end + 1) : kEveryStep;
  mirelund::Session session{std::string(input.substr(0, end))};
  if (!session.open()) return 0;
  constexpr std::size_t kMostBytes = 40;
  for (std::size_t i = 0; i + 1 < steps.size() && i < kMostBytes; i += 2)
    session.step(static_cast<unsigned char>(steps[i]), static_cast<unsigned char>(steps[i + 1]));
  return 0;
}
