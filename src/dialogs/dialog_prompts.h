// SPDX-License-Identifier: GPL-3.0-or-later
// Prompts as the person meets them: the program's dialogs and the platform's.
#pragma once

#include "dialogs/dialog_state.h"
#include "dialogs/prompts.h"

namespace mirelund {

class DialogPrompts : public Prompts {
 public:
  explicit DialogPrompts(DialogState& state) : state_(state) {}

  bool cancelsAll() const override { return state_.cancelsAll; }
  void tell(QWidget* over, Message message) override;
  void warn(QWidget* over, const QString& text) override;
  void inform(QWidget* over, const QString& title, const QString& text) override;
  bool browse(const QString& path) override;
  bool confirm(QWidget* over, const QString& text, const QString& accept) override;
  bool ask(QWidget* over, Question question) override;
  std::optional<QString> askLine(QWidget* over, const QString& caption,
                                 const QString& prompt) override;
  std::optional<int> askRecordNumber(QWidget* over, const QString& prompt) override;
  QString askOpenPath(QWidget* over, const QString& title, const QString& initial,
                      const QString& filter) override;
  QString askSavePath(QWidget* over, const QString& title, const QString& initial,
                      const QString& filter) override;

 private:
  struct Chosen {
    QString path;    ///< empty when cancelled
    QString filter;  ///< of several
  };
  Chosen askPath(QWidget* over, const QString& title, const QString& initial,
                 const QString& filters, bool toOpen);

  DialogState& state_;
};

}  // namespace mirelund
