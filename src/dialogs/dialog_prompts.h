// SPDX-License-Identifier: GPL-3.0-or-later
// Prompts as the person meets them: the program's dialogs and the platform's.
#pragma once

#include "app/global.h"
#include "dialogs/prompts.h"

namespace mirelund {

class DialogPrompts : public Prompts {
 public:
  explicit DialogPrompts(Global& global) : global_(global) {}

  void tell(QWidget* over, int message) override;
  void warn(QWidget* over, const QString& text) override;
  bool ask(QWidget* over, int question) override;
  void askLine(QWidget* over, const QString& caption, const QString& prompt) override;
  std::optional<int> askRecordNumber(QWidget* over, const QString& prompt) override;
  QString askOpenPath(QWidget* over, const QString& title, const QString& initial,
                      const QString& filter) override;
  QString askSavePath(QWidget* over, const QString& title, const QString& initial,
                      const QString& filter) override;

 private:
  Global& global_;
};

}  // namespace mirelund
