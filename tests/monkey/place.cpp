// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/place.h"

#include <grp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDate>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include "base/ui_text.h"
#include "manager/database/data_file.h"
#include "monkey/diary.h"

namespace mirelund::testing {

namespace {

constexpr uid_t kNobody = 65534;

// As many funds and records as there can be, less `fewer` records.
QByteArray largeDatabase(int fewer) {
  const int records = kMostRecords - fewer;
  QByteArray bytes = QByteArray::number(records) + "," + QByteArray::number(kMostFunds) +
                     ",\"All Records\",\"31\"\r\n";
  for (int fund = 1; fund <= kMostFunds; ++fund)
    bytes += QString("\"Fund %1\",\"%2\"\r\n").arg(fund, 2, 10, QChar('0')).arg(fund).toLatin1();
  for (int i = 0; i < records; ++i)
    bytes += QString("%1,10,%2,0,0,%3,\"B\",#%4#\r\n")
                 .arg(i % kMostFunds + 1)
                 .arg(i + 1)
                 .arg(10 * (i + 1))
                 .arg(QDate(1990, 1, 1).addDays(7 * i).toString(Qt::ISODate))
                 .toLatin1();
  return bytes;
}

void giveUpRights(const QString& root) {
  if (geteuid() != 0) return;
  QDirIterator all(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDirIterator::Subdirectories);
  const auto give = [](const QString& path) {
    return lchown(QFile::encodeName(path).constData(), kNobody, kNobody) == 0;
  };
  bool good = give(root);
  while (all.hasNext()) good = give(all.next()) && good;
  good = good && setgroups(0, nullptr) == 0 && setresgid(kNobody, kNobody, kNobody) == 0 &&
         setresuid(kNobody, kNobody, kNobody) == 0;
  // The leak checker looks into the process.
  good = good && prctl(PR_SET_DUMPABLE, 1) == 0;
  if (!good) diary::fail("cannot give up the superuser's rights");
}

}  // namespace

Place::Place() : root_(QDir::tempPath() + "/monkey-XXXXXX") {
  for (const char* folder : {"home", "files", "tmp", "run"}) QDir(root_.path()).mkdir(folder);
  chmod(QFile::encodeName(root_.filePath("run")).constData(), 0700);
  files_ = root_.filePath("files");
  fill();
  const auto set = [](const char* name, const QString& value) {
    qputenv(name, QFile::encodeName(value));
  };
  set("HOME", root_.filePath("home"));
  set("TMPDIR", root_.filePath("tmp"));
  set("XDG_RUNTIME_DIR", root_.filePath("run"));
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME",
                           "DBUS_SESSION_BUS_ADDRESS"})
    qunsetenv(name);
  giveUpRights(root_.path());
  if (!QDir::setCurrent(files_)) diary::fail("cannot enter the folder");
  if (!fault().isEmpty()) diary::fail("the folder is not as it was made");
  saved_ = 0;
}

Place::~Place() {
  QDir::setCurrent("/");
  chmod(QFile::encodeName(files_ + "/locked").constData(), 0700);
}

void Place::write(const QString& name, const QByteArray& bytes) {
  QFile file(files_ + "/" + name);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    diary::fail("cannot write " + name.toStdString());
}

void Place::fill() {
  const QByteArray full = largeDatabase(0);
  const QByteArray odd =
      "2,2,\"All Records\",\"31\"\r\n\"<b>Amp & er</b>\",\"1\"\r\n\"Gr\xC3\xB6\xC3\x9F"
      "e\",\"1\"\r\n1,.0001,922337203685477.5807,0,0,0,\"B\",#1980-01-01#\r\n"
      "1,0,0,0,.01,-.01,\"C\",#2078-12-31#\r\n";
  QFile sample(MIRELUND_DATA "/DtaSampl.PQD");
  if (!sample.open(QIODevice::ReadOnly)) diary::fail("no sample database");
  write("good.PQD", sample.readAll());
  write("full.PQD", full);
  write("nearly.PQD", largeDatabase(1));
  write("odd.PQD", odd);
  write("bad.PQD", "This is no database.\n");
  write("half.PQD", full.left(full.size() / 2));
  write("empty.PQD", {});
  write("readonly.PQD", full);
  write("quo'te \"x\".PQD", odd);
  write(QString::fromUtf8("Gr\xC3\xB6\xC3\x9F"
                          "e \xE6\x97\xA5\xE6\x9C\xAC.PQD"),
        odd);
  QDir here(files_);
  for (const char* folder : {"folder", "folder.PQD", "locked"}) here.mkdir(folder);
  QFile::link("good.PQD", files_ + "/link.PQD");
  QFile::link("circle.PQD", files_ + "/circle.PQD");
  QFile::link("/dev/full", files_ + "/device.PQD");
  const auto bytes = [this](const char* name) { return QFile::encodeName(files_ + "/" + name); };
  if (mkfifo(bytes("pipe.PQD").constData(), 0600) != 0 ||
      mkfifo(bytes("pipe.pdf").constData(), 0600) != 0)
    diary::fail("cannot make a pipe");
  chmod(bytes("readonly.PQD").constData(), 0444);
  chmod(bytes("locked").constData(), 0555);

  const QString name255 = QString(251, 'n') + ".PQD";
  const QString name300 = QString(300, 'n') + ".PQD";
  paths_ = QStringList{"good.PQD",
                       "good.PQD",
                       "full.PQD",
                       "full.PQD",
                       "nearly.PQD",
                       "odd.PQD",
                       "bad.PQD",
                       "half.PQD",
                       "empty.PQD",
                       "readonly.PQD",
                       "link.PQD",
                       "link.PQD",
                       "circle.PQD",
                       "device.PQD",
                       "pipe.PQD",
                       "pipe.pdf",
                       "folder",
                       "folder.PQD",
                       "",
                       " ",
                       "none.PQD",
                       "new.PQD",
                       "new",
                       "new.txt",
                       "new.pdf",
                       "new.csv",
                       "new.xlsx",
                       "new.png",
                       "new.svg",
                       "out",
                       "\"x",
                       "a b.PQD",
                       "quo'te \"x\".PQD",
                       "\"good.PQD\" \"full.PQD\"",
                       "missing/new.PQD",
                       "locked/new.PQD",
                       "folder/new.PQD",
                       name255,
                       name300,
                       "\xC3\xA9.PQD",
                       QString::fromUtf8("Gr\xC3\xB6\xC3\x9F"
                                         "e \xE6\x97\xA5\xE6\x9C\xAC.PQD")};
  for (QString& path : paths_)
    if (path.contains('/')) path.prepend(files_ + "/");
  paths_ << files_ << files_ + "/good.PQD"
         << "/dev/full";
}

