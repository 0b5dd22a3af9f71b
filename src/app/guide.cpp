// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/guide.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "base/ui_text.h"
#include "base/version.h"
#include "dialogs/prompts.h"

namespace mirelund {

namespace {

// From the folder of the program: as the build has it, and as installed.
constexpr const char* kGuides[] = {"../docs/guide/index.html", MIRELUND_INSTALLED_GUIDE};

}  // namespace

QString guideOf(const QString& folder) {
  for (const char* guide : kGuides) {
    const QFileInfo page(QDir(folder), guide);
    if (page.isFile()) return page.canonicalFilePath();
  }
  return {};
}

void showGuide(Prompts& prompts, QWidget* over) {
  const QString page = guideOf(QCoreApplication::applicationDirPath());
  if (page.isEmpty())
    prompts.warn(over, "The guide is not installed.");
  else if (!prompts.browse(page))
    prompts.warn(over,
                 QString("There is no program to show the guide with. It begins at\n%1").arg(page));
}

void showAbout(Prompts& prompts, QWidget* over) {
  prompts.inform(over, "About Mirelund",
                 QString("Mirelund %1\n\n"
                         "Calculators and an investment manager for personal investors.\n\n"
                         "Licence: GNU General Public License, version 3 or any later version "
                         "(GPL-3.0-or-later). It comes with no warranty.")
                     .arg(toQString(kVersion)));
}

}  // namespace mirelund
