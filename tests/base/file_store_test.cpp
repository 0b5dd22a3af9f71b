// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/posix_file_store.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <functional>
#include <random>
#include <thread>

#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/manager.h"

namespace mirelund {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMost = 1'000'000;

FileCalls& systemCalls() {
  static FileCalls calls;
  return calls;
}

std::optional<std::string> readFile(FileCalls& calls, const std::string& path, std::size_t most) {
  FileRead file = PosixFileStore(calls).read(path, most);
  if (file.failure != FileFailure::None) return std::nullopt;
  return std::move(file.bytes);
}

bool replaceFile(FileCalls& calls, const std::string& path, const std::string& bytes) {
  return PosixFileStore(calls).replace(path, bytes, std::nullopt) == FileFailure::None;
}

std::vector<std::string> names(const std::string& folder) {
  std::vector<std::string> found;
  for (const auto& entry : fs::directory_iterator(folder)) found.push_back(entry.path().filename());
  std::ranges::sort(found);
  return found;
}

// What a process of an ordinary user says; root may do anything.
bool asOrdinaryUser(const std::function<bool()>& use) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (getuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(2);
    _exit(use() ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool replaceAsUser(const std::string& path, const std::string& bytes) {
  return asOrdinaryUser([&] { return replaceFile(systemCalls(), path, bytes); });
}

// --- reading ----------------------------------------------------------------------

// Counts what is read.
class CountingFiles : public FileCalls {
 public:
  ssize_t read(int file, void* to, std::size_t size) override {
    const ssize_t got = FileCalls::read(file, to, size);
    ++reads;
    bytes += got > 0 ? static_cast<std::size_t>(got) : 0;
    return got;
  }
  std::size_t reads = 0;
  std::size_t bytes = 0;
};

TEST(ReadFile, ReadsRegularFilesUpToTheLimit) {
  const Folder folder;
  const std::string path = folder.file("a");
  write(path, "");
  EXPECT_EQ(readFile(systemCalls(), path, 10), "");
  write(path, "0123456789");
  EXPECT_EQ(readFile(systemCalls(), path, 10), "0123456789");
  EXPECT_EQ(readFile(systemCalls(), path, 9), std::nullopt);
  EXPECT_EQ(readFile(systemCalls(), folder.file("missing"), 10), std::nullopt);
  EXPECT_EQ(readFile(systemCalls(), folder.path(), 10), std::nullopt);
  EXPECT_EQ(readFile(systemCalls(), "", 10), std::nullopt);
  EXPECT_EQ(readFile(systemCalls(), "/dev/zero", 10), std::nullopt);
  ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
  EXPECT_EQ(readFile(systemCalls(), folder.file("pipe"), 10), std::nullopt);  // and never waits
  write(path, std::string(200'000, 'x'));
  EXPECT_EQ(readFile(systemCalls(), path, kMost), std::string(200'000, 'x'));
}

// The sparse file is a gigabyte long and takes no room.
std::string gigabyteOfRubbish(const Folder& folder) {
  std::string path = folder.file("big.PQD");
  write(path, "3,2,\"All Records\",\"31\"\r\n");
  EXPECT_EQ(truncate(path.c_str(), 1L << 30), 0);
  return path;
}

TEST(ReadFile, AGigabyteOfRubbishIsRefusedAtOnce) {
  const Folder folder;
  const std::string path = gigabyteOfRubbish(folder);
  CountingFiles files;
  Global global;
  PosixFileStore store(files);
  Manager manager(global.boxes, global.reports, global.chart, store);
  manager.DiscardDatabase();
  EXPECT_EQ(manager.OpenDatabase(path), Message::CannotOpen);
  EXPECT_EQ(files.reads, 0U);
  EXPECT_EQ(files.bytes, 0U);
}

// A file that says it is small and is not, as those of /proc do.
class GrowingFiles : public CountingFiles {
 public:
  int fstat(int file, struct stat* status) override {
    const int result = FileCalls::fstat(file, status);
    status->st_size = 0;
    return result;
  }
};

TEST(ReadFile, AGigabyteThatSaysItIsEmptyIsReadToTheLimit) {
  const Folder folder;
  const std::string path = gigabyteOfRubbish(folder);
  GrowingFiles files;
  Global global;
  PosixFileStore store(files);
  Manager manager(global.boxes, global.reports, global.chart, store);
  manager.DiscardDatabase();
  EXPECT_EQ(manager.OpenDatabase(path), Message::CannotOpen);
  EXPECT_EQ(files.bytes, kMostFileBytes + 1);
  constexpr std::size_t kLeastRead = 65'536;  // at a time, but for the last
  EXPECT_LE(files.reads, kMostFileBytes / kLeastRead + 1);
}

TEST(ReadFile, StopsBeyondTheLimitWhateverTheSizeSays) {
  const Folder folder;
  write(folder.file("a"), std::string(500'000, 'x'));
  GrowingFiles files;
  EXPECT_EQ(readFile(files, folder.file("a"), 100'000), std::nullopt);
  EXPECT_LE(files.bytes, 100'001U);
  EXPECT_EQ(readFile(files, folder.file("a"), 500'000), std::string(500'000, 'x'));
}

// --- faults -----------------------------------------------------------------------

enum class Call { Open, Read, Write, Fsync, Close, Fstat, Stat, Fchmod, Readlink, Rename };

// Lets the n-th call fail, of one kind or of any; and writes a few bytes at a time.
class FaultyFiles : public FileCalls {
 public:
  int failing = 0;  // 1: the first; 0: none
  int error = EIO;
  bool persistent = false;  // every later call of a failing kind fails too
  bool shortWrite = false;  // a failing write writes one byte and says so
  std::size_t chunk = SIZE_MAX;
  std::optional<Call> only;
  bool failed = false;
  int calls = 0;

  int open(const char* path, int flags, mode_t mode) override {
    return fails(Call::Open) ? -1 : FileCalls::open(path, flags, mode);
  }
  ssize_t read(int file, void* to, std::size_t size) override {
    return fails(Call::Read) ? -1 : FileCalls::read(file, to, std::min(size, chunk));
  }
  ssize_t write(int file, const void* from, std::size_t size) override {
    if (fails(Call::Write)) return shortWrite ? FileCalls::write(file, from, 1) : -1;
    return FileCalls::write(file, from, std::min(size, chunk));
  }
  int fsync(int file) override { return fails(Call::Fsync) ? -1 : FileCalls::fsync(file); }
  int close(int file) override {
    // The system has closed it all the same.
    const int closed = FileCalls::close(file);
    return fails(Call::Close) ? -1 : closed;
  }
  int fstat(int file, struct stat* status) override {
    return fails(Call::Fstat) ? -1 : FileCalls::fstat(file, status);
  }
  int stat(const char* path, struct stat* status) override {
    return fails(Call::Stat) ? -1 : FileCalls::stat(path, status);
  }
  int fchmod(int file, mode_t mode) override {
    return fails(Call::Fchmod) ? -1 : FileCalls::fchmod(file, mode);
  }
  ssize_t readlink(const char* path, char* to, std::size_t size) override {
    return fails(Call::Readlink) ? -1 : FileCalls::readlink(path, to, size);
  }
  int rename(const char* from, const char* to) override {
    return fails(Call::Rename) ? -1 : FileCalls::rename(from, to);
  }

 private:
  bool fails(Call call) {
    if (only && *only != call) return false;
    const bool now = ++calls == failing || (persistent && failing > 0 && calls > failing);
    if (!now) return false;
    failed = true;
    errno = error;
    return true;
  }
};

class SaveUnderFault : public testing::Test {
 protected:
  // Saves under the fault: the old file or the new one, whole; nothing else left
  // behind; success told only of the new one. False when the fault never came.
  bool save(FaultyFiles& files, const std::string& what) {
    SCOPED_TRACE(what);
    write(path, before);
    const bool told = replaceFile(files, path, after);
    const std::string now = contents(path);
    EXPECT_EQ(now, told ? after : before);
    EXPECT_EQ(names(folder.path()), std::vector<std::string>{"Mine.PQD"});
    if (!files.failed) {
      EXPECT_TRUE(told);
    }
    return files.failed;
  }

  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  const std::string before = writeDatabase(madeDatabase(2, 4));
  const std::string after = writeDatabase(madeDatabase(3, 6));
};

TEST_F(SaveUnderFault, EveryCallInTurnFailsInEveryWay) {
  int cases = 0;
  for (const int error : {EIO, ENOSPC, EDQUOT, EACCES, EINVAL}) {
    for (const bool persistent : {false, true}) {
      for (int call = 1;; ++call) {
        FaultyFiles files;
        files.failing = call;
        files.error = error;
        files.persistent = persistent;
        files.chunk = 100;
        const std::string what =
            "call " + std::to_string(call) + ", error " + std::to_string(error);
        if (!save(files, what)) break;
        ++cases;
        ASSERT_LT(call, 1000);
      }
    }
  }
  EXPECT_GT(cases, 150);
}

TEST_F(SaveUnderFault, EveryWriteInTurnIsShortOrFails) {
  int cases = 0;
  for (const int error : {EIO, ENOSPC, EDQUOT}) {
    for (int call = 1;; ++call) {
      // Fewer bytes written than asked for is no failure: the rest follows.
      FaultyFiles files;
      files.only = Call::Write;
      files.failing = call;
      files.error = error;
      files.chunk = 50;
      files.shortWrite = true;
      if (!save(files, "short write " + std::to_string(call))) break;
      ++cases;
    }
    for (int call = 1;; ++call) {
      FaultyFiles files;
      files.only = Call::Write;
      files.failing = call;
      files.error = error;
      files.chunk = 50;
      files.persistent = true;
      if (!save(files, "write " + std::to_string(call))) break;
      ++cases;
    }
  }
  EXPECT_GT(cases, 30);
}

TEST_F(SaveUnderFault, ACallThatIsInterruptedIsRepeated) {
  for (const Call call : {Call::Write, Call::Read}) {
    FaultyFiles files;
    files.only = call;
    files.failing = 1;
    files.error = EINTR;
    write(path, before);
    EXPECT_TRUE(replaceFile(files, path, after));
    EXPECT_EQ(contents(path), after);
  }
}

// Says that all is well and writes something else.
class LyingFiles : public FileCalls {
 public:
  explicit LyingFiles(int lie) : lie_(lie) {}
  ssize_t write(int file, const void* from, std::size_t size) override {
    std::string bytes(static_cast<const char*>(from), size);
    if (lie_ == 0) return static_cast<ssize_t>(size);
    if (lie_ == 1) bytes.back() = '?';
    if (lie_ == 2) bytes += '?';
    if (lie_ == 3) bytes.pop_back();
    FileCalls::write(file, bytes.data(), bytes.size());
    return static_cast<ssize_t>(size);
  }

 private:
  int lie_;
};

TEST_F(SaveUnderFault, SuccessIsToldOnlyOfWhatReadsBack) {
  for (const int lie : {0, 1, 2, 3}) {
    LyingFiles files(lie);
    write(path, before);
    EXPECT_FALSE(replaceFile(files, path, after)) << lie;
    EXPECT_EQ(contents(path), before);
    EXPECT_EQ(names(folder.path()), std::vector<std::string>{"Mine.PQD"});
  }
}

TEST_F(SaveUnderFault, ANewFileIsThereWholeOrNotAtAll) {
  for (int call = 1;; ++call) {
    FaultyFiles files;
    files.failing = call;
    files.chunk = 100;
    fs::remove(path);
    const bool told = replaceFile(files, path, after);
    if (told) {
      EXPECT_EQ(contents(path), after);
    } else {
      EXPECT_TRUE(names(folder.path()).empty()) << call;
    }
    if (!files.failed) break;
  }
}

TEST_F(SaveUnderFault, TheDatabaseInMemoryIsIntact) {
  for (int call = 1;; ++call) {
    FaultyFiles files;
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
    if (!files.failed) break;
  }
}

// --- places -----------------------------------------------------------------------

TEST(ReplaceFile, KeepsPermissions) {
  const Folder folder;
  const std::string path = folder.file("a");
  for (const mode_t mode : {mode_t{0600}, mode_t{0640}, mode_t{0644}, mode_t{0666}, mode_t{0751}}) {
    write(path, "old");
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    EXPECT_TRUE(replaceFile(systemCalls(), path, "new"));
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode);
  }
  const mode_t mask = umask(027);
  EXPECT_TRUE(replaceFile(systemCalls(), folder.file("b"), "new"));
  umask(mask);
  struct stat status {};
  ASSERT_EQ(stat(folder.file("b").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST(ReplaceFile, FollowsLinksAndLeavesThem) {
  const Folder folder;
  fs::create_directory(folder.file("real"));
  fs::create_directory(folder.file("links"));
  const auto target = folder.file("real/a.PQD");
  const auto link = folder.file("links/a.PQD");
  for (const std::string& to : {target, std::string("../real/a.PQD")}) {
    for (const bool exists : {true, false}) {
      fs::remove(link);
      fs::remove(target);
      if (exists) write(target, "old");
      fs::create_symlink(to, link);
      EXPECT_TRUE(replaceFile(systemCalls(), link, "new"));
      EXPECT_TRUE(fs::is_symlink(link));
      EXPECT_EQ(fs::read_symlink(link), to);
      EXPECT_EQ(contents(target), "new");
      EXPECT_EQ(names(folder.file("links")), std::vector<std::string>{"a.PQD"});
      EXPECT_EQ(names(folder.file("real")), std::vector<std::string>{"a.PQD"});
    }
  }
  // A link to a link, and a linked folder on the way.
  fs::create_symlink("a.PQD", folder.file("links/b.PQD"));
  fs::create_directory_symlink(folder.file("links"), folder.file("way"));
  EXPECT_TRUE(replaceFile(systemCalls(), folder.file("way/b.PQD"), "newer"));
  EXPECT_EQ(contents(target), "newer");
  EXPECT_TRUE(fs::is_symlink(folder.file("links/b.PQD")));
  // Nowhere, in a circle, to a folder.
  fs::create_symlink(folder.file("missing/a"), folder.file("nowhere"));
  EXPECT_FALSE(replaceFile(systemCalls(), folder.file("nowhere"), "new"));
  fs::create_symlink("circle2", folder.file("circle1"));
  fs::create_symlink("circle1", folder.file("circle2"));
  EXPECT_FALSE(replaceFile(systemCalls(), folder.file("circle1"), "new"));
  fs::create_symlink("real", folder.file("folder"));
  EXPECT_FALSE(replaceFile(systemCalls(), folder.file("folder"), "new"));
}

TEST(ReplaceFile, OfAHardLinkThisNameGetsTheNewFile) {
  const Folder folder;
  write(folder.file("a"), "old");
  fs::create_hard_link(folder.file("a"), folder.file("b"));
  EXPECT_TRUE(replaceFile(systemCalls(), folder.file("a"), "new"));
  EXPECT_EQ(contents(folder.file("a")), "new");
  EXPECT_EQ(contents(folder.file("b")), "old");
}

TEST(ReplaceFile, WithoutRootsRights) {
  struct Place {
    const char* what;
    std::function<std::string(const Folder&)> prepare;  // the path to save to
    bool saved;
  };
  const auto folderOf = [](const Folder& folder, const char* name, mode_t mode) {
    std::string path = folder.file(name);
    fs::create_directory(path);
    write(path + "/a.PQD", "old");
    chmod((path + "/a.PQD").c_str(), 0666);
    chmod(path.c_str(), mode);
    return path;
  };
  const auto fileOf = [](const Folder& folder, const std::string& name, mode_t mode) {
    write(folder.file(name), "old");
    chmod(folder.file(name).c_str(), mode);
    return folder.file(name);
  };
  const Place places[] = {
      {"a file", [&](const Folder& f) { return fileOf(f, "a.PQD", 0666); }, true},
      {"a new file", [&](const Folder& f) { return f.file("new.PQD"); }, true},
      {"a read-only file", [&](const Folder& f) { return fileOf(f, "a.PQD", 0444); }, false},
      {"an unreadable file", [&](const Folder& f) { return fileOf(f, "a.PQD", 0000); }, false},
      {"a file in a read-only folder",
       [&](const Folder& f) { return folderOf(f, "d", 0555) + "/a.PQD"; }, false},
      {"a new file in a read-only folder",
       [&](const Folder& f) { return folderOf(f, "d", 0555) + "/b.PQD"; }, false},
      {"a file in a folder that may not be entered",
       [&](const Folder& f) { return folderOf(f, "d", 0666) + "/a.PQD"; }, false},
      {"a file in a folder that may not be listed",
       [&](const Folder& f) { return folderOf(f, "d", 0333) + "/a.PQD"; }, true},
      {"a folder that is not there", [](const Folder& f) { return f.file("no/a.PQD"); }, false},
      {"a folder", [](const Folder& f) { return fs::create_directory(f.file("d")), f.file("d"); },
       false},
      {"a folder with a slash",
       [](const Folder& f) { return fs::create_directory(f.file("d")), f.file("d/"); }, false},
      {"a file as a folder", [&](const Folder& f) { return fileOf(f, "a", 0666) + "/b.PQD"; },
       false},
      {"a name of 255 bytes",
       [&](const Folder& f) { return fileOf(f, std::string(251, 'n') + ".PQD", 0666); }, true},
      {"a new name of 255 bytes", [](const Folder& f) { return f.file(std::string(255, 'n')); },
       true},
      {"a name of 256 bytes", [](const Folder& f) { return f.file(std::string(256, 'n')); }, false},
      {"a path beyond the longest",
       [](const Folder& f) { return f.path() + std::string(PATH_MAX, '/') + "a"; }, false},
      {"a name beyond ASCII", [&](const Folder& f) { return fileOf(f, "Zürich 株式 😀.PQD", 0666); },
       true},
      {"a name that is not UTF-8", [&](const Folder& f) { return fileOf(f, "caf\xE9.PQD", 0666); },
       true},
      {"a name with blanks and quotes",
       [&](const Folder& f) { return fileOf(f, " it's \"mine\" .PQD", 0666); }, true},
      {"nothing", [](const Folder&) { return std::string(); }, false},
      {"a device", [](const Folder&) { return std::string("/dev/null"); }, false},
      {"a pipe",
       [](const Folder& f) {
         mkfifo(f.file("p").c_str(), 0666);
         return f.file("p");
       },
       false},
      {"a link to a read-only file",
       [&](const Folder& f) {
         fs::create_symlink(fileOf(f, "a", 0444), f.file("l"));
         return f.file("l");
       },
       false},
      {"a dangling link",
       [](const Folder& f) {
         fs::create_symlink("later", f.file("l"));
         return f.file("l");
       },
       true},
      {"a hard link",
       [&](const Folder& f) {
         fs::create_hard_link(fileOf(f, "a", 0666), f.file("h"));
         return f.file("h");
       },
       true},
  };
  for (const auto& place : places) {
    SCOPED_TRACE(place.what);
    const Folder folder;
    const std::string path = place.prepare(folder);
    std::error_code ignored;
    const bool existed = fs::is_regular_file(path, ignored);
    EXPECT_EQ(replaceAsUser(path, "new"), place.saved);
    // Open again to this test, which may be an ordinary user's too.
    fs::permissions(folder.file("d"), fs::perms::all, ignored);
    if (existed) fs::permissions(path, fs::perms::all, ignored);
    if (place.saved) {
      EXPECT_EQ(contents(path), "new");
    } else if (existed) {
      EXPECT_EQ(contents(path), "old");
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder.path(), ignored))
      EXPECT_FALSE(entry.path().filename().string().starts_with(".mirelund-")) << entry.path();
  }
}

TEST(ReplaceFile, InTheCurrentFolder) {
  const Folder folder;
  const fs::path here = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_TRUE(replaceFile(systemCalls(), "a.PQD", "new"));
  fs::current_path(here);
  EXPECT_EQ(contents(folder.file("a.PQD")), "new");
}

// --- full disks -------------------------------------------------------------------

// A file system of a given size, where mounting is allowed.
class SmallDisk {
 public:
  explicit SmallDisk(std::size_t bytes) {
    const std::string options = "size=" + std::to_string(bytes);
    mounted_ = mount("tmpfs", folder_.path().c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  ~SmallDisk() {
    if (mounted_) umount2(folder_.path().c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool mounted() const { return mounted_; }
  std::string file(const std::string& name) const { return folder_.file(name); }
  const std::string& path() const { return folder_.path(); }

  void leaveFree(std::size_t bytes) const {
    struct statvfs status {};
    statvfs(folder_.path().c_str(), &status);
    const std::size_t free = status.f_bavail * status.f_bsize;
    if (free > bytes) write(file("filler"), std::string(free - bytes, 'x'));
  }

 private:
  Folder folder_;
  bool mounted_ = false;
};

constexpr int kRecordCounts[] = {1, 20, 60, 110, 170, 230, 300, 400, 500, 600};

TEST(ReplaceFile, OnAFullDisk) {
  constexpr std::size_t kPage = 4096;
  if (!SmallDisk(kPage).mounted()) {
    std::puts("mounting is not permitted here; the same by a limit on the size of files");
  }
  int saved = 0;
  int refused = 0;
  for (const int count : kRecordCounts) {
    const std::string before = writeDatabase(madeDatabase(1, (count + 1) / 2));
    const std::string after = writeDatabase(madeDatabase(2, count));
    const std::size_t pages = (after.size() + kPage - 1) / kPage;
    const std::size_t frees[] = {0,
                                 kPage,
                                 2 * kPage,
                                 (pages / 2) * kPage,
                                 (pages - 1) * kPage,
                                 pages * kPage,
                                 (pages + 1) * kPage,
                                 (pages + 16) * kPage};
    for (const std::size_t free : frees) {
      SCOPED_TRACE(std::to_string(count) + " records, " + std::to_string(free) + " bytes free");
      const SmallDisk disk(1 << 20);
      const std::string path = disk.file("Mine.PQD");
      write(path, before);
      bool told = false;
      bool fits = false;
      if (disk.mounted()) {
        disk.leaveFree(free);
        told = replaceFile(systemCalls(), path, after);
        fits = free >= pages * kPage;
      } else {
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
          signal(SIGXFSZ, SIG_IGN);
          const rlimit limit{free, free};
          setrlimit(RLIMIT_FSIZE, &limit);
          _exit(replaceFile(systemCalls(), path, after) ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        told = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        fits = free >= after.size();
      }
      EXPECT_EQ(told, fits);
      EXPECT_EQ(contents(path), told ? after : before);
      for (const auto& name : names(disk.path())) {
        EXPECT_TRUE(name == "Mine.PQD" || name == "filler") << name;
      }
      ++(told ? saved : refused);
    }
  }
  EXPECT_GE(saved + refused, 80);
  EXPECT_GT(saved, 20);
  EXPECT_GT(refused, 20);
}

// --- kills ------------------------------------------------------------------------

// Ends its process as a power cut would, at the n-th call: before it is made or
// when it has been.
class KillingFiles : public FileCalls {
  static constexpr std::size_t kChunk = 4096;

  template <typename MakeCall>
  auto around(MakeCall call) {
    const bool now = --left_ == 0;
    if (now && moment_ == Moment::Before) die();
    const auto result = call();
    if (now) die();
    return result;
  }
  [[noreturn]] static void die() {
    ::kill(getpid(), SIGKILL);
    for (;;) pause();
  }

 public:
  enum class Moment { Before, After };
  KillingFiles(int call, Moment moment) : left_(call), moment_(moment) {}

  int open(const char* path, int flags, mode_t mode) override {
    return around([&] { return FileCalls::open(path, flags, mode); });
  }
  ssize_t read(int file, void* to, std::size_t size) override {
    return around([&] { return FileCalls::read(file, to, std::min(size, kChunk)); });
  }
  ssize_t write(int file, const void* from, std::size_t size) override {
    return around([&] { return FileCalls::write(file, from, std::min(size, kChunk)); });
  }
  int fsync(int file) override {
    return around([&] { return FileCalls::fsync(file); });
  }
  int close(int file) override {
    return around([&] { return FileCalls::close(file); });
  }
  int fstat(int file, struct stat* status) override {
    return around([&] { return FileCalls::fstat(file, status); });
  }
  int stat(const char* path, struct stat* status) override {
    return around([&] { return FileCalls::stat(path, status); });
  }
  int fchown(int file, uid_t owner, gid_t group) override {
    return around([&] { return FileCalls::fchown(file, owner, group); });
  }
  int fchmod(int file, mode_t mode) override {
    return around([&] { return FileCalls::fchmod(file, mode); });
  }
  ssize_t readlink(const char* path, char* to, std::size_t size) override {
    return around([&] { return FileCalls::readlink(path, to, size); });
  }
  int rename(const char* from, const char* to) override {
    return around([&] { return FileCalls::rename(from, to); });
  }
  int unlink(const char* path) override {
    return around([&] { return FileCalls::unlink(path); });
  }

 private:
  int left_;
  Moment moment_;
};

// The status with which a process ends that does this and then exits with 0 for
// true, 1 for false.
template <typename Work>
int statusOfProcess(Work work) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) _exit(work() ? 0 : 1);
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

// What an interrupted save leaves beside the file, removed.
int takeTemporaries(const Folder& folder) {
  int taken = 0;
  for (const auto& name : names(folder.path())) {
    if (name == "Mine.PQD") continue;
    EXPECT_TRUE(name.starts_with(".mirelund-")) << name;
    fs::remove(folder.file(name));
    ++taken;
  }
  return taken;
}

TEST(ReplaceFile, KilledAtAnyMomentLeavesOneFileWhole) {
  const std::string before = writeDatabase(madeDatabase(2, 300));
  const std::string after = writeDatabase(madeDatabase(3, 600));
  for (const bool exists : {true, false}) {
    for (const auto moment : {KillingFiles::Moment::Before, KillingFiles::Moment::After}) {
      const Folder folder;
      const std::string path = folder.file("Mine.PQD");
      int kept = 0;
      int replaced = 0;
      int interrupted = 0;
      for (int call = 1;; ++call) {
        SCOPED_TRACE(std::string(exists ? "replacing" : "new") + ", call " + std::to_string(call) +
                     (moment == KillingFiles::Moment::Before ? ", before" : ", after"));
        fs::remove(path);
        if (exists) write(path, before);
        const int status = statusOfProcess([&] {
          KillingFiles files(call, moment);
          return replaceFile(files, path, after);
        });
        if (WIFEXITED(status)) {
          EXPECT_EQ(WEXITSTATUS(status), 0);
          EXPECT_EQ(contents(path), after);
          EXPECT_EQ(takeTemporaries(folder), 0);
          break;
        }
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        ASSERT_LT(call, 1000);
        // The old file until some call, the new one from there on.
        if (contents(path) == after) {
          ++replaced;
        } else {
          EXPECT_EQ(replaced, 0);
          EXPECT_EQ(fs::exists(path), exists);
          EXPECT_EQ(contents(path), exists ? before : "");
          ++kept;
        }
        // What was left behind is in nobody's way.
        EXPECT_TRUE(replaceFile(systemCalls(), path, after));
        EXPECT_EQ(contents(path), after);
        interrupted += takeTemporaries(folder) > 0 ? 1 : 0;
      }
      EXPECT_GT(kept, 10);
      EXPECT_GT(replaced, 0);
      EXPECT_GT(interrupted, 10);
    }
  }
}

// Beyond the calls: in the middle of one, wherever that is.
TEST(ReplaceFile, KilledAtRandomMomentsLeavesOneFileWhole) {
  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  const std::string versions[] = {writeDatabase(madeDatabase(2, 300)),
                                  writeDatabase(madeDatabase(3, 600))};
  write(path, versions[0]);
  std::mt19937 random(100);  // NOLINT(cert-msc51-cpp): any moments will do
  for (int kill = 0; kill < 100; ++kill) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      for (int i = kill;; ++i)
        if (!replaceFile(systemCalls(), path, versions[i % 2])) _exit(1);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(100 + random() % 4000));
    ::kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    const std::string now = contents(path);
    ASSERT_TRUE(now == versions[0] || now == versions[1]) << "kill " << kill;
    takeTemporaries(folder);
  }
}

}  // namespace
}  // namespace mirelund