void Place::name(const QString& path) {
  const QString whole = QDir::cleanPath(QDir(files_).absoluteFilePath(path));
  diary::note("named: " + path.toStdString());
  if (!whole.startsWith(root_.path() + "/") && whole != "/dev/full")
    diary::fail("a file dialog led out of the place: " + whole.toStdString());
  QStringList names;
  for (const char* ending : {"", ".PQD", ".pdf", ".csv", ".xlsx", ".png", ".svg"})
    names << whole + ending;
  // What stands beside a table of several parts.
  for (const QString& table : {whole, whole + ".csv"})
    if (table.endsWith(".csv")) names << table.chopped(4) + "-totals.csv";
  for (const QString& name : names) {
    named_ << name;
    const QString resolved = QFileInfo(name).canonicalFilePath();
    if (!resolved.isEmpty()) named_ << resolved;
  }
}

bool Place::mayStand(const QString& path) const {
  return named_.contains(path) || path.startsWith(root_.filePath("home/.cache"));
}

QString Place::contentFault(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return "cannot be read: " + path;
  const QByteArray bytes = file.readAll();
  if (bytes.startsWith("%PDF")) {
    constexpr int kTail = 64;
    return bytes.last(std::min<qsizetype>(kTail, bytes.size())).contains("%%EOF")
               ? QString()
               : "half a document: " + path;
  }
  // Tables and charts are whole where their ends are.
  struct Taken {
    const char* begins;
    const char* ends;
  };
  for (const Taken& taken :
       {Taken{"PK\x03\x04", "PK\x05\x06"}, Taken{"\x89PNG", "IEND"}, Taken{"<?xml", "</svg>"}}) {
    constexpr int kTail = 64;
    if (bytes.startsWith(taken.begins))
      return bytes.last(std::min<qsizetype>(kTail, bytes.size())).contains(taken.ends)
                 ? QString()
                 : "half a file: " + path;
  }
  if (path.endsWith(".csv", Qt::CaseInsensitive))
    return bytes.endsWith("\r\n") ? QString() : "half a table: " + path;
  const std::string text = bytes.toStdString();
  const auto database = parseDatabase(text);
  if (!database) return "not a whole database: " + path;
  if (database->FundCount > kMostFunds || database->RecordCount > kMostRecords)
    return "too many funds or records: " + path;
  std::int16_t number = 0;
  Date before;
  for (const Record& record : database->records()) {
    if (record.number != ++number) return "records are not numbered: " + path;
    if (record.date < before) return "records are not sorted: " + path;
    before = record.date;
  }
  return writeDatabase(*database) == text ? QString() : "not written as databases are: " + path;
}

QString Place::fault() {
  const bool first = seen_.isEmpty();
  QHash<QString, Seen> now;
  QDirIterator all(root_.path(),
                   QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDirIterator::Subdirectories);
  while (all.hasNext()) {
    const QString path = all.next();
    struct stat status {};
    if (lstat(QFile::encodeName(path).constData(), &status) != 0) continue;
    const bool regular = S_ISREG(status.st_mode);
    const Seen state =
        regular
            ? Seen{status.st_size, status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec,
                   status.st_ino}
            : Seen{0, 0, 0};
    const auto before = seen_.constFind(path);
    now.insert(path, state);
    if (first || (before != seen_.constEnd() && *before == state)) continue;
    if (!mayStand(path)) return "nobody named this file: " + path;
    if (!regular || !named_.contains(path)) continue;
    ++saved_;
    if (const QString broken = contentFault(path); !broken.isEmpty()) return broken;
  }
  for (auto it = seen_.cbegin(); it != seen_.cend(); ++it)
    if (!now.contains(it.key()) && !mayStand(it.key())) return "is gone: " + it.key();
  seen_ = std::move(now);
  return {};
}

}  // namespace mirelund::testing
