// SPDX-License-Identifier: GPL-3.0-or-later
// Taking tables along: into a file that the person names.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/file_store.h"
#include "export/sheet.h"

class QWidget;

namespace mirelund {

class Prompts;

/// Asks for a file, at first of the name `suggested`, and writes the sheets to it: as
/// comma-separated values where its name ends in .csv, as a workbook where it ends in
/// .xlsx. Of several sheets the workbook has them all; beside NAME.csv with the first
/// stands NAME-SHEET.csv with each further one, and where such a file is there already it
/// is asked about before anything is written. Each file is replaced whole or not at all
/// (base/file_store.h); one that cannot be is told with the reason, and those after it
/// are not written. True when all were. Without sheets that is told, and nothing asked.
bool exportSheets(std::span<const Sheet> sheets, const QString& suggested, Prompts& prompts,
                  QWidget* over, FileStore& files = systemFiles());

/// The same for one file of other bytes. `what` names it for the person ("table",
/// "chart"); nothing from `bytes` means that there is no room for them. The pointer is
/// busy meanwhile.
bool writeExport(const QString& path, const QString& what,
                 const std::function<std::optional<std::string>()>& bytes, Prompts& prompts,
                 QWidget* over, FileStore& files = systemFiles());

}  // namespace mirelund
