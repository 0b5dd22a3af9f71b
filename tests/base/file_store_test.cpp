// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/posix_file_store.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <functional>

#include "base/watched_calls.h"
#include "files.h"

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

// --- reading ----------------------------------------------------------------------

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

// A file that says it is empty and is not, as those of /proc do; counts what is read.
class GrowingFiles : public FileCalls {
 public:
  int fstat(int file, struct stat* status) override {
    const int result = FileCalls::fstat(file, status);
    status->st_size = 0;
    return result;
  }
  ssize_t read(int file, void* to, std::size_t size) override {
    const ssize_t got = FileCalls::read(file, to, size);
    bytes += got > 0 ? static_cast<std::size_t>(got) : 0;
    return got;
  }
  std::size_t bytes = 0;
};

TEST(ReadFile, StopsBeyondTheLimitWhateverTheSizeSays) {
  const Folder folder;
  write(folder.file("a"), std::string(500'000, 'x'));
  GrowingFiles files;
  EXPECT_EQ(readFile(files, folder.file("a"), 100'000), std::nullopt);
  EXPECT_LE(files.bytes, 100'001U);
  EXPECT_EQ(readFile(files, folder.file("a"), 500'000), std::string(500'000, 'x'));
}

// --- places -----------------------------------------------------------------------

class ReplaceFile : public testing::TestWithParam<Way> {
 protected:
  bool replace(const std::string& path, const std::string& bytes) {
    return PosixFileStore(calls).replace(path, bytes, std::nullopt) == FileFailure::None;
  }

  NotingCalls calls{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Ways, ReplaceFile, testing::Values(Way::Nameless, Way::Named),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(ReplaceFile, KeepsPermissions) {
  const Folder folder;
  const std::string path = folder.file("a");
  for (const mode_t mode : {mode_t{0600}, mode_t{0640}, mode_t{0644}, mode_t{0666}, mode_t{0751}}) {
    write(path, "old");
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    EXPECT_TRUE(replace(path, "new"));
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode);
  }
  const mode_t mask = umask(027);
  EXPECT_TRUE(replace(folder.file("b"), "new"));
  umask(mask);
  struct stat status {};
  ASSERT_EQ(stat(folder.file("b").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_P(ReplaceFile, FollowsLinksAndLeavesThem) {
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
      EXPECT_TRUE(replace(link, "new"));
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
  EXPECT_TRUE(replace(folder.file("way/b.PQD"), "newer"));
  EXPECT_EQ(contents(target), "newer");
  EXPECT_TRUE(fs::is_symlink(folder.file("links/b.PQD")));
  // Nowhere, in a circle, to a folder.
  fs::create_symlink(folder.file("missing/a"), folder.file("nowhere"));
  EXPECT_FALSE(replace(folder.file("nowhere"), "new"));
  fs::create_symlink("circle2", folder.file("circle1"));
  fs::create_symlink("circle1", folder.file("circle2"));
  EXPECT_FALSE(replace(folder.file("circle1"), "new"));
  fs::create_symlink("real", folder.file("folder"));
  EXPECT_FALSE(replace(folder.file("folder"), "new"));
}

TEST_P(ReplaceFile, OfAHardLinkThisNameGetsTheNewFile) {
  const Folder folder;
  write(folder.file("a"), "old");
  fs::create_hard_link(folder.file("a"), folder.file("b"));
  EXPECT_TRUE(replace(folder.file("a"), "new"));
  EXPECT_EQ(contents(folder.file("a")), "new");
  EXPECT_EQ(contents(folder.file("b")), "old");
}

TEST_P(ReplaceFile, WithoutRootsRights) {
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
    EXPECT_EQ(asOrdinaryUser([&] { return replace(path, "new"); }), place.saved);
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

TEST_P(ReplaceFile, InTheCurrentFolder) {
  const Folder folder;
  const fs::path here = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_TRUE(replace("a.PQD", "new"));
  fs::current_path(here);
  EXPECT_EQ(contents(folder.file("a.PQD")), "new");
}

// --- where a file goes ------------------------------------------------------------

TEST(ResolvedPath, IsTheOneThatAReplaceWouldPutTheFileAt) {
  PosixFileStore store(systemCalls());
  const Folder folder;
  const std::string top = fs::canonical(folder.path());
  fs::create_directories(folder.file("real/inner"));
  const std::string file = top + "/real/a.PQD";
  fs::create_directory_symlink("real", folder.file("way"));
  fs::create_symlink("a.PQD", folder.file("real/link"));
  fs::create_symlink(file, folder.file("far"));
  fs::create_symlink("way/link", folder.file("farther"));
  for (const bool exists : {false, true}) {
    if (exists) write(file, "old");
    for (const char* path :
         {"real/a.PQD", "real//a.PQD", "real/./a.PQD", "real/inner/../a.PQD", "way/a.PQD",
          "way/inner/../a.PQD", "real/link", "way/link", "far", "farther"}) {
      EXPECT_EQ(store.resolved(folder.file(path)), file) << path;
    }
  }
  EXPECT_EQ(store.resolved(folder.file("way/other.PQD")), top + "/real/other.PQD");
  ASSERT_EQ(store.replace(folder.file("farther"), "new", "old"), FileFailure::None);
  EXPECT_EQ(contents(file), "new");
  EXPECT_EQ(store.resolved("/a.PQD"), "/a.PQD");
  const fs::path here = fs::current_path();
  fs::current_path(folder.file("way"));
  EXPECT_EQ(store.resolved("a.PQD"), file);
  EXPECT_EQ(store.resolved("./link"), file);
  EXPECT_EQ(store.resolved("../way/b.PQD"), top + "/real/b.PQD");
  fs::current_path(here);
}

TEST(ResolvedPath, IsThePathWhereItCannotBeTold) {
  const Folder folder;
  fs::create_symlink("circle2", folder.file("circle1"));
  fs::create_symlink("circle1", folder.file("circle2"));
  write(folder.file("a"), "old");
  PosixFileStore store(systemCalls());
  for (const std::string& path :
       {std::string(), std::string("no/such/a.PQD"), folder.path() + "/", folder.file("no/a.PQD"),
        folder.file("a/b.PQD"), folder.file("circle1"), folder.file(std::string(300, 'n'))}) {
    EXPECT_EQ(store.resolved(path), path);
  }
  fs::create_symlink("a", folder.file("link"));
  for (const char* failing : {"readlink", "realpath"}) {
    NotingCalls calls;
    calls.failing = [&](const std::string& call) { return call.starts_with(failing) ? EACCES : 0; };
    EXPECT_EQ(PosixFileStore(calls).resolved(folder.file("link")), folder.file("link")) << failing;
  }
}

}  // namespace
}  // namespace mirelund
