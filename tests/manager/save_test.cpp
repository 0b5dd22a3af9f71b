// SPDX-License-Identifier: GPL-3.0-or-later
// The manager on disks that fail, and before files that are none of its own.
#include <gtest/gtest.h>
#include <unistd.h>

#include "base/posix_file_store.h"
#include "base/watched_calls.h"
#include "files.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/manager.h"

namespace mirelund {
namespace {

class ManagerOnDisk : public testing::TestWithParam<Way> {
 protected:
  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
};

INSTANTIATE_TEST_SUITE_P(Ways, ManagerOnDisk, testing::Values(Way::Nameless, Way::Named),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(ManagerOnDisk, ASaveThatFailsLeavesTheDatabaseIntact) {
  const std::string before = writeDatabase(madeDatabase(2, 4));
  int refused = 0;
  for (int call = 1;; ++call) {
    SCOPED_TRACE(call);
    FaultyCalls files(GetParam());
    Global global;
    PosixFileStore store(files);
    Manager manager(global.boxes, global.reports, global.chart, store);
    manager.DiscardDatabase();
    write(path, before);
    ASSERT_EQ(manager.OpenDatabase(path), Message::None);
    manager.chooseFund(1);
    ASSERT_EQ(manager.deleteRecord("1").message, Message::None);
    const Database kept = manager.database();
    files.failing = call;
    files.calls = 0;
    const Message message = manager.SaveDatabase(path).message;
    EXPECT_EQ(manager.database(), kept);
    EXPECT_EQ(manager.state().FileChanged, message == Message::None ? 0 : 1);
    EXPECT_EQ(contents(path), message == Message::None ? writeDatabase(kept) : before);
    EXPECT_TRUE(message == Message::None || message == Message::CannotSave);
    if (files.failed.empty()) break;
    refused += message == Message::CannotSave ? 1 : 0;
  }
  EXPECT_GT(refused, 5);
}

// The sparse file is a gigabyte long and takes no room.
std::string gigabyteOfRubbish(const Folder& folder) {
  std::string path = folder.file("big.PQD");
  write(path, "3,2,\"All Records\",\"31\"\r\n");
  EXPECT_EQ(truncate(path.c_str(), 1L << 30), 0);
  return path;
}

// Counts what is read, of files that may say they are empty, as those of /proc do.
class CountingCalls : public FileCalls {
 public:
  ssize_t read(int file, void* to, std::size_t size) override {
    const ssize_t got = FileCalls::read(file, to, size);
    ++reads;
    bytes += got > 0 ? static_cast<std::size_t>(got) : 0;
    return got;
  }
  int fstat(int file, struct stat* status) override {
    const int result = FileCalls::fstat(file, status);
    if (saysEmpty) status->st_size = 0;
    return result;
  }
  std::size_t reads = 0;
  std::size_t bytes = 0;
  bool saysEmpty = false;
};

TEST(OpenDatabase, AGigabyteOfRubbishIsRefusedAtOnce) {
  const Folder folder;
  const std::string path = gigabyteOfRubbish(folder);
  CountingCalls files;
  Global global;
  PosixFileStore store(files);
  Manager manager(global.boxes, global.reports, global.chart, store);
  manager.DiscardDatabase();
  EXPECT_EQ(manager.OpenDatabase(path), Message::CannotOpen);
  EXPECT_EQ(files.reads, 0U);
  EXPECT_EQ(files.bytes, 0U);
}

TEST(OpenDatabase, AGigabyteThatSaysItIsEmptyIsReadToTheLimit) {
  const Folder folder;
  const std::string path = gigabyteOfRubbish(folder);
  CountingCalls files;
  files.saysEmpty = true;
  Global global;
  PosixFileStore store(files);
  Manager manager(global.boxes, global.reports, global.chart, store);
  manager.DiscardDatabase();
  EXPECT_EQ(manager.OpenDatabase(path), Message::CannotOpen);
  EXPECT_EQ(files.bytes, kMostFileBytes + 1);
  constexpr std::size_t kLeastRead = 65'536;  // at a time, but for the last
  EXPECT_LE(files.reads, kMostFileBytes / kLeastRead + 1);
}

}  // namespace
}  // namespace mirelund
