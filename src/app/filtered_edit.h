// SPDX-License-Identifier: GPL-3.0-or-later
// A one-line box that lets in only what its key filter passes, by any way.
#pragma once

#include <QColor>
#include <QLineEdit>

#include "app/input_boxes.h"

namespace mirelund {

/// The colour of whatever takes input.
inline constexpr QColor kInputGreen(128, 255, 128);
/// Of what such a box says while it is empty, 6 to 1 on the green.
inline constexpr QColor kPlaceholderGray(64, 64, 64);

/// The ground of what is selected there, whatever the desktop's is: it stands out from
/// the green and the white, and the text from it.
inline constexpr QColor kSelectionBlue(0, 64, 128);

/// Typed keys, pasted, dropped and composed text all pass the same filter; the
/// first key after the value was stored replaces the whole content. Enter is not
/// typed but reported. The keypad's decimal key types a point in every locale. What becomes of the
/// value is up to the owner: BoxFocus tells it when the box is entered and left.
class FilteredEdit : public QLineEdit {
  Q_OBJECT

 public:
  FilteredEdit(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
               QWidget* parent = nullptr);

  /// Got-focus: the whole text is selected and the clipboard emptied.
  void enter();

  /// Lost-focus: the value is stored and shown again. Returns what is to be told,
  /// if anything.
  BoxLeft leave();

  /// Asks for room for so many digits; where there is less, `least` must do.
  void setCharacters(int characters, int least = 10);
  QSize sizeHint() const override;

  /// Green while it takes input, white while it shows a result.
  void setGreen(bool green);

 signals:
  void enterPressed();
  /// The first key after the value was stored emptied the box.
  void emptied();

 protected:
  BoxState& boxes() { return boxes_; }
  /// Stores the box's text, wherever its owner keeps it.
  virtual BoxLeft store() = 0;
  void setFilter(KeyFilter filter, std::int16_t extraDecimals);

  /// What a typed character does; by default the key filter decides.
  virtual KeyPressed press(std::string_view text, char character);
  /// The same for text that enters at once.
  virtual KeyPressed enterAtOnce(std::string_view text, std::string_view entering);

  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

 private:
  void takeRoom();
  void empty();
  void insertAtOnce(QString entering);
  void pasteFrom(int clipboardMode);

  BoxState& boxes_;
  KeyFilter filter_;
  std::int16_t extraDecimals_;
  QString untouched_;  ///< the text since the box was entered, before any edit
  bool selectOnClick_ = false;
  int characters_ = 0;
  int leastCharacters_ = 0;
};

/// An input box of a calculator page, ruled by its row of the box table.
class BoxEdit : public FilteredEdit {
  Q_OBJECT

 public:
  BoxEdit(BoxState& boxes, const BoxRule& rule, QWidget* parent = nullptr);

  const BoxRule& rule() const { return *rule_; }
  void setRule(const BoxRule& rule);

  /// Stores the rule's initial value and shows it.
  void load();

 protected:
  BoxLeft store() override;

 private:
  const BoxRule* rule_;
};

}  // namespace mirelund
