// SPDX-License-Identifier: GPL-3.0-or-later
// The manager's input boxes: a date, and an amount with four decimals.
#pragma once

#include <functional>

#include "app/filtered_edit.h"

namespace mirelund {

/// Takes digits, "/", ".", "-" and blanks. The first key does not empty it.
class DateEdit : public FilteredEdit {
  Q_OBJECT

 public:
  /// `check` returns the message for a text that is not accepted, else None.
  DateEdit(BoxState& boxes, std::function<Message(std::string_view)> check,
           QWidget* parent = nullptr);

 protected:
  BoxLeft store() override;
  KeyPressed press(std::string_view text, char character) override;
  KeyPressed enterAtOnce(std::string_view text, std::string_view entering) override;

 private:
  std::function<Message(std::string_view)> check_;
};

/// Takes digits and the point, with at most four decimals behind it.
class AmountEdit : public FilteredEdit {
  Q_OBJECT

 public:
  /// `store` takes the text when the box is left.
  AmountEdit(BoxState& boxes, std::function<BoxLeft(std::string_view)> store,
             QWidget* parent = nullptr);

 protected:
  BoxLeft store() override;

 private:
  std::function<BoxLeft(std::string_view)> store_;
};

}  // namespace mirelund
