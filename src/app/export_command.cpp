// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/export_command.h"

#include <QFileInfo>
#include <vector>

#include "base/attempt.h"
#include "base/file_name.h"
#include "base/ui_text.h"
#include "dialogs/busy_pointer.h"
#include "dialogs/prompts.h"
#include "export/csv.h"
#include "export/xlsx.h"

namespace mirelund {

namespace {

constexpr char kTitle[] = "Export";
constexpr char kFilters[] = "Comma-separated values (*.csv);;Spreadsheet (*.xlsx)";

// A file to be, and what is written to it.
struct Part {
  QString path;
  std::function<std::optional<std::string>()> bytes;
};

std::vector<Part> partsOf(std::span<const Sheet> sheets, const QString& path) {
  const std::string bytes = toPathBytes(path);
  const std::string ending = endingOf(bytes);
  if (ending == ".xlsx") return {{path, [sheets] { return xlsxBytes(sheets); }}};
  const QString beginning = fromPathBytes(bytes.substr(0, bytes.size() - ending.size()));
  std::vector<Part> parts;
  for (const Sheet& sheet : sheets) {
    const QString name = beginning + '-' + toQString(sheet.name) + ".csv";
    parts.push_back({parts.empty() ? path : name, [&sheet] { return csvText(sheet); }});
  }
  return parts;
}

// The file dialog has asked about the first.
bool mayReplaceOthers(const std::vector<Part>& parts, Prompts& prompts, QWidget* over) {
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const QFileInfo file(parts[i].path);
    if (!file.exists() && !file.isSymLink()) continue;
    const QString text = QString("%1 already exists. It is written together with %2.")
                             .arg(file.fileName(), QFileInfo(parts[0].path).fileName());
    if (!prompts.confirm(over, text, "Replace it")) return false;
  }
  return true;
}

}  // namespace

bool writeExport(const QString& path, const QString& what,
                 const std::function<std::optional<std::string>()>& bytes, Prompts& prompts,
                 QWidget* over, FileStore& files) {
  const auto write = [&] {
    const BusyPointer busy;
    return attempt(FileFailure::Other, [&] {
      const std::optional<std::string> whole = bytes();
      return whole ? files.replace(toPathBytes(path), *whole) : FileFailure::NoSpace;
    });
  };
  const FileFailure failure = write();
  if (failure == FileFailure::None) return true;
  const std::string_view reason = failureText(failure);
  prompts.warn(over, QString("The %1 could not be written to \"%2\". %3")
                         .arg(what, path,
                              reason.empty() ? QString("Check the name and the folder.")
                                             : toQString(reason)));
  return false;
}

bool exportSheets(std::span<const Sheet> sheets, const QString& suggested, Prompts& prompts,
                  QWidget* over, FileStore& files) {
  if (prompts.cancelsAll()) return false;
  if (sheets.empty()) {
    prompts.inform(over, kTitle, "No table to export. Show a report first.");
    return false;
  }
  const QString path = prompts.askSavePath(over, kTitle, suggested + ".csv", kFilters);
  if (path.isEmpty()) return false;
  if (endingOf(toPathBytes(path)) == ".xlsx" && !canMakeXlsx()) {
    prompts.warn(over, "What writes workbooks is not installed. Choose a name that ends in .csv.");
    return false;
  }
  const std::vector<Part> parts = partsOf(sheets, path);
  if (!mayReplaceOthers(parts, prompts, over)) return false;
  for (const Part& part : parts)
    if (!writeExport(part.path, "table", part.bytes, prompts, over, files)) return false;
  return true;
}

}  // namespace mirelund
